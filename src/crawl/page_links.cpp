// SPDX-License-Identifier: MIT
#include "crawl/page_links.h"

#include <algorithm>
#include <array>

#include "base/number_text.h"
#include "net/api_web.h"

namespace zentorin {
namespace {

constexpr qsizetype kMaxLinkLength = 256;

constexpr std::array kFileEndings = {".gif", ".png", ".jpg", ".bmp", ".csv", ".pdf", ".xls",
                                     ".doc", ".mp3", ".wma", ".wmv", ".lzh", ".zip", ".tar"};

bool IsFile(const QString& link) {
  return std::ranges::any_of(kFileEndings, [&link](const char* ending) {
    return link.endsWith(QLatin1String(ending), Qt::CaseInsensitive);
  });
}

}  // namespace

QString PageLinkOf(const QString& candidate) {
  QString link = API_Web::StripQuotes(candidate, true);
  if (IsFile(link) || link.size() > kMaxLinkLength) return {};
  link = TrimBlanks(link);
  if (link.startsWith(u'"') && !link.endsWith(u'"')) link.remove(0, 1);
  const qsizetype fragment = link.indexOf(u'#');
  return fragment < 0 ? link : link.left(fragment);
}

}  // namespace zentorin
