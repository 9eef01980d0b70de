// SPDX-License-Identifier: MIT
#include "launch/desktop_opener.h"

#include <QFileInfo>
#include <QRegularExpression>
#include <QStringDecoder>
#include <QUrl>
#include <utility>

#include "base/activity.h"
#include "base/ansi_text.h"
#include "base/drives.h"
#include "base/message_boxes.h"
#include "base/text_file.h"
#include "launch/text_windows.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qint64 kMaxScriptBytes = qint64{16} << 20;

bool IsPage(const QString& target) {
  return target.startsWith(u"http://"_s, Qt::CaseInsensitive) ||
         target.startsWith(u"https://"_s, Qt::CaseInsensitive);
}

bool IsStream(const QString& target) {
  return target.startsWith(u"mms://"_s, Qt::CaseInsensitive);
}

// "X:" is a drive, so a scheme has two letters at least.
bool IsAddress(const QString& target) {
  static const QRegularExpression address(u"^(?:[a-z][a-z0-9+.-]+://|mailto:)"_s,
                                          QRegularExpression::CaseInsensitiveOption);
  return address.match(target).hasMatch();
}

// The text after the last "." of the target's file name, lower-cased; empty when there is none.
QString ExtensionOf(const LaunchTarget& target) {
  const QString path = target.isFile ? target.text : QUrl(target.text).path();
  const QString name = path.sliced(path.lastIndexOf(u'/') + 1);
  const qsizetype dot = name.lastIndexOf(u'.');
  return dot < 0 ? QString() : name.sliced(dot + 1).toLower();
}

// By the extension alone: what a file holds is not looked at.
QString TypeOf(const LaunchTarget& target) {
  return IsStream(target.text) ? u"x-scheme-handler/mms"_s
                               : MimeAssociations::TypeOfExtension(ExtensionOf(target));
}

bool IsScript(const QString& extension) {
  return QStringList{u"bat"_s, u"vbs"_s, u"js"_s}.contains(extension);
}

bool IsSpreadsheet(const QString& type) {
  return type.contains(u"spreadsheet"_s) || type.contains(u"excel"_s) || type == u"text/csv"_s;
}

// What can open a type when no program has registered for it; empty when nothing is known.
QString KnownNameFor(const QString& type) {
  if (IsSpreadsheet(type)) return u"ms excel"_s;
  if (type.startsWith(u"audio/"_s) || type.startsWith(u"video/"_s) ||
      type == u"x-scheme-handler/mms"_s) {
    return u"メディア プレーヤー"_s;
  }
  return {};
}

QString DecodeScript(const QByteArray& bytes) {
  QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
  QString text = utf8(bytes);
  return utf8.hasError() ? DecodeAnsi(bytes) : text;
}

// A lone line feed becomes a pair.
QString WithWholeLineEnds(const QString& text) {
  QString whole;
  whole.reserve(text.size() + text.size() / 16);
  QChar before;
  for (const QChar c : text) {
    if (c == u'\n' && before != u'\r') whole += u'\r';
    whole += c;
    before = c;
  }
  return whole;
}

}  // namespace

DesktopOpener::DesktopOpener(Drives& drives, ProgramStarter& starter, MessageBoxes& messages,
                             TextWindows& windows, XdgFolders folders)
    : drives_(drives),
      starter_(starter),
      messages_(messages),
      windows_(windows),
      programs_(std::move(folders)),
      placeholders_(drives),
      associations_(programs_),
      known_(programs_, placeholders_) {}

void DesktopOpener::OpenWithDefaultHandler(const QString& target) {
  OpenByHandler(ToTarget(target));
}

void DesktopOpener::OpenFolder(const QString& path) {
  const LaunchTarget folder = ToTarget(path);
  if (!folder.isFile) return;
  const std::weak_ptr<bool> alive = alive_;
  starter_.ShowFolder(folder.text, [this, alive, folder](bool shown) {
    if (!shown && !alive.expired()) OpenByHandler(folder);
  });
}

// On a desktop without an opener of its own, the registered program does.
void DesktopOpener::OpenByHandler(const LaunchTarget& target) {
  if (target.text.isEmpty()) return;
  if (starter_.ShellOpen(target.text)) return;
  std::optional<ProgramRequest> request;
  if (QFileInfo(target.text).isDir()) {
    request = known_.RequestFor(u"エクスプローラー"_s, target);
  } else if (IsPage(target.text)) {
    request = known_.RequestFor(u"ie"_s, target);
  } else {
    request = RegisteredProgram(target, TypeOf(target));
  }
  if (request) starter_.Start(*request, [](ProgramStart) {});
}

void DesktopOpener::ShowText(const QString& text, const QString& title) {
  if (windows_.Show(WithWholeLineEnds(text), title)) return;
  Tell(u"ウィンドウハンドルの特定に失敗\r\n再度、行って見て下さい。"_s);
}

void DesktopOpener::PlayOrView(const QString& target) {
  Play(ToTarget(target));
}

void DesktopOpener::Play(const LaunchTarget& target) {
  if (target.text.isEmpty()) return;
  if (IsPage(target.text)) {
    OpenWith(u"IE"_s, target.text);
    return;
  }
  if (IsScript(ExtensionOf(target)) && !IsStream(target.text)) {
    ShowScript(target);
    return;
  }
  const QString type = TypeOf(target);
  Launch launch;
  launch.target = target.text;
  launch.refusal = u"プログラムを起動できませんでした！"_s;
  launch.failure = u"プログラムがエラーで終了しました！"_s;
  if (IsSpreadsheet(type)) {
    launch.refusal = u"EXCELの起動に失敗しました！"_s;
    launch.failure = u"EXCELのオブジェクト取得に失敗しました！"_s;
  }
  const auto request = RegisteredProgram(target, type);
  if (!request && !IsSpreadsheet(type)) {
    launch.refusal = u"開くことができるプログラムがありません！"_s;
  }
  Begin(request, launch);
}

void DesktopOpener::OpenWith(const QString& applicationName, const QString& target) {
  const LaunchTarget opened = ToTarget(target);
  const QString name = applicationName.toLower();
  Launch launch;
  launch.application = applicationName;
  launch.target = opened.text;
  launch.refusal = applicationName + u" を起動できませんでした！"_s;
  launch.failure = applicationName + u" がエラーで終了しました！"_s;
  if (name == u"ie"_s) {
    launch.refusal = u"IEFrameの特定失敗！"_s;
    launch.failure = launch.refusal;
    launch.success = u"ページが表示されました"_s;
  } else if (name == u"ms excel"_s) {
    launch.refusal = u"EXCELの起動に失敗しました！"_s;
    launch.failure = u"EXCELのオブジェクト取得に失敗しました！"_s;
  }
  Begin(known_.RequestFor(name, opened), launch);
}

// An address as it is; anything else as an absolute path of this system. Neither can begin with
// "-", so no program takes a target for an option.
LaunchTarget DesktopOpener::ToTarget(const QString& text) const {
  // A NUL would cut the text short on its way into a program.
  if (text.isEmpty() || text.contains(QChar(u'\0'))) return {};
  QString path = text;
  if (text.startsWith(u"file:"_s, Qt::CaseInsensitive)) {
    path = QUrl(text).toLocalFile();
    if (path.isEmpty() || path.contains(QChar(u'\0'))) return {};
  } else if (IsAddress(text)) {
    return {.text = text, .isFile = false};
  }
  return {.text = drives_.ToSystemPath(path), .isFile = true};
}

void DesktopOpener::Begin(const std::optional<ProgramRequest>& request, const Launch& launch) {
  if (!request) {
    Report(launch, ProgramStart::NotStarted);
    return;
  }
  const std::weak_ptr<bool> alive = alive_;
  starter_.Start(*request, [this, alive, launch](ProgramStart outcome) {
    if (!alive.expired()) Report(launch, outcome);
  });
}

// No window is looked for: another program's windows cannot be seen on every display of this
// system. That the program runs, or ended well because it handed over to one that runs, stands for
// it.
void DesktopOpener::Report(const Launch& launch, ProgramStart outcome) {
  const bool alone = launch.target.isEmpty();
  const QString andTarget = alone ? QString() : u"\r\n"_s + launch.target;
  switch (outcome) {
    case ProgramStart::Running:
    case ProgramStart::EndedWell:
      if (activity_ != nullptr && !launch.success.isEmpty()) {
        activity_->Say(launch.success, Tone::Good);
      }
      return;
    case ProgramStart::EndedWithError:
      Tell(launch.failure + andTarget);
      return;
    case ProgramStart::NotStarted:
      Tell(launch.refusal + andTarget);
      return;
    case ProgramStart::TimedOut:
      Tell(u"タイムアウト- "_s + (alone ? launch.application : launch.target));
  }
}

std::optional<ProgramRequest> DesktopOpener::RegisteredProgram(const LaunchTarget& target,
                                                               const QString& type) const {
  for (const DesktopEntry& program : associations_.ProgramsFor(type)) {
    if (auto request = known_.RequestFor(program, target)) return request;
  }
  return known_.RequestFor(KnownNameFor(type), target);
}

// Programs for these extensions would run what came from a web site; the user reads it instead.
void DesktopOpener::ShowScript(const LaunchTarget& target) {
  if (!target.isFile) {
    Tell(u"開くことができるプログラムがありません！\r\n"_s + target.text);
    return;
  }
  QByteArray bytes;
  const Outcome outcome = ReadWholeFile(target.text, kMaxScriptBytes, bytes);
  if (outcome.Ok()) {
    ShowText(DecodeScript(bytes), QFileInfo(target.text).fileName());
  } else {
    Tell(outcome.message);
  }
}

void DesktopOpener::Tell(const QString& text) {
  MessageBox box;
  box.text = text;
  messages_.Ask(box);
}

}  // namespace zentorin
