// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractItemView>
#include <vector>

namespace zentorin {

// A list whose lines are texts with tabs. A tab jumps to the next tab stop behind the text so far,
// so that a long column pushes the ones behind it and hides nothing. The columns come from the
// model: either the columns of a table model or the tab-separated parts of a list model's text.
//
// All lines are of one height, and nothing here depends on how many there are: QListView lays every
// line out again for each change of one, which a download of 100,000 rows cannot bear.
class LineListView : public QAbstractItemView {
  Q_OBJECT

 public:
  // `tabStops`: left edges of the columns behind the first one, in half-width characters of its
  // font.
  LineListView(std::vector<int> tabStops, QWidget* parent);

  int ColumnCount() const { return static_cast<int>(tabStops_.size()) + 1; }
  // Left edge of a column in the viewport, pixels; the horizontal scroll position is taken off.
  int ColumnLeft(int column) const;
  int LineHeight() const;

  void setModel(QAbstractItemModel* model) override;
  QRect visualRect(const QModelIndex& index) const override;
  void scrollTo(const QModelIndex& index, ScrollHint hint = EnsureVisible) override;
  QModelIndex indexAt(const QPoint& point) const override;
  void selectAll() override;
  void reset() override;

 Q_SIGNALS:
  // The columns moved: the list was scrolled sideways or its font changed.
  void ColumnsMoved();

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
