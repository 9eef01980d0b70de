// SPDX-License-Identifier: MIT
#include "tests/ui/main_window_test.h"
#include "ui/dialogs/frm_input.h"
#include "ui/dialogs/plain_text_windows.h"
#include "ui/dialogs/text_window.h"

namespace zentorin::test {
namespace {

class DialogsTest : public MainWindowTest {
 protected:
  DialogsTest() { w->Start(); }

  // Double-clicks the pattern box of a new job.
  void OpenInput() {
    TargetUrlItem job;
    job.Set(TargetUrlItem::FilePattern, "(.+?)");
    w->workspace.urlList.InsertBelow(-1, job);
    w->workspace.urlList.Select(0);
    ASSERT_TRUE(QTest::qWaitForWindowActive(&w->window));
    QTest::mouseDClick(w->Find<QComboBox>("cmbFilePattern")->lineEdit(), Qt::LeftButton);
    input = w->Find<frmInput>("frmInput");
    ASSERT_NE(input, nullptr);
    text = input->findChild<QPlainTextEdit*>("txtInput");
  }

  QPointer<frmInput> input;
  QPlainTextEdit* text = nullptr;
};

TEST_F(DialogsTest, InputEditsAPatternBoxUnlessItIsCancelledOrAnotherJobIsLoaded) {
  const auto shown = [this] { return w->Text("cmbFilePattern"); };
  OpenInput();
  EXPECT_EQ(text->toPlainText(), "(.+?)");
  for (const Qt::Key swallowed : {Qt::Key_Return, Qt::Key_Enter}) QTest::keyClick(text, swallowed);
  QTest::keyClicks(text, "x");
  EXPECT_EQ(text->toPlainText(), "(.+?)x");
  w->Click("cmd_0");
  EXPECT_EQ(shown(), "(.+?)x");
  EXPECT_EQ(w->workspace.urlList.Item(0)[TargetUrlItem::FilePattern], "(.+?)x");
  OpenInput();
  QTest::keyClicks(text, "y");
  w->Click("cmd_1");
  EXPECT_EQ(shown(), "(.+?)");
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_TRUE(input.isNull());
  OpenInput();
  QTest::keyClicks(text, "z");
  w->workspace.urlList.Select(2);
  EXPECT_FALSE(input->isVisible());
  EXPECT_EQ(shown(), "(.+?)x") << "the other job's";
}

TEST_F(DialogsTest, InputTakesAnotherFontAndStaysInsideTheScreen) {
  OpenInput();
  const auto points = [this] { return text->font().pointSize(); };
  const int before = points();
  for (const char* arrow : {"UpD_0", "UpD_0", "UpD_1"}) w->Click(arrow);
  EXPECT_EQ(points(), before + 1);
  QTest::mousePress(input, Qt::RightButton, {}, QPoint(2, 2));
  auto* menu = w->Find<QMenu>("mnuEdit");
  EXPECT_TRUE(menu->isVisible());
  menu->actions().constFirst()->trigger();
  menu->close();
  auto* dialog = input->findChild<QFontDialog*>();
  ASSERT_NE(dialog, nullptr);
  dialog->setCurrentFont(QFont(text->font().family(), 14));
  dialog->accept();
  EXPECT_EQ(points(), 14);

  const QRect screen = QApplication::primaryScreen()->availableGeometry();
  frmInput other("x");
  other.PlaceBelow(QRect(screen.left() + 20, 30, 100, 24));
  EXPECT_EQ(other.pos(), QPoint(screen.left() + 20, 54));
  other.PlaceBelow(QRect(screen.right() - 50, 30, 100, 24));
  EXPECT_EQ(other.geometry().right(), screen.right());
}

TEST_F(DialogsTest, AboutNamesTheLibrariesAndOpensToolAndHistory) {
  w->Click("mnuVersion");
  EXPECT_TRUE(w->Text("lblLibraries").contains("libcurl 7."));
  w->Click("cmdSysInfo");
  w->Click("cmdHistory");
  ASSERT_EQ(w->opener.opened.size(), 2);
  EXPECT_EQ(w->opener.opened[0], "with:システム情報:");
  EXPECT_TRUE(w->opener.opened[1].endsWith("/history.html"));
}

TEST_F(DialogsTest, TextWindowFindsCopiesAndSavesItsText) {
  PlainTextWindows windows(w->dialogs, w->messages);
  windows.Show("ab\r\nAB\r\nあ", "http://h/a?b");
  QPointer<TextWindow> window;
  for (QWidget* widget : QApplication::topLevelWidgets()) {
    if (auto* found = qobject_cast<TextWindow*>(widget)) window = found;
  }
  ASSERT_FALSE(window.isNull());
  ASSERT_TRUE(QTest::qWaitForWindowActive(window));
  const auto click = [&](const char* button) {
    QTest::mouseClick(window->findChild<QPushButton*>(QLatin1StringView(button)), Qt::LeftButton);
  };
  auto* view = window->findChild<QPlainTextEdit*>("txtText");
  auto* find = window->findChild<QLineEdit*>("txtFind");
  auto* nothing = window->findChild<QLabel*>("lblFound");
  const auto line = [view] { return view->textCursor().blockNumber(); };
  QTest::keyClicks(find, "ab");
  for (const int expected : {0, 1, 0}) {
    QTest::keyClick(find, Qt::Key_Return);
    EXPECT_EQ(line(), expected);
  }
  click("cmdFindPrevious");
  EXPECT_TRUE(line() == 1 && !nothing->isVisible());
  QTest::keyClicks(find, "z");
  QTest::keyClick(find, Qt::Key_Return);
  EXPECT_TRUE(line() == 1 && nothing->isVisible());

  click("cmdCopy");
  EXPECT_EQ(QApplication::clipboard()->text(), "AB") << "what is selected";
  w->dialogs.answer = home.Path("t.txt");
  QTest::keyClick(window, Qt::Key_S, Qt::ControlModifier);
  EXPECT_EQ(w->dialogs.asked.proposedFile, QDir::homePath() + "/http:__h_a?b.txt");
  EXPECT_EQ(home.Read("t.txt"), QByteArray("ab\r\nAB\r\nあ"));
  w->dialogs.answer = home.Path("none/t.txt");
  click("cmdSaveAs");
  EXPECT_EQ(w->messages.Texts().filter("none/t.txt").size(), 1);
  QTest::keyClick(window, Qt::Key_Escape);
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_TRUE(window.isNull());
}

}  // namespace
}  // namespace zentorin::test
