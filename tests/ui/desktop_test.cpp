// SPDX-License-Identifier: MIT
#include <QApplication>
#include <QDir>
#include <QMenu>
#include <QProcess>
#include <QStandardPaths>
#include <QTimer>
#include <QtTest>

#include <gtest/gtest.h>

#include "compose.h"
#include "tests/launch/xdg_tree.h"
#include "ui/dialogs/help_pages.h"
#include "ui/frm_main.h"
#include "ui/widgets/line_list_view.h"

namespace zentorin::test {

using namespace Qt::Literals::StringLiterals;

namespace {

// The whole program with its window on a display of its own. Its desktop is a folder: the programs
// that are registered there are stubs, and there is no message bus and no opener of the desktop's.
class DesktopTest : public testing::Test {
 protected:
  void SetUp() override {
    const QString server = QStandardPaths::findExecutable("Xvfb");
    if (server.isEmpty()) GTEST_SKIP() << "Xvfb is not installed";
    display_.start(server, {"-displayfd", "1", "-nolisten", "tcp"});
    ASSERT_TRUE(display_.waitForReadyRead());
    qputenv("DISPLAY", ":" + display_.readLine().trimmed());
    qputenv("QT_QPA_PLATFORM", "xcb");
    // Which types of files there are is the machine's.
    QDir().mkpath(tree_.Path("data-system"));
    QFile::link(QStandardPaths::locate(QStandardPaths::GenericDataLocation, "mime",
                                       QStandardPaths::LocateDirectory),
                tree_.Path("data-system/mime"));
    const std::pair<const char*, const char*> folders[] = {
        {"XDG_DATA_HOME", "data"},         {"XDG_DATA_DIRS", "data-system"},
        {"XDG_CONFIG_HOME", "config"},     {"XDG_CONFIG_DIRS", "config-system"},
        {"XDG_RUNTIME_DIR", "no-runtime"}, {"PATH", "bin"}};
    for (const auto& [variable, folder] : folders) {
      qputenv(variable, tree_.Path(QLatin1StringView(folder)).toUtf8());
    }
    for (const char* const bus : {"DBUS_SYSTEM_BUS_ADDRESS", "DBUS_SESSION_BUS_ADDRESS"}) {
      qputenv(bus, "unix:path=/nonexistent/bus");
    }
  }

  void TearDown() override {
    display_.kill();
    display_.waitForFinished();
  }

  // A program that writes its arguments down, each in a line.
  void AddStub(const char* name, const QByteArray& codes, const QByteArray& types) const {
    tree_.AddProgram(QLatin1StringView(name), codes, "MimeType=" + types);
    tree_.AddCommand(QLatin1StringView(name), R"(for a; do echo "$a"; done >> "$0.out")");
  }
  // Waits until the stub has written exactly that.
  void ExpectCalled(const char* name, const QStringList& arguments) const {
    const QString file = u"bin/%1.out"_s.arg(QLatin1StringView(name));
    const QByteArray expected = (arguments.join(u'\n') + u'\n').toUtf8();
    EXPECT_TRUE(QTest::qWaitFor([&] { return tree_.Read(file) == expected; }, 30'000))
        << name << ": " << tree_.Read(file).toStdString();
  }

  static void Choose(const QWidget& window, const char* menuName, const char* entry) {
    auto* menu = window.findChild<QMenu*>(QLatin1StringView(menuName));
    if (!menu->isVisible()) menu->popup(QPoint());
    QAction* action = window.findChild<QAction*>(QLatin1StringView(entry));
    QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(action).center());
  }

  void UseTheWindow(QWidget& window) const {
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    QWidget* jobs = window.findChild<LineListView*>("lstTargetUrl")->viewport();
    QTest::mouseClick(jobs, Qt::RightButton, {}, QPoint(20, 5));
    Choose(window, "mnuContext_TargetUrl", "mnuContext_TargetUrl_OpenSite");
    QStringList opened{"--new", "http://site.test/?a=1&b='$(c)'"};
    ExpectCalled("browser", opened);
    Choose(window, "mnuHelp", "mnuHelp2");
    opened << "--new"
           << "file://" + FindHelpFolder() + "/index.html";
    ExpectCalled("browser", opened);
    QTest::mouseDClick(window.findChild<QWidget*>("lblSavePath"), Qt::LeftButton);
    ExpectCalled("files", {tree_.Path("home/my save")});
  }

  XdgTree tree_;
  QProcess display_;
};

TEST_F(DesktopTest, ThingsOpenFromTheWindowInTheProgramsThatAreRegistered) {
  AddStub("browser", "--new %u", "x-scheme-handler/http;text/html;");
  AddStub("files", "%f", "inode/directory;");
  tree_.Write("home/my save/file", "");
  tree_.Write("home/list.dat",
              "1 description = job\r\n1 root = http://site.test/?a=1&b='$(c)'\r\n"
              "1 save_path = my save\r\n1 before = ,\r\n\r\n");
  int argc = 1;
  char name[] = "zentorin";
  char* argv[] = {name, nullptr};
  const QApplication application(argc, argv);
  QTimer::singleShot(0, [this] {
    frmMain* window = nullptr;
    for (QWidget* widget : QApplication::topLevelWidgets()) {
      if (auto* found = qobject_cast<frmMain*>(widget)) window = found;
    }
    if (window == nullptr) {
      QCoreApplication::exit(-1);
      return;
    }
    UseTheWindow(*window);
    window->close();
  });
  EXPECT_EQ(RunWindow({"list.dat"}, tree_.Path("home")), 0);
}

}  // namespace
}  // namespace zentorin::test

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
