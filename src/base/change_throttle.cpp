// SPDX-License-Identifier: MIT
#include "base/change_throttle.h"

namespace zentorin {
namespace {

constexpr int kIntervalMs = 100;

}  // namespace

ChangeThrottle::ChangeThrottle(QObject* parent) : QObject(parent), timer_(this) {
  timer_.setSingleShot(true);
  connect(&timer_, &QTimer::timeout, this, &ChangeThrottle::Announce);
}

void ChangeThrottle::Touch() {
  if (timer_.isActive()) return;
  if (!sinceLast_.isValid() || sinceLast_.hasExpired(kIntervalMs)) {
    Announce();
    return;
  }
  timer_.start(static_cast<int>(kIntervalMs - sinceLast_.elapsed()));
}

void ChangeThrottle::Flush() {
  if (!timer_.isActive()) return;
  timer_.stop();
  Announce();
}

void ChangeThrottle::Announce() {
  sinceLast_.start();
  Q_EMIT Due();
}

}  // namespace zentorin
