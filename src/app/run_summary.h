// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace zentorin {

struct RunOutcome;

QString SummaryOf(const RunOutcome& outcome);  // one line: how it ended, and its counts

}  // namespace zentorin
