// SPDX-License-Identifier: MIT
#include "jobs/pattern_lists.h"

#include <QCryptographicHash>

#include <gtest/gtest.h>

#include "tests/support/temp_dir.h"

namespace zentorin {
namespace {

using test::TempDir;

TEST(PatternLists, CreatesTheFileToTheByteAndReadsItBackWithTheSectionsEmptyLines) {
  const TempDir dir;
  const QString name = "reglist.txt";
  PatternLists lists;
  const PatternLists builtIn;
  ASSERT_TRUE(lists.LoadOrCreate(dir.Path(name)).Ok());
  EXPECT_EQ(lists.File(), builtIn.File());
  const QByteArray bytes = dir.Read(name);
  EXPECT_TRUE(bytes.startsWith("[sub url]\r\nchild url : (?:href|url|src)=[\"']?(.+?)[\"' >]\r\n"));
  // The sum was made from the published lists by another program.
  EXPECT_EQ(QCryptographicHash::hash(bytes, QCryptographicHash::Sha256).toHex(),
            "5b705eae50b19e815e7a0d653d6051ce0e19e1b7f9a8d8726be19eec75c9f052");
  ASSERT_TRUE(lists.LoadOrCreate(dir.Path(name)).Ok());
  EXPECT_EQ(lists.SubUrl(), builtIn.SubUrl() + QStringList(QString()));
  EXPECT_EQ(lists.File(), builtIn.File() + QStringList(QString()));
}

TEST(PatternLists, TakesWhatTheFileHoldsAndNothingFromAnUnreadableOne) {
  const TempDir dir;
  const QString path =
      dir.Write("r.txt", "before\r\n[file]\r\n a: x \n\n[end]\r\nafter\r\n[file]\r\nb");
  PatternLists lists;
  ASSERT_TRUE(lists.LoadOrCreate(path).Ok());
  EXPECT_TRUE(lists.SubUrl().isEmpty());
  const QStringList file = {" a: x ", QString(), "b"};
  EXPECT_EQ(lists.File(), file);
  EXPECT_FALSE(lists.LoadOrCreate(dir.Path()).Ok()) << "a folder";
  EXPECT_EQ(lists.File(), file);
}

TEST(PatternLists, CutsAnEntryAtItsFirstColon) {
  const PatternLists lists;
  EXPECT_EQ(PatternLists::ExpressionOf(lists.SubUrl().at(0)).toStdString(),
            R"~((?:href|url|src)=["']?(.+?)["' >])~");
  EXPECT_EQ(PatternLists::ExpressionOf(lists.File().at(1)).toStdString(),
            R"~(<.+?(?:href|url)=["']?(.+?\.mp3)["' >])~");
  EXPECT_EQ(PatternLists::ExpressionOf(lists.File().at(3)), QString());
  EXPECT_EQ(PatternLists::ExpressionOf("(?:a) "), "a)");
  EXPECT_EQ(PatternLists::ExpressionOf(" a "), " a ");
}

}  // namespace
}  // namespace zentorin
