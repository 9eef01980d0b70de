// SPDX-License-Identifier: MIT
#include "jobs/url_list.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>

#include <gtest/gtest.h>

#include "jobs/job_editor.h"
#include "jobs/url_list_file.h"
#include "tests/support/temp_dir.h"

namespace zentorin {
namespace {

using Field = TargetUrlItem::Field;
using test::TempDir;

// Jobs by their lines: "|" stands between lines, "/" between fields.
QList<TargetUrlItem> Jobs(QString lines) {
  QList<TargetUrlItem> jobs;
  for (const QString& line : lines.replace(u'/', u'\t').split(u'|')) {
    jobs += TargetUrlItem::FromLine(line);
  }
  return jobs;
}

std::string Shown(const TargetUrlItem& job) {
  return job.ToLine().replace(u'\t', u'/').toStdString();
}

// The list in that form without empty fields at the ends of lines; brackets round the selected job,
// a star when dirty.
std::string Shown(const UrlList& list) {
  std::string text;
  for (int row = 0; row < list.Count(); ++row) {
    const std::string line = Shown(list.Item(row));
    const std::string job = line.substr(0, line.find_last_not_of('/') + 1);
    text += (row > 0 ? "|" : "") + (row == list.SelectedRow() ? '[' + job + ']' : job);
  }
  return list.IsDirty() ? text + '*' : text;
}

TEST(UrlList, KeepsNumbersSelectionAndTagThroughEveryCommand) {
  UrlList list;
  const QAbstractItemModelTester tester(&list,
                                        QAbstractItemModelTester::FailureReportingMode::Fatal);
  list.ReplaceAll(Jobs("/a|/b|/c"));
  list.Select(1);
  list.InsertBelow(-1, {});
  EXPECT_EQ(Shown(list), " 1| 2/a|[ 3/b]| 4/c");
  EXPECT_TRUE(list.MoveSelected(-1));
  EXPECT_EQ(Shown(list), " 1|[ 2/b]| 3/a| 4/c*");
  EXPECT_TRUE(list.MoveSelected(1) && list.MoveSelected(1));
  EXPECT_FALSE(list.MoveSelected(1)) << "at the end";
  EXPECT_EQ(Shown(list), " 1| 2/a| 3/c|[ 4/b]*");
  list.SetDirty(false);
  list.Remove(3);
  EXPECT_EQ(Shown(list), " 1| 2/a|[ 3/c]*");
  for (int rows = list.Count(); rows > 0; --rows) list.Remove(0);
  EXPECT_FALSE(list.MoveSelected(-1)) << "nothing is selected";
  const QSignalSpy changes(&list, &UrlList::dataChanged);
  list.ReplaceAll(QList<TargetUrlItem>(5'000));
  list.InsertBelow(-1, {});
  EXPECT_EQ(changes.count(), 1) << "one announcement for all numbers";
}

TEST(UrlList, KeepsAPastedLineAsItStandsUntilItIsNumbered) {
  UrlList list;
  list.ReplaceAll(
      {TargetUrlItem::FromLine("no job\r\n2nd"), Jobs("7/\u202E///////////////16/+")[0]});
  EXPECT_EQ(Shown(list), "no job|7/\u202E///////////////16/+");
  EXPECT_EQ(list.data(list.index(1), Qt::DisplayRole).toString().left(10), "7\t\\u{202e}");
  list.InsertBelow(1, {});
  EXPECT_EQ(Shown(list.Item(1)), " 2/\u202E///////////////16");
}

TEST(JobEditor, ShowsTheSelectedJobAndStoresEveryEdit) {
  UrlList list;
  JobEditor editor(list);
  list.ReplaceAll(Jobs(" 1/d/r/s/f/p/1/x/3//1/0/yes/1/2 levels|"));
  EXPECT_EQ(Shown(editor.Fields()), "////////////////");
  editor.Edit(Field::Description, "nowhere");
  list.Select(0);
  EXPECT_EQ(Shown(editor.Fields()), " 1/d/r/s/f/p/  1/x/3,/0/1/0/0/1/2/0/0");
  editor.Edit(Field::Description, "d");
  editor.EditFlag(Field::Skip, true);
  EXPECT_FALSE(list.IsDirty()) << "neither no job nor the same value is an edit";
  editor.SetRootBase("base of r");
  list.Select(0);
  EXPECT_EQ(editor.RootBase(), "base of r");
  editor.Edit(Field::Description, "x\ty\r\nz");
  editor.EditFlag(Field::Skip, false);
  editor.EditBefore(1, "7");
  editor.EditBefore(0, "3,");
  EXPECT_EQ(Shown(list), "[ 1/x y  z/r/s/f/p/  1/x/3 ,7/0/0/0/0/1/2/0/0]|*");
  list.Select(1);
  EXPECT_EQ(editor.RootBase(), QString()) << "that of another root";
}

TEST(UrlListFile, WritesEveryKeyOfAJobToTheByteAndReadsItBack) {
  UrlList list;
  list.ReplaceAll(Jobs(" 1/v1/v2/v3/v4/v5//v7/,/v9/v10/v11/v12/v13/v14/v15/v16"));
  const TempDir dir;
  const QString path = dir.Write("a.dat", "old");
  ASSERT_TRUE(WriteUrlListFile(path, list).Ok());
  EXPECT_EQ(dir.Read("a.dat"),
            "1 description = v1\r\n1 skip = v10\r\n1 over_write = v11\r\n"
            "1 only_under_root = v12\r\n1 root = v2\r\n1 sub_pattern = v3\r\n1 depth = v14\r\n"
            "1 file_pattern = v4\r\n1 save_path = v5\r\n1 tree_folder = v15\r\n"
            "1 disp_date = v16\r\n1 disp_modify = v13\r\n1 date = \r\n1 format = v7\r\n"
            "1 before = ,\r\n1 opt = v9\r\n\r\n");
  UrlList again;
  ASSERT_TRUE(ReadUrlListFile(path, again).Ok());
  EXPECT_EQ(Shown(again), Shown(list));
}

TEST(UrlListFile, ReadsWhatOtherHandsWrote) {
  const TempDir dir;
  using Case = std::pair<const char*, const char*>;
  for (const auto& [bytes, expected] :
       {Case("3 root = c\r\n1 root = a\n", " 1//a|| 3//c"),
        Case("1 root = a\r\n1 future_key = x\r\n2 other = y", " 1//a| 2"),
        Case("1 root = a = b\r\n1 description = d\r\n", " 1/d"),
        Case("1 root = = b\r\n", " 1//= b"), Case("1 root =   a  \r\n1 format =\r\n", " 1//a  "),
        Case("  1   root  = a\r\n1 root x = b\r\nno separator\r\n", " 1//b"),
        Case("1 root = \ta\tb\rc\r\n1 save_path = C:\\\x95\x5c\r\n", " 1//a b c///C:\\表"),
        Case("", "")}) {
    UrlList list;
    const Outcome outcome = ReadUrlListFile(dir.Write("a.dat", bytes), list);
    EXPECT_EQ(outcome.message, QString());
    EXPECT_EQ(Shown(list), expected) << bytes;
  }
}

TEST(UrlListFile, KeepsTheListWhenAFileIsBadAndNamesTheLine) {
  const TempDir dir;
  UrlList list;
  list.ReplaceAll(Jobs("kept"));
  list.Select(0);
  using Case = std::pair<QByteArray, const char*>;
  for (const auto& [bytes, named] :
       {Case("1 root = a\r\n0 root = b\r\n", "2 行目"), Case("-1 root = b\r\n", "ジョブ番号「-1」"),
        Case("10001 root = b\r\n", "10001"), Case("1e99 root = b\r\n", "1e99"),
        Case(" = b\r\n", "ジョブ番号「」"),
        Case("1 root = a\r\n1 description = \x82\xA0\x82\r\n", "2 行目"),
        Case("1 root = a\r\n1 description = あい\r\n", "UTF-8"),
        Case(QByteArray("1 root = a\r\n\xFF\xFE\0=\0", 18), "2 行目")}) {
    const QString path = dir.Write("bad.dat", bytes);
    const Outcome outcome = ReadUrlListFile(path, list);
    EXPECT_EQ(outcome.error, RunTimeError::Other) << bytes.constData();
    EXPECT_TRUE(outcome.message.contains(path) && outcome.message.contains(named))
        << outcome.message.toStdString();
  }
  EXPECT_EQ(ReadUrlListFile(dir.Path("missing.dat"), list).error, RunTimeError::PathMissing);
  EXPECT_EQ(Shown(list), "[kept]");
}

TEST(UrlListFile, LeavesTheFileAloneWhenAJobCannotBeWritten) {
  const TempDir dir;
  const QString path = dir.Write("a.dat", "old");
  UrlList list;
  list.ReplaceAll(Jobs("| 2/d/x\U0001F600"));
  const QString message = WriteUrlListFile(path, list).message;
  EXPECT_TRUE(message.contains("2 番目のジョブ") && message.contains("「root」"))
      << message.toStdString();
  list.ReplaceAll(QList<TargetUrlItem>(kMaxJobs + 1));
  EXPECT_FALSE(WriteUrlListFile(path, list).Ok()) << "more jobs than can be read";
  EXPECT_EQ(dir.Read("a.dat"), "old");
}

}  // namespace
}  // namespace zentorin
