// SPDX-License-Identifier: MIT
#include "launch/desktop_opener.h"

#include <gtest/gtest.h>

#include "base/activity.h"
#include "base/drives.h"
#include "tests/launch/xdg_tree.h"
#include "tests/support/fakes.h"
#include "tests/support/recording_starter.h"

namespace zentorin::test {
namespace {

class DesktopOpenerTest : public testing::Test {
 protected:
  DesktopOpenerTest() { opener_->TellSuccessTo(activity_); }
  // What was asked of the starter since the last call, without the tree's own path.
  std::string Requests() {
    QStringList requests = std::exchange(starter_.requests, {});
    requests.replaceInStrings(tree_.Path({}) + u'/', QString());
    return requests.join(u' ').toStdString();
  }
  std::string Boxes() {
    QStringList texts;
    for (const MessageBox& box : std::exchange(messages_.boxes, {})) texts.append(box.text);
    return texts.join(u'/').remove(tree_.Path({})).toStdString();
  }
  std::string Play(const char* target) {
    opener_->PlayOrView(target);
    return Requests();
  }
  std::string FaultOf(const char* target) {
    opener_->PlayOrView(target);
    return Boxes();
  }

  XdgTree tree_;
  Drives drives_{tree_.Path("home")};
  RecordingStarter starter_;
  RecordingMessageBoxes messages_;
  RecordingTextWindows windows_;
  Activity activity_;
  std::unique_ptr<DesktopOpener> opener_ =
      std::make_unique<DesktopOpener>(drives_, starter_, messages_, windows_, tree_.Folders());
};

TEST_F(DesktopOpenerTest, TheHandlerGetsAddressesAsTheyAreAndPathsOfThisSystem) {
  using Case = std::pair<QString, const char*>;
  for (const auto& [target, request] :
       {Case("http://a.test/?b c", "open:http://a.test/?b c"),
        Case("mailto:-x@b.test", "open:mailto:-x@b.test"),
        Case("C:\\docs\\a.html", "open:home/drives/c/docs/a.html"),
        Case("file:///usr/a%20b.html", "open:/usr/a b.html"),
        Case("--help=http://a.test/", "open:home/--help=http:/a.test"), Case("", ""),
        Case(QString("/usr/a") + QChar(u'\0') + "b", "")}) {
    opener_->OpenWithDefaultHandler(target);
    EXPECT_EQ(Requests(), request);
  }
}

TEST_F(DesktopOpenerTest, FoldersGoToTheFileManagerElseToTheHandlerElseToARegisteredProgram) {
  tree_.Write("home/drives/d/my files/a", "");
  const QString folder = "D:\\my files\\";
  const std::string path = "home/drives/d/my files";
  opener_->OpenFolder(folder);
  EXPECT_EQ(Requests(), "folder:" + path);
  starter_.hasFileManager = false;
  starter_.hasShellOpener = false;
  tree_.AddProgram("files", "%F", "MimeType=inode/directory;");
  opener_->OpenFolder(folder);
  EXPECT_EQ(Requests(), "folder:" + path + " open:" + path + " start:bin/files|" + path);
}

TEST_F(DesktopOpenerTest, PagesPlayInTheBrowserAndFilesInTheirRegisteredProgram) {
  // Without a registered program a known one may do.
  for (const char* known : {"mpv", "gnumeric"}) tree_.AddCommand(known);
  EXPECT_EQ(Play("/d/a.mp3"), "start:bin/mpv|/d/a.mp3");
  EXPECT_EQ(Play("/d/a.xls"), "start:bin/gnumeric|/d/a.xls");
  tree_.AddProgram("firefox", "%u");
  tree_.AddProgram("local", "%f", "MimeType=audio/mpeg;");
  tree_.AddProgram("player", "%U", "MimeType=audio/mpeg;x-scheme-handler/mms;");
  using Case = std::pair<const char*, const char*>;
  for (const auto& [target, request] :
       {Case("HTTPS://a.test/a.mp3", "start:bin/firefox|HTTPS://a.test/a.mp3"),
        Case("C:\\m\\b c.MP3", "start:bin/local|home/drives/c/m/b c.MP3"),
        Case("ftp://a.test/d/a.mp3?x=1.txt", "start:bin/player|ftp://a.test/d/a.mp3?x=1.txt"),
        Case("mms://a.test/x.js", "start:bin/player|mms://a.test/x.js")}) {
    EXPECT_EQ(Play(target), request);
  }
  EXPECT_EQ(activity_.Now().message.text, "ページが表示されました");
}

TEST_F(DesktopOpenerTest, ScriptsAreShownWithWholeLineEndsAndNeverRun) {
  tree_.AddProgram("runner", "%f",
                   "MimeType=application/javascript;text/javascript;application/x-bat;"
                   "text/vbscript;text/plain;");
  tree_.Write("home/drives/c/a.JS", "alert(1)\nend\r\n");
  tree_.Write("home/drives/c/b.bat", "echo \x93\xfa");
  EXPECT_EQ(Play("C:\\a.JS"), "");
  EXPECT_EQ(Play("C:\\b.bat"), "");
  EXPECT_EQ(windows_.shown, QStringList({"a.JS|alert(1)\r\nend\r\n", "b.bat|echo 日"}));
  EXPECT_EQ(Play("C:\\missing.vbs"), "");
  EXPECT_EQ(Play("ftp://a.test/a.js"), "");
  EXPECT_EQ(windows_.shown.size(), 2);
  const QString boxes = QString::fromStdString(Boxes());
  EXPECT_TRUE(boxes.contains("missing.vbs") && boxes.contains("ftp://a.test/a.js"));
  windows_.result = false;
  opener_->ShowText({}, {});
  EXPECT_EQ(Boxes(), "ウィンドウハンドルの特定に失敗\r\n再度、行って見て下さい。");
}

TEST_F(DesktopOpenerTest, FailuresAreToldWithTheTargetAtFault) {
  const char* page = "http://a.test/";
  EXPECT_EQ(FaultOf("/a.xls"), "EXCELの起動に失敗しました！\r\n/a.xls");
  EXPECT_EQ(FaultOf("/a.no"), "開くことができるプログラムがありません！\r\n/a.no");
  for (const char* known : {"firefox", "mpv", "localc"}) tree_.AddCommand(known);
  using Case = std::tuple<ProgramStart, const char*, const char*>;
  for (const auto& [outcome, target, box] :
       {Case(ProgramStart::TimedOut, page, "タイムアウト- http://a.test/"),
        Case(ProgramStart::EndedWithError, page, "IEFrameの特定失敗！\r\nhttp://a.test/"),
        Case(ProgramStart::NotStarted, "/a.mp3", "プログラムを起動できませんでした！\r\n/a.mp3")}) {
    starter_.outcome = outcome;
    EXPECT_EQ(FaultOf(target), box);
  }
  opener_->OpenWith("電卓", {});
  EXPECT_EQ(Boxes(), "電卓 を起動できませんでした！");
}

TEST_F(DesktopOpenerTest, AnswersAfterTheOpenersEndAreDropped) {
  tree_.AddCommand("firefox");
  starter_.holdAnswers = true;
  starter_.outcome = ProgramStart::NotStarted;
  starter_.hasFileManager = false;
  Play("http://a.test/");
  opener_->OpenFolder(tree_.Path({}));
  Requests();
  opener_.reset();
  for (const auto& answer : starter_.held) answer();
  EXPECT_EQ(Boxes(), "");
  EXPECT_EQ(Requests(), "");
}

}  // namespace
}  // namespace zentorin::test
