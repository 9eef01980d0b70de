// SPDX-License-Identifier: MIT
#include "base/program_folder.h"

#include <QDir>
#include <QFileInfo>

#include <gtest/gtest.h>

#include "tests/support/temp_dir.h"

namespace zentorin {
namespace {

// An environment variable that gets its old value back.
class ScopedVariable {
 public:
  ScopedVariable(const char* name, const QString& value)
      : name_(name), wasSet_(qEnvironmentVariableIsSet(name)), old_(qgetenv(name)) {
    Set(value);
  }
  ScopedVariable(const ScopedVariable&) = delete;
  ScopedVariable& operator=(const ScopedVariable&) = delete;
  ~ScopedVariable() {
    if (wasSet_)
      qputenv(name_, old_);
    else
      qunsetenv(name_);
  }

  void Set(const QString& value) const { qputenv(name_, value.toUtf8()); }

 private:
  const char* name_;
  bool wasSet_;
  QByteArray old_;
};

TEST(ProgramFolder, IsTheUsersDataFolderWhenNothingElseIsSaid) {
  const test::TempDir dir;
  const ScopedVariable home("ZENTORIN_HOME", {});
  const ScopedVariable data("XDG_DATA_HOME", dir.Path(QStringLiteral("data")));
  const ScopedVariable userHome("HOME", dir.Path(QStringLiteral("me")));
  const QString bin = dir.Path(QStringLiteral("bin"));

  EXPECT_EQ(FindProgramFolder(bin), dir.Path(QStringLiteral("data/zentorin")));
  EXPECT_TRUE(QFileInfo(dir.Path(QStringLiteral("data/zentorin"))).isDir());
  for (const QString& useless : {QString(), QStringLiteral("relative")}) {
    data.Set(useless);
    EXPECT_EQ(FindProgramFolder(bin), dir.Path(QStringLiteral("me/.local/share/zentorin")));
  }
}

TEST(ProgramFolder, IsTheOneThatTheUserNamesOrCarriesAlong) {
  const test::TempDir dir;
  const ScopedVariable home("ZENTORIN_HOME", {});
  const QString bin = dir.Path(QStringLiteral("bin"));
  dir.Write(QStringLiteral("bin/portable"), "");
  EXPECT_EQ(FindProgramFolder(bin), bin);
  home.Set(dir.Path(QStringLiteral("own/")));
  EXPECT_EQ(FindProgramFolder(bin), dir.Path(QStringLiteral("own")));
  home.Set(QStringLiteral("."));
  EXPECT_EQ(FindProgramFolder(bin), QDir::currentPath());
  home.Set(dir.Path(QStringLiteral("bin/portable")));
  EXPECT_EQ(FindProgramFolder(bin), QString()) << "a file is in the way";
}

}  // namespace
}  // namespace zentorin
