// SPDX-License-Identifier: MIT

#include "crawl/file_list_search.h"
#include "tests/ui/main_window_test.h"
#include "ui/widgets/line_list_view.h"

namespace zentorin::test {

using namespace Qt::Literals::StringLiterals;

namespace {

// "name caption" of each entry, "-" for a separator.
QStringList Entries(const QMenu* menu) {
  QStringList entries;
  for (const QAction* action : menu->actions()) {
    entries << (action->isSeparator() ? "-" : action->objectName() + u' ' + action->text());
  }
  return entries;
}

class ListMenusTest : public MainWindowTest {
 protected:
  ListMenusTest() {
    w->Start();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&w->window));
  }

  void AddJobs(int count) {
    for (int i = 0; i < count; ++i) {
      TargetUrlItem job;
      job.Set(TargetUrlItem::Description, QString(QChar(u'a' + i)));
      job.Set(TargetUrlItem::Root, u"http://h/%1"_s.arg(i));
      urls.InsertBelow(i - 1, job);
    }
    urls.Select(0);
  }
  void AddRows(const QStringList& links) {
    for (const QString& link : links) {
      FileListRow row;
      row.Set(FileListRow::Link, link);
      row.Set(FileListRow::BaseDir, "http://h/d");
      files.Append(row);
    }
    files.Flush();
    files.DeselectAll();
  }
  QString Jobs() const {
    QStringList names;
    for (int row = 0; row < urls.Count(); ++row) {
      names << urls.Item(row)[TargetUrlItem::Number] + urls.Item(row)[TargetUrlItem::Description] +
                   (row == urls.SelectedRow() ? "*" : QString());
    }
    return names.join(u',');
  }
  QString Links() const {
    QStringList links;
    for (int row = 0; row < files.Count(); ++row) links << files.Row(row)[FileListRow::Link];
    return links.join(u',');
  }
  static QPoint At(const LineListView* view, int row) {
    const QRect entry = view->visualRect(view->model()->index(row, 0));
    return row < 0 ? QPoint(20, view->viewport()->height() - 3) : entry.topLeft() + QPoint(20, 5);
  }
  void Press(const LineListView* view, int row, Qt::MouseButton button) {
    QTest::mousePress(view->viewport(), button, {}, At(view, row));
  }
  void Choose(const char* name) {
    auto* action = w->Find<QAction>(name);
    ASSERT_NE(action, nullptr) << name;
    auto* menu = qobject_cast<QMenu*>(action->associatedObjects().constFirst());
    if (menu == nullptr) menu = qobject_cast<QMenu*>(action->parent());
    menu->popup(QPoint(0, 0));
    QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(action).center());
    menu->close();
  }

  UrlList& urls = w->workspace.urlList;
  FileList& files = w->workspace.files;
  LineListView* urlView = w->Find<LineListView>("lstTargetUrl");
  LineListView* fileView = w->Find<LineListView>("lstUrl_All");
  QMenu* urlMenu = w->Find<QMenu>("mnuContext_TargetUrl");
  QMenu* fileMenu = w->Find<QMenu>("mnuContext_List");
};

TEST_F(ListMenusTest, HaveTheirEntriesToTheLetter) {
  EXPECT_EQ(Entries(urlMenu),
            QStringList({"mnuContext_TargetUrl_OpenSite サイトを開く",
                         "mnuContext_TargetUrl_OpenSource ソース", "-", "mnuTargetUrl_Copy コピー",
                         "mnuTargetUrl_Paste 貼り付け", "-", "mnuTargetUrl_Add 追加（下）",
                         "mnuTargetUrl_Del 削除"}));
  EXPECT_EQ(
      Entries(fileMenu),
      QStringList({"mnuSelectAll 全て選択", "mnuContext_List_Download_Kobetu ダウンロード",
                   "mnuContext_List_Download_All ダウンロード　一括", "-",
                   "mnuContext_List_OpenSite サイトを開く", "mnuContext_List_OpenSource ソース",
                   "mnuContext_List_Play 再生／閲覧", "-", "mnuContext_List_Copy コピー",
                   "mnuContext_List_Search 検索", "-", "mnuContext_List_Delete 削除"}));
}

TEST_F(ListMenusTest, ShowTheUrlMenuOnTheEntryUnderThePointer) {
  AddJobs(2);
  Press(urlView, 1, Qt::RightButton);
  EXPECT_TRUE(urlMenu->isVisible());
  EXPECT_EQ(Jobs(), " 1a, 2b*");
  urlMenu->close();
  Press(urlView, -1, Qt::RightButton);
  EXPECT_TRUE(urlMenu->isVisible());
  EXPECT_EQ(Jobs(), " 1a, 2b");
  EXPECT_EQ(w->Find<QLineEdit>("txtUrl_Root")->text(), QString());
  urlMenu->close();
  w->workspace.board.SetBusy(true);
  Press(urlView, 1, Qt::RightButton);
  EXPECT_FALSE(urlMenu->isVisible());
}

TEST_F(ListMenusTest, ShowTheFileMenuOverRowsOnlyAndLeaveTheSelection) {
  Press(fileView, -1, Qt::RightButton);
  EXPECT_FALSE(fileMenu->isVisible());
  AddRows({"a", "b"});
  files.SetSelected(0, true);
  w->workspace.board.SetBusy(true);
  Press(fileView, 1, Qt::RightButton);
  EXPECT_TRUE(fileMenu->isVisible());
  EXPECT_TRUE(files.IsSelected(0));
  EXPECT_FALSE(files.IsSelected(1));
  fileMenu->close();
  QContextMenuEvent key(QContextMenuEvent::Keyboard, QPoint(), QPoint());
  QApplication::sendEvent(fileView, &key);
  EXPECT_TRUE(fileMenu->isVisible());
}

TEST_F(ListMenusTest, AddCopyPasteAndDeleteJobs) {
  w->workspace.settings.defaultSavePath = "save";
  Choose("mnuTargetUrl_Del");
  EXPECT_TRUE(w->messages.boxes.empty()) << "no job is selected";
  AddJobs(2);
  Choose("mnuTargetUrl_Add");
  EXPECT_EQ(Jobs(), " 1a, 2*, 3b");
  EXPECT_EQ(w->Find<QLineEdit>("txtSavePath")->text(), "save");
  EXPECT_TRUE(urls.IsDirty());

  urls.Select(0);
  urlView->setFocus();
  QTest::keyClick(urlView, Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(QApplication::clipboard()->text(), urls.Line(0));
  QApplication::clipboard()->setText("9\tpasted\thttp://p/\r\nsecond");
  urls.SetDirty(false);
  QTest::keyClick(urlView, Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(urls.Line(0), "9\tpasted\thttp://p/");
  EXPECT_EQ(w->Find<QLineEdit>("txtUrl_Root")->text(), "http://p/");
  EXPECT_TRUE(urls.IsDirty());

  QTest::keyClick(urlView, Qt::Key_Delete);
  EXPECT_EQ(urls.Count(), 3) << "cancel is the default";
  EXPECT_EQ(w->messages.Texts(), QStringList("削除確認|選択行を削除して宜しいですか？"));
  EXPECT_EQ(w->messages.boxes.front().defaultAnswer, MessageBox::Answer::Cancel);
  for (const char16_t* rest : {u" 1*, 2b", u" 1b*", u""}) {
    w->messages.answers = {MessageBox::Answer::Ok};
    Choose("mnuTargetUrl_Del");
    EXPECT_EQ(Jobs(), QString::fromUtf16(rest));
  }
  EXPECT_EQ(w->Find<QLineEdit>("txtSavePath")->text(), QString());
}

TEST_F(ListMenusTest, OpenSitesAndPlayFiles) {
  AddJobs(1);
  QTest::mouseClick(urlView->viewport(), Qt::LeftButton, {}, At(urlView, 0));
  QTest::mouseDClick(urlView->viewport(), Qt::LeftButton, {}, At(urlView, 0));
  AddRows({"a.mp3", "mms://s/b"});
  QTest::mouseClick(fileView->viewport(), Qt::LeftButton, {}, At(fileView, 1));
  QTest::mouseDClick(fileView->viewport(), Qt::LeftButton, {}, At(fileView, 1));
  files.SetCurrentRow(0);
  Choose("mnuContext_List_OpenSite");
  EXPECT_EQ(w->opener.opened,
            QStringList({"default:http://h/0", "play:mms://s/b", "default:http://h/d/a.mp3"}));
  Choose("mnuSelectAll");
  Choose("mnuContext_List_Play");
  EXPECT_EQ(w->messages.Texts(), QStringList("|選択は１個にして下さい。"));
  EXPECT_EQ(w->opener.opened.size(), 3);
}

TEST_F(ListMenusTest, SelectCopySortAndDeleteRows) {
  AddRows({"b", "a", "c"});
  fileView->setFocus();
  QTest::keyClick(fileView, Qt::Key_A, Qt::ControlModifier);
  EXPECT_EQ(fileView->selectionModel()->selectedIndexes().size(), 3);
  files.SetSelected(2, false);
  QTest::keyClick(fileView, Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(QApplication::clipboard()->text(),
            "\t\t\tb\thttp://h/d\t\t\r\n\t\t\ta\thttp://h/d\t\t\r\n");
  QTest::mouseClick(w->Find("lblDescription_2"), Qt::LeftButton);
  EXPECT_EQ(Links(), "a,b,c");
  QTest::keyClick(fileView, Qt::Key_4, Qt::ControlModifier);
  EXPECT_EQ(Links(), "c,b,a");
  EXPECT_EQ(fileView->property("Tag").toString(), "0");
  EXPECT_FALSE(files.IsSelected(0)) << "the selection stays on its rows";
  files.SetCurrentRow(0);
  w->messages.answers = {MessageBox::Answer::Cancel, MessageBox::Answer::Ok};
  QTest::keyClick(fileView, Qt::Key_Delete);
  EXPECT_EQ(files.Count(), 3);
  QTest::keyClick(fileView, Qt::Key_Delete);
  EXPECT_EQ(Links(), "c");
  EXPECT_TRUE(QTest::qWaitFor([this] { return w->Text("lblUrl_All_Cnt") == "1"; }));
}

TEST_F(ListMenusTest, DownloadByTheMenuAsByTheButtons) {
  Choose("mnuContext_List_Download_Kobetu");
  Choose("mnuContext_List_Download_All");
  ASSERT_EQ(w->messages.boxes.size(), 2U);
  EXPECT_EQ(w->messages.boxes[0].title, "未選択");
  EXPECT_EQ(w->messages.boxes[1].title, "一括ダウンロード");
}

TEST_F(ListMenusTest, SearchWithOneDialogThatIsKept) {
  AddRows({"x.abc", "y", "ＡＢＣ"});
  Choose("mnuContext_List_Search");
  auto* search = w->Find<QDialog>("frmSearch");
  ASSERT_NE(search, nullptr);
  EXPECT_TRUE(search->windowFlags().testFlag(Qt::WindowStaysOnTopHint));
  ASSERT_TRUE(QTest::qWaitForWindowActive(search));
  auto* text = search->findChild<QLineEdit*>("txtStrSearch");
  ASSERT_TRUE(QTest::qWaitFor([text] { return text->hasFocus(); }));
  const auto live = [search] {
    QStringList names;
    for (const QWidget* widget : search->findChildren<QWidget*>()) {
      const bool control = qobject_cast<const QAbstractButton*>(widget) != nullptr ||
                           qobject_cast<const QLineEdit*>(widget) != nullptr;
      if (control && widget->isEnabled()) names << widget->objectName();
    }
    names.sort();
    return names.join(u' ');
  };
  EXPECT_EQ(live(), "txtStrSearch");
  QTest::keyClicks(text, "abc");
  EXPECT_EQ(live(), "chkCompare cmdSearch_0 cmdSearch_1 txtStrSearch");
  search->findChild<QAbstractButton*>("chkCompare")->click();
  for (const int expected : {0, 2, 0}) {
    QTest::keyClick(text, Qt::Key_Return);
    EXPECT_EQ(files.CurrentRow(), expected);
    EXPECT_EQ(files.SelectedCount(), 1);
  }
  QTest::mouseClick(search->findChild<QPushButton*>("cmdSearch_1"), Qt::LeftButton);
  EXPECT_EQ(fileView->selectionModel()->selectedIndexes().size(), 2);
  EXPECT_EQ(fileView->currentIndex().row(), 2);
  search->close();
  Choose("mnuContext_List_Search");
  EXPECT_TRUE(search->isVisible());
  EXPECT_EQ(w->window.findChildren<QDialog*>("frmSearch").size(), 1);
}

// A selection of very many ranges must not cost their square: then this would never end.
TEST_F(ListMenusTest, SelectDeleteSortAndFindInAHundredThousandRows) {
  constexpr int kRows = 100'000;
  const auto fill = [this] {
    files.ClearFileList();
    QStringList links;
    for (int i = 0; i < kRows; ++i) {
      links << (i % 2 == 0 ? "hit" : "x") + QString::number(i * 7919LL % kRows) + ".mp3";
    }
    AddRows(links);
    files.SetCurrentRow(0);
  };
  fill();
  auto* header = w->Find<QLabel>("lblDescription_2");
  QTest::mouseClick(header, Qt::LeftButton);
  FindAll(files, "ＨＩＴ");
  EXPECT_EQ(files.SelectedCount(), kRows / 2);
  fill();
  FindAll(files, "hit");
  FindAll(files, "x");
  QTest::mouseClick(header, Qt::LeftButton);
  w->messages.answers = {MessageBox::Answer::Ok};
  Choose("mnuSelectAll");
  Choose("mnuContext_List_Delete");
  EXPECT_EQ(files.Count(), 0);
}

}  // namespace
}  // namespace zentorin::test
