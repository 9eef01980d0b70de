// SPDX-License-Identifier: MIT
#pragma once

#include <QRegularExpression>
#include <QString>
#include <QStringList>
#include <QStringView>

namespace zentorin {

// A regular expression of a job, compiled once a run: case-insensitive, global, multi-line.
//
// The engine counts its steps for each start position only, and its compiled form hardly counts at
// all, so its own limit does not bound a search. Here short texts take the quick way; longer ones,
// and those on which the quick way failed, are searched start by start with every step counted
// and against a deadline. A search that meets the limit or the deadline is a runaway: after
// kMaxRunaways of them the pattern gives up and matches nothing more.
class Pattern {
 public:
  static constexpr int kMaxRunaways = 3;
  // Candidates() looks at no more of one text than this, in UTF-16 units.
  static constexpr qsizetype kMaxTextLength = 65'536;

  explicit Pattern(const QString& expression);

  const QString& Expression() const { return expression_; }
  bool IsValid() const { return quick_.isValid(); }
  // A sentence in Japanese that names the expression and what is wrong with it: a fault of its
  // form, or that it ran away. Empty when all is well.
  QString Fault() const;
  bool GaveUp() const { return runaways_ >= kMaxRunaways; }
  bool RanAway() const { return runaways_ > 0; }

  // Every match of the expression in `text`: the first captured group, or the whole match when the
  // expression has no group. An empty list when nothing matches. Meant for the tags of a page.
  QStringList Candidates(QStringView text);

  // The first match likewise, in the whole of `text`; "" when nothing matches. An empty
  // expression gives the text unchanged. Meant for the program's own expressions.
  QString First(const QString& text);

 private:
  bool SearchQuickly(QStringView text, QStringList& found) const;
  bool SearchCarefully(QStringView text, QStringList& found);
  QString Taken(const QRegularExpressionMatch& match) const;

  QString expression_;
  QRegularExpression quick_;
  QRegularExpression careful_;
  int runaways_ = 0;
};

}  // namespace zentorin
