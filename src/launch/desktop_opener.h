// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <optional>

#include "launch/folder_placeholders.h"
#include "launch/installed_programs.h"
#include "launch/known_applications.h"
#include "launch/mime_associations.h"
#include "launch/opener.h"
#include "launch/program_starter.h"
#include "launch/xdg_folders.h"

namespace zentorin {

class Activity;
class Drives;
class MessageBoxes;
class TextWindows;

class DesktopOpener : public Opener {
 public:
  // `starter` ends before `messages`, which its answers are told to.
  DesktopOpener(Drives& drives, ProgramStarter& starter, MessageBoxes& messages,
                TextWindows& windows, XdgFolders folders = XdgFolders::FromEnvironment());

  // Told when a page came up. No events are handled any more when the activity ends.
  void TellSuccessTo(Activity& activity) { activity_ = &activity; }

  void OpenWithDefaultHandler(const QString& target) override;
  void OpenFolder(const QString& path) override;
  void ShowText(const QString& text, const QString& title) override;
  void PlayOrView(const QString& target) override;
  void OpenWith(const QString& applicationName, const QString& target) override;

 private:
  struct Launch {
    QString application;  // by its name, where one was asked for
    QString target;       // may be empty: then the program was to come up alone
    QString refusal;      // the first line when no program comes up
    QString failure;      // the first line when the program ends at once with an error
    QString success;      // for the status line; may be empty
  };

  void Play(const LaunchTarget& target);
  void OpenByHandler(const LaunchTarget& target);
  LaunchTarget ToTarget(const QString& text) const;
  void Begin(const std::optional<ProgramRequest>& request, const Launch& launch);
  std::optional<ProgramRequest> RegisteredProgram(const LaunchTarget& target,
                                                  const QString& type) const;
  void Report(const Launch& launch, ProgramStart outcome);
  void ShowScript(const LaunchTarget& target);
  void Tell(const QString& text);

  Drives& drives_;
  ProgramStarter& starter_;
  MessageBoxes& messages_;
  TextWindows& windows_;
  Activity* activity_ = nullptr;
  InstalledPrograms programs_;
  FolderPlaceholders placeholders_;
  MimeAssociations associations_;
  KnownApplications known_;
  std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);  // answers may come too late
};

}  // namespace zentorin
