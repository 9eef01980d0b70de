// SPDX-License-Identifier: MIT
#pragma once

#include <QFile>
#include <cerrno>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

namespace zentorin {

// Closed with its object. Opening never waits for the other end of a pipe.
class Descriptor {
 public:
  // Takes over what is open; a negative number is none.
  explicit Descriptor(int number = -1) : number_(number) {}
  Descriptor(const QString& path, int flags, mode_t newFileMode = 0666)
      : number_(open(QFile::encodeName(path).constData(), flags | O_NONBLOCK | O_NOCTTY | O_CLOEXEC,
                     newFileMode)) {}
  Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    Close();
    number_ = std::exchange(other.number_, -1);
    return *this;
  }
  ~Descriptor() { Close(); }

  // False with errno set when an earlier write turns out to have failed.
  bool Close() { return number_ < 0 || close(std::exchange(number_, -1)) == 0 || errno == EINTR; }

  int Number() const { return number_; }  // negative: nothing is open

 private:
  int number_;
};

}  // namespace zentorin
