// SPDX-License-Identifier: MIT
#include "base/status_board.h"

#include <QEventLoop>

#include <gtest/gtest.h>

namespace zentorin {
namespace {

TEST(ChangeThrottle, AnnouncesTheFirstTouchAtOnceAndNeverLosesTheLast) {
  ChangeThrottle throttle;
  int due = 0;
  QEventLoop loop;
  QObject::connect(&throttle, &ChangeThrottle::Due, &loop, [&] {
    ++due;
    loop.quit();
  });
  throttle.Touch();
  EXPECT_EQ(due, 1);
  for (int touch = 0; touch < 1000; ++touch) throttle.Touch();
  const int before = due;
  throttle.Touch();
  if (due == before) loop.exec();
  EXPECT_GT(due, before);
  throttle.Touch();
  throttle.Flush();
  const int flushed = due;
  throttle.Flush();
  EXPECT_EQ(due, flushed) << "nothing was pending";
}

TEST(StatusBoard, TellsOnlyWhatChanged) {
  StatusBoard board;
  int changes = 0;
  QObject::connect(&board, &StatusBoard::Changed, &board, [&] { ++changes; });
  board.SetBusy(false);
  board.SetStatus({});
  board.SetCancelCaption("キャンセル");
  EXPECT_EQ(changes, 0);
  board.SetStatus("a", StatusBoard::kRed);
  EXPECT_EQ(changes, 1) << "text and colour are one change";
  board.SetStatus("a", StatusBoard::kBlue);
  EXPECT_EQ(changes, 2);
  board.SetProgress(7);
  EXPECT_EQ(board.Progress(), 1.0);
}

}  // namespace
}  // namespace zentorin
