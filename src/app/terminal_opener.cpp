// SPDX-License-Identifier: MIT
#include "app/terminal_opener.h"

#include "app/terminal.h"

namespace zentorin {

void TerminalOpener::OpenWithDefaultHandler(const QString& target) {
  terminal_.Line(QStringLiteral("画面がないため開きません: ") + target);
}

void TerminalOpener::OpenFolder(const QString& path) {
  terminal_.Line(QStringLiteral("画面がないためフォルダを開きません: ") + path);
}

void TerminalOpener::ShowText(const QString& text, const QString& title) {
  terminal_.Line(
      QStringLiteral("画面がないため表示しません: %1（%2 文字）").arg(title).arg(text.size()));
}

void TerminalOpener::PlayOrView(const QString& target) {
  terminal_.Line(QStringLiteral("画面がないため再生しません: ") + target);
}

void TerminalOpener::OpenWith(const QString& applicationName, const QString& target) {
  terminal_.Line(QStringLiteral("画面がないため起動しません: %1 %2").arg(applicationName, target));
}

}  // namespace zentorin
