// SPDX-License-Identifier: MIT
#include "app/start_up.h"

#include "app/auto_run.h"
#include "app/command_line.h"
#include "app/workspace.h"
#include "base/ansi_text.h"
#include "base/message_boxes.h"
#include "jobs/url_list_file.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr QLatin1StringView kLineBreaks = "\r\n\r\n"_L1;

// Why a list could not be loaded; empty when it was.
QString LoadList(Workspace& workspace, const QString& argument) {
  const QString path = FindListFile(argument, workspace.drives);
  const Outcome outcome = ReadUrlListFile(path, workspace.urlList);
  if (outcome.Ok()) {
    workspace.urlList.SetCurrentListFile(path);
    return {};
  }
  QString message = u"ＵＲＬリスト読み込みエラー"_s + kLineBreaks + argument;
  // A missing file is told by its name alone; a fault inside it or on the way to it by its cause.
  if (outcome.error == RunTimeError::PathMissing) return message;
  return message + kLineBreaks + outcome.NumberAndMessage();
}

// The choices of the file, and in the place of some of them those of the command line.
Outcome LoadChoices(Workspace& workspace, const CommandLine& line, QStringList& faults) {
  Outcome outcome = workspace.keptChoices.Load(workspace.ChoicesPath(), faults);
  if (!outcome.Ok()) return outcome;
  FetchChoices& choices = workspace.choices;
  choices = workspace.keptChoices.choices;
  choices.connectionsPerHost = line.connections.value_or(choices.connectionsPerHost);
  choices.topSpeed = line.topSpeed.value_or(choices.topSpeed);
  return {};
}

// The steps in order; answers the message that ended them, or nothing. In `putRight` what was
// wrong and ended nothing.
QString RunSteps(Workspace& workspace, AutoRun& autoRun, const CommandLine& line,
                 const std::function<void()>& layOut, QStringList& putRight) {
  if (!AnsiCodecAvailable()) {
    return u"この環境では Shift_JIS（CP932）の変換が使えません。"
           "C ライブラリの iconv に CP932 の変換モジュール（gconv）がありません。"_s;
  }
  const Outcome settings = workspace.settings.Load(workspace.SettingsPath());
  if (!settings.Ok()) return settings.NumberAndMessage();
  const Outcome choices = LoadChoices(workspace, line, putRight);
  if (!choices.Ok()) return choices.NumberAndMessage();
  const Outcome patterns = workspace.patterns.LoadOrCreate(workspace.PatternsPath());
  if (!patterns.Ok()) return patterns.NumberAndMessage();
  if (layOut) layOut();
  for (const QString& file : line.files) {
    const QString fault = LoadList(workspace, file);
    if (!fault.isEmpty()) return fault;
  }
  if (!line.invalidTime.isEmpty()) {
    return u"time の指定が不正です。"_s + kLineBreaks + line.invalidTime +
           u" → 11:34 の形式（時：分）"_s;
  }
  if (!line.invalidNumber.isEmpty()) return line.invalidNumber;
  if (!line.autoMode) return {};
  const QString& listFile = workspace.urlList.CurrentListFile();
  if (listFile.isEmpty()) {
    return u"実行するファイルが指定されていない、もしくは不正です！"_s;
  }
  if (!autoRun.Arm(line)) {
    return ListInUseText(listFile);
  }
  return {};
}

}  // namespace

QCoro::Task<bool> StartUp(Workspace& workspace, AutoRun& autoRun, const CommandLine& line,
                          std::function<void()> layOut) {
  QStringList putRight;
  const QString fault = RunSteps(workspace, autoRun, line, layOut, putRight);
  // Nobody waits for this answer; a run that is armed by now does not hang on it.
  if (!putRight.isEmpty()) {
    workspace.world.messages.Ask(MessageBox::Error(putRight.join("\r\n"_L1)));
  }
  if (fault.isEmpty()) co_return true;
  const MessageBox box = MessageBox::Error(fault);
  co_await workspace.world.messages.Ask(box);
  co_return false;
}

}  // namespace zentorin
