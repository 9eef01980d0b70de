// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>
#include <QTimer>
#include <chrono>
#include <functional>
#include <memory>
#include <vector>

#include "base/bus_greeting.h"

class QDBusMessage;
class QSocketNotifier;

namespace zentorin {

// Nothing blocks or asks the user for authorisation, and every call is answered within bounds: by
// an error when the bus, the service or its answer is missing.
class MessageBus : public QObject {
  Q_OBJECT

 public:
  using Answer = std::function<void(const QDBusMessage& reply)>;

  // As D-Bus writes it, "unix:path=…"; empty for a bus that is not there.
  explicit MessageBus(QString address,
                      std::chrono::milliseconds answerTime = std::chrono::seconds(10));
  ~MessageBus() override;

  static QString SystemAddress();
  static QString SessionAddress();  // empty when there is none: it is never started

  std::chrono::milliseconds AnswerTime() const { return answerTime_; }

  // From the event loop; never when `receiver` has gone before.
  void Ask(const QDBusMessage& call, QObject* receiver, const Answer& told);
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
