// SPDX-License-Identifier: MIT
#include "ui/url_list_binding.h"

#include <QItemSelectionModel>
#include <QScopedValueRollback>

#include "jobs/url_list.h"
#include "ui/widgets/line_list_view.h"

namespace zentorin {

UrlListBinding::UrlListBinding(UrlList& list, LineListView& view, QObject* parent)
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
  // A click with Ctrl does not take the selection away.
  connect(&view, &QAbstractItemView::clicked, this, [this](const QModelIndex& index) {
    if (index.row() == list_.SelectedRow()) ShowSelected(index.row());
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
