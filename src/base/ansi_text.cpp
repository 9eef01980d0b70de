// SPDX-License-Identifier: MIT
#include "base/ansi_text.h"

#include <array>
#include <cstddef>
#include <vector>

#include "base/iconv_handle.h"
#include "base/utf16.h"

namespace zentorin {
namespace {

constexpr quint16 kUnknown = 0xFFFF;  // no character of the code page has this value
constexpr int kFirstLead = 0x81;
constexpr int kLastLead = 0xFC;
constexpr int kFirstTrail = 0x40;
constexpr int kLastTrail = 0xFC;

// Converts one character; answers how many bytes came out, 0 when it is not exactly one.
std::size_t ConvertOne(const IconvHandle& converter, std::array<char, 2> in, std::size_t inSize,
                       std::array<char, 2>& out) {
  char* from = in.data();
  char* to = out.data();
  std::size_t outLeft = out.size();
  iconv(converter.Codec(), nullptr, nullptr, nullptr, nullptr);
  const std::size_t result = iconv(converter.Codec(), &from, &inSize, &to, &outLeft);
  return result == 0 && inSize == 0 ? out.size() - outLeft : 0;
}

// The code page as two tables, asked of the C library once. Its code is the byte, or lead byte and
// trail byte as one number. Every character of this code page is a single UTF-16 unit.
class CodePage {
 public:
  CodePage() {
    const IconvHandle decoder("UTF-16LE", "CP932");
    const IconvHandle encoder("CP932", "UTF-16LE");
    for (int ascii = 0; ascii < 0x80; ++ascii) decode_[ascii] = static_cast<quint16>(ascii);
    if (decoder.IsOpen() && encoder.IsOpen()) {
      for (int byte = 0x80; byte <= 0xFF; ++byte) AskDecoder(decoder, byte);
      for (int lead = kFirstLead; lead <= kLastLead; ++lead) {
        for (int trail = kFirstTrail; trail <= kLastTrail; ++trail) {
          AskDecoder(decoder, lead << 8 | trail);
        }
      }
    }
    for (int ascii = 0; ascii < 0x80; ++ascii) encode_[ascii] = static_cast<quint16>(ascii);
    for (int code = 0x80; code <= 0xFFFF; ++code) {
      if (decode_[code] != kUnknown) AskEncoder(encoder, decode_[code]);
    }
  }

  quint16 Decode(int code) const { return decode_[code]; }
  quint16 Encode(char16_t unit) const { return encode_[unit]; }

 private:
  void AskDecoder(const IconvHandle& decoder, int code) {
    const std::array<char, 2> pair{static_cast<char>(code >> 8), static_cast<char>(code)};
    const std::array<char, 2> single{static_cast<char>(code), 0};
    std::array<char, 2> out{};
    const bool isPair = code > 0xFF;
    if (ConvertOne(decoder, isPair ? pair : single, isPair ? 2 : 1, out) != 2) return;
    decode_[code] =
        static_cast<quint16>(static_cast<quint8>(out[1]) << 8 | static_cast<quint8>(out[0]));
  }

  // Several codes stand for one character: the C library says which one is written. What it would
  // write for merely similar characters is never taken over, the code must decode to `unit`.
  void AskEncoder(const IconvHandle& encoder, quint16 unit) {
    if (encode_[unit] != kUnknown) return;
    std::array<char, 2> out{};
    const std::size_t size =
        ConvertOne(encoder, {static_cast<char>(unit & 0xFF), static_cast<char>(unit >> 8)}, 2, out);
    if (size == 0) return;
    const int first = static_cast<quint8>(out[0]);
    const int code = size == 1 ? first : first << 8 | static_cast<quint8>(out[1]);
    if (decode_[code] == unit) encode_[unit] = static_cast<quint16>(code);
  }

  std::vector<quint16> decode_ = std::vector<quint16>(0x10000, kUnknown);
  std::vector<quint16> encode_ = std::vector<quint16>(0x10000, kUnknown);
};

const CodePage& Page() {
  static const CodePage page;
  return page;
}

}  // namespace

QString DecodeAnsi(QByteArrayView bytes) {
  const CodePage& page = Page();
  QString text(bytes.size(), Qt::Uninitialized);
  QChar* out = text.data();
  for (qsizetype at = 0; at < bytes.size(); ++at) {
    const int first = static_cast<quint8>(bytes[at]);
    quint16 unit = page.Decode(first);
    if (unit == kUnknown && first >= kFirstLead && at + 1 < bytes.size()) {
      unit = page.Decode(first << 8 | static_cast<quint8>(bytes[at + 1]));
      if (unit != kUnknown) ++at;
    }
    *out++ = unit == kUnknown ? QChar(QChar::ReplacementCharacter) : QChar(unit);
  }
  text.truncate(out - text.constData());
  return text;
}

AnsiBytes EncodeAnsi(QStringView text) {
  const CodePage& page = Page();
  QByteArray bytes(2 * text.size(), Qt::Uninitialized);
  char* out = bytes.data();
  for (qsizetype at = 0; at < text.size(); ++at) {
    const quint16 code = page.Encode(text[at].unicode());
    if (code == kUnknown) {
      const QString character = text.sliced(at, UnitsAt(text, at)).toString();
      return {.bytes = {}, .fault = UnencodableCharacter{.position = at, .character = character}};
    }
    if (code > 0xFF) *out++ = static_cast<char>(code >> 8);
    *out++ = static_cast<char>(code);
  }
  bytes.truncate(out - bytes.constData());
  return {.bytes = bytes, .fault = std::nullopt};
}

QStringList SplitLines(const QString& text) {
  QStringList lines;
  for (qsizetype begin = 0; begin < text.size();) {
    const qsizetype found = text.indexOf(u'\n', begin);
    const qsizetype end = found < 0 ? text.size() : found;
    const bool crLf = found > begin && text[found - 1] == u'\r';
    lines.append(text.sliced(begin, end - begin - (crLf ? 1 : 0)));
    begin = end + 1;
  }
  return lines;
}

bool AnsiCodecAvailable() {
  return Page().Decode(0x8160) == 0xFF5E && Page().Decode(0x8740) == 0x2460;
}

}  // namespace zentorin
