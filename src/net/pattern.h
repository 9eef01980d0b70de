// SPDX-License-Identifier: MIT
#pragma once

#include <QRegularExpression>
#include <QString>
#include <QStringList>
#include <QStringView>

namespace zentorin {

// Case-insensitive, global, multi-line, compiled once a run. The engine's limit bounds one start
// position, not a search: long texts are searched start by start against a deadline. After
// kMaxRunaways failures nothing matches any more.
class Pattern {
 public:
  static constexpr int kMaxRunaways = 3;
  static constexpr qsizetype kMaxTextLength = 65'536;  // UTF-16 units that Candidates() looks at

  explicit Pattern(const QString& expression);

  const QString& Expression() const { return expression_; }
  bool IsValid() const { return quick_.isValid(); }
  // A sentence in Japanese that names the expression; empty when all is well.
  QString Fault() const;
  bool GaveUp() const { return runaways_ >= kMaxRunaways; }

  // The first captured group of every match, or the whole match when there is no group.
  QStringList Candidates(QStringView text);

  // The first match likewise, "" when nothing matches. An empty expression gives the text.
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
