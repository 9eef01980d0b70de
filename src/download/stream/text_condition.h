// SPDX-License-Identifier: MIT
#pragma once

#include <QHash>
#include <QString>
#include <optional>

namespace zentorin {

// Evaluates a small condition over texts, such as
//   title == "確認" && pid = tool || status ^ "exists"
// The operators stand above its definition. A text alone holds unless it is empty or "0". A word
// that names no variable stands for itself. Nothing for a condition that cannot be read.
std::optional<bool> EvaluateCondition(const QString& condition,
                                      const QHash<QString, QString>& variables = {});

}  // namespace zentorin
