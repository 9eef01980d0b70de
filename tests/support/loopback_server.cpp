// SPDX-License-Identifier: MIT
#include "tests/support/loopback_server.h"

#include <QSslCertificate>
#include <QSslConfiguration>
#include <QSslKey>
#include <QSslServer>
#include <QSslSocket>
#include <QTcpSocket>
#include <QTimer>
#include <algorithm>
#include <limits>
#include <numeric>

#include <sys/socket.h>

#include "tests/support/test_certificate.h"

namespace zentorin::test {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qsizetype kChunkBytes = 65'536;
// Bytes that may wait in the socket before more are made.
constexpr qint64 kMaxWaitingBytes = 262'144;
constexpr int kPatternPeriod = 251;

ReceivedRequest ParseHead(const QByteArray& head) {
  ReceivedRequest request;
  const QList<QByteArray> lines = head.split('\n');
  const QList<QByteArray> words = lines.first().trimmed().split(' ');
  request.target = QString::fromLatin1(words.value(1));
  for (const QByteArray& line : lines.mid(1)) {
    const qsizetype colon = line.indexOf(':');
    if (colon > 0) request.headers.append({line.left(colon), line.mid(colon + 1).trimmed()});
  }
  request.host = QString::fromLatin1(request.Header("Host")).toLower().section(u':', 0, 0);
  return request;
}

std::unique_ptr<QTcpServer> NewServer(LoopbackServer::Transport transport) {
  if (transport == LoopbackServer::Transport::Plain) return std::make_unique<QTcpServer>();
  QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
  configuration.setLocalCertificate(QSslCertificate(QByteArray(kTestCertificate)));
  configuration.setPrivateKey(QSslKey(QByteArray(kTestKey), QSsl::Ec));
  auto server = std::make_unique<QSslServer>();
  server->setSslConfiguration(configuration);
  return server;
}

}  // namespace

// One accepted connection: reads a request, sends its answer, reads the next. Owns its socket and
// dies with it.
class LoopbackConnection : public QObject {
  Q_OBJECT

 public:
  LoopbackConnection(LoopbackServer& server, QTcpSocket* socket)
      : QObject(&server), server_(server), socket_(socket) {
    socket_->setParent(this);
    // Else a body waits 40 ms for the acknowledgement of its head.
    socket_->setSocketOption(QAbstractSocket::LowDelayOption, 1);
    timer_.setSingleShot(true);
    connect(&timer_, &QTimer::timeout, this, &LoopbackConnection::Pump);
    connect(socket_, &QTcpSocket::readyRead, this, &LoopbackConnection::Read);
    connect(socket_, &QTcpSocket::bytesWritten, this, [this] {
      if (busy_) Pump();
    });
    connect(socket_, &QTcpSocket::disconnected, this, &QObject::deleteLater);
  }
  ~LoopbackConnection() override { SetBusy(false); }

 private:
  // Takes up the next request, once the one before is answered.
  void Read() {
    received_ += socket_->readAll();
    const qsizetype end = received_.indexOf("\r\n\r\n");
    if (busy_ || end < 0) return;
    const ReceivedRequest request = ParseHead(received_.first(end));
    received_.remove(0, end + 4);
    SetBusy(true);
    sent_ = 0;
    answer_ = server_.AnswerTo(request);
    if (answer_.ending == Answer::Ending::Silent) return;
    socket_->write(answer_.raw.isEmpty() ? Head() : answer_.raw);
    // Only the end of the connection ends what announces no length.
    const bool endless = !answer_.raw.isEmpty() || answer_.contentLength == QByteArray("");
    if (endless && answer_.ending == Answer::Ending::Whole) answer_.ending = Answer::Ending::Close;
    Pump();
  }

  void SetBusy(bool busy) {
    if (busy != busy_) server_.busy_ += busy ? 1 : -1;
    busy_ = busy;
  }

  QByteArray Head() const {
    QByteArray head = "HTTP/1.1 " + QByteArray::number(answer_.status) + " Scripted\r\n";
    for (const auto& [name, value] : answer_.headers) head += name + ": " + value + "\r\n";
    const QByteArray length = answer_.contentLength.value_or(QByteArray::number(BodyBytes()));
    if (!length.isEmpty()) head += "Content-Length: " + length + "\r\n";
    return head + "\r\n";
  }

  qint64 BodyBytes() const { return answer_.body.size() + answer_.generatedBytes; }

  // Sends as much of the body as the socket should hold, or the next piece.
  void Pump() {
    const Answer::Ending ending = answer_.ending;
    if (ending == Answer::Ending::Silent) return;
    const bool endsEarly = ending == Answer::Ending::CutOff || ending == Answer::Ending::Stall;
    const qint64 last = endsEarly ? std::min(answer_.endAfter, BodyBytes()) : BodyBytes();
    const bool inPieces = answer_.pieceBytes > 0;
    while (sent_ < last && !timer_.isActive() && socket_->bytesToWrite() < kMaxWaitingBytes) {
      const qint64 most = inPieces ? answer_.pieceBytes : kChunkBytes;
      const QByteArray bytes = BodyAt(sent_, std::min(most, last - sent_));
      sent_ += bytes.size();
      server_.bodyBytesSent_ += bytes.size();
      socket_->write(bytes);
      if (inPieces) timer_.start(answer_.pieceInterval);
    }
    if (sent_ < last || ending == Answer::Ending::Stall) return;
    if (ending != Answer::Ending::Whole) {
      const bool isTls = qobject_cast<QSslSocket*>(socket_) != nullptr;
      if (isTls && ending == Answer::Ending::CutOff) {
        socket_->flush();
        ::shutdown(static_cast<int>(socket_->socketDescriptor()), SHUT_RDWR);
      }
      socket_->disconnectFromHost();
      return;
    }
    SetBusy(false);
    Read();
  }

  QByteArray BodyAt(qint64 from, qint64 count) const {
    if (from < answer_.body.size()) return answer_.body.mid(from, count);
    return LoopbackServer::GeneratedBytes(from - answer_.body.size(), count);
  }

  LoopbackServer& server_;
  QTcpSocket* socket_;
  QTimer timer_;
  QByteArray received_;
  Answer answer_;
  bool busy_ = false;
  qint64 sent_ = 0;
};

LoopbackServer::LoopbackServer(Transport transport) : server_(NewServer(transport)) {
  server_->setMaxPendingConnections(std::numeric_limits<int>::max());
  server_->listen(QHostAddress::LocalHost);
  connect(server_.get(), &QTcpServer::pendingConnectionAvailable, this, [this] {
    ++connections_;
    new LoopbackConnection(*this, server_->nextPendingConnection());
  });
}

LoopbackServer::~LoopbackServer() {
  server_->close();
  // They count into this object: gone before its members are.
  qDeleteAll(findChildren<LoopbackConnection*>());
}

void LoopbackServer::Route(const QString& target, const Answer& answer) {
  RouteTo(target, [answer](const ReceivedRequest&) { return answer; });
}

QString LoopbackServer::ConnectTo() const {
  return u"::127.0.0.1:%1"_s.arg(server_->serverPort());
}

QString LoopbackServer::Url(const QString& target) const {
  return u"http://127.0.0.1:%1%2"_s.arg(server_->serverPort()).arg(target);
}

int LoopbackServer::Hits(const QString& target) const {
  const auto hits = std::ranges::count_if(requests_, [&target](const ReceivedRequest& request) {
    return request.target == target || request.host + request.target == target;
  });
  return static_cast<int>(hits);
}

QByteArray LoopbackServer::GeneratedBytes(qint64 from, qsizetype count) {
  QByteArray period(kPatternPeriod, Qt::Uninitialized);
  std::iota(period.begin(), period.end(), '\0');
  return period.repeated(count / kPatternPeriod + 2).mid(from % kPatternPeriod, count);
}

Answer LoopbackServer::AnswerTo(const ReceivedRequest& request) {
  requests_.append(request);
  Q_EMIT RequestReceived(request.target);
  const Handler anyHost = routes_.value(request.target, fallback_);
  const Handler handler = routes_.value(request.host + request.target, anyHost);
  return handler ? handler(request) : Answer::Status(404);
}

}  // namespace zentorin::test

#include "loopback_server.moc"
