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
  struct Case {
    const char* link;
    const char* base;
    const char* address;
    const char* expected;
  };
  const Case cases[] = {
      {"a.mp3", "http://h/d", "http://h/d/a.mp3", "http://h/d/a.mp3"},
      // Not below its page's directory: worked out anew from the link.
      {"/img/a.gif", "http://h/d", "http://h/img/a.gif", "http://h/img/a.gif"},
      {"HTTP://o/a.gif", "http://h/d", "http://h/other", "HTTP://o/a.gif"},
      {"b.gif", "", "", "http://root/b.gif"},
      {"", "http://h/d", "mms://h/a.wma", "http://h/d/"},
      {"http://h/x", "", "http://h/y", "http://h/y"},
      {"", "", "", "http://root/"},
  };
  for (const Case& c : cases) {
    FileListRow row;
    row.Set(FileListRow::Link, QString::fromUtf8(c.link));
    row.Set(FileListRow::BaseDir, QString::fromUtf8(c.base));
    row.Set(FileListRow::Address, QString::fromUtf8(c.address));
    EXPECT_EQ(RowAddress(row, QStringLiteral("http://root")), QString::fromUtf8(c.expected))
        << c.link << " " << c.base << " " << c.address;
  }
}

TEST(LocalTarget, ATreeMirrorsTheSiteAndKeepsOutsidersApart) {
  struct Case {
    const char* address;
    const char* folder;
  };
  const Case cases[] = {
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
  for (const Case& c : cases) {
    EXPECT_EQ(TreeFolder(QString::fromUtf8(c.address), QStringLiteral("http://h/base/index.html"),
                         QStringLiteral("http://h/root/")),
              QString::fromUtf8(c.folder))
        << c.address;
  }
  EXPECT_EQ(TreeFolder(QStringLiteral("http://h/a/b.mp3"), {}, {}),
            QStringLiteral("zz-External\\h\\a"))
      << "no root contains anything";
}

TEST(LocalTarget, NamesAndSuffixes) {
  EXPECT_EQ(LocalName({}, QStringLiteral("http://h/a.mp3?x=1")), QStringLiteral("a.mp3?x=1"));
  EXPECT_EQ(LocalName(QStringLiteral("2024/05:"), QStringLiteral("http://h/a")),
            QStringLiteral("2024_05:a"));
  EXPECT_EQ(LocalName({}, QStringLiteral("http://h/..")), QStringLiteral("_"));
  EXPECT_EQ(LocalName({}, QStringLiteral("http://h/")), QString());
  EXPECT_EQ(SuffixOf(QStringLiteral("http://h/a.b.PHP")), QStringLiteral(".php"));
  EXPECT_FALSE(IsStreamSuffix(SuffixOf(QStringLiteral("http://h/a.php?x"))));
  EXPECT_EQ(WithMp3Suffix(QStringLiteral("a.WMA")), QStringLiteral("a.mp3"));
  EXPECT_EQ(WithMp3Suffix(QStringLiteral("a.wmv")), QStringLiteral("a.wmv"));
}

TEST(SaveFolder, IsMadeWithItsParentsOrSaysWhyNot) {
  const TempDir home;
  const TempDir outside;
  home.Write(QStringLiteral("file"), "x");
  QFile::link(home.Path(QStringLiteral("nothing")), home.Path(QStringLiteral("dangling")));
  QFile::link(outside.Path(), home.Path(QStringLiteral("elsewhere")));
  QFile::link(outside.Path(), home.Path(QStringLiteral("plain-out")));
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
    const QString name = QString::fromUtf8(c.folder);
    const QString path = name == QStringLiteral(".") ? home.Path() : home.Path(name);
    const SaveFolder folder(path, QStringLiteral("/"));
    const SaveFolder::Made made = folder.Make(QString::fromUtf8(c.below));
    EXPECT_EQ(made.error, static_cast<int>(c.error)) << c.folder << " " << c.below;
    EXPECT_EQ(made.refused, c.refused) << c.folder << " " << c.below;
    EXPECT_TRUE(made.error != 0 || QFileInfo(made.path).isDir()) << c.folder << " " << c.below;
  }
}

TEST(SaveFolder, TheProgramsOwnFilesAreNotWrittenOver) {
  const TempDir home;
  home.Write(QStringLiteral("Conf.txt"), "x");
  home.Write(QStringLiteral("jobs.dat"), "x");
  const SaveFolder folder(home.Path(), home.Path());
  EXPECT_NE(folder.Forbids(home.Path(QStringLiteral("Conf.txt"))), 0);
  EXPECT_NE(folder.Forbids(home.Path(QStringLiteral("jobs.dat"))), 0);
  EXPECT_EQ(folder.Forbids(home.Path(QStringLiteral("a.mp3"))), 0);
  EXPECT_EQ(folder.Forbids(home.Path(QString(5000, QLatin1Char('x')))),
            static_cast<int>(RunTimeError::BadFileName));
}

}  // namespace
}  // namespace zentorin
