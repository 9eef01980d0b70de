// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

namespace zentorin {

// Where an unattended run tells what it does: standard error, a terminal or a pipe. Everything is
// UTF-8, control characters from outside are shown escaped, a reader that has gone is no error.
class Terminal {
 public:
  explicit Terminal(int descriptor);  // which stays open and the caller's own

  bool IsTerminal() const { return isTerminal_; }  // a line can be drawn over

  // A line of its own, cut when it is too long. A refreshed line moves down below it.
  void Line(const QString& text);
  // Draws over the last line of this kind, cut so that `tail` fits in. Does nothing on a pipe.
  void Refresh(const QString& text, const QString& tail = {});
  void EndRefresh();

 private:
  int Columns() const;
  void Write(const QByteArray& bytes) const;

  int descriptor_;
  bool isTerminal_;
  QString refreshed_;
};

}  // namespace zentorin
