// SPDX-License-Identifier: MIT
#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

#include "base/drives.h"
#include "base/file_names.h"
#include "base/program_folder.h"
#include "tests/fuzz/clean_file_name_check.h"
#include "tests/support/random_text.h"
#include "tests/support/temp_dir.h"

namespace zentorin {
namespace {

using Case = std::tuple<QString, QString>;

QString Repeated(const char* text, int times) {
  return QString::fromUtf8(text).repeated(times);
}

const QChar kHalfAPair(0xD83D);

TEST(FileNames, CleansNamesFromPagesAndEverySegmentOfAPath) {
  for (const auto& [name, clean] :
       {Case("%E6%97%A5%e6%9c%ac.mp3", "日本.mp3"), Case("%93%fa 100%.mp3%4", "%93%fa 100%.mp3%4"),
        Case("%252e%252e", "%2e%2e"), Case("%2e%2e%2fetc%5Cx%00", ".._etc_x_"),
        Case("a\u202Egpm.\u0085\n", "a_gpm.__"), Case("c:x", "c_x"), Case(" .hidden. ", ".hidden"),
        Case(" . . ", "_"), Case(kHalfAPair + QString("%41"), "_A"),
        // Devices of other systems.
        Case("nul .tar.gz", "_nul .tar.gz"), Case("Com9.txt", "_Com9.txt"), Case("COM0", "COM0"),
        Case("console", "console"), Case("NUL" + Repeated(" ", 300) + u'x', "_NUL"),
        Case(Repeated("日", 300) + ".mp3", Repeated("日", 83) + ".mp3"),
        Case("a." + Repeated("x", 300), "a." + Repeated("x", 253))}) {
    EXPECT_EQ(CleanFileName(name, PercentCodes::Decode), clean) << name.toStdString();
    EXPECT_TRUE(name.contains(u'%') || CleanFileName(name) == clean) << name.toStdString();
  }
  const QString path = "/a//b\\../x/%2e%2e/.";
  EXPECT_EQ(CleanRelativePath(path, PercentCodes::Decode), "a\\b\\_\\x\\_\\_");
  EXPECT_EQ(CleanRelativePath(path), "a\\b\\_\\x\\%2e%2e\\_");
  EXPECT_EQ(CleanFileName("%E6%97%A5%2F日.mp3. "), "%E6%97%A5%2F日.mp3") << "to the letter";
}

// The same check that the fuzz target makes, over mutations of hostile pieces; the seed is fixed.
TEST(FileNames, KeepsItsPromisesForRandomNames) {
  QRandomGenerator random(20240501);
  const QStringList pieces =
      QString(". , ,/,\\,%,2,e,%2F,%00,%e3,%E3%81%82,%ff,con,LPT1,nul,c:,日本,😀,\u202E,\uFEFF")
          .split(u',') +
      QStringList{kHalfAPair, QChar(0xDE00), QChar(u'\0'), Repeated("é", 125), Repeated(" ", 250)};
  for (int round = 0; round < 20000; ++round) {
    const QString name = test::RandomText(random, pieces, 7);
    ASSERT_EQ(test::FaultOfCleanedName(name), QString())
        << name.toUtf8().toPercentEncoding().data();
  }
}

TEST(FileNames, ALinkThatLeadsOutOrDanglesDoesNotStayInside) {
  const test::TempDir dir;
  dir.Write("save/sub/a", "x");
  dir.Write("saved/a", "x");
  for (const auto& [target, name] : {Case("../saved", "save/out"), Case("sub", "save/in"),
                                     Case("nowhere", "save/dangling"), Case("save", "alias")}) {
    QFile::link(target, dir.Path(name));
  }
  for (const char* folder : {"save", "alias"}) {
    const QString root = dir.Path(folder);
    for (const char* inside : {"", "/sub/a", "/new/deep/er", "/in/b"}) {
      EXPECT_TRUE(StaysInside(root, root + inside)) << folder << inside;
    }
    for (const char* outside :
         {"/out/a", "/dangling", "/../saved/a", "d/a", "/new/../../saved", "/sub/a/b"}) {
      EXPECT_FALSE(StaysInside(root, root + outside)) << folder << outside;
    }
  }
  EXPECT_TRUE(StaysInside("/", dir.Path()));
}

TEST(FileNames, ShowsNoCharacterThatActsOnTheDisplay) {
  EXPECT_EQ(EscapeForDisplay("a\x1b[2J\u0085\u202Egpj.\u2066\u2028日本😀\\"),
            "a\\u{1b}[2J\\u{85}\\u{202e}gpj.\\u{2066}\\u{2028}日本😀\\");
}

TEST(Drives, TurnLocalPathsIntoSystemPathsAndStoreThoseBelowTheProgramsFolderRelatively) {
  const Drives drives("/home/u/z/");
  for (const auto& [path, system] :
       {Case(QString(), "/home/u/z"), Case(".\\a/.//b\\", "/home/u/z/a/b"),
        Case("../../../../../x", "/x"), Case("\\srv\\a\\..\\b\\", "/srv/b"), Case("///srv", "/srv"),
        Case("D:\\音楽\\a", "/home/u/z/drives/d/音楽/a"),
        Case("c:/a/../../../b", "/home/u/z/drives/c/b"), Case("C:a", "/home/u/z/drives/c/a"),
        Case("\\\\nas\\m\\..\\..\\x", "/home/u/z/drives/unc/nas/m/x"),
        Case("//../../x", "/home/u/z/drives/unc/x"), Case("１:\\a", "/home/u/z/１:/a")}) {
    EXPECT_EQ(drives.ToSystemPath(path), system) << path.toStdString();
  }
  EXPECT_EQ(Drives("/").ToSystemPath("C:\\a"), "/drives/c/a");
  for (const auto& [system, stored] :
       {Case("/home/u/z//save/mp3/", "save\\mp3"), Case("/home/u/z", "/home/u/z"),
        Case("/home/u/zz/a/", "/home/u/zz/a"), Case("/home/u/z/c:x", "/home/u/z/c:x"),
        Case("/", "/"), Case("C:\\", "C:\\"), Case("C:\\a\\", "C:\\a"), Case("", "")}) {
    EXPECT_EQ(drives.ToStoredPath(system), stored) << system.toStdString();
  }
}

TEST(ProgramFolder, IsTheOneThatTheUserNamesOrCarriesAlongElseTheDataFolder) {
  const test::TempDir dir;
  const QString bin = dir.Path("bin");
  const auto folder = [&](const char* variable, const QString& value) {
    qputenv(variable, value.toUtf8());
    return FindProgramFolder(bin);
  };
  folder("ZENTORIN_HOME", {});
  folder("HOME", dir.Path("me"));
  EXPECT_EQ(folder("XDG_DATA_HOME", dir.Path("data")), dir.Path("data/zentorin"));
  EXPECT_TRUE(QFileInfo(dir.Path("data/zentorin")).isDir());
  EXPECT_EQ(folder("XDG_DATA_HOME", "relative"), dir.Path("me/.local/share/zentorin"));
  dir.Write("bin/portable", "");
  EXPECT_EQ(FindProgramFolder(bin), bin);
  EXPECT_EQ(folder("ZENTORIN_HOME", dir.Path("own/")), dir.Path("own"));
  EXPECT_EQ(folder("ZENTORIN_HOME", dir.Path("bin/portable")), "") << "a file is in the way";
}

}  // namespace
}  // namespace zentorin
