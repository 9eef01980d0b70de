// SPDX-License-Identifier: MIT
#include "crawl/file_list_generator.h"

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
    Generate();
    ExpectLinks(links, depth);
  }
  EXPECT_EQ(server_.Hits("/d.html"), 1);
  EXPECT_EQ(files_.SelectedCount(), files_.Count());
  EXPECT_EQ(files_.CurrentRow(), files_.Count() - 1);
  EXPECT_TRUE(messages_.Texts().isEmpty());
  EXPECT_FALSE(failed_);
}

TEST_F(Generator, RowsTellWhereALinkWasFoundAndWhereItLeads) {
  Page("/", "d/p.html");
  Page("/d/p.html", "../f.mp3 /g.mp3");
  Generate();
  EXPECT_EQ(Rows(),
            "|-|     -|../f.mp3|~/d|~/d/p.html|~/f.mp3\n"
            "|-|     -|/g.mp3|~/d|~/d/p.html|~/g.mp3");
}

TEST_F(Generator, ListsThePagesThemselvesWhenAsked) {
  Page("/", "a.html x.zip http://h.test/b.html#top");
  Page("/b.html", "a.html");
  Set(TargetUrlItem::FilePattern, "(");
  EXPECT_EQ(Generate(true), GenerateResult::Finished);
  EXPECT_EQ(Rows(),
            "||    -|~/|~||~/\n"
            "||    -|a.html|~|~/|~/a.html\n"
            "||    -|~/b.html|~|~/|~/b.html");
  EXPECT_EQ(board_.FileCount(), "3");
  EXPECT_TRUE(messages_.Texts().isEmpty()) << "the file pattern is not used";
}

TEST_F(Generator, CrawlsAPageOnceAlsoUnderAnAddressThatALongerOneEndsWith) {
  Page("/", "a.html A.HTML ./a.html a.html#x go?to=http://h.test/b.html b.html #top");
  Generate(true);
  EXPECT_EQ(Links(), "~/ a.html go?to=~/b.html");
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
}

TEST_F(Generator, KeepsOnlyFilesWhoseDirectoryIsPartOfTheStartAddress) {
  Set(TargetUrlItem::Root, "http://h.test/s/index.html");
  Set(TargetUrlItem::SubPattern, "");
  Check(TargetUrlItem::OnlyUnderRoot);
  Page("/s/index.html",
       "a.mp3 ../b.mp3 http://h.test/s/c.mp3 HTTP://H.TEST/S/d.mp3 http://h.test/s/d/e.mp3 "
       "http://o.test/f.mp3 //o.test/g.mp3");
  Generate();
  EXPECT_EQ(Links(), "a.mp3 ../b.mp3 ~/s/c.mp3 HTTP://H.TEST/S/d.mp3 //o.test/g.mp3");
}

TEST_F(Generator, StartsFromTheAddressThatAnswered) {
  Set(TargetUrlItem::Root, "http://h.test/old/");
  server_.Route("/old/", Answer::Redirect("http://h.test/new/index.html"));
  Page("/new/index.html", "f.mp3");
  Generate();
  EXPECT_EQ(Rows(), "|-|     -|f.mp3|~/new|~/new/index.html|~/new/f.mp3");
  EXPECT_EQ(Short(job_.RootBase()), "~/old");
}

TEST_F(Generator, ExpandsDatesInTheRootByTheClock) {
  Set(TargetUrlItem::Root, "http://h.test/{yyyymmdd}/");
  Page("/20240501/", "f.mp3");
  Generate();
  EXPECT_EQ(Links(), "f.mp3");
}

TEST_F(Generator, WithoutPatternsListsTheRootAlone) {
  Set(TargetUrlItem::SubPattern, "");
  Set(TargetUrlItem::FilePattern, "");
  EXPECT_EQ(Generate(), GenerateResult::Finished);
  ASSERT_EQ(files_.Count(), 1);
  EXPECT_EQ(files_.Row(0).ToText(), "\t\thttp://h.test/");
  EXPECT_TRUE(server_.Requests().isEmpty());
}

TEST_F(Generator, PassesOverPagesThatCannotBeFetched) {
  Page("/", "dead.html cut.html a.html");
  server_.Route("/cut.html", Answer::Text("<a href=\"x.mp3\">").Ends(Answer::Ending::CutOff, 4));
  Page("/a.html", "a.mp3");
  for (const char* depth : {"1", "2"}) {
    Set(TargetUrlItem::Depth, depth);
    EXPECT_EQ(Generate(), GenerateResult::Finished);
    EXPECT_EQ(Links(), "a.mp3");
  }
  EXPECT_TRUE(messages_.Texts().isEmpty());
}

TEST_F(Generator, TellsWhyThereIsNoList) {
  // Root, the two patterns, and how the message begins.
  using Case = std::tuple<const char*, const char*, const char*, const char*>;
  for (const auto& [root, subPattern, filePattern, message] :
       {Case("http://h.test/{yyyy}/", "a", "b",
             "Zentorin|URL が見つかりません！\r\n\r\nhttp://h.test/{yyyy}/"),
        Case("http://h.test/", "a(", "b", "エラー発生|正規表現「a(」"),
        Case("http://h.test/", "a", "[", "エラー発生|正規表現「[」"),
        Case("", "a", "b", "Zentorin|URL が空白です！")}) {
    Set(TargetUrlItem::Root, root);
    Set(TargetUrlItem::SubPattern, subPattern);
    Set(TargetUrlItem::FilePattern, filePattern);
    messages_.boxes.clear();
    EXPECT_EQ(Generate() == GenerateResult::Refused, *root == 0);
    EXPECT_EQ(failed_, *root != 0);
    EXPECT_TRUE(messages_.Texts().join(u'|').startsWith(message)) << message;
  }
  EXPECT_EQ(server_.Hits("/"), 0) << "a bad expression asks no server";
}

TEST_F(Generator, AsksForASelectedJob) {
  QList<FocusTarget> focus;
  QObject::connect(&board_, &StatusBoard::FocusRequested,
                   [&focus](FocusTarget target) { focus << target; });
  urlList_.ReplaceAll({});
  urlList_.Select(-1);
  for (const char* description : {"", "x"}) {
    Set(TargetUrlItem::Description, description);
    for (const auto field :
         {TargetUrlItem::Root, TargetUrlItem::SubPattern, TargetUrlItem::FilePattern}) {
      Set(field, "");
    }
    EXPECT_EQ(Generate(), GenerateResult::Refused);
  }
  EXPECT_EQ(messages_.Texts(), QStringList({"Zentorin|URL リストを選択して下さい。",
                                            "Zentorin|リストに追加（リストで右クリック→追加（下）"
                                            "）後に入力して下さい。"}));
  EXPECT_EQ(focus, QList<FocusTarget>({FocusTarget::UrlList, FocusTarget::UrlList}));
}

TEST_F(Generator, NamesARunawayExpressionOnceAtTheEnd) {
  Set(TargetUrlItem::FilePattern, "^<a (x+x+)+[yz]");
  QByteArray html;
  for (int i = 0; i < 20; ++i) html += "<a " + QByteArray(60, 'x') + ">";
  server_.Route("/", Answer::Text(html));
  EXPECT_EQ(Generate(), GenerateResult::Finished);
  EXPECT_TRUE(failed_);
  ASSERT_EQ(messages_.boxes.size(), 1U);
  EXPECT_TRUE(messages_.Texts()[0].contains("(x+x+)+[yz]"_L1));
}

TEST_F(Generator, ACancelKeepsTheRowsFoundSoFar) {
  Page("/", "r.mp3 a.html b.html c.html");
  Page("/a.html", "a.mp3");
  Page("/c.html", "c.mp3");
  bool shown = false;
  server_.RouteTo("/b.html", [this, &shown](const ReceivedRequest&) {
    shown = board_.Busy() && board_.CancelEnabled() && board_.CancelShown() &&
            board_.ProgressShown() && board_.Progress() > 0 && board_.File() == u"b.html";
    state_.RequestCancel();
    return Answer().Ends(Answer::Ending::Silent);
  });
  EXPECT_EQ(Generate(), GenerateResult::Finished);
  EXPECT_TRUE(shown);
  EXPECT_EQ(Links(), "r.mp3 a.mp3");
  EXPECT_EQ(server_.Hits("/c.html"), 0);
  EXPECT_TRUE(messages_.Texts().isEmpty());
  EXPECT_FALSE(failed_);
}

TEST_F(Generator, LeavesABatchItsLockAndItsCancelButton) {
  Page("/", "r.mp3");
  state_.SetRunMode("一括");
  board_.SetBusy(true);
  board_.SetCancelShown(true);
  board_.SetCancelEnabled(true);
  FileListGenerator generator(context_);
  QCoro::waitFor(generator.Generate(false));
  EXPECT_TRUE(board_.Busy() && board_.CancelShown() && board_.CancelEnabled());
}

TEST_F(Generator, LeavesTheListOfADateFormatJobAlone) {
  Set(TargetUrlItem::Opt, "1");
  files_.Append(FileListRow::FromText("\t\t\tx"));
  EXPECT_EQ(Generate(), GenerateResult::Finished);
  EXPECT_EQ(Links(), "x");
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
  MyXMLHttpRequest http(engine, state_);
  CrawlContext context{http,          state_,   board_, messages_, clock_,
                       clockOptions_, urlList_, job_,   files_};
  FileListGenerator generator(context);
  QCoro::waitFor(generator.Generate(false));
  EXPECT_EQ(files_.Count(), kPages);
  EXPECT_EQ(files_.Row(1)[FileListRow::Link], "f5000.mp3");
  EXPECT_EQ(engine.requests, kPages + 1) << "one request a page";
}

}  // namespace
}  // namespace zentorin::test
