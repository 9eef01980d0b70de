// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

// Rules about text: nothing is parsed into components or percent-decoded, and their odd corners are
// kept on purpose. A link is what a page writes, an address what can be asked for.
namespace zentorin::API_Web {

QString DirectoryOf(const QString& url);
QString BaseElement(const QString& pageText);  // as written, or ""
// The element's address, resolved against the page's; without the element the page's directory.
QString BaseOfPage(const QString& pageText, const QString& pageUrl);
QString BaseDirectoryOf(const QString& pageText, const QString& pageUrl);
QString SiteRootOf(const QString& url);
QString Resolve(const QString& baseDirectory, const QString& address);
QString AddressOf(const QString& baseDirectory, const QString& link);  // decoded, then resolved
// `url` on the site that answered: another one when the whole site has moved to http or https, or
// to or from "www.". `finalUrl` is its address after redirects.
QString Moved(const QString& url, const QString& finalUrl);
// Nothing in the program calls it; kept as the local half of Resolve().
QString ResolveLocal(const QString& baseFolder, const QString& path);
QString PathUnder(const QString& full, const QString& root, const QString& alternative);
QString StripQuotes(const QString& text, bool once);
QString FirstMatch(const QString& text, const QString& pattern);
QString StreamLink(const QString& pageText);  // the first streaming address, or ""

}  // namespace zentorin::API_Web
