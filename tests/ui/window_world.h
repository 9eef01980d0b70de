// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "app/auto_run.h"
#include "app/file_dialogs.h"
#include "app/list_commands.h"
#include "app/workspace.h"
#include "tests/support/fakes.h"
#include "tests/support/temp_dir.h"
#include "ui/frm_main.h"

namespace zentorin::test {

// Answers every question for a file with `path` and keeps the last one.
class OnePathDialogs : public FileDialogs {
 public:
  QCoro::Task<QString> AskForFileToOpen(FileDialog dialog) override { return Answer(dialog); }
  QCoro::Task<QString> AskForFileToSave(FileDialog dialog) override { return Answer(dialog); }
  QCoro::Task<QString> AskForFolder(FileDialog dialog) override { return Answer(dialog); }

  QString path;
  FileDialog asked;

 private:
  QCoro::Task<QString> Answer(FileDialog dialog) {
    asked = std::move(dialog);
    // A copy: a returned member would be moved away.
    co_return QString(path);
  }
};

// The main window in a world of recording fakes.
struct WindowWorld {
  explicit WindowWorld(const QString& connectTo = {}) : workspace(world, home.Path(), connectTo) {
    window.resize(1000, 760);
    window.show();
    window.FinishStartUp(false);
  }

  template <typename T>
  T* Find(const char* name) {
    return window.findChild<T*>(QLatin1String(name));
  }

  TempDir home;
  SettableClock clock;
  RecordingMessageBoxes messages;
  RecordingOpener opener;
  FakeStreamCapture capture;
  RecordingPowerControl power;
  OnePathDialogs dialogs;
  World world{
      .clock = clock, .messages = messages, .opener = opener, .capture = capture, .power = power};
  Workspace workspace;
  AutoRun autoRun{workspace};
  ListCommands lists{workspace, dialogs};
  frmMain window{{.workspace = workspace, .autoRun = autoRun, .lists = lists, .dialogs = dialogs}};
};

}  // namespace zentorin::test
