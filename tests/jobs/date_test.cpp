// SPDX-License-Identifier: MIT
#include <QRegularExpression>

#include <gtest/gtest.h>

#include "jobs/date_format.h"
#include "jobs/date_template.h"
#include "jobs/date_text.h"
#include "tests/support/random_text.h"

namespace zentorin {
namespace {

QDateTime Wall(const char* text) {
  QDateTime time = QDateTime::fromString(text, Qt::ISODate);
  time.setTimeSpec(Qt::UTC);
  return time;
}

using Case = std::pair<const char*, const char*>;

TEST(DateFormat, WritesEveryToken) {
  const auto expect = [](const char* date, std::initializer_list<Case> cases) {
    for (const auto& [format, text] : cases) {
      EXPECT_EQ(FormatDate(Wall(date), format), text) << date << " as " << format;
    }
  };
  // A Wednesday.
  expect("2024-05-01T09:07:03",
         {Case("yyyymmddhhnnss", "20240501090703"), Case("YY-M-D H:N:S", "24-5-1 9:7:3"),
          Case("hhmm h:m h時mm分 mm", "0907 9:7 9時07分 05"), Case("hh yyyy mm", "09 2024 05"),
          Case("mmmm mmm oooo ooo", "May May 5月 ooo"), Case("", "2024/05/01 09:07:03"),
          Case("dddd ddd aaaa aaa aa w", "Wednesday Wed 水曜日 水 aa 4"),
          Case("yyy q y ww", "24122 2 122 18"), Case("ggge年 gg ee g", "令和6年 令 06 R"),
          Case("ddddd|ttttt", "2024/05/01|09:07:03"), Case("\"open d", "open d"),
          Case("\"day \"d\\d\\\"\"日付:_😀", "day 1d\"日付:_😀"), Case("d\\", "1\\")});
  // A Tuesday; the Sunday before it begins a week.
  expect("2024-12-31T23:30:05", {Case("ddddddd y ww q", "2024年12月31日31 366 53 4"),
                                 Case("h:nn AM/PM, hh am/pm", "11:30 PM, 11 pm"),
                                 Case("hA/P ha/p AMPMh", "11P 11p 午後11")});
  expect("2024-12-29T00:00:00", {Case("hh AM/PM", "12 AM"), Case("", "2024/12/29"),
                                 Case("w ww dddd aaa", "1 53 Sunday 日")});
  expect("2024-05-01T12:00:00", {Case("h ampm", "12 午後")});
  expect("2019-04-30T00:00:00", {Case("ggge", "平成31")});
  expect("1867-12-31T00:00:00", {Case("[g]e", "[]1867")});
  expect("no date", {Case("yyyymmdd", "")});
}

// An empty result stands for none.
void ExpectRead(std::optional<QDateTime> (*parse)(const QString&),
                std::initializer_list<Case> dates) {
  for (const auto& [text, date] : dates) {
    const QString read = parse(text).value_or(QDateTime()).toString("yyyy-MM-dd HH:mm:ss");
    EXPECT_EQ(read, date) << text;
  }
}

TEST(DateText, ReadsTheThreeFormsOfHttpDates) {
  ExpectRead(ParseHttpDate, {{"Wednesday, 01-May-24 12:34:56 GMT", "2024-05-01 12:34:56"},
                             {"Sunday, 06-Nov-94 08:49:37 GMT", "1994-11-06 08:49:37"},
                             {"Sun Nov  6 08:49:37 1994", "1994-11-06 08:49:37"},
                             {" wed, 1 may 2024 2:34:56 +0000 ", "2024-05-01 02:34:56"},
                             {"1 September 2024 12:34 UTC", "2024-09-01 12:34:00"},
                             {"Sat, 31 Dec 2016 23:59:60 GMT", "2016-12-31 23:59:59"},
                             {"Wed, 31 Feb 2024 12:34:56 GMT", ""},
                             {"Wed, 01 May 2024 24:00:00 GMT", ""},
                             {"Wed, 01 May 2024 12:34:56 +0900", ""},
                             {"Wed, 01-May 2024 12:34:56 GMT", ""}});
}

TEST(DateText, ReadsDatesAndTimesAsPeopleWriteThem) {
  ExpectRead(ParseDateText, {{" 2024.05.01  1:02:03 ", "2024-05-01 01:02:03"},
                             {"2024/05/01", "2024-05-01 00:00:00"},
                             {"２：３０　", "1899-12-30 02:30:00"}});
  for (const char* text : {"24:00", "2024/05-01", "2023/02/29", "2024/05/0112:00", "11", ""}) {
    ExpectRead(ParseDateText, {{text, ""}});
  }
}

// The rule as it is told: each template in turn replaces its text everywhere.
QString ExpandInTurns(QString text, const QDateTime& date) {
  static const QRegularExpression form("\\{([^{}]*)\\}");
  QStringList templates;
  for (auto found = form.globalMatch(text); found.hasNext();) templates += found.next().captured();
  for (const QString& one : templates) text.replace(one, FormatDate(date, one.chopped(1).mid(1)));
  return text;
}

TEST(DateTemplate, GivesWhatReplacingTemplateByTemplateGives) {
  const QDateTime date = Wall("2011-05-15T00:00:00");
  EXPECT_EQ(ExpandDateTemplates("http://host/{yyyy-mm}/a{yyyymmdd}.mp3{}{{yyyy}}}{yyyy{", date),
            "http://host/2011-05/a20110515.mp32011/05/15{2011}}{yyyy{");
  const QStringList parts = {"{", "{", "}", "}", "d", "15", "1", "dd", "{15}"};
  QRandomGenerator random(1);
  for (int round = 0; round < 20'000; ++round) {
    const QString text = test::RandomText(random, parts, 14);
    ASSERT_EQ(ExpandDateTemplates(text, date), ExpandInTurns(text, date)) << text.toStdString();
  }
}

TEST(DateTemplate, OfARootOnlyPlainDatesAreMeantUntilTheJobNamesItsFilesByDate) {
  TargetUrlItem job;
  job.Set(TargetUrlItem::Root, "http://h/{yyyy}/{yyyy年m月}/{mm-dd hh:nn}/{id}/{3F25}/{}/{-}/{d1}");
  const QDateTime date = Wall("2011-05-15T01:02:00");
  const QString plain = "http://h/2011/2011年5月/05-15 01:02/{id}/{3F25}/{}/{-}/{d1}";
  EXPECT_EQ(ExpandedRoot(job, date), plain);
  job.Set(TargetUrlItem::Format, "x");
  EXPECT_EQ(ExpandedRoot(job, date), plain) << "no day window";
  job.SetBeforeElement(0, "1");
  EXPECT_TRUE(ExpandedRoot(job, date).endsWith("/i15/3F25/2011/05/15 01:02:00/-/151"));
}

TEST(DateTemplate, CountsADayWindowBackFromToday) {
  using Window = std::tuple<const char*, const char*, const char*>;
  for (const auto& [first, second, text] :
       {Window("3", "0", "2024/03/01～2024/02/27"), Window("1", "", "2024/02/29～2024/02/29"),
        Window("0", "999999999", "2024/03/01～1924/03/26")}) {
    EXPECT_EQ(DayWindowText(ParseDayWindow(first, second), QDate(2024, 3, 1)), text);
  }
}

}  // namespace
}  // namespace zentorin
