// SPDX-License-Identifier: MIT
#include "tests/support/recording_starter.h"

#include <utility>

namespace zentorin::test {

void RecordingStarter::Start(const ProgramRequest& request,
                             std::function<void(ProgramStart)> done) {
  const QStringList words = QStringList{request.program} + request.arguments;
  requests.append("start:" + words.join(u'|'));
  if (holdAnswers)
    held.emplace_back([done = std::move(done), answer = outcome] { done(answer); });
  else
    done(outcome);
}

bool RecordingStarter::ShellOpen(const ShellOpenRequest& request) {
  const QStringList parts{request.verb, request.target, request.parameters, request.workingFolder,
                          QString::number(request.showMode)};
  requests.append("open:" + parts.join(u'|'));
  return hasShellOpener;
}

void RecordingStarter::ShowFolder(const QString& path, std::function<void(bool)> done) {
  requests.append("folder:" + path);
  if (holdAnswers)
    held.emplace_back([done = std::move(done), answer = hasFileManager] { done(answer); });
  else
    done(hasFileManager);
}

bool RecordingTextWindows::Show(const QString& text, const QString& title) {
  shown.append(title + QLatin1Char('|') + text);
  return result;
}

}  // namespace zentorin::test
