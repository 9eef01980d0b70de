// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "jobs/date_format.h"
#include "jobs/date_template.h"
#include "jobs/date_text.h"

namespace zentorin {
namespace {

QDateTime Wall(const char* text) {
  QDateTime time = QDateTime::fromString(QLatin1String(text), Qt::ISODate);
  time.setTimeSpec(Qt::UTC);
  return time;
}

std::string Shown(const std::optional<QDateTime>& date) {
  return date ? date->toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")).toStdString() : "none";
}

TEST(DateFormat, WritesEveryToken) {
  struct Case {
    const char* date;
    const char* format;
    const char* text;
  };
  const char* may = "2024-05-01T09:07:03";  // a Wednesday
  const char* night = "2024-12-31T23:30:05";
  const char* midnight = "2024-05-01T00:00:00";
  const Case cases[] = {
      {may, "yyyymmddhhnnss", "20240501090703"},
      {may, "yyyymmddhh_", "2024050109_"},
      {may, "YYYY/MM/DD HH:NN:SS", "2024/05/01 09:07:03"},
      {may, "yy-m-d h:n:s", "24-5-1 9:7:3"},
      {may, "hhmm h:m h時mm分 mm", "0907 9:7 9時07分 05"},
      {may, "hh yyyy mm", "09 2024 05"},
      {may, "mmmm mmm oooo ooo", "May May 5月 ooo"},
      {may, "dddd ddd aaaa aaa aa w", "Wednesday Wed 水曜日 水 aa 4"},
      {may, "yyy q y ww", "24122 2 122 18"},
      {night, "ddddddd y ww q", "2024年12月31日31 366 53 4"},
      {may, "ggge年 gg ee g", "令和6年 令 06 R"},
      {"2019-04-30T00:00:00", "ggge", "平成31"},
      {"1868-01-01T00:00:00", "ge", "M1"},
      {"1867-12-31T00:00:00", "[g]e", "[]1867"},
      {night, "h:nn AM/PM, hh am/pm", "11:30 PM, 11 pm"},
      {night, "hA/P ha/p AMPMh", "11P 11p 午後11"},
      {midnight, "hh AM/PM", "12 AM"},
      {"2024-05-01T12:00:00", "h ampm", "12 午後"},
      {may, "", "2024/05/01 09:07:03"},
      {midnight, "", "2024/05/01"},
      {may, "c|ddddd|ttttt", "2024/05/01 09:07:03|2024/05/01|09:07:03"},
      {may, "\"day \"d\\d\\\"\"", "day 1d\""},
      {may, "\"open d", "open d"},
      {may, "d\\", "1\\"},
      {may, "日付:/-_.x😀", "日付:/-_.x😀"},
      {"0005-01-02T00:00:00", "yyyy yy", "0005 05"},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(FormatDate(Wall(c.date), QString::fromUtf8(c.format)).toStdString(), c.text)
        << c.format;
  }
}

TEST(DateFormat, SurvivesDatesBeyondTheCalendar) {
  EXPECT_EQ(FormatDate(QDateTime(), QStringLiteral("yyyymmdd")), QString());
  const QString all = QStringLiteral("yyyy yy y q mmmm ww dddd aaaa ggge c dddddd AMPM");
  for (const int year : {-4713, -1, 10'000, 99'999}) {
    const QDateTime date(QDate(year, 1, 1), QTime(0, 0), Qt::UTC);
    EXPECT_FALSE(FormatDate(date, all).isEmpty()) << year;
  }
}

TEST(DateText, ReadsTheThreeFormsOfHttpDates) {
  const std::pair<const char*, const char*> cases[] = {
      {"Wed, 01 May 2024 12:34:56 GMT", "2024-05-01 12:34:56"},
      {"Wednesday, 01-May-24 12:34:56 GMT", "2024-05-01 12:34:56"},
      {"Sunday, 06-Nov-94 08:49:37 GMT", "1994-11-06 08:49:37"},
      {"Sun Nov  6 08:49:37 1994", "1994-11-06 08:49:37"},
      {" wed, 1 may 2024 2:34:56 +0000 ", "2024-05-01 02:34:56"},
      {"1 May 2024 12:34 UTC", "2024-05-01 12:34:00"},
      {"Sat, 31 Dec 2016 23:59:60 GMT", "2016-12-31 23:59:59"},
      {"Wed, 31 Feb 2024 12:34:56 GMT", "none"},
      {"Wed, 01 May 2024 24:00:00 GMT", "none"},
      {"Wed, 01 May 2024 12:34:56 +0900", "none"},
      {"Wed, 01 Mai 2024 12:34:56 GMT", "none"},
      {"Foo, 01 May 2024 12:34:56 GMT", "none"},
      {"Wed, 01 May 2024 12:34:56 GMT; x", "none"},
      {"Wed, 01-May 2024 12:34:56 GMT", "none"},
      {"1714566896", "none"},
      {"", "none"},
  };
  for (const auto& [text, date] : cases) {
    EXPECT_EQ(Shown(ParseHttpDate(QLatin1String(text))), date) << text;
  }
}

TEST(DateText, ReadsDatesAndTimesAsPeopleWriteThem) {
  const std::pair<const char*, const char*> cases[] = {
      {"2024/05/01", "2024-05-01 00:00:00"},
      {"2024-5-1 23:30", "2024-05-01 23:30:00"},
      {" 2024.05.01  1:02:03 ", "2024-05-01 01:02:03"},
      {"23:30:05", "1899-12-30 23:30:05"},
      {"7:5", "1899-12-30 07:05:00"},
      {"２３：３０", "1899-12-30 23:30:00"},
      {"25:00", "none"},
      {"24:00", "none"},
      {"11:60", "none"},
      {"11:34:60", "none"},
      {"2024/05-01", "none"},
      {"2023/02/29", "none"},
      {"2024/05/0112:00", "none"},
      {"2024/05/01 ", "2024-05-01 00:00:00"},
      {"noon", "none"},
      {"11", "none"},
      {"-", "none"},
      {"", "none"},
  };
  for (const auto& [text, date] : cases) {
    EXPECT_EQ(Shown(ParseDateText(QString::fromUtf8(text))), date) << text;
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
  const std::pair<const char*, const char*> cases[] = {
      {"http://host/{yyyy-mm}/a{yyyymmdd}.mp3", "http://host/2011-05/a20110515.mp3"},
      {"plain", "plain"},
      {"{}", "2011/05/15"},
      {"{{yyyy}}", "{2011}"},
      {"}{yyyy{", "}{yyyy{"},
      {"{{yyyy}} {2011}", "2011 2011"},
      {"{2011} {{yyyy}}", "2011 {2011}"},
  };
  for (const auto& [text, expanded] : cases) {
    EXPECT_EQ(ExpandDateTemplates(QLatin1String(text), date).toStdString(), expanded) << text;
  }
}

TEST(DateTemplate, GivesWhatReplacingTemplateByTemplateGives) {
  const QDateTime date = Wall("2011-05-15T00:00:00");
  const QStringList parts = {QStringLiteral("{"), QStringLiteral("{"),  QStringLiteral("}"),
                             QStringLiteral("}"), QStringLiteral("d"),  QStringLiteral("15"),
                             QStringLiteral("1"), QStringLiteral("dd"), QStringLiteral("{15}")};
  quint32 random = 1;
  for (int round = 0; round < 20'000; ++round) {
    QString text;
    for (int i = 0; i < 14; ++i) {
      random = random * 1'664'525 + 1'013'904'223;
      text += parts[(random >> 16) % parts.size()];
    }
    ASSERT_EQ(ExpandDateTemplates(text, date), ExpandInTurns(text, date)) << text.toStdString();
  }
}

TEST(DateTemplate, CountsADayWindowBackFromToday) {
  const QDate today(2024, 3, 1);
  const std::tuple<const char*, const char*, const char*> cases[] = {
      {"3", "0", "2024/03/01～2024/02/27"},
      {"1", "", "2024/02/29～2024/02/29"},
      {"", "1", "2024/03/01～2024/02/29"},
      {"0", "999999999", "2024/03/01～1924/03/26"},
  };
  for (const auto& [first, second, text] : cases) {
    const DayWindow window = ParseDayWindow(QLatin1String(first), QLatin1String(second));
    EXPECT_EQ(DayWindowText(window, today).toStdString(), text);
  }
}

}  // namespace
}  // namespace zentorin
