// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArrayView>
#include <QString>

#include "net/http_engine.h"

namespace zentorin {

// The text of an answer: by the first of byte-order mark, header and declaration that the bytes fit
// without error, else by the judge's verdict. The mark is dropped.
QString PageText(const HttpHead& head, QByteArrayView body);

// Both as written; "" when there is none.
QString CharsetOfHead(const HttpHead& head);
QString CharsetOfMark(QByteArrayView body);

// Sound, picture, film, font, archive or PDF by its Content-Type: nothing to find links in. Unnamed
// bytes and lists of streams may be a page.
bool IsNoPage(const HttpHead& head);

}  // namespace zentorin
