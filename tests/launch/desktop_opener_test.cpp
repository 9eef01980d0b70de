// SPDX-License-Identifier: MIT
#include "launch/desktop_opener.h"

#include <memory>
#include <tuple>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "base/drives.h"
#include "base/status_board.h"
#include "tests/launch/xdg_tree.h"
#include "tests/support/fakes.h"
#include "tests/support/recording_starter.h"

namespace zentorin::test {

using namespace Qt::Literals::StringLiterals;

namespace {

class DesktopOpenerTest : public testing::Test {
 protected:
  DesktopOpenerTest() { opener_->TellSuccessTo(status_); }
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

  XdgTree tree_;
  Drives drives_{tree_.Path("home")};
  RecordingStarter starter_;
  RecordingMessageBoxes messages_;
  RecordingTextWindows windows_;
  StatusBoard status_;
  std::unique_ptr<DesktopOpener> opener_ =
      std::make_unique<DesktopOpener>(drives_, starter_, messages_, windows_, tree_.Folders());
};

TEST_F(DesktopOpenerTest, TheHandlerGetsAddressesAsTheyAreAndPathsOfThisSystem) {
  using Case = std::pair<QString, const char*>;
  for (const auto& [target, request] :
       {Case("http://a.test/?b c", "open:http://a.test/?b c"),
        Case("mailto:-x@b.test", "open:mailto:-x@b.test"),
        Case("C:\\docs\\a.html", "open:home/drives/c/docs/a.html"),
        Case("file:///usr/a%20b.html", "open:/usr/a b.html"), Case("-x", "open:home/-x"),
        Case("--help=http://a.test/", "open:home/--help=http:/a.test"), Case("", "")}) {
    opener_->OpenWithDefaultHandler(target);
    EXPECT_EQ(Requests(), request);
  }
  opener_->OpenWithDefaultHandler(u"/usr/a"_s + QChar(u'\0') + "b");
  EXPECT_EQ(Requests(), "");
}

TEST_F(DesktopOpenerTest, FoldersGoToTheFileManagerElseToTheHandlerElseToARegisteredProgram) {
  tree_.Write("home/drives/d/my files/a", "");
  const QString folder = "D:\\my files\\";
  opener_->OpenFolder(folder);
  EXPECT_EQ(Requests(), "folder:home/drives/d/my files");
  starter_.hasFileManager = false;
  opener_->OpenFolder(folder);
  EXPECT_EQ(Requests(), "folder:home/drives/d/my files open:home/drives/d/my files");
  starter_.hasShellOpener = false;
  tree_.AddProgram("files", "%F", "MimeType=inode/directory;");
  opener_->OpenFolder(folder);
  EXPECT_EQ(Requests(),
            "folder:home/drives/d/my files open:home/drives/d/my files "
            "start:bin/files|home/drives/d/my files");
  EXPECT_EQ(Boxes(), "");
}

TEST_F(DesktopOpenerTest, TextsAreShownWithWholeLineEnds) {
  opener_->ShowText("a\nb\r\n", "題");
  EXPECT_EQ(windows_.shown, QStringList("題|a\r\nb\r\n"));
  EXPECT_EQ(Boxes(), "");
  windows_.result = false;
  opener_->ShowText({}, {});
  EXPECT_EQ(Boxes(), "ウィンドウハンドルの特定に失敗\r\n再度、行って見て下さい。");
}

TEST_F(DesktopOpenerTest, PagesPlayInTheBrowserAndFilesInTheirRegisteredProgram) {
  tree_.AddProgram("firefox", "%u");
  tree_.AddProgram("local", "%f", "MimeType=audio/mpeg;");
  tree_.AddProgram("player", "%U", "MimeType=audio/mpeg;x-scheme-handler/mms;");
  using Case = std::pair<const char*, const char*>;
  for (const auto& [target, request] :
       {Case("http://a.test/x.js", "start:bin/firefox|http://a.test/x.js"),
        Case("HTTPS://a.test/a.mp3", "start:bin/firefox|HTTPS://a.test/a.mp3"),
        Case("C:\\m\\b c.MP3", "start:bin/local|home/drives/c/m/b c.MP3"),
        Case("-o.mp3", "start:bin/local|home/-o.mp3"),
        Case("ftp://a.test/d/a.mp3?x=1.txt", "start:bin/player|ftp://a.test/d/a.mp3?x=1.txt"),
        Case("mms://a.test/x.js", "start:bin/player|mms://a.test/x.js")})
    EXPECT_EQ(Play(target), request);
  EXPECT_EQ(status_.Status(), "ページが表示されました");
  EXPECT_EQ(Boxes(), "");
}

TEST_F(DesktopOpenerTest, WithoutARegisteredProgramAKnownOneMayDo) {
  tree_.AddCommand("mpv");
  tree_.AddCommand("gnumeric");
  EXPECT_EQ(Play("/d/a.mp3"), "start:bin/mpv|/d/a.mp3");
  EXPECT_EQ(Play("mms://a.test/b"), "start:bin/mpv|mms://a.test/b");
  EXPECT_EQ(Play("/d/a.xls"), "start:bin/gnumeric|/d/a.xls");
}

TEST_F(DesktopOpenerTest, ScriptsAreShownAndNeverRun) {
  tree_.AddProgram("runner", "%f",
                   "MimeType=application/javascript;text/javascript;application/x-bat;"
                   "text/vbscript;text/plain;");
  tree_.Write("home/drives/c/a.JS", "alert(1)\nend");
  tree_.Write("home/drives/c/b.bat", "echo \x93\xfa");
  EXPECT_EQ(Play("C:\\a.JS"), "");
  EXPECT_EQ(Play("C:\\b.bat"), "");
  EXPECT_EQ(windows_.shown, QStringList({"a.JS|alert(1)\r\nend", "b.bat|echo 日"}));
  EXPECT_EQ(Boxes(), "");
  EXPECT_EQ(Play("C:\\missing.vbs"), "");
  EXPECT_NE(Boxes().find("missing.vbs"), std::string::npos);
  EXPECT_EQ(Play("ftp://a.test/a.js"), "");
  EXPECT_EQ(windows_.shown.size(), 2);
  EXPECT_NE(Boxes().find("ftp://a.test/a.js"), std::string::npos);
}

TEST_F(DesktopOpenerTest, FailuresAreToldWithTheTargetAtFault) {
  const char* page = "http://a.test/";
  Play(page);
  EXPECT_EQ(Boxes(), "IEFrameの特定失敗！\r\nhttp://a.test/");
  Play("/d/a.xls");
  EXPECT_EQ(Boxes(), "EXCELの起動に失敗しました！\r\n/d/a.xls");
  Play("/d/a.unknown");
  EXPECT_EQ(Boxes(), "開くことができるプログラムがありません！\r\n/d/a.unknown");

  tree_.AddCommand("firefox");
  tree_.AddCommand("mpv");
  tree_.AddCommand("localc");
  using Case = std::tuple<ProgramStart, const char*, const char*>;
  for (const auto& [outcome, target, box] :
       {Case(ProgramStart::NotStarted, page, "IEFrameの特定失敗！\r\nhttp://a.test/"),
        Case(ProgramStart::EndedWithError, page, "IEFrameの特定失敗！\r\nhttp://a.test/"),
        Case(ProgramStart::TimedOut, page, "タイムアウト- http://a.test/"),
        Case(ProgramStart::EndedWell, page, ""),
        Case(ProgramStart::EndedWithError, "/a.xls",
             "EXCELのオブジェクト取得に失敗しました！\r\n/a.xls"),
        Case(ProgramStart::NotStarted, "/a.mp3", "プログラムを起動できませんでした！\r\n/a.mp3"),
        Case(ProgramStart::EndedWithError, "/a.mp3",
             "プログラムがエラーで終了しました！\r\n/a.mp3")}) {
    starter_.outcome = outcome;
    Play(target);
    EXPECT_EQ(Boxes(), box);
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
