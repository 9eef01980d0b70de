// SPDX-License-Identifier: MIT
#include "download/stream/recording_file.h"

#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>
#include <QStorageInfo>
#include <cerrno>
#include <cstdio>

#include "base/descriptor.h"
#include "download/local_file.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

Outcome Move(const QString& from, const QString& to) {
  const QByteArray source = QFile::encodeName(from);
  const bool moved = ::rename(source.constData(), QFile::encodeName(to).constData()) == 0;
  return moved ? Outcome() : Outcome::OfErrno(errno, to);
}

// Makes an empty file with the rights of any new file, "song.wmv.1x4k9.part" for ".../song.wmv", so
// that one that a power cut leaves behind tells what it is. Of a long name only the start is taken.
Outcome MakeBeside(const QString& path, QLatin1StringView ending, QString& made) {
  constexpr qsizetype kNameChars = 60;
  constexpr int kBase = 36;
  const QFileInfo row(path);
  QString stem = row.fileName().left(kNameChars);
  if (stem.back().isHighSurrogate()) stem.chop(1);
  for (;;) {
    const quint32 number = QRandomGenerator::global()->generate();
    made = row.path() + u'/' + stem + u'.' + QString::number(number, kBase) + ending;
    const Descriptor file(made, O_CREAT | O_EXCL | O_WRONLY);
    if (file.Number() >= 0) return {};
    if (errno != EEXIST) return Outcome::OfErrno(errno, path);
  }
}

}  // namespace

RecordingFile::~RecordingFile() {
  if (written_.isEmpty()) return;
  DeleteLocalFile(written_);
  if (!old_.isEmpty()) static_cast<void>(Move(old_, path_));
}

Outcome RecordingFile::MakePart() {
  QString part;
  const Outcome made = MakeBeside(path_, ".part"_L1, part);
  if (made.Ok()) written_ = part;
  return made;
}

Outcome RecordingFile::PutOldAside() {
  if (QFileInfo::exists(path_)) {
    QString aside;
    Outcome outcome = MakeBeside(path_, ".old"_L1, aside);
    if (!outcome.Ok()) return outcome;
    outcome = Move(path_, aside);
    if (!outcome.Ok()) {
      DeleteLocalFile(aside);
      return outcome;
    }
    old_ = aside;
  }
  written_ = path_;
  return {};
}

qint64 RecordingFile::Bytes() const {
  return QFileInfo(written_).size();
}

qint64 RecordingFile::FreeBytes(const QString& folder) {
  const QStorageInfo disk(folder);
  // Some file systems over a network know of no size at all.
  return disk.bytesTotal() > 0 ? disk.bytesAvailable() : -1;
}

bool RecordingFile::DiskIsFull() const {
  constexpr qint64 kOneBlock = 4096;
  const qint64 free = freeBytes_(QFileInfo(path_).path());
  return free >= 0 && free < kOneBlock;
}

Outcome RecordingFile::Keep() {
  Outcome moved = written_ == path_ ? Outcome() : Move(written_, path_);
  if (!moved.Ok()) return moved;
  if (!old_.isEmpty()) DeleteLocalFile(old_);
  written_.clear();
  return {};
}

}  // namespace zentorin
