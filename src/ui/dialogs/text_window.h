// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

class QLabel;
class QLineEdit;
class QPlainTextEdit;

namespace zentorin {

// A plain text to read: it can be searched and copied, and be saved by whoever looks at it. Writes
// nothing by itself.
class TextWindow : public QWidget {
  Q_OBJECT

 public:
  TextWindow(const QString& text, const QString& title, QWidget* parent = nullptr);

 Q_SIGNALS:
  // The user wants the text in a file.
  void SaveRequested(const QString& text);

 private:
  void MakeControls();
  void MakeShortcuts();
  void Find(bool backward);

  QString text_;
  QPlainTextEdit* txtText = nullptr;
  QLineEdit* txtFind = nullptr;
  QLabel* lblFound = nullptr;
};

}  // namespace zentorin
