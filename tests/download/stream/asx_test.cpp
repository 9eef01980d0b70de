// SPDX-License-Identifier: MIT
#include "tests/download/download_fixture.h"

namespace zentorin::test {
namespace {

class AsxTest : public DownloadTest {};

TEST_F(AsxTest, TheFirstStreamOfAFileIsTakenWhateverItsFormAndANoneIsSkipped) {
  struct Case {
    QByteArray asx;
    QByteArray type;
    QString file;  // empty: no stream
  };
  const QByteArray sjisTitle = "<title>\x93\xfa\x96\x7b\x8c\xea</title>";
  const Case cases[] = {
      {"<asx version=\"3.0\"><entry><ref href=\"mms://m.test/1.wmv\"/></entry></asx>",
       "video/x-ms-asf", QStringLiteral("1.wmv")},
      {"<ASX><ENTRY><REF HREF  =  \"MMS://m.test/2.WMV\"/></ENTRY></ASX>", "video/x-ms-asf",
       QStringLiteral("2.WMV")},
      {"<asx>" + sjisTitle +
           "<ref href=\"mms://m.test/\x93\xfa.wmv\"/>\r\n<ref href=\"mms://m.test/x.wmv\"/></asx>",
       "text/html; charset=Shift_JIS", QStringLiteral("日.wmv")},
      {"<asx><ref href=\"http://m.test/h.wmv\"/>\n" + sjisTitle +
           "<ref href=\"mms://m.test/3.wma\"/></asx>",
       "application/octet-stream", QStringLiteral("3.mp3")},
      {"<asx><ref href=\"http://m.test/h.wmv\"/></asx>", "video/x-ms-asf", {}},
      {"", "video/x-ms-asf", {}},
  };
  for (const Case& c : cases) {
    capture.captured.clear();
    server.Route(QStringLiteral("/a.asx"), Answer::Text(c.asx, c.type));
    const QString mark = MarkOf(QStringLiteral("http://s.test/a.asx"));
    if (c.file.isEmpty()) {
      EXPECT_EQ(mark, QStringLiteral("?"));
      EXPECT_EQ(capture.captured, QStringList());
      EXPECT_EQ(board.Status(), QStringLiteral("ＵＲＬ無効"));
      EXPECT_EQ(board.StatusColour(), StatusBoard::kRed);
      EXPECT_TRUE(LogText().contains("? Skip - None")) << LogText().constData();
    } else {
      EXPECT_EQ(capture.captured, QStringList(QStringLiteral("http://s.test/a.asx -> ") +
                                              home.Path(QStringLiteral("save/")) + c.file));
    }
  }
}

}  // namespace
}  // namespace zentorin::test
