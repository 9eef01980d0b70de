// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusVirtualObject>
#include <QHash>
#include <QProcess>
#include <QSet>
#include <QSocketNotifier>
#include <QStringList>
#include <memory>

#include "tests/support/temp_dir.h"

namespace zentorin::test {

// A message bus of the test's own, in a process that ends with the object. On it the test plays
// login1, the desktop's notifications and its file manager: every call is kept, as
// "Suspend(false)", and answered.
class PrivateBus : public QDBusVirtualObject {
  Q_OBJECT

 public:
  PrivateBus();
  ~PrivateBus() override;

  const QString& Address() const { return address_; }
  // Takes the services from the bus.
  void Withdraw();
  // Runs the event loop until that call has been made.
  void WaitForCall(const QString& call);

  QString introspect(const QString& /*path*/) const override { return {}; }
  bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

  QStringList calls;                   // and "released" when an inhibitor lock is given back
  QHash<QString, QVariant> answers;    // by method; "yes" to every question without one
  QHash<QString, QStringList> errors;  // names by method, taken from the front
  QSet<QString> silent;                // methods that are never answered

 Q_SIGNALS:
  void Called();

 private:
  void Note(const QString& call);
  QVariant AnswerTo(const QDBusMessage& message);
  QVariant InhibitorLock();

  TempDir dir_;
  QProcess daemon_;
  QString address_;
  std::unique_ptr<QSocketNotifier> lock_;
};

}  // namespace zentorin::test
