// SPDX-License-Identifier: MIT
#include "crawl/row_address.h"

#include "crawl/file_list_row.h"
#include "net/api_web.h"

namespace zentorin {

QString FileAddressOf(const FileListRow& row) {
  return API_Web::Resolve(row[FileListRow::BaseDir], row[FileListRow::Link]);
}

QString PlayAddressOf(const FileListRow& row) {
  const QString& link = row[FileListRow::Link];
  for (const QLatin1String scheme :
       {QLatin1String("mms://"), QLatin1String("http://"), QLatin1String("https://")}) {
    if (link.startsWith(scheme)) return link.trimmed();
  }
  return FileAddressOf(row).trimmed();
}

}  // namespace zentorin
