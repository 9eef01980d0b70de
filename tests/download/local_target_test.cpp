// SPDX-License-Identifier: MIT
#include "download/local_target.h"

#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

#include "base/run_time_error.h"
#include "download/save_folder.h"
#include "tests/support/temp_dir.h"

namespace zentorin {
namespace {

using test::TempDir;

TEST(LocalTarget, ARowsAddressIsChosenByItsColumns) {
  const char* const cases[][4] = {
      {"a.mp3", "http://h/d", "http://h/d/a.mp3", "http://h/d/a.mp3"},
      // Not below its page's directory: worked out anew from the link.
      {"/img/a.gif", "http://h/d", "http://h/img/a.gif", "http://h/img/a.gif"},
      {"HTTP://o/a.gif", "http://h/d", "http://h/other", "HTTP://o/a.gif"},
      {"b.gif", "", "", "http://root/b.gif"},
      {"", "http://h/d", "mms://h/a.wma", "http://h/d/"},
      {"http://h/x", "", "http://h/y", "http://h/y"},
      {"", "", "", "http://root/"},
  };
  for (const auto& [link, base, address, expected] : cases) {
    FileListRow row;
    row.Set(FileListRow::Link, link);
    row.Set(FileListRow::BaseDir, base);
    row.Set(FileListRow::Address, address);
    EXPECT_EQ(RowAddress(row, "http://root"), expected) << link << " " << base << " " << address;
  }
}

TEST(LocalTarget, ATreeMirrorsTheSiteAndKeepsOutsidersApart) {
  const char* const cases[][2] = {
      {"http://h/root/a.mp3", ""},
      {"http://h/base/a.mp3", ""},
      {"http://h/base/x/y/a.mp3", "x\\y"},
      {"http://h/root/x/a.mp3", "x"},
      {"http://o/p/q/a.mp3", "zz-External\\o\\p\\q"},
      {"http://h/base/../../etc/a.mp3", "_\\_\\etc"},
      {"http://h/base/%2e%2e/%2e%2e/a.mp3", "_\\_"},
      {"http://h/base/..\\..\\a/b.mp3", "_\\_\\a"},
      {"http://../../../a.mp3", "zz-External\\_\\_\\_"},
      {"nowhere/a.mp3", "zz-External"},
  };
  for (const auto& [address, folder] : cases) {
    EXPECT_EQ(TreeFolder(address, "http://h/base/index.html", "http://h/root/"), folder) << address;
  }
  EXPECT_EQ(TreeFolder("http://h/a/b.mp3", {}, {}), "zz-External\\h\\a")
      << "no root contains anything";
}

TEST(LocalTarget, NamesAndSuffixes) {
  EXPECT_EQ(LocalName({}, "http://h/a.mp3?x=1"), "a.mp3?x=1");
  EXPECT_EQ(LocalName("2024/05:", "http://h/a"), "2024_05:a");
  EXPECT_EQ(LocalName({}, "http://h/.."), "_");
  EXPECT_EQ(LocalName({}, "http://h/"), QString());
  EXPECT_EQ(SuffixOf("http://h/a.b.PHP"), ".php");
  EXPECT_FALSE(IsStreamSuffix(SuffixOf("http://h/a.php?x")));
  EXPECT_EQ(WithMp3Suffix("a.WMA"), "a.mp3");
  EXPECT_EQ(WithMp3Suffix("a.wmv"), "a.wmv");
}

TEST(SaveFolder, IsMadeWithItsParentsOrSaysWhyNot) {
  const TempDir home;
  const TempDir outside;
  home.Write("file", "x");
  QFile::link(home.Path("nothing"), home.Path("dangling"));
  QFile::link(outside.Path(), home.Path("elsewhere"));
  QFile::link(outside.Path(), home.Path("plain-out"));
  struct Case {
    const char* folder;
    const char* below;
    RunTimeError error;
    bool refused;
  };
  const Case cases[] = {
      {"a/b", "c\\d", RunTimeError::None, false},
      {"a/b", "", RunTimeError::None, false},
      {"file", "", RunTimeError::PathAccess, false},
      {"file/x", "", RunTimeError::PathAccess, false},
      {"dangling", "", RunTimeError::PathAccess, false},
      {"elsewhere", "x", RunTimeError::None, false},  // the user's own choice
      {".", "plain-out\\x", RunTimeError::PathAccess, true},
      {".", "dangling\\x", RunTimeError::PathAccess, true},
      {".", "file\\x", RunTimeError::PathAccess, false},
  };
  for (const Case& c : cases) {
    const SaveFolder folder(home.Path(c.folder), "/");
    const SaveFolder::Made made = folder.Make(c.below);
    EXPECT_EQ(made.error, static_cast<int>(c.error)) << c.folder << " " << c.below;
    EXPECT_EQ(made.refused, c.refused) << c.folder << " " << c.below;
    EXPECT_TRUE(made.error != 0 || QFileInfo(made.path).isDir()) << c.folder << " " << c.below;
  }
}

TEST(SaveFolder, TheProgramsOwnFilesAreNotWrittenOver) {
  const TempDir home;
  home.Write("Conf.txt", "x");
  home.Write("jobs.dat", "x");
  const SaveFolder folder(home.Path(), home.Path());
  EXPECT_NE(folder.Forbids(home.Path("Conf.txt")), 0);
  EXPECT_NE(folder.Forbids(home.Path("jobs.dat")), 0);
  EXPECT_EQ(folder.Forbids(home.Path("a.mp3")), 0);
  EXPECT_EQ(folder.Forbids(home.Path(QString(5000, u'x'))),
            static_cast<int>(RunTimeError::BadFileName));
}

}  // namespace
}  // namespace zentorin
