// SPDX-License-Identifier: MIT
#include "base/status_board.h"

#include <algorithm>

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

// Takes a value over; true when it was another one.
template <typename T>
bool Take(T& field, const T& value) {
  if (field == value) return false;
  field = value;
  return true;
}

}  // namespace

StatusBoard::StatusBoard(QObject* parent) : QObject(parent), cancelCaption_(u"キャンセル"_s) {
  connect(&throttle_, &ChangeThrottle::Due, this, &StatusBoard::ProgressChanged);
}

void StatusBoard::SetStatus(const QString& text, quint32 colour) {
  const bool textChanged = Take(status_, text);
  if (Take(statusColour_, colour) || textChanged) Q_EMIT Changed();
}

void StatusBoard::SetBusy(bool busy) {
  if (Take(busy_, busy)) Q_EMIT Changed();
}

void StatusBoard::SetSiteEnabled(bool enabled) {
  if (Take(siteEnabled_, enabled)) Q_EMIT Changed();
}

void StatusBoard::SetFile(const QString& text) {
  if (Take(file_, text)) throttle_.Touch();
}

void StatusBoard::SetDone(const QString& fraction) {
  if (Take(done_, fraction)) throttle_.Touch();
}

void StatusBoard::SetProgress(double fraction) {
  if (Take(progress_, std::clamp(fraction, 0.0, 1.0))) throttle_.Touch();
}

void StatusBoard::SetCounter(const QString& text) {
  if (Take(counter_, text)) throttle_.Touch();
}

void StatusBoard::SetProgressShown(bool shown) {
  if (Take(progressShown_, shown)) Q_EMIT Changed();
}

void StatusBoard::SetFileBytes(qint64 bytes) {
  if (Take(fileBytes_, bytes)) throttle_.Touch();
}

void StatusBoard::SetFileCount(const QString& text) {
  if (Take(fileCount_, text)) throttle_.Touch();
}

void StatusBoard::SetCancelShown(bool shown) {
  if (Take(cancelShown_, shown)) Q_EMIT Changed();
}

void StatusBoard::SetCancelEnabled(bool enabled) {
  if (Take(cancelEnabled_, enabled)) Q_EMIT Changed();
}

void StatusBoard::SetCancelCaption(const QString& text) {
  if (Take(cancelCaption_, text)) Q_EMIT Changed();
}

void StatusBoard::SetStandby(const Standby& standby) {
  if (Take(standby_, standby)) Q_EMIT Changed();
}

}  // namespace zentorin
