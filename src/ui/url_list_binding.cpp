// SPDX-License-Identifier: MIT
#include "ui/url_list_binding.h"

#include <QItemSelectionModel>
#include <QScopedValueRollback>

#include "crawl/file_list.h"
#include "jobs/url_list.h"
#include "ui/widgets/line_list_view.h"

namespace zentorin {

UrlListBinding::UrlListBinding(UrlList& list, const FileList& files, LineListView& view,
                               QObject* parent)
    : QObject(parent), list_(list), view_(view) {
  view.setModel(&list);
  view.setSelectionMode(QAbstractItemView::SingleSelection);
  connect(&list, &UrlList::Selected, this, &UrlListBinding::ShowSelected);
  connect(&list, &UrlList::modelReset, this, [this] { ShowSelected(list_.SelectedRow()); });
  connect(&list, &UrlList::rowsMoved, this,
          [this] { view_.scrollTo(list_.index(list_.SelectedRow(), 0)); });
  connect(view.selectionModel(), &QItemSelectionModel::currentRowChanged, this,
          [this](const QModelIndex& current) {
            if (!following_ && current.isValid()) list_.Select(current.row());
          });
  // A click with Ctrl does not take the selection away. One on the job that is shown fills an empty
  // file list again; in one that is not empty marks and selection would be lost.
  connect(&view, &QAbstractItemView::clicked, this, [this, &files](const QModelIndex& index) {
    if (index.row() != list_.SelectedRow()) return;
    ShowSelected(index.row());
    if (files.Count() == 0) list_.Select(index.row());
  });
  ShowSelected(list.SelectedRow());
}

void UrlListBinding::ShowSelected(int row) {
  const QScopedValueRollback<bool> guard(following_, true);
  const QModelIndex index = list_.index(row, 0);
  if (index.isValid()) {
    view_.setCurrentIndex(index);
    view_.selectionModel()->select(index, QItemSelectionModel::ClearAndSelect);
  } else {
    view_.selectionModel()->clear();
  }
}

}  // namespace zentorin
