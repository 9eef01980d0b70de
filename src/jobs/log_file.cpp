// SPDX-License-Identifier: MIT
#include "jobs/log_file.h"

#include <QFileInfo>
#include <cerrno>
#include <utility>

#include <sys/stat.h>
#include <unistd.h>

#include "base/ansi_text.h"
#include "base/clock.h"
#include "base/descriptor.h"
#include "base/utf16.h"
#include "jobs/date_format.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qint64 kMaxLogBytes = 64LL * 1024 * 1024;

Outcome SystemFailure(const QString& path) {
  return WriteFailure(path, RunTimeErrorFromErrno(errno));
}

bool IsPlain(QChar c) {
  return c == u'\r' || c == u'\n' || c == u'\t' || (c.unicode() >= 0x20 && c.unicode() < 0x7F);
}

// Every text can be logged: what the code page lacks, and control characters from outside, are
// written by their numbers.
QByteArray LogBytes(const QString& text) {
  QByteArray bytes;
  bytes.reserve(2 * text.size());
  for (qsizetype at = 0; at < text.size();) {
    const bool pair = UnitsAt(text, at) == 2;
    const QStringView character = QStringView(text).sliced(at, pair ? 2 : 1);
    at += character.size();
    if (IsPlain(character.front())) {
      bytes += static_cast<char>(character.front().unicode());
      continue;
    }
    const AnsiBytes encoded = EncodeAnsi(character);
    if (!encoded.fault && character.front().category() != QChar::Other_Control) {
      bytes += encoded.bytes;
    } else {
      const char32_t code =
          pair ? QChar::surrogateToUcs4(character[0], character[1]) : character.front().unicode();
      bytes += "\\u{" + QByteArray::number(static_cast<uint>(code), 16) + '}';
    }
  }
  return bytes;
}

// Adds the bytes at the end, or leaves the file as it was. False with errno set.
bool AppendWhole(const Descriptor& file, const QByteArray& bytes) {
  struct stat status{};
  if (fstat(file.Number(), &status) != 0) return false;
  for (qsizetype done = 0; done < bytes.size();) {
    const ssize_t written = write(file.Number(), bytes.constData() + done, bytes.size() - done);
    if (written > 0) {
      done += written;
    } else if (errno != EINTR) {
      const int error = errno;
      // Half an entry is taken back; when even that fails, the first error is the one to tell.
      if (done > 0 && ftruncate(file.Number(), status.st_size) != 0) errno = error;
      errno = error;
      return false;
    }
  }
  return true;
}

}  // namespace

LogFile::LogFile(QString path, const Clock& clock) : path_(std::move(path)), clock_(clock) {}

bool LogFile::Exists() const {
  return QFileInfo::exists(path_);
}

bool LogFile::WasWritten() const {
  return written_ && QFileInfo(path_).isFile();
}

Outcome LogFile::Append(const QString& text, bool startNew) {
  const QString time = FormatDate(clock_.LocalNow(), u"yyyy/mm/dd hh:nn:ss"_s);
  const QByteArray entry = LogBytes(u"-- %1 ----\r\n"_s.arg(time) + text + u"\r\n\r\n\r\n"_s);
  if (startNew) {
    const Outcome outcome = WriteWholeFile(path_, entry);
    written_ = outcome.Ok();
    return outcome;
  }
  // What is there must be a regular file, or a link to one that the user made.
  const QFileInfo there(path_);
  if (there.exists() && !there.isFile()) return WriteFailure(path_, RunTimeError::PathAccess);
  const Descriptor file(path_, O_WRONLY | O_CREAT | O_APPEND);
  if (file.Number() < 0 || !AppendWhole(file, entry)) return SystemFailure(path_);
  written_ = true;
  return {};
}

Outcome LogFile::Sync() const {
  if (!Exists()) return {};  // nothing was appended
  // The folder holds the file's name: without it a new file may be missing after a power cut.
  for (const QString& path : {path_, QFileInfo(path_).path()}) {
    const Descriptor place(path, O_RDONLY);
    if (place.Number() < 0 || fsync(place.Number()) != 0) return SystemFailure(path);
  }
  return {};
}

Outcome LogFile::Read(QString& text) const {
  QByteArray bytes;
  Outcome outcome = ReadWholeFile(path_, kMaxLogBytes, bytes);
  if (outcome.Ok()) text = DecodeAnsi(bytes);
  return outcome;
}

}  // namespace zentorin
