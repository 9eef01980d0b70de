// SPDX-License-Identifier: MIT
#include "crawl/file_list_search.h"
#include "tests/ui/main_window_test.h"

namespace zentorin::test {
namespace {

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
      job.Set(TargetUrlItem::Root, QString("http://h/%1").arg(i));
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
  void Choose(const char* name) {
    auto* action = w->Find<QAction>(name);
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

TEST_F(ListMenusTest, ShowOverWhatIsUnderThePointer) {
  AddJobs(2);
  const auto shows = [](const LineListView* view, int row, QMenu* menu) {
    QTest::mousePress(view->viewport(), Qt::RightButton, {}, At(view, row));
    const bool shown = menu->isVisible();
    menu->close();
    return shown;
  };
  EXPECT_TRUE(shows(urlView, 1, urlMenu));
  EXPECT_EQ(Jobs(), " 1a, 2b*");
  EXPECT_TRUE(shows(urlView, -1, urlMenu));
  EXPECT_EQ(Jobs(), " 1a, 2b");
  EXPECT_FALSE(shows(fileView, -1, fileMenu)) << "there is no row";
  AddRows({"a", "b"});
  files.SetSelected(0, true);
  const Activity::Scope working(w->workspace.activity, Phase::Listing);
  EXPECT_FALSE(shows(urlView, 1, urlMenu));
  EXPECT_TRUE(shows(fileView, 1, fileMenu));
  EXPECT_TRUE(files.IsSelected(0) && !files.IsSelected(1));
  QContextMenuEvent key(QContextMenuEvent::Keyboard, QPoint(), QPoint());
  QApplication::sendEvent(fileView, &key);
  EXPECT_TRUE(fileMenu->isVisible());
}

TEST_F(ListMenusTest, AddCopyPasteAndDeleteJobs) {
  w->workspace.settings.defaultSavePath = "save";
  AddJobs(2);
  Choose("mnuTargetUrl_Add");
  EXPECT_EQ(Jobs(), " 1a, 2*, 3b");
  EXPECT_EQ(w->Text("txtSavePath"), "save");
  w->Click("cmdOrder_0");
  EXPECT_EQ(Jobs(), " 1a, 2b, 3*");
  QTest::keyClick(urlView, Qt::Key_Up);
  EXPECT_EQ(w->Text("txtDescription"), "b");
  w->Click("cmdOrder_1");
  EXPECT_EQ(Jobs(), " 1b*, 2a, 3");
  // A click with Ctrl on the selected job does not take the selection away.
  QTest::mouseClick(urlView->viewport(), Qt::LeftButton, Qt::ControlModifier, At(urlView, 0));
  EXPECT_TRUE(urlView->selectionModel()->isSelected(urlView->currentIndex()));

  QTest::keyClick(urlView, Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(QApplication::clipboard()->text(), urls.Item(0).ToLine());
  QApplication::clipboard()->setText("9\tpasted\thttp://p/\r\nsecond");
  QTest::keyClick(urlView, Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(urls.Item(0).ToLine(), "9\tpasted\thttp://p/");
  EXPECT_EQ(w->Text("txtUrl_Root"), "http://p/");

  QTest::keyClick(urlView, Qt::Key_Delete);
  EXPECT_EQ(urls.Count(), 3) << "cancel is the default";
  EXPECT_EQ(w->messages.boxes.front().defaultAnswer, MessageBox::Answer::Cancel);
  for (const char16_t* rest : {u" 1a*, 2", u" 1*", u""}) {
    w->messages.answers = {MessageBox::Answer::Ok};
    Choose("mnuTargetUrl_Del");
    EXPECT_EQ(Jobs(), QString::fromUtf16(rest));
  }
}

TEST_F(ListMenusTest, OpenSitesPlayFilesAndDownloadAsTheButtonsDo) {
  for (const char* entry : {"mnuContext_List_Download_Kobetu", "mnuContext_List_Download_All"}) {
    Choose(entry);
    ASSERT_TRUE(WaitForRest());
  }
  ASSERT_EQ(w->messages.boxes.size(), 2U);
  EXPECT_EQ(w->messages.boxes[1].title, "一括ダウンロード");
  w->messages.boxes.clear();
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
  files.SetSelected(2, false);
  QTest::keyClick(fileView, Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(QApplication::clipboard()->text(),
            "\t\t\tb\thttp://h/d\t\t\r\n\t\t\ta\thttp://h/d\t\t\r\n");
  QTest::mouseClick(w->Find("lblDescription_2"), Qt::LeftButton);
  EXPECT_EQ(Links(), "a,b,c");
  QTest::keyClick(fileView, Qt::Key_4, Qt::ControlModifier);
  EXPECT_EQ(Links(), "c,b,a");
  EXPECT_FALSE(files.IsSelected(0)) << "the selection stays on its rows";
  files.SetCurrentRow(0);
  w->messages.answers = {MessageBox::Answer::Cancel, MessageBox::Answer::Ok};
  QTest::keyClick(fileView, Qt::Key_Delete);
  EXPECT_EQ(files.Count(), 3);
  QTest::keyClick(fileView, Qt::Key_Delete);
  EXPECT_EQ(Links(), "c");
  EXPECT_TRUE(QTest::qWaitFor([this] { return w->Text("lblUrl_All_Cnt") == "1"; }));
}

TEST_F(ListMenusTest, SearchWithOneDialogThatIsKept) {
  AddRows({"x.abc", "y", "ＡＢＣ"});
  Choose("mnuContext_List_Search");
  auto* search = w->Find<QDialog>("frmSearch");
  ASSERT_TRUE(QTest::qWaitForWindowActive(search));
  auto* text = w->Find<QLineEdit>("txtStrSearch");
  ASSERT_TRUE(QTest::qWaitFor([text] { return text->hasFocus(); }));
  EXPECT_FALSE(w->Find("cmdSearch_1")->isEnabled());
  QTest::keyClicks(text, "abc");
  w->Click("chkCompare");
  for (const int expected : {0, 2, 0}) {
    QTest::keyClick(text, Qt::Key_Return);
    EXPECT_EQ(files.CurrentRow(), expected);
  }
  w->Click("cmdSearch_1");
  EXPECT_EQ(fileView->selectionModel()->selectedIndexes().size(), 2);
  EXPECT_EQ(fileView->currentIndex().row(), 2);
  search->close();
  Choose("mnuContext_List_Search");
  EXPECT_TRUE(search->isVisible());
  EXPECT_EQ(w->window.findChildren<QDialog*>("frmSearch").size(), 1);
}

// A selection of very many ranges must not cost their square: then this would never end.
TEST_F(ListMenusTest, AHundredThousandRowsLeaveTheUserWhereHeIs) {
  const auto append = [this](int count) {
    for (int i = 0; i < count; ++i) {
      FileListRow row;
      row.Set(FileListRow::Link, QString(i % 2 == 0 ? "hit%1" : "x%1").arg(i * 7919LL % count));
      files.Append(row, true);
    }
    files.Flush();
  };
  append(50'000);
  fileView->setFocus();
  fileView->scrollTo(fileView->model()->index(25'000, 0));
  const QModelIndex clicked = fileView->indexAt({40, 40});
  QTest::mouseClick(fileView->viewport(), Qt::LeftButton, {}, {40, 40});
  EXPECT_EQ(files.SelectedCount(), 1);
  const int scrolled = fileView->verticalScrollBar()->value();
  append(50'000);
  EXPECT_EQ(fileView->verticalScrollBar()->value(), scrolled);
  EXPECT_EQ(fileView->currentIndex(), clicked);
  EXPECT_EQ(files.SelectedCount(), 50'001);

  FindAll(files, "ＨＩＴ");
  EXPECT_EQ(files.SelectedCount(), 50'000);
  FindAll(files, "x");
  w->Click("lblDescription_2");
  fileView->scrollTo(fileView->model()->index(25'000, 0));
  QTest::mouseClick(fileView->viewport(), Qt::LeftButton, {}, {40, 40});
  // From the row that was clicked to the end.
  const int kept = fileView->currentIndex().row();
  QTest::keyClick(fileView, Qt::Key_End, Qt::ShiftModifier);
  EXPECT_EQ(files.SelectedCount(), 100'000 - kept);
  w->messages.answers = {MessageBox::Answer::Ok};
  Choose("mnuContext_List_Delete");
  EXPECT_EQ(fileView->model()->rowCount(), kept);
  EXPECT_TRUE(
      fileView->viewport()->rect().intersects(fileView->visualRect(fileView->currentIndex())));
}

}  // namespace
}  // namespace zentorin::test
