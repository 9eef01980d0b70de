// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <optional>

#include "base/descriptor.h"

namespace zentorin {

// VLC's remote control on a Unix socket: asks where the player stands and tells it to quit. Nothing
// here waits: questions are sent, and their answers picked up later.
class VlcRemote {
 public:
  struct Standing {
    qint64 position = 0;  // seconds
    qint64 length = 0;    // seconds; 0 while it is not known
  };

  bool Connect(const QString& path);  // true once the player listens
  void Disconnect();
  void Ask();
  std::optional<Standing> Answer();  // the last whole one since the last call
  void Quit();

 private:
  void Send(const QByteArray& commands) const;
  void TakeLine(const QByteArray& line);

  Descriptor socket_;
  QByteArray buffer_;
  QList<qint64> numbers_;
  std::optional<Standing> standing_;
};

}  // namespace zentorin
