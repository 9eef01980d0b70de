// SPDX-License-Identifier: MIT
#include "crawl/suffix_index.h"

#include <algorithm>
#include <ranges>

namespace zentorin {
namespace {

// Case is folded character by character, which keeps lengths.
QString ReversedFolded(QStringView text) {
  QString reversed(text.size(), Qt::Uninitialized);
  std::ranges::transform(std::views::reverse(text), reversed.begin(),
                         [](QChar c) { return c.toCaseFolded(); });
  return reversed;
}

bool AnyBeginsWith(const std::set<QString>& texts, const QString& beginning) {
  const auto found = texts.lower_bound(beginning);
  return found != texts.end() && found->startsWith(beginning);
}

}  // namespace

void SuffixIndex::Add(QStringView text) {
  QString reversed = ReversedFolded(text);
  // A text that another one ends with can answer nothing new.
  if (!AnyBeginsWith(reversed_, reversed)) reversed_.insert(std::move(reversed));
}

bool SuffixIndex::AnyEndsWith(QStringView ending) const {
  return AnyBeginsWith(reversed_, ReversedFolded(ending));
}

}  // namespace zentorin
