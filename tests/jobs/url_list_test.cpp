// SPDX-License-Identifier: MIT
#include "jobs/url_list.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>

#include <gtest/gtest.h>

#include "jobs/job_editor.h"

namespace zentorin {
namespace {

using Field = TargetUrlItem::Field;

// Fills the list with jobs described "a", "b", …, clean and with none selected.
void Fill(UrlList& list, const QString& descriptions) {
  for (const QChar c : descriptions) {
    TargetUrlItem item;
    item.Set(Field::Description, QString(c));
    list.InsertBelow(list.Count() - 1, item);
  }
}

// " 1a[ 2b]*": numbers and descriptions, brackets round the selected job, a star when dirty.
std::string Shown(const UrlList& list) {
  QString text;
  for (int row = 0; row < list.Count(); ++row) {
    const TargetUrlItem item = list.Item(row);
    const QString job = item[Field::Number] + item[Field::Description];
    text += row == list.SelectedRow() ? u'[' + job + u']' : job;
  }
  return (list.IsDirty() ? text + u'*' : text).toStdString();
}

TEST(UrlList, KeepsNumbersSelectionAndMarkThroughEveryCommand) {
  UrlList list;
  const QAbstractItemModelTester tester(&list,
                                        QAbstractItemModelTester::FailureReportingMode::Fatal);
  Fill(list, "abc");
  list.Select(1);
  EXPECT_EQ(Shown(list), " 1a[ 2b] 3c");
  list.InsertBelow(-1, {});
  EXPECT_EQ(Shown(list), " 1 2a[ 3b] 4c");
  EXPECT_TRUE(list.MoveSelected(-1));
  EXPECT_EQ(Shown(list), " 1[ 2b] 3a 4c*");
  list.SetDirty(false);
  EXPECT_TRUE(list.MoveSelected(1));
  EXPECT_TRUE(list.MoveSelected(1));
  EXPECT_FALSE(list.MoveSelected(1)) << "at the end";
  EXPECT_EQ(Shown(list), " 1 2a 3c[ 4b]*");
  list.SetDirty(false);
  list.Remove(3);
  EXPECT_EQ(Shown(list), " 1 2a[ 3c]*");
  list.Remove(0);
  EXPECT_EQ(Shown(list), "[ 1a] 2c*");
  list.Remove(1);
  list.Remove(0);
  EXPECT_EQ(Shown(list), "*");
  EXPECT_FALSE(list.MoveSelected(-1)) << "nothing is selected";
  list.ReplaceAll({" 1\tx", {}});
  EXPECT_EQ(Shown(list), " 1x*") << "lines are taken as they stand and the mark stays";
  EXPECT_EQ(list.data(list.index(0), Qt::DisplayRole), " 1\tx");
  list.SetLine(0, "\u202E\tb");
  EXPECT_FALSE(list.data(list.index(0), Qt::DisplayRole).toString().contains(QChar(0x202E)));
}

TEST(UrlList, RenumbersThousandsOfJobsInOneAnnouncement) {
  UrlList list;
  list.ReplaceAll(QStringList(5'000));
  const QSignalSpy changes(&list, &UrlList::dataChanged);
  list.InsertBelow(-1, {});
  EXPECT_EQ(changes.count(), 1);
  EXPECT_EQ(list.Item(5'000)[Field::Number], "5001");
}

TEST(JobEditor, ShowsASelectedJobWithoutMarkingTheList) {
  UrlList list;
  JobEditor editor(list);
  list.ReplaceAll({" 1\td\tr\ts\tf\tp\t1\tx\t3\t\t1\t0\tyes\t1\t2 levels", {}});
  list.Select(0);
  EXPECT_EQ(editor.Fields().ToLine().toStdString(),
            " 1\td\tr\ts\tf\tp\t  1\tx\t3,\t0\t1\t0\t0\t1\t2\t0\t0");
  EXPECT_EQ(editor.Depth(), 2);
  EXPECT_FALSE(list.IsDirty());
  list.Select(1);
  EXPECT_EQ(editor.Fields().ToLine().toStdString(), "\t\t\t\t\t\t\t\t,\t0\t0\t0\t0\t0\t0\t0\t0");
  list.Select(-1);
  EXPECT_EQ(editor.Fields(), TargetUrlItem());
  editor.Edit(Field::Description, "nowhere");
  EXPECT_FALSE(list.IsDirty()) << "without a selected job nothing is stored";
}

TEST(JobEditor, ForgetsTheBaseOfAnotherRoot) {
  UrlList list;
  JobEditor editor(list);
  list.ReplaceAll({" 1\ta\tr", " 2\tb\ts"});
  list.Select(0);
  editor.SetRootBase("base of r");
  list.Select(0);
  EXPECT_EQ(editor.RootBase(), "base of r");
  list.Select(1);
  EXPECT_EQ(editor.RootBase(), QString());
}

TEST(JobEditor, WritesEveryEditStraightBackIntoItsLine) {
  UrlList list;
  JobEditor editor(list);
  Fill(list, "ab");
  list.Select(1);
  editor.Edit(Field::Description, "b");
  editor.EditFlag(Field::Skip, false);
  EXPECT_EQ(Shown(list), " 1a[ 2b]") << "the same value is no edit";
  const QSignalSpy edits(&editor, &JobEditor::FieldEdited);
  editor.Edit(Field::Description, "x\ty\r\nz");
  editor.EditFlag(Field::Skip, true);
  editor.EditBefore(1, "7");
  editor.EditBefore(0, "3,");
  EXPECT_EQ(edits.count(), 4);
  EXPECT_EQ(list.Line(1).toStdString(), " 2\tx y  z\t\t\t\t\t\t\t3 ,7\t0\t1\t0\t0\t0\t0\t0\t0");
  EXPECT_EQ(Shown(list), " 1a[ 2x y  z]*");
}

}  // namespace
}  // namespace zentorin
