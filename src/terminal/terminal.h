// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

namespace zentorin {

// Where an unattended run tells what it does: standard error, a terminal or a pipe. Everything is
// written as UTF-8, control characters from outside are shown escaped, and a reader that has gone
// is no error.
class Terminal {
 public:
  // `descriptor` stays open and the caller's own.
  explicit Terminal(int descriptor);

  // Whether a line can be drawn over.
  bool IsTerminal() const { return isTerminal_; }

  // A line of its own, cut when it would flood the terminal; one that is being refreshed moves down
  // below it.
  void Line(const QString& text);
  // Draws one line over the last one of this kind. A text that is too long for the terminal is cut
  // so that `tail` still stands behind it. Does nothing on a pipe.
  void Refresh(const QString& text, const QString& tail = {});
  // Takes the refreshed line away.
  void EndRefresh();

 private:
  int Columns() const;
  void Write(const QByteArray& bytes) const;

  int descriptor_;
  bool isTerminal_;
  QString refreshed_;
};

}  // namespace zentorin
