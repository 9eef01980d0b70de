// SPDX-License-Identifier: MIT
#include "base/drives.h"

#include <tuple>
#include <vector>

#include <gtest/gtest.h>

namespace zentorin {
namespace {

using Case = std::tuple<QString, QString>;

TEST(Drives, TurnsLocalPathsIntoSystemPaths) {
  const Drives drives(QStringLiteral("/home/u/z/"));
  const std::vector<Case> cases = {
      {QString(), QStringLiteral("/home/u/z")},
      {QStringLiteral("save\\mp3\\"), QStringLiteral("/home/u/z/save/mp3")},
      {QStringLiteral(".\\a/.//b"), QStringLiteral("/home/u/z/a/b")},
      {QStringLiteral("..\\..\\x"), QStringLiteral("/home/x")},
      {QStringLiteral("../../../../../x"), QStringLiteral("/x")},
      {QStringLiteral("/"), QStringLiteral("/")},
      {QStringLiteral("\\srv\\a\\..\\b\\"), QStringLiteral("/srv/b")},
      {QStringLiteral("///srv"), QStringLiteral("/srv")},
      {QStringLiteral("/.."), QStringLiteral("/")},
      {QStringLiteral("D:\\音楽\\a"), QStringLiteral("/home/u/z/drives/d/音楽/a")},
      {QStringLiteral("c:/a/../../../b"), QStringLiteral("/home/u/z/drives/c/b")},
      {QStringLiteral("C:"), QStringLiteral("/home/u/z/drives/c")},
      {QStringLiteral("C:\\"), QStringLiteral("/home/u/z/drives/c")},
      {QStringLiteral("C:a"), QStringLiteral("/home/u/z/drives/c/a")},
      {QStringLiteral("C:..\\.."), QStringLiteral("/home/u/z/drives/c")},
      {QStringLiteral("\\\\nas\\Music\\a"), QStringLiteral("/home/u/z/drives/unc/nas/Music/a")},
      {QStringLiteral("//nas/m/../../x"), QStringLiteral("/home/u/z/drives/unc/nas/m/x")},
      {QStringLiteral("//../../x"), QStringLiteral("/home/u/z/drives/unc/x")},
      {QStringLiteral("１:\\a"), QStringLiteral("/home/u/z/１:/a")},
  };
  for (const auto& [path, system] : cases)
    EXPECT_EQ(drives.ToSystemPath(path), system) << path.toStdString();
  EXPECT_EQ(Drives(QStringLiteral("/")).ToSystemPath(QStringLiteral("C:\\a")),
            QStringLiteral("/drives/c/a"));
}

TEST(Drives, StoresPathsBelowTheProgramsFolderRelatively) {
  const Drives drives(QStringLiteral("/home/u/z"));
  const std::vector<Case> cases = {
      {QStringLiteral("/home/u/z/save/mp3/"), QStringLiteral("save\\mp3")},
      {QStringLiteral("/home/u/z//save"), QStringLiteral("save")},
      {QStringLiteral("/home/u/z"), QStringLiteral("/home/u/z")},
      {QStringLiteral("/home/u/zz/a/"), QStringLiteral("/home/u/zz/a")},
      {QStringLiteral("/home/u/z/c:x"), QStringLiteral("/home/u/z/c:x")},
      {QStringLiteral("/"), QStringLiteral("/")},
      {QStringLiteral("C:\\"), QStringLiteral("C:\\")},
      {QStringLiteral("C:\\a\\"), QStringLiteral("C:\\a")},
      {QString(), QString()},
  };
  for (const auto& [system, stored] : cases)
    EXPECT_EQ(drives.ToStoredPath(system), stored) << system.toStdString();
}

}  // namespace
}  // namespace zentorin
