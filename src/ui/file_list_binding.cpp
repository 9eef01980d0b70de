// SPDX-License-Identifier: MIT
#include "ui/file_list_binding.h"

#include <QEvent>
#include <QItemSelectionModel>
#include <QScopedValueRollback>

#include "crawl/file_list.h"
#include "ui/widgets/line_list_view.h"

namespace zentorin {

FileListBinding::FileListBinding(FileList& files, LineListView& view, QObject* parent)
    : QObject(parent), files_(files), view_(view) {
  // Before the view's own selection model listens: it would carry every selected row through a
  // reordering one by one, and the list knows them anyway.
  connect(&files, &FileList::layoutAboutToBeChanged, this, &FileListBinding::ForgetViewSelection);
  view.setModel(&files);
  connect(&files, &FileList::SelectionChanged, this, &FileListBinding::ShowSelection);
  connect(&files, &FileList::CurrentRowChanged, this, &FileListBinding::ShowCurrentRow);
  connect(
      &files, &FileList::rowsInserted, this,
      [this](const QModelIndex& /*parent*/, int first, int last) { ShowSelection(first, last); });
  connect(&files, &FileList::layoutChanged, this, &FileListBinding::ShowAll);
  connect(&files, &FileList::modelReset, this, &FileListBinding::ShowAll);
  connect(view.selectionModel(), &QItemSelectionModel::selectionChanged, this,
          &FileListBinding::TakeSelection);
  connect(view.selectionModel(), &QItemSelectionModel::currentRowChanged, this,
          [this](const QModelIndex& current) {
            if (following_) return;
            const QScopedValueRollback<bool> guard(following_, true);
            files_.SetCurrentRow(current.row());
          });
  view.viewport()->installEventFilter(this);
  files.Flush();
  ShowAll();
}

bool FileListBinding::eventFilter(QObject* watched, QEvent* event) {
  // Moving the mouse over the list sets its tooltip to the row count.
  if (event->type() == QEvent::MouseMove || event->type() == QEvent::ToolTip) {
    view_.setToolTip(files_.ToolTip());
  }
  return QObject::eventFilter(watched, event);
}

void FileListBinding::ShowSelection(int first, int last) {
  if (following_) return;
  const QScopedValueRollback<bool> guard(following_, true);
  last = std::min(last, files_.rowCount() - 1);
  // A change of the whole list is told without its old selection: to take very many ranges out of
  // very many others costs the view their product.
  if (first == 0 && last == files_.rowCount() - 1) view_.clearSelection();
  QItemSelection selected;
  QItemSelection deselected;
  for (int begin = first; begin <= last;) {
    int end = begin;
    while (end < last && files_.IsSelected(end + 1) == files_.IsSelected(begin)) ++end;
    QItemSelection& target = files_.IsSelected(begin) ? selected : deselected;
    target.append(QItemSelectionRange(files_.index(begin, 0), files_.index(end, 0)));
    begin = end + 1;
  }
  view_.selectionModel()->select(deselected, QItemSelectionModel::Deselect);
  view_.selectionModel()->select(selected, QItemSelectionModel::Select);
}

void FileListBinding::ShowCurrentRow(int row) {
  if (following_) return;
  const QScopedValueRollback<bool> guard(following_, true);
  const QModelIndex before = files_.index(followed_, 0);
  followed_ = row;
  // A user who looks elsewhere keeps the place, for the keys too.
  const bool elsewhere =
      before.isValid() && !view_.viewport()->rect().intersects(view_.visualRect(before));
  if (elsewhere && view_.currentIndex().isValid()) return;
  view_.setAutoScroll(false);
  view_.selectionModel()->setCurrentIndex(files_.index(row, 0), QItemSelectionModel::NoUpdate);
  view_.setAutoScroll(true);
  if (!elsewhere && row >= 0) view_.scrollTo(files_.index(row, 0));
}

void FileListBinding::TakeSelection(const QItemSelection& selected,
                                    const QItemSelection& deselected) {
  if (following_) return;
  const QScopedValueRollback<bool> guard(following_, true);
  TakeRanges(deselected, false);
  TakeRanges(selected, true);
}

void FileListBinding::TakeRanges(const QItemSelection& ranges, bool selected) {
  for (const QItemSelectionRange& range : ranges) {
    files_.SelectRange(range.top(), range.bottom(), selected);
  }
}

void FileListBinding::ForgetViewSelection() {
  const QScopedValueRollback<bool> guard(following_, true);
  view_.selectionModel()->clear();
}

void FileListBinding::ShowAll() {
  {
    const QScopedValueRollback<bool> guard(following_, true);
    view_.selectionModel()->clear();
  }
  ShowSelection(0, files_.rowCount() - 1);
  ShowCurrentRow(files_.CurrentRow());
}

}  // namespace zentorin
