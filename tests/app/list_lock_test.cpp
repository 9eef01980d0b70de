// SPDX-License-Identifier: MIT
#include "app/list_lock.h"

#include <QDir>
#include <QFile>

#include <QCoro/QCoroTask>
#include <gtest/gtest.h>

#include "tests/support/temp_dir.h"

namespace zentorin::test {
namespace {

TEST(RunLock, KeepsASecondRunOffUnderEveryNameOfTheList) {
  const TempDir home;
  const TempDir otherHome;
  const QString list = home.Write("list.dat", "1");
  const QString link = home.Path("link.dat");
  ASSERT_TRUE(QFile::link(list, link));
  RunLock first;
  ASSERT_TRUE(first.Acquire(list, home.Path()));
  RunLock second;
  EXPECT_FALSE(second.Acquire(link, home.Path()));
  EXPECT_FALSE(second.Acquire(list, otherHome.Path())) << "with another program folder too";

  ASSERT_TRUE(QFile::remove(list));
  home.Write("list.dat", "2");
  EXPECT_FALSE(second.Acquire(list, home.Path())) << "after the list was written anew too";
  EXPECT_TRUE(second.Acquire(home.Write("other.dat", ""), home.Path()));
  second.Release();

  first.Release();
  ASSERT_TRUE(first.Acquire(home.Path("gone.dat"), home.Path()));
  EXPECT_TRUE(second.Acquire(home.Path("lost.dat"), home.Path())) << "gone is not lost";
  EXPECT_TRUE(second.Acquire(list, home.Path()));
  first.Release();
  second.Release();
  EXPECT_EQ(QDir(home.Path()).entryList(QDir::Files | QDir::Hidden | QDir::System),
            QStringList({"link.dat", "list.dat", "other.dat"}))
      << "a lock leaves nothing behind";
}

TEST(WindowLock, BringsTheWindowThatHoldsTheListForward) {
  const TempDir home;
  const TempDir runtime;
  qputenv("XDG_RUNTIME_DIR", runtime.Path().toUtf8());
  const QString list = home.Write("list.dat", "");
  const QString link = home.Path("link.dat");
  ASSERT_TRUE(QFile::link(list, link));
  WindowLock first;
  ASSERT_TRUE(first.Acquire(list));
  const QString folder = runtime.Path("zentorin");
  const QStringList sockets = QDir(folder).entryList({"*.socket"}, QDir::System);
  ASSERT_EQ(sockets.size(), 1);
  ASSERT_TRUE(first.Acquire({}));
  runtime.Write("zentorin/" + sockets.first(), "left behind by a crash");
  ASSERT_TRUE(first.Acquire(list));

  WindowLock second;
  EXPECT_FALSE(second.Acquire(link));
  EXPECT_TRUE(RunLock().Acquire(list, home.Path())) << "a run does not mind a window";
  QByteArray token;
  QObject::connect(&first, &WindowLock::RaiseRequested,
                   [&token](const QByteArray& given) { token = given; });
  qputenv("XDG_ACTIVATION_TOKEN", "right");
  EXPECT_TRUE(QCoro::waitFor(second.RaiseHolder(link)));
  EXPECT_EQ(token, "right");

  ASSERT_TRUE(QFile::setPermissions(folder, QFile::Permissions(0x7777)));
  WindowLock third;
  EXPECT_FALSE(QCoro::waitFor(third.RaiseHolder(list))) << "a folder that others can reach";
  EXPECT_TRUE(third.Acquire(list));
}

}  // namespace
}  // namespace zentorin::test
