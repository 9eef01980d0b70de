// SPDX-License-Identifier: MIT
#include "crawl/file_list.h"

#include <QAbstractItemModelTester>
#include <QPersistentModelIndex>
#include <tuple>

#include <gtest/gtest.h>

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

// A list under the eyes of Qt's model tester and of a mirror that follows its signals only.
class FileListTest : public testing::Test {
 protected:
  FileListTest() {
    QObject::connect(&list_, &QAbstractItemModel::rowsInserted,
                     [this](const QModelIndex&, int first, int last) {
                       ++announcements_;
                       seen_ += last - first + 1;
                     });
  }

  void Fill(const QString& notation) {
    for (const QString& name : notation.split(u' ')) {
      list_.Append(Named(name.startsWith(u'>') ? name.mid(1) : name), name.startsWith(u'>'));
    }
    list_.DeselectAll();
  }
  void Select(const QList<int>& rows) {
    for (const int row : rows) list_.SetSelected(row, true);
  }

  FileList list_;
  QAbstractItemModelTester tester_{&list_, QAbstractItemModelTester::FailureReportingMode::Fatal};
  int announcements_ = 0;
  int seen_ = 0;
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
  for (int i = 0; i < 100'000; ++i) list_.Append(Named("a"), true);
  EXPECT_EQ(list_.Count(), 100'000);
  EXPECT_EQ(list_.SelectedCount(), 100'000);
  EXPECT_EQ(list_.CurrentRow(), 99'999);
  EXPECT_EQ(list_.rowCount(), seen_);
  list_.Flush();
  EXPECT_EQ(seen_, 100'000);
  EXPECT_LE(announcements_, 100) << "not one announcement a row";
}

TEST_F(FileListTest, RemovesWhatIsSelectedAndKeepsTheCurrentRowInPlace) {
  using Case = std::tuple<const char*, QList<int>, const char*>;
  for (const auto& [before, selected, after] :
       {Case("a b >c d", {0, 3}, "b >c"), Case("a >b c d", {1, 2}, "a >d"),
        Case("a b >c", {2}, "a >b"), Case("a >b", {0, 1}, ""), Case("a b", {0}, "b"),
        Case("a >b", {}, "a >b")}) {
    Fill(before);
    Select(selected);
    list_.RemoveSelected();
    EXPECT_EQ(Print(list_), after) << before;
    EXPECT_EQ(list_.SelectedCount(), 0);
    list_.ClearFileList();
  }
}

TEST_F(FileListTest, RemovesEveryOtherOfManyRows) {
  for (int i = 0; i < 2000; ++i) list_.Append(Named(QString::number(i)));
  for (int i = 0; i < 2000; i += 2) list_.SetSelected(i, false);
  list_.SetCurrentRow(999);
  list_.RemoveSelected();
  EXPECT_EQ(list_.Count(), 1000);
  EXPECT_EQ(list_.Row(list_.CurrentRow())[FileListRow::Link], "1000");
}

TEST_F(FileListTest, ReorderingKeepsSelectionCurrentRowAndIndexesOnTheirRows) {
  Fill("a b >c d");
  Select({0, 3});
  list_.Flush();
  const QPersistentModelIndex b = list_.index(1, FileListRow::Link);
  list_.Reorder({3, 2, 1, 0});
  EXPECT_EQ(Print(list_), "d* >c b a*");
  EXPECT_EQ(b.data().toString(), "b");
}

TEST_F(FileListTest, TellsViewsOnlyOfRowsTheyKnow) {
  int last = -1;
  QObject::connect(&list_, &FileList::SelectionChanged, [&last](int, int to) { last = to; });
  list_.Append(Named("a"));
  list_.Append(Named("b"));
  list_.DeselectAll();
  EXPECT_EQ(last, list_.rowCount() - 1);
  list_.SetCurrentRow(1);
  EXPECT_EQ(list_.rowCount(), 2);
  list_.SelectAll();
  EXPECT_EQ(last, 1);
}

TEST_F(FileListTest, AnEmptiedListSaysSoOnce) {
  int cleared = 0;
  QObject::connect(&list_, &FileList::Cleared, [&cleared] { ++cleared; });
  Fill("a >b");
  EXPECT_EQ(list_.ToolTip(), "2個");
  list_.ClearFileList();
  list_.ClearFileList();
  EXPECT_EQ(cleared, 1);
  EXPECT_EQ(list_.CurrentRow(), -1);
  EXPECT_EQ(list_.ToolTip(), QString());
}

TEST_F(FileListTest, ShowsHostileTextHarmlessly) {
  Fill("a\u202egpj.exe");
  list_.Flush();
  EXPECT_FALSE(list_.index(0, FileListRow::Link).data().toString().contains(QChar(0x202e)));
  EXPECT_TRUE(list_.Row(0)[FileListRow::Link].contains(QChar(0x202e)));
}

}  // namespace
}  // namespace zentorin
