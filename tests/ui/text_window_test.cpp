// SPDX-License-Identifier: MIT
#include "ui/text_window.h"

#include <QApplication>
#include <QClipboard>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QtTest>

#include <gtest/gtest.h>

#include "tests/support/fake_workspace.h"
#include "ui/plain_text_windows.h"

namespace zentorin::test {
namespace {

TextWindow* OpenTextWindow() {
  for (QWidget* widget : QApplication::topLevelWidgets()) {
    if (auto* window = qobject_cast<TextWindow*>(widget)) return window;
  }
  return nullptr;
}

TEST(TextWindow, FindsOnwardsAndBackwardsAndSaysWhenThereIsNothing) {
  TextWindow window("ab\nAB\nx", "t");
  window.show();
  auto* text = window.findChild<QPlainTextEdit*>("txtText");
  auto* find = window.findChild<QLineEdit*>("txtFind");
  auto* found = window.findChild<QLabel*>("lblFound");
  const auto line = [text] { return text->textCursor().blockNumber(); };
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
  QTest::keyClicks(text, "typed");
  EXPECT_EQ(text->toPlainText(), "ab\nAB\nx");
}

TEST(PlainTextWindows, CopiesTheTextAndSavesItOnlyWhenAsked) {
  const TempDir folder;
  ChosenPath dialogs;
  RecordingMessageBoxes messages;
  PlainTextWindows windows(dialogs, messages);
  const QString text = "あ\r\nb\nc";
  windows.Show(text, "http://h/a?b");
  QPointer<TextWindow> window = OpenTextWindow();
  ASSERT_NE(window, nullptr);
  ASSERT_TRUE(QTest::qWaitForWindowActive(window));
  EXPECT_EQ(window->windowTitle(), "http://h/a?b");
  QTest::mouseClick(window->findChild<QPushButton*>("cmdCopy"), Qt::LeftButton);
  EXPECT_EQ(QApplication::clipboard()->text(), text);

  auto* save = window->findChild<QPushButton*>("cmdSaveAs");
  QTest::mouseClick(save, Qt::LeftButton);
  EXPECT_EQ(dialogs.asked.proposedFile, QDir::homePath() + "/http:__h_a?b.txt");
  dialogs.answer = folder.Path("t.txt");
  QTest::keyClick(window, Qt::Key_S, Qt::ControlModifier);
  EXPECT_EQ(folder.Read("t.txt"), QByteArray("あ\r\nb\r\nc"));
  dialogs.answer = folder.Path("none/t.txt");
  QTest::mouseClick(save, Qt::LeftButton);
  ASSERT_EQ(messages.boxes.size(), 1U);
  EXPECT_TRUE(messages.boxes.front().text.contains(dialogs.answer));

  QTest::keyClick(window, Qt::Key_Escape);
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_TRUE(window.isNull());
}

}  // namespace
}  // namespace zentorin::test
