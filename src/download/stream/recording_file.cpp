// SPDX-License-Identifier: MIT
#include "download/stream/recording_file.h"

#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>
#include <QStorageInfo>
#include <cerrno>
#include <cstdio>

#include <fcntl.h>
#include <unistd.h>

#include "base/run_time_error.h"
#include "download/local_file.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

int Move(const QString& from, const QString& to) {
  const QByteArray source = QFile::encodeName(from);
  const bool moved = ::rename(source.constData(), QFile::encodeName(to).constData()) == 0;
  return moved ? 0 : static_cast<int>(RunTimeErrorFromErrno(errno));
}

// Makes an empty file with the rights of any new file, "song.wmv.1x4k9.part" for ".../song.wmv", so
// that one that a power cut leaves behind tells what it is. Of a long name only the start is taken.
int MakeBeside(const QString& path, QLatin1StringView ending, QString& made) {
  constexpr qsizetype kNameChars = 60;
  constexpr mode_t kNewFileMode = 0666;
  constexpr int kBase = 36;
  const QFileInfo row(path);
  QString stem = row.fileName().left(kNameChars);
  if (stem.back().isHighSurrogate()) stem.chop(1);
  int handle = -1;
  do {
    const quint32 number = QRandomGenerator::global()->generate();
    made = row.path() + u'/' + stem + u'.' + QString::number(number, kBase) + ending;
    handle = ::open(QFile::encodeName(made).constData(), O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC,
                    kNewFileMode);
  } while (handle < 0 && errno == EEXIST);
  if (handle < 0) return static_cast<int>(RunTimeErrorFromErrno(errno));
  ::close(handle);
  return 0;
}

}  // namespace

RecordingFile::~RecordingFile() {
  if (written_.isEmpty()) return;
  DeleteLocalFile(written_);
  if (!old_.isEmpty()) Move(old_, path_);
}

int RecordingFile::MakePart() {
  QString part;
  const int error = MakeBeside(path_, ".part"_L1, part);
  if (error == 0) written_ = part;
  return error;
}

int RecordingFile::PutOldAside() {
  if (QFileInfo::exists(path_)) {
    QString aside;
    int error = MakeBeside(path_, ".old"_L1, aside);
    if (error != 0) return error;
    error = Move(path_, aside);
    if (error != 0) {
      DeleteLocalFile(aside);
      return error;
    }
    old_ = aside;
  }
  written_ = path_;
  return 0;
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

int RecordingFile::Keep() {
  const int error = written_ == path_ ? 0 : Move(written_, path_);
  if (error != 0) return error;
  if (!old_.isEmpty()) DeleteLocalFile(old_);
  written_.clear();
  return 0;
}

}  // namespace zentorin
