// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringView>
#include <set>

namespace zentorin {

// The texts seen so far, asked whether one of them ends with a given text, letter case ignored. A
// question costs a few comparisons, not a walk over all texts.
class SuffixIndex {
 public:
  void Add(QStringView text);

  // Every text ends with the empty one; before the first Add() nothing does.
  bool AnyEndsWith(QStringView ending) const;

 private:
  std::set<QString> reversed_;  // and case-folded: texts with a common end are neighbours
};

}  // namespace zentorin
