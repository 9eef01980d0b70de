// SPDX-License-Identifier: MIT
#pragma once

#include <QDateTime>
#include <QString>
#include <optional>

#include <QCoro/QCoroTask>

#include "crawl/suffix_index.h"
#include "crawl/time_slice.h"
#include "net/my_xml_http_request.h"
#include "net/pattern.h"

namespace zentorin {

struct CrawlContext;

// The expression that a file pattern stands for: a few keywords stand for fixed ones, anything else
// for itself.
QString FileExpression(const QString& filePattern);

// Finds the files that the pages of one run link to and appends a row for each new one.
class PageExtractor {
 public:
  // `context` and `files` must outlive the extractor. The date window is counted back from
  // `reference`.
  PageExtractor(const CrawlContext& context, Pattern& files, QDateTime reference);

  // The address that the only-under-the-root rule compares against.
  void SetStartAddress(const QString& address) { startAddress_ = address; }

  // Appends the files of a fetched page. Ends early on a cancel.
  QCoro::Task<void> Extract(QString pageUrl, FetchedPage page);

  // Rows appended so far, also those that the user has removed from the list since.
  int RowCount() const { return rowCount_; }

 private:
  // The page in hand.
  struct Source {
    QString url;
    QString base;
  };
  // A file's modification date in the clock label's time.
  using FileDate = std::optional<QDateTime>;

  QCoro::Task<void> TakeCandidate(const Source& source, QString candidate);
  QCoro::Task<FileDate> AskDate(QString address);
  QCoro::Task<QString> AskSize(QString address);
  bool InDateWindow(const FileDate& date) const;
  bool UnderRoot(const QString& candidate) const;

  const CrawlContext& context_;
  Pattern& files_;
  QDateTime reference_;
  QString startAddress_;
  SuffixIndex links_;
  int rowCount_ = 0;
  TimeSlice slice_;
};

}  // namespace zentorin
