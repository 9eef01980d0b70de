// SPDX-License-Identifier: MIT
#include "terminal/terminal_opener.h"

#include "terminal/terminal.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

void TerminalOpener::OpenWithDefaultHandler(const QString& target) {
  terminal_.Line(u"画面がないため開きません: "_s + target);
}

void TerminalOpener::OpenFolder(const QString& path) {
  terminal_.Line(u"画面がないためフォルダを開きません: "_s + path);
}

void TerminalOpener::ShowText(const QString& text, const QString& title) {
  terminal_.Line(u"画面がないため表示しません: %1（%2 文字）"_s.arg(title).arg(text.size()));
}

void TerminalOpener::PlayOrView(const QString& target) {
  terminal_.Line(u"画面がないため再生しません: "_s + target);
}

void TerminalOpener::OpenWith(const QString& applicationName, const QString& target) {
  terminal_.Line(u"画面がないため起動しません: %1 %2"_s.arg(applicationName, target));
}

}  // namespace zentorin
