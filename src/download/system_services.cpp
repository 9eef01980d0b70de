// SPDX-License-Identifier: MIT
#include "download/system_services.h"

#include "download/dry_run_power_control.h"
#include "download/login1_power_control.h"

namespace zentorin {

SystemServices::SystemServices()
    : dryRun_(DryRunPowerControl::IsWanted()),
      system_(dryRun_ ? QString() : MessageBus::SystemAddress()),
      session_(dryRun_ ? QString() : MessageBus::SessionAddress()),
      notices_(session_) {
  if (dryRun_) {
    power_ = std::make_unique<DryRunPowerControl>();
  } else {
    power_ = std::make_unique<Login1PowerControl>(system_);
  }
}

}  // namespace zentorin
