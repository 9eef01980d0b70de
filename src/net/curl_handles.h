// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include <curl/curl.h>

namespace zentorin {

// Never freed inside a libcurl callback. CURL and CURLM are one type, hence a deleter for each.
struct CurlEasyDeleter {
  void operator()(CURL* handle) const { curl_easy_cleanup(handle); }
};
struct CurlMultiDeleter {
  void operator()(CURLM* handle) const { curl_multi_cleanup(handle); }
};
struct CurlListDeleter {
  void operator()(curl_slist* list) const { curl_slist_free_all(list); }
};

using CurlEasy = std::unique_ptr<CURL, CurlEasyDeleter>;
using CurlMulti = std::unique_ptr<CURLM, CurlMultiDeleter>;
using CurlList = std::unique_ptr<curl_slist, CurlListDeleter>;

inline void AppendTo(CurlList& list, const char* text) {
  curl_slist* longer = curl_slist_append(list.get(), text);
  if (longer == nullptr) return;  // out of memory: the list stays as it was
  if (!list) list.reset(longer);  // the first node stays when it grows
}

}  // namespace zentorin
