// SPDX-License-Identifier: MIT
#include "ui/list_claim.h"

#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>
#include <QLocalSocket>
#include <QTimer>
#include <chrono>
#include <utility>

#include <QCoro/QCoroSignal>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr std::chrono::milliseconds kAnswerTime(3000);
constexpr qint64 kMaxRequestBytes = 4096;
constexpr mode_t kOnlyUser = 0700;
constexpr mode_t kOnlyUserFile = 0600;

const QByteArray& Wish() {
  static const QByteArray wish("raise ");
  return wish;
}

// Whether the folder is there and nobody else can look into it or put anything there.
bool MakeTrustedFolder(const QString& folder) {
  const QByteArray path = QFile::encodeName(folder);
  ::mkdir(path.constData(), kOnlyUser);
  struct stat found = {};
  constexpr mode_t kOthers = 0077;
  return ::lstat(path.constData(), &found) == 0 && S_ISDIR(found.st_mode) &&
         found.st_uid == ::geteuid() && (found.st_mode & kOthers) == 0;
}

// The token by which the desktop lets the window that is asked come to the front.
QByteArray ActivationToken() {
  const QByteArray token = qgetenv("XDG_ACTIVATION_TOKEN");
  return token.isEmpty() ? qgetenv("DESKTOP_STARTUP_ID") : token;
}

}  // namespace

ListClaim::ListClaim(const QString& folder, QObject* parent)
    : QObject(parent), folder_(MakeTrustedFolder(folder) ? folder : QString()) {
  server_.setSocketOptions(QLocalServer::UserAccessOption);
  connect(&server_, &QLocalServer::newConnection, this, &ListClaim::AnswerNext);
}

ListClaim::~ListClaim() {
  GiveUp();
}

QString ListClaim::RuntimeFolder() {
  const QString base = qEnvironmentVariable("XDG_RUNTIME_DIR");
  if (!base.isEmpty()) return base + u"/zentorin"_s;
  return u"/tmp/zentorin-%1"_s.arg(::geteuid());
}

// Named after the file that the path leads to, so that every path to it means the same claim.
QString ListClaim::BaseName(const QString& listFile) const {
  const QFileInfo info(listFile);
  const QString canonical = info.exists() ? info.canonicalFilePath() : info.absoluteFilePath();
  const QByteArray key = QCryptographicHash::hash(canonical.toUtf8(), QCryptographicHash::Sha1);
  return folder_ + u'/' + QString::fromLatin1(key.toHex());
}

bool ListClaim::Take(const QString& listFile) {
  const QString wanted = listFile.isEmpty() ? QString() : BaseName(listFile);
  if (wanted == claimed_) return true;
  GiveUp();
  if (wanted.isEmpty() || folder_.isEmpty()) return true;
  const QByteArray lockFile = QFile::encodeName(wanted + u".lock"_s);
  const int lock = ::open(lockFile.constData(), O_RDWR | O_CREAT | O_CLOEXEC, kOnlyUserFile);
  if (lock < 0) return true;
  if (::flock(lock, LOCK_EX | LOCK_NB) != 0) {
    ::close(lock);
    return false;
  }
  lock_ = lock;
  claimed_ = wanted;
  // With the lock held, a socket that lies there was left behind by a crash.
  const QString socket = wanted + u".socket"_s;
  QLocalServer::removeServer(socket);
  server_.listen(socket);
  return true;
}

// The lock file stays: removing it would let two processes lock two files of one name.
void ListClaim::GiveUp() {
  server_.close();
  claimed_.clear();
  if (lock_ >= 0) ::close(std::exchange(lock_, -1));
}

QCoro::Task<bool> ListClaim::RaiseHolder(QString listFile) {
  if (folder_.isEmpty()) co_return false;
  QLocalSocket socket;
  socket.connectToServer(BaseName(listFile) + u".socket"_s);
  if (socket.state() == QLocalSocket::UnconnectedState) co_return false;
  socket.write(Wish() + ActivationToken() + '\n');
  const auto answered = co_await qCoro(&socket, &QLocalSocket::readyRead, kAnswerTime);
  co_return answered.has_value();
}

void ListClaim::AnswerNext() {
  QLocalSocket* socket = server_.nextPendingConnection();
  if (socket == nullptr) return;
  socket->setReadBufferSize(kMaxRequestBytes);
  connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
  QTimer::singleShot(kAnswerTime, socket, &QLocalSocket::abort);
  const auto read = [this, socket] {
    if (!socket->canReadLine()) return;
    const QByteArray line = socket->readLine(kMaxRequestBytes).trimmed() + ' ';
    if (!line.startsWith(Wish())) return;
    socket->write("ok\n");
    Q_EMIT RaiseRequested(line.mid(Wish().size()).trimmed());
  };
  connect(socket, &QLocalSocket::readyRead, this, read);
  read();
}

}  // namespace zentorin
