// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>

class QLabel;
class QMenu;
class QPlainTextEdit;

namespace zentorin {

// A larger editor for one long value, which stays one line.
class frmInput : public QDialog {
  Q_OBJECT

 public:
  static constexpr int kMinPoints = 9;
  static constexpr int kMaxPoints = 40;

  explicit frmInput(const QString& value, QWidget* parent = nullptr);

  // "no_commandline", in any letter case, hides the hint about command-line switches.
  void SetTag(const QString& tag);

  // Puts the dialog just below a rectangle of the screen, moved to the left when it would run past
  // the screen's right edge.
  void PlaceBelow(const QRect& target);

 Q_SIGNALS:
  // The user closed the dialog with "閉じる".
  void ValueAccepted(const QString& value);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;

 private:
  void MakeControls();
  void Connect();
  int Points() const;
  void SetPoints(int points);
  void ChooseFont();

  QPlainTextEdit* txtInput = nullptr;
  QLabel* lblComSw = nullptr;
  QMenu* mnuEdit = nullptr;
};

}  // namespace zentorin
