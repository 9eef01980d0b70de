// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

namespace zentorin {

// What VLC logs of the sources that it opens, before it opens each of them. A server may lead it
// on, by a redirect or by an answer that lists addresses: also to files, cameras, sound inputs and
// the screen of this machine, which no option of VLC 3 forbids.
class VlcLog {
 public:
  void Take(const QByteArray& bytes);  // pieces of any size

  // The first source that is no stream elsewhere, or the format that would open some unseen, fit
  // to be shown; empty when there was none.
  const QString& Refused() const { return refused_; }
  bool HasTold() const { return hasTold_; }  // of any source at all

 private:
  void TakeLine(const QByteArray& line);
  void TakeSource(const QByteArray& scheme, const QByteArray& source);
  void Refuse(const QString& what);

  QByteArray buffer_;
  QString refused_;
  bool hasTold_ = false;
};

}  // namespace zentorin
