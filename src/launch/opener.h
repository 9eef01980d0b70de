// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace zentorin {

// Opens things in other programs. Paths may have the program's own form or this system's.
class Opener {
 public:
  Opener() = default;
  Opener(const Opener&) = delete;
  Opener& operator=(const Opener&) = delete;
  virtual ~Opener() = default;

  // The program that the desktop has set for an address or a file. Failures go unnoticed.
  virtual void OpenWithDefaultHandler(const QString& target) = 0;
  // Shows a folder in the file manager. Failures go unnoticed.
  virtual void OpenFolder(const QString& path) = 0;
  // A text in a plain-text window of its own, never written to a file.
  virtual void ShowText(const QString& text, const QString& title) = 0;
  // A page in the browser; a file or stream in the program that is registered for it. The user is
  // told of failures.
  virtual void PlayOrView(const QString& target) = 0;
  // The same in a program of the table of well-known applications, by its name there; an empty
  // target just starts it. The user is told of failures.
  virtual void OpenWith(const QString& applicationName, const QString& target) = 0;
};

}  // namespace zentorin
