// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include "tests/support/fake_workspace.h"
#include "tests/support/loopback_server.h"

namespace zentorin::test {

// The working state of the program without a window, in a world of recording fakes: on a folder of
// its own and a server that plays every host.
class WorkspaceTest : public testing::Test {
 protected:
  WorkspaceTest() { workspace.choices.firstPause = std::chrono::milliseconds(10); }

  TempDir home;
  LoopbackServer server;
  FakeWorkspace fake{home, server.ConnectTo()};

  Workspace& workspace = fake.workspace;
  SettableClock& clock = fake.clock;
  RecordingMessageBoxes& messages = fake.messages;
  RecordingOpener& opener = fake.opener;
  FakeStreamCapture& capture = fake.capture;
  RecordingPowerControl& power = fake.power;
  DownloadOptions& options = workspace.settings.download;
  Activity& activity = workspace.activity;
  UrlList& urlList = workspace.urlList;
  JobEditor& job = workspace.job;
  FileList& files = workspace.files;
  LogFile& log = workspace.log;
  RunDriver& driver = workspace.driver;
};

}  // namespace zentorin::test
