// SPDX-License-Identifier: MIT
#include "download/local_target.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

#include "base/outcome.h"
#include "download/save_folder.h"
#include "download/stream/recording_file.h"
#include "tests/support/temp_dir.h"

namespace zentorin {
namespace {

using test::TempDir;

TEST(LocalTarget, ARowsAddressIsChosenByItsColumns) {
  using Case = std::tuple<const char*, const char*, const char*, const char*>;
  for (const auto& [link, base, address, expected] :
       {Case("a.mp3", "http://h/d", "http://h/d/a.mp3", "http://h/d/a.mp3"),
        // Not below its page's directory: worked out anew from the link.
        Case("/img/a.gif", "http://h/d", "http://h/img/a.gif", "http://h/img/a.gif"),
        Case("HTTP://o/a.gif", "http://h/d", "http://h/other", "HTTP://o/a.gif"),
        Case("/a?b&amp;c", "http://h/d", "http://h/a?b&c", "http://h/a?b&c"),
        Case("b.gif", "", "", "http://root/b.gif"), Case("", "", "", "http://root/"),
        Case("", "http://h/d", "mms://h/a.wma", "http://h/d/"),
        Case("http://h/x", "", "http://h/y", "http://h/y")}) {
    FileListRow row;
    row.Set(FileListRow::Link, link);
    row.Set(FileListRow::BaseDir, base);
    row.Set(FileListRow::Address, address);
    EXPECT_EQ(RowAddress(row, "http://root"), expected) << link << " " << base << " " << address;
  }
}

TEST(LocalTarget, ATreeMirrorsTheSiteAndKeepsOutsidersApart) {
  using Case = std::pair<const char*, const char*>;
  for (const auto& [address, folder] :
       {Case("http://h/root/a.mp3", ""), Case("http://h/base/a.mp3", ""),
        Case("http://h/base/x/y/a.mp3", "x\\y"), Case("http://h/root/x/a.mp3", "x"),
        Case("http://o/p/q/a.mp3", "zz-External\\o\\p\\q"),
        Case("http://h/base/../../etc/a.mp3", "_\\_\\etc"),
        Case("http://h/base/%2e%2e/%2e%2e/a.mp3", "%2e%2e\\%2e%2e"),
        Case("http://h/base/..\\..\\a/b.mp3", "_\\_\\a"),
        Case("http://../../../a.mp3", "zz-External\\_\\_\\_"),
        Case("nowhere/a.mp3", "zz-External")}) {
    EXPECT_EQ(TreeFolder(address, "http://h/base/index.html", "http://h/root/"), folder) << address;
  }
  const QString coded = "http://h/%E6%97%A5/%E6%9C%AC.mp3?q=%41";
  EXPECT_EQ(TreeFolder(coded, {}, "http://h/"), "%E6%97%A5");
  EXPECT_EQ(TreeFolder(coded, {}, "http://h/", PercentCodes::Decode), "日");
  EXPECT_EQ(LocalName("1_", coded, PercentCodes::Decode), "1_本.mp3?q=A");
  EXPECT_EQ(TreeFolder("http://h/a/b.mp3", {}, {}), "zz-External\\h\\a")
      << "no root contains anything";
  EXPECT_EQ(LocalName({}, "http://h/a.mp3?x=1"), "a.mp3?x=1");
  EXPECT_EQ(LocalName({}, "http://h/.."), "_");
  EXPECT_EQ(SuffixOf("http://h/a.b.PHP"), ".php");
  EXPECT_FALSE(IsStreamSuffix(SuffixOf("http://h/a.php?x")));
}

TEST(SaveFolder, IsMadeWithItsParentsOrSaysWhyNotAndKeepsTheProgramsOwnFiles) {
  const TempDir home;
  const TempDir outside;
  home.Write("file", "x");
  QFile::link(home.Path("nothing"), home.Path("dangling"));
  QFile::link(outside.Path(), home.Path("elsewhere"));
  QFile::link(outside.Path(), home.Path("plain-out"));
  // Where, below it, whether it is made and whether it is refused.
  using Case = std::tuple<const char*, const char*, bool, bool>;
  for (const auto& [where, below, isMade, refused] :
       {Case("a/b", "c\\d", true, false), Case("a/b", "", true, false),
        Case("file", "", false, false), Case("file/x", "", false, false),
        Case("dangling", "", false, false),
        Case("elsewhere", "x", true, false),  // the user's own choice
        Case(".", "plain-out\\x", false, true), Case(".", "dangling\\x", false, true),
        Case(".", "file\\x", false, false)}) {
    const SaveFolder::Made made = SaveFolder(home.Path(where), "/").Make(below);
    EXPECT_EQ(made.outcome.error, isMade ? RunTimeError::None : RunTimeError::PathAccess)
        << where << " " << below;
    EXPECT_EQ(made.refused, refused) << where << " " << below;
    EXPECT_TRUE(!isMade || QFileInfo(made.path).isDir()) << where << " " << below;
  }
  home.Write("Conf.txt", "x");
  home.Write("jobs.dat", "x");
  const SaveFolder folder(home.Path(), home.Path());
  EXPECT_FALSE(folder.Allows(home.Path("Conf.txt")).Ok());
  EXPECT_FALSE(folder.Allows(home.Path("jobs.dat")).Ok());
  EXPECT_FALSE(folder.Allows(home.Path("choices.ini")).Ok()) << "though there is none yet";
  EXPECT_TRUE(folder.Allows(home.Path("a.mp3")).Ok());
  EXPECT_EQ(folder.Allows(home.Path(QString(5000, u'x'))).error, RunTimeError::BadFileName);
}

TEST(RecordingFile, OnlyOneThatIsKeptTakesThePlaceOfAnEarlierOne) {
  for (const QString& name : {QString("a.wmv"), QString("録").repeated(83) + ".wmv"}) {
    for (const auto way : {&RecordingFile::PutOldAside, &RecordingFile::MakePart}) {
      for (const auto& [old, kept] : {std::pair("old", true), {"old", false}, {"", false}}) {
        const TempDir home;
        if (*old != 0) home.Write(name, old);
        {
          RecordingFile file(home.Path(name));
          EXPECT_TRUE((file.*way)().Ok());
          EXPECT_EQ(file.Bytes(), 0);
          EXPECT_EQ(home.Read(name), way == &RecordingFile::MakePart ? old : "");
          home.Write(QFileInfo(file.Written()).fileName(), "new");
          EXPECT_TRUE(!kept || file.Keep().Ok());
        }
        EXPECT_EQ(home.Read(name), kept ? "new" : old);
        EXPECT_EQ(QDir(home.Path()).entryList(QDir::Files | QDir::Hidden).size(), *old != 0 ? 1 : 0)
            << "nothing stays behind";
      }
    }
  }
}

TEST(RecordingFile, IsMadeWithTheUsersRightsOrNotAtAll) {
  const TempDir home;
  const QFile other(home.Write("other", "x"));
  RecordingFile file(home.Path("a.wmv"));
  EXPECT_TRUE(file.MakePart().Ok());
  EXPECT_EQ(QFile::permissions(file.Written()), other.permissions());
  QFile::remove(file.Written());
  EXPECT_EQ(file.Keep().error, RunTimeError::PathMissing);
  EXPECT_EQ(RecordingFile(home.Path("none/a.wmv")).MakePart().error, RunTimeError::PathMissing);
}

}  // namespace
}  // namespace zentorin
