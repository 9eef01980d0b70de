// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <vector>

#include <QCoro/QCoroTask>

#include "crawl/page_extractor.h"
#include "crawl/suffix_index.h"
#include "crawl/time_slice.h"
#include "net/my_xml_http_request.h"
#include "net/pattern.h"

namespace zentorin {

struct CrawlContext;

// Where a run begins.
struct CrawlStart {
  QString rootUrl;       // as asked for
  QString startAddress;  // as answered: what the only-under-the-root rules compare against
  FetchedPage page;
};

// Walks the pages of a site depth first and takes each of them: its files go to the file list, or,
// in a run that lists pages only, the page itself does.
class Crawler {
 public:
  // Both must outlive the crawler. Without an extractor the pages themselves are listed; an empty
  // `subPages` follows no link.
  Crawler(const CrawlContext& context, Pattern& subPages, PageExtractor* extractor);

  // Ends early on a cancel.
  QCoro::Task<void> Run(CrawlStart start);

 private:
  // A page of the crawl.
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
    FetchedPage page;  // status other than 0: to be fetched again
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
  void ListPage(const Record& record);
  bool OutsideRoot(const QString& link, const QString& baseDir) const;

  const CrawlContext& context_;
  Pattern& subPages_;
  PageExtractor* extractor_;
  QString startAddress_;
  SuffixIndex visited_;
  // The pages from the root to the one in hand. A work stack instead of recursion: a chain of
  // pages may be as long as the depth that the user types.
  std::vector<Frame> path_;
  qsizetype heldCharacters_ = 0;  // page texts in path_
  TimeSlice slice_;
};

}  // namespace zentorin
