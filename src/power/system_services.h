// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "base/message_bus.h"
#include "power/desktop_notices.h"
#include "power/power_control.h"

namespace zentorin {

// The services that a batch turns to. In a dry run (ZENTORIN_POWER) no bus is touched.
class SystemServices {
 public:
  SystemServices();

  PowerControl& Power() { return *power_; }
  DesktopNotices& Notices() { return notices_; }

 private:
  bool dryRun_;
  MessageBus system_;
  MessageBus session_;
  std::unique_ptr<PowerControl> power_;
  DesktopNotices notices_;
};

}  // namespace zentorin
