// SPDX-License-Identifier: MIT
#include "tests/ui/main_window_test.h"
#include "ui/dialogs/window_messages.h"
#include "ui/window_place.h"

namespace zentorin::test {
namespace {

using StartAndCloseTest = MainWindowTest;

TEST_F(StartAndCloseTest, ASecondStartOnTheSameListBringsTheFirstWindowForward) {
  StartWithJob();
  w->window.showMinimized();
  {
    RunningWindow second(home, {});
    second.Start({home.Path("../") + home.Path().section(u'/', -1) + "/list.dat"});
    EXPECT_EQ(second.exitStatus, 0);
    EXPECT_FALSE(second.window.isVisible());
  }
  EXPECT_FALSE(w->window.isMinimized());
  EXPECT_TRUE(w->window.isVisible());

  // The claim follows the list that is open, and other lists open as ever.
  w->dialogs.answer = home.Path("copy.dat");
  w->Find<QAction>("mnuSaveAs")->trigger();
  RunningWindow second(home, {});
  second.Start({"-f", "list.dat"});
  EXPECT_EQ(second.exitStatus, -1);
  EXPECT_TRUE(second.window.isVisible());
  RunningWindow third(home, {});
  third.Start({"-f", "copy.dat"});
  EXPECT_EQ(third.exitStatus, 0);
}

TEST_F(StartAndCloseTest, ASocketThatACrashLeftBehindKeepsNobodyOut) {
  StartWithJob();
  const QDir claims(runtime.Path("zentorin"));
  const QStringList sockets = claims.entryList({"*.socket"}, QDir::System);
  ASSERT_EQ(sockets.size(), 1);
  Restart();
  QFile stale(claims.filePath(sockets.first()));
  ASSERT_TRUE(stale.open(QIODevice::WriteOnly));
  stale.close();
  StartWithJob();
  EXPECT_TRUE(w->window.isVisible());
  RunningWindow second(home, {});
  second.Start({"-f", "list.dat"});
  EXPECT_EQ(second.exitStatus, 0);
}

TEST_F(StartAndCloseTest, AFolderThatOthersCanReachIsNotTrusted) {
  const QString folder = runtime.Path("zentorin");
  ASSERT_TRUE(QDir().mkpath(folder));
  ASSERT_TRUE(QFile::setPermissions(folder, QFile::Permissions(0x7777)));
  Restart();
  StartWithJob();
  EXPECT_EQ(QDir(folder).entryList(QDir::System | QDir::Files | QDir::NoDotAndDotDot),
            QStringList());
}

TEST_F(StartAndCloseTest, UnsavedChangesAreAskedAboutBeforeAnythingEnds) {
  StartWithJob();
  w->Type("txtDescription", "x");
  w->messages.answers = {MessageBox::Answer::Cancel};
  w->Click("cmdClose");
  EXPECT_EQ(w->messages.Texts(),
            QStringList{"未保存|ＵＲＬリストが変更されています。\r\n保存しますか？"});
  EXPECT_TRUE(w->window.isVisible());
  EXPECT_FALSE(w->workspace.state.CancelRequested());
  EXPECT_TRUE(w->Find("txtDescription")->isEnabled());

  w->messages.answers = {MessageBox::Answer::Cancel};
  w->program.Stop();
  // Settings that cannot be written hold nothing up, and the stop that came to nothing is
  // forgotten.
  QFile::remove(home.Path("Conf.txt"));
  home.Write("Conf.txt/file", "");
  QString lost;
  QObject::connect(&w->window, &frmMain::SettingsLost, [&lost](const QString& why) { lost = why; });
  w->messages.answers = {MessageBox::Answer::Yes};
  QTest::keyClick(&w->window, Qt::Key_Q, Qt::ControlModifier);
  ASSERT_TRUE(WaitForExit());
  EXPECT_EQ(w->exitStatus, 0);
  EXPECT_TRUE(lost.contains("Conf.txt"));
  EXPECT_TRUE(home.Read("list.dat").contains("1 description = xjob\r\n"));
}

TEST_F(StartAndCloseTest, ASaveThatFailsNamesTheFileAndKeepsTheMark) {
  StartWithJob();
  w->Type("txtDescription", "x");
  w->dialogs.answer = home.Path("none/list.dat");
  w->Find<QAction>("mnuSaveAs")->trigger();
  ASSERT_EQ(w->messages.boxes.size(), 1U);
  EXPECT_TRUE(w->messages.boxes[0].text.contains("none/list.dat"));
  EXPECT_EQ(w->workspace.urlList.Tag(), "Dirty");
  EXPECT_EQ(w->window.windowTitle(), "Zentorin 0.10　-　list.dat");
}

TEST_F(StartAndCloseTest, TheNormalRectangleIsKeptAlsoWhenTheWindowIsMaximised) {
  home.Write("Conf.txt",
             "form left = 40\r\nform top = 50\r\nform right = 740\r\nform bottom = 550\r\n");
  w->Start();
  EXPECT_EQ(w->window.geometry(), QRect(40, 50, 700, 500));
  w->window.showMaximized();
  w->Click("cmdClose");
  ASSERT_TRUE(WaitForExit());
  EXPECT_TRUE(home.Read("Conf.txt")
                  .startsWith("form left = 40\r\nform top = 50\r\nform right = 740\r\n"
                              "form bottom = 550\r\n"));
}

TEST_F(StartAndCloseTest, ARectangleThatNobodyCanGrabIsBroughtBack) {
  const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
  AppSettings settings;
  const auto place = [&settings](int left, int top, int right, int bottom) {
    settings.formLeft = left;
    settings.formTop = top;
    settings.formRight = right;
    settings.formBottom = bottom;
    return PlaceFromSettings(settings, {700, 500});
  };
  EXPECT_EQ(place(10, 10, 310, 210), QRect(10, 10, 300, 200));
  EXPECT_TRUE(screen.contains(place(5000, 5000, 5300, 5200)));
  EXPECT_TRUE(screen.contains(place(10, -150, 310, 50)));
  EXPECT_EQ(place(-99999, -99999, 99999, 99999).size(), screen.size());
  EXPECT_EQ(place(50, 50, 0, 0).size(), QSize(682, 600));
  // Only the first rectangle grows with the font.
  EXPECT_EQ(place(130, 100, 812, 700).size(), QSize(700, 600));
  EXPECT_EQ(place(131, 100, 812, 700), QRect(131, 100, 681, 600));
}

TEST_F(StartAndCloseTest, AnArmedRunCountsDownInTheTitleAndCanBeGivenUp) {
  StartOnList({"-a", "23:45", "-tasktray"});
  // Without a notification area the window waits minimised.
  EXPECT_TRUE(w->window.isMinimized());
  w->autoRun.Tick();
  EXPECT_EQ(w->window.windowTitle(), "14:55 - 開始までの時間");
  w->window.ComeForward();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&w->window));
  QTest::keyClick(&w->window, Qt::Key_Escape);
  EXPECT_TRUE(QTest::qWaitFor([this] { return w->window.windowTitle() == "Zentorin 0.10"; }));
  EXPECT_FALSE(w->Find("cmdCancel")->isVisible());
  // Opened again, the list stands in the title again.
  w->dialogs.answer = home.Path("list.dat");
  w->Find<QAction>("mnuOpen")->trigger();
  EXPECT_EQ(w->window.windowTitle(), "Zentorin 0.10　-　list.dat");
}

TEST_F(StartAndCloseTest, AnArmedRunEndsTheProgramByItsPresetAction) {
  server.Route("/", Answer::Text("<a href=\"a.mp3\">"));
  server.Route("/a.mp3", Answer::Text("aaaa", "audio/mpeg"));
  StartOnList({"-a", "-q"});
  ASSERT_TRUE(WaitForExit());
  EXPECT_EQ(w->exitStatus, 0);
  EXPECT_EQ(home.Read("save/a.mp3"), "aaaa");
  EXPECT_EQ(w->messages.Texts(), QStringList());
}

TEST_F(StartAndCloseTest, AFaultyCommandLineLeavesTheWindowOpen) {
  w->Start({"-f", "none.dat", "-debug"});
  EXPECT_EQ(w->messages.Texts(),
            QStringList{"エラー発生|ＵＲＬリスト読み込みエラー\r\n\r\nnone.dat"});
  EXPECT_TRUE(w->window.isVisible());
  EXPECT_FALSE(w->Find("cmdDebug")->isVisible());
}

TEST_F(StartAndCloseTest, TheSettingsDialogTakesOverWhenItIsClosed) {
  StartWithJob();
  w->Find<QAction>("mnuSetting")->trigger();
  auto* dialog = w->Find<QDialog>("frmSetting");
  ASSERT_TRUE(dialog->isVisible() && dialog->isModal());
  const auto in = [dialog](const char* name) {
    return dialog->findChild<QWidget*>(QLatin1StringView(name));
  };
  EXPECT_EQ(in("OptStreaming_1")->property("text").toString(), "tool 1");
  EXPECT_EQ(in("cmbGmtDiff")->property("currentText").toString(), "  9");
  EXPECT_FALSE(in("frAddDateFormat")->isEnabled());
  QTest::mouseClick(in("chkAddDate"), Qt::LeftButton, {}, {8, 8});
  EXPECT_TRUE(w->workspace.settings.download.addDate);
  in("txtDefaultSavePath")->setProperty("text", "save");
  in("txtAddDateFormat")->setFocus();
  QTest::keyClicks(in("txtAddDateFormat"), "\\x");
  EXPECT_EQ(w->workspace.settings.download.addDateFormat, "yyyymmddhh_x");
  EXPECT_EQ(w->messages.boxes.back().text, "[/:*?\"|<>\\] の各文字は使用不可");
  in("cmbGmtDiff")->setFocus();
  QTest::keyClick(in("cmbGmtDiff"), Qt::Key_Down);
  EXPECT_EQ(in("cmbGmtDiff")->property("currentText").toString(), " 10");
  qobject_cast<QComboBox*>(in("cmbGmtDiff"))->lineEdit()->selectAll();
  QTest::keyClicks(in("cmbGmtDiff"), "-1");
  QTest::mouseClick(in("ChkGMTDate"), Qt::LeftButton, {}, {8, 8});
  QTest::mouseClick(in("OptStreaming_1"), Qt::LeftButton, {}, {8, 8});
  EXPECT_FALSE(w->workspace.settings.clock.useGmt);
  QTest::mouseClick(in("cmdClose"), Qt::LeftButton);
  EXPECT_FALSE(dialog->isVisible());
  EXPECT_EQ(w->workspace.settings.download.streamingTool, 1);
  EXPECT_EQ(w->workspace.settings.defaultSavePath, "save");
  EXPECT_EQ(w->workspace.settings.clock.gmtDiffHours, -1);
  EXPECT_EQ(w->Text("lblTimeLbl") + u' ' + w->Text("lblTime"), "GMT 2024/05/02 00:30:05");
}

TEST_F(StartAndCloseTest, ABoxThatNobodyAnswersInAnArmedRunAnswersItself) {
  StartOnList({"-a", "23:59"});
  WindowMessages boxes(std::chrono::milliseconds(1));
  boxes.Attach(&w->window, &w->autoRun);
  MessageBox question{.title = {},
                      .text = "一行目\r\n二行目",
                      .buttons = MessageBox::Buttons::YesNoCancel,
                      .defaultAnswer = MessageBox::Answer::Yes};
  EXPECT_EQ(QCoro::waitFor(boxes.Ask(question)), MessageBox::Answer::Yes);

  // With nobody away, the button that is pressed is the answer; a box that is closed does nothing.
  w->workspace.driver.CancelCommand();
  EXPECT_TRUE(
      QTest::qWaitFor([this] { return w->autoRun.CurrentPhase() == AutoRun::Phase::Idle; }));
  QTimer::singleShot(50, &w->window, [] {
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    ASSERT_NE(box, nullptr);
    EXPECT_EQ(box->text(), "一行目\n二行目");
    EXPECT_EQ(box->windowTitle(), "Zentorin");
    QTest::mouseClick(box->button(QMessageBox::No), Qt::LeftButton);
  });
  EXPECT_EQ(QCoro::waitFor(boxes.Ask(question)), MessageBox::Answer::No);
  QTimer::singleShot(50, &w->window, [] { QApplication::activeModalWidget()->close(); });
  EXPECT_EQ(QCoro::waitFor(boxes.Ask(question)), MessageBox::Answer::Cancel);
}

}  // namespace
}  // namespace zentorin::test
