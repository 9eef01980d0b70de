// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>

namespace zentorin {

// How the user wants addresses to be asked. The defaults are those of a program that nobody set up.
struct FetchChoices {
  int connectionsPerHost = 6;  // 1: strictly one request after the other
  int tries = 2;               // further ones after a transfer that failed
  // Before the first of them; three times as long before each later one. Tests shorten it.
  std::chrono::milliseconds firstPause{1000};
  bool keepServerDate = false;  // on saved files
  bool decodeNames = false;     // %XX in local names
  int topSpeed = 0;             // of files, in KB (1000 bytes) a second; 0 for none
  bool proxyForFiles = false;   // the system's, as for pages
};

}  // namespace zentorin
