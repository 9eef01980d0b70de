// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>
#include <array>
#include <chrono>
#include <optional>

#include "base/change_throttle.h"

namespace zentorin {

// Where several things go on, the last one of these counts.
enum class Phase {
  Resting,
  Armed,         // an unattended run waits for its start time
  FetchingPage,  // one page, to be shown as text
  Downloading,   // the rows of the file list; also a batch between its jobs
  Listing,       // a crawl
  Recording,     // a stream
  CountingDown,  // to the power action
};

// `Note` says where the work stands, `Good` and `Fault` how it ended.
enum class Tone { Note, Good, Fault };

struct Message {
  QString text;
  Tone tone = Tone::Note;
  bool operator==(const Message&) const = default;
};

// `number` of `count`, from 1 on; a count of 0 for none.
struct Place {
  int number = 0;
  int count = 0;
  bool operator==(const Place&) const = default;
};

// What is to happen after a batch: the one part that the user writes, while the batch runs.
struct AfterBatch {
  bool offered = false;
  bool chosen = false;
  QString action;  // "スタンバイ" …
  bool operator==(const AfterBatch&) const = default;
};

struct ActivityState {
  bool Works() const { return phase > Phase::FetchingPage && phase < Phase::CountingDown; }

  Phase phase = Phase::Resting;
  bool batch = false;
  bool cancelling = false;  // the user wants the command in hand to stop
  Place job;
  Place row;
  int found = 0;                   // rows that the crawl in hand has added
  double share = 0;                // done of the rows of a run, or of the root page's tags: 0 to 1
  QString address;                 // in hand; after a crawl the last one of it
  qint64 bytes = 0;                // of the file in hand, on disk
  qint64 length = 0;               // announced for it; 0 when unknown
  std::optional<double> recorded;  // share of the stream in hand, once its length is known
  qint64 runBytes = 0;             // of the files that the run has completed
  std::chrono::milliseconds left{0};  // of the countdown to the power action
  Message message;
  QString waiting;  // what the work in hand waits for, empty when it does not
  int said = 0;     // changes of the message so far: tells one said anew from one that stands
  AfterBatch afterBatch;
};

// Work writes it and never reads it back. Now() is always the newest.
class Activity : public QObject {
  Q_OBJECT

 public:
  // The program is in a phase as long as one of these stands for it.
  class Scope {
   public:
    Scope(Activity& activity, Phase phase);
    Scope(const Scope&) = delete;
    Scope& operator=(const Scope&) = delete;
    ~Scope();

   private:
    Activity& activity_;
    Phase phase_;
  };

  explicit Activity(QObject* parent = nullptr);

  const ActivityState& Now() const { return state_; }

  void SetBatch(bool batch);
  void SetCancelling();  // until the command in hand ends
  void SetJob(Place job);
  void SetRow(Place row);
  void SetFound(int rows);
  void SetShare(double share);
  void SetAddress(const QString& address);
  void SetBytes(qint64 bytes, qint64 length = 0);
  void SetRecorded(std::optional<double> share);
  void SetRunBytes(qint64 bytes);
  void SetTimeLeft(std::chrono::milliseconds left);
  void SetWaiting(const QString& text);
  void Say(const QString& text, Tone tone = Tone::Note);
  void SetAfterBatch(const AfterBatch& afterBatch);

 Q_SIGNALS:
  // At most ten times a second, but at once when it is more than progress: a phase, a job, a fault.
  void Changed();

 private:
  template <typename T>
  bool Take(T& field, const T& value);
  void AnnounceIf(bool changed);
  void ShowPhase();

  ActivityState state_;
  std::array<int, static_cast<size_t>(Phase::CountingDown) + 1> scopes_ = {};
  ChangeThrottle throttle_;
};

}  // namespace zentorin
