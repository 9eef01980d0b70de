// SPDX-License-Identifier: MIT
#include "base/activity.h"

#include <algorithm>

namespace zentorin {

Activity::Scope::Scope(Activity& activity, Phase phase) : activity_(activity), phase_(phase) {
  ++activity_.scopes_.at(static_cast<size_t>(phase_));
  activity_.ShowPhase();
}

Activity::Scope::~Scope() {
  --activity_.scopes_.at(static_cast<size_t>(phase_));
  activity_.ShowPhase();
}

Activity::Activity(QObject* parent) : QObject(parent) {
  connect(&throttle_, &ChangeThrottle::Due, this, &Activity::Changed);
}

// Takes a value over; true when it was another one.
template <typename T>
bool Activity::Take(T& field, const T& value) {
  if (field == value) return false;
  field = value;
  throttle_.Touch();
  return true;
}

void Activity::AnnounceIf(bool changed) {
  if (changed) throttle_.Flush();
}

void Activity::ShowPhase() {
  auto phase = Phase::Resting;
  for (size_t i = 0; i < scopes_.size(); ++i) {
    if (scopes_.at(i) > 0) phase = static_cast<Phase>(i);
  }
  if (phase <= Phase::Armed) state_.cancelling = false;
  AnnounceIf(Take(state_.phase, phase));
}

void Activity::SetBatch(bool batch) {
  AnnounceIf(Take(state_.batch, batch));
}

void Activity::SetCancelling() {
  AnnounceIf(state_.phase > Phase::Armed && Take(state_.cancelling, true));
}

void Activity::SetJob(Place job) {
  AnnounceIf(Take(state_.job, job));
}

void Activity::SetRow(Place row) {
  Take(state_.row, row);
}

void Activity::SetFound(int rows) {
  Take(state_.found, rows);
}

void Activity::SetShare(double share) {
  Take(state_.share, std::clamp(share, 0.0, 1.0));
}

void Activity::SetAddress(const QString& address) {
  Take(state_.address, address);
}

void Activity::SetBytes(qint64 bytes, qint64 length) {
  Take(state_.bytes, bytes);
  Take(state_.length, length);
}

void Activity::SetRecorded(std::optional<double> share) {
  Take(state_.recorded, share);
}

void Activity::SetRunBytes(qint64 bytes) {
  Take(state_.runBytes, bytes);
}

void Activity::SetTimeLeft(std::chrono::milliseconds left) {
  AnnounceIf(Take(state_.left, left));
}

void Activity::SetWaiting(const QString& text) {
  Take(state_.waiting, text);
}

void Activity::Say(const QString& text, Tone tone) {
  const Message message{text, tone};
  if (state_.message == message) return;
  ++state_.said;
  Take(state_.message, message);
  AnnounceIf(tone != Tone::Note);
}

void Activity::SetAfterBatch(const AfterBatch& afterBatch) {
  AnnounceIf(Take(state_.afterBatch, afterBatch));
}

}  // namespace zentorin
