// SPDX-License-Identifier: MIT
#pragma once

#include <utility>

#include "app/file_dialogs.h"
#include "app/workspace.h"
#include "tests/support/fakes.h"
#include "tests/support/temp_dir.h"

namespace zentorin::test {

// Answers every question for a file or folder with `answer` and keeps the last one.
class ChosenPath : public FileDialogs {
 public:
  QCoro::Task<QString> AskForFileToOpen(FileDialog dialog) override { return Answer(dialog); }
  QCoro::Task<QString> AskForFileToSave(FileDialog dialog) override { return Answer(dialog); }
  QCoro::Task<QString> AskForFolder(FileDialog dialog) override { return Answer(dialog); }

  QString answer;
  FileDialog asked;

 private:
  QCoro::Task<QString> Answer(FileDialog dialog) {
    asked = std::move(dialog);
    // A copy: a returned member would be moved away.
    co_return QString(answer);
  }
};

// A workspace in a world of recording fakes, with `folder` as the program's. For tests of the rooms
// from app/ upwards.
struct FakeWorkspace {
  explicit FakeWorkspace(const TempDir& folder, const QString& connectTo = {})
      : workspace({clock, messages, opener, capture, power}, folder.Path(), connectTo) {}

  SettableClock clock;
  RecordingMessageBoxes messages;
  RecordingOpener opener;
  FakeStreamCapture capture;
  RecordingPowerControl power;
  ChosenPath dialogs;
  Workspace workspace;
};

}  // namespace zentorin::test
