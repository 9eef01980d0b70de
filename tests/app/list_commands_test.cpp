// SPDX-License-Identifier: MIT
#include "app/list_commands.h"

#include <gtest/gtest.h>

#include "app/auto_run.h"
#include "app/closing.h"
#include "app/file_dialogs.h"
#include "app/workspace.h"
#include "tests/support/fakes.h"
#include "tests/support/temp_dir.h"

namespace zentorin::test {
namespace {

// Answers every dialog with one path and keeps the last one that was asked.
class FixedFileDialogs : public FileDialogs {
 public:
  QCoro::Task<QString> AskForFileToOpen(FileDialog dialog) override { return Answer(dialog); }
  QCoro::Task<QString> AskForFileToSave(FileDialog dialog) override { return Answer(dialog); }
  QCoro::Task<QString> AskForFolder(FileDialog dialog) override { return Answer(dialog); }

  FileDialog asked;
  QString answer;

 private:
  QCoro::Task<QString> Answer(FileDialog dialog) {
    asked = std::move(dialog);
    // A copy: QCoro moves a returned member away.
    co_return QString(answer);
  }
};

class ListCommandsTest : public testing::Test {
 protected:
  // A list of one edited, unsaved job.
  void MakeDirtyList() {
    QCoro::waitFor(commands.New());
    workspace.job.Edit(TargetUrlItem::Description, QStringLiteral("仕事"));
    ASSERT_TRUE(list.IsDirty());
  }

  TempDir home;
  SettableClock clock;
  RecordingMessageBoxes messages;
  RecordingOpener opener;
  FakeStreamCapture capture;
  RecordingPowerControl power;
  FixedFileDialogs dialogs;
  World world{
      .clock = clock, .messages = messages, .opener = opener, .capture = capture, .power = power};
  Workspace workspace{world, home.Path(), QString()};
  UrlList& list = workspace.urlList;
  ListCommands commands{workspace, dialogs};
};

TEST_F(ListCommandsTest, SavesAnUntitledListUnderTheChosenNameAndOpensItAgain) {
  MakeDirtyList();
  EXPECT_FALSE(QCoro::waitFor(commands.Save())) << "the user gave the dialog up";
  EXPECT_EQ(dialogs.asked.proposedFile, home.Path() + QStringLiteral("/無題.dat"));
  EXPECT_TRUE(list.IsDirty());

  dialogs.answer = home.Path("mine.dat");
  EXPECT_TRUE(QCoro::waitFor(commands.Save()));
  EXPECT_EQ(list.CurrentListFile(), home.Path("mine.dat"));
  EXPECT_FALSE(list.IsDirty());

  workspace.job.Edit(TargetUrlItem::Description, QStringLiteral("変更"));
  QCoro::waitFor(commands.Open());
  EXPECT_EQ(list.Item(0)[TargetUrlItem::Description], QStringLiteral("仕事"));
  EXPECT_EQ(list.SelectedRow(), 0);
  EXPECT_TRUE(list.IsDirty()) << "opening never touches the mark";
  EXPECT_TRUE(messages.boxes.empty()) << "and never asks";
}

TEST_F(ListCommandsTest, AFailedSaveSaysWhyAndLeavesTheListDirty) {
  MakeDirtyList();
  dialogs.answer = home.Path("none/mine.dat");
  EXPECT_FALSE(QCoro::waitFor(commands.SaveAs()));
  EXPECT_TRUE(list.IsDirty());
  EXPECT_EQ(list.CurrentListFile(), QString());
  EXPECT_EQ(messages.Texts().filter(dialogs.answer).size(), 1);
}

TEST_F(ListCommandsTest, AFailedOpenSaysWhyAndChangesNothing) {
  MakeDirtyList();
  dialogs.answer = home.Path("none.dat");
  QCoro::waitFor(commands.Open());
  EXPECT_EQ(list.CurrentListFile(), QString());
  EXPECT_EQ(list.Count(), 1);
  EXPECT_EQ(messages.Texts().filter(dialogs.answer).size(), 1);
}

TEST_F(ListCommandsTest, NewAsksBeforeItThrowsChangesAway) {
  MakeDirtyList();
  QCoro::waitFor(commands.New());
  EXPECT_EQ(list.Item(0)[TargetUrlItem::Description], QStringLiteral("仕事"));
  messages.answers = {MessageBox::Answer::Ok};
  workspace.settings.defaultSavePath = QStringLiteral("保存");
  QCoro::waitFor(commands.New());
  EXPECT_EQ(list.Line(0), QStringLiteral(" 1\t\t\t\t\t保存\t\t\t,\t0\t0\t0\t0\t0\t1\t0\t0"));
  EXPECT_FALSE(list.IsDirty());
  const QString question =
      QStringLiteral("未保存|保存されていません！\r\n破棄して新規に作成しますか？");
  EXPECT_EQ(messages.Texts(), QStringList({question, question}));
}

TEST_F(ListCommandsTest, ClosingAsksForUnsavedChangesAndWritesTheSettings) {
  AutoRun autoRun(workspace);
  MakeDirtyList();
  dialogs.answer = home.Path("mine.dat");
  using Answer = MessageBox::Answer;
  messages.answers = {Answer::Cancel, Answer::No, Answer::Yes};
  EXPECT_FALSE(QCoro::waitFor(AskAndClose(workspace, autoRun, commands)));
  EXPECT_FALSE(workspace.state.CancelRequested());
  EXPECT_TRUE(home.Read("Conf.txt").isNull());
  EXPECT_TRUE(QCoro::waitFor(AskAndClose(workspace, autoRun, commands)));
  EXPECT_TRUE(workspace.state.CancelRequested());
  EXPECT_TRUE(home.Read("Conf.txt").startsWith("form left = 130\r\n"));
  EXPECT_TRUE(home.Read("mine.dat").isNull());
  EXPECT_TRUE(QCoro::waitFor(AskAndClose(workspace, autoRun, commands)));
  EXPECT_FALSE(home.Read("mine.dat").isNull());
}

}  // namespace
}  // namespace zentorin::test
