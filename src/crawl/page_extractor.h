// SPDX-License-Identifier: MIT
#pragma once

#include <QDateTime>
#include <QString>
#include <deque>
#include <optional>

#include <QCoro/QCoroTask>

#include "crawl/suffix_index.h"
#include "crawl/time_slice.h"
#include "net/my_xml_http_request.h"
#include "net/pattern.h"

namespace zentorin {

struct CrawlContext;

// A few keywords stand for fixed expressions, anything else for itself.
QString FileExpression(const QString& filePattern);

// What the links of a page are resolved against: by its base element, else by its final address;
// `asked` stands in for that when it is not known.
QString BaseDirectoryOf(const FetchedPage& page, const QString& asked);

// Finds the files that the pages of one run link to and appends a row for each new one.
class PageExtractor {
 public:
  PageExtractor(const CrawlContext& context, Pattern& files, QDateTime reference,
                CancelToken cancel);

  void SetStartAddress(const QString& address) { startAddress_ = address; }

  QCoro::Task<void> Extract(QString pageUrl, FetchedPage page);

  int RowCount() const { return rowCount_; }  // also those removed from the list since

 private:
  struct Source {
    QString url;
    QString base;
  };
  using FileDate = std::optional<QDateTime>;  // in the time of the clock label

  // A link whose file is being asked for its date and size.
  struct Question {
    QString link;
    QString address;
    QCoro::Task<HttpAnswer> answer;
  };

  QCoro::Task<void> TakeCandidate(const Source& source, QString candidate);
  QCoro::Task<void> AnswerFirst(const Source& source);
  bool IsAskedFor(const QString& link) const;
  void AddRow(const Source& source, QString link, const QString& address, const HttpHead& head,
              const QString& unknown);
  bool InDateWindow(const FileDate& date) const;
  bool UnderRoot(const QString& candidate) const;

  const CrawlContext& context_;
  Pattern& files_;
  QDateTime reference_;  // the date window is counted back from it
  CancelToken cancel_;
  QString startAddress_;  // what the only-under-the-root rule compares against
  SuffixIndex links_;
  std::deque<Question> questions_;  // in the order of the page
  int rowCount_ = 0;
  TimeSlice slice_;
};

}  // namespace zentorin
