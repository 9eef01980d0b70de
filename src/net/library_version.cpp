// SPDX-License-Identifier: MIT
#include "net/library_version.h"

#include <curl/curl.h>

namespace zentorin {

QString HttpLibraryVersion() {
  const curl_version_info_data* info = curl_version_info(CURLVERSION_NOW);
  QString text = QString::fromUtf8(info->version);
  if (info->ssl_version != nullptr) {
    text += QStringLiteral(" (%1)").arg(QString::fromUtf8(info->ssl_version));
  }
  return text;
}

}  // namespace zentorin
