// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <optional>

namespace zentorin {

// VLC's remote control on a Unix socket: asks where the player stands and tells it to quit. Nothing
// here waits: questions are sent, and their answers picked up later.
class VlcRemote {
 public:
  struct Standing {
    qint64 position = 0;  // seconds
    qint64 length = 0;    // seconds; 0 while it is not known
  };

  VlcRemote() = default;
  VlcRemote(const VlcRemote&) = delete;
  VlcRemote& operator=(const VlcRemote&) = delete;
  ~VlcRemote();

  // True once the player listens.
  bool Connect(const QString& path);
  void Disconnect();
  void Ask();
  // The last whole answer since the last call.
  std::optional<Standing> Answer();
  void Quit();

 private:
  void Send(const QByteArray& commands) const;
  void TakeLine(const QByteArray& line);

  int socket_ = -1;
  QByteArray buffer_;
  QList<qint64> numbers_;
  std::optional<Standing> standing_;
};

}  // namespace zentorin
