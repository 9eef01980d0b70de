// SPDX-License-Identifier: MIT
#include "base/activity.h"

#include <QEventLoop>
#include <QTimer>

#include <gtest/gtest.h>

#include "base/wait.h"

namespace zentorin {
namespace {

TEST(Activity, TheLastOfItsPhasesCountsAndNoneIsTakenBackByAnother) {
  Activity activity;
  int changes = 0;
  QObject::connect(&activity, &Activity::Changed, &activity, [&] { ++changes; });
  const Activity::Scope armed(activity, Phase::Armed);
  EXPECT_EQ(activity.Now().phase, Phase::Armed);
  {
    const Activity::Scope downloading(activity, Phase::Downloading);
    const Activity::Scope listing(activity, Phase::Listing);
    const Activity::Scope page(activity, Phase::FetchingPage);
    activity.SetCancelling();
    EXPECT_EQ(activity.Now().phase, Phase::Listing);
  }
  EXPECT_EQ(activity.Now().phase, Phase::Armed);
  EXPECT_FALSE(activity.Now().cancelling) << "it goes with the command";
  EXPECT_EQ(changes, 6) << "each is told at once";
}

TEST(Activity, ProgressIsHeldBackButNeverLostNorIsAFaultOrAStepOfACountdown) {
  Activity activity;
  QStringList told;
  QEventLoop loop;
  QObject::connect(&activity, &Activity::Changed, &loop, [&] {
    told.append(activity.Now().message.text + QString::number(activity.Now().bytes));
    loop.quit();
  });
  activity.Say("a note");
  EXPECT_EQ(told, QStringList("a note0")) << "the first is told at once";
  for (int bytes = 1; bytes < 100; ++bytes) activity.SetBytes(bytes);
  EXPECT_LE(told.size(), 3);
  while (told.last() != "a note99") loop.exec();
  activity.SetBytes(100);
  told.clear();
  activity.Say("a fault", Tone::Fault);
  activity.Say("a fault", Tone::Fault);
  EXPECT_EQ(told, QStringList({"a fault100"}));
  activity.SetTimeLeft(std::chrono::milliseconds(100));
  EXPECT_EQ(told.size(), 2);
}

TEST(Wait, OnlyACancelCutsASleepShort) {
  CancelSource source;
  EXPECT_TRUE(QCoro::waitFor(SleepUnlessCancelled(source.Token(), std::chrono::milliseconds(1))));
  QTimer::singleShot(10, [&source] { source.Cancel(); });
  for (const char* cancel : {"meanwhile", "before"}) {
    EXPECT_FALSE(QCoro::waitFor(SleepUnlessCancelled(source.Token(), std::chrono::hours(1))))
        << cancel;
  }
}

}  // namespace
}  // namespace zentorin
