// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

#include "base/outcome.h"
#include "net/fetch_choices.h"

namespace zentorin {

struct IntRange {
  bool Holds(int number) const { return number >= least && number <= most; }

  int least = 0;
  int most = 0;
};

// What a user may choose.
constexpr IntRange kConnectionsPerHost{.least = 1, .most = 12};
constexpr IntRange kTries{.least = 0, .most = 20};
constexpr IntRange kTopSpeed{.least = 0, .most = 1'000'000};

// What choices.ini holds, which lies beside Conf.txt. A key that is missing means the default.
class KeptChoices {
 public:
  // Tells in `faults` which values it had to put right. A missing file is no error.
  Outcome Load(const QString& path, QStringList& faults);

  // Writes what has changed since it was loaded, and nothing else: the rest of the file stays, and
  // without a change there need be none.
  Outcome Save(const QString& path);

  // Takes over what the user changed from `before` to `after`.
  void Take(const FetchChoices& before, const FetchChoices& after);

  FetchChoices choices;

 private:
  FetchChoices loaded_;
};

}  // namespace zentorin
