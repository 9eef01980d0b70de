// SPDX-License-Identifier: MIT
#include "download/stream/vlc_remote.h"

#include <QFile>
#include <array>

#include <sys/socket.h>

#include "base/unix_socket.h"

namespace zentorin {
namespace {

constexpr qsizetype kMaxLineBytes = 65'536;

// No command: the player's complaint about it tells that all before it is answered.
constexpr QByteArrayView kMark("zentorin-mark");

}  // namespace

void VlcRemote::Disconnect() {
  socket_.Close();
  buffer_.clear();
  numbers_.clear();
}

// A local socket connects at once or not at all.
bool VlcRemote::Connect(const QString& path) {
  if (socket_.Number() < 0) socket_ = ConnectUnixSocket(QFile::encodeName(path));
  return socket_.Number() >= 0;
}

void VlcRemote::Ask() {
  Send("get_time\nget_length\n" + kMark.toByteArray() + '\n');
}

void VlcRemote::Quit() {
  Send("quit\n");
}

// A player that does not read is no reason to wait: it will be ended.
void VlcRemote::Send(const QByteArray& commands) const {
  if (socket_.Number() < 0) return;
  const auto size = static_cast<std::size_t>(commands.size());
  ::send(socket_.Number(), commands.constData(), size, MSG_NOSIGNAL);
}

std::optional<VlcRemote::Standing> VlcRemote::Answer() {
  standing_.reset();
  std::array<char, 4096> block{};
  constexpr int kMaxBlocks = 64;
  for (int i = 0; socket_.Number() >= 0 && i < kMaxBlocks; ++i) {
    const ssize_t count = ::recv(socket_.Number(), block.data(), block.size(), 0);
    if (count <= 0) break;
    buffer_.append(block.data(), count);
  }
  qsizetype begin = 0;
  for (qsizetype end = buffer_.indexOf('\n'); end >= 0; end = buffer_.indexOf('\n', begin)) {
    TakeLine(buffer_.mid(begin, end - begin).trimmed());
    begin = end + 1;
  }
  buffer_.remove(0, begin);
  if (buffer_.size() > kMaxLineBytes) buffer_.clear();
  return standing_;
}

// Between the answers the player tells of its changes, in lines that are no numbers.
void VlcRemote::TakeLine(const QByteArray& line) {
  bool isNumber = false;
  const qint64 number = line.toLongLong(&isNumber);
  if (isNumber) {
    constexpr int kMoreThanAnyAnswer = 8;
    if (numbers_.size() < kMoreThanAnyAnswer) numbers_.append(number);
  } else if (line.contains(kMark)) {
    constexpr int kQuestions = 2;
    if (numbers_.size() == kQuestions) {
      standing_ = Standing{.position = std::max<qint64>(0, numbers_[0]),
                           .length = std::max<qint64>(0, numbers_[1])};
    }
    numbers_.clear();
  }
}

}  // namespace zentorin
