// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>
#include <QStringList>
#include <memory>

namespace Ui {
class frmAbout;
}

namespace zentorin {

class frmAbout : public QDialog {
  Q_OBJECT

 public:
  // `libraries`: one line for each, name and version.
  frmAbout(const QString& title, const QStringList& libraries, QWidget* parent = nullptr);
  ~frmAbout() override;

 Q_SIGNALS:
  void SystemInformationRequested();
  void HistoryRequested();

 private:
  std::unique_ptr<Ui::frmAbout> ui_;
};

QStringList LibraryVersions();  // "Qt 6.4.2" and the like

}  // namespace zentorin
