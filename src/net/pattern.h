// SPDX-License-Identifier: MIT
#pragma once

#include <QRegularExpression>
#include <QString>
#include <QStringView>
#include <memory>
#include <optional>

namespace zentorin {

// A regular expression of a job, compiled once a run: case-insensitive, global, multi-line. An
// expression that runs away is stopped at the engine's match limit; after kMaxRunaways such matches
// the pattern gives up and matches nothing more.
class Pattern {
 public:
  static constexpr int kMaxRunaways = 3;

  explicit Pattern(const QString& expression);

  const QString& Expression() const { return expression_; }
  bool IsValid() const;
  // A sentence in Japanese that names the expression and what is wrong with it: a fault of its
  // form, or that it ran away. Empty when all is well.
  QString Fault() const;
  bool GaveUp() const { return runaways_ >= kMaxRunaways; }
  bool RanAway() const { return runaways_ > 0; }

  // Every match of the expression in `text`: the first captured group, or the whole match when the
  // expression has no group. An empty list when nothing matches.
  QStringList Candidates(QStringView text);

  // The first of Candidates(), "" when nothing matches; an empty expression gives the text
  // unchanged.
  QString First(const QString& text);

 private:
  QString expression_;
  QRegularExpression regex_;
  int runaways_ = 0;
};

}  // namespace zentorin
