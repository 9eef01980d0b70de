// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <chrono>
#include <unordered_map>

#include "net/http_engine.h"

namespace zentorin {

// What a run has open at each host and what it has learned of it: how many requests it bears, when
// it may be asked again. Decides, and does nothing by itself.
class HostBook {
 public:
  using Time = std::chrono::steady_clock::time_point;

  static constexpr int kMaxConnections = 12;  // to all hosts
  static constexpr std::chrono::seconds kMaxPause{120};
  static constexpr std::chrono::seconds kDownTime{60};
  static constexpr int kMaxMisses = 3;  // in a row; then the host is down

  enum class Entry { Now, Later, Down };

  void SetConnectionsPerHost(int count) { perHost_ = count; }
  void StartRun();  // forgets what was learned; what is open stays open

  Entry Ask(const QString& host, const HttpRequest& request, Time now) const;
  bool IsPaused(const QString& host, Time now) const;
  Time PausedUntil(const QString& host) const;
  bool OneAtATime(const QString& host) const;

  void Opened(const QString& host, const HttpRequest& request);
  void Closed(const QString& host, const HttpRequest& request);
  void TookTurn(const QString& host);  // an open early request is read now

  void Answered(const QString& host, const HttpHead& head, Time now);
  // A time-out counts as down at once: the system has tried to connect again and again in it.
  void NotConnected(const QString& host, bool timedOut, Time now);
  void RefusedEarly(const QString& host);  // a connection was closed before a word of an answer

 private:
  struct Host {
    int open = 0;
    int early = 0;  // of the open ones
    int alone = 0;
    int misses = 0;
    int refusals = 0;  // of early requests
    bool oneAtATime = false;
    Time pausedUntil;
    Time downUntil;
  };

  const Host& Of(const QString& host) const;
  int MostInAll() const { return perHost_ == 1 ? 1 : kMaxConnections; }

  int perHost_ = 6;
  int open_ = 0;
  int early_ = 0;
  std::unordered_map<QString, Host> hosts_;
};

}  // namespace zentorin
