// SPDX-License-Identifier: MIT
#include "base/file_names.h"

#include <gtest/gtest.h>

namespace zentorin {
namespace {

TEST(FileNames, ShowsNoCharacterThatActsOnTheDisplay) {
  EXPECT_EQ(EscapeForDisplay(QStringLiteral("a\x1b[2J\u0085\u202Egpj.\u2066\u2028日本😀\\")),
            QStringLiteral("a\\u{1b}[2J\\u{85}\\u{202e}gpj.\\u{2066}\\u{2028}日本😀\\"));
  EXPECT_EQ(EscapeForDisplay(QString(QChar(QChar::Null))), QStringLiteral("\\u{0}"));
}

}  // namespace
}  // namespace zentorin
