// SPDX-License-Identifier: MIT
#include "app/command_line.h"

#include <QDir>
#include <QFileInfo>
#include <QHash>
#include <QRegularExpression>

#include "base/drives.h"
#include "base/number_text.h"
#include "jobs/date_text.h"

namespace zentorin {
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
  static const QRegularExpression kFirstWord(QStringLiteral("^[ \\t]*[^ \\t]*[ \\t]*"));
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
      {QStringLiteral("b"), QStringLiteral("スタンバイ")},
      {QStringLiteral("standby"), QStringLiteral("スタンバイ")},
      {QStringLiteral("h"), QStringLiteral("休止")},
      {QStringLiteral("hibernation"), QStringLiteral("休止")},
      {QStringLiteral("l"), QStringLiteral("ログオフ")},
      {QStringLiteral("logoff"), QStringLiteral("ログオフ")},
      {QStringLiteral("r"), QStringLiteral("再起動")},
      {QStringLiteral("reboot"), QStringLiteral("再起動")},
      {QStringLiteral("s"), QStringLiteral("シャットダウン")},
      {QStringLiteral("shutdown"), QStringLiteral("シャットダウン")},
  };
  return kActions.value(word, QStringLiteral("閉じる"));
}

// Takes one option over; false when parsing ends with it.
bool TakeOption(const QString& option, CommandLine& line) {
  const QStringList words = ParseOptionWords(option);
  const QString name = words[0].toLower();
  const QString argument = Unprotect(words[1]);
  if (name == QLatin1String("debug")) {
    line.debugMode = true;
  } else if (name == QLatin1String("auto") || name == QLatin1String("a")) {
    line.autoMode = true;
    if (!argument.isEmpty() && !ParseDateText(argument)) {
      line.invalidTime = argument;
      return false;
    }
    line.autoStartTime = argument;
  } else if (name == QLatin1String("tasktray")) {
    line.trayMode = true;
  } else if (name == QLatin1String("q") || name == QLatin1String("quit")) {
    // On purpose: a quit that does not follow the auto option never arms a power action.
    if (line.autoMode) line.afterBatchAction = AfterBatchActionFor(argument);
  } else if (name == QLatin1String("f") || name == QLatin1String("file")) {
    line.files.append(RestOfOption(option));
  }
  return true;
}

}  // namespace

QStringList ParseOptionWords(const QString& option) {
  static const QRegularExpression kRuns(QStringLiteral("([ \\x{3000}])[ \\x{3000}]+"));
  QString text = option;
  text = TrimBlanks(text.replace(u'\t', u' '));
  text.replace(kRuns, QStringLiteral("\\1"));
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
  options.replace(QStringLiteral("\u3000-"), QStringLiteral(" -"));
  const QStringList pieces = options.split(QStringLiteral(" -"));
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
      arguments[0].endsWith(QLatin1String(".dat"), Qt::CaseInsensitive) &&
      QFileInfo(FindListFile(arguments[0], drives)).isFile()) {
    CommandLine line;
    line.files.append(arguments[0]);
    return line;
  }
  return ParseCommandLine(JoinArguments(arguments));
}

}  // namespace zentorin
