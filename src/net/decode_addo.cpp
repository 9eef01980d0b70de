// SPDX-License-Identifier: MIT
#include "net/decode_addo.h"

#include <QStringDecoder>
#include <algorithm>
#include <array>
#include <cerrno>
#include <string_view>
#include <utility>

#include "base/ansi_text.h"
#include "base/iconv_handle.h"
#include "net/modjudg.h"

namespace zentorin::Decode_ADDO {
namespace {

class Converter {
 public:
  explicit Converter(const char* from) : codec_("UTF-16LE", from) {}

  bool IsOpen() const { return codec_.IsOpen(); }

  QString Convert(QByteArrayView bytes) {
    QString text;
    text.reserve(bytes.size());
    char* in = const_cast<char*>(bytes.data());  // iconv reads only, its signature is older
    auto inLeft = static_cast<std::size_t>(bytes.size());
    while (inLeft > 0) {
      const std::size_t before = inLeft;
      const bool failed = Step(&in, &inLeft, text);
      if (!failed || (error_ == E2BIG && inLeft < before)) continue;
      // A byte that is no character, or the beginning of one that the end cuts off.
      cutOff_ = cutOff_ || error_ == EINVAL;
      hasFaults_ = hasFaults_ || !cutOff_;
      text.append(QChar::ReplacementCharacter);
      ++in;
      --inLeft;
    }
    Step(nullptr, nullptr, text);  // some encodings hold a character back until the end
    return text;
  }

  // Of what was converted: bytes that are no character. What the end cuts off is no fault.
  bool HasFaults() const { return hasFaults_; }

 private:
  // True when the converter stopped before the end of its input.
  bool Step(char** in, std::size_t* inLeft, QString& text) {
    char* out = reinterpret_cast<char*>(buffer_.data());
    std::size_t outLeft = sizeof(buffer_);
    const bool failed =
        iconv(codec_.Codec(), in, inLeft, &out, &outLeft) == static_cast<std::size_t>(-1);
    error_ = errno;
    text.append(QStringView(
        buffer_.data(), static_cast<qsizetype>((sizeof(buffer_) - outLeft) / sizeof(char16_t))));
    return failed;
  }

  IconvHandle codec_;
  std::array<char16_t, 4096> buffer_{};
  int error_ = 0;  // why the last step stopped
  bool cutOff_ = false;
  bool hasFaults_ = false;
};

std::optional<QString> DecodeByConverter(QByteArrayView bytes, const char* name) {
  Converter converter(name);
  if (!converter.IsOpen()) return std::nullopt;
  return converter.Convert(bytes);
}

// Byte order by the mark, without one little-endian.
QString DecodeUtf16(QByteArrayView bytes) {
  const bool bigEndian = bytes.startsWith("\xFE\xFF");
  QStringDecoder decoder(bigEndian ? QStringDecoder::Utf16BE : QStringDecoder::Utf16LE);
  return decoder(bytes);
}

QString DecodeUtf16Be(QByteArrayView bytes) {
  QStringDecoder decoder(QStringDecoder::Utf16BE);
  return decoder(bytes);
}

// Rewrites the escape sequences as EUC, so that both encodings have one table of characters, the
// vendors' rows and half-width katakana included. 0xFF, which EUC does not know, stands for a byte
// above ASCII.
QByteArray EucFromIso2022Jp(QByteArrayView bytes) {
  enum class Set { kAscii, kKatakana, kKanji, kSupplement };
  constexpr std::array<std::pair<std::string_view, Set>, 6> kDesignators{
      {{"\x1B(B", Set::kAscii},
       {"\x1B(J", Set::kAscii},
       {"\x1B(I", Set::kKatakana},
       {"\x1B$@", Set::kKanji},
       {"\x1B$B", Set::kKanji},
       {"\x1B$(D", Set::kSupplement}}};
  QByteArray euc;
  euc.reserve(bytes.size());
  Set set = Set::kAscii;
  const auto high = [](char c) { return static_cast<char>(static_cast<quint8>(c) | 0x80U); };
  for (qsizetype i = 0; i < bytes.size(); ++i) {
    const char c = bytes[i];
    const QByteArrayView rest = bytes.sliced(i);
    const auto* designator = std::ranges::find_if(kDesignators, [&](const auto& entry) {
      return c == '\x1B' && rest.startsWith(QByteArrayView(entry.first));
    });
    if (designator != kDesignators.end()) {
      set = designator->second;
      i += static_cast<qsizetype>(designator->first.size()) - 1;
    } else if (const bool ascii = static_cast<quint8>(c) < 0x80;
               ascii && (set == Set::kAscii || c <= ' ' || c == '\x7F')) {
      euc.append(c);
    } else if (ascii && set == Set::kKatakana) {
      euc.append('\x8E').append(high(c));
    } else if (ascii && rest.size() == 1) {
      euc.append(high(c));  // the end cuts the pair off
    } else if (ascii && rest[1] > ' ' && rest[1] != '\x7F') {
      if (set == Set::kSupplement) euc.append('\x8F');
      euc.append(high(c)).append(high(rest[1]));
      ++i;
    } else {
      euc.append('\xFF');  // above ASCII, or half of a pair
    }
  }
  return euc;
}

using Decoder = QString (*)(QByteArrayView);

// Names that decode by a function of this program.
Decoder DecoderOf(std::string_view name) {
  using Entry = std::pair<std::string_view, Decoder>;
  static constexpr auto kEntries = std::to_array<Entry>({
      {"shift_jis", DecodeShiftJis},
      {"shift-jis", DecodeShiftJis},
      {"shiftjis", DecodeShiftJis},
      {"sjis", DecodeShiftJis},
      {"x-sjis", DecodeShiftJis},
      {"windows-31j", DecodeShiftJis},
      {"ms_kanji", DecodeShiftJis},
      {"csshiftjis", DecodeShiftJis},
      {"cp932", DecodeShiftJis},
      {"ms932", DecodeShiftJis},
      {"cswindows31j", DecodeShiftJis},
      {"euc", DecodeEucJp},
      {"euc-jp", DecodeEucJp},
      {"eucjp", DecodeEucJp},
      {"x-euc-jp", DecodeEucJp},
      {"x-euc", DecodeEucJp},
      {"cseucpkdfmtjapanese", DecodeEucJp},
      {"jis", DecodeIso2022Jp},
      {"iso-2022-jp", DecodeIso2022Jp},
      {"csiso2022jp", DecodeIso2022Jp},
      {"iso2022jp", DecodeIso2022Jp},
      {"utf-8", DecodeUtf8},
      {"utf8", DecodeUtf8},
      {"unicode-1-1-utf-8", DecodeUtf8},
      {"x-unicode20utf8", DecodeUtf8},
      {"utf-7", DecodeUtf7},
      {"utf7", DecodeUtf7},
      {"unicode-1-1-utf-7", DecodeUtf7},
      {"utf-16", DecodeUtf16},
      {"utf16", DecodeUtf16},
      {"utf-16le", DecodeUtf16},
      {"unicode", DecodeUtf16},
      {"ucs-2", DecodeUtf16},
      {"iso-10646-ucs-2", DecodeUtf16},
      {"utf-16be", DecodeUtf16Be},
      {"unicodefffe", DecodeUtf16Be},
  });
  const auto* found = std::ranges::find(kEntries, name, &Entry::first);
  return found == kEntries.end() ? nullptr : found->second;
}

// What the converter calls the encoding of such a function.
const char* ConverterNameOf(Decoder decoder) {
  using Entry = std::pair<Decoder, const char*>;
  static constexpr auto kEntries = std::to_array<Entry>({
      {DecodeShiftJis, "CP932"},
      {DecodeEucJp, "EUC-JP-MS"},
      {DecodeIso2022Jp, "EUC-JP-MS"},  // rewritten
      {DecodeUtf8, "UTF-8"},
      {DecodeUtf7, "UTF-7"},
      {DecodeUtf16, "UTF-16LE"},
      {DecodeUtf16Be, "UTF-16BE"},
  });
  return std::ranges::find(kEntries, decoder, &Entry::first)->second;
}

// Names that pages use for something else than, or unknown to, the converter.
const char* ConverterNameOf(std::string_view name) {
  using Entry = std::pair<std::string_view, const char*>;
  static constexpr auto kEntries = std::to_array<Entry>({
      {"iso-8859-1", "CP1252"},    {"iso8859-1", "CP1252"},     {"iso_8859-1", "CP1252"},
      {"latin1", "CP1252"},        {"us-ascii", "CP1252"},      {"ascii", "CP1252"},
      {"iso-8859-9", "CP1254"},    {"iso-8859-11", "CP874"},    {"tis-620", "CP874"},
      {"gb2312", "GB18030"},       {"gbk", "GB18030"},          {"x-gbk", "GB18030"},
      {"gb_2312-80", "GB18030"},   {"ks_c_5601-1987", "CP949"}, {"euc-kr", "CP949"},
      {"korean", "CP949"},         {"windows-949", "CP949"},    {"x-x-big5", "BIG5"},
      {"x-mac-japanese", "CP932"},
  });
  const auto* found = std::ranges::find(kEntries, name, &Entry::first);
  return found == kEntries.end() ? name.data() : found->second;
}

// The name in lower case; empty when it is none that may reach the converter, which takes options
// behind a "/" and gives the empty name and two others meanings of its own.
QByteArray SafeName(const QString& charset) {
  constexpr qsizetype kMaxNameLength = 40;
  QByteArray name = charset.trimmed().toLower().toUtf8();
  const bool safe = std::ranges::all_of(name, [](char c) {
    return (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') ||
           std::string_view("-_:.+").find(c) != std::string_view::npos;
  });
  if (!safe || name.size() > kMaxNameLength || name == "wchar_t" || name == "internal") return {};
  return name;
}

}  // namespace

std::optional<QString> Decode(QByteArrayView bytes, const QString& charset) {
  const QByteArray name = SafeName(charset);
  if (name.isEmpty()) return std::nullopt;
  if (const Decoder decoder = DecoderOf(name.constData())) return decoder(bytes);
  return DecodeByConverter(bytes, ConverterNameOf(name.constData()));
}

std::optional<QString> DecodeFitting(QByteArrayView bytes, const QString& charset) {
  const QByteArray name = SafeName(charset);
  if (name.isEmpty()) return std::nullopt;
  const Decoder decoder = DecoderOf(name.constData());
  const bool ascii = name == "us-ascii" || name == "ascii";
  const char* known = ascii ? "US-ASCII" : ConverterNameOf(name.constData());
  Converter converter(decoder == nullptr ? known : ConverterNameOf(decoder));
  if (!converter.IsOpen()) return std::nullopt;
  const QByteArray euc = decoder == DecodeIso2022Jp ? EucFromIso2022Jp(bytes) : QByteArray();
  QString text = converter.Convert(decoder == DecodeIso2022Jp ? QByteArrayView(euc) : bytes);
  if (converter.HasFaults()) return std::nullopt;
  return text;
}

QString DecodeShiftJis(QByteArrayView bytes) {
  return DecodeAnsi(bytes);
}

QString DecodeIso2022Jp(QByteArrayView bytes) {
  return DecodeEucJp(EucFromIso2022Jp(bytes));
}

// With the rows that makers added, as pages use them.
QString DecodeEucJp(QByteArrayView bytes) {
  return DecodeByConverter(bytes, "EUC-JP-MS").value_or(QString());
}

QString DecodeUtf7(QByteArrayView bytes) {
  return DecodeByConverter(bytes, "UTF-7").value_or(QString());
}

QString DecodeUtf8(QByteArrayView bytes) {
  return QString::fromUtf8(bytes);
}

QString DecodeByTable(QByteArrayView bytes, const QString& upperCaseName) {
  using Entry = std::pair<QStringView, Decoder>;
  static constexpr auto kEntries = std::to_array<Entry>({
      {u"SJIS", DecodeShiftJis},
      {u"SHIFTJIS", DecodeShiftJis},
      {u"SHIFT_JIS", DecodeShiftJis},
      {u"ISO-2022-JP", DecodeIso2022Jp},
      {u"EUCJP", DecodeEucJp},
      {u"EUC-JP", DecodeEucJp},
      {u"UTF7", DecodeUtf7},
      {u"UTF-7", DecodeUtf7},
      {u"UTF8", DecodeUtf8},
      {u"UTF-8", DecodeUtf8},
      {u"ISO-8859-1", DecodeUtf8},
      {u"UNICODE", DecodeUtf8},
  });
  const auto* found = std::ranges::find(kEntries, QStringView(upperCaseName), &Entry::first);
  return found == kEntries.end() ? QString::fromLatin1(bytes) : found->second(bytes);
}

QString DecodeDocument(QByteArrayView bytes, const QStringList& names) {
  std::optional<QString> text;
  for (const QString& name : names) {
    if (!text && !name.isEmpty()) text = Decode(bytes, name);
  }
  if (!text) text = Decode(bytes, modJUDG::Judge(bytes));
  QString page = text.value_or(QString());
  if (page.startsWith(QChar::ByteOrderMark)) page.remove(0, 1);
  return page;
}

}  // namespace zentorin::Decode_ADDO
