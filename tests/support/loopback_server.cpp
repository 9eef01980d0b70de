// SPDX-License-Identifier: MIT
#include "tests/support/loopback_server.h"

#include <QTcpSocket>
#include <QTimer>
#include <algorithm>
#include <limits>

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
  request.method = words.value(0);
  request.target = QString::fromLatin1(words.value(1));
  for (const QByteArray& line : lines.mid(1)) {
    const qsizetype colon = line.indexOf(':');
    if (colon > 0) request.headers.append({line.left(colon), line.mid(colon + 1).trimmed()});
  }
  request.host = QString::fromLatin1(request.Header("Host")).toLower().section(u':', 0, 0);
  return request;
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
      if (busy_ && !timer_.isActive()) Pump();
    });
    connect(socket_, &QTcpSocket::disconnected, this, &QObject::deleteLater);
  }

 private:
  void Read() {
    received_ += socket_->readAll();
    Next();
  }

  void Next() {
    if (busy_) return;
    const qsizetype end = received_.indexOf("\r\n\r\n");
    if (end < 0) return;
    ReceivedRequest request = ParseHead(received_.left(end));
    received_.remove(0, end + 4);
    busy_ = true;
    answer_ = server_.AnswerTo(request);
    if (answer_.ending != Answer::Ending::Silent) Start();
  }

  void Start() {
    sent_ = 0;
    if (!answer_.raw.isEmpty()) {
      socket_->write(answer_.raw);
      if (answer_.ending != Answer::Ending::Stall) socket_->disconnectFromHost();
      return;
    }
    socket_->write(Head());
    if (answer_.pieceBytes > 0) {
      timer_.start(answer_.pieceInterval);
    } else {
      Pump();
    }
  }

  QByteArray Head() {
    QByteArray head = "HTTP/1.1 " + QByteArray::number(answer_.status) + " Scripted\r\n";
    for (const auto& [name, value] : answer_.headers) head += name + ": " + value + "\r\n";
    const bool hasBody = answer_.status != 204 && answer_.status != 304;
    const QByteArray length = answer_.contentLength.value_or(QByteArray::number(BodyBytes()));
    if (!length.isEmpty() && hasBody) head += "Content-Length: " + length + "\r\n";
    // Without a length only the end of the connection ends the body.
    if (length.isEmpty() && answer_.ending == Answer::Ending::Whole) {
      answer_.ending = Answer::Ending::Close;
    }
    return head + "\r\n";
  }

  qint64 BodyBytes() const { return answer_.body.size() + answer_.generatedBytes; }

  // Sends as much of the body as the socket should hold, or the next piece.
  void Pump() {
    if (answer_.ending == Answer::Ending::Silent) return;
    const bool endsEarly =
        answer_.ending == Answer::Ending::CutOff || answer_.ending == Answer::Ending::Stall;
    const qint64 last = endsEarly ? std::min(answer_.endAfter, BodyBytes()) : BodyBytes();
    while (sent_ < last && socket_->bytesToWrite() < kMaxWaitingBytes) {
      const qsizetype most = answer_.pieceBytes > 0 ? answer_.pieceBytes : kChunkBytes;
      const QByteArray bytes = BodyAt(sent_, std::min<qint64>(most, last - sent_));
      sent_ += bytes.size();
      server_.bodyBytesSent_ += bytes.size();
      socket_->write(bytes);
      if (answer_.pieceBytes > 0) {
        timer_.start(answer_.pieceInterval);
        return;
      }
    }
    if (sent_ < last || answer_.ending == Answer::Ending::Stall) return;
    if (answer_.ending != Answer::Ending::Whole) {
      socket_->disconnectFromHost();
      return;
    }
    busy_ = false;
    Next();
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

LoopbackServer::LoopbackServer() {
  server_.setMaxPendingConnections(std::numeric_limits<int>::max());
  server_.listen(QHostAddress::LocalHost);
  connect(&server_, &QTcpServer::newConnection, this, &LoopbackServer::Accept);
}

LoopbackServer::~LoopbackServer() {
  server_.close();
  // They count into this object: gone before its members are.
  qDeleteAll(findChildren<LoopbackConnection*>());
}

void LoopbackServer::Route(const QString& target, const Answer& answer) {
  RouteTo(target, [answer](const ReceivedRequest&) { return answer; });
}

void LoopbackServer::RouteTo(const QString& target, const Handler& handler) {
  routes_.insert(target, handler);
}

QString LoopbackServer::ConnectTo() const {
  return u"::127.0.0.1:%1"_s.arg(server_.serverPort());
}

QString LoopbackServer::Url(const QString& target) const {
  return u"http://127.0.0.1:%1%2"_s.arg(server_.serverPort()).arg(target);
}

QByteArray LoopbackServer::GeneratedBytes(qint64 from, qsizetype count) {
  static const QByteArray pattern = [] {
    QByteArray bytes(kChunkBytes + kPatternPeriod, Qt::Uninitialized);
    for (qsizetype i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<char>(i % kPatternPeriod);
    return bytes;
  }();
  QByteArray bytes;
  bytes.reserve(count);
  while (bytes.size() < count) {
    const qsizetype at = (from + bytes.size()) % kPatternPeriod;
    bytes += pattern.mid(at, std::min(kChunkBytes, count - bytes.size()));
  }
  return bytes;
}

void LoopbackServer::Accept() {
  while (QTcpSocket* socket = server_.nextPendingConnection()) {
    ++connections_;
    new LoopbackConnection(*this, socket);
  }
}

Answer LoopbackServer::AnswerTo(const ReceivedRequest& request) {
  const QString withHost = request.host + request.target;
  ++hits_[request.target];
  ++hits_[withHost];
  requests_.append(request);
  Q_EMIT RequestReceived(request.target);
  auto route = routes_.constFind(withHost);
  if (route == routes_.constEnd()) route = routes_.constFind(request.target);
  if (route != routes_.constEnd()) return (*route)(request);
  return fallback_ ? fallback_(request) : Answer::Status(404);
}

}  // namespace zentorin::test

#include "loopback_server.moc"
