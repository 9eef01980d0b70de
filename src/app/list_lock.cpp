// SPDX-License-Identifier: MIT
#include "app/list_lock.h"

#include <QCryptographicHash>
#include <QFileInfo>
#include <QLocalSocket>
#include <QTimer>
#include <chrono>

#include <QCoro/QCoroSignal>
#include <sys/file.h>
#include <sys/stat.h>

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr std::chrono::milliseconds kAnswerTime(3000);
constexpr qint64 kMaxRequestBytes = 4096;
constexpr QByteArrayView kRaise("raise ");

// Every path that leads to the file has the same key.
QString ListKey(const QString& listFile) {
  const QFileInfo info(listFile);
  const QString path = info.exists() ? info.canonicalFilePath() : info.absoluteFilePath();
  const QByteArray key = QCryptographicHash::hash(path.toUtf8(), QCryptographicHash::Sha1);
  return QString::fromLatin1(key.toHex());
}

// True when the path still names the open file.
bool StillNamed(const Descriptor& file, const QString& path) {
  struct stat open = {};
  struct stat named = {};
  return ::fstat(file.Number(), &open) == 0 &&
         ::stat(QFile::encodeName(path).constData(), &named) == 0 && open.st_dev == named.st_dev &&
         open.st_ino == named.st_ino;
}

// Locks the file that the path names. False when somebody holds it; `lock` stays closed when the
// file system offers none. The holder may remove or replace the file between open and lock; a lock
// on a file that the path no longer names keeps nobody off, so it is tried again.
bool Lock(const QString& path, int flags, Descriptor& lock) {
  constexpr int kAttempts = 10;
  constexpr mode_t kOnlyUser = 0600;
  for (int attempt = 0; attempt < kAttempts; ++attempt) {
    Descriptor file(path, flags, kOnlyUser);
    if (file.Number() < 0) return true;
    if (::flock(file.Number(), LOCK_EX | LOCK_NB) != 0) return errno != EWOULDBLOCK;
    if (StillNamed(file, path)) {
      lock = std::move(file);
      return true;
    }
  }
  return false;
}

// The user's own runtime folder for this program, made when it is missing. Empty when others can
// look into it or put anything there.
QString RuntimeFolder() {
  constexpr mode_t kOnlyUser = 0700;
  constexpr mode_t kOthers = 0077;
  const QString base = qEnvironmentVariable("XDG_RUNTIME_DIR");
  const QString folder =
      base.isEmpty() ? u"/tmp/zentorin-%1"_s.arg(::geteuid()) : base + u"/zentorin"_s;
  const QByteArray path = QFile::encodeName(folder);
  ::mkdir(path.constData(), kOnlyUser);
  struct stat found = {};
  const bool trusted = ::lstat(path.constData(), &found) == 0 && S_ISDIR(found.st_mode) &&
                       found.st_uid == ::geteuid() && (found.st_mode & kOthers) == 0;
  return trusted ? folder : QString();
}

// The token by which the desktop lets the window that is asked come to the front.
QByteArray ActivationToken() {
  const QByteArray token = qgetenv("XDG_ACTIVATION_TOKEN");
  return token.isEmpty() ? qgetenv("DESKTOP_STARTUP_ID") : token;
}

}  // namespace

bool RunLock::Acquire(const QString& listFile, const QString& programFolder) {
  Release();
  keyFile_ = programFolder + u"/."_s + ListKey(listFile) + u".lock"_s;
  if (Lock(listFile, O_RDONLY, list_) && Lock(keyFile_, O_RDWR | O_CREAT, key_)) return true;
  Release();
  return false;
}

void RunLock::Release() {
  // Removed while the lock is still held, so that nobody else's file can be meant.
  if (key_.Number() >= 0) QFile::remove(keyFile_);
  key_.Close();
  list_.Close();
}

WindowLock::WindowLock() : folder_(RuntimeFolder()) {
  server_.setSocketOptions(QLocalServer::UserAccessOption);
  connect(&server_, &QLocalServer::newConnection, this, &WindowLock::AnswerNext);
}

QString WindowLock::BasePath(const QString& listFile) const {
  return folder_ + u'/' + ListKey(listFile);
}

bool WindowLock::Acquire(const QString& listFile) {
  const QString wanted = listFile.isEmpty() ? QString() : BasePath(listFile);
  if (wanted == held_) return true;
  server_.close();
  lock_.Close();  // its file stays for the next window
  held_.clear();
  if (wanted.isEmpty() || folder_.isEmpty()) return true;
  if (!Lock(wanted + u".lock"_s, O_RDWR | O_CREAT, lock_)) return false;
  if (lock_.Number() < 0) return true;
  held_ = wanted;
  // With the lock held, a socket that lies there was left behind by a crash.
  const QString socket = wanted + u".socket"_s;
  QLocalServer::removeServer(socket);
  server_.listen(socket);
  return true;
}

QCoro::Task<bool> WindowLock::RaiseHolder(QString listFile) {
  if (folder_.isEmpty()) co_return false;
  QLocalSocket socket;
  socket.connectToServer(BasePath(listFile) + u".socket"_s);
  if (socket.state() == QLocalSocket::UnconnectedState) co_return false;
  socket.write(kRaise.toByteArray() + ActivationToken() + '\n');
  const auto answered = co_await qCoro(&socket, &QLocalSocket::readyRead, kAnswerTime);
  co_return answered.has_value();
}

void WindowLock::AnswerNext() {
  QLocalSocket* socket = server_.nextPendingConnection();
  if (socket == nullptr) return;
  socket->setReadBufferSize(kMaxRequestBytes);
  connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
  QTimer::singleShot(kAnswerTime, socket, &QLocalSocket::abort);
  const auto read = [this, socket] {
    if (!socket->canReadLine()) return;
    const QByteArray line = socket->readLine(kMaxRequestBytes);
    if (!line.startsWith(kRaise)) return;
    socket->write("ok\n");
    Q_EMIT RaiseRequested(line.sliced(kRaise.size()).trimmed());
  };
  connect(socket, &QLocalSocket::readyRead, this, read);
  read();
}

}  // namespace zentorin
