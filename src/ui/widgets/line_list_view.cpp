// SPDX-License-Identifier: MIT
#include "ui/widgets/line_list_view.h"

#include <QApplication>
#include <QEvent>
#include <QFocusEvent>
#include <QHelpEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <QTextDocument>
#include <QToolTip>
#include <algorithm>

namespace zentorin {
namespace {

constexpr int kMargin = 3;             // pixels left of the first column
constexpr int kLastColumnChars = 200;  // room that the scroll extent leaves for the last column

// The unit of the tab stops: the width of a half-width character of the fixed-pitch font.
int CharWidth(const QFontMetrics& metrics) {
  return metrics.horizontalAdvance(u'0');
}

// The columns of one line.
QStringList ColumnTexts(const QModelIndex& index) {
  const QAbstractItemModel* model = index.model();
  const int columns = model->columnCount(index.parent());
  if (columns == 1) return index.data(Qt::DisplayRole).toString().split(u'\t');
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

  // A line without words of its own leaves the tool tip to the list.
  bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                 const QModelIndex& index) override {
    const QString text = index.data(Qt::ToolTipRole).toString();
    if (event->type() != QEvent::ToolTip || text.isEmpty()) return false;
    QToolTip::showText(event->globalPos(), Qt::convertFromPlainText(text, Qt::WhiteSpaceNormal),
                       view->viewport(), option.rect);
    return true;
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
    const auto stop =
        std::ranges::find_if(tabStops_, [&](int candidate) { return candidate * unit > x; });
    return stop == tabStops_.end() ? x + 2 * unit : *stop * unit;
  }

  std::vector<int> tabStops_;
};

}  // namespace

LineListView::LineListView(std::vector<int> tabStops, QWidget* parent)
    : QAbstractItemView(parent), tabStops_(std::move(tabStops)) {
  setItemDelegate(new LineDelegate(tabStops_, this));
  setEditTriggers(NoEditTriggers);
  setTabKeyNavigation(false);
  setMouseTracking(true);
  connect(horizontalScrollBar(), &QScrollBar::valueChanged, this, &LineListView::ColumnsMoved);
}

int LineListView::ColumnLeft(int column) const {
  const int chars = column <= 0 ? 0 : tabStops_[static_cast<size_t>(column) - 1];
  return kMargin + chars * CharWidth(fontMetrics()) - horizontalOffset();
}

int LineListView::LineHeight() const {
  return fontMetrics().height() + 2;
}

int LineListView::RowCount() const {
  return model() == nullptr ? 0 : model()->rowCount(rootIndex());
}

int LineListView::WholeLinesInSight() const {
  return std::max(1, viewport()->height() / LineHeight());
}

int LineListView::ContentsWidth() const {
  const int last = tabStops_.empty() ? 0 : tabStops_.back();
  return kMargin + (last + kLastColumnChars) * CharWidth(fontMetrics());
}

void LineListView::setModel(QAbstractItemModel* model) {
  if (this->model() != nullptr) this->model()->disconnect(this);
  QAbstractItemView::setModel(model);
  if (model == nullptr) return;
  connect(model, &QAbstractItemModel::rowsRemoved, this, [this] {
    updateGeometries();
    viewport()->update();
  });
}

QRect LineListView::visualRect(const QModelIndex& index) const {
  if (!index.isValid()) return {};
  const int height = LineHeight();
  return {-horizontalOffset(), index.row() * height - verticalOffset(),
          std::max(ContentsWidth(), viewport()->width()), height};
}

void LineListView::scrollTo(const QModelIndex& index, ScrollHint hint) {
  if (!index.isValid()) return;
  updateGeometries();
  const int row = index.row();
  const int lines = WholeLinesInSight();
  const int first = verticalScrollBar()->value();
  if (hint == PositionAtCenter) {
    verticalScrollBar()->setValue(row - lines / 2);
  } else if (hint == PositionAtTop || (hint == EnsureVisible && row < first)) {
    verticalScrollBar()->setValue(row);
  } else if (hint == PositionAtBottom || row >= first + lines) {
    verticalScrollBar()->setValue(row - lines + 1);
  }
}

QModelIndex LineListView::indexAt(const QPoint& point) const {
  const int y = point.y() + verticalOffset();
  const int row = y / LineHeight();
  if (y < 0 || row >= RowCount()) return {};
  return model()->index(row, 0, rootIndex());
}

// Only the first column stands for a row, as in every other selection here.
void LineListView::selectAll() {
  if (selectionMode() == SingleSelection || RowCount() == 0) return;
  const QItemSelection all(model()->index(0, 0), model()->index(RowCount() - 1, 0));
  selectionModel()->select(all, QItemSelectionModel::ClearAndSelect);
}

void LineListView::reset() {
  QAbstractItemView::reset();
  updateGeometries();
}

QModelIndex LineListView::moveCursor(CursorAction action, Qt::KeyboardModifiers /*modifiers*/) {
  const int last = RowCount() - 1;
  if (last < 0) return {};
  const int current = currentIndex().isValid() ? currentIndex().row() : -1;
  int row = std::max(current, 0);
  switch (action) {
    case MoveUp:
    case MovePrevious:
      row = current - 1;
      break;
    case MoveDown:
    case MoveNext:
      row = current + 1;
      break;
    case MovePageUp:
      row = current - WholeLinesInSight();
      break;
    case MovePageDown:
      row = current + WholeLinesInSight();
      break;
    case MoveHome:
      row = 0;
      break;
    case MoveEnd:
      row = last;
      break;
    case MoveLeft:
      horizontalScrollBar()->triggerAction(QScrollBar::SliderSingleStepSub);
      break;
    case MoveRight:
      horizontalScrollBar()->triggerAction(QScrollBar::SliderSingleStepAdd);
      break;
  }
  return model()->index(std::clamp(row, 0, last), 0, rootIndex());
}

int LineListView::horizontalOffset() const {
  return horizontalScrollBar()->value();
}

// The vertical scroll bar counts lines.
int LineListView::verticalOffset() const {
  return verticalScrollBar()->value() * LineHeight();
}

bool LineListView::isIndexHidden(const QModelIndex& /*index*/) const {
  return false;
}

void LineListView::setSelection(const QRect& rect, QItemSelectionModel::SelectionFlags command) {
  const QRect area = rect.normalized().translated(0, verticalOffset());
  const int height = LineHeight();
  const int first = std::max(area.top(), 0) / height;
  const int last = std::min(area.bottom() / height, RowCount() - 1);
  QItemSelection selection;
  if (area.bottom() >= 0 && first <= last) {
    selection.select(model()->index(first, 0, rootIndex()), model()->index(last, 0, rootIndex()));
  }
  selectionModel()->select(selection, command);
}

// Drawing what is in sight costs less than finding out which of many ranges lie there.
QRegion LineListView::visualRegionForSelection(const QItemSelection& /*selection*/) const {
  return viewport()->rect();
}

void LineListView::rowsInserted(const QModelIndex& parent, int start, int end) {
  QAbstractItemView::rowsInserted(parent, start, end);
  updateGeometries();
  viewport()->update();
}

void LineListView::updateGeometries() {
  const int lines = WholeLinesInSight();
  verticalScrollBar()->setRange(0, std::max(0, RowCount() - lines));
  verticalScrollBar()->setPageStep(lines);
  horizontalScrollBar()->setRange(0, std::max(0, ContentsWidth() - viewport()->width()));
  horizontalScrollBar()->setPageStep(viewport()->width());
  horizontalScrollBar()->setSingleStep(4 * CharWidth(fontMetrics()));
  QAbstractItemView::updateGeometries();
}

void LineListView::paintEvent(QPaintEvent* event) {
  QPainter painter(viewport());
  QStyleOptionViewItem option;
  initViewItemOption(&option);
  const QStyle::State state = option.state;
  const int height = LineHeight();
  const int first = (event->rect().top() + verticalOffset()) / height;
  const int last = std::min((event->rect().bottom() + verticalOffset()) / height, RowCount() - 1);
  for (int row = std::max(first, 0); row <= last; ++row) {
    const QModelIndex index = model()->index(row, 0, rootIndex());
    option.rect = visualRect(index);
    option.state = state;
    option.state.setFlag(QStyle::State_Selected, selectionModel()->isSelected(index));
    option.state.setFlag(QStyle::State_HasFocus, hasFocus() && index == currentIndex());
    itemDelegate()->paint(&painter, option, index);
  }
}

void LineListView::changeEvent(QEvent* event) {
  QAbstractItemView::changeEvent(event);
  if (event->type() != QEvent::FontChange) return;
  updateGeometries();
  Q_EMIT ColumnsMoved();
}

// The base class would make the first row current, which here means to select a job.
void LineListView::focusInEvent(QFocusEvent* event) {
  // NOLINTNEXTLINE(bugprone-parent-virtual-call): passing it over is the point
  QAbstractScrollArea::focusInEvent(event);
  viewport()->update();
}

}  // namespace zentorin
