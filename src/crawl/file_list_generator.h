// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <QCoro/QCoroTask>

#include "base/cancel_token.h"

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
  // A page could not be had, or an expression is not valid or ran away. Rows may have come.
  bool failed = false;
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
  // These answer false after a fault.
  QCoro::Task<bool> BuildList(bool listOnly, CancelToken cancel);
  QCoro::Task<bool> CrawlFrom(QString rootUrl, Crawler& crawler, CancelToken cancel);
  QCoro::Task<bool> CheckPattern(const Pattern& pattern);
  QCoro::Task<void> Tell(QString text);

  CrawlContext context_;
};

}  // namespace zentorin
