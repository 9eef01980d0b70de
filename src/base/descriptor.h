// SPDX-License-Identifier: MIT
#pragma once

#include <QFile>

#include <fcntl.h>
#include <unistd.h>

namespace zentorin {

// An open file or folder of the system, closed with its object. Opening never waits for the other
// end of a pipe.
class Descriptor {
 public:
  Descriptor(const QString& path, int flags)
      : number_(open(QFile::encodeName(path).constData(), flags | O_NONBLOCK | O_NOCTTY | O_CLOEXEC,
                     0666)) {}
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  ~Descriptor() {
    if (number_ >= 0) close(number_);
  }

  // Negative when opening failed, with errno set.
  int Number() const { return number_; }

 private:
  int number_;
};

}  // namespace zentorin
