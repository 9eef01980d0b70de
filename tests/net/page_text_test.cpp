// SPDX-License-Identifier: MIT
#include "net/page_text.h"

#include <gtest/gtest.h>

#include "tests/support/encoded.h"

namespace zentorin {
namespace {

using test::Encoded;

const QString kBody = "<p>日本の音楽 \\~ を、聞きましょう　一曲</p>";

HttpHead HeadOf(const QByteArray& type, const QString& address = {}) {
  HttpHead head;
  head.headers = {{.name = "content-type", .value = type}};
  head.finalUrl = address;
  return head;
}

QByteArray Meta(const char* charset) {
  return QByteArray("<meta charset='") + charset + "'>";
}

TEST(PageText, TheFirstOfMarkHeaderAndDeclarationThatTheBytesFitNamesTheCharset) {
  // The header's, the declared one ("" for none) and what the page is written in.
  using Case = std::tuple<const char*, const char*, const char*>;
  for (const auto& [header, declared, real] :
       {Case("Shift_JIS", "utf-8", "CP932"), Case("euc-jp", "utf-8", "EUC-JP"),
        Case("", "EUC", "EUC-JP"), Case("\"gb2312\"", "", "GB18030"),
        Case("utf-32le", "", "UTF-32LE"),
        // A header that lies, with and without a declaration that does not.
        Case("utf-8", "", "CP932"), Case("utf-8", "x-sjis", "CP932"),
        Case("utf-8", "shift_jis", "EUC-JP"), Case("shift_jis", "", "UTF-8"),
        Case("no-such", "euc-jp", "EUC-JP"), Case("utf-16", "", "CP932"),
        // What servers say by default.
        Case("ISO-8859-1", "Shift_JIS", "CP932"), Case("us-ascii", "utf-8", "UTF-8"),
        Case("us-ascii", "", "UTF-8"), Case("iso-8859-1", "", "CP932"),
        // Read byte by byte, so not in UTF-16.
        Case("", "unicode", "UTF-8"), Case("", "UTF-16", "UTF-8"), Case("", "utf-16le", "CP932"),
        Case("", "", "UTF-8"), Case("", "", "CP932"), Case("", "", "ISO-2022-JP")}) {
    const HttpHead head = HeadOf(QByteArray("text/html; Charset=") + header);
    const QByteArray meta = *declared == 0 ? QByteArray() : Meta(declared);
    const QString text = PageText(head, meta + Encoded(kBody, real));
    EXPECT_TRUE(text.endsWith(kBody)) << header << ", " << declared << " for " << real;
  }
  EXPECT_EQ(PageText(HeadOf("text/html; charset=iso-8859-1"), "caf\xE9"), "café");
}

TEST(PageText, AMarkGoesBeforeAllUnlessTheBytesContradictIt) {
  for (const char* real : {"UTF-8", "UTF-16LE", "UTF-16BE"}) {
    const QByteArray body = Encoded("\uFEFF" + kBody, real);
    EXPECT_EQ(PageText(HeadOf("text/html; charset=shift_jis"), body), kBody) << real;
  }
  const QByteArray lie = "\xEF\xBB\xBF" + Encoded(kBody, "CP932");
  EXPECT_EQ(PageText(HeadOf("text/html; charset=shift_jis"), lie), kBody);
  EXPECT_EQ(PageText(HeadOf("text/html"), lie), kBody);
}

TEST(PageText, Utf16WithoutAMarkIsToldByItsZeroBytes) {
  const QString page = "<html><body>" + kBody.repeated(9) + "</body></html>";
  for (const char* real : {"UTF-16LE", "UTF-16BE"}) {
    for (const char* type : {"text/html", "text/html; charset=utf-16",
                             "text/html; charset=shift_jis", "text/html; charset=utf-8"}) {
      EXPECT_EQ(PageText(HeadOf(type), Encoded(page, real)), page) << real << " " << type;
    }
  }
}

TEST(PageText, ALastCharacterThatIsCutOffIsNoFault) {
  for (const char* real : {"UTF-8", "CP932", "EUC-JP", "GB18030", "ISO-2022-JP", "UTF-16LE"}) {
    // Right only by its header: the judge would take the declared one.
    const HttpHead head = HeadOf(QByteArray("text/html; charset=") + real);
    const QByteArray whole = Encoded(kBody + "字", real);
    const qsizetype end = whole.size() - (real == QByteArray("ISO-2022-JP") ? 4 : 1);
    EXPECT_TRUE(PageText(head, whole.first(end)).startsWith(kBody)) << real;
  }
  const HttpHead head = HeadOf("text/html; charset=utf-8");
  const QByteArray page = Meta("iso-8859-2") + Encoded("一", "UTF-8");
  EXPECT_TRUE(PageText(head, page + '\xE4').contains("一"));
  EXPECT_FALSE(PageText(head, page + '\xFF').contains("一")) << "no beginning of a character";
}

TEST(IsNoPage, SoundPicturesFilmsArchivesAndPdfAreTold) {
  for (const char* type : {"audio/mpeg", "Image/PNG; x=y", "video/mp4", "font/woff2",
                           "application/zip", "application/x-7z-compressed", "application/pdf"}) {
    EXPECT_TRUE(IsNoPage(HeadOf(type, "http://h/p.html"))) << type;
  }
  for (const char* type : {"", "text/html", "application/xhtml+xml", "application/octet-stream",
                           "image/svg+xml", "video/x-ms-asx", "pdf", "zip"}) {
    EXPECT_FALSE(IsNoPage(HeadOf(type, "http://h/a.zip"))) << type;
  }
  EXPECT_TRUE(IsNoPage(HeadOf("video/x-ms-asf", "http://h/a.ASF?x")));
  EXPECT_FALSE(IsNoPage(HeadOf("video/x-ms-asf", "http://h/a.asx")));
}

}  // namespace
}  // namespace zentorin
