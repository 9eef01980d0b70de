// SPDX-License-Identifier: MIT
#include "ui/widgets/pattern_choice.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QEvent>
#include <QLineEdit>
#include <QScreen>
#include <QSignalBlocker>
#include <QStyle>
#include <algorithm>
#include <chrono>

#include "jobs/pattern_lists.h"

namespace zentorin {
namespace {

constexpr std::chrono::milliseconds kDelay{10};
constexpr int kVisibleItems = 20;

}  // namespace

PatternChoice::PatternChoice(QComboBox& combo, const QString& timerName)
    : QObject(&combo), combo_(combo), timer_(this) {
  timer_.setObjectName(timerName);
  timer_.setSingleShot(true);
  timer_.setInterval(kDelay);
  combo.setMaxVisibleItems(kVisibleItems);
  combo.lineEdit()->installEventFilter(this);
  combo.installEventFilter(this);
  connect(&combo, &QComboBox::textActivated, this, [this] { timer_.start(); });
  connect(&timer_, &QTimer::timeout, this, &PatternChoice::KeepExpression);
}

void PatternChoice::SetEntries(const QStringList& entries) {
  const QSignalBlocker blocker(combo_);
  const QString text = combo_.currentText();
  combo_.clear();
  combo_.addItems(entries);
  combo_.setCurrentIndex(-1);
  combo_.setEditText(text);
  WidenList();
}

// The list shows its expressions whole, wider than the box where they need it.
void PatternChoice::WidenList() {
  QAbstractItemView* view = combo_.view();
  const int whole = view->sizeHintForColumn(0) + 2 * view->frameWidth() +
                    view->style()->pixelMetric(QStyle::PM_ScrollBarExtent);
  view->setMinimumWidth(std::min(whole, view->screen()->availableGeometry().width()));
}

bool PatternChoice::eventFilter(QObject* watched, QEvent* event) {
  if (watched == &combo_) {
    if (event->type() == QEvent::FontChange) WidenList();
    return QObject::eventFilter(watched, event);
  }
  // Filters see the clicks on a disabled box, too.
  if (event->type() == QEvent::MouseButtonDblClick && combo_.isEnabled()) {
    Q_EMIT DoubleClicked();
    return true;
  }
  return QObject::eventFilter(watched, event);
}

void PatternChoice::KeepExpression() {
  const QString expression = PatternLists::ExpressionOf(combo_.currentText());
  combo_.setCurrentIndex(-1);
  combo_.setEditText(expression);
  Q_EMIT Chosen(expression);
}

}  // namespace zentorin
