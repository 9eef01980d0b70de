// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <chrono>

#include <QCoro/QCoroTask>

class QDBusMessage;
class QDBusPendingCall;

namespace zentorin {

// A connection of its own to a D-Bus message bus. Calls never wait on the spot, never ask the user
// for authorisation and are answered within a bound: by an error when the bus, the service or its
// answer is missing. The first call opens the connection, and that greeting alone is waited for: a
// bus that accepts and then says nothing holds the program up.
class MessageBus {
 public:
  // `address` as D-Bus writes it, "unix:path=…"; empty for a bus that is not there.
  explicit MessageBus(QString address,
                      std::chrono::milliseconds answerTime = std::chrono::seconds(10));
  ~MessageBus();
  MessageBus(const MessageBus&) = delete;
  MessageBus& operator=(const MessageBus&) = delete;

  // Where the computer's services are, and those of the user's session. The latter is empty when
  // there is none: a bus is never started for it.
  static QString SystemAddress();
  static QString SessionAddress();

  std::chrono::milliseconds AnswerTime() const { return answerTime_; }

  // The reply or the error. The bus outlives the task.
  QCoro::Task<QDBusMessage> Call(QDBusMessage call);
  QDBusPendingCall Start(const QDBusMessage& call);
  // A call whose answer nobody waits for.
  void Send(const QDBusMessage& call);

 private:
  bool Open();

  QString address_;
  QString name_;  // of the connection, within this process
  std::chrono::milliseconds answerTime_;
  bool unconfirmed_ = false;  // something may still be on its way to the bus
};

}  // namespace zentorin
