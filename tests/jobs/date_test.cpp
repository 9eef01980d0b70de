// SPDX-License-Identifier: MIT
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

std::string Shown(const std::optional<QDateTime>& date) {
  return date ? date->toString("yyyy-MM-dd HH:mm:ss").toStdString() : "none";
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
         {Case("yyyymmddhhnnss", "20240501090703"), Case("yyyymmddhh_", "2024050109_"),
          Case("YYYY/MM/DD HH:NN:SS", "2024/05/01 09:07:03"), Case("yy-m-d h:n:s", "24-5-1 9:7:3"),
          Case("hhmm h:m h時mm分 mm", "0907 9:7 9時07分 05"), Case("hh yyyy mm", "09 2024 05"),
          Case("mmmm mmm oooo ooo", "May May 5月 ooo"), Case("", "2024/05/01 09:07:03"),
          Case("dddd ddd aaaa aaa aa w", "Wednesday Wed 水曜日 水 aa 4"),
          Case("yyy q y ww", "24122 2 122 18"), Case("ggge年 gg ee g", "令和6年 令 06 R"),
          Case("c|ddddd|ttttt", "2024/05/01 09:07:03|2024/05/01|09:07:03"),
          Case("\"day \"d\\d\\\"\"", "day 1d\""), Case("\"open d", "open d"), Case("d\\", "1\\"),
          Case("日付:/-_.x😀", "日付:/-_.x😀")});
  expect("2024-12-31T23:30:05", {Case("ddddddd y ww q", "2024年12月31日31 366 53 4"),
                                 Case("h:nn AM/PM, hh am/pm", "11:30 PM, 11 pm"),
                                 Case("hA/P ha/p AMPMh", "11P 11p 午後11")});
  expect("2024-05-01T00:00:00", {Case("hh AM/PM", "12 AM"), Case("", "2024/05/01")});
  expect("2024-05-01T12:00:00", {Case("h ampm", "12 午後")});
  expect("2019-04-30T00:00:00", {Case("ggge", "平成31")});
  expect("1868-01-01T00:00:00", {Case("ge", "M1")});
  expect("1867-12-31T00:00:00", {Case("[g]e", "[]1867")});
  expect("0005-01-02T00:00:00", {Case("yyyy yy", "0005 05")});
}

TEST(DateFormat, SurvivesDatesBeyondTheCalendar) {
  EXPECT_EQ(FormatDate(QDateTime(), "yyyymmdd"), QString());
  const QString all = "yyyy yy y q mmmm ww dddd aaaa ggge c dddddd AMPM";
  for (const int year : {-4713, -1, 10'000, 99'999}) {
    const QDateTime date(QDate(year, 1, 1), QTime(0, 0), Qt::UTC);
    EXPECT_FALSE(FormatDate(date, all).isEmpty()) << year;
  }
}

TEST(DateText, ReadsTheThreeFormsOfHttpDates) {
  for (const auto& [text, date] : {Case("Wed, 01 May 2024 12:34:56 GMT", "2024-05-01 12:34:56"),
                                   Case("Wednesday, 01-May-24 12:34:56 GMT", "2024-05-01 12:34:56"),
                                   Case("Sunday, 06-Nov-94 08:49:37 GMT", "1994-11-06 08:49:37"),
                                   Case("Sun Nov  6 08:49:37 1994", "1994-11-06 08:49:37"),
                                   Case(" wed, 1 may 2024 2:34:56 +0000 ", "2024-05-01 02:34:56"),
                                   Case("1 May 2024 12:34 UTC", "2024-05-01 12:34:00"),
                                   Case("Sat, 31 Dec 2016 23:59:60 GMT", "2016-12-31 23:59:59")}) {
    EXPECT_EQ(Shown(ParseHttpDate(text)), date) << text;
  }
  for (const char* text : {"Wed, 31 Feb 2024 12:34:56 GMT", "Wed, 01 May 2024 24:00:00 GMT",
                           "Wed, 01 May 2024 12:34:56 +0900", "Wed, 01 Mai 2024 12:34:56 GMT",
                           "Foo, 01 May 2024 12:34:56 GMT", "Wed, 01 May 2024 12:34:56 GMT; x",
                           "Wed, 01-May 2024 12:34:56 GMT", "1714566896", ""}) {
    EXPECT_FALSE(ParseHttpDate(text)) << text;
  }
}

TEST(DateText, ReadsDatesAndTimesAsPeopleWriteThem) {
  for (const auto& [text, date] :
       {Case("2024/05/01", "2024-05-01 00:00:00"), Case("2024-5-1 23:30", "2024-05-01 23:30:00"),
        Case(" 2024.05.01  1:02:03 ", "2024-05-01 01:02:03"),
        Case("23:30:05", "1899-12-30 23:30:05"), Case("7:5", "1899-12-30 07:05:00"),
        Case("２３：３０", "1899-12-30 23:30:00"), Case("2024/05/01 ", "2024-05-01 00:00:00")}) {
    EXPECT_EQ(Shown(ParseDateText(text)), date) << text;
  }
  for (const char* text : {"25:00", "24:00", "11:60", "11:34:60", "2024/05-01", "2023/02/29",
                           "2024/05/0112:00", "noon", "11", "-", ""}) {
    EXPECT_FALSE(ParseDateText(text)) << text;
  }
}

// The rule as it is told: each template in turn replaces its text everywhere.
QString ExpandInTurns(QString text, const QDateTime& date) {
  QStringList inner;
  qsizetype open = -1;
  for (qsizetype i = 0; i < text.size(); ++i) {
    if (text[i] == u'{') open = i;
    if (text[i] == u'}' && open >= 0) {
      inner += text.mid(open + 1, i - open - 1);
      open = -1;
    }
  }
  for (const QString& format : inner) {
    text.replace(u'{' + format + u'}', FormatDate(date, format));
  }
  return text;
}

TEST(DateTemplate, ExpandsTemplatesOutsideTheirOuterBraces) {
  const QDateTime date = Wall("2011-05-15T00:00:00");
  for (const auto& [text, expanded] :
       {Case("http://host/{yyyy-mm}/a{yyyymmdd}.mp3", "http://host/2011-05/a20110515.mp3"),
        Case("plain", "plain"), Case("{}", "2011/05/15"), Case("{{yyyy}}", "{2011}"),
        Case("}{yyyy{", "}{yyyy{"), Case("{{yyyy}} {2011}", "2011 2011"),
        Case("{2011} {{yyyy}}", "2011 {2011}")}) {
    EXPECT_EQ(ExpandDateTemplates(text, date).toStdString(), expanded) << text;
  }
}

TEST(DateTemplate, GivesWhatReplacingTemplateByTemplateGives) {
  const QDateTime date = Wall("2011-05-15T00:00:00");
  const QStringList parts = {"{", "{", "}", "}", "d", "15", "1", "dd", "{15}"};
  QRandomGenerator random(1);
  for (int round = 0; round < 20'000; ++round) {
    const QString text = test::RandomText(random, parts, 14);
    ASSERT_EQ(ExpandDateTemplates(text, date), ExpandInTurns(text, date)) << text.toStdString();
  }
}

TEST(DateTemplate, CountsADayWindowBackFromToday) {
  const QDate today(2024, 3, 1);
  using Window = std::tuple<const char*, const char*, const char*>;
  for (const auto& [first, second, text] :
       {Window("3", "0", "2024/03/01～2024/02/27"), Window("1", "", "2024/02/29～2024/02/29"),
        Window("", "1", "2024/03/01～2024/02/29"),
        Window("0", "999999999", "2024/03/01～1924/03/26")}) {
    const DayWindow window = ParseDayWindow(first, second);
    EXPECT_EQ(DayWindowText(window, today).toStdString(), text);
  }
}

}  // namespace
}  // namespace zentorin
