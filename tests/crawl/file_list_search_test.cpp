// SPDX-License-Identifier: MIT
#include "crawl/file_list_search.h"

#include <QStringList>

#include <gtest/gtest.h>

#include "crawl/file_list.h"
#include "crawl/file_list_sorter.h"
#include "crawl/row_address.h"

namespace zentorin {
namespace {

void Fill(FileList& list, const QStringList& texts) {
  for (const QString& text : texts) {
    FileListRow row;
    row.Set(FileListRow::Link, text);
    list.Append(row);
  }
  list.DeselectAll();
}

// "a* b>": a is selected, b is the current row.
QString Print(const FileList& list) {
  QStringList rows;
  for (int row = 0; row < list.Count(); ++row) {
    const QString selected = list.IsSelected(row) ? "*" : QString();
    const QString current = row == list.CurrentRow() ? ">" : QString();
    rows << list.Row(row)[FileListRow::Link] + selected + current;
  }
  return rows.join(u' ');
}

TEST(FindInList, ComparesWithoutWidthAndCaseButKeepsTheKanaApart) {
  const struct {
    const char16_t* row;
    const char16_t* text;
    bool found;
  } cases[] = {
      {u"xABCx", u"abc", true},      {u"ＡＢＣ", u"abc", true},
      {u"abc", u"Ｂ", true},         {u"ｶﾞｲﾄﾞ", u"ガイド", true},
      {u"ガイド", u"がいど", false}, {u"ab", u"abc", false},
      {u"x.mp3", u"\t", true},       {u"a", u"", false},
  };
  for (const auto& c : cases) {
    FileList list;
    Fill(list, {QString::fromUtf16(c.row)});
    EXPECT_EQ(FindInList(list, QString::fromUtf16(c.text), 0), c.found ? 0 : -1)
        << QString::fromUtf16(c.text).toStdString();
    EXPECT_EQ(FindInList(list, QString::fromUtf16(c.text), 1), -1);
  }
}

TEST(FindNext, GoesOnBehindTheCurrentRowAndWrapsAround) {
  FileList list;
  Fill(list, {"a1", "b", "A2", "b2"});
  list.SetSelected(1, true);
  for (const char* expected : {"a1*> b A2 b2", "a1 b A2*> b2", "a1*> b A2 b2"}) {
    FindNext(list, "a");
    EXPECT_EQ(Print(list), expected);
  }
  FindNext(list, "z");
  EXPECT_EQ(Print(list), "a1> b A2 b2");
}

TEST(FindAll, SelectsEveryHitAndEndsOnTheLastOne) {
  FileList list;
  Fill(list, {"a1", "b", "A2"});
  list.SetSelected(1, true);
  FindAll(list, "a");
  EXPECT_EQ(Print(list), "a1* b A2*>");
  EXPECT_EQ(list.SelectedCount(), 2);
  FindAll(list, "z");
  EXPECT_EQ(list.SelectedCount(), 0);
}

TEST(FileListSorter, TurnsItsDirectionAtEveryClickWhateverTheColumn) {
  FileList list;
  const char* const rows[] = {"\t\t    20\tb\tx", "\t\t     3\ta\tx", "\t\t     3\tc\ty"};
  for (const char* row : rows) list.Append(FileListRow::FromText(row));
  list.DeselectAll();
  list.SetSelected(1, true);
  list.SetCurrentRow(2);
  FileListSorter sorter;
  const struct {
    FileListRow::Column column;
    const char* order;
    const char* tag;
  } clicks[] = {{FileListRow::Size, "a* c> b", "1"},
                {FileListRow::Size, "b c> a*", "0"},
                {FileListRow::BaseDir, "a* b c>", "1"},
                {FileListRow::Link, "c> b a*", "0"}};
  for (const auto& click : clicks) {
    sorter.Sort(list, click.column);
    EXPECT_EQ(Print(list), click.order);
    EXPECT_EQ(sorter.Tag(), click.tag);
  }
  EXPECT_EQ(list.Row(0).ToText(), QLatin1String(rows[2])) << "the columns stay in their order";
}

TEST(RowAddress, TakesALinkWithItsOwnSchemeAsItIsOnlyForThePlayer) {
  const struct {
    const char* link;
    const char* file;
    const char* played;
  } cases[] = {{"a.mp3", "http://h/d/a.mp3", "http://h/d/a.mp3"},
               {"/a.mp3", "http://h/a.mp3", "http://h/a.mp3"},
               {"http://o/a b.mp3 ", "http://o/a b.mp3", "http://o/a b.mp3"},
               {"mms://o/a", "http://h/d/mms://o/a", "mms://o/a"}};
  for (const auto& c : cases) {
    FileListRow row;
    row.Set(FileListRow::Link, c.link);
    row.Set(FileListRow::BaseDir, "http://h/d");
    EXPECT_EQ(FileAddressOf(row), c.file);
    EXPECT_EQ(PlayAddressOf(row), c.played);
  }
}

}  // namespace
}  // namespace zentorin
