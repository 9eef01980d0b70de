// SPDX-License-Identifier: MIT
#include "app/list_lock.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

#include "tests/support/temp_dir.h"

namespace zentorin::test {
namespace {

TEST(ListLock, KeepsASecondRunOffUnderEveryNameOfTheList) {
  const TempDir home;
  const TempDir otherHome;
  const QString list = home.Write("list.dat", "1");
  const QString link = home.Path("link.dat");
  ASSERT_TRUE(QFile::link(list, link));
  ListLock first;
  ASSERT_TRUE(first.Acquire(list, home.Path()));
  ListLock second;
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

}  // namespace
}  // namespace zentorin::test
