// SPDX-License-Identifier: MIT
#pragma once

#include <QtTest>
#include <QtWidgets>
#include <memory>

#include <gtest/gtest.h>

#include "app/auto_run.h"
#include "app/list_commands.h"
#include "tests/support/fake_workspace.h"
#include "tests/support/loopback_server.h"
#include "ui/frm_main.h"
#include "ui/widgets/line_list_view.h"
#include "ui/window_program.h"

namespace zentorin::test {

// One run of the program with its real window, in a world of recording fakes.
struct RunningWindow : FakeWorkspace {
  RunningWindow(const TempDir& folder, const QString& connectTo)
      : FakeWorkspace(folder, connectTo) {
    QObject::connect(&program, &WindowProgram::Ended, [this](int status) { exitStatus = status; });
    workspace.driver.SetCountdownStep(std::chrono::milliseconds(1));
  }

  void Start(const QStringList& arguments = {}) { QCoro::waitFor(program.Run(arguments)); }

  template <typename T = QWidget>
  T* Find(const char* name) const {
    T* found = window.findChild<T*>(QLatin1StringView(name));
    EXPECT_NE(found, nullptr) << name;
    return found;
  }
  // Clicks a control, near its left edge where a box has its mark, or takes a menu's entry.
  void Click(const char* name) const {
    if (auto* entry = window.findChild<QAction*>(QLatin1StringView(name))) {
      entry->trigger();
      return;
    }
    auto* control = Find(name);
    QTest::mouseClick(control, Qt::LeftButton, {}, {5, control->height() / 2});
  }
  // Types into a control after a click on it, as a person does.
  void Type(const char* name, const QString& keys) const {
    Click(name);
    QTest::keyClicks(QApplication::focusWidget(), keys);
  }
  QString Text(const char* name) const {
    const QVariant choice = Find(name)->property("currentText");
    return (choice.isValid() ? choice : Find(name)->property("text")).toString();
  }
  // Those of the named controls that a user sees, or of which another property is true.
  QString Seen(const QString& names, const char* property = "visible") const {
    QStringList seen;
    for (const QString& name : names.split(u' ')) {
      if (Find(qPrintable(name))->property(property).toBool()) seen += name;
    }
    return seen.join(u' ');
  }
  // What a row of the file list shows in that column.
  QString Cell(int row, int column) const {
    const auto* model = Find<LineListView>("lstUrl_All")->model();
    return model->index(row, column).data().toString();
  }

  AutoRun autoRun{workspace};
  ListCommands lists{workspace, dialogs};
  frmMain window{{.workspace = workspace,
                  .autoRun = autoRun,
                  .lists = lists,
                  .dialogs = dialogs,
                  .toolPaths = {{}, "/bin/get"}}};
  WindowProgram program{workspace, autoRun, window};
  int exitStatus = -1;
};

// The program's folder, a server that plays every host, and the program.
class MainWindowTest : public testing::Test {
 protected:
  MainWindowTest() {
    // Claims on list files lie in a folder of this test.
    qputenv("XDG_RUNTIME_DIR", runtime.Path().toUtf8());
    Restart();
  }
  ~MainWindowTest() override { qunsetenv("XDG_RUNTIME_DIR"); }

  // A fresh program on the same folder; the former one ends with it.
  void Restart() {
    w.reset();
    w = std::make_unique<RunningWindow>(home, server.ConnectTo());
  }
  // Starts it with a list of one job that takes the links ending in ".mp3" of "/" and of pages.
  void StartOnList(const QStringList& options = {}) {
    home.Write("list.dat",
               "1 description = job\r\n1 root = http://site.test/\r\n"
               "1 sub_pattern = href=\"(.+?\\.html)\"\r\n1 depth = 1\r\n"
               "1 file_pattern = href=\"(.+?\\.mp3)\"\r\n1 save_path = save\r\n"
               "1 before = ,\r\n1 opt = 0\r\n");
    home.Write("Conf.txt", "open folder = 0\r\n");
    w->Start(options + QStringList({"-f", "list.dat"}));
  }
  void StartWithJob() {
    StartOnList();
    w->workspace.urlList.Select(0);
    ASSERT_TRUE(QTest::qWaitForWindowActive(&w->window));
  }
  bool WaitForRest() {
    return QTest::qWaitFor([this] { return !w->workspace.driver.IsRunning(); }, 20'000);
  }
  bool WaitForExit() {
    return QTest::qWaitFor([this] { return w->exitStatus >= 0; }, 20'000);
  }

  TempDir home;
  TempDir runtime;
  LoopbackServer server;
  std::unique_ptr<RunningWindow> w;
};

}  // namespace zentorin::test
