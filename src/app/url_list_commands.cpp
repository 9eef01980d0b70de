// SPDX-License-Identifier: MIT
#include "app/url_list_commands.h"

#include <QPersistentModelIndex>

#include "app/list_commands.h"
#include "app/workspace.h"
#include "base/message_boxes.h"
#include "jobs/date_template.h"
#include "launch/opener.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

void UrlListCommands::OpenSite() {
  const QString address = RootAddress();
  if (!address.isEmpty()) workspace_.world.opener.OpenWithDefaultHandler(address);
}

QCoro::Task<void> UrlListCommands::OpenSource() {
  if (workspace_.urlList.SelectedRow() < 0) co_return;
  const QString address = RootAddress();
  co_await workspace_.source.Show(address);
}

QString UrlListCommands::CopiedText() const {
  const UrlList& list = workspace_.urlList;
  return list.SelectedRow() < 0 ? QString() : list.Item(list.SelectedRow()).ToLine();
}

void UrlListCommands::Paste(const QString& text) {
  UrlList& list = workspace_.urlList;
  const int row = list.SelectedRow();
  if (row < 0 || text.isEmpty()) return;
  list.Set(row, TargetUrlItem::FromLine(text));
  list.Select(row);
  list.SetDirty(true);
}

void UrlListCommands::Add() {
  UrlList& list = workspace_.urlList;
  const int above = list.SelectedRow() < 0 ? list.Count() - 1 : list.SelectedRow();
  list.InsertBelow(above, NewJob(workspace_.settings.defaultSavePath));
  list.Select(above + 1);
  workspace_.job.Store();
}

QCoro::Task<void> UrlListCommands::Delete() {
  UrlList& list = workspace_.urlList;
  if (list.SelectedRow() < 0) co_return;
  const QPersistentModelIndex job = list.index(list.SelectedRow());
  const MessageBox question = DeleteQuestion();
  const MessageBox::Answer answer = co_await workspace_.world.messages.Ask(question);
  // An unattended run may have begun behind the question; it walks the list by its rows.
  if (answer != MessageBox::Answer::Ok || workspace_.driver.RefuseWhileRunning()) co_return;
  if (job.isValid()) list.Remove(job.row());
}

QString UrlListCommands::RootAddress() const {
  if (workspace_.urlList.SelectedRow() < 0) return {};
  return ExpandedRoot(workspace_.job.Fields(), workspace_.clock.Now());
}

}  // namespace zentorin
