// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>
#include <optional>

namespace zentorin {

// What the command line asks for.
struct CommandLine {
  bool debugMode = false;
  bool autoMode = false;
  QString autoStartTime;     // as given; empty means at once
  QString afterBatchAction;  // "スタンバイ", "休止", "ログオフ", "再起動", "シャットダウン",
                             // "閉じる" or empty
  bool trayMode = false;
  QStringList files;    // file arguments in order, as given; each is loaded, the last one wins
  QString invalidTime;  // the first time argument that is none; start-up stops there
};

// The words of one option: tabs are blanks, runs of blanks and ideographic spaces collapse to their
// first character; at least eleven words.
QStringList ParseOptionWords(const QString& option);

// The command line as one text, as the options are split from it. Arguments that hold blanks stay
// whole words of their option because an option runs up to the next " -".
QString JoinArguments(const QStringList& arguments);

CommandLine ParseCommandLine(const QString& text);

}  // namespace zentorin
