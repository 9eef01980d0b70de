// SPDX-License-Identifier: MIT
#include <QString>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "tests/fuzz/clean_file_name_check.h"

// Called by libFuzzer. Each input is taken as UTF-8 and as raw UTF-16, so that halves of surrogate
// pairs come up too.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
  QString units;
  for (qsizetype at = 0; at + 1 < bytes.size(); at += 2) {
    units += QChar(static_cast<char16_t>(static_cast<std::uint8_t>(bytes[at]) << 8 |
                                         static_cast<std::uint8_t>(bytes[at + 1])));
  }
  for (const QString& name : {QString::fromUtf8(bytes), units}) {
    const QString fault = zentorin::test::FaultOfCleanedName(name);
    if (fault.isEmpty()) continue;
    std::fprintf(stderr, "%s\n", qPrintable(fault));
    std::abort();
  }
  return 0;
}
