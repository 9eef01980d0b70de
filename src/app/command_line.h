// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>
#include <optional>

namespace zentorin {

class Drives;

struct CommandLine {
  bool debugMode = false;
  bool autoMode = false;
  QString autoStartTime;     // as given; empty means at once
  QString afterBatchAction;  // one of PowerControl::Perform(), "閉じる" or empty
  bool trayMode = false;
  QStringList files;  // file arguments in order, as given; each is loaded, the last one wins
  std::optional<int> connections;  // to a host, for this run
  std::optional<int> topSpeed;     // KB a second, for this run; 0 for none
  QString invalidTime;             // the first time argument that is none; parsing stopped there
  QString invalidNumber;           // likewise of a number: its option, its value and what is valid
};

// The words of one option: tabs are blanks, runs of blanks and ideographic spaces collapse to their
// first character; at least eleven words.
QStringList ParseOptionWords(const QString& option);

// One text, split into options at every " -". Blanks before a hyphen inside a value (a path such as
// "old -new.dat") become a stand-in that ParseCommandLine() turns back. An argument that begins
// with a hyphen, perhaps behind blanks, is a piece of command line and stays as it is.
QString JoinArguments(const QStringList& arguments);

CommandLine ParseCommandLine(const QString& text);

// Relative to the program's folder, or to the working directory when only that one has it.
QString FindListFile(const QString& argument, const Drives& drives);

// `arguments` lack the program's own name. One that is no option and names an existing .dat file,
// as a file manager gives it, counts as a file option.
CommandLine ReadArguments(const QStringList& arguments, const Drives& drives);

}  // namespace zentorin
