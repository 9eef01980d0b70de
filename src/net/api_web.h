// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

// Rules about text: nothing is parsed into components or percent-decoded, and their odd corners are
// kept on purpose.
namespace zentorin::API_Web {

QString DirectoryOf(const QString& url);
QString BaseOfPage(const QString& pageText, const QString& pageUrl);
QString BaseElement(const QString& pageText);  // the element's address alone, or ""
QString SiteRootOf(const QString& url);
QString Resolve(const QString& baseDirectory, const QString& link);
// Nothing in the program calls it; kept as the local half of Resolve().
QString ResolveLocal(const QString& baseFolder, const QString& path);
QString PathUnder(const QString& full, const QString& root, const QString& alternative);
QString StripQuotes(const QString& text, bool once);
QString FirstMatch(const QString& text, const QString& pattern);
QString StreamLink(const QString& pageText);  // the first streaming address, or ""

}  // namespace zentorin::API_Web
