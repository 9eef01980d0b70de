// SPDX-License-Identifier: MIT
#include "download/no_power_control.h"

namespace zentorin {

QCoro::Task<QString> NoPowerControl::Perform(QString action) {
  static const QStringList kActions = {QStringLiteral("スタンバイ"), QStringLiteral("休止"),
                                       QStringLiteral("ログオフ"), QStringLiteral("再起動"),
                                       QStringLiteral("シャットダウン")};
  if (!kActions.contains(action)) co_return QString();
  co_return QStringLiteral("このシステムでは「%1」を実行できません。").arg(action);
}

}  // namespace zentorin
