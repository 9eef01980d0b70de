// SPDX-License-Identifier: MIT
#include "base/drives.h"

#include <tuple>
#include <vector>

#include <gtest/gtest.h>

namespace zentorin {
namespace {

using Case = std::tuple<QString, QString>;

TEST(Drives, TurnsLocalPathsIntoSystemPaths) {
  const Drives drives("/home/u/z/");
  for (const auto& [path, system] :
       {Case(QString(), "/home/u/z"), Case("save\\mp3\\", "/home/u/z/save/mp3"),
        Case(".\\a/.//b", "/home/u/z/a/b"), Case("..\\..\\x", "/home/x"),
        Case("../../../../../x", "/x"), Case("/", "/"), Case("\\srv\\a\\..\\b\\", "/srv/b"),
        Case("///srv", "/srv"), Case("/..", "/"), Case("D:\\音楽\\a", "/home/u/z/drives/d/音楽/a"),
        Case("c:/a/../../../b", "/home/u/z/drives/c/b"), Case("C:", "/home/u/z/drives/c"),
        Case("C:\\", "/home/u/z/drives/c"), Case("C:a", "/home/u/z/drives/c/a"),
        Case("C:..\\..", "/home/u/z/drives/c"),
        Case("\\\\nas\\Music\\a", "/home/u/z/drives/unc/nas/Music/a"),
        Case("//nas/m/../../x", "/home/u/z/drives/unc/nas/m/x"),
        Case("//../../x", "/home/u/z/drives/unc/x"), Case("１:\\a", "/home/u/z/１:/a")})
    EXPECT_EQ(drives.ToSystemPath(path), system) << path.toStdString();
  EXPECT_EQ(Drives("/").ToSystemPath("C:\\a"), "/drives/c/a");
}

TEST(Drives, StoresPathsBelowTheProgramsFolderRelatively) {
  const Drives drives("/home/u/z");
  for (const auto& [system, stored] :
       {Case("/home/u/z/save/mp3/", "save\\mp3"), Case("/home/u/z//save", "save"),
        Case("/home/u/z", "/home/u/z"), Case("/home/u/zz/a/", "/home/u/zz/a"),
        Case("/home/u/z/c:x", "/home/u/z/c:x"), Case("/", "/"), Case("C:\\", "C:\\"),
        Case("C:\\a\\", "C:\\a"), Case(QString(), QString())})
    EXPECT_EQ(drives.ToStoredPath(system), stored) << system.toStdString();
}

}  // namespace
}  // namespace zentorin
