// SPDX-License-Identifier: MIT
#include "power/power_action.h"

#include <algorithm>
#include <array>

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

// SD_LOGIND_SKIP_INHIBITORS: the action is forced, no other program can hold it up.
constexpr quint64 kSkipInhibitors = 1U << 4U;
constexpr quint64 kNoFlags = 0;

}  // namespace

QString PowerAction::CallText() const {
  const QString argument = EndsSession() ? u"自分のセッション"_s : QString::number(flags);
  return u"%1(%2)"_s.arg(forced, argument);
}

// Every action is forced. Wake-up events stay enabled: sleeping leaves the alarms of the clock as
// they are. A session has no inhibitors, and ending it ends its programs whether they want or not.
// Shutting down always means power-off: login1 runs on no system so old that it could only halt.
const PowerAction* FindPowerAction(const QString& name) {
  static const std::array<PowerAction, 5> kActions = {{
      {u"スタンバイ"_s, "CanSuspend"_L1, "SuspendWithFlags"_L1, kSkipInhibitors, "Suspend"_L1},
      {u"休止"_s, "CanHibernate"_L1, "HibernateWithFlags"_L1, kSkipInhibitors, "Hibernate"_L1},
      {u"ログオフ"_s, QLatin1StringView(), "TerminateSession"_L1, kNoFlags, QLatin1StringView()},
      {u"再起動"_s, "CanReboot"_L1, "RebootWithFlags"_L1, kSkipInhibitors, "Reboot"_L1},
      {u"シャットダウン"_s, "CanPowerOff"_L1, "PowerOffWithFlags"_L1, kSkipInhibitors,
       "PowerOff"_L1},
  }};
  const auto* const found = std::ranges::find(kActions, name, &PowerAction::name);
  return found == kActions.end() ? nullptr : found;
}

}  // namespace zentorin
