// SPDX-License-Identifier: MIT
#include "jobs/url_list_file.h"

#include <QFile>

#include <gtest/gtest.h>

#include "jobs/url_list.h"
#include "tests/support/random_text.h"
#include "tests/support/temp_dir.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

using Field = TargetUrlItem::Field;
using test::TempDir;

const QByteArray kSample =
    "1 description = v1\r\n1 skip = v10\r\n1 over_write = v11\r\n1 only_under_root = v12\r\n"
    "1 root = v2\r\n1 sub_pattern = v3\r\n1 depth = v14\r\n1 file_pattern = v4\r\n"
    "1 save_path = v5\r\n1 tree_folder = v15\r\n1 disp_date = v16\r\n1 disp_modify = v13\r\n"
    "1 date = \r\n1 format = v7\r\n1 before = ,\r\n1 opt = v9\r\n\r\n";

TEST(UrlListFile, WritesAndReadsEveryKeyOfAJobToTheByte) {
  TargetUrlItem item;
  for (int field = 1; field < TargetUrlItem::kFieldCount; ++field) {
    item.Set(static_cast<Field>(field), u"v%1"_s.arg(field));
  }
  item.Set(Field::Date, {});
  item.Set(Field::Before, ",");
  UrlList list;
  list.InsertBelow(-1, item);
  const TempDir dir;
  const QString path = dir.Write("a.dat", "old");
  ASSERT_TRUE(WriteUrlListFile(path, list).Ok());
  EXPECT_EQ(dir.Read("a.dat"), kSample);

  UrlList again;
  again.SetDirty(true);
  ASSERT_TRUE(ReadUrlListFile(path, again).Ok());
  EXPECT_EQ(again.Line(0), list.Line(0));
  EXPECT_EQ(again.SelectedRow(), -1);
  EXPECT_TRUE(again.IsDirty());
}

TEST(UrlListFile, ReadsWhatOtherHandsWrote) {
  const TempDir dir;
  // The lines are joined by "|", tabs shown as "/", those at the end left out.
  using Case = std::pair<const char*, const char*>;
  for (const auto& [bytes, expected] :
       {Case("", ""), Case("3 root = c\r\n1 root = a\n", " 1//a|| 3//c"),
        Case("1 root = a\r\n1 future_key = x\r\n2 other = y", " 1//a| 2"),
        Case("1 root = a = b\r\n1 description = d\r\n", " 1/d"),
        Case("1 root = = b\r\n", " 1//= b"), Case("1 root =   a  \r\n1 format =\r\n", " 1//a  "),
        Case("  1   root  = a\r\n1 root x = b\r\nno separator\r\n", " 1//b"),
        Case("1 root = a\tb\rc\r\n1 save_path = C:\\\x95\x5c\r\n", " 1//a b c///C:\\表"),
        Case("12 root = \r\n", "|||||||||||12")}) {
    UrlList list;
    const FileOutcome outcome = ReadUrlListFile(dir.Write("a.dat", bytes), list);
    ASSERT_TRUE(outcome.Ok()) << outcome.message.toStdString();
    QStringList lines;
    for (int row = 0; row < list.Count(); ++row) {
      QString line = list.Line(row);
      while (line.endsWith(u'\t')) line.chop(1);
      lines += line.replace(u'\t', u'/');
    }
    EXPECT_EQ(lines.join(u'|').toStdString(), expected) << bytes;
  }
}

TEST(UrlListFile, KeepsTheListWhenAFileIsBadAndNamesTheLine) {
  const TempDir dir;
  using Case = std::pair<QByteArray, const char*>;
  for (const auto& [bytes, named] :
       {Case("1 root = a\r\n0 root = b\r\n", "2 行目"), Case("-1 root = b\r\n", "ジョブ番号「-1」"),
        Case("1000000000 root = b\r\n", "1 行目"), Case("10001 root = b\r\n", "10001"),
        Case("1e99 root = b\r\n", "1e99"), Case("\r\n\r\nx root = b\r\n", "3 行目"),
        Case(" = b\r\n", "ジョブ番号「」"),
        Case("1 root = a\r\n1 description = \x82\xA0\x82\r\n", "2 行目"),
        Case("1 root = a\r\n1 description = あい\r\n", "UTF-8"),
        Case("\xEF\xBB\xBF\x31 root = a\r\n", "UTF-8"),
        Case(QByteArray("1 root = a\r\n\xFF\xFE\0=\0", 18), "2 行目")}) {
    UrlList list;
    list.ReplaceAll({"kept"});
    list.Select(0);
    const QString path = dir.Write("bad.dat", bytes);
    const FileOutcome outcome = ReadUrlListFile(path, list);
    EXPECT_EQ(outcome.error, 51) << bytes.constData();
    EXPECT_TRUE(outcome.message.contains(path)) << outcome.message.toStdString();
    EXPECT_TRUE(outcome.message.contains(named)) << outcome.message.toStdString();
    EXPECT_EQ(list.Line(0), "kept");
    EXPECT_EQ(list.SelectedRow(), 0);
  }
  UrlList list;
  EXPECT_EQ(ReadUrlListFile(dir.Path("missing.dat"), list).error,
            static_cast<int>(RunTimeError::PathMissing));
  QFile huge(dir.Path("huge.dat"));
  ASSERT_TRUE(huge.open(QIODevice::WriteOnly) && huge.resize(kMaxListFileBytes + 1));
  EXPECT_FALSE(ReadUrlListFile(huge.fileName(), list).Ok());
}

TEST(UrlListFile, LeavesTheFileAloneWhenAJobCannotBeWritten) {
  const TempDir dir;
  const QString name = "a.dat";
  const QString path = dir.Write(name, "old");
  UrlList list;
  list.ReplaceAll({{}, " 2\td\thttp://x/\U0001F600"});
  const QString message = WriteUrlListFile(path, list).message;
  for (const char* named : {"2 番目のジョブ", "「root」", "U+1F600"}) {
    EXPECT_TRUE(message.contains(named)) << message.toStdString();
  }
  list.ReplaceAll(QStringList(kMaxJobs + 1));
  EXPECT_FALSE(WriteUrlListFile(path, list).Ok()) << "more jobs than can be read";
  EXPECT_EQ(dir.Read(name), "old");
  list.ReplaceAll({" 1\tline\r\nbreaks\tin\n2 root = x"});
  ASSERT_TRUE(WriteUrlListFile(path, list).Ok());
  EXPECT_TRUE(dir.Read(name).startsWith("1 description = line  breaks\r\n1 skip"));
}

TEST(UrlListFile, ReadsBackWhatItWrote) {
  const QStringList parts = {"=", " ", "1", "表", "～①", "\\", ",", "　", "ｱ"};
  QRandomGenerator random(7);
  UrlList list;
  for (int row = 0; row < 1'000; ++row) {
    TargetUrlItem item;
    for (int field = 1; field < TargetUrlItem::kFieldCount; ++field) {
      QString value = test::RandomText(random, parts, 5);
      while (value.startsWith(u' ')) value.remove(0, 1);
      // The separator itself is the one text that the format loses.
      if (!value.contains(" = ")) item.Set(static_cast<Field>(field), value);
    }
    list.InsertBelow(row - 1, item);
  }
  const TempDir dir;
  const QString path = dir.Path("a.dat");
  ASSERT_TRUE(WriteUrlListFile(path, list).Ok());
  UrlList again;
  ASSERT_TRUE(ReadUrlListFile(path, again).Ok());
  ASSERT_EQ(again.Count(), list.Count());
  for (int row = 0; row < list.Count(); ++row) ASSERT_EQ(again.Line(row), list.Line(row));
}

}  // namespace
}  // namespace zentorin
