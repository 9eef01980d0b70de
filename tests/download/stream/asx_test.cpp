// SPDX-License-Identifier: MIT
#include "tests/download/download_fixture.h"

namespace zentorin::test {
namespace {

class AsxTest : public DownloadTest {
 protected:
  void Expect(const QByteArray& asx, const QByteArray& type, const QString& file) {
    capture.captured.clear();
    server.Route(QStringLiteral("/a.asx"), Answer::Text(asx, type));
    MarkOf(QStringLiteral("http://s.test/a.asx"));
    EXPECT_EQ(capture.captured, QStringList(QStringLiteral("http://s.test/a.asx -> ") +
                                            home.Path(QStringLiteral("save/")) + file));
  }

  void ExpectNone(const QByteArray& asx) {
    capture.captured.clear();
    server.Route(QStringLiteral("/a.asx"), Answer::Text(asx, kAsx));
    EXPECT_EQ(MarkOf(QStringLiteral("http://s.test/a.asx")), QStringLiteral("?"));
    EXPECT_EQ(capture.captured, QStringList());
    EXPECT_EQ(board.Status(), QStringLiteral("ＵＲＬ無効"));
    EXPECT_EQ(board.StatusColour(), StatusBoard::kRed);
    EXPECT_TRUE(LogText().contains("? Skip - None"));
  }

  static constexpr auto kAsx = "video/x-ms-asf";
};

TEST_F(AsxTest, TheFirstStreamOfAFileIsTakenWhateverItsForm) {
  const QByteArray sjisTitle = "<title>\x93\xfa\x96\x7b\x8c\xea</title>";
  Expect(R"(<asx version="3.0"><entry><ref href="mms://m.test/1.wmv"/></entry></asx>)", kAsx,
         QStringLiteral("1.wmv"));
  Expect(R"(<ASX><ENTRY><REF HREF  =  "MMS://m.test/2.WMV"/></ENTRY></ASX>)", kAsx,
         QStringLiteral("2.WMV"));
  Expect(
      "<asx>" + sjisTitle +
          "<ref href=\"mms://m.test/\x93\xfa.wmv\"/>\r\n<ref href=\"mms://m.test/x.wmv\"/></asx>",
      "text/html; charset=Shift_JIS", QStringLiteral("日.wmv"));
  Expect(R"(<asx><ref href="http://m.test/h.wmv"/>)" + sjisTitle +
             R"(<ref href="mms://m.test/3.wma"/></asx>)",
         "application/octet-stream", QStringLiteral("3.mp3"));
}

TEST_F(AsxTest, AFileThatNamesNoStreamIsSkipped) {
  ExpectNone(R"(<asx><ref href="http://m.test/h.wmv"/></asx>)");
  ExpectNone("");
}

}  // namespace
}  // namespace zentorin::test
