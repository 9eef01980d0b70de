// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace zentorin {

class FileList;

// A text as searches compare it: full-width and half-width forms and upper and lower case are the
// same, hiragana and katakana are not.
QString SearchKey(const QString& text);

// The first row from `startRow` on whose text, all columns with their tabs, contains `text`; -1
// when there is none. Does not wrap around. An empty text is found nowhere.
int FindInList(const FileList& files, const QString& text, int startRow);

// Both leave exactly what they found selected: the first hit behind the current row, going on from
// the top of the list; or every hit. The last hit becomes the current row.
void FindNext(FileList& files, const QString& text);
void FindAll(FileList& files, const QString& text);

}  // namespace zentorin
