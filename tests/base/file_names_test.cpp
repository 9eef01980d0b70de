// SPDX-License-Identifier: MIT
#include "base/file_names.h"

#include <QFile>
#include <tuple>
#include <vector>

#include <gtest/gtest.h>

#include "tests/fuzz/clean_file_name_check.h"
#include "tests/support/random_text.h"
#include "tests/support/temp_dir.h"

namespace zentorin {
namespace {

using Case = std::tuple<QString, QString>;

QString Repeated(const char* text, int times) {
  return QString::fromUtf8(text).repeated(times);
}

TEST(FileNames, CleansNamesFromPages) {
  for (const auto& [name, clean] : {Case("a b.mp3", "a b.mp3"),
                                    Case("%E6%97%A5%e6%9c%ac.mp3", "日本.mp3"),
                                    Case("%93%fa.mp3", "%93%fa.mp3"),
                                    Case("100%.mp3%4", "100%.mp3%4"),
                                    Case("%252e%252e", "%2e%2e"),
                                    Case("%2e%2e%2fetc%5Cx%00", ".._etc_x_"),
                                    Case("a/b\\c", "a_b_c"),
                                    Case("a\u202Egpm.\u0085\n", "a_gpm.__"),
                                    Case(QString(QChar(0xD83D)) + "%41", "_A"),
                                    Case("..", "_"),
                                    Case(" . . ", "_"),
                                    Case(QString(), "_"),
                                    Case(" .hidden. ", ".hidden"),
                                    Case("c:x", "c_x"),
                                    Case("CON", "_CON"),
                                    Case("nul .tar.gz", "_nul .tar.gz"),
                                    Case("Com9.txt", "_Com9.txt"),
                                    Case("COM0", "COM0"),
                                    Case("console", "console"),
                                    Case("NUL" + Repeated(" ", 300) + u'x', "_NUL"),
                                    Case(Repeated("a", 300) + ".mp3", Repeated("a", 251) + ".mp3"),
                                    Case(Repeated("日", 100) + ".mp3", Repeated("日", 83) + ".mp3"),
                                    Case(Repeated("😀", 100), Repeated("😀", 63)),
                                    Case("a." + Repeated("x", 300), "a." + Repeated("x", 253))})
    EXPECT_EQ(CleanFileName(name), clean) << name.toStdString();
}

TEST(FileNames, CleansEverySegmentOfAPath) {
  for (const auto& [path, clean] :
       {Case("/a//b\\c/", "a\\b\\c"), Case("../..\\x/%2e%2e/.", "_\\_\\x\\_\\_"),
        Case("zz-External\\host:8080\\CON", "zz-External\\host:8080\\_CON"), Case("C:\\x", "C_\\x"),
        Case("//", QString())})
    EXPECT_EQ(CleanRelativePath(path), clean) << path.toStdString();
}

// The same check that the fuzz target makes, over mutations of hostile pieces; the seed is fixed.
TEST(FileNames, KeepsItsPromisesForRandomNames) {
  QRandomGenerator random(20240501);
  const QStringList pieces =
      QString(". , ,/,\\,%,%2,%2e,%2F,%00,%e3,%E3%81%82,%ff,con,LPT1,nul,c:,日本,😀,\u202E,\uFEFF")
          .split(u',') +
      QStringList{QChar(0xD83D),      QChar(0xDE00),      QChar(u'\0'),
                  Repeated("a", 120), Repeated("é", 125), Repeated(" ", 250)};
  for (int round = 0; round < 20000; ++round) {
    QString name = test::RandomText(random, pieces, 6);
    if (!name.isEmpty() && random.bounded(2) == 0) {
      name[random.bounded(static_cast<int>(name.size()))] =
          QChar(static_cast<char16_t>(random.generate()));
    }
    ASSERT_EQ(test::FaultOfCleanedName(name), QString())
        << name.toUtf8().toPercentEncoding().data();
  }
}

TEST(FileNames, ALinkThatLeadsOutOrDanglesDoesNotStayInside) {
  const test::TempDir dir;
  dir.Write("save/sub/a", "x");
  dir.Write("saved/a", "x");
  const auto link = [&](const char* target, const char* name) {
    QFile::link(target, dir.Path(name));
  };
  link("../saved", "save/out");
  link("sub", "save/in");
  link("../save/sub/a", "save/file");
  link("nowhere", "save/dangling");
  link("loop", "save/loop");
  link("save", "alias");
  for (const char* folder : {"save", "alias"}) {
    const QString root = dir.Path(folder);
    for (const char* inside : {"", "/sub/a", "/new/deep/er", "/in/b", "/file"})
      EXPECT_TRUE(StaysInside(root, root + inside)) << folder << inside;
    for (const char* outside : {"/out/a", "/out", "/dangling", "/loop/a", "/dangling/a",
                                "/../saved/a", "d/a", "/new/../../saved", "/sub/a/b"})
      EXPECT_FALSE(StaysInside(root, root + outside)) << folder << outside;
  }
  EXPECT_TRUE(StaysInside("/", dir.Path()));
  EXPECT_TRUE(StaysInside(dir.Path("none"), dir.Path("none/a")));
  EXPECT_FALSE(StaysInside(dir.Path("save/dangling"), dir.Path("save/dangling/a")));
}

TEST(FileNames, ShowsNoCharacterThatActsOnTheDisplay) {
  EXPECT_EQ(EscapeForDisplay("a\x1b[2J\u0085\u202Egpj.\u2066\u2028日本😀\\"),
            "a\\u{1b}[2J\\u{85}\\u{202e}gpj.\\u{2066}\\u{2028}日本😀\\");
  EXPECT_EQ(EscapeForDisplay(QString(QChar(QChar::Null))), "\\u{0}");
}

}  // namespace
}  // namespace zentorin
