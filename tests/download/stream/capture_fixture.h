// SPDX-License-Identifier: MIT
#pragma once

#include <QFile>
#include <algorithm>
#include <thread>

#include "download/stream/external_stream_capture.h"
#include "launch/installed_programs.h"
#include "tests/download/download_fixture.h"

namespace zentorin::test {

// The windows that a test describes. To begin with there is no display.
class FakeToolWindows : public ToolWindows {
 public:
  bool Available() override { return !windows.empty(); }
  std::vector<ToolWindow> List() override {
    std::this_thread::sleep_for(lookTime);
    return looks++ == 0 ? std::vector<ToolWindow>() : windows;
  }
  std::optional<ToolWindow> Find(const ToolWindow& window) override {
    const auto same = [&](const ToolWindow& other) { return other.IsSameAs(window); };
    const auto found = std::ranges::find_if(windows, same);
    return found == windows.end() ? std::nullopt : std::optional(*found);
  }
  void PressKey(quint32 /*window*/, char16_t /*letter*/) override {}
  void Show(quint32 window, bool /*shown*/) override { touched.push_back(window); }
  void Close(quint32 window) override { closed.push_back(window); }
  void EndProgram(quint32 /*window*/) override {}

  std::vector<ToolWindow> windows;
  int looks = 0;  // at the first one they are not there yet
  std::chrono::milliseconds lookTime{0};
  std::vector<quint32> touched;  // shown or hidden
  std::vector<quint32> closed;
};

// A machine whose programs and menu entries lie in a folder of the test. "save/song.wmv" was
// recorded before.
class CaptureTest : public DownloadTest {
 protected:
  CaptureTest() { home.Write("save/song.wmv", "an old one"); }

  QString Program(const QString& name, const QByteArray& text = "#!/bin/sh\n") const {
    const QString path = home.Write(name, text);
    QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    return path;
  }

  void Entry(const QString& name, const QString& command, const QString& folder = {}) const {
    home.Write("data/applications/wine/" + name + ".desktop",
               QString("[Desktop Entry]\nType=Application\nName=%1\nExec=%2\nPath=%3\n")
                   .arg(name, command, folder)
                   .toUtf8());
  }

  // With what a compatibility layer would have written for the installed tool.
  void InstallStreamGet(const QString& command) {
    options.streamingTool = ToolLookup::kStreamGet;
    home.Write("tool/StreamGET.EXE", "");
    Entry("GetASFStream", command, home.Path("tool"));
  }

  RowCode Capture(StreamCapture& tool, const QString& address, const QString& name) {
    StreamRequest request;
    request.address = address;
    request.path = home.Path("save/" + name);
    request.tool = options.streamingTool;
    request.showTool = options.vlcShow;
    recorded = QCoro::waitFor(tool.Capture(request, activity, cancel.Token()));
    return recorded.code;
  }

  XdgFolders Folders() const {
    XdgFolders folders;
    folders.data = {home.Path("data")};
    folders.commands = {home.Path("bin")};
    return folders;
  }

  InstalledPrograms programs{Folders()};
  CancelSource cancel;
  StreamOutcome recorded;  // of the last Capture()
};

}  // namespace zentorin::test
