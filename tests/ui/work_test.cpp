// SPDX-License-Identifier: MIT
#include "base/status_board.h"
#include "tests/ui/main_window_test.h"

namespace zentorin::test {

using namespace Qt::Literals::StringLiterals;

namespace {

// A request that never gets an answer: a phase in which a run stands still.
struct Phase {
  const char* name;
  const char* stalled;  // target at which the server falls silent
  bool download;        // the list is there and its files are being fetched
  const char* pressed;  // button that starts it
};

// Makes the cases' names readable.
void PrintTo(const Phase& phase, std::ostream* out) {
  *out << phase.name;
}

class WorkTest : public MainWindowTest, public testing::WithParamInterface<Phase> {
 protected:
  WorkTest() {
    server.Route("/", Answer::Text("<a href=\"sub.html\"> <a href=\"a.mp3\">"));
    server.Route("/sub.html", Answer::Text("<a href=\"b.mp3\">"));
    server.Route("/a.mp3", Answer::Text("aaaa", "audio/mpeg"));
    server.Route("/b.mp3", Answer::Text("bb", "audio/mpeg"));
  }

  // Brings the program into the middle of the phase.
  void Enter(const Phase& phase) {
    StartWithJob();
    if (phase.download) {
      w->Click("cmdGo_All_1");
      ASSERT_TRUE(WaitForRest());
    }
    const bool isFile = QByteArray(phase.stalled).endsWith(".mp3");
    server.Route(QLatin1StringView(phase.stalled),
                 isFile ? Answer::Generated(1 << 20).Ends(Answer::Ending::Stall, 1000)
                        : Answer().Ends(Answer::Ending::Silent));
    const int before = server.Hits(QLatin1StringView(phase.stalled));
    w->Click(phase.pressed);
    ASSERT_TRUE(QTest::qWaitFor(
        [&] { return server.Hits(QLatin1StringView(phase.stalled)) > before; }, 20'000));
    QTest::qWait(20);
  }
  void EnterPowerCountdown() {
    StartWithJob();
    w->workspace.driver.SetCountdownStep(std::chrono::milliseconds(50));
    w->Click("cmdAllDownload_1");
    ASSERT_TRUE(QTest::qWaitFor([this] { return w->Find("ChkStandby")->isVisible(); }));
    w->Click("ChkStandby");
    ASSERT_TRUE(
        QTest::qWaitFor([this] { return w->Text("lblStatus") == "スタンバイ します。"; }, 20'000));
  }
};

TEST_F(WorkTest, AListIsGeneratedAndDownloadedByTwoClicksAndInABatch) {
  StartWithJob();
  w->Click("cmdGo_All_1");
  EXPECT_TRUE(w->Find("cmdCancel")->isVisible());
  ASSERT_TRUE(WaitForRest());
  EXPECT_FALSE(w->Find("cmdCancel")->isVisible());
  EXPECT_EQ(w->Cell(0, FileListRow::Address), "http://site.test/a.mp3");
  EXPECT_EQ(w->Cell(1, FileListRow::Link), "b.mp3");
  EXPECT_EQ(w->EditText("txtUrl_RootBase"), "http://site.test");
  auto* list = w->Find<LineListView>("lstUrl_All");
  EXPECT_EQ(list->selectionModel()->selectedIndexes().size(), 2);
  QTest::mouseMove(list->viewport(), {50, 30});
  QTest::mouseMove(list->viewport(), {60, 30});
  EXPECT_EQ(list->toolTip(), "2個");

  w->Click("cmdAllDownload_0");
  ASSERT_TRUE(WaitForRest());
  EXPECT_EQ(w->Cell(0, FileListRow::Mark) + w->Cell(1, FileListRow::Mark), "oo");
  EXPECT_EQ(w->Text("lblStatus"), "処理終了");
  EXPECT_EQ(w->Text("lblUrl_All_Cnt"), "2");
  EXPECT_EQ(home.Read("save/a.mp3"), "aaaa");
  EXPECT_EQ(home.Read("save/b.mp3"), "bb");
  EXPECT_EQ(w->messages.Texts(), QStringList());

  w->Click("cmdLog");
  ASSERT_EQ(w->opener.opened.size(), 1);
  EXPECT_TRUE(w->opener.opened.first().startsWith("text:log.txt:-- 2024/05/01"));

  ASSERT_TRUE(QFile::remove(home.Path("save/b.mp3")));
  w->Click("cmdAllDownload_1");
  ASSERT_TRUE(WaitForRest());
  EXPECT_EQ(w->messages.Texts().first().section(u'|', 0, 0), "一括ダウンロード");
  EXPECT_EQ(w->Text("lblStatus"), "- 処理終了 -");
  EXPECT_FALSE(w->Find("ChkStandby")->isVisible());
  EXPECT_EQ(home.Read("save/b.mp3"), "bb");
}

TEST_F(WorkTest, WorkLocksTheEditingSurfaceAndGivesTheFocusBack) {
  StartWithJob();
  w->Find("txtDescription")->setFocus();
  const QString locked =
      u"cmdOrder_0 cmdOrder_1 lstTargetUrl txtDescription txtUrl_Root cmbUrl_SubPattern cmbDepth "
      "cmbFilePattern Opt_0 Opt_1 ChkSkip ChkOnlyInSite ChkOverWrite ChkTreeFolder txtSavePath "
      "cmdSavePath cmdGo_All_0 cmdGo_All_1 cmdAllDownload_0 cmdAllDownload_1 lblRegHelp mnuFile "
      "mnuTool"_s;
  const QString live = "lstUrl_All cmdLog cmdClose ChkStandby mnuHelp";
  const auto enabled = [this](const QString& names) {
    QStringList found;
    for (const QString& name : names.split(u' ')) {
      const auto* control = w->Find(qPrintable(name));
      const auto* menu = qobject_cast<const QMenu*>(control);
      if (menu != nullptr ? menu->menuAction()->isEnabled() : control->isEnabled()) found += name;
    }
    return found.join(u' ');
  };
  for (const bool busy : {true, false}) {
    w->workspace.board.SetBusy(busy);
    EXPECT_EQ(enabled(locked), busy ? QString() : locked);
    EXPECT_EQ(enabled(live), live);
  }
  EXPECT_EQ(QApplication::focusWidget(), w->Find("txtDescription"));
  // What a command misses is where the user goes on.
  w->workspace.job.Edit(TargetUrlItem::Root, {});
  w->Click("cmdGo_All_1");
  ASSERT_TRUE(WaitForRest());
  EXPECT_EQ(w->messages.boxes.back().text, "URL が空白です！");
  EXPECT_EQ(QApplication::focusWidget(), w->Find("txtUrl_Root"));
}

TEST_P(WorkTest, EscapeCancels) {
  Enter(GetParam());
  EXPECT_TRUE(w->Find("cmdCancel")->isVisible());
  QTest::keyClick(&w->window, Qt::Key_Escape);
  EXPECT_EQ(w->Text("cmdCancel"), "キャンセル処理中");
  ASSERT_TRUE(WaitForRest());
  EXPECT_FALSE(w->Find("cmdCancel")->isVisible());
  EXPECT_TRUE(w->Find("txtUrl_Root")->isEnabled());
  EXPECT_FALSE(w->Find("frProgress_o")->isVisible());
  EXPECT_EQ(home.Read("save/a.mp3"), QByteArray());
}

TEST_P(WorkTest, ClosingUnwindsAndEndsTheProgram) {
  Enter(GetParam());
  w->Click("cmdClose");
  ASSERT_TRUE(WaitForExit());
  EXPECT_EQ(w->exitStatus, 0);
  EXPECT_FALSE(w->window.isVisible());
  EXPECT_FALSE(w->workspace.driver.IsRunning());
  EXPECT_TRUE(home.Read("Conf.txt").contains("form left = 130\r\n"));
  EXPECT_EQ(home.Read("save/a.mp3"), QByteArray());
}

INSTANTIATE_TEST_SUITE_P(Phases, WorkTest,
                         testing::Values(Phase{"RootPage", "/", false, "cmdGo_All_1"},
                                         Phase{"SubPage", "/sub.html", false, "cmdGo_All_1"},
                                         Phase{"File", "/a.mp3", true, "cmdAllDownload_0"},
                                         Phase{"BatchPage", "/", false, "cmdAllDownload_1"},
                                         Phase{"BatchFile", "/a.mp3", false, "cmdAllDownload_1"}),
                         [](const auto& phase) { return phase.param.name; });

TEST_F(WorkTest, ACountdownThatIsCancelledKeepsTheProgram) {
  EnterPowerCountdown();
  w->Click("cmdCancel");
  ASSERT_TRUE(WaitForRest());
  EXPECT_EQ(w->power.performed, QStringList());
  EXPECT_EQ(w->Text("lblStatus"), "");
  EXPECT_TRUE(w->window.isVisible());
}

TEST_F(WorkTest, ClosingInACountdownOrWhileAPageSourceComesEndsTheProgramToo) {
  const std::function<void()> phases[] = {
      [this] { EnterPowerCountdown(); }, [this] { StartOnList({"-a", "23:59", "-q", "s"}); },
      [this] {
        StartWithJob();
        server.Route("/", Answer().Ends(Answer::Ending::Silent));
        w->Find<QAction>("mnuContext_TargetUrl_OpenSource")->trigger();
      }};
  for (const auto& enter : phases) {
    Restart();
    enter();
    w->Click("cmdClose");
    ASSERT_TRUE(WaitForExit());
    EXPECT_FALSE(w->window.isVisible());
    EXPECT_EQ(w->power.performed, QStringList());
    EXPECT_EQ(w->messages.Texts().filter("このＵＲＬ"), QStringList());
  }
}

TEST_F(WorkTest, AHundredThousandRowsLeaveTheUserWhereHeIs) {
  StartWithJob();
  FileList& files = w->workspace.files;
  const auto append = [&files](int count) {
    for (int i = 0; i < count; ++i) {
      FileListRow row;
      row.Set(FileListRow::Link, QString::number(files.Count()));
      files.Append(row, true);
    }
    files.Flush();
  };
  append(50'000);
  auto* list = w->Find<LineListView>("lstUrl_All");
  list->setFocus();
  QTest::keyClick(list, Qt::Key_A, Qt::ControlModifier);
  EXPECT_EQ(files.SelectedCount(), 50'000);
  list->scrollTo(list->model()->index(25'000, 0));
  const QModelIndex clicked = list->indexAt({40, 40});
  QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, {40, 40});
  EXPECT_EQ(files.SelectedCount(), 1);
  const int scrolled = list->verticalScrollBar()->value();
  append(50'000);
  EXPECT_EQ(list->verticalScrollBar()->value(), scrolled);
  EXPECT_EQ(list->currentIndex(), clicked);
  EXPECT_EQ(files.SelectedCount(), 50'001);
  EXPECT_TRUE(files.IsSelected(clicked.row()));

  // From the row that was clicked to the end, then all but two of them away.
  QTest::keyClick(list, Qt::Key_End, Qt::ShiftModifier);
  EXPECT_EQ(files.SelectedCount(), 100'000 - clicked.row());
  EXPECT_EQ(files.CurrentRow(), 99'999);
  EXPECT_TRUE(list->viewport()->rect().intersects(list->visualRect(list->currentIndex())));
  files.RemoveSelected();
  EXPECT_EQ(list->model()->rowCount(), clicked.row());
  EXPECT_TRUE(list->viewport()->rect().intersects(list->visualRect(list->currentIndex())));
  files.ClearFileList();
  EXPECT_EQ(list->verticalScrollBar()->maximum(), 0);
}

}  // namespace
}  // namespace zentorin::test
