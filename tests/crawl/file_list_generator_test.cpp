// SPDX-License-Identifier: MIT
#include "crawl/file_list_generator.h"

#include <algorithm>
#include <random>

#include "tests/crawl/crawl_fixture.h"
#include "tests/crawl/memory_engine.h"

namespace zentorin::test {

using namespace Qt::Literals::StringLiterals;

namespace {

using Generator = CrawlTest;

TEST_F(Generator, FollowsLinksDepthFirstDownToTheChosenDepth) {
  Page("/", "r.mp3 a.html b.html");
  Page("/a.html", "a.mp3 c.html");
  Page("/b.html", "b.mp3");
  Page("/c.html", "c.mp3 d.html");
  Page("/d.html", "d.mp3");
  for (const auto& [depth, links] : {std::pair("0", "r.mp3"), std::pair("1", "r.mp3 a.mp3 b.mp3"),
                                     std::pair("2", "r.mp3 c.mp3 a.mp3 b.mp3"),
                                     std::pair("9", "r.mp3 d.mp3 c.mp3 a.mp3 b.mp3")}) {
    Set(TargetUrlItem::Depth, depth);
    EXPECT_FALSE(Generate().failed);
    EXPECT_EQ(Links(), links) << depth;
    EXPECT_EQ(activity.Now().found, files.Count());
  }
  EXPECT_EQ(server.Hits("/d.html"), 1);
  EXPECT_EQ(files.SelectedCount(), files.Count());
  EXPECT_EQ(files.CurrentRow(), files.Count() - 1);
  EXPECT_TRUE(messages.Texts().isEmpty());
}

TEST_F(Generator, RowsTellWhereALinkWasFoundAndWhereItLeads) {
  Set(TargetUrlItem::Root, "http://h.test/{yyyymmdd}/");
  server.Route("/20240501/", Answer::Redirect("http://h.test/new/index.html"));
  Page("/new/index.html", "f.mp3 /new/d/p.html");
  Page("/new/d/p.html", "../e.mp3 /g.mp3");
  Generate();
  EXPECT_EQ(Rows(),
            "|-|     -|f.mp3|~/new|~/new/index.html|~/new/f.mp3\n"
            "|-|     -|../e.mp3|~/new/d|~/new/d/p.html|~/new/e.mp3\n"
            "|-|     -|/g.mp3|~/new/d|~/new/d/p.html|~/g.mp3");
  EXPECT_EQ(Short(job.RootBase()), "~/20240501");
}

TEST_F(Generator, FollowsLinksFromTheAddressThatAnsweredAndWithoutTheirReferences) {
  Page("/", "s#x go.cgi?a=1&amp;b=&#50;#top p.html&#35;top");
  server.Route("/s", Answer::Redirect("http://h.test/v1.0/s.html"));
  Page("/v1.0/s.html", "t.html s.mp3");
  Page("/v1.0/t.html", "t.mp3");
  Page("/go.cgi?a=1&b=2", "go.mp3");
  Page("/p.html", "p.mp3");
  Set(TargetUrlItem::Depth, "2");
  EXPECT_FALSE(Generate().failed);
  EXPECT_EQ(Column(FileListRow::Address), "~/v1.0/t.mp3 ~/v1.0/s.mp3 ~/go.mp3 ~/p.mp3");
  Generate(true);
  EXPECT_EQ(Links(), "~/ t.html s go.cgi?a=1&amp;b=&#50; p.html");
}

TEST_F(Generator, ASiteThatMovedAsAWholeIsTheBaseOfItsRoot) {
  using Case = std::tuple<const char*, const char*, const char*>;
  for (const auto& [root, answered, base] :
       {Case("http://h.test/a/", "http://www.h.test/a/", "http://www.h.test/a"),
        Case("http://www.h.test/a/", "http://h.test/new/", "~/a"),
        Case("http://h.test/a/", "http://o.test/a/", "~/a"),
        Case("http://h.test/a/", "http://h.test/b/", "~/a")}) {
    server.SetFallback([&](const ReceivedRequest& request) {
      const bool final = answered == "http://" + request.host + request.target;
      return final ? Answer::Text("<p>") : Answer::Redirect(answered);
    });
    Set(TargetUrlItem::Root, root);
    Generate();
    EXPECT_EQ(Short(job.RootBase()), base) << root << " " << answered;
  }
}

TEST_F(Generator, ListsThePagesThemselvesOnceAlsoUnderAnAddressThatALongerOneEndsWith) {
  Page("/",
       "a.html x.zip A.HTML ./a.html a.html#x go?to=http://h.test/b.html b.html #top "
       "http://h.test/c.html#top");
  Page("/a.html", "/ a.html");
  Set(TargetUrlItem::FilePattern, "(");
  EXPECT_FALSE(Generate(true).failed);
  EXPECT_EQ(Rows(),
            "||    -|~/|~||~/\n"
            "||    -|a.html|~|~/|~/a.html\n"
            "||    -|go?to=~/b.html|~|~/|~/go?to=~/b.html\n"
            "||    -|~/c.html|~|~/|~/c.html");
  EXPECT_EQ(activity.Now().found, 4);
  EXPECT_TRUE(messages.Texts().isEmpty()) << "the file pattern is not used";
}

TEST_F(Generator, StaysUnderTheRootByTheTextOfAddresses) {
  Set(TargetUrlItem::Root, "http://h.test/s/index.html");
  Set(TargetUrlItem::Depth, "2");
  Check(TargetUrlItem::OnlyUnderRoot);
  Page("/s/index.html", "d/p.html http://o.test/1.html");
  Page("/s/d/p.html",
       "q.html http://o.test/2.html http://o.test/?r=http://h.test/s/index.html //o.test/3.html");
  Generate(true);
  EXPECT_EQ(Links(),
            "~/s/index.html q.html http://o.test/?r=~/s/index.html "
            "//o.test/3.html d/p.html http://o.test/1.html");
  Set(TargetUrlItem::SubPattern, "");
  Page("/s/index.html",
       "a.mp3 ../b.mp3 http://h.test/s/c.mp3 HTTP://H.TEST/S/d.mp3 http://h.test/s/d/e.mp3 "
       "http://o.test/f.mp3 //o.test/g.mp3");
  Generate();
  EXPECT_EQ(Links(), "a.mp3 ../b.mp3 ~/s/c.mp3 HTTP://H.TEST/S/d.mp3 //o.test/g.mp3")
      << "those whose directory is a part of the start address";
}

TEST_F(Generator, AsksNoServerWithoutPatternsOrForADateFormatJob) {
  Set(TargetUrlItem::SubPattern, "");
  Set(TargetUrlItem::FilePattern, "");
  EXPECT_FALSE(Generate().failed);
  EXPECT_EQ(Rows(), "||~/");
  Set(TargetUrlItem::FilePattern, "x");
  Set(TargetUrlItem::Opt, "1");
  files.Append(FileListRow::FromText("\t\t\tx"));
  EXPECT_FALSE(Generate().failed);
  EXPECT_EQ(Links().trimmed(), "x");
  EXPECT_TRUE(server.Requests().isEmpty());
}

TEST_F(Generator, PassesOverPagesThatCannotBeFetched) {
  Page("/", "dead.html cut.html a.html");
  server.Route("/cut.html", Answer::Text("<a href=\"x.mp3\">").Ends(Answer::Ending::CutOff, 4));
  Page("/a.html", "a.mp3");
  for (const char* depth : {"1", "2"}) {
    Set(TargetUrlItem::Depth, depth);
    EXPECT_TRUE(Generate().failed) << "one broke off";
    EXPECT_EQ(Links(), "a.mp3");
  }
  EXPECT_TRUE(activity.Now().message.text.contains("http://h.test/cut.html（h.test: 応答が途中で"));
  EXPECT_EQ(Generate(true).missing.Text(), "リンク切れ 1・途中で切断 1");
  EXPECT_TRUE(activity.Now().message.text.contains(" バイト）"));
  EXPECT_EQ(files.Reason(1), "h.test: HTTP 404");
  EXPECT_TRUE(messages.Texts().isEmpty());
}

TEST_F(Generator, TellsOnceWhyThereIsNoList) {
  server.Route("/", Answer::Text(("<a " + QByteArray(60, 'x') + '>').repeated(20)));
  // Root, the two patterns, and how the message begins.
  using Case = std::tuple<const char*, const char*, const char*, const char*>;
  for (const auto& [root, subPattern, filePattern, message] :
       {Case("http://h.test/{yyyy}/", "a", "b",
             "Zentorin|URL が見つかりません！\r\n\r\nhttp://h.test/{yyyy}/"),
        Case("http://h.test/", "a(", "b", "エラー発生|正規表現「a(」"),
        Case("http://h.test/", "a", "[", "エラー発生|正規表現「[」"),
        Case("", "a", "b", "Zentorin|URL が空白です！"),
        Case("http://h.test/", "y", "^<a (x+x+)+[yz]", "エラー発生|正規表現「^<a (x+x+)+[yz]」")}) {
    Set(TargetUrlItem::Root, root);
    Set(TargetUrlItem::SubPattern, subPattern);
    Set(TargetUrlItem::FilePattern, filePattern);
    messages.boxes.clear();
    const ListOutcome outcome = Generate();
    EXPECT_EQ(outcome.refusal == ListOutcome::Refusal::NoRootUrl, *root == 0);
    EXPECT_EQ(outcome.failed, *root != 0);
    EXPECT_EQ(outcome.rootMissing, QString(message).contains("見つかりません"));
    EXPECT_EQ(outcome.missing.Text() == "正規表現で中止 1", QString(message).contains("正規表現"));
    ASSERT_EQ(messages.boxes.size(), 1U) << message;
    EXPECT_TRUE(messages.Texts()[0].startsWith(message)) << messages.Texts()[0].toStdString();
  }
  EXPECT_EQ(server.Hits("/"), 1) << "a bad expression asks no server";
  urlList.Select(-1);
  messages.boxes.clear();
  for (const char* typed : {"", "x"}) {
    Set(TargetUrlItem::Description, typed);
    EXPECT_EQ(Generate().refusal, ListOutcome::Refusal::NoJob);
  }
  EXPECT_EQ(messages.Texts(), QStringList({"Zentorin|URL リストを選択して下さい。",
                                           "Zentorin|リストに追加（リストで右クリック→追加（下）"
                                           "）後に入力して下さい。"}));
}

TEST_F(Generator, ACancelKeepsTheRowsFoundSoFar) {
  Page("/", "r.mp3 a.html b.html c.html");
  Page("/a.html", "a.mp3");
  Page("/c.html", "c.mp3");
  CancelSource source;
  ActivityState met;
  server.Route("/b.html", Answer().Ends(Answer::Ending::Silent));
  QObject::connect(&activity, &Activity::Changed, &files, [&] {
    if (activity.Now().address == "b.html" && !source.Token().Cancelled()) {
      met = activity.Now();
      source.Cancel();
    }
  });
  EXPECT_FALSE(Generate(false, source).failed);
  EXPECT_EQ(met.phase, zentorin::Phase::Listing);
  EXPECT_EQ(met.address, "b.html");
  EXPECT_GT(met.share, 0);
  EXPECT_EQ(Links(), "r.mp3 a.mp3");
  EXPECT_TRUE(messages.Texts().isEmpty());
}

// The walk told plainly: which pages are asked for, and which files are found in which order.
struct PlainWalk {
  void Follow(const QString& page, int depth) {
    for (const QString& link : pages.value(page)) {
      const auto known = [&](const QString& seen) {
        return seen.endsWith(link, Qt::CaseInsensitive);
      };
      if (depth > most || std::ranges::any_of(visited, known)) continue;
      visited += link;
      asked += link;
      if (!pages.contains(link)) continue;
      if (depth < most) Follow(link, depth + 1);
      files += link + ".mp3";
    }
  }

  QHash<QString, QStringList> pages;  // what each links to; others are not there
  int most = 0;
  QStringList visited;
  QStringList asked;
  QStringList files;
};

TEST_F(Generator, FetchingAheadAsksForNothingElseAndChangesNoRow) {
  std::mt19937 random(3);
  const auto upTo = [&random](int most) { return std::uniform_int_distribution(0, most)(random); };
  // Letter case and an address inside another one decide what counts as visited.
  const QStringList names = {"p1", "P1", "p2", "p3", "P3", "p4", "p5", "q?u=http://h.test/p2"};
  for (int site = 0; site < 200; ++site) {
    PlainWalk walk;
    walk.most = upTo(3);
    walk.pages["http://h.test/"] = {};
    for (const QString& name : names) {
      if (upTo(5) > 0) walk.pages["http://h.test/" + name] = {};
    }
    for (QStringList& links : walk.pages) {
      for (int i = upTo(5); i > 0; --i) links += "http://h.test/" + names[upTo(7)];
    }
    server.SetFallback([&](const ReceivedRequest& request) {
      const QString page = "http://h.test" + request.target;
      if (!walk.pages.contains(page)) return Answer::Status(404);
      QString html = page == "http://h.test/" ? "" : "<a file=\"" + page + ".mp3\">";
      for (const QString& link : walk.pages[page]) html += "<a href=\"" + link + "\">";
      return Answer::Text(html.toUtf8());
    });
    walk.Follow("http://h.test/", 1);
    Set(TargetUrlItem::Depth, QByteArray::number(walk.most).constData());
    Set(TargetUrlItem::FilePattern, R"re(file="(.+?\.mp3)")re");
    const qsizetype before = server.Requests().size();
    Generate();
    QStringList asked;
    for (const ReceivedRequest& request : server.Requests().mid(before + 1)) {
      asked += "http://h.test" + request.target;
    }
    asked.sort();
    walk.asked.sort();
    ASSERT_EQ(asked, walk.asked) << site;
    QStringList found;
    for (int row = 0; row < files.Count(); ++row) found += files.Row(row)[FileListRow::Link];
    QStringList wanted;
    for (const QString& file : walk.files) {
      const auto known = [&](const QString& one) {
        return one.endsWith(file, Qt::CaseInsensitive);
      };
      if (std::ranges::none_of(wanted, known)) wanted += file;
    }
    ASSERT_EQ(found, wanted) << site;
  }
}

TEST_F(Generator, PagesWhoseLinksAreFollowedAlsoComeAheadOnASiteOfPlainAddresses) {
  constexpr int kPages = 60;
  QByteArray links;
  for (int i = 0; i < kPages; ++i) links += "p" + QByteArray::number(i) + ".html ";
  Page("/", links.trimmed().constData());
  int most = 0;
  server.SetFallback([&](const ReceivedRequest& request) {
    most = std::max(most, server.Busy());
    Answer page = Answer::Text("<a href=\"/\"><a href=\"" + request.target.toUtf8() + ".mp3\">");
    page.pieceBytes = 20;
    page.pieceInterval = std::chrono::milliseconds(3);
    return page;
  });
  Set(TargetUrlItem::Depth, "3");
  Generate();
  EXPECT_EQ(files.Count(), kPages);
  EXPECT_GT(most, 3);
  EXPECT_EQ(server.Requests().size(), kPages + 1 + 1) << "the root is a link, too";
}

TEST_F(Generator, ADeadHostIsGivenUpAndALiveOneIsNot) {
  FakeWorkspace other(home, "dead.test::127.0.0.1:1," + server.ConnectTo());
  QByteArray links;
  for (int i = 0; i < 40; ++i) {
    const QByteArray number = QByteArray::number(i);
    links += "http://dead.test/" + number + " http://h.test/" + number + " f" + number + ".mp3 ";
    server.Route("h.test/" + number, Answer::Text("<a href=\"g" + number + ".mp3\">"));
  }
  Page("/", links.trimmed().constData());
  Workspace& there = other.workspace;
  there.choices.firstPause = workspace.choices.firstPause;
  there.urlList.InsertBelow(-1, urlList.Item(0));
  there.urlList.Select(0);
  const ListOutcome outcome = QCoro::waitFor(there.generator.Generate(false, {}));
  EXPECT_TRUE(outcome.failed);
  EXPECT_EQ(there.files.Count(), 80);
}

TEST_F(Generator, SurvivesALongChainOfPages) {
  constexpr int kPages = 5000;
  Set(TargetUrlItem::Depth, "1000000");
  MemoryEngine engine([](const QString& url) {
    const int page = url.section(u'/', -1).toInt();
    if (page >= kPages) return QByteArray();
    const QByteArray next = QByteArray::number(page + 1);
    return "<a href=\"/" + next + "\"><a href=\"f" + next + ".mp3\">";
  });
  MyXMLHttpRequest http(engine, activity, workspace.choices);
  const CrawlContext c = CrawlContextOf(workspace);
  FileListGenerator generator(
      {http, c.activity, c.messages, c.clock, c.urlList, c.job, c.files, c.choices});
  QCoro::waitFor(generator.Generate(false, {}));
  EXPECT_EQ(files.Count(), kPages);
  EXPECT_EQ(files.Row(1)[FileListRow::Link], "f5000.mp3");
  EXPECT_EQ(engine.requests, kPages + 1) << "one request a page";
}

}  // namespace
}  // namespace zentorin::test
