// SPDX-License-Identifier: MIT
#pragma once

#include <QCoro/QCoroTask>
#include <gtest/gtest.h>

#include "base/display_clock.h"
#include "base/run_state.h"
#include "base/status_board.h"
#include "crawl/file_list.h"
#include "crawl/file_list_generator.h"
#include "jobs/job_editor.h"
#include "jobs/url_list.h"
#include "net/curl_http_engine.h"
#include "net/my_xml_http_request.h"
#include "tests/support/fakes.h"
#include "tests/support/loopback_server.h"

namespace zentorin::test {

using namespace Qt::Literals::StringLiterals;

// One selected job on a site that the loopback server serves as http://h.test/ (and any other
// host). Links are all that is quoted after "href=", files are what ends in ".mp3".
class CrawlTest : public testing::Test {
 protected:
  CrawlTest() {
    urlList_.ReplaceAll({TargetUrlItem().ToLine()});
    urlList_.Select(0);
    Set(TargetUrlItem::Root, "http://h.test/");
    Set(TargetUrlItem::SubPattern, R"re(href="(.+?)")re");
    Set(TargetUrlItem::FilePattern, R"re(href="(.+?\.mp3)")re");
    Set(TargetUrlItem::Depth, "1");
  }

  void Set(TargetUrlItem::Field field, const char* value) { job_.Edit(field, value); }
  void Check(TargetUrlItem::Field flag) { job_.EditFlag(flag, true); }

  // A page whose links are the words of `links`.
  void Page(const char* target, const char* links) {
    QByteArray html;
    for (const QByteArray& link : QByteArray(links).split(' ')) {
      html += "<a href=\"" + link + "\">x</a>\n";
    }
    server_.Route(target, Answer::Text(html));
  }

  GenerateResult Generate(bool listOnly = false) {
    FileListGenerator generator(context_);
    const GenerateResult result = QCoro::waitFor(generator.Generate(listOnly));
    failed_ = generator.LastRunFailed();
    EXPECT_FALSE(board_.Busy());
    EXPECT_FALSE(board_.CancelEnabled() || board_.CancelShown() || board_.ProgressShown());
    EXPECT_EQ(files_.rowCount(), files_.Count()) << "views know every row at the end";
    return result;
  }

  // One column of all rows, joined by blanks; the host "h.test" is written "~".
  QString Column(FileListRow::Column column) const {
    QStringList texts;
    for (int row = 0; row < files_.Count(); ++row) texts << files_.Row(row)[column];
    return Short(texts.join(u' '));
  }
  QString Links() const { return Column(FileListRow::Link); }
  // All rows, one a line, their columns joined by "|".
  QString Rows() const {
    QStringList rows;
    for (int row = 0; row < files_.Count(); ++row) rows << files_.Row(row).ToText();
    return Short(rows.join(u'\n').replace(u'\t', u'|'));
  }
  static QString Short(QString text) { return text.replace("http://h.test"_L1, "~"_L1); }
  void ExpectLinks(const char* links, const char* when) const {
    EXPECT_EQ(Links().toStdString(), links) << when;
    EXPECT_EQ(board_.FileCount(), QString::number(files_.Count())) << when;
  }

  LoopbackServer server_;
  RunState state_;
  StatusBoard board_;
  RecordingMessageBoxes messages_;
  SettableClock time_;
  ClockOptions clockOptions_;
  DisplayClock clock_{time_, clockOptions_};
  UrlList urlList_;
  JobEditor job_{urlList_};
  FileList files_;
  CurlHttpEngine engine_{state_, server_.ConnectTo()};
  MyXMLHttpRequest http_{engine_, state_};
  CrawlContext context_{http_,         state_,   board_, messages_, clock_,
                        clockOptions_, urlList_, job_,   files_};
  bool failed_ = false;
};

}  // namespace zentorin::test
