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
    second.Start({"list.dat"});
    EXPECT_EQ(second.exitStatus, 0);
    EXPECT_FALSE(second.window.isVisible());
  }
  EXPECT_FALSE(w->window.isMinimized());
  EXPECT_TRUE(w->window.isVisible());

  // The claim follows the list that is open, and other lists open as ever.
  w->dialogs.answer = home.Path("copy.dat");
  w->Click("mnuSaveAs");
  for (const auto& [list, status] : {std::pair("list.dat", -1), std::pair("copy.dat", 0)}) {
    RunningWindow other(home, {});
    other.Start({"-f", list});
    EXPECT_EQ(other.exitStatus, status) << list;
  }
}

TEST_F(StartAndCloseTest, UnsavedChangesAreAskedAboutBeforeAnythingEnds) {
  StartWithJob();
  w->Type("txtDescription", "x");
  // A save that fails names the file and keeps the mark.
  w->dialogs.answer = home.Path("none/list.dat");
  w->Click("mnuSaveAs");
  EXPECT_EQ(w->messages.Texts().filter("none/list.dat").size(), 1);
  EXPECT_EQ(w->window.windowTitle(), "Zentorin 0.10　-　list.dat");
  w->messages.answers = {MessageBox::Answer::Cancel};
  w->Click("cmdClose");
  EXPECT_EQ(w->messages.Texts().last(),
            "未保存|ＵＲＬリストが変更されています。\r\n保存しますか？");
  EXPECT_TRUE(w->window.isVisible());
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
  // Only the first rectangle grows with the font.
  EXPECT_EQ(place(130, 100, 812, 700).size(), QSize(700, 600));
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
}

TEST_F(StartAndCloseTest, TheSettingsDialogTakesOverWhenItIsClosed) {
  StartWithJob();
  w->Click("mnuSetting");
  auto* dialog = w->Find<QDialog>("frmSetting");
  ASSERT_TRUE(dialog->isVisible() && dialog->isModal());
  EXPECT_EQ(w->Text("OptStreaming_1"), "GetASFStream (/bin/get)");
  EXPECT_FALSE(w->Find("frAddDateFormat")->isEnabled());
  w->Click("chkAddDate");
  w->Find("txtDefaultSavePath")->setProperty("text", "save");
  w->Find("txtAddDateFormat")->setFocus();
  QTest::keyClicks(w->Find("txtAddDateFormat"), "\\x");
  EXPECT_EQ(w->workspace.settings.download.addDateFormat, "yyyymmddhh_x");
  EXPECT_EQ(w->messages.boxes.back().text, "[/:*?\"|<>\\] の各文字は使用不可");
  auto* hours = w->Find<QComboBox>("cmbGmtDiff");
  hours->setFocus();
  hours->lineEdit()->selectAll();
  QTest::keyClicks(hours, "-1");
  w->Click("ChkGMTDate");
  w->Click("OptStreaming_1");
  EXPECT_FALSE(w->workspace.settings.clock.useGmt);
  QTest::mouseClick(dialog->findChild<QWidget*>("cmdClose"), Qt::LeftButton);
  EXPECT_FALSE(dialog->isVisible());
  const AppSettings& settings = w->workspace.settings;
  EXPECT_TRUE(settings.download.addDate && settings.clock.useGmt);
  EXPECT_EQ(settings.download.streamingTool, 1);
  EXPECT_EQ(settings.defaultSavePath, "save");
  EXPECT_EQ(settings.clock.gmtDiffHours, -1);
  EXPECT_EQ(w->Text("lblTimeLbl") + u' ' + w->Text("lblTime"), "GMT 2024/05/02 00:30:05");
}

TEST_F(StartAndCloseTest, TheSettingsDialogKeepsTheChoicesThatWereChangedInIt) {
  home.Write("choices.ini", "[fetch]\ntries=3\n");
  StartOnList({"-speed", "100", "-connections", "2"});
  w->Click("mnuSetting");
  EXPECT_EQ(w->Text("spnTopSpeed"), "100 KB/秒");
  auto* connections = w->Find<QSpinBox>("spnConnections");
  ASSERT_TRUE(QTest::qWaitForWindowActive(w->Find("frmSetting")));
  QTest::keyClick(w->Find("frmSetting"), Qt::Key_N, Qt::AltModifier);
  EXPECT_EQ(QApplication::focusWidget(), connections);
  QTest::keyClicks(connections, "4");
  w->Click("chkServerDate");
  QTest::keyClick(w->Find("frmSetting"), Qt::Key_X, Qt::AltModifier);
  const auto* decode = w->Find<QCheckBox>("chkDecodeNames");
  EXPECT_TRUE(QTest::qWaitFor([decode] { return decode->isChecked(); }));
  EXPECT_EQ(w->workspace.choices.connectionsPerHost, 2) << "until it is closed";
  QTest::mouseClick(w->Find("frmSetting")->findChild<QWidget*>("cmdClose"), Qt::LeftButton);
  const FetchChoices& choices = w->workspace.choices;
  EXPECT_EQ(choices.connectionsPerHost, 4);
  EXPECT_EQ(choices.tries, 3);
  EXPECT_EQ(choices.topSpeed, 100);
  EXPECT_TRUE(choices.keepServerDate && choices.decodeNames && !choices.proxyForFiles);
  w->Click("cmdClose");
  ASSERT_TRUE(WaitForExit());
  Restart();
  w->Start();
  w->Click("mnuSetting");
  EXPECT_EQ(w->Text("spnTopSpeed"), "制限なし") << "of that run only";
  EXPECT_EQ(w->Text("spnConnections") + w->Text("spnTries"), "43 回");
  EXPECT_EQ(w->Seen("chkServerDate chkDecodeNames chkProxyForFiles", "checked"),
            "chkServerDate chkDecodeNames");
}

TEST_F(StartAndCloseTest, ABoxThatNobodyAnswersInAnArmedRunAnswersItself) {
  StartOnList({"-a", "23:59"});
  WindowMessages boxes(std::chrono::milliseconds(1));
  boxes.Attach(&w->window, &w->autoRun);
  MessageBox question{.title = {},
                      .text = "?",
                      .buttons = MessageBox::Buttons::YesNoCancel,
                      .defaultAnswer = MessageBox::Answer::Yes};
  EXPECT_EQ(QCoro::waitFor(boxes.Ask(question)), MessageBox::Answer::Yes);

  // With nobody away, the button that is pressed is the answer; a box that is closed does nothing.
  w->autoRun.GiveUp();
  QTimer::singleShot(50, &w->window, [] {
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    ASSERT_NE(box, nullptr);
    QTest::mouseClick(box->button(QMessageBox::No), Qt::LeftButton);
  });
  EXPECT_EQ(QCoro::waitFor(boxes.Ask(question)), MessageBox::Answer::No);
  QTimer::singleShot(50, &w->window, [] { QApplication::activeModalWidget()->close(); });
  EXPECT_EQ(QCoro::waitFor(boxes.Ask(question)), MessageBox::Answer::Cancel);
}

}  // namespace
}  // namespace zentorin::test
