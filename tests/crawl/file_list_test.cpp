// SPDX-License-Identifier: MIT
#include "crawl/file_list.h"

#include <QAbstractItemModelTester>
#include <QPersistentModelIndex>
#include <tuple>

#include <gtest/gtest.h>

#include "crawl/file_list_search.h"
#include "crawl/file_list_sorter.h"

namespace zentorin {
namespace {

FileListRow Named(const QString& name) {
  FileListRow row;
  row.Set(FileListRow::Link, name);
  return row;
}

// "a* >b c": a is selected, b is the current row.
QString Print(const FileList& list) {
  QStringList rows;
  for (int row = 0; row < list.Count(); ++row) {
    rows << (row == list.CurrentRow() ? ">" : QString()) + list.Row(row)[FileListRow::Link] +
                (list.IsSelected(row) ? "*" : QString());
  }
  return rows.join(u' ');
}

// A list under the eyes of Qt's model tester.
class FileListTest : public testing::Test {
 protected:
  // From the notation of Print().
  void Fill(const QString& notation) {
    list_.ClearFileList();
    for (QString name : notation.split(u' ')) {
      const bool current = name.startsWith(u'>');
      const bool selected = name.endsWith(u'*');
      list_.Append(Named(name.remove(u'>').remove(u'*')), current);
      list_.SetSelected(list_.Count() - 1, selected);
    }
  }

  FileList list_;
  QAbstractItemModelTester tester_{&list_, QAbstractItemModelTester::FailureReportingMode::Fatal};
};

TEST(FileListRow, KeepsTheTextItWasReadFrom) {
  for (const char* text : {"", "\t\thttp://h/", "o\t\t\ta\tb\tc\td", "\t\t\ta\t\t\t"}) {
    EXPECT_EQ(FileListRow::FromText(text).ToText(), text);
  }
  EXPECT_EQ(FileListRow().ToText().count(u'\t'), 6);
  EXPECT_EQ(FileListRow::FromText("1\t2\t3\t4\t5\t6\t7\t8").ToText(), "1\t2\t3\t4\t5\t6\t7");
  auto row = FileListRow::FromText("\t\tx");
  row.Set(FileListRow::BaseDir, "b");
  EXPECT_EQ(row.ToText(), "\t\tx\t\tb");
}

TEST_F(FileListTest, AnnouncesABurstOfRowsInAFewBatches) {
  int announcements = 0;
  int seen = 0;
  QObject::connect(&list_, &FileList::rowsInserted, [&](const QModelIndex&, int first, int last) {
    ++announcements;
    seen += last - first + 1;
  });
  for (int i = 0; i < 100'000; ++i) list_.Append(Named("a"), true);
  EXPECT_EQ(list_.Count(), 100'000);
  EXPECT_EQ(list_.SelectedCount(), 100'000);
  EXPECT_EQ(list_.CurrentRow(), 99'999);
  EXPECT_EQ(list_.rowCount(), seen);
  list_.Flush();
  EXPECT_EQ(seen, 100'000);
  EXPECT_LE(announcements, 100) << "not one announcement a row";
}

TEST_F(FileListTest, RemovingAndReorderingKeepSelectionAndCurrentRowOnTheirRows) {
  using Case = std::pair<const char*, const char*>;
  for (const auto& [before, after] :
       {Case("a* b >c d*", "b >c"), Case("a >b* c* d", "a >d"), Case("a b >c*", "a >b"),
        Case("a* >b*", ""), Case("a* b", "b"), Case("a >b", "a >b")}) {
    Fill(before);
    list_.RemoveSelected();
    EXPECT_EQ(Print(list_), after) << before;
    EXPECT_EQ(list_.SelectedCount(), 0);
  }
  Fill("a* b >c d* e*");
  list_.SetReason(1, "gone");
  list_.SetReason(4, "lost");
  list_.SetSelected(0, false);
  list_.SetSelected(3, false);
  list_.RemoveSelected();
  list_.SetSelected(0, true);
  list_.SetSelected(3, true);
  list_.Flush();
  const QPersistentModelIndex b = list_.index(1, FileListRow::Link);
  list_.Reorder({3, 2, 1, 0});
  EXPECT_EQ(Print(list_), "d* >c b a*");
  EXPECT_EQ(b.data().toString(), "b");
  EXPECT_EQ(b.data(Qt::ToolTipRole).toString(), "gone");
  list_.SetRow(2, Named("b"));
  for (int row = 0; row < 4; ++row) EXPECT_EQ(list_.Reason(row), row == 2 ? "gone" : "");
}

TEST_F(FileListTest, TellsViewsOnlyOfRowsTheyKnowAndOnceThatItIsEmpty) {
  int last = -1;
  int cleared = 0;
  QObject::connect(&list_, &FileList::SelectionChanged, [&last](int, int to) { last = to; });
  QObject::connect(&list_, &FileList::Cleared, [&cleared] { ++cleared; });
  list_.Append(Named("a"));
  list_.Append(Named("a\u202egpj.exe"));
  list_.DeselectAll();
  EXPECT_EQ(last, list_.rowCount() - 1);
  list_.SetCurrentRow(1);
  EXPECT_EQ(list_.rowCount(), 2);
  list_.SelectAll();
  EXPECT_EQ(last, 1);
  EXPECT_FALSE(list_.index(1, FileListRow::Link).data().toString().contains(QChar(0x202e)));
  EXPECT_TRUE(list_.Row(1)[FileListRow::Link].contains(QChar(0x202e)));
  EXPECT_EQ(list_.ToolTip(), "2個");
  list_.ClearFileList();
  list_.ClearFileList();
  EXPECT_EQ(cleared, 1);
  EXPECT_EQ(list_.CurrentRow(), -1);
  EXPECT_EQ(list_.ToolTip(), QString());
}

TEST_F(FileListTest, FindingComparesWithoutWidthAndCaseButKeepsTheKanaApart) {
  using Case = std::tuple<const char*, const char*, bool>;
  for (const auto& [row, text, found] :
       {Case("xABCx", "abc", true), Case("ＡＢＣ", "abc", true), Case("abc", "Ｂ", true),
        Case("ｶﾞｲﾄﾞ", "ガイド", true), Case("ガイド", "がいど", false), Case("ab", "abc", false),
        Case("x.mp3", "\t", true), Case("a", "", false)}) {
    Fill(row);
    EXPECT_EQ(FindInList(list_, text, 0), found ? 0 : -1) << text;
    EXPECT_EQ(FindInList(list_, text, 1), -1);
  }
  // It goes on behind the current row and wraps around.
  Fill("a1 b* A2 b2");
  for (const char* expected : {">a1* b A2 b2", "a1 b >A2* b2", ">a1* b A2 b2"}) {
    FindNext(list_, "a");
    EXPECT_EQ(Print(list_), expected);
  }
  FindNext(list_, "z");
  EXPECT_EQ(Print(list_), ">a1 b A2 b2");
  FindAll(list_, "b");
  EXPECT_EQ(Print(list_), "a1 b* A2 >b2*");
  EXPECT_EQ(list_.SelectedCount(), 2);
  FindAll(list_, "z");
  EXPECT_EQ(list_.SelectedCount(), 0);
}

TEST_F(FileListTest, SortingTurnsItsDirectionAtEveryClickWhateverTheColumn) {
  const char* const rows[] = {"\t\t    20\tb\tx", "\t\t     3\ta\tx", "\t\t     3\tc\ty"};
  for (const char* row : rows) list_.Append(FileListRow::FromText(row));
  list_.DeselectAll();
  list_.SetSelected(1, true);
  list_.SetCurrentRow(2);
  FileListSorter sorter;
  using Click = std::tuple<FileListRow::Column, const char*, const char*>;
  for (const auto& [column, order, tag] :
       {Click(FileListRow::Size, "a* >c b", "1"), Click(FileListRow::Size, "b >c a*", "0"),
        Click(FileListRow::BaseDir, "a* b >c", "1"), Click(FileListRow::Link, ">c b a*", "0")}) {
    sorter.Sort(list_, column);
    EXPECT_EQ(Print(list_), order);
    EXPECT_EQ(sorter.Tag(), tag);
  }
  EXPECT_EQ(list_.Row(0).ToText(), rows[2]) << "the columns stay in their order";
}

TEST(RowAddress, TakesALinkWithItsOwnSchemeAsItIsOnlyForThePlayer) {
  using Case = std::tuple<const char*, const char*, const char*>;
  for (const auto& [link, file, played] :
       {Case("a.mp3", "http://h/d/a.mp3", "http://h/d/a.mp3"),
        Case("/a.mp3", "http://h/a.mp3", "http://h/a.mp3"),
        Case("http://o/a b.mp3 ", "http://o/a b.mp3", "http://o/a b.mp3"),
        Case("?a&amp;b", "http://h/d/?a&b", "http://h/d/?a&b"),
        Case("mms://o/a&#38;b", "http://h/d/mms://o/a&b", "mms://o/a&b")}) {
    FileListRow row = Named(link);
    row.Set(FileListRow::BaseDir, "http://h/d");
    EXPECT_EQ(FileAddressOf(row), file);
    EXPECT_EQ(PlayAddressOf(row), played);
  }
}

}  // namespace
}  // namespace zentorin
