// SPDX-License-Identifier: MIT
#include "base/file_names.h"

#include <QFile>
#include <random>
#include <tuple>
#include <vector>

#include <gtest/gtest.h>

#include "tests/fuzz/clean_file_name_check.h"
#include "tests/support/temp_dir.h"

namespace zentorin {
namespace {

using Case = std::tuple<QString, QString>;

QString Repeated(const char* text, int times) {
  return QString::fromUtf8(text).repeated(times);
}

TEST(FileNames, CleansNamesFromPages) {
  const std::vector<Case> cases = {
      {QStringLiteral("a b.mp3"), QStringLiteral("a b.mp3")},
      {QStringLiteral("%E6%97%A5%e6%9c%ac.mp3"), QStringLiteral("日本.mp3")},
      {QStringLiteral("%93%fa.mp3"), QStringLiteral("%93%fa.mp3")},  // no UTF-8
      {QStringLiteral("100%.mp3%4"), QStringLiteral("100%.mp3%4")},
      {QStringLiteral("%252e%252e"), QStringLiteral("%2e%2e")},  // decoded once only
      {QStringLiteral("%2e%2e%2fetc%5Cx%00"), QStringLiteral(".._etc_x_")},
      {QStringLiteral("a/b\\c"), QStringLiteral("a_b_c")},
      {QStringLiteral("a\u202Egpm.\u0085\n"), QStringLiteral("a_gpm.__")},
      {QString(QChar(0xD83D)) + QStringLiteral("%41"), QStringLiteral("_A")},
      {QStringLiteral(".."), QStringLiteral("_")},
      {QStringLiteral(" . . "), QStringLiteral("_")},
      {QString(), QStringLiteral("_")},
      {QStringLiteral(" .hidden. "), QStringLiteral(".hidden")},
      {QStringLiteral("c:x"), QStringLiteral("c_x")},
      {QStringLiteral("CON"), QStringLiteral("_CON")},
      {QStringLiteral("nul .tar.gz"), QStringLiteral("_nul .tar.gz")},
      {QStringLiteral("Com9.txt"), QStringLiteral("_Com9.txt")},
      {QStringLiteral("COM0"), QStringLiteral("COM0")},
      {QStringLiteral("console"), QStringLiteral("console")},
      {QStringLiteral("NUL") + Repeated(" ", 300) + QLatin1Char('x'), QStringLiteral("_NUL")},
      {Repeated("a", 300) + QStringLiteral(".mp3"), Repeated("a", 251) + QStringLiteral(".mp3")},
      {Repeated("日", 100) + QStringLiteral(".mp3"), Repeated("日", 83) + QStringLiteral(".mp3")},
      {Repeated("😀", 100), Repeated("😀", 63)},
      {QStringLiteral("a.") + Repeated("x", 300), QStringLiteral("a.") + Repeated("x", 253)},
  };
  for (const auto& [name, clean] : cases)
    EXPECT_EQ(CleanFileName(name), clean) << name.toStdString();
}

TEST(FileNames, CleansEverySegmentOfAPath) {
  const std::vector<Case> cases = {
      {QStringLiteral("/a//b\\c/"), QStringLiteral("a\\b\\c")},
      {QStringLiteral("../..\\x/%2e%2e/."), QStringLiteral("_\\_\\x\\_\\_")},
      {QStringLiteral("zz-External\\host:8080\\CON"),
       QStringLiteral("zz-External\\host:8080\\_CON")},
      {QStringLiteral("C:\\x"), QStringLiteral("C_\\x")},
      {QStringLiteral("//"), QString()},
  };
  for (const auto& [path, clean] : cases)
    EXPECT_EQ(CleanRelativePath(path), clean) << path.toStdString();
}

// The same check that the fuzz target makes, over mutations of hostile pieces; the seed is fixed.
TEST(FileNames, KeepsItsPromisesForRandomNames) {
  std::mt19937 random(20240501);
  const QStringList pieces = {
      QStringLiteral("."),      QStringLiteral(" "),         QStringLiteral("/"),
      QStringLiteral("\\"),     QStringLiteral("%"),         QStringLiteral("%2"),
      QStringLiteral("%2e"),    QStringLiteral("%2F"),       QStringLiteral("%00"),
      QStringLiteral("%e3"),    QStringLiteral("%E3%81%82"), QStringLiteral("%ff"),
      QStringLiteral("con"),    QStringLiteral("LPT1"),      QStringLiteral("nul"),
      QStringLiteral("c:"),     QStringLiteral("日本"),      QStringLiteral("😀"),
      QStringLiteral("\u202E"), QString(QChar(0xD83D)),      QString(QChar(0xDE00)),
      QString(QChar(u'\0')),    Repeated("a", 120),          Repeated("é", 125),
      Repeated(" ", 250),       QStringLiteral("\uFEFF"),
  };
  const auto pieceCount = static_cast<quint32>(pieces.size());
  for (int round = 0; round < 20000; ++round) {
    QString name;
    for (auto left = random() % 7; left > 0; --left)
      name += pieces[static_cast<qsizetype>(random() % pieceCount)];
    if (!name.isEmpty() && random() % 2 == 0)
      name[static_cast<qsizetype>(random() % static_cast<quint32>(name.size()))] =
          QChar(static_cast<char16_t>(random()));
    ASSERT_EQ(test::FaultOfCleanedName(name), QString())
        << name.toUtf8().toPercentEncoding().data();
  }
}

TEST(FileNames, ALinkThatLeadsOutOrDanglesDoesNotStayInside) {
  const test::TempDir dir;
  dir.Write(QStringLiteral("save/sub/a"), "x");
  dir.Write(QStringLiteral("saved/a"), "x");
  const auto link = [&](const char* target, const char* name) {
    QFile::link(QString::fromLatin1(target), dir.Path(QString::fromLatin1(name)));
  };
  link("../saved", "save/out");
  link("sub", "save/in");
  link("../save/sub/a", "save/file");
  link("nowhere", "save/dangling");
  link("loop", "save/loop");
  link("save", "alias");
  using Place = std::tuple<const char*, bool>;
  const std::vector<Place> places = {
      {"", true},
      {"/sub/a", true},
      {"/new/deep/er", true},
      {"/in/b", true},
      {"/file", true},
      {"/out/a", false},
      {"/out", false},
      {"/dangling", false},
      {"/loop/a", false},
      {"/dangling/a", false},
      {"/../saved/a", false},
      {"d/a", false},
      {"/new/../../saved", false},
      {"/sub/a/b", false},
  };
  for (const char* folder : {"save", "alias"}) {
    const QString root = dir.Path(QString::fromLatin1(folder));
    for (const auto& [place, inside] : places)
      EXPECT_EQ(StaysInside(root, root + QString::fromLatin1(place)), inside) << folder << place;
  }
  EXPECT_TRUE(StaysInside(QStringLiteral("/"), dir.Path()));
  EXPECT_TRUE(StaysInside(dir.Path(QStringLiteral("none")), dir.Path(QStringLiteral("none/a"))));
  EXPECT_FALSE(StaysInside(dir.Path(QStringLiteral("save/dangling")),
                           dir.Path(QStringLiteral("save/dangling/a"))));
}

TEST(FileNames, ShowsNoCharacterThatActsOnTheDisplay) {
  EXPECT_EQ(EscapeForDisplay(QStringLiteral("a\x1b[2J\u0085\u202Egpj.\u2066\u2028日本😀\\")),
            QStringLiteral("a\\u{1b}[2J\\u{85}\\u{202e}gpj.\\u{2066}\\u{2028}日本😀\\"));
  EXPECT_EQ(EscapeForDisplay(QString(QChar(QChar::Null))), QStringLiteral("\\u{0}"));
}

}  // namespace
}  // namespace zentorin
