// SPDX-License-Identifier: MIT
#include "app/list_commands.h"

#include "tests/support/workspace_test.h"

namespace zentorin::test {
namespace {

class ListCommandsTest : public WorkspaceTest {
 protected:
  // A list of one edited, unsaved job.
  ListCommandsTest() {
    QCoro::waitFor(commands.New());
    job.Edit(TargetUrlItem::Description, "仕事");
  }

  QString& chosen = fake.dialogs.answer;
  ListCommands commands{workspace, fake.dialogs};
};

TEST_F(ListCommandsTest, ChangesAreThrownAwayOnlyWhenThatIsAgreedToAndNotByAFailedOpen) {
  chosen = home.Path("none.dat");
  QCoro::waitFor(commands.Open());
  EXPECT_EQ(urlList.CurrentListFile(), "");
  QCoro::waitFor(commands.New());
  EXPECT_EQ(urlList.Item(0)[TargetUrlItem::Description], "仕事");
  messages.answers = {MessageBox::Answer::Ok};
  workspace.settings.defaultSavePath = "保存";
  QCoro::waitFor(commands.New());
  EXPECT_EQ(urlList.Item(0).ToLine(), " 1\t\t\t\t\t保存\t\t\t,\t0\t0\t0\t0\t0\t1\t0\t0");
  EXPECT_FALSE(urlList.IsDirty());
  const QString question = "未保存|保存されていません！\r\n破棄して新規に作成しますか？";
  EXPECT_EQ(messages.Texts().mid(1), QStringList({question, question}));
  EXPECT_TRUE(messages.Texts()[0].contains(chosen));
}

TEST_F(ListCommandsTest, ALateAnswerReplacesNoListThatARunWorksOn) {
  const auto run = driver.BatchCommand();
  messages.answers = {MessageBox::Answer::Ok};
  QCoro::waitFor(commands.New());
  chosen = home.Write("other.dat", "");
  QCoro::waitFor(commands.Open());
  EXPECT_EQ(urlList.Item(0)[TargetUrlItem::Description], "仕事");
  driver.CancelCommand();
  QCoro::waitFor(run);
}

TEST_F(ListCommandsTest, TheProgramMayCloseWhenChangesAreSavedOrGivenUp) {
  using Answer = MessageBox::Answer;
  messages.answers = {Answer::Cancel, Answer::No, Answer::Yes, Answer::Yes};
  EXPECT_FALSE(QCoro::waitFor(commands.MayClose()));
  EXPECT_TRUE(QCoro::waitFor(commands.MayClose()));
  EXPECT_FALSE(QCoro::waitFor(commands.MayClose())) << "no file was chosen";
  EXPECT_TRUE(urlList.IsDirty());
  chosen = home.Path("mine.dat");
  EXPECT_TRUE(QCoro::waitFor(commands.MayClose()));
  EXPECT_FALSE(home.Read("mine.dat").isNull());
  EXPECT_TRUE(QCoro::waitFor(commands.MayClose()));
  EXPECT_EQ(messages.boxes.size(), 4U) << "nothing to ask about any more";
}

}  // namespace
}  // namespace zentorin::test
