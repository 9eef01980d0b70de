// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "net/decode_addo.h"
#include "net/modjudg.h"
#include "tests/support/encoded.h"

namespace zentorin {
namespace {

using modJUDG::kCertain;
using test::Encoded;

const QString kLong =
    "<html><head><title>音楽の部屋</title></head><body>こんにちは。このページには、"
    "カタカナと漢字とひらがなの文章があります。</body></html>";

TEST(ModJudg, FindsTheEncodingOfJapaneseText) {
  const QString kana = "こんにちは";
  const QString kanji = "日本語の文";
  const QString halfWidth = "ｶﾀｶﾅ ﾃｷｽﾄ";
  using Sample = std::tuple<QString, const char*, const char*>;  // its encoding, the verdict
  for (const auto& [text, charset, verdict] :
       {Sample(kLong, "CP932", "SJIS"), Sample(kLong, "EUC-JP", "EUC"),
        Sample(kLong, "ISO-2022-JP", "JIS"), Sample(kLong, "UTF-8", "UTF8"),
        Sample(kLong, "UTF-7", "UTF7"), Sample(kLong, "UTF-16LE", "UNICODE"),
        Sample(kLong, "UTF-16BE", "UNICODE"), Sample("<p>日本 </p>", "UTF-16LE", "UNICODE"),
        Sample(kana, "EUC-JP", "EUC"), Sample(kana, "ISO-2022-JP", "JIS"),
        Sample(kana, "UTF-8", "UTF8"), Sample(kana, "UTF-7", "UTF7"),
        Sample(kanji, "EUC-JP", "EUC"), Sample(kanji, "UTF-8", "UTF8"),
        Sample(halfWidth, "UTF-8", "UTF8"), Sample(halfWidth, "EUC-JP", "EUC"),
        Sample("é", "UTF-8", "UTF8")}) {
    EXPECT_EQ(modJUDG::Judge(Encoded(text, charset)), verdict) << text.toStdString() << charset;
  }
  for (const QString& text : {kana, kanji, halfWidth}) {
    EXPECT_TRUE(modJUDG::Judge(Encoded(text, "CP932")).startsWith(u'S')) << text.toStdString();
  }
  // Also when the text is cut within a character, or comes late.
  const QString late = QString(5000, u'x') + kLong;
  using Case = std::tuple<const char*, const char*, const char*>;
  for (const auto& [charset, verdict, lateVerdict] :
       {Case("EUC-JP", "EUC", "EUC"), Case("UTF-8", "UTF8", "UTF8"),
        Case("CP932", "SJIS", "SHIFT_JIS")}) {
    const QByteArray whole = Encoded(kLong, charset);
    const qsizetype body = whole.indexOf("<body>") + 20;
    for (qsizetype cut = 0; cut < 6; ++cut) {
      EXPECT_EQ(modJUDG::Judge(whole.first(body + cut)), verdict) << charset << " " << cut;
    }
    EXPECT_EQ(modJUDG::Judge(Encoded(late, charset)), lateVerdict);
  }
}

TEST(ModJudg, WithoutEvidenceTheAnswerIsShiftJis) {
  for (const char* text : {"", "abc", "<a href=\"x?a+getWidth-1&b=1+1\">", "a+MEI-b"}) {
    EXPECT_EQ(modJUDG::Judge(text), u"SHIFT_JIS") << text;
  }
  EXPECT_EQ(modJUDG::ScoreShiftJis(QByteArray(5000, 'a')), 1000);
  EXPECT_EQ(modJUDG::ScoreShiftJis("\x82\xA0"
                                   "a\xB1\x80\x82 "),
            5);
  EXPECT_EQ(modJUDG::ScoreUnicode("a\xFF\xFE"), kCertain);
  EXPECT_LT(modJUDG::ScoreUnicode(QByteArray(1000, 'a') + "\xFF\xFE"), kCertain);
}

TEST(ModJudg, ReadsTheDeclarationOfAPage) {
  using Page = std::tuple<const char*, const char*, const char*>;
  for (const auto& [page, declared, ofPage] :
       {Page("<meta charset=utf-8>", "utf-8", "UTF-8"),
        Page("<META CHARSET='euc-jp'>", "euc-jp", "EUC-JP"),
        Page("<meta charset=\"utf-8\">", "utf-8", "UTF-8"),
        Page(R"(<meta http-equiv="c" content="text/html; charset=x-sjis">)", "x-sjis", "X-SJIS"),
        Page("<meta charset = utf-8>", "utf-8", "SHIFT_JIS"),
        Page("<meta name=x>\n<meta charset=utf-8>", "utf-8", "UTF-8"),
        Page("<meta charset=utf-8><script charset=euc-jp>", "utf-8", "EUC-JP"),
        Page("<meta name=x><script charset=euc-jp>", "", "EUC-JP"),
        Page("<meta\ncharset=utf-8>", "utf-8", "SHIFT_JIS"),
        Page("<meta charset=>", "", "SHIFT_JIS"), Page("<p>charset=utf-8", "", "SHIFT_JIS")}) {
    EXPECT_EQ(modJUDG::DeclaredCharset(page), declared) << page;
    EXPECT_EQ(modJUDG::CharsetOfPage(page), ofPage) << page;
  }
}

TEST(ModJudg, HostilePagesCostTimeInProportion) {
  for (const char* part : {"<meta charset=", "<meta", "<meta charset=\n", "+AA", "\xE3\x81"}) {
    const QByteArray page = QByteArray(part).repeated(1'000'000);
    modJUDG::DeclaredCharset(page);
    EXPECT_FALSE(modJUDG::CharsetOfPage(page).isEmpty());
  }
}

TEST(DecodeAddo, DecodesByEveryNameThatPagesUse) {
  using Case = std::tuple<const char*, const char*>;
  for (const auto& [charset, name] :
       {Case("CP932", "x-sjis"), Case("CP932", "Windows-31J"), Case("EUC-JP", " X-EUC-JP "),
        Case("ISO-2022-JP", "iso-2022-jp"), Case("UTF-8", "utf8"),
        Case("UTF-7", "unicode-1-1-utf-7"), Case("UTF-16LE", "unicode"),
        Case("UTF-16BE", "utf-16be"), Case("GB18030", "gb2312"), Case("UTF-32LE", "utf-32le")}) {
    EXPECT_EQ(Decode_ADDO::Decode(Encoded(kLong, charset), name), kLong) << name;
  }
  EXPECT_EQ(Decode_ADDO::Decode("\x93\xE9", "ISO-8859-1"), "“é");
  for (const QString& name :
       QStringList{"", "no-such", "utf-8//IGNORE", "../x", QString(41, u'a')}) {
    EXPECT_FALSE(Decode_ADDO::Decode("a", name)) << name.toStdString();
  }
}

TEST(DecodeAddo, ReadsTheRowsThatMakersAddedAndMarksEachUndecodableByte) {
  EXPECT_EQ(Decode_ADDO::DecodeShiftJis("\x87\x40\x81\x60\xFB\xFC\xB1"), "①～髙ｱ");
  EXPECT_EQ(Decode_ADDO::DecodeEucJp("\xAD\xA1\xA1\xC1\x8E\xB1"), "①～ｱ");
  EXPECT_EQ(Decode_ADDO::DecodeIso2022Jp("\x1B$B-!!A\x1B(I1\x1B(Ba\x1B$B$"), "①～ｱa\uFFFD");
  EXPECT_EQ(Decode_ADDO::DecodeEucJp("a\xFF\xA4\xA2\xFF\xA4"), "a\uFFFDあ\uFFFD\uFFFD");
  EXPECT_EQ(Decode_ADDO::DecodeUtf8("a\xFF\xFE"), "a\uFFFD\uFFFD");
  const qsizetype many = 500'000;
  EXPECT_EQ(Decode_ADDO::DecodeEucJp(QByteArray(many, '\xFF')).size(), many);
  EXPECT_EQ(Decode_ADDO::DecodeIso2022Jp(QByteArray(many, '\x1B')).size(), many);
}

TEST(DecodeAddo, TheTableOfPageNamesHasItsGapsAndADocumentTakesItsFirstKnownNameOrTheVerdict) {
  for (const char* name : {"UTF8", "UTF-8", "ISO-8859-1", "UNICODE"}) {
    EXPECT_EQ(Decode_ADDO::DecodeByTable(QString("あ").toUtf8(), name), "あ");
  }
  for (const char* name : {"JIS", "EUC", "X-SJIS", ""}) {
    EXPECT_EQ(Decode_ADDO::DecodeByTable("\xA4\xA2", name), "\u00A4\u00A2");
  }
  EXPECT_EQ(Decode_ADDO::DecodeByTable("\x82\xA0", "SJIS"), "あ");
  using Document = std::tuple<const char*, const char*, QStringList>;
  for (const auto& [mark, charset, names] :
       {Document("", "UTF-8", {"no-such", "", "utf-8", "EUC"}), Document("", "EUC-JP", {"EUC"}),
        Document("", "ISO-2022-JP", {"JIS"}), Document("", "EUC-JP", {"no-such"}),
        Document("\uFEFF", "UTF-16LE", {"UNICODE"}), Document("\uFEFF", "UTF-8", {"utf-8"})}) {
    EXPECT_EQ(Decode_ADDO::DecodeDocument(Encoded(mark + kLong, charset), names), kLong) << charset;
  }
}

}  // namespace
}  // namespace zentorin
