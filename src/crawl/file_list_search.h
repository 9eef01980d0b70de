// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace zentorin {

class FileList;

// Widths of characters and letter cases compare alike, hiragana and katakana do not.
QString SearchKey(const QString& text);

// The first row from `startRow` on whose text, all columns with their tabs, contains `text`; -1
// when there is none. Does not wrap around. An empty text is found nowhere. Nothing in the program
// calls it; kept as the plain search beside the two below.
int FindInList(const FileList& files, const QString& text, int startRow);

// Both leave exactly what they found selected, and the last hit becomes the current row. FindNext()
// looks behind the current row, then from the top.
void FindNext(FileList& files, const QString& text);
void FindAll(FileList& files, const QString& text);

}  // namespace zentorin
