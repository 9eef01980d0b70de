// SPDX-License-Identifier: MIT
#include "base/bus_greeting.h"

#include <QDeadlineTimer>
#include <QStringList>
#include <array>
#include <cerrno>

#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include "base/unix_socket.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qsizetype kMaxHeard = 4096;
constexpr qsizetype kAlignment = 8;

// A text of a message's header, whose lengths all fit into a byte.
void AddField(QByteArray& fields, char code, char type, const QByteArray& text) {
  while (fields.size() % kAlignment != 0) fields += '\0';
  fields += code;
  fields += '\1';
  fields += type;
  fields += '\0';
  fields += static_cast<char>(text.size());
  fields += QByteArray(3, '\0') + text + '\0';
}

// The first message that a bus expects: a call of its method Hello, without arguments.
QByteArray Hello() {
  const QByteArray bus = QByteArrayLiteral("org.freedesktop.DBus");
  QByteArray fields;
  AddField(fields, '\1', 'o', "/org/freedesktop/DBus");
  AddField(fields, '\3', 's', "Hello");
  AddField(fields, '\2', 's', bus);
  AddField(fields, '\6', 's', bus);
  const QByteArray noBody(4, '\0');
  const QByteArray serial("\1\0\0\0", 4);
  QByteArray message = QByteArray("l\1\0\1", 4) + noBody + serial;
  message += static_cast<char>(fields.size());
  message += QByteArray(3, '\0') + fields;
  while (message.size() % kAlignment != 0) message += '\0';
  return message;
}

// The name of a Unix socket as the system takes it; empty for any other kind of address.
QByteArray SocketName(const QString& address) {
  const QString prefix = u"unix:"_s;
  if (!address.startsWith(prefix)) return {};
  for (const QString& pair : address.sliced(prefix.size()).split(u',')) {
    QByteArray value = QByteArray::fromPercentEncoding(pair.section(u'=', 1).toUtf8());
    if (pair.startsWith(u"path="_s)) return value;
    if (pair.startsWith(u"abstract="_s)) return '\0' + value;
  }
  return {};
}

}  // namespace

BusGreeting::BusGreeting(const QString& address) {
  for (const QString& each : address.split(u';', Qt::SkipEmptyParts)) {
    socket_ = ConnectUnixSocket(SocketName(each));
    if (Socket() < 0) continue;
    address_ = each;
    state_ = State::Waiting;
    const QByteArray user = QByteArray::number(geteuid()).toHex();
    Say('\0' + QByteArrayLiteral("AUTH EXTERNAL ") + user + "\r\n");
    return;
  }
}

void BusGreeting::Say(const QByteArray& words) {
  const auto size = static_cast<size_t>(words.size());
  const ssize_t sent = send(Socket(), words.constData(), size, MSG_NOSIGNAL);
  if (sent != words.size()) state_ = State::Absent;
}

void BusGreeting::Advance() {
  if (state_ != State::Waiting) return;
  Hear();
  if (heard_.isEmpty() || state_ != State::Waiting) return;
  if (authenticated_) {
    // Whatever it says to the call, it serves connections.
    state_ = State::Answered;
  } else if (heard_.endsWith("\r\n")) {
    authenticated_ = heard_.startsWith("OK ");
    heard_.clear();
    if (authenticated_) {
      Say(QByteArrayLiteral("BEGIN\r\n") + Hello());
    } else {
      state_ = State::Absent;
    }
  }
}

void BusGreeting::Hear() {
  std::array<char, 512> block = {};
  const ssize_t size = recv(Socket(), block.data(), block.size(), 0);
  if (size > 0) heard_.append(block.data(), size);
  const bool gone = size == 0 || (size < 0 && errno != EAGAIN && errno != EINTR);
  if (gone || heard_.size() > kMaxHeard) state_ = State::Absent;
}

BusGreeting::State BusGreeting::WaitFor(std::chrono::milliseconds bound) {
  const QDeadlineTimer deadline(bound);
  while (state_ == State::Waiting && !deadline.hasExpired()) {
    pollfd watched = {.fd = Socket(), .events = POLLIN, .revents = 0};
    if (poll(&watched, 1, static_cast<int>(deadline.remainingTime())) > 0) Advance();
  }
  if (state_ == State::Waiting) state_ = State::Absent;
  return state_;
}

}  // namespace zentorin
