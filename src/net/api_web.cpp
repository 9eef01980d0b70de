// SPDX-License-Identifier: MIT
#include "net/api_web.h"

#include <algorithm>
#include <optional>

#include "base/number_text.h"
#include "net/character_references.h"
#include "net/pattern.h"
#include "net/request_address.h"

namespace zentorin::API_Web {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr QStringView kSchemeMark = u"://";

// A longer base element counts as none: every link of its page would carry a copy of it.
constexpr qsizetype kMaxBaseLength = 8'192;

// Takes surrounding pairs of `quote` off. What keeps a pair on is a double quote between the two,
// for single quotes too: 'a'b' loses its quotes, 'a"b' does not.
QStringView StripPairs(QStringView text, QChar quote, bool once) {
  const auto quoted = [&] {
    return text.size() >= 2 && text.startsWith(quote) && text.endsWith(quote);
  };
  // The inner text only shrinks, so one look at the outermost answers for all.
  if (!quoted() || text.sliced(1, text.size() - 2).contains(u'"')) return text;
  do {
    text = text.sliced(1, text.size() - 2);
  } while (!once && quoted());
  return text;
}

// The steps back and in place of a path. Only the first pair "/name/../" found is taken out, at
// every place where the very same text stands; a second level stays.
void CollapseParentStep(QString& path) {
  for (qsizetype at = path.indexOf(u"/../"); at >= 0; at = path.indexOf(u"/../", at + 1)) {
    const qsizetype slash = at > 0 ? path.lastIndexOf(u'/', at - 1) : -1;
    if (slash < 0 || slash == at - 1) continue;
    const QString step = path.mid(slash, at + 4 - slash);
    path.replace(step, u"/"_s);
    return;
  }
}

// `<base href="(.+?)".*?>` without regard to letter case, as a scan: the lazy parts of the
// expression would cost the square of a long line's length. Nothing when no base element is there.
std::optional<QString> RawBaseElement(QStringView page) {
  constexpr QStringView kStart = u"<base href=\"";
  qsizetype at = page.indexOf(u'<');
  while (at >= 0) {
    if (!page.sliced(at).startsWith(kStart, Qt::CaseInsensitive)) {
      at = page.indexOf(u'<', at + 1);
      continue;
    }
    const qsizetype start = at + kStart.size();
    qsizetype lineEnd = page.indexOf(u'\n', start);
    if (lineEnd < 0) lineEnd = page.size();
    const QStringView line = page.first(lineEnd);
    // The address has at least one character, so a quote that follows at once is part of it.
    const qsizetype quote = line.indexOf(u'"', start + 1);
    if (quote >= 0 && line.indexOf(u'>', quote + 1) >= 0) {
      if (quote - start > kMaxBaseLength) return std::nullopt;
      return page.sliced(start, quote - start).toString();
    }
    // No later start on this line can find what this one did not.
    at = page.indexOf(u'<', lineEnd);
  }
  return std::nullopt;
}

qsizetype SkipBlanks(QStringView text, qsizetype at) {
  while (at < text.size() && text[at] == u' ') ++at;
  return at;
}

// Where the address begins when `href *= *"mms://` stands at `at`, else -1.
qsizetype StreamAddressAt(QStringView page, qsizetype at) {
  constexpr QStringView kHref = u"href";
  at = SkipBlanks(page, at + kHref.size());
  if (at >= page.size() || page[at] != u'=') return -1;
  at = SkipBlanks(page, at + 1);
  if (at >= page.size() || page[at] != u'"') return -1;
  return page.sliced(at + 1).startsWith(u"mms://", Qt::CaseInsensitive) ? at + 1 : -1;
}

qsizetype EndOfTagText(QStringView page, qsizetype at) {
  while (at < page.size() && page[at] != u'<' && page[at] != u'>') ++at;
  return at;
}

bool HasScheme(const QString& address) {
  const qsizetype mark = address.indexOf(kSchemeMark);
  return mark > 0 &&
         std::ranges::none_of(address.first(mark), [](QChar c) { return c == u'/' || c == u'?'; });
}

// The base element's address, resolved against the page's; "" when it names none.
QString NamedBase(const QString& pageText, const QString& pageUrl) {
  const QString base = DecodeReferences(WithoutFragment(BaseElement(pageText)));
  return base.isEmpty() || HasScheme(base) ? base : Resolve(DirectoryOf(pageUrl), base);
}

// Host and port without "www." and the schemes' own ports.
QString PlainSite(const QString& url) {
  QString site = SiteRootOf(url).section(u"://"_s, 1).toLower();
  if (site.startsWith(u"www.")) site.remove(0, 4);
  for (const QStringView port : {QStringView(u":80"), QStringView(u":443")}) {
    if (site.endsWith(port)) site.chop(port.size());
  }
  return site;
}

std::optional<QString> BelowDirectoryOf(const QString& root, const QString& directory) {
  const QString rootDirectory = DirectoryOf(root);
  if (!directory.startsWith(rootDirectory)) return std::nullopt;
  return directory.mid(rootDirectory.size());
}

}  // namespace

QString DirectoryOf(const QString& url) {
  const qsizetype mark = url.indexOf(kSchemeMark);
  const qsizetype schemeLength = mark < 0 ? 0 : mark + kSchemeMark.size();
  QStringView rest = QStringView(url).sliced(schemeLength);
  if (const qsizetype query = rest.lastIndexOf(u'?'); query >= 0) rest.truncate(query);
  const qsizetype dot = rest.lastIndexOf(u'.');
  const qsizetype slash = rest.lastIndexOf(u'/');
  if (slash >= 0 && slash < dot) {
    rest.truncate(slash + 1);
  } else if (slash < 0 && dot >= 0 && schemeLength == 0) {
    return {};  // a bare file name
  }
  QStringView directory = QStringView(url).first(schemeLength + rest.size());
  if (directory.endsWith(u'/')) directory.chop(1);
  return directory.toString();
}

QString BaseElement(const QString& pageText) {
  return StripQuotes(RawBaseElement(pageText).value_or(QString()), false);
}

QString BaseOfPage(const QString& pageText, const QString& pageUrl) {
  const QString named = NamedBase(pageText, pageUrl);
  return named.isEmpty() ? StripQuotes(DirectoryOf(pageUrl), false) : named;
}

QString BaseDirectoryOf(const QString& pageText, const QString& pageUrl) {
  const QString named = NamedBase(pageText, pageUrl);
  return DirectoryOf(named.isEmpty() ? pageUrl : named);
}

QString SiteRootOf(const QString& url) {
  const qsizetype mark = url.indexOf(kSchemeMark);
  if (mark < 0) return {};
  const qsizetype slash = url.indexOf(u'/', mark + kSchemeMark.size());
  return slash < 0 ? url : url.left(slash);
}

QString Resolve(const QString& baseDirectory, const QString& address) {
  const QString base = TrimBlanks(StripQuotes(baseDirectory, false));
  const QString target = TrimBlanks(StripQuotes(address, false));
  QString result;
  if (target.startsWith(u"http://") || target.startsWith(u"https://")) {
    result = target;
  } else if (target.startsWith(u"//")) {
    result = base.left(base.indexOf(u':') + 1) + target;
  } else if (target.startsWith(u'/')) {
    QString siteRoot = SiteRootOf(base);
    if (siteRoot.endsWith(u'/')) siteRoot.chop(1);
    result = siteRoot + target;
  } else if (base.endsWith(u'/')) {
    result = base + target;
  } else {
    result = base + u'/' + target;
  }
  CollapseParentStep(result);
  result.replace(u"/./"_s, u"/"_s);
  return result;
}

QString AddressOf(const QString& baseDirectory, const QString& link) {
  return Resolve(baseDirectory, DecodeReferences(link));
}

QString Moved(const QString& url, const QString& finalUrl) {
  // Hosts of an answer that was redirected are in the form that goes over the wire.
  const QString asked = QString::fromLatin1(WireAddress(url));
  const QString site = SiteRootOf(finalUrl);
  const QString oldSite = SiteRootOf(asked);
  if (site.isEmpty() || oldSite.isEmpty() || site.compare(oldSite, Qt::CaseInsensitive) == 0 ||
      PlainSite(finalUrl) != PlainSite(asked)) {
    return url;
  }
  return site + asked.sliced(oldSite.size());
}

QString ResolveLocal(const QString& baseFolder, const QString& path) {
  const auto forward = [](QString text) { return StripQuotes(text.replace(u'\\', u'/'), false); };
  const QString base = forward(baseFolder);
  QString result = forward(path);
  const bool absolute = QStringView(result).mid(1).startsWith(u":/") || result.startsWith(u"//");
  // An absolute path keeps its parent steps; only its separators become this program's.
  if (!absolute) {
    if (base.endsWith(u'/') && result.startsWith(u'/')) {
      result.prepend(QStringView(base).chopped(1));
    } else if (base.endsWith(u'/') || result.startsWith(u'/')) {
      result = base + result;
    } else {
      result = base + u'/' + result;
    }
    CollapseParentStep(result);
  }
  return result.replace(u'/', u'\\');
}

QString PathUnder(const QString& full, const QString& root, const QString& alternative) {
  const QString directory = DirectoryOf(full);
  if (const auto below = BelowDirectoryOf(root, directory)) return *below;
  return BelowDirectoryOf(alternative, directory).value_or(QString());
}

QString StripQuotes(const QString& text, bool once) {
  const QString trimmed = TrimBlanks(text);
  const QStringView bare = StripPairs(trimmed, u'"', once);
  return StripPairs(bare, u'\'', once).toString();
}

QString FirstMatch(const QString& text, const QString& pattern) {
  return Pattern(pattern).First(text);
}

QString StreamLink(const QString& pageText) {
  const QStringView page = pageText;
  qsizetype at = page.indexOf(u"href", 0, Qt::CaseInsensitive);
  while (at >= 0) {
    qsizetype next = at + 1;
    if (const qsizetype start = StreamAddressAt(page, at); start >= 0) {
      // The address is greedy: it runs to the last quote before the next angle bracket. When there
      // is none, no later start before that bracket finds one either.
      const qsizetype end = EndOfTagText(page, start);
      const qsizetype quote = page.first(end).lastIndexOf(u'"');
      if (quote > start + QStringView(u"mms://").size()) {
        return page.sliced(start, quote - start).toString();
      }
      next = end;
    }
    at = page.indexOf(u"href", next, Qt::CaseInsensitive);
  }
  return {};
}

}  // namespace zentorin::API_Web
