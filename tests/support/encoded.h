// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>
#include <string>

#include <gtest/gtest.h>
#include <iconv.h>

namespace zentorin::test {

inline QByteArray Encoded(const QString& text, const char* charset) {
  QByteArray in = text.toUtf8();
  std::string out(static_cast<std::size_t>(in.size()) * 4 + 16, '\0');
  char* from = in.data();
  char* to = out.data();
  auto inLeft = static_cast<std::size_t>(in.size());
  std::size_t outLeft = out.size();
  const iconv_t codec = iconv_open(charset, "UTF-8");
  EXPECT_EQ(iconv(codec, &from, &inLeft, &to, &outLeft), 0U) << charset;
  iconv(codec, nullptr, nullptr, &to, &outLeft);
  iconv_close(codec);
  return QByteArray(out.data(), static_cast<qsizetype>(out.size() - outLeft));
}

}  // namespace zentorin::test
