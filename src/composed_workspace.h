// SPDX-License-Identifier: MIT
#pragma once

#include "app/batch_notice.h"
#include "app/stop_signals.h"
#include "app/workspace.h"
#include "base/clock.h"
#include "download/stream/external_stream_capture.h"
#include "download/stream/x11_tool_windows.h"
#include "launch/installed_programs.h"
#include "power/system_services.h"

namespace zentorin {

// A workspace on this machine, and what both ways to run the program need around it. Messages and
// opener, in which the two differ, outlive it.
struct ComposedWorkspace {
  ComposedWorkspace(MessageBoxes& messages, Opener& opener, const QString& programFolder)
      : workspace({clock, messages, opener, capture, services.Power()}, programFolder,
                  qEnvironmentVariable("ZENTORIN_CONNECT_TO")) {}

  SystemClock clock;
  InstalledPrograms programs{XdgFolders::FromEnvironment()};
  X11ToolWindows toolWindows;
  ExternalStreamCapture capture{programs, toolWindows};
  SystemServices services;
  Workspace workspace;
  BatchNotice notice{workspace.driver, services.Notices()};
  StopSignals signals;
};

}  // namespace zentorin
