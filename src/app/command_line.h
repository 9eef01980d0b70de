// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

namespace zentorin {

class Drives;

// What the command line asks for.
struct CommandLine {
  bool debugMode = false;
  bool autoMode = false;
  QString autoStartTime;     // as given; empty means at once
  QString afterBatchAction;  // "スタンバイ", "休止", "ログオフ", "再起動", "シャットダウン",
                             // "閉じる" or empty
  bool trayMode = false;
  QStringList files;    // file arguments in order, as given; each is loaded, the last one wins
  QString invalidTime;  // the first time argument that is none; parsing stopped there
};

// The words of one option: tabs are blanks, runs of blanks and ideographic spaces collapse to their
// first character; at least eleven words.
QStringList ParseOptionWords(const QString& option);

// The arguments as one text, from which the options are split at every " -". A hyphen inside an
// argument that is a value would begin an option there (a path such as "old -new.dat"), so blanks
// before such hyphens are replaced by a stand-in that ParseCommandLine() turns back. An argument
// that begins with a hyphen, perhaps behind blanks of either kind, is taken as a piece of command
// line and stays as it is.
QString JoinArguments(const QStringList& arguments);

CommandLine ParseCommandLine(const QString& text);

// The path of a list file that the command line names: relative to the program's folder, or to the
// working directory when only that one has it.
QString FindListFile(const QString& argument, const Drives& drives);

// Reads the program's arguments (without its own name). One argument that is no option and names an
// existing .dat file, as a file manager gives it, counts as a file option.
CommandLine ReadArguments(const QStringList& arguments, const Drives& drives);

}  // namespace zentorin
