// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace zentorin {

// Paths may have the program's own form or this system's.
class Opener {
 public:
  Opener() = default;
  Opener(const Opener&) = delete;
  Opener& operator=(const Opener&) = delete;
  virtual ~Opener() = default;

  virtual void OpenWithDefaultHandler(const QString& target) = 0;        // failures go unnoticed
  virtual void OpenFolder(const QString& path) = 0;                      // failures go unnoticed
  virtual void ShowText(const QString& text, const QString& title) = 0;  // never written to a file
  // A page in the browser, else in the registered program. The user is told of failures.
  virtual void PlayOrView(const QString& target) = 0;
  // In a well-known application; an empty target just starts it. The user is told of failures.
  virtual void OpenWith(const QString& applicationName, const QString& target) = 0;
};

}  // namespace zentorin
