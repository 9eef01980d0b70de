// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>
#include <QTimer>
#include <memory>

namespace Ui {
class frmSearch;
}

namespace zentorin {

// The search dialog: asks for a text and for the next or all of the rows that hold it. It stays
// above all windows while it is open. Its replace and jump controls are there to be seen only, and
// "厳密一致" can be ticked but changes nothing: both are this program's rule.
class frmSearch : public QDialog {
  Q_OBJECT

 public:
  explicit frmSearch(QWidget* parent = nullptr);
  ~frmSearch() override;

 Q_SIGNALS:
  void FindNextRequested(const QString& text);
  void FindAllRequested(const QString& text);

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  void EnableCommands(const QString& text);

  std::unique_ptr<Ui::frmSearch> ui_;
  QTimer Timer_Start;  // gives the text field the focus once the dialog is on the screen
};

}  // namespace zentorin
