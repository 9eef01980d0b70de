// SPDX-License-Identifier: MIT
#include "base/wait.h"

#include <QTimer>

#include <gtest/gtest.h>

#include "base/run_state.h"

namespace zentorin {
namespace {

using std::chrono::milliseconds;

TEST(Wait, ACancelEndsASleepAtOnce) {
  RunState state;
  QTimer::singleShot(milliseconds(10), &state, &RunState::RequestCancel);
  EXPECT_FALSE(QCoro::waitFor(SleepUnlessCancelled(state, std::chrono::hours(1))));
  EXPECT_FALSE(QCoro::waitFor(SleepUnlessCancelled(state, std::chrono::hours(1))))
      << "a cancel that came before counts too";
}

TEST(Wait, ASleepEndsByItself) {
  RunState state;
  EXPECT_TRUE(QCoro::waitFor(SleepUnlessCancelled(state, milliseconds(1))));
}

}  // namespace
}  // namespace zentorin
