// SPDX-License-Identifier: MIT
#include "ui/widgets/list_drop.h"

#include <QDropEvent>
#include <QLineEdit>
#include <QMimeData>

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

// The path of the only .dat file that a drop brings; empty when it brings anything else.
QString DroppedList(const QMimeData& data) {
  const QList<QUrl> urls = data.urls();
  if (urls.size() != 1 || !urls.first().isLocalFile()) return {};
  const QString path = urls.first().toLocalFile();
  return path.endsWith(".dat"_L1, Qt::CaseInsensitive) ? path : QString();
}

}  // namespace

ListDrop::ListDrop(QWidget* window) : QObject(window) {
  window->setAcceptDrops(true);
  window->installEventFilter(this);
  for (QLineEdit* edit : window->findChildren<QLineEdit*>()) edit->installEventFilter(this);
}

bool ListDrop::eventFilter(QObject* watched, QEvent* event) {
  const QEvent::Type type = event->type();
  if (type != QEvent::DragEnter && type != QEvent::DragMove && type != QEvent::Drop) {
    return QObject::eventFilter(watched, event);
  }
  auto* drop = static_cast<QDropEvent*>(event);
  const QString path = DroppedList(*drop->mimeData());
  if (path.isEmpty()) return false;
  // Never a move: who dropped the file would delete it.
  drop->setDropAction(Qt::CopyAction);
  drop->accept();
  if (type == QEvent::Drop) Q_EMIT Dropped(path);
  return true;
}

}  // namespace zentorin
