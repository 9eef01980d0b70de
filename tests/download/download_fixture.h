// SPDX-License-Identifier: MIT
#pragma once

#include <QDirIterator>

#include <gtest/gtest.h>

#include "base/display_clock.h"
#include "base/drives.h"
#include "base/run_state.h"
#include "base/status_board.h"
#include "crawl/file_list.h"
#include "crawl/file_list_generator.h"
#include "download/run_driver.h"
#include "jobs/job_editor.h"
#include "jobs/log_file.h"
#include "jobs/url_list.h"
#include "net/curl_http_engine.h"
#include "net/my_xml_http_request.h"
#include "tests/support/fakes.h"
#include "tests/support/loopback_server.h"
#include "tests/support/temp_dir.h"

namespace zentorin::test {

// Everything that a download works with, on a folder of its own and a server that plays every host.
// The list holds one job, "daily", that saves into "save".
class DownloadTest : public testing::Test {
 protected:
  DownloadTest() {
    options.openFolder = false;
    AddJob("daily", "http://site.test/dir/index.html");
    urlList.Select(0);
  }

  void AddJob(const char* description, const char* root) {
    TargetUrlItem item;
    item.Set(TargetUrlItem::Description, description);
    item.Set(TargetUrlItem::Root, root);
    item.Set(TargetUrlItem::SavePath, "save");
    urlList.InsertBelow(urlList.Count() - 1, item);
  }

  void Add(const QString& address, const QString& date = {}) {
    FileListRow row;
    row.Set(FileListRow::Date, date);
    row.Set(FileListRow::Link, address);
    row.Set(FileListRow::Address, address);
    files.Append(row);
  }

  void RunRows() {
    DownloadRun run(context);
    QCoro::waitFor(run.Run());
    lastRunFailed = run.LastRunFailed();
  }

  // Runs one row alone and answers its mark.
  QString MarkOf(const QString& address, const QString& date = {}) {
    files.ClearFileList();
    Add(address, date);
    RunRows();
    return files.Row(0)[FileListRow::Mark];
  }

  // Of all rows in order: "o|?|x".
  QString Marks() const {
    QStringList marks;
    for (int row = 0; row < files.Count(); ++row) marks.append(files.Row(row)[FileListRow::Mark]);
    return marks.join(u'|');
  }

  // log.txt without the header line and the end of its last entry.
  QByteArray LogText() const {
    QByteArray text = home.Read("log.txt");
    text = text.mid(text.lastIndexOf("-- 2024/05/01 23:30:05 ----\r\n") + 29);
    return text.endsWith("\r\n\r\n\r\n") ? text.chopped(6) : "no end: " + text;
  }

  // The files below the save folder, by name: "a|folder/b".
  QString Saved() const {
    QStringList names;
    QDirIterator it(home.Path("save"), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (it.hasNext()) names.append(it.next().mid(home.Path("save/").size()));
    names.sort();
    return names.join(u'|');
  }

  DownloadContext ContextWith(StreamCapture& streams) {
    return {engine, http,   state,   board,        messages, streams, opener,
            log,    drives, options, clockOptions, job,      files,   shownClock};
  }

  TempDir home;
  LoopbackServer server;
  RunState state;
  StatusBoard board;
  RecordingMessageBoxes messages;
  RecordingOpener opener;
  FakeStreamCapture capture;
  RecordingPowerControl power;
  SettableClock clock;
  Drives drives{home.Path()};
  LogFile log{home.Path("log.txt"), clock};
  DownloadOptions options;
  ClockOptions clockOptions;
  DisplayClock shownClock{clock, clockOptions};
  UrlList urlList;
  JobEditor job{urlList};
  FileList files;
  CurlHttpEngine engine{state, server.ConnectTo()};
  MyXMLHttpRequest http{engine, state};
  DownloadContext context = ContextWith(capture);
  CrawlContext crawl{http, state, board, messages, shownClock, clockOptions, urlList, job, files};
  FileListGenerator generator{crawl};
  bool lastRunFailed = false;
};

}  // namespace zentorin::test
