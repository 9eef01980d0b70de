// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>
#include <QStringList>
#include <memory>

#include <QCoro/QCoroTask>

namespace Ui {
class frmSetting;
}

namespace zentorin {

class FileDialogs;
class KeptChoices;
class MessageBoxes;
struct AppSettings;
struct FetchChoices;

struct SettingContext {
  AppSettings& settings;
  KeptChoices& keptChoices;
  FetchChoices& choices;  // in force
  FileDialogs& dialogs;
  MessageBoxes& messages;
  QString programFolder;  // where the folder chooser starts when no folder is set
  QStringList toolPaths;  // of the two streaming tools; empty for one that is not installed
};

// The settings dialog. The date prefix acts while the dialog is open; all other settings are taken
// over by "閉じる". The files themselves are written when the main window closes.
class frmSetting : public QDialog {
  Q_OBJECT

 public:
  explicit frmSetting(SettingContext context, QWidget* parent = nullptr);
  ~frmSetting() override;

 Q_SIGNALS:
  // `ChkVLCShow` was clicked: a streaming tool's window that is open now is to be shown minimised
  // or hidden.
  void ToolWindowShown(bool shown);

 private:
  void Fill();
  void FillChoices();
  void Connect();
  void RefuseKey();
  QCoro::Task<void> PickFolder();
  QCoro::Task<void> TakeOver();
  void TakeChoices();

  SettingContext context_;
  std::unique_ptr<Ui::frmSetting> ui_;
};

}  // namespace zentorin
