// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <vector>

#include <QCoro/QCoroTask>

#include "crawl/page_extractor.h"
#include "crawl/suffix_index.h"
#include "crawl/time_slice.h"
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
  struct Record {
    QString link;  // as written
    QString baseDir;
    QString parent;
    QString address;
  };
  struct Link {
    QString text;
    qsizetype tag = 0;  // index of the tag it stands in
  };
  // A page whose links are being followed. It is taken after the pages below it.
  struct Frame {
    Record record;
    FetchedPage page;  // not Ok(): to be fetched again
    QString baseDir;
    std::vector<Link> links;
    size_t next = 0;
    qsizetype tagCount = 0;
  };

  QCoro::Task<void> WalkFrom(QString rootUrl, FetchedPage page);
  QCoro::Task<void> Follow(Link link);
  QCoro::Task<void> Enter(Record record, FetchedPage page);
  QCoro::Task<void> CollectLinks(Frame& frame);
  QCoro::Task<void> Leave();
  QCoro::Task<void> Take(Record record, FetchedPage page);
  MissReason NoteMissing(const QString& address, const FetchedPage& page);
  void ListPage(const Record& record, const QString& missing = {});
  bool OutsideRoot(const QString& link, const QString& baseDir) const;

  const CrawlContext& context_;
  Pattern& subPages_;
  PageExtractor* extractor_;
  CancelToken cancel_;
  QString startAddress_;
  SuffixIndex visited_;
  // From the root to the page in hand. No recursion: a chain may be as long as the depth typed.
  std::vector<Frame> path_;
  MissCounts missing_;            // pages that could not be had
  qsizetype heldCharacters_ = 0;  // page texts in path_
  TimeSlice slice_;
};

}  // namespace zentorin
