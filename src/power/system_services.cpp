// SPDX-License-Identifier: MIT
#include "power/system_services.h"

#include "power/dry_run_power_control.h"
#include "power/login1_power_control.h"

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
