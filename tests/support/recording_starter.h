// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>
#include <functional>
#include <vector>

#include "launch/program_starter.h"
#include "launch/text_windows.h"

namespace zentorin::test {

// Starts nothing; keeps each request as "start:program|argument|…", "open:verb|target|parameters|
// folder|mode" or "folder:path", and answers as it is told to.
class RecordingStarter : public ProgramStarter {
 public:
  void Start(const ProgramRequest& request, std::function<void(ProgramStart)> done) override;
  bool ShellOpen(const ShellOpenRequest& request) override;
  void ShowFolder(const QString& path, std::function<void(bool)> done) override;

  QStringList requests;
  ProgramStart outcome = ProgramStart::Running;
  bool hasShellOpener = true;
  bool hasFileManager = true;
  bool holdAnswers = false;
  std::vector<std::function<void()>> held;  // the answers, while `holdAnswers` is set
};

// Keeps each text as "title|text".
class RecordingTextWindows : public TextWindows {
 public:
  bool Show(const QString& text, const QString& title) override;

  QStringList shown;
  bool result = true;
};

}  // namespace zentorin::test
