// SPDX-License-Identifier: MIT
#include "download/stream/stream_get_tool.h"

#include <algorithm>
#include <utility>

#include <QCoro/QCoroTimer>

#include "download/stream/text_condition.h"
#include "net/api_web.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr std::chrono::milliseconds kAnswerTime(1000);
constexpr std::chrono::milliseconds kHastyAnswerTime(200);
constexpr std::chrono::milliseconds kAnswerPoll(50);
constexpr std::chrono::milliseconds kKillTime(500);

QHash<QString, QString> VariablesOf(const ToolWindow& window) {
  return {{u"title"_s, window.title},
          {u"class"_s, window.className},
          {u"instance"_s, window.instance},
          {u"visible"_s, QString::number(static_cast<int>(window.visible))},
          {u"process"_s, QString::number(window.processId)},
          {u"owner"_s, QString::number(window.owner)}};
}

bool Holds(const QString& condition, const QHash<QString, QString>& variables) {
  return EvaluateCondition(condition, variables).value_or(false);
}

// The class is the tool's own, or what the compatibility layer makes of its file's name.
bool IsMainWindow(const ToolWindow& window) {
  const QHash<QString, QString> variables = VariablesOf(window);
  return Holds(
      u"class = \"GetASFstreamWindow\" && owner == 0 || "
      "instance = \"GetASFstreamWindow\" && owner == 0 || "
      "class = \"streamget.exe\" && owner == 0 || "
      "instance = \"streamget.exe\" && owner == 0"_s,
      variables);
}

// Another program's dialog of the same title is never answered: a tool whose window never appeared
// has no id to be owned by.
bool IsDialogOf(const ToolWindow& main, const ToolWindow& window, const QString& title) {
  QHash<QString, QString> variables = VariablesOf(window);
  variables.insert(u"wanted"_s, title);
  variables.insert(u"main"_s, QString::number(main.id));
  variables.insert(u"tool"_s, QString::number(main.processId));
  return Holds(
      u"visible && title == wanted && main != 0 && owner == main || "
      "visible && title == wanted && process != 0 && process == tool"_s,
      variables);
}

}  // namespace

StreamGetTool::StreamGetTool(QStringList command, QString folder, StreamGetRecording recording,
                             ToolWindows& windows, bool shown)
    : command_(std::move(command)),
      folder_(std::move(folder)),
      recording_(std::move(recording)),
      windows_(windows),
      shown_(shown) {}

Outcome StreamGetTool::Start() {
  if (!windows_.Available()) {
    return Outcome::Failed(RunTimeError::Other, u"StreamGet は画面がないと実行できません。"_s);
  }
  Outcome written = WriteStreamGetSettings(folder_, recording_);
  if (!written.Ok()) return written;
  for (const ToolWindow& window : windows_.List()) otherWindows_.insert(window.id);
  process_.Start(command_, folder_);
  return {};
}

QString StreamGetTool::WhyNeverSeen() const {
  return u"StreamGet のウィンドウが現れません。: "_s + folder_;
}

bool StreamGetTool::Appeared() {
  const auto windows = windows_.List();
  const auto found = std::ranges::find_if(windows, [this](const ToolWindow& window) {
    return !otherWindows_.contains(window.id) && window.visible && IsMainWindow(window);
  });
  if (found == windows.end()) return false;
  window_ = *found;
  windows_.Show(window_.id, shown_);
  return true;
}

// Before the window is there, the time that it has to appear is the only bound.
bool StreamGetTool::Running() {
  if (window_.id != 0) return OpenWindow().has_value();
  return process_.Running() || process_.EndedWell();
}

ToolReading StreamGetTool::Read() {
  AnswerYes(u"確認"_s);
  const auto window = OpenWindow();
  const QString played = StreamGetPlayed(folder_);
  const QString status = window ? window->title : QString();
  ToolReading reading;
  const QString percent =
      API_Web::FirstMatch(played + u' ' + status, u"([0-9]+(?:\\.[0-9]+)?) *%"_s);
  constexpr double kWhole = 100;
  reading.fraction = std::clamp(percent.toDouble() / kWhole, 0.0, 1.0);
  reading.lengthKnown = reading.fraction > 0;
  reading.text = percent.isEmpty() ? played : percent + u'%';
  reading.moved = !played.isEmpty() || reading.lengthKnown;
  reading.fileExists =
      Holds(u"status ^ 既に存在 || status ^ すでに存在 || status ^ \"already exist\""_s,
            {{u"status"_s, status}});
  return reading;
}

QCoro::Task<void> StreamGetTool::End(bool atOnce) {
  const auto time = atOnce ? kHastyAnswerTime : kAnswerTime;
  if (Running() && AnswerYes(u"注意"_s)) {
    for (auto left = time; left.count() > 0 && Running(); left -= kAnswerPoll) {
      co_await QCoro::sleepFor(kAnswerPoll);
    }
  }
  if (OpenWindow()) windows_.EndProgram(window_.id);
  process_.Kill();
  co_await process_.WaitForEnd(kKillTime);
}

void StreamGetTool::Show(bool shown) {
  if (OpenWindow()) windows_.Show(window_.id, shown);
}

std::optional<ToolWindow> StreamGetTool::OpenWindow() const {
  return window_.id == 0 ? std::nullopt : windows_.Find(window_);
}

// True when there was such a dialog. One that stays is answered again at the next look.
bool StreamGetTool::AnswerYes(const QString& title) {
  const auto windows = windows_.List();
  const auto dialog = std::ranges::find_if(
      windows, [&](const ToolWindow& window) { return IsDialogOf(window_, window, title); });
  if (dialog == windows.end()) return false;
  windows_.PressKey(dialog->id, u'Y');
  return true;
}

}  // namespace zentorin
