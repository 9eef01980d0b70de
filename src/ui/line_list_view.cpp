// SPDX-License-Identifier: MIT
#include "ui/line_list_view.h"

#include <QApplication>
#include <QEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <algorithm>

namespace zentorin {
namespace {

constexpr int kMargin = 3;             // pixels left of the first column
constexpr int kLastColumnChars = 120;  // room that the scroll extent leaves for the last column

// The unit of the tab stops: the width of a half-width character of the fixed-pitch font.
int CharWidth(const QFontMetrics& metrics) {
  return metrics.horizontalAdvance(QLatin1Char('0'));
}

// The columns of one line.
QStringList ColumnTexts(const QModelIndex& index) {
  const QAbstractItemModel* model = index.model();
  const int columns = model->columnCount(index.parent());
  if (columns == 1) return index.data(Qt::DisplayRole).toString().split(QLatin1Char('\t'));
  QStringList texts;
  texts.reserve(columns);
  for (int column = 0; column < columns; ++column) {
    texts.append(index.siblingAtColumn(column).data(Qt::DisplayRole).toString());
  }
  return texts;
}

// Paints a line at its tab stops.
class LineDelegate : public QStyledItemDelegate {
 public:
  LineDelegate(std::vector<int> tabStops, QObject* parent)
      : QStyledItemDelegate(parent), tabStops_(std::move(tabStops)) {}

  void paint(QPainter* painter, const QStyleOptionViewItem& option,
             const QModelIndex& index) const override {
    QStyleOptionViewItem item = option;
    initStyleOption(&item, index);
    item.text.clear();
    const QStyle* style = item.widget != nullptr ? item.widget->style() : QApplication::style();
    style->drawControl(QStyle::CE_ItemViewItem, &item, painter, item.widget);
    const bool selected = item.state.testFlag(QStyle::State_Selected);
    const auto group =
        item.state.testFlag(QStyle::State_Active) ? QPalette::Active : QPalette::Inactive;
    painter->save();
    painter->setFont(item.font);
    painter->setPen(
        item.palette.color(item.state.testFlag(QStyle::State_Enabled) ? group : QPalette::Disabled,
                           selected ? QPalette::HighlightedText : QPalette::Text));
    PaintColumns(painter, item, ColumnTexts(index));
    painter->restore();
  }

  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& /*index*/) const override {
    const QFontMetrics metrics(option.font);
    const int last = tabStops_.empty() ? 0 : tabStops_.back();
    return {kMargin + (last + kLastColumnChars) * CharWidth(metrics), metrics.height() + 2};
  }

 private:
  void PaintColumns(QPainter* painter, const QStyleOptionViewItem& item,
                    const QStringList& texts) const {
    const QFontMetrics& metrics = item.fontMetrics;
    const int unit = CharWidth(metrics);
    const int baseline =
        item.rect.top() + (item.rect.height() - metrics.height()) / 2 + metrics.ascent();
    int x = 0;
    for (qsizetype column = 0; column < texts.size(); ++column) {
      if (column > 0) x = NextStop(x, unit);
      const QString& text = texts.at(column);
      if (text.isEmpty()) continue;
      painter->drawText(item.rect.left() + kMargin + x, baseline, text);
      x += metrics.horizontalAdvance(text);
    }
  }

  // The first stop behind `x`; behind the last one a tab is two characters.
  int NextStop(int x, int unit) const {
    const auto stop = std::find_if(tabStops_.begin(), tabStops_.end(),
                                   [&](int candidate) { return candidate * unit > x; });
    return stop == tabStops_.end() ? x + 2 * unit : *stop * unit;
  }

  std::vector<int> tabStops_;
};

}  // namespace

LineListView::LineListView(std::vector<int> tabStops, QWidget* parent)
    : QListView(parent), tabStops_(std::move(tabStops)) {
  setItemDelegate(new LineDelegate(tabStops_, this));
  setUniformItemSizes(true);
  setEditTriggers(NoEditTriggers);
  setHorizontalScrollMode(ScrollPerPixel);
  setTextElideMode(Qt::ElideNone);
  setTabKeyNavigation(false);
  connect(horizontalScrollBar(), &QScrollBar::valueChanged, this, &LineListView::ColumnsMoved);
}

int LineListView::ColumnLeft(int column) const {
  const int chars = column <= 0 ? 0 : tabStops_[static_cast<size_t>(column) - 1];
  return kMargin + chars * CharWidth(QFontMetrics(font())) - horizontalScrollBar()->value();
}

void LineListView::changeEvent(QEvent* event) {
  QListView::changeEvent(event);
  if (event->type() == QEvent::FontChange) Q_EMIT ColumnsMoved();
}

}  // namespace zentorin
