// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <QCoro/QCoroTask>

#include "base/cancel_token.h"
#include "net/miss_reason.h"

namespace zentorin {

class Activity;
class Crawler;
class DisplayClock;
class FileList;
class JobEditor;
class MessageBoxes;
class MyXMLHttpRequest;
class Pattern;
class UrlList;
struct FetchChoices;

struct CrawlContext {
  MyXMLHttpRequest& http;
  Activity& activity;
  MessageBoxes& messages;
  const DisplayClock& clock;
  UrlList& urlList;
  JobEditor& job;
  FileList& files;
  const FetchChoices& choices;
};

// The user has been told of a refusal and of a fault.
struct ListOutcome {
  enum class Refusal { None, NoJob, NoRootUrl };

  Refusal refusal = Refusal::None;
  // A page was not to be had, or an expression is not valid or ran away. Rows may have come.
  bool failed = false;
  bool rootMissing = false;  // nothing came of the root URL
  MissCounts missing;        // pages and expressions
};

// "ファイルリスト生成": fetches the root page of the job being edited, follows its links down to
// the chosen depth and fills the file list.
class FileListGenerator {
 public:
  explicit FileListGenerator(const CrawlContext& context) : context_(context) {}

  // `listOnly`: lists the pages that the crawl visits instead of their files. One run at a time.
  QCoro::Task<ListOutcome> Generate(bool listOnly, CancelToken cancel);

 private:
  QCoro::Task<ListOutcome::Refusal> CheckInput();
  QCoro::Task<void> BuildList(bool listOnly, ListOutcome& outcome, CancelToken cancel);
  QCoro::Task<void> CrawlFrom(QString rootUrl, Crawler& crawler, ListOutcome& outcome,
                              CancelToken cancel);
  // False after a fault.
  QCoro::Task<bool> CheckPattern(const Pattern& pattern, ListOutcome& outcome);
  QCoro::Task<void> Tell(QString text);

  CrawlContext context_;
};

}  // namespace zentorin
