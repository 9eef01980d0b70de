// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>
#include <chrono>

#include "base/descriptor.h"

namespace zentorin {

// The opening words with a D-Bus message bus. It never blocks, whereas QDBusConnection waits
// without end for a bus that says nothing, and all connections of the process with it.
class BusGreeting {
 public:
  enum class State { Waiting, Answered, Absent };

  // Greets the first of the addresses ("unix:path=", "unix:abstract=") that takes a connection.
  explicit BusGreeting(const QString& address);

  State Current() const { return state_; }
  int Socket() const { return socket_.Number(); }  // to be watched for input while Waiting
  void Advance();
  // Blocks. What has not answered by then is absent.
  State WaitFor(std::chrono::milliseconds bound);

  const QString& Address() const { return address_; }  // the one that was greeted

 private:
  void Say(const QByteArray& words);
  void Hear();

  QString address_;
  Descriptor socket_;
  State state_ = State::Absent;
  bool authenticated_ = false;
  QByteArray heard_;
};

}  // namespace zentorin
