// SPDX-License-Identifier: MIT
#pragma once

#include <QSet>
#include <QString>
#include <deque>
#include <map>
#include <memory>
#include <optional>
#include <vector>

#include <QCoro/QCoroTask>

#include "base/async_event.h"
#include "base/cancel_token.h"
#include "crawl/suffix_index.h"
#include "crawl/time_slice.h"
#include "net/my_xml_http_request.h"
#include "net/pattern.h"

namespace zentorin {

struct CrawlContext;

struct PageRecord {
  QString link;  // as written
  QString baseDir;
  QString parent;
  QString address;
};

// Finds the pages of a site depth first and fetches them ahead of whoever takes them. It asks for
// no page that a walk without haste would not come to. What stands behind a page whose links are
// still unknown is asked for only on a site whose first pages write each address in one way.
class PageWalk {
 public:
  // A page on its way. While too much is held it is read slowly, but in its turn it is not.
  class Coming : public ReadGate {
   public:
    explicit Coming(PageWalk& walk) : walk_(walk) {}

    QCoro::Task<void> Pass(qsizetype bytes) override;
    QCoro::Task<FetchedPage> Fetch(QString address);
    QCoro::Task<FetchedPage> Take();

    QCoro::Task<FetchedPage> page;

   private:
    PageWalk& walk_;
    bool isTurn_ = false;
    qsizetype held_ = 0;  // bytes that count into the walk's
  };

  // What is to be done next, in the order of the walk.
  struct Step {
    enum class Kind {
      Begin,    // a link of the root page is followed from here on
      Take,     // the page is to be taken
      Missing,  // it was to be followed and could not be had
    };

    Kind kind = Kind::Take;
    PageRecord record;
    double share = 0;  // of the root page's tags that are done; of Begin
    FetchedPage page;
    std::unique_ptr<Coming> coming;  // the page, when it is still on its way
  };

  // `fetchesLeaves`: whether pages whose links are not followed are needed at all.
  PageWalk(const CrawlContext& context, Pattern& subPages, QString startAddress, bool fetchesLeaves,
           CancelToken cancel);

  // Once, with the page that stands under that address. Goes on by itself from then on.
  void Start(const QString& rootUrl, const FetchedPage& page);
  QCoro::Task<std::optional<Step>> Next();  // nothing at the end of the walk
  QCoro::Task<FetchedPage> PageOf(Step& step);

 private:
  struct Link {
    QString text;
    qsizetype tag = 0;  // index of the tag it stands in
  };
  // A page whose links are being followed. It is taken after the pages below it.
  struct Frame {
    PageRecord record;
    FetchedPage page;  // not Ok(): to be fetched again
    QString baseDir;
    std::vector<Link> links;
    size_t next = 0;
    qsizetype tagCount = 0;
  };

  QCoro::Task<void> Walk(QString rootUrl, FetchedPage page);
  QCoro::Task<void> Follow(Link link);
  QCoro::Task<void> Enter(PageRecord record, FetchedPage page);
  QCoro::Task<void> CollectLinks(Frame& frame);
  QCoro::Task<void> Leave();
  QCoro::Task<void> WaitForRoom();
  std::unique_ptr<Coming> FetchAhead(const QString& address);
  void Guess();
  bool IsVisited(const QString& address);
  int MostOnTheirWay() const;
  void Emit(Step step);
  bool OutsideRoot(const QString& link, const QString& baseDir) const;

  const CrawlContext& context_;
  Pattern& subPages_;
  QString startAddress_;
  bool fetchesLeaves_;
  bool sharesConnections_;  // with whoever takes the pages and asks for the headers of files
  CancelToken cancel_;

  SuffixIndex visited_;
  QSet<QString> visitedAddresses_;
  bool hasVariants_ = false;  // two addresses counted as one page
  // From the root to the page in hand. No recursion: a chain may be as long as the depth typed.
  std::vector<Frame> path_;
  qsizetype heldCharacters_ = 0;  // page texts in path_
  TimeSlice slice_;

  std::deque<Step> steps_;
  qsizetype heldAhead_ = 0;  // bytes of the pages in steps_, as far as they have come
  int onTheirWay_ = 0;       // pages that are being fetched ahead
  std::map<QString, std::unique_ptr<Coming>> guessed_;  // by address, for links that come later
  bool ended_ = false;
  AsyncEvent stepCame_;
  AsyncEvent roomCame_;
  QCoro::Task<void> walk_;
};

}  // namespace zentorin
