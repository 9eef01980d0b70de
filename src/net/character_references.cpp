// SPDX-License-Identifier: MIT
#include "net/character_references.h"

#include <QStringView>
#include <algorithm>
#include <array>
#include <utility>

namespace zentorin {

namespace {

// A reference at the beginning of `text`: what it stands for and its length; none when it stays.
struct Reference {
  char32_t character = 0;
  qsizetype length = 0;
};

Reference NumericReference(QStringView text, qsizetype end) {
  constexpr qsizetype kMaxDigits = 10;
  const bool hexadecimal = end > 2 && (text[2] == u'x' || text[2] == u'X');
  const QStringView digits = text.first(end).sliced(hexadecimal ? 3 : 2);
  const bool plain =
      !digits.isEmpty() && digits.size() <= kMaxDigits && std::ranges::all_of(digits, [](QChar c) {
        return c.unicode() < 0x80 && (c.isDigit() || c.isLetter());
      });
  bool isNumber = false;
  const char32_t value = plain ? digits.toUInt(&isNumber, hexadecimal ? 16 : 10) : 0;
  const bool control = value < 0x20 || (value >= 0x7F && value < 0xA0);
  const bool surrogate = value >= 0xD800 && value < 0xE000;
  if (!isNumber || control || surrogate || value > QChar::LastValidCodePoint) return {};
  return {.character = value, .length = end + 1};
}

Reference ReferenceAt(QStringView text) {
  constexpr qsizetype kMaxLength = 16;
  const qsizetype end = text.first(std::min(text.size(), kMaxLength)).indexOf(u';');
  if (end < 2) return {};
  if (text[1] == u'#') return NumericReference(text, end);
  using Named = std::pair<QStringView, char32_t>;
  static constexpr auto kNamed = std::to_array<Named>(
      {{u"&amp", U'&'}, {u"&lt", U'<'}, {u"&gt", U'>'}, {u"&quot", U'"'}, {u"&apos", U'\''}});
  for (const auto& [name, character] : kNamed) {
    if (text.first(end) == name) return {.character = character, .length = end + 1};
  }
  return {};
}

}  // namespace

QString DecodeReferences(const QString& link) {
  QString text;
  qsizetype done = 0;
  for (qsizetype at = link.indexOf(u'&'); at >= 0; at = link.indexOf(u'&', at + 1)) {
    const Reference reference = ReferenceAt(QStringView(link).sliced(at));
    if (reference.length == 0) continue;
    text += QStringView(link).sliced(done, at - done);
    text += QChar::fromUcs4(reference.character);
    done = at + reference.length;
    at = done - 1;
  }
  text += QStringView(link).sliced(done);
  return text;
}

QString WithoutFragment(const QString& link) {
  for (qsizetype at = 0; at < link.size(); ++at) {
    if (link[at] == u'#') return link.left(at);
    if (link[at] != u'&') continue;
    const Reference reference = ReferenceAt(QStringView(link).sliced(at));
    if (reference.character == U'#') return link.left(at);
    if (reference.length > 0) at += reference.length - 1;
  }
  return link;
}

}  // namespace zentorin
