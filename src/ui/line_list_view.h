// SPDX-License-Identifier: MIT
#pragma once

#include <QListView>
#include <vector>

namespace zentorin {

// A list whose lines are texts with tabs. A tab jumps to the next tab stop behind the text so far,
// so that a long column pushes the ones behind it and hides nothing. The columns come from the
// model: either the columns of a table model or the tab-separated parts of a list model's text.
class LineListView : public QListView {
  Q_OBJECT

 public:
  // `tabStops`: left edges of the columns behind the first one, in half-width characters of its
  // font.
  LineListView(std::vector<int> tabStops, QWidget* parent);

  int ColumnCount() const { return static_cast<int>(tabStops_.size()) + 1; }
  // Left edge of a column in the viewport, pixels; the horizontal scroll position is taken off.
  int ColumnLeft(int column) const;

 Q_SIGNALS:
  // The columns moved: the list was scrolled sideways or its font changed.
  void ColumnsMoved();

 protected:
  void changeEvent(QEvent* event) override;

 private:
  std::vector<int> tabStops_;
};

}  // namespace zentorin
