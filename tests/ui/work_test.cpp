// SPDX-License-Identifier: MIT
#include "tests/ui/main_window_test.h"

namespace zentorin::test {

using namespace Qt::Literals::StringLiterals;

namespace {

// A moment in which the program stands still until somebody acts.
struct Phase {
  const char* name;
  const char* pressed;  // what starts it, or null for a start time that is awaited
  const char* stalled;  // target at which the server falls silent, or null for the last countdown
  bool download;        // the list is there and its files are being fetched
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
    if (phase.pressed == nullptr) {
      StartOnList({"-a", "23:59", "-q", "s"});
      ASSERT_TRUE(QTest::qWaitForWindowActive(&w->window));
      return;
    }
    StartWithJob();
    if (phase.stalled == nullptr) {
      EnterPowerCountdown(phase.pressed);
      return;
    }
    if (phase.download) {
      w->Click("cmdGo_All_1");
      ASSERT_TRUE(WaitForRest());
    }
    const QString stalled = QLatin1StringView(phase.stalled);
    const bool isFile = stalled.endsWith(".mp3");
    server.Route(stalled, isFile ? Answer::Generated(1 << 20).Ends(Answer::Ending::Stall, 1000)
                                 : Answer().Ends(Answer::Ending::Silent));
    const int before = server.Hits(stalled);
    const qint64 sent = server.BodyBytesSent();
    w->Click(phase.pressed);
    ASSERT_TRUE(QTest::qWaitFor(
        [&] { return server.Hits(stalled) > before && (!isFile || server.BodyBytesSent() > sent); },
        20'000));
  }
  void EnterPowerCountdown(const char* pressed) {
    w->workspace.driver.SetCountdownStep(std::chrono::milliseconds(50));
    w->Click(pressed);
    ASSERT_TRUE(QTest::qWaitFor([this] { return w->Find("ChkStandby")->isVisible(); }));
    w->Click("ChkStandby");
    ASSERT_TRUE(
        QTest::qWaitFor([this] { return w->Text("lblStatus") == "スタンバイ します。"; }, 20'000));
  }
  // Nothing is left of what the user gave up: no part of a file, no power action, no complaint.
  void ExpectNoTraces() {
    const QByteArray saved = home.Read("save/a.mp3");
    EXPECT_TRUE(saved.isEmpty() || saved == "aaaa");
    EXPECT_EQ(w->power.performed, QStringList());
    EXPECT_EQ(w->messages.Texts().filter("このＵＲＬ"), QStringList());
  }
};

TEST_F(WorkTest, AListIsGeneratedAndDownloadedByTwoClicks) {
  StartWithJob();
  w->Click("cmdGo_All_1");
  ASSERT_TRUE(WaitForRest());
  EXPECT_EQ(w->Cell(0, FileListRow::Address), "http://site.test/a.mp3");
  EXPECT_EQ(w->Cell(1, FileListRow::Link), "b.mp3");
  EXPECT_EQ(w->Text("txtUrl_RootBase"), "http://site.test");
  EXPECT_EQ(w->Find<LineListView>("lstUrl_All")->selectionModel()->selectedIndexes().size(), 2);

  w->Click("cmdAllDownload_0");
  ASSERT_TRUE(WaitForRest());
  EXPECT_EQ(w->Cell(0, FileListRow::Mark) + w->Cell(1, FileListRow::Mark), "oo");
  EXPECT_EQ(w->Text("lblStatus"), "処理終了");
  EXPECT_EQ(home.Read("save/a.mp3"), "aaaa");
  EXPECT_EQ(home.Read("save/b.mp3"), "bb");
  EXPECT_EQ(w->messages.Texts(), QStringList());
  w->Click("cmdLog");
  EXPECT_EQ(w->opener.opened.filter("text:log.txt:-- 2024/05/01").size(), 1);
}

TEST_F(WorkTest, ARowThatFailedSaysWhyUnderThePointer) {
  server.Route("/b.mp3", Answer::Status(403));
  StartWithJob();
  w->Click("cmdGo_All_1");
  ASSERT_TRUE(WaitForRest());
  w->Click("cmdAllDownload_0");
  ASSERT_TRUE(WaitForRest());
  auto* list = w->Find<LineListView>("lstUrl_All");
  const auto tipOver = [list](int row) {
    const QPoint point(5, row * list->LineHeight() + 5);
    QHelpEvent help(QEvent::ToolTip, point, list->viewport()->mapToGlobal(point));
    QApplication::sendEvent(list->viewport(), &help);
    return QToolTip::text();
  };
  tipOver(0);
  EXPECT_EQ(list->toolTip(), "2個") << "a row that came leaves the tool tip to the list";
  EXPECT_TRUE(tipOver(1).contains("site.test: HTTP 403")) << tipOver(1).toStdString();
  EXPECT_TRUE(w->Find("lblStatus")->toolTip().contains("（HTTP エラー 1）"));
  server.Route("/sub.html", Answer::Status(500));
  w->workspace.job.Edit(TargetUrlItem::Depth, "2");
  w->Click("cmdGo_All_1");
  ASSERT_TRUE(WaitForRest());
  EXPECT_EQ(w->Text("lblStatus"), "ファイルリストは完全ではありません（HTTP エラー 1）");
  EXPECT_TRUE(w->Find("lblStatus")->toolTip().contains(w->Text("lblStatus")));
}

TEST_F(WorkTest, WorkLocksTheEditingSurfaceAndGivesTheFocusBack) {
  StartWithJob();
  w->Find("txtDescription")->setFocus();
  const QString locked =
      u"cmdOrder_0 cmdOrder_1 lstTargetUrl txtDescription txtUrl_Root cmbUrl_SubPattern cmbDepth "
      "cmbFilePattern Opt_0 Opt_1 ChkSkip ChkOnlyInSite ChkOverWrite ChkTreeFolder txtSavePath "
      "cmdSavePath cmdGo_All_0 cmdGo_All_1 cmdAllDownload_0 cmdAllDownload_1 lblRegHelp"_s;
  {
    const Activity::Scope working(w->workspace.activity, zentorin::Phase::Downloading);
    EXPECT_EQ(w->Seen(locked, "enabled"), QString());
    EXPECT_FALSE(w->Find<QMenu>("mnuFile")->menuAction()->isEnabled());
    EXPECT_FALSE(w->Find<QMenu>("mnuTool")->menuAction()->isEnabled());
    EXPECT_EQ(w->Text("cmdCancel"), u"キャンセル"_s);
    w->workspace.activity.SetCancelling();
    EXPECT_EQ(w->Text("cmdCancel"), u"キャンセル処理中"_s);
  }
  EXPECT_EQ(w->Seen(locked, "enabled"), locked);
  EXPECT_EQ(QApplication::focusWidget(), w->Find("txtDescription"));
  // What a command misses is where the user goes on.
  w->workspace.job.Edit(TargetUrlItem::Root, {});
  w->Click("cmdGo_All_1");
  ASSERT_TRUE(WaitForRest());
  EXPECT_EQ(w->messages.boxes.back().text, "URL が空白です！");
  EXPECT_EQ(QApplication::focusWidget(), w->Find("txtUrl_Root"));
}

TEST_P(WorkTest, CancelKeepsTheProgram) {
  Enter(GetParam());
  EXPECT_TRUE(w->Find("cmdCancel")->isVisible());
  w->Click("cmdCancel");
  ASSERT_TRUE(QTest::qWaitFor([this] { return !w->Find("cmdCancel")->isVisible(); }, 20'000));
  ASSERT_TRUE(WaitForRest());
  EXPECT_TRUE(w->Find("txtUrl_Root")->isEnabled());
  EXPECT_FALSE(w->Find("frProgress_o")->isVisible());
  EXPECT_TRUE(w->window.isVisible());
  ExpectNoTraces();
}

TEST_P(WorkTest, ClosingUnwindsAndEndsTheProgram) {
  Enter(GetParam());
  w->Click("cmdClose");
  ASSERT_TRUE(WaitForExit());
  EXPECT_EQ(w->exitStatus, GetParam().pressed == nullptr ? 130 : 0);
  EXPECT_FALSE(w->window.isVisible());
  EXPECT_FALSE(w->workspace.driver.IsRunning());
  EXPECT_TRUE(home.Read("Conf.txt").contains("form left = 130\r\n"));
  ExpectNoTraces();
}

INSTANTIATE_TEST_SUITE_P(Phases, WorkTest,
                         testing::Values(Phase{"RootPage", "cmdGo_All_1", "/", false},
                                         Phase{"SubPage", "cmdGo_All_1", "/sub.html", false},
                                         Phase{"File", "cmdAllDownload_0", "/a.mp3", true},
                                         Phase{"BatchPage", "cmdAllDownload_1", "/", false},
                                         Phase{"BatchFile", "cmdAllDownload_1", "/a.mp3", false},
                                         Phase{"PageSource", "mnuContext_TargetUrl_OpenSource", "/",
                                               false},
                                         Phase{"Countdown", "cmdAllDownload_1", nullptr, false},
                                         Phase{"StartTime", nullptr, nullptr, false}),
                         [](const auto& phase) { return phase.param.name; });

}  // namespace
}  // namespace zentorin::test
