// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <chrono>

#include "base/message_bus.h"
#include "launch/program_starter.h"
#include "launch/xdg_folders.h"

namespace zentorin {

class ProcessStarter : public ProgramStarter {
 public:
  struct Times {
    std::chrono::milliseconds comeUp = std::chrono::seconds(10);
    std::chrono::milliseconds settle = std::chrono::seconds(2);
    std::chrono::milliseconds fileManager = std::chrono::seconds(5);
  };

  explicit ProcessStarter(XdgFolders folders);
  ProcessStarter(XdgFolders folders, const Times& times);

  void Start(const ProgramRequest& request, std::function<void(ProgramStart)> done) override;
  bool ShellOpen(const QString& target) override;
  void ShowFolder(const QString& path, std::function<void(bool)> done) override;

 private:
  XdgFolders folders_;
  Times times_;
  MessageBus bus_;  // the session's, as the environment names it when the starter is made
  QObject owned_;   // what is still watched or waited for; goes with the starter
};

}  // namespace zentorin
