// SPDX-License-Identifier: MIT
#pragma once

#include "base/message_boxes.h"

namespace zentorin {

// What both lists ask before they delete.
inline MessageBox DeleteQuestion() {
  return {QStringLiteral("削除確認"), QStringLiteral("選択行を削除して宜しいですか？"),
          MessageBox::Buttons::OkCancel, MessageBox::Answer::Cancel};
}

}  // namespace zentorin
