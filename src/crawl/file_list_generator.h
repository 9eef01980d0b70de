// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <QCoro/QCoroTask>

namespace zentorin {

class Crawler;
class DisplayClock;
class FileList;
class JobEditor;
class MessageBoxes;
class MyXMLHttpRequest;
class Pattern;
class RunState;
class StatusBoard;
class UrlList;
struct ClockOptions;

// What the crawl works on and with. All must outlive the generator.
struct CrawlContext {
  MyXMLHttpRequest& http;
  RunState& state;
  StatusBoard& board;
  MessageBoxes& messages;
  const DisplayClock& clock;
  const ClockOptions& clockOptions;
  UrlList& urlList;
  JobEditor& job;
  FileList& files;
};

enum class GenerateResult {
  Finished = -1,  // also after a cancel and after a page that was not found
  Refused = 2,    // no job or no root URL; the user was told
};

// "ファイルリスト生成": fetches the root page of the job being edited, follows its links down to
// the chosen depth and fills the file list. It also keeps the board's row count empty for an
// emptied list. One run at a time; the generator must outlive it.
class FileListGenerator {
 public:
  explicit FileListGenerator(const CrawlContext& context);

  // `listOnly`: lists the pages that the crawl visits instead of their files.
  QCoro::Task<GenerateResult> Generate(bool listOnly);

  // True when the last Generate() was ended by a fault that the user was told of: the root page was
  // not found, an expression is not valid or ran away, a run-time error.
  bool LastRunFailed() const { return lastRunFailed_; }

 private:
  QCoro::Task<bool> CheckInput();
  QCoro::Task<void> BuildList(bool listOnly);
  QCoro::Task<void> CrawlFrom(QString rootUrl, Crawler& crawler);
  // Tells the user of the pattern's fault, if it has one; true when there was none.
  QCoro::Task<bool> CheckPattern(const Pattern& pattern);
  QCoro::Task<void> Tell(QString text);

  CrawlContext context_;
  bool lastRunFailed_ = false;
};

}  // namespace zentorin
