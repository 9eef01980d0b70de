// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <optional>
#include <vector>

namespace zentorin {

struct ToolWindow {
  quint32 id = 0;
  QString instance;  // both parts of its class
  QString className;
  QString title;
  qint64 processId = 0;  // 0 when the window does not tell
  quint32 owner = 0;     // the window that it is a dialog of; 0 for none
  bool visible = false;

  bool IsMain() const { return owner == 0; }
  // An id alone does not tell: that of a window that is gone is given to another one.
  bool IsSameAs(const ToolWindow& other) const {
    return id == other.id && processId == other.processId && className == other.className &&
           instance == other.instance;
  }
  bool IsOfClass(const QString& name) const {
    return className.compare(name, Qt::CaseInsensitive) == 0 ||
           instance.compare(name, Qt::CaseInsensitive) == 0;
  }
};

// The windows of other programs. Requests for a window that is gone do nothing.
class ToolWindows {
 public:
  ToolWindows() = default;
  ToolWindows(const ToolWindows&) = delete;
  ToolWindows& operator=(const ToolWindows&) = delete;
  virtual ~ToolWindows() = default;

  virtual bool Available() = 0;  // false without a display; then the list is empty
  virtual std::vector<ToolWindow> List() = 0;
  // As it is now; nothing when it is gone. It is asked by its id: a list that is made while a
  // window manager takes a window from one parent to another may lack it.
  virtual std::optional<ToolWindow> Find(const ToolWindow& window) = 0;

  virtual void PressKey(quint32 window, char16_t letter) = 0;
  virtual void Show(quint32 window, bool shown) = 0;  // minimised, or hidden
  virtual void Close(quint32 window) = 0;             // asks it to
  virtual void EndProgram(quint32 window) = 0;
};

}  // namespace zentorin
