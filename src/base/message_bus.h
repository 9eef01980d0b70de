// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>
#include <QTimer>
#include <chrono>
#include <functional>
#include <memory>
#include <vector>

#include <QCoro/QCoroTask>

#include "base/bus_greeting.h"

class QDBusMessage;
class QSocketNotifier;

namespace zentorin {

// A connection of its own to a D-Bus message bus. Nothing waits on the spot or asks the user for
// authorisation, and every call is answered within bounds: by an error when the bus, the service or
// its answer is missing. The first call opens the connection; a bus that does not answer the
// greeting within the bound of a call counts as missing.
class MessageBus : public QObject {
  Q_OBJECT

 public:
  using Answer = std::function<void(const QDBusMessage& reply)>;

  // `address` as D-Bus writes it, "unix:path=…"; empty for a bus that is not there.
  explicit MessageBus(QString address,
                      std::chrono::milliseconds answerTime = std::chrono::seconds(10));
  ~MessageBus() override;

  // Where the computer's services are, and those of the user's session. The latter is empty when
  // there is none: a bus is never started for it.
  static QString SystemAddress();
  static QString SessionAddress();

  std::chrono::milliseconds AnswerTime() const { return answerTime_; }

  // The reply or the error. The bus outlives the task.
  QCoro::Task<QDBusMessage> Call(QDBusMessage call);
  // Hands the reply or the error to `told`, from the event loop; never when `receiver` has gone
  // before.
  void Ask(const QDBusMessage& call, QObject* receiver, const Answer& told);
  // A call whose answer nobody waits for.
  void Send(const QDBusMessage& call);

 private:
  struct Waiting;  // a call that the connection has yet to be opened for

  bool IsOpen() const;
  void Take(const Waiting& waiting);
  void Open();
  void GoOn();
  void EndGreeting();
  void Issue(const Waiting& waiting);

  QString address_;
  QString name_;  // of the connection, within this process
  std::chrono::milliseconds answerTime_;
  std::vector<Waiting> waiting_;
  std::unique_ptr<BusGreeting> greeting_;
  QSocketNotifier* notifier_ = nullptr;  // watches the greeting
  QTimer bound_;
  bool unconfirmed_ = false;  // something may still be on its way to the bus
};

}  // namespace zentorin
