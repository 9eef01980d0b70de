// SPDX-License-Identifier: MIT
#include "launch/process_starter.h"

#include <QDBusMessage>
#include <QProcess>
#include <QUrl>
#include <utility>

#include "launch/started_program.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

ProcessStarter::ProcessStarter(XdgFolders folders) : ProcessStarter(std::move(folders), Times()) {}

ProcessStarter::ProcessStarter(XdgFolders folders, const Times& times)
    : folders_(std::move(folders)),
      times_(times),
      bus_(MessageBus::SessionAddress(), times.fileManager) {}

void ProcessStarter::Start(const ProgramRequest& request, std::function<void(ProgramStart)> done) {
  auto* program = new StartedProgram(times_.comeUp, times_.settle, &owned_);
  program->Run(request, std::move(done));
}

bool ProcessStarter::ShellOpen(const QString& target) {
  const QString opener = folders_.FindCommand(u"xdg-open"_s);
  return !opener.isEmpty() && QProcess::startDetached(opener, {target});
}

void ProcessStarter::ShowFolder(const QString& path, std::function<void(bool)> done) {
  // A file manager that is not running but can be is started by the call itself.
  QDBusMessage call = QDBusMessage::createMethodCall(
      u"org.freedesktop.FileManager1"_s, u"/org/freedesktop/FileManager1"_s,
      u"org.freedesktop.FileManager1"_s, u"ShowFolders"_s);
  const QString uri = QString::fromLatin1(QUrl::fromLocalFile(path).toEncoded());
  call << QStringList{uri} << QString();
  bus_.Ask(call, &owned_, [done = std::move(done)](const QDBusMessage& reply) {
    done(reply.type() == QDBusMessage::ReplyMessage);
  });
}

}  // namespace zentorin
