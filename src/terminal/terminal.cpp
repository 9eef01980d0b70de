// SPDX-License-Identifier: MIT
#include "terminal/terminal.h"

#include <cerrno>

#include <sys/ioctl.h>
#include <unistd.h>

#include "base/file_names.h"
#include "terminal/terminal_text.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kUsualColumns = 80;
// A description or an expression may be of megabytes.
constexpr qsizetype kMaxLine = 4096;
constexpr const char* kClearLine = "\r\x1b[K";

}  // namespace

Terminal::Terminal(int descriptor)
    : descriptor_(descriptor), isTerminal_(::isatty(descriptor) == 1) {}

void Terminal::Line(const QString& text) {
  const bool tooLong = text.size() > kMaxLine;
  const QString shown = tooLong ? text.first(kMaxLine) + u"…"_s : text;
  QByteArray bytes = EscapeForDisplay(shown).toUtf8() + '\n';
  if (!refreshed_.isEmpty()) bytes = kClearLine + bytes + refreshed_.toUtf8();
  Write(bytes);
}

void Terminal::Refresh(const QString& text, const QString& tail) {
  if (!isTerminal_) return;
  // The last column stays free: a full line would wrap and could not be drawn over.
  const int columns = Columns() - 1;
  refreshed_ = CutToWidth(EscapeForDisplay(text), columns - TerminalWidth(tail));
  refreshed_ = CutToWidth(refreshed_ + tail, columns);
  Write(kClearLine + refreshed_.toUtf8());
}

void Terminal::EndRefresh() {
  if (refreshed_.isEmpty()) return;
  refreshed_.clear();
  Write(kClearLine);
}

int Terminal::Columns() const {
  winsize size = {};
  if (::ioctl(descriptor_, TIOCGWINSZ, &size) != 0 || size.ws_col == 0) return kUsualColumns;
  return size.ws_col;
}

void Terminal::Write(const QByteArray& bytes) const {
  qsizetype done = 0;
  while (done < bytes.size()) {
    const ssize_t count = ::write(descriptor_, bytes.constData() + done, bytes.size() - done);
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return;
    done += count;
  }
}

}  // namespace zentorin
