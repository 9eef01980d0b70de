// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractItemView>
#include <vector>

namespace zentorin {

// A list of texts with tabs: a tab jumps to the next stop behind the text so far, so that a long
// column hides nothing. Nothing here depends on how many lines there are: QListView lays all out
// anew for each change, which a download of 100,000 rows cannot bear.
class LineListView : public QAbstractItemView {
  Q_OBJECT

 public:
  // `tabStops`: left edges behind the first column, in half-width characters.
  LineListView(std::vector<int> tabStops, QWidget* parent);

  int ColumnLeft(int column) const;  // viewport pixels
  int LineHeight() const;

  void setModel(QAbstractItemModel* model) override;
  QRect visualRect(const QModelIndex& index) const override;
  void scrollTo(const QModelIndex& index, ScrollHint hint = EnsureVisible) override;
  QModelIndex indexAt(const QPoint& point) const override;
  void selectAll() override;
  void reset() override;

 Q_SIGNALS:
  void ColumnsMoved();  // scrolled sideways, or another font

 protected:
  QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
  int horizontalOffset() const override;
  int verticalOffset() const override;
  bool isIndexHidden(const QModelIndex& index) const override;
  void setSelection(const QRect& rect, QItemSelectionModel::SelectionFlags command) override;
  QRegion visualRegionForSelection(const QItemSelection& selection) const override;
  void rowsInserted(const QModelIndex& parent, int start, int end) override;
  void updateGeometries() override;
  void paintEvent(QPaintEvent* event) override;
  void changeEvent(QEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;

 private:
  int RowCount() const;
  int WholeLinesInSight() const;
  int ContentsWidth() const;

  std::vector<int> tabStops_;
};

}  // namespace zentorin
