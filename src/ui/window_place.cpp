// SPDX-License-Identifier: MIT
#include "ui/window_place.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>
#include <algorithm>

#include "app/app_settings.h"

namespace zentorin {
namespace {

// The part of a window's upper edge that has to be in sight, pixels.
constexpr int kGripWidth = 60;
constexpr int kGripHeight = 20;

// What the title bar over a window may take, pixels.
constexpr int kTitleBarHeight = 40;

bool CanBeGrabbed(const QRect& window, const QRect& screen) {
  const QRect edge(window.topLeft(), QSize(window.width(), kGripHeight));
  const QRect seen = edge.intersected(screen);
  return seen.height() >= kGripHeight && seen.width() >= std::min(kGripWidth, window.width());
}

int Distance(const QRect& window, const QRect& screen) {
  return (window.center() - screen.center()).manhattanLength();
}

QRect Rectangle(const AppSettings& settings) {
  return {QPoint(settings.formLeft, settings.formTop),
          QPoint(settings.formRight - 1, settings.formBottom - 1)};
}

// Moves a rectangle to the left and up until the screen holds it, or its upper left corner at
// least.
void MoveInto(const QRect& screen, QRect& place) {
  place.moveRight(std::min(place.right(), screen.right()));
  place.moveBottom(std::min(place.bottom(), screen.bottom()));
  place.moveLeft(std::max(place.left(), screen.left()));
  place.moveTop(std::max(place.top(), screen.top()));
}

}  // namespace

QRect PlaceFromSettings(const AppSettings& settings, QSize roomy) {
  const QRect first = Rectangle(AppSettings());
  QRect place = Rectangle(settings);
  if (!place.isValid()) place.setSize(first.size());
  const QList<QScreen*> screens = QGuiApplication::screens();
  if (place == first && !screens.isEmpty()) {
    const QRect screen = screens.first()->availableGeometry().adjusted(0, kTitleBarHeight, 0, 0);
    place.setSize(place.size().expandedTo(roomy.boundedTo(screen.size())));
    if (place != first) MoveInto(screen, place);
  }
  const auto grabbable = [&place](const QScreen* screen) {
    return CanBeGrabbed(place, screen->availableGeometry());
  };
  if (screens.isEmpty() || std::ranges::any_of(screens, grabbable)) return place;
  const auto nearer = [&place](const QScreen* one, const QScreen* other) {
    return Distance(place, one->availableGeometry()) < Distance(place, other->availableGeometry());
  };
  const QRect screen = (*std::ranges::min_element(screens, nearer))->availableGeometry();
  place.setSize(place.size().boundedTo(screen.size()));
  place.moveCenter(screen.center());
  return place;
}

void RememberPlace(const QWidget& window, AppSettings& settings) {
  const bool normal =
      (window.windowState() & (Qt::WindowMaximized | Qt::WindowFullScreen | Qt::WindowMinimized)) ==
      Qt::WindowNoState;
  const QRect place =
      normal || !window.normalGeometry().isValid() ? window.geometry() : window.normalGeometry();
  settings.formLeft = place.x();
  settings.formTop = place.y();
  settings.formRight = place.x() + place.width();
  settings.formBottom = place.y() + place.height();
}

}  // namespace zentorin
