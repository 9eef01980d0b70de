// SPDX-License-Identifier: MIT
#include "launch/process_starter.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QFileInfo>
#include <QProcess>
#include <QUrl>
#include <utility>

#include "launch/started_program.h"

namespace zentorin {
namespace {

// Without an address the bus library would go and start a bus, and wait for it.
bool HasSessionBus() {
  if (qEnvironmentVariableIsSet("DBUS_SESSION_BUS_ADDRESS")) return true;
  const QString folder = qEnvironmentVariable("XDG_RUNTIME_DIR");
  return !folder.isEmpty() && QFileInfo::exists(folder + QStringLiteral("/bus"));
}

}  // namespace

ProcessStarter::ProcessStarter(XdgFolders folders) : ProcessStarter(std::move(folders), Times()) {}

ProcessStarter::ProcessStarter(XdgFolders folders, const Times& times)
    : folders_(std::move(folders)), times_(times) {}

void ProcessStarter::Start(const ProgramRequest& request, std::function<void(ProgramStart)> done) {
  auto* program = new StartedProgram(times_.comeUp, times_.settle, &owned_);
  program->Run(request, std::move(done));
}

bool ProcessStarter::ShellOpen(const ShellOpenRequest& request) {
  const QString opener = folders_.FindCommand(QStringLiteral("xdg-open"));
  return !opener.isEmpty() && QProcess::startDetached(opener, {request.target});
}

void ProcessStarter::ShowFolder(const QString& path, std::function<void(bool)> done) {
  // A call without a connection would never be answered, not even by an error.
  if (!HasSessionBus() || !QDBusConnection::sessionBus().isConnected()) {
    done(false);
    return;
  }
  // A file manager that is not running but can be is started by the call itself.
  QDBusMessage call = QDBusMessage::createMethodCall(
      QStringLiteral("org.freedesktop.FileManager1"),
      QStringLiteral("/org/freedesktop/FileManager1"),
      QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("ShowFolders"));
  const QString uri = QString::fromLatin1(QUrl::fromLocalFile(path).toEncoded());
  call << QStringList{uri} << QString();
  const QDBusPendingCall pending =
      QDBusConnection::sessionBus().asyncCall(call, static_cast<int>(times_.fileManager.count()));
  auto* watcher = new QDBusPendingCallWatcher(pending, &owned_);
  QObject::connect(watcher, &QDBusPendingCallWatcher::finished, &owned_,
                   [watcher, done = std::move(done)] {
                     watcher->deleteLater();
                     done(!watcher->isError());
                   });
}

}  // namespace zentorin
