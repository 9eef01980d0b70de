// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QRegularExpression>
#include <QString>
#include <optional>
#include <vector>

namespace zentorin::demo {

// One answer of the sample site.
struct SampleFile {
  QByteArray contentType;
  QByteArray body;
  QDateTime lastModified;
};

// The files of demo/site: a folder for each host, its files under their paths. They are kept as
// UTF-8; pages leave in the character set that served-as.txt names. Names such as
// "news{yyyymmdd}.mp3" stand for every date, and in pages such templates become today's.
class SampleSite {
 public:
  // `today` dates the files and fills the templates of pages.
  SampleSite(const QString& folder, QDateTime today);

  // Empty when the folder was read, else what is wrong with it.
  const QString& Fault() const { return fault_; }

  // `path` as in a request line, percent-encoded and perhaps with a query.
  std::optional<SampleFile> Find(const QString& host, const QString& path) const;

 private:
  struct Entry {
    QString file;            // path on disk
    QRegularExpression url;  // host and path, decoded
    QByteArray charset;      // empty: bytes as they are
    bool charsetInHeader = false;
    int ageDays = 30;
  };

  void ReadTable(const QString& path);

  QDateTime today_;
  std::vector<Entry> entries_;
  QString fault_;
};

}  // namespace zentorin::demo
