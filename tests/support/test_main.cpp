// SPDX-License-Identifier: MIT
#include <QCoreApplication>

#include <gtest/gtest.h>

int main(int argc, char** argv) {
  // Also when it is started by hand, a test and the programs that it starts see no bus of the host.
  for (const char* const bus : {"DBUS_SYSTEM_BUS_ADDRESS", "DBUS_SESSION_BUS_ADDRESS"}) {
    qputenv(bus, "unix:path=/nonexistent/bus");
  }
  const QCoreApplication application(argc, argv);
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
