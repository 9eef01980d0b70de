// SPDX-License-Identifier: MIT
#include "net/host_book.h"

#include <algorithm>

namespace zentorin {

void HostBook::StartRun() {
  for (auto& [name, host] : hosts_) {
    Host fresh;
    fresh.open = host.open;
    fresh.early = host.early;
    fresh.alone = host.alone;
    host = fresh;
  }
  std::erase_if(hosts_, [](const auto& entry) { return entry.second.open == 0; });
}

const HostBook::Host& HostBook::Of(const QString& host) const {
  static const Host unknown;
  const auto found = hosts_.find(host);
  return found == hosts_.end() ? unknown : found->second;
}

HostBook::Entry HostBook::Ask(const QString& host, const HttpRequest& request, Time now) const {
  const Host& known = Of(host);
  if (now < known.downUntil) return Entry::Down;
  if (now < known.pausedUntil) return Entry::Later;
  if (request.early && known.alone > 0) return Entry::Later;
  const int limit = known.oneAtATime ? 1 : perHost_;
  // Early requests never take the last connection away from one that is read.
  const bool keepsOneHere = request.early && known.open == known.early;
  const bool keepsOneInAll = request.early && open_ == early_;
  const bool fits =
      known.open + (keepsOneHere ? 1 : 0) < limit && open_ + (keepsOneInAll ? 1 : 0) < MostInAll();
  return fits ? Entry::Now : Entry::Later;
}

bool HostBook::IsPaused(const QString& host, Time now) const {
  return now < Of(host).pausedUntil;
}

HostBook::Time HostBook::PausedUntil(const QString& host) const {
  return Of(host).pausedUntil;
}

bool HostBook::OneAtATime(const QString& host) const {
  return Of(host).oneAtATime;
}

void HostBook::Opened(const QString& host, const HttpRequest& request) {
  Host& known = hosts_[host];
  ++known.open;
  ++open_;
  if (request.alone) ++known.alone;
  if (!request.early) return;
  ++known.early;
  ++early_;
}

void HostBook::Closed(const QString& host, const HttpRequest& request) {
  Host& known = hosts_[host];
  --known.open;
  --open_;
  if (request.alone) --known.alone;
  if (request.early) TookTurn(host);
}

void HostBook::TookTurn(const QString& host) {
  --hosts_[host].early;
  --early_;
}

void HostBook::Answered(const QString& host, const HttpHead& head, Time now) {
  constexpr int kTooManyRequests = 429;
  constexpr int kUnavailable = 503;
  Host& known = hosts_[host];
  known.misses = 0;
  if (head.status != kTooManyRequests && head.status != kUnavailable) return;
  known.oneAtATime = true;
  const std::chrono::seconds pause =
      std::clamp(head.retryAfter, std::chrono::seconds(0), kMaxPause);
  known.pausedUntil = std::max(known.pausedUntil, now + pause);
}

void HostBook::NotConnected(const QString& host, bool timedOut, Time now) {
  Host& known = hosts_[host];
  known.oneAtATime = true;
  known.misses = timedOut ? kMaxMisses : known.misses + 1;
  if (known.misses >= kMaxMisses) known.downUntil = now + kDownTime;
}

// One may be chance.
void HostBook::RefusedEarly(const QString& host) {
  constexpr int kMaxRefusals = 3;
  Host& known = hosts_[host];
  if (++known.refusals >= kMaxRefusals) known.oneAtATime = true;
}

}  // namespace zentorin
