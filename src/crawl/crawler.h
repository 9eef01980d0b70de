// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <QCoro/QCoroTask>

#include "crawl/page_extractor.h"
#include "crawl/page_walk.h"
#include "net/miss_reason.h"
#include "net/my_xml_http_request.h"
#include "net/pattern.h"

namespace zentorin {

struct CrawlContext;

struct CrawlStart {
  QString rootUrl;       // as asked for
  QString startAddress;  // as answered: what the only-under-the-root rules compare against
  FetchedPage page;
};

// Walks the pages of a site depth first. Their files go to the file list; without an extractor the
// pages themselves do. An empty `subPages` follows no link.
class Crawler {
 public:
  Crawler(const CrawlContext& context, Pattern& subPages, PageExtractor* extractor,
          CancelToken cancel);

  // Answers which pages could not be had, by kind. Ends early on a cancel.
  QCoro::Task<MissCounts> Run(CrawlStart start);

 private:
  QCoro::Task<void> TakeStep(PageWalk& walk, PageWalk::Step& step);
  QCoro::Task<void> Take(PageRecord record, FetchedPage page);
  MissReason NoteMissing(const QString& address, const FetchedPage& page);
  void ListPage(const PageRecord& record, const QString& missing = {});

  const CrawlContext& context_;
  Pattern& subPages_;
  PageExtractor* extractor_;
  CancelToken cancel_;
  MissCounts missing_;  // pages that could not be had
};

}  // namespace zentorin
