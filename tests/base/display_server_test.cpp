// SPDX-License-Identifier: MIT
#include "base/display_server.h"

#include <QCoreApplication>
#include <QLocalServer>

#include <gtest/gtest.h>

#include "tests/support/temp_dir.h"

namespace zentorin::test {
namespace {

TEST(DisplayServer, ADisplayThatNobodyServesIsNone) {
  const TempDir dir;
  const QByteArray gone = dir.Path("gone").toUtf8();
  // Its queue takes connections, and nobody looks at them.
  QLocalServer silent;
  const QByteArray number = QByteArray::number(QCoreApplication::applicationPid());
  silent.setSocketOptions(QLocalServer::AbstractNamespaceOption);
  ASSERT_TRUE(silent.listen(QString("/tmp/.X11-unix/X") + number));
  for (const QByteArray& x11 : {QByteArray(":54321"), QByteArray("no display"), ':' + number}) {
    qputenv("DISPLAY", x11);
    qputenv("WAYLAND_DISPLAY", gone);
    EXPECT_EQ(DropDeadDisplays(std::chrono::milliseconds(100)), QStringList({x11, gone}));
    EXPECT_FALSE(qEnvironmentVariableIsSet("DISPLAY"));
    EXPECT_FALSE(qEnvironmentVariableIsSet("WAYLAND_DISPLAY"));
  }
  EXPECT_TRUE(silent.hasPendingConnections() || silent.waitForNewConnection(30'000)) << "was asked";
  QLocalServer wayland;
  ASSERT_TRUE(wayland.listen(dir.Path("wayland-7")));
  qputenv("WAYLAND_DISPLAY", "wayland-7");
  qputenv("XDG_RUNTIME_DIR", dir.Path().toUtf8());
  EXPECT_EQ(DropDeadDisplays(), QStringList());
}

TEST(DisplayServer, APlatformThatIsNamedCountsUnlessItNeedsADisplay) {
  qunsetenv("DISPLAY");
  qunsetenv("WAYLAND_DISPLAY");
  using Case = std::pair<const char*, bool>;
  for (const auto& [platform, expected] :
       {Case("", false), Case("offscreen", true), Case("wayland-egl;xcb", false),
        Case("xcb;vnc:size=9x9", true)}) {
    qputenv("QT_QPA_PLATFORM", platform);
    EXPECT_EQ(HasDisplay(), expected) << platform;
  }
  qunsetenv("QT_QPA_PLATFORM");
  qputenv("DISPLAY", ":0");
  EXPECT_TRUE(HasDisplay());
}

}  // namespace
}  // namespace zentorin::test
