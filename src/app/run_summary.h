// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace zentorin {

struct RunOutcome;

// How a run ended and its counts, also of what was missed by kind; on a second line the jobs whose
// root URL was not found, if there are any.
QString SummaryOf(const RunOutcome& outcome);

}  // namespace zentorin
