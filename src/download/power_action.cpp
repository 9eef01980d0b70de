// SPDX-License-Identifier: MIT
#include "download/power_action.h"

#include <algorithm>
#include <array>

namespace zentorin {
namespace {

// SD_LOGIND_SKIP_INHIBITORS: the action is forced, no other program can hold it up.
constexpr quint64 kSkipInhibitors = 1U << 4U;
constexpr quint64 kNoFlags = 0;

}  // namespace

QString PowerAction::CallText() const {
  const QString argument =
      EndsSession() ? QStringLiteral("自分のセッション") : QString::number(flags);
  return QStringLiteral("%1(%2)").arg(forced, argument);
}

// Every action is forced. Wake-up events stay enabled: sleeping leaves the alarms of the clock as
// they are. A session has no inhibitors, and ending it ends its programs whether they want or not.
// Shutting down always means power-off: login1 runs on no system so old that it could only halt.
const PowerAction* FindPowerAction(const QString& name) {
  static const std::array<PowerAction, 5> kActions = {{
      {QStringLiteral("スタンバイ"), QLatin1String("CanSuspend"), QLatin1String("SuspendWithFlags"),
       kSkipInhibitors, QLatin1String("Suspend")},
      {QStringLiteral("休止"), QLatin1String("CanHibernate"), QLatin1String("HibernateWithFlags"),
       kSkipInhibitors, QLatin1String("Hibernate")},
      {QStringLiteral("ログオフ"), QLatin1String(), QLatin1String("TerminateSession"), kNoFlags,
       QLatin1String()},
      {QStringLiteral("再起動"), QLatin1String("CanReboot"), QLatin1String("RebootWithFlags"),
       kSkipInhibitors, QLatin1String("Reboot")},
      {QStringLiteral("シャットダウン"), QLatin1String("CanPowerOff"),
       QLatin1String("PowerOffWithFlags"), kSkipInhibitors, QLatin1String("PowerOff")},
  }};
  const auto* const found = std::ranges::find(kActions, name, &PowerAction::name);
  return found == kActions.end() ? nullptr : found;
}

}  // namespace zentorin
