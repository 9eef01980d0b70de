// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

#include <iconv.h>

namespace zentorin {

class IconvHandle {
 public:
  IconvHandle(const char* to, const char* from) : codec_(iconv_open(to, from)) {}
  IconvHandle(const IconvHandle&) = delete;
  IconvHandle& operator=(const IconvHandle&) = delete;
  ~IconvHandle() {
    if (IsOpen()) iconv_close(codec_);
  }

  bool IsOpen() const { return reinterpret_cast<std::intptr_t>(codec_) != -1; }
  iconv_t Codec() const { return codec_; }

 private:
  iconv_t codec_;
};

}  // namespace zentorin
