// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>
#include <functional>
#include <utility>
#include <vector>

#include "launch/program_starter.h"
#include "launch/text_windows.h"

namespace zentorin::test {

// Starts nothing; keeps each request as "start:program|argument|…", "open:target" or
// "folder:path", and answers as it is told to.
class RecordingStarter : public ProgramStarter {
 public:
  void Start(const ProgramRequest& request, std::function<void(ProgramStart)> done) override {
    requests.append("start:" + (QStringList{request.program} + request.arguments).join(u'|'));
    Answer([done = std::move(done), answer = outcome] { done(answer); });
  }
  bool ShellOpen(const QString& target) override {
    requests.append("open:" + target);
    return hasShellOpener;
  }
  void ShowFolder(const QString& path, std::function<void(bool)> done) override {
    requests.append("folder:" + path);
    Answer([done = std::move(done), answer = hasFileManager] { done(answer); });
  }

  QStringList requests;
  ProgramStart outcome = ProgramStart::Running;
  bool hasShellOpener = true;
  bool hasFileManager = true;
  bool holdAnswers = false;
  std::vector<std::function<void()>> held;  // the answers, while `holdAnswers` is set

 private:
  void Answer(std::function<void()> answer) {
    if (!holdAnswers) return answer();
    held.push_back(std::move(answer));
  }
};

// Keeps each text as "title|text".
class RecordingTextWindows : public TextWindows {
 public:
  bool Show(const QString& text, const QString& title) override {
    shown.append(title + u'|' + text);
    return result;
  }

  QStringList shown;
  bool result = true;
};

}  // namespace zentorin::test
