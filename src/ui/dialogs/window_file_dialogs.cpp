// SPDX-License-Identifier: MIT
#include "ui/dialogs/window_file_dialogs.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QRegularExpression>
#include <memory>

#include <QCoro/QCoroSignal>

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

// A filter as Qt reads it: its text, and behind it in brackets, which the dialog hides, the pattern
// that the text names. Every file has to match "*.*", also one without a dot.
QStringList QtFilters(const QStringList& filters) {
  QStringList result;
  for (const QString& filter : filters) {
    const QString pattern = filter.mid(filter.lastIndexOf(u'('));
    result.append(filter + u' ' + (pattern == "(*.*)"_L1 ? u"(*)"_s : pattern));
  }
  return result;
}

// The folder, or the nearest above it that there is.
QString ExistingFolder(const QString& folder) {
  if (folder.isEmpty()) return QDir::homePath();
  QString path = QDir::cleanPath(folder);
  while (!QFileInfo(path).isDir() && QFileInfo(path).path() != path) path = QFileInfo(path).path();
  return path;
}

// The ending that a name without one gets: that of the first filter.
QString SuffixOf(const QStringList& filters) {
  static const QRegularExpression kEnding(uR"(\*\.(\w+))"_s);
  return filters.isEmpty() ? QString() : kEnding.match(filters.first()).captured(1);
}

// Shows a dialog that is set up but for its texts; answers the chosen path or nothing.
QCoro::Task<QString> Choose(std::unique_ptr<QFileDialog> dialog, FileDialog request) {
  dialog->setWindowTitle(request.title);
  dialog->setDirectory(ExistingFolder(request.folder));
  dialog->setOption(QFileDialog::HideNameFilterDetails);
  if (!request.filters.isEmpty()) dialog->setNameFilters(QtFilters(request.filters));
  if (!request.proposedFile.isEmpty()) dialog->selectFile(request.proposedFile);
  dialog->setWindowModality(Qt::ApplicationModal);
  dialog->show();
  const int answer = co_await qCoro(dialog.get(), &QDialog::finished);
  if (answer != QDialog::Accepted) co_return QString();
  const QStringList files = dialog->selectedFiles();
  co_return files.isEmpty() ? QString() : QDir::cleanPath(files.first());
}

}  // namespace

QCoro::Task<QString> WindowFileDialogs::AskForFileToOpen(FileDialog dialog) {
  auto chooser = std::make_unique<QFileDialog>(window_.data());
  chooser->setAcceptMode(QFileDialog::AcceptOpen);
  chooser->setFileMode(QFileDialog::ExistingFile);
  return Choose(std::move(chooser), std::move(dialog));
}

QCoro::Task<QString> WindowFileDialogs::AskForFileToSave(FileDialog dialog) {
  auto chooser = std::make_unique<QFileDialog>(window_.data());
  chooser->setAcceptMode(QFileDialog::AcceptSave);
  chooser->setFileMode(QFileDialog::AnyFile);
  chooser->setDefaultSuffix(SuffixOf(dialog.filters));
  return Choose(std::move(chooser), std::move(dialog));
}

QCoro::Task<QString> WindowFileDialogs::AskForFolder(FileDialog dialog) {
  auto chooser = std::make_unique<QFileDialog>(window_.data());
  chooser->setFileMode(QFileDialog::Directory);
  chooser->setOption(QFileDialog::ShowDirsOnly);
  return Choose(std::move(chooser), std::move(dialog));
}

}  // namespace zentorin
