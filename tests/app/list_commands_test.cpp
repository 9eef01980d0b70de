// SPDX-License-Identifier: MIT
#include "app/list_commands.h"

#include <gtest/gtest.h>

#include "tests/support/fake_workspace.h"

namespace zentorin::test {
namespace {

class ListCommandsTest : public testing::Test {
 protected:
  // A list of one edited, unsaved job.
  void MakeDirtyList() {
    QCoro::waitFor(commands.New());
    workspace.job.Edit(TargetUrlItem::Description, "仕事");
    ASSERT_TRUE(list.IsDirty());
  }

  TempDir home;
  FakeWorkspace w{home};
  Workspace& workspace = w.workspace;
  UrlList& list = workspace.urlList;
  ListCommands commands{workspace, w.dialogs};
};

TEST_F(ListCommandsTest, AFailedOpenSaysWhyAndChangesNothing) {
  MakeDirtyList();
  w.dialogs.answer = home.Path("none.dat");
  QCoro::waitFor(commands.Open());
  EXPECT_EQ(list.CurrentListFile(), "");
  EXPECT_EQ(list.Count(), 1);
  EXPECT_EQ(w.messages.Texts().filter(w.dialogs.answer).size(), 1);
}

TEST_F(ListCommandsTest, NewAsksBeforeItThrowsChangesAway) {
  MakeDirtyList();
  QCoro::waitFor(commands.New());
  EXPECT_EQ(list.Item(0)[TargetUrlItem::Description], "仕事");
  w.messages.answers = {MessageBox::Answer::Ok};
  workspace.settings.defaultSavePath = "保存";
  QCoro::waitFor(commands.New());
  EXPECT_EQ(list.Line(0), " 1\t\t\t\t\t保存\t\t\t,\t0\t0\t0\t0\t0\t1\t0\t0");
  EXPECT_FALSE(list.IsDirty());
  const QString question = "未保存|保存されていません！\r\n破棄して新規に作成しますか？";
  EXPECT_EQ(w.messages.Texts(), QStringList({question, question}));
}

TEST_F(ListCommandsTest, ALateAnswerReplacesNoListThatARunWorksOn) {
  MakeDirtyList();
  workspace.board.SetStandby({.visible = true, .checked = true, .caption = {}, .toolTip = {}});
  const auto run = workspace.driver.PowerActionCountdown();
  w.messages.answers = {MessageBox::Answer::Ok};
  QCoro::waitFor(commands.New());
  w.dialogs.answer = home.Write("other.dat", "");
  QCoro::waitFor(commands.Open());
  EXPECT_EQ(list.Item(0)[TargetUrlItem::Description], "仕事");
  workspace.driver.CancelCommand();
  QCoro::waitFor(run);
}

TEST_F(ListCommandsTest, TheProgramMayCloseWhenChangesAreSavedOrGivenUp) {
  using Answer = MessageBox::Answer;
  MakeDirtyList();
  w.messages.answers = {Answer::Cancel, Answer::No, Answer::Yes, Answer::Yes};
  EXPECT_FALSE(QCoro::waitFor(commands.MayClose()));
  EXPECT_TRUE(QCoro::waitFor(commands.MayClose()));
  EXPECT_FALSE(QCoro::waitFor(commands.MayClose())) << "no file was chosen";
  EXPECT_TRUE(list.IsDirty());
  w.dialogs.answer = home.Path("mine.dat");
  EXPECT_TRUE(QCoro::waitFor(commands.MayClose()));
  EXPECT_FALSE(home.Read("mine.dat").isNull());
  EXPECT_TRUE(QCoro::waitFor(commands.MayClose()));
  EXPECT_EQ(w.messages.boxes.size(), 4U) << "nothing to ask about any more";
}

}  // namespace
}  // namespace zentorin::test
