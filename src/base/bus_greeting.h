// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>
#include <chrono>

namespace zentorin {

// The opening words with a D-Bus message bus, over a socket that never blocks. The library behind
// QDBusConnection waits without end for a bus that accepts a connection and then says nothing, and
// every other connection of the process waits with it. So a bus gets a real connection only when it
// has answered such a greeting to the end.
class BusGreeting {
 public:
  enum class State { Waiting, Answered, Absent };

  // Begins the greeting. `address` as D-Bus writes it; of several the first that takes the
  // connection is greeted. Sockets of the kinds "unix:path=" and "unix:abstract=" are known.
  explicit BusGreeting(const QString& address);
  ~BusGreeting();
  BusGreeting(const BusGreeting&) = delete;
  BusGreeting& operator=(const BusGreeting&) = delete;

  State Current() const { return state_; }
  // To be watched for input while the state is Waiting; Advance() takes the input.
  int Descriptor() const { return descriptor_; }
  void Advance();
  // Goes on to the end on the spot. What has not answered by then is absent.
  State WaitFor(std::chrono::milliseconds bound);

  // The one of the addresses that was greeted.
  const QString& Address() const { return address_; }

 private:
  void Say(const QByteArray& words);
  void Hear();

  QString address_;
  int descriptor_ = -1;
  State state_ = State::Absent;
  bool authenticated_ = false;
  QByteArray heard_;
};

}  // namespace zentorin
