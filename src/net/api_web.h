// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

// The program's rules for addresses and local paths. They are rules about text: nothing is parsed
// into components and nothing is percent-decoded, and their odd corners are kept on purpose.
namespace zentorin::API_Web {

QString DirectoryOf(const QString& url);
QString BaseOfPage(const QString& pageText, const QString& pageUrl);
// The base element's address alone; empty when the page has none.
QString BaseElement(const QString& pageText);
QString SiteRootOf(const QString& url);
QString Resolve(const QString& baseDirectory, const QString& link);
QString ResolveLocal(const QString& baseFolder, const QString& path);
QString PathUnder(const QString& full, const QString& root, const QString& alternative);
QString StripQuotes(const QString& text, bool once);
QString FirstMatch(const QString& text, const QString& pattern);
// The first streaming address that a page's text links to, or "".
QString StreamLink(const QString& pageText);

}  // namespace zentorin::API_Web
