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

#include "app/file_dialogs.h"
#include "tests/support/fakes.h"
#include "tests/support/temp_dir.h"
#include "ui/plain_text_windows.h"

namespace zentorin::test {
namespace {

// Answers every question with one path.
class OnePath : public FileDialogs {
 public:
  QCoro::Task<QString> AskForFileToOpen(FileDialog) override { co_return QString(path); }
  QCoro::Task<QString> AskForFileToSave(FileDialog dialog) override {
    proposed = dialog.proposedFile;
    co_return QString(path);
  }
  QCoro::Task<QString> AskForFolder(FileDialog) override { co_return QString(path); }

  QString path;
  QString proposed;
};

TextWindow* OpenTextWindow() {
  for (QWidget* widget : QApplication::topLevelWidgets()) {
    if (auto* window = qobject_cast<TextWindow*>(widget)) return window;
  }
  return nullptr;
}

TEST(TextWindow, FindsOnwardsAndBackwardsAndSaysWhenThereIsNothing) {
  TextWindow window(QStringLiteral("ab\nAB\nx"), QStringLiteral("t"));
  window.show();
  auto* text = window.findChild<QPlainTextEdit*>(QStringLiteral("txtText"));
  auto* find = window.findChild<QLineEdit*>(QStringLiteral("txtFind"));
  auto* found = window.findChild<QLabel*>(QStringLiteral("lblFound"));
  const auto line = [text] { return text->textCursor().blockNumber(); };
  QTest::keyClicks(find, QStringLiteral("ab"));
  for (const int expected : {0, 1, 0}) {
    QTest::keyClick(find, Qt::Key_Return);
    EXPECT_EQ(line(), expected);
  }
  QTest::mouseClick(window.findChild<QPushButton*>(QStringLiteral("cmdFindPrevious")),
                    Qt::LeftButton);
  EXPECT_EQ(line(), 1);
  EXPECT_FALSE(found->isVisible());
  QTest::keyClicks(find, QStringLiteral("z"));
  QTest::keyClick(find, Qt::Key_Return);
  EXPECT_TRUE(found->isVisible());
  EXPECT_EQ(line(), 1);
  QTest::keyClicks(text, QStringLiteral("typed"));
  EXPECT_EQ(text->toPlainText(), QStringLiteral("ab\nAB\nx"));
}

TEST(PlainTextWindows, CopiesTheTextAndSavesItOnlyWhenAsked) {
  const TempDir folder;
  OnePath dialogs;
  RecordingMessageBoxes messages;
  PlainTextWindows windows(dialogs, messages);
  const QString text = QStringLiteral("あ\r\nb\nc");
  windows.Show(text, QStringLiteral("http://h/a?b"));
  QPointer<TextWindow> window = OpenTextWindow();
  ASSERT_NE(window, nullptr);
  ASSERT_TRUE(QTest::qWaitForWindowActive(window));
  EXPECT_EQ(window->windowTitle(), QStringLiteral("http://h/a?b"));
  QTest::mouseClick(window->findChild<QPushButton*>(QStringLiteral("cmdCopy")), Qt::LeftButton);
  EXPECT_EQ(QApplication::clipboard()->text(), text);

  auto* save = window->findChild<QPushButton*>(QStringLiteral("cmdSaveAs"));
  QTest::mouseClick(save, Qt::LeftButton);
  EXPECT_EQ(dialogs.proposed, QDir::homePath() + QStringLiteral("/http:__h_a?b.txt"));
  dialogs.path = folder.Path(QStringLiteral("t.txt"));
  QTest::keyClick(window, Qt::Key_S, Qt::ControlModifier);
  EXPECT_EQ(folder.Read(QStringLiteral("t.txt")), QByteArray("あ\r\nb\r\nc"));
  dialogs.path = folder.Path(QStringLiteral("none/t.txt"));
  QTest::mouseClick(save, Qt::LeftButton);
  ASSERT_EQ(messages.boxes.size(), 1U);
  EXPECT_TRUE(messages.boxes.front().text.contains(dialogs.path));

  QTest::keyClick(window, Qt::Key_Escape);
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_TRUE(window.isNull());
}

}  // namespace
}  // namespace zentorin::test
