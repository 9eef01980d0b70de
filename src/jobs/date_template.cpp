// SPDX-License-Identifier: MIT
#include "jobs/date_template.h"

#include <QHash>
#include <QList>
#include <algorithm>
#include <vector>

#include "base/number_text.h"
#include "jobs/date_format.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kMaxDaysBack = 36'500;

// A template of the text: its inner text's places among all templates, in order, and its date.
struct Template {
  QList<int> places;
  QString result;
};

using Templates = QHash<QString, Template>;

// The templates of that kind, by inner text.
Templates FindTemplates(const QString& text, const QDateTime& date, TemplateKind kind) {
  Templates found;
  int place = 0;
  qsizetype open = -1;
  for (qsizetype i = 0; i < text.size(); ++i) {
    if (text[i] == u'{') {
      open = i;
    } else if (text[i] == u'}' && open >= 0) {
      const QString inner = text.mid(open + 1, i - open - 1);
      open = -1;
      if (kind == TemplateKind::Plain && !IsPlainDateFormat(inner)) continue;
      Template& entry = found[inner];
      if (entry.places.isEmpty()) entry.result = FormatDate(date, inner);
      entry.places.append(place++);
    }
  }
  return found;
}

// A brace that is open while the text is walked.
struct OpenBrace {
  qsizetype start = 0;   // where it stands in the output
  int lastPlace = -1;    // the turn at which the last template inside was replaced
  bool settled = false;  // a template inside stays as it is, so no turn comes for this one
};

}  // namespace

// The rule is: for each template in turn, replace its whole text everywhere in the text. So braces
// that come to enclose a template's text by an earlier turn ("{{yyyy}} {2024}") are replaced as
// well, provided that template's turn is still to come. Walking the text once with the turns in
// mind gives the same text at linear cost.
QString ExpandDateTemplates(const QString& text, const QDateTime& date, TemplateKind kind) {
  const Templates templates = FindTemplates(text, date, kind);
  if (templates.isEmpty()) return text;
  QString output;
  std::vector<OpenBrace> open;
  for (const QChar c : text) {
    if (c == u'{') open.push_back({output.size()});
    output += c;
    if (c != u'}' || open.empty()) continue;

    const OpenBrace brace = open.back();
    open.pop_back();
    bool replaced = false;
    int turn = brace.lastPlace;
    if (!brace.settled) {
      const QString inner = output.mid(brace.start + 1, output.size() - brace.start - 2);
      const auto entry = templates.constFind(inner);
      if (entry != templates.cend()) {
        const auto next = std::upper_bound(entry->places.cbegin(), entry->places.cend(), turn);
        if (next != entry->places.cend()) {
          turn = *next;
          output.truncate(brace.start);
          output += entry->result;
          replaced = true;
        }
      }
    }
    if (open.empty()) continue;
    open.back().settled = open.back().settled || !replaced;
    open.back().lastPlace = std::max(open.back().lastPlace, turn);
  }
  return output;
}

QString ExpandedRoot(const TargetUrlItem& job, const QDateTime& date) {
  const bool dated = !job[TargetUrlItem::Format].isEmpty() && !job.BeforeElement(0).isEmpty();
  return ExpandDateTemplates(job[TargetUrlItem::Root], date,
                             dated ? TemplateKind::Any : TemplateKind::Plain);
}

DayWindow ParseDayWindow(const QString& first, const QString& second) {
  const auto days = [](const QString& text) {
    return std::clamp(WholeNumber(text), -kMaxDaysBack, kMaxDaysBack);
  };
  const int a = days(first);
  const int b = TrimBlanks(second).isEmpty() ? a : days(second);
  return {.first = std::min(a, b), .last = std::max(a, b)};
}

QString DayWindowText(const DayWindow& window, const QDate& today) {
  const auto day = [&today](int daysBack) {
    return today.addDays(-daysBack).toString(u"yyyy/MM/dd"_s);
  };
  return day(window.first) + u"～"_s + day(window.last);
}

}  // namespace zentorin
