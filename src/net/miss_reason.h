// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <array>
#include <optional>

#include "net/http_engine.h"

namespace zentorin {

struct FetchedPage;

// In the order in which they are counted up at the end of a run.
enum class MissKind {
  None,
  Gone,  // its server says that there is nothing: nobody's failure
  HttpStatus,
  NoConnection,
  NoName,
  NoTrust,
  CutOff,
  TimedOut,
  TooLarge,
  BadRedirect,
  Expression,   // not valid, or stopped
  NotSaved,     // by this machine
  NotRecorded,  // a stream
  Other,
};
inline constexpr size_t kMissKinds = static_cast<size_t>(MissKind::Other) + 1;

bool IsFailure(MissKind kind);

// Why a row, a page or a list was not to be had.
struct MissReason {
  // The same reason, told of a part of it.
  MissReason Of(const QString& part) const;

  MissKind kind = MissKind::None;
  QString text;  // "host: why", in Japanese and without a full stop; null with None
};

// How much of an answer came; `announced` is 0 when it named no length.
struct BytesReceived {
  qint64 received = 0;
  qint64 announced = 0;
};

// None for a whole answer of status 200 and for one that the user cancelled. `url` is the one that
// answered, or else the one that was asked.
MissReason MissReasonOf(HttpFailure failure, int httpStatus, const QString& url,
                        std::optional<BytesReceived> bytes = std::nullopt);
MissReason MissReasonOf(const FetchedPage& page, const QString& url);

// How many were missed, by kind.
class MissCounts {
 public:
  void Add(MissKind kind) { ++counts_[static_cast<size_t>(kind)]; }
  void Add(const MissCounts& other);

  bool AnyFailure() const;
  QString Text() const;  // "HTTP エラー 2・接続できない 1"; empty when nothing was missed

 private:
  std::array<qint64, kMissKinds> counts_ = {};
};

}  // namespace zentorin
