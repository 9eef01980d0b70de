// SPDX-License-Identifier: MIT
#include "app/file_list_commands.h"

#include "app/workspace.h"
#include "base/message_boxes.h"
#include "launch/opener.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

void FileListCommands::SelectAll() {
  workspace_.files.SelectAll();
}

void FileListCommands::OpenSite() {
  const QString address = CurrentAddress();
  if (!address.isEmpty()) workspace_.world.opener.OpenWithDefaultHandler(address);
}

QCoro::Task<void> FileListCommands::OpenSource() {
  if (workspace_.files.CurrentRow() < 0) co_return;
  const QString address = CurrentAddress();
  co_await workspace_.source.Show(address);
}

QCoro::Task<void> FileListCommands::Play() {
  const FileList& files = workspace_.files;
  if (files.SelectedCount() > 1) {
    MessageBox box;
    box.text = u"選択は１個にして下さい。"_s;
    co_await workspace_.world.messages.Ask(box);
    co_return;
  }
  if (files.CurrentRow() < 0) co_return;
  const QString address = PlayAddressOf(files.Row(files.CurrentRow()));
  if (!address.isEmpty()) workspace_.world.opener.PlayOrView(address);
}

QString FileListCommands::CopiedText() const {
  const FileList& files = workspace_.files;
  QString text;
  for (int row = 0; row < files.Count(); ++row) {
    if (files.IsSelected(row)) text += files.Row(row).ToText() + u"\r\n"_s;
  }
  return text;
}

QCoro::Task<void> FileListCommands::Delete() {
  FileList& files = workspace_.files;
  if (files.CurrentRow() < 0) co_return;
  const MessageBox question = DeleteQuestion();
  const MessageBox::Answer answer = co_await workspace_.world.messages.Ask(question);
  if (answer == MessageBox::Answer::Ok) files.RemoveSelected();
}

void FileListCommands::Sort(FileListRow::Column column) {
  sorter_.Sort(workspace_.files, column);
}

QString FileListCommands::CurrentAddress() const {
  const FileList& files = workspace_.files;
  return files.CurrentRow() < 0 ? QString() : FileAddressOf(files.Row(files.CurrentRow()));
}

}  // namespace zentorin
