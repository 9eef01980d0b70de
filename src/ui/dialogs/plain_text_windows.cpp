// SPDX-License-Identifier: MIT
#include "ui/dialogs/plain_text_windows.h"

#include <QDir>

#include "app/file_dialogs.h"
#include "base/file_names.h"
#include "base/message_boxes.h"
#include "base/text_file.h"
#include "ui/dialogs/text_window.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

PlainTextWindows::PlainTextWindows(FileDialogs& dialogs, MessageBoxes& messages)
    : dialogs_(dialogs), messages_(messages) {}

PlainTextWindows::~PlainTextWindows() {
  for (const QPointer<TextWindow>& window : windows_) delete window;
}

bool PlainTextWindows::Show(const QString& text, const QString& title) {
  std::erase_if(windows_, [](const QPointer<TextWindow>& window) { return window.isNull(); });
  auto* window = new TextWindow(text, title);
  windows_.emplace_back(window);
  window->setAttribute(Qt::WA_DeleteOnClose);
  QObject::connect(window, &TextWindow::SaveRequested, window,
                   [this, title](const QString& wanted) { Save(wanted, title); });
  window->show();
  window->raise();
  window->activateWindow();
  return true;
}

// In UTF-8, which holds every text, with the line ends of the program's other files.
QCoro::Task<void> PlainTextWindows::Save(QString text, QString title) {
  FileDialog dialog;
  dialog.title = u"名前を付けて保存"_s;
  dialog.folder = QDir::homePath();
  QString name = CleanFileName(title);
  if (!name.endsWith(".txt"_L1)) name += u".txt"_s;
  dialog.proposedFile = dialog.folder + u'/' + name;
  dialog.filters = {u"テキストファイル(*.txt)"_s, u"すべてのファイル(*.*)"_s};
  const QString path = co_await dialogs_.AskForFileToSave(dialog);
  if (path.isEmpty()) co_return;
  const Outcome outcome = WriteWholeFile(path, text.toUtf8());
  if (outcome.Ok()) co_return;
  const MessageBox box = MessageBox::Error(outcome.message);
  co_await messages_.Ask(box);
}

}  // namespace zentorin
