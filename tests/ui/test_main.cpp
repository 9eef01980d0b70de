// SPDX-License-Identifier: MIT
#include <QApplication>

#include <gtest/gtest.h>

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
    // Its own screen is too small for a window in a large font.
    qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" ZENTORIN_TEST_SCREENS);
  }
  // What it would reach there is the host's.
  for (const char* const bus : {"DBUS_SYSTEM_BUS_ADDRESS", "DBUS_SESSION_BUS_ADDRESS"}) {
    qputenv(bus, "unix:path=/nonexistent/bus");
  }
  const QApplication application(argc, argv);
  QApplication::setQuitOnLastWindowClosed(false);
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
