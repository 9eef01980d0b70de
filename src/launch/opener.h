// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <QCoro/QCoroTask>

namespace zentorin {

// Opens things in other programs. Paths are paths of this system.
class Opener {
 public:
  Opener() = default;
  Opener(const Opener&) = delete;
  Opener& operator=(const Opener&) = delete;
  virtual ~Opener() = default;

  // The program that the desktop has set for an address or a file. Failures go unnoticed.
  virtual void OpenWithDefaultHandler(const QString& target) = 0;
  virtual void OpenFolder(const QString& path) = 0;
  // A text in a plain-text window of its own, never written to a file.
  virtual void ShowText(const QString& text, const QString& title) = 0;
};

}  // namespace zentorin
