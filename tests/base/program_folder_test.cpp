// SPDX-License-Identifier: MIT
#include "base/program_folder.h"

#include <QDir>
#include <QFileInfo>

#include <gtest/gtest.h>

#include "tests/support/temp_dir.h"

namespace zentorin {
namespace {

void SetVariable(const char* name, const QString& value) {
  qputenv(name, value.toUtf8());
}

TEST(ProgramFolder, IsTheUsersDataFolderWhenNothingElseIsSaid) {
  const test::TempDir dir;
  const QString bin = dir.Path("bin");
  SetVariable("ZENTORIN_HOME", {});
  SetVariable("XDG_DATA_HOME", dir.Path("data"));
  SetVariable("HOME", dir.Path("me"));
  EXPECT_EQ(FindProgramFolder(bin), dir.Path("data/zentorin"));
  EXPECT_TRUE(QFileInfo(dir.Path("data/zentorin")).isDir());
  for (const char* useless : {"", "relative"}) {
    SetVariable("XDG_DATA_HOME", useless);
    EXPECT_EQ(FindProgramFolder(bin), dir.Path("me/.local/share/zentorin"));
  }
}

TEST(ProgramFolder, IsTheOneThatTheUserNamesOrCarriesAlong) {
  const test::TempDir dir;
  const QString bin = dir.Path("bin");
  SetVariable("ZENTORIN_HOME", {});
  dir.Write("bin/portable", "");
  EXPECT_EQ(FindProgramFolder(bin), bin);
  SetVariable("ZENTORIN_HOME", dir.Path("own/"));
  EXPECT_EQ(FindProgramFolder(bin), dir.Path("own"));
  SetVariable("ZENTORIN_HOME", ".");
  EXPECT_EQ(FindProgramFolder(bin), QDir::currentPath());
  SetVariable("ZENTORIN_HOME", dir.Path("bin/portable"));
  EXPECT_EQ(FindProgramFolder(bin), QString()) << "a file is in the way";
}

}  // namespace
}  // namespace zentorin
