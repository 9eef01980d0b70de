// SPDX-License-Identifier: MIT
#include "app/command_line.h"

#include <QDir>
#include <QFileInfo>
#include <QHash>
#include <QRegularExpression>

#include "app/kept_choices.h"
#include "base/drives.h"
#include "base/number_text.h"
#include "jobs/date_text.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kMinWords = 11;
constexpr QChar kHyphen = u'-';
constexpr QChar kIdeographicSpace = u'\u3000';

// Stand for a blank and an ideographic space that must not begin an option. Noncharacters, so no
// real path or option holds them.
constexpr QChar kKeptBlank = u'\uFDD0';
constexpr QChar kKeptIdeographicSpace = u'\uFDD1';

QString Protect(QString argument) {
  for (qsizetype i = 0; i + 1 < argument.size(); ++i) {
    if (argument[i + 1] != kHyphen) continue;
    if (argument[i] == u' ') argument[i] = kKeptBlank;
    if (argument[i] == kIdeographicSpace) argument[i] = kKeptIdeographicSpace;
  }
  return argument;
}

// An option, perhaps behind blanks of either kind, and no value.
bool BeginsWithOption(const QString& argument) {
  for (const QChar c : argument) {
    if (c != u' ' && c != kIdeographicSpace) return c == kHyphen;
  }
  return false;
}

QString Unprotect(QString text) {
  return text.replace(kKeptBlank, u' ').replace(kKeptIdeographicSpace, kIdeographicSpace);
}

// Everything in the option's text after its first word, blanks inside kept as they are.
QString RestOfOption(const QString& option) {
  static const QRegularExpression kFirstWord(u"^[ \\t]*[^ \\t]*[ \\t]*"_s);
  QString rest = option.mid(kFirstWord.match(option).capturedLength());
  rest = TrimBlanks(rest);
  if (rest.size() >= 2 && rest.startsWith(u'"') && rest.endsWith(u'"')) {
    rest = rest.mid(1, rest.size() - 2);
  }
  return Unprotect(rest);
}

// The action words are compared exactly: "S" is not "s".
QString AfterBatchActionFor(const QString& word) {
  static const QHash<QString, QString> kActions = {
      {u"b"_s, u"スタンバイ"_s},     {u"standby"_s, u"スタンバイ"_s},
      {u"h"_s, u"休止"_s},           {u"hibernation"_s, u"休止"_s},
      {u"l"_s, u"ログオフ"_s},       {u"logoff"_s, u"ログオフ"_s},
      {u"r"_s, u"再起動"_s},         {u"reboot"_s, u"再起動"_s},
      {u"s"_s, u"シャットダウン"_s}, {u"shutdown"_s, u"シャットダウン"_s},
  };
  return kActions.value(word, u"閉じる"_s);
}

// False, with the reason in `fault`, when the argument is no number of that range.
bool TakeNumber(const QString& name, const QString& argument, const IntRange& range,
                std::optional<int>& number, QString& fault) {
  bool isNumber = false;
  const int given = argument.toInt(&isNumber);
  if (isNumber && range.Holds(given)) {
    number = given;
    return true;
  }
  fault = u"%1 の指定が不正です。\r\n\r\n%2 → %3 から %4 までの数"_s.arg(
      name, argument.isEmpty() ? u"（値なし）"_s : argument, QString::number(range.least),
      QString::number(range.most));
  return false;
}

// Takes one option over; false when parsing ends with it.
bool TakeOption(const QString& option, CommandLine& line) {
  const QStringList words = ParseOptionWords(option);
  const QString name = words[0].toLower();
  const QString argument = Unprotect(words[1]);
  if (name == "debug"_L1) {
    line.debugMode = true;
  } else if (name == "auto"_L1 || name == "a"_L1) {
    line.autoMode = true;
    if (!argument.isEmpty() && !ParseDateText(argument)) {
      line.invalidTime = argument;
      return false;
    }
    line.autoStartTime = argument;
  } else if (name == "tasktray"_L1) {
    line.trayMode = true;
  } else if (name == "q"_L1 || name == "quit"_L1) {
    // On purpose: a quit that does not follow the auto option never arms a power action.
    if (line.autoMode) line.afterBatchAction = AfterBatchActionFor(argument);
  } else if (name == "f"_L1 || name == "file"_L1) {
    line.files.append(RestOfOption(option));
  } else if (name == "connections"_L1) {
    return TakeNumber(name, argument, kConnectionsPerHost, line.connections, line.invalidNumber);
  } else if (name == "speed"_L1) {
    return TakeNumber(name, argument, kTopSpeed, line.topSpeed, line.invalidNumber);
  }
  return true;
}

}  // namespace

QStringList ParseOptionWords(const QString& option) {
  static const QRegularExpression kRuns(u"([ \\x{3000}])[ \\x{3000}]+"_s);
  QString text = option;
  text = TrimBlanks(text.replace(u'\t', u' '));
  text.replace(kRuns, u"\\1"_s);
  QStringList words = text.split(u' ');
  while (words.size() < kMinWords) words.append(QString());
  return words;
}

QString JoinArguments(const QStringList& arguments) {
  QStringList parts;
  parts.reserve(arguments.size());
  for (const QString& argument : arguments) {
    parts.append(BeginsWithOption(argument) ? argument : Protect(argument));
  }
  return parts.join(u' ');
}

CommandLine ParseCommandLine(const QString& text) {
  CommandLine line;
  if (text.isEmpty()) return line;
  QString options = u' ' + TrimBlanks(text);
  options.replace(u"\u3000-"_s, u" -"_s);
  const QStringList pieces = options.split(u" -"_s);
  for (qsizetype i = 1; i < pieces.size(); ++i) {
    if (!TakeOption(pieces[i], line)) break;
  }
  return line;
}

QString FindListFile(const QString& argument, const Drives& drives) {
  QString path = drives.ToSystemPath(argument);
  if (QFileInfo::exists(path)) return path;
  const QFileInfo here(QDir::current().absoluteFilePath(QString(argument).replace(u'\\', u'/')));
  return here.exists() ? QDir::cleanPath(here.absoluteFilePath()) : path;
}

CommandLine ReadArguments(const QStringList& arguments, const Drives& drives) {
  if (arguments.size() == 1 && !arguments[0].startsWith(u'-') &&
      arguments[0].endsWith(".dat"_L1, Qt::CaseInsensitive) &&
      QFileInfo(FindListFile(arguments[0], drives)).isFile()) {
    CommandLine line;
    line.files.append(arguments[0]);
    return line;
  }
  return ParseCommandLine(JoinArguments(arguments));
}

}  // namespace zentorin
