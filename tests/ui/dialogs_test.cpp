// SPDX-License-Identifier: MIT
#include "tests/ui/main_window_test.h"
#include "ui/dialogs/frm_about.h"
#include "ui/dialogs/frm_input.h"
#include "ui/dialogs/plain_text_windows.h"
#include "ui/dialogs/text_window.h"

namespace zentorin::test {

using namespace Qt::Literals::StringLiterals;

namespace {

class DialogsTest : public MainWindowTest {
 protected:
  DialogsTest() { w->Start(); }

  // Double-clicks a pattern box of a job.
  void OpenOn(const char* box) {
    TargetUrlItem job;
    job.Set(TargetUrlItem::FilePattern, "(.+?)");
    w->workspace.urlList.InsertBelow(-1, job);
    w->workspace.urlList.Select(0);
    ASSERT_TRUE(QTest::qWaitForWindowActive(&w->window));
    QTest::mouseDClick(w->Find<QComboBox>(box)->lineEdit(), Qt::LeftButton);
    input = w->Find<frmInput>("frmInput");
    ASSERT_NE(input, nullptr);
    text = input->findChild<QPlainTextEdit*>("txtInput");
  }
  void Click(const char* button) {
    QTest::mouseClick(input->findChild<QAbstractButton*>(QLatin1StringView(button)),
                      Qt::LeftButton);
  }

  QPointer<frmInput> input;
  QPlainTextEdit* text = nullptr;
};

TEST_F(DialogsTest, InputEditsAPatternBoxAndSwallowsEnter) {
  OpenOn("cmbFilePattern");
  EXPECT_EQ(text->toPlainText(), "(.+?)");
  EXPECT_TRUE(input->windowFlags().testFlag(Qt::WindowStaysOnTopHint));
  EXPECT_FALSE(input->findChild<QLabel*>("lblComSw")->isVisible());
  QTest::keyClick(text, Qt::Key_Return);
  QTest::keyClick(text, Qt::Key_Enter);
  QTest::keyClicks(text, "x");
  EXPECT_EQ(text->toPlainText(), "(.+?)x");
  w->workspace.urlList.SetDirty(false);
  Click("cmd_0");
  EXPECT_EQ(w->Find<QComboBox>("cmbFilePattern")->currentText(), "(.+?)x");
  EXPECT_EQ(w->workspace.urlList.Item(0)[TargetUrlItem::FilePattern], "(.+?)x");
  EXPECT_TRUE(w->workspace.urlList.IsDirty());
}

TEST_F(DialogsTest, InputLeavesTheBoxAloneOnCancelAndWhenAnotherJobIsLoaded) {
  OpenOn("cmbUrl_SubPattern");
  QTest::keyClicks(text, "x");
  Click("cmd_1");
  EXPECT_EQ(w->Find<QComboBox>("cmbUrl_SubPattern")->currentText(), QString());
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_TRUE(input.isNull());
  OpenOn("cmbUrl_SubPattern");
  QTest::keyClicks(text, "x");
  w->workspace.urlList.Select(1);
  EXPECT_FALSE(input->isVisible());
  EXPECT_EQ(w->workspace.job[TargetUrlItem::SubPattern], QString());
}

TEST_F(DialogsTest, InputChangesItsFontWithinNineAndFortyPoints) {
  OpenOn("cmbFilePattern");
  const auto points = [this] { return text->font().pointSize(); };
  for (int i = 0; i < 40; ++i) Click("UpD_0");
  EXPECT_EQ(points(), 40);
  for (int i = 0; i < 40; ++i) Click("UpD_1");
  EXPECT_EQ(points(), 9);
  Click("UpD_0");
  EXPECT_EQ(points(), 10);
  QTest::mousePress(input, Qt::RightButton, {}, QPoint(2, 2));
  auto* menu = input->findChild<QMenu*>("mnuEdit");
  EXPECT_TRUE(menu->isVisible());
  EXPECT_EQ(menu->title(), "編集");
  QAction* font = menu->actions().constFirst();
  EXPECT_EQ(font->text(), "フォント");
  font->trigger();
  menu->close();
  auto* dialog = input->findChild<QFontDialog*>();
  ASSERT_NE(dialog, nullptr);
  QFont chosen = dialog->currentFont();
  chosen.setPointSize(14);
  dialog->setCurrentFont(chosen);
  dialog->accept();
  EXPECT_EQ(points(), 14);
}

TEST_F(DialogsTest, InputStandsBelowItsTargetAndInsideTheScreen) {
  frmInput dialog{"x"};
  const QRect screen = QApplication::primaryScreen()->availableGeometry();
  dialog.PlaceBelow(QRect(screen.left() + 20, 30, 100, 24));
  EXPECT_EQ(dialog.pos(), QPoint(screen.left() + 20, 54));
  dialog.PlaceBelow(QRect(screen.right() - 50, 30, 100, 24));
  EXPECT_EQ(dialog.geometry().right(), screen.right());
  auto* hint = dialog.findChild<QLabel*>("lblComSw");
  dialog.show();
  EXPECT_TRUE(hint->isVisible());
  dialog.SetTag("No_CommandLine");
  EXPECT_FALSE(hint->isVisible());
}

TEST_F(DialogsTest, AboutNamesVersionsAndOpensToolAndHistory) {
  w->Find<QAction>("mnuVersion")->trigger();
  auto* about = w->Find<frmAbout>("frmAbout");
  ASSERT_NE(about, nullptr);
  QString shown;
  for (const QLabel* label : about->findChildren<QLabel*>()) shown += label->text() + u'\n';
  for (const char16_t* expected :
       {u"Zentorin 0.", u"MIT", u"Qt 6.", u"libcurl 7.", u"QCoro 0.",
        u"Ｗｅｂサイトから指定パターンのファイルを検索して一括ダウンロードします。"}) {
    EXPECT_TRUE(shown.contains(QString::fromUtf16(expected))) << shown.toStdString();
  }
  for (const char* button : {"cmdSysInfo", "cmdHistory"}) {
    QTest::mouseClick(about->findChild<QPushButton*>(QLatin1StringView(button)), Qt::LeftButton);
  }
  ASSERT_EQ(w->opener.opened.size(), 2);
  EXPECT_EQ(w->opener.opened[0], "with:システム情報:");
  EXPECT_TRUE(w->opener.opened[1].startsWith("play:/"_L1));
  EXPECT_TRUE(w->opener.opened[1].endsWith("/history.html"_L1));
}

TextWindow* OpenTextWindow() {
  for (QWidget* widget : QApplication::topLevelWidgets()) {
    if (auto* window = qobject_cast<TextWindow*>(widget)) return window;
  }
  return nullptr;
}

TEST_F(DialogsTest, TextWindowFindsOnwardsAndBackwardsAndSaysWhenThereIsNothing) {
  TextWindow window("ab\nAB\nx", "t");
  window.show();
  auto* view = window.findChild<QPlainTextEdit*>("txtText");
  auto* find = window.findChild<QLineEdit*>("txtFind");
  auto* found = window.findChild<QLabel*>("lblFound");
  const auto line = [view] { return view->textCursor().blockNumber(); };
  QTest::keyClicks(find, "ab");
  for (const int expected : {0, 1, 0}) {
    QTest::keyClick(find, Qt::Key_Return);
    EXPECT_EQ(line(), expected);
  }
  QTest::mouseClick(window.findChild<QPushButton*>("cmdFindPrevious"), Qt::LeftButton);
  EXPECT_EQ(line(), 1);
  EXPECT_FALSE(found->isVisible());
  QTest::keyClicks(find, "z");
  QTest::keyClick(find, Qt::Key_Return);
  EXPECT_TRUE(found->isVisible());
  EXPECT_EQ(line(), 1);
  QTest::keyClicks(view, "typed");
  EXPECT_EQ(view->toPlainText(), "ab\nAB\nx");
}

TEST_F(DialogsTest, TextWindowCopiesTheTextAndSavesItOnlyWhenAsked) {
  PlainTextWindows windows(w->dialogs, w->messages);
  const QString page = "あ\r\nb\nc";
  windows.Show(page, "http://h/a?b");
  QPointer<TextWindow> window = OpenTextWindow();
  ASSERT_NE(window, nullptr);
  ASSERT_TRUE(QTest::qWaitForWindowActive(window));
  EXPECT_EQ(window->windowTitle(), "http://h/a?b");
  QTest::mouseClick(window->findChild<QPushButton*>("cmdCopy"), Qt::LeftButton);
  EXPECT_EQ(QApplication::clipboard()->text(), page);

  auto* save = window->findChild<QPushButton*>("cmdSaveAs");
  QTest::mouseClick(save, Qt::LeftButton);
  EXPECT_EQ(w->dialogs.asked.proposedFile, QDir::homePath() + "/http:__h_a?b.txt");
  w->dialogs.answer = home.Path("t.txt");
  QTest::keyClick(window, Qt::Key_S, Qt::ControlModifier);
  EXPECT_EQ(home.Read("t.txt"), QByteArray("あ\r\nb\r\nc"));
  w->dialogs.answer = home.Path("none/t.txt");
  QTest::mouseClick(save, Qt::LeftButton);
  ASSERT_EQ(w->messages.boxes.size(), 1U);
  EXPECT_TRUE(w->messages.boxes.front().text.contains(w->dialogs.answer));

  QTest::keyClick(window, Qt::Key_Escape);
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_TRUE(window.isNull());
}

}  // namespace
}  // namespace zentorin::test
