// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringView>
#include <set>

namespace zentorin {

// The texts seen so far, asked whether one of them ends with a given text, letter case ignored.
// They are kept reversed and case-folded in order, so that texts with a common end are neighbours:
// a question costs a few comparisons, not a walk over all texts. Case is folded character by
// character, which keeps lengths.
class SuffixIndex {
 public:
  void Add(QStringView text);

  // Every text ends with the empty one; before the first Add() nothing does.
  bool AnyEndsWith(QStringView ending) const;

  void Clear() { reversed_.clear(); }

 private:
  std::set<QString> reversed_;
};

}  // namespace zentorin
