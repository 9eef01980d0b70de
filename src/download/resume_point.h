// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

#include "net/http_engine.h"

namespace zentorin {

// How far a body has come, and whether another request may go on from there. What a server says of
// its file must be the same both times: two versions are never spliced.
class ResumePoint {
 public:
  ResumePoint() = default;
  explicit ResumePoint(const HttpHead& whole);  // a whole answer begins

  void Add(qint64 bytes) { written_ += bytes; }
  qint64 Written() const { return written_; }
  qint64 Length() const { return length_; }  // announced for the whole; 0 when it was not
  bool IsWhole() const { return length_ == 0 || written_ == length_; }

  // Asks for the rest where that is possible, for the whole else.
  void AskForRest(HttpRequest& request) const;
  // Whether a partial answer goes on here. It may tell the length that the first one did not.
  bool ContinueBy(const HttpHead& partial);

 private:
  qint64 written_ = 0;
  qint64 length_ = 0;
  QByteArray validator_;  // of the file's version; empty when there is none to go on by
};

}  // namespace zentorin
