// SPDX-License-Identifier: MIT
#include "app/list_commands.h"

#include "app/file_dialogs.h"
#include "app/workspace.h"
#include "base/message_boxes.h"
#include "jobs/url_list_file.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

QStringList ListFileFilters() {
  return {u"データファイル(*.dat)"_s, u"すべてのファイル(*.*)"_s};
}

}  // namespace

TargetUrlItem NewJob(const QString& defaultSavePath) {
  TargetUrlItem job;
  job.Set(TargetUrlItem::SavePath, defaultSavePath);
  job.Set(TargetUrlItem::Before, u","_s);
  job.Set(TargetUrlItem::Depth, u"1"_s);
  for (const TargetUrlItem::Field flag : TargetUrlItem::kFlags) job.SetFlag(flag, false);
  return job;
}

ListCommands::ListCommands(Workspace& workspace, FileDialogs& dialogs)
    : workspace_(workspace), dialogs_(dialogs) {}

QCoro::Task<void> ListCommands::New() {
  if (workspace_.driver.RefuseWhileRunning()) co_return;
  UrlList& list = workspace_.urlList;
  if (list.IsDirty()) {
    const MessageBox question{.title = u"未保存"_s,
                              .text = u"保存されていません！\r\n破棄して新規に作成しますか？"_s,
                              .buttons = MessageBox::Buttons::OkCancel,
                              .defaultAnswer = MessageBox::Answer::Cancel};
    const MessageBox::Answer answer = co_await workspace_.world.messages.Ask(question);
    // An unattended run may have begun behind the question; it walks the list by its rows.
    if (answer != MessageBox::Answer::Ok || workspace_.driver.RefuseWhileRunning()) {
      co_return;
    }
  }
  list.ReplaceAll({});
  list.InsertBelow(-1, NewJob(workspace_.settings.defaultSavePath));
  list.Select(0);
  list.SetCurrentListFile(QString());
  list.SetDirty(false);
}

QCoro::Task<void> ListCommands::Open() {
  if (workspace_.driver.RefuseWhileRunning()) co_return;
  const FileDialog dialog{.title = u"ＵＲＬリストファイルの選択"_s,
                          .folder = workspace_.drives.ProgramFolder(),
                          .proposedFile = QString(),
                          .filters = ListFileFilters()};
  const QString path = co_await dialogs_.AskForFileToOpen(dialog);
  if (path.isEmpty()) co_return;
  co_await OpenFile(path);
}

QCoro::Task<void> ListCommands::OpenFile(QString path) {
  if (workspace_.driver.RefuseWhileRunning()) co_return;
  UrlList& list = workspace_.urlList;
  const Outcome outcome = ReadUrlListFile(path, list);
  if (!outcome.Ok()) {
    co_await Report(outcome.message);
    co_return;
  }
  list.SetCurrentListFile(path);
  if (list.Count() > 0) list.Select(0);
}

QCoro::Task<bool> ListCommands::Save() {
  const QString path = workspace_.urlList.CurrentListFile();
  if (path.isEmpty()) {
    const bool saved = co_await SaveAs();
    co_return saved;
  }
  const bool written = co_await WriteTo(path);
  co_return written;
}

QCoro::Task<bool> ListCommands::SaveAs() {
  const QString& folder = workspace_.drives.ProgramFolder();
  QString proposed = workspace_.urlList.CurrentListFile();
  if (proposed.isEmpty()) proposed = folder + u"/無題.dat"_s;
  const FileDialog dialog{.title = u"名前を付けて保存"_s,
                          .folder = folder,
                          .proposedFile = proposed,
                          .filters = ListFileFilters()};
  const QString path = co_await dialogs_.AskForFileToSave(dialog);
  if (path.isEmpty()) co_return false;
  const bool written = co_await WriteTo(path);
  if (written) workspace_.urlList.SetCurrentListFile(path);
  co_return written;
}

QCoro::Task<bool> ListCommands::MayClose() {
  if (!workspace_.urlList.IsDirty()) co_return true;
  const MessageBox question{.title = u"未保存"_s,
                            .text = u"ＵＲＬリストが変更されています。\r\n保存しますか？"_s,
                            .buttons = MessageBox::Buttons::YesNoCancel,
                            .defaultAnswer = MessageBox::Answer::Yes};
  const MessageBox::Answer answer = co_await workspace_.world.messages.Ask(question);
  if (answer == MessageBox::Answer::No) co_return true;
  if (answer != MessageBox::Answer::Yes) co_return false;
  const bool saved = co_await Save();
  co_return saved;
}

QCoro::Task<bool> ListCommands::WriteTo(QString path) {
  const Outcome outcome = WriteUrlListFile(path, workspace_.urlList);
  if (outcome.Ok()) {
    workspace_.urlList.SetDirty(false);
  } else {
    co_await Report(outcome.message);
  }
  co_return outcome.Ok();
}

QCoro::Task<void> ListCommands::Report(QString message) {
  const MessageBox box = MessageBox::Error(message);
  co_await workspace_.world.messages.Ask(box);
}

}  // namespace zentorin
