// SPDX-License-Identifier: MIT
#pragma once

#include <QMainWindow>
#include <QTimer>
#include <memory>

#include <QCoro/QCoroTask>

#include "ui/main_controls.h"
#include "ui/main_layout.h"

namespace zentorin {

class AutoRun;
class FileDialogs;
class FileListBinding;
class FileListMenu;
class HelpCommands;
class JobBinding;
class ListCommands;
class PatternChoice;
class StatusBinding;
class TrayIcon;
class UrlListBinding;
class UrlListMenu;
class Workspace;
class frmSetting;

// What the main window shows and drives. All must outlive the window.
struct WindowContext {
  Workspace& workspace;
  AutoRun& autoRun;
  ListCommands& lists;
  FileDialogs& dialogs;
  // NOLINTNEXTLINE(readability-redundant-member-init): may be left out of an initialiser
  QStringList toolCaptions = {};  // of the two streaming tools, as located on this machine
};

// The main window. It shows the state that lives below it and hands every command down; what a
// command means is not decided here.
class frmMain : public QMainWindow {
  Q_OBJECT

 public:
  explicit frmMain(const WindowContext& context);
  ~frmMain() override;

  // The steps of the start-up that belong to the window: places it by the settings and fills the
  // pattern boxes, once both are loaded.
  void PlaceBySettings();
  // The last steps, after a start-up without a fault: first mode, title, debug button.
  void FinishStartUp(bool debugMode);

  // Takes the window out of the notification area: removes the icon, shows it in its normal state.
  void RestoreFromTray();

  // Reads a list file into the window as the Open command does, unless work runs.
  void OpenListFile(const QString& path);

  // Brings the window before the user wherever it is now.
  void ComeForward();

 Q_SIGNALS:
  // The person answered the closing question by staying.
  void KeptOpen();
  // The settings could not be written, which never keeps the window from closing.
  void SettingsLost(const QString& message);
  // The closing steps are done and nothing works any more: the program may end.
  void Closed();

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

 private:
  void ConnectCommands();
  void ConnectMenus();
  void ConnectSaveFolder();
  void ConnectPatterns();
  void ConnectState();
  void ConnectTray();
  void SetKeyFilters();
  void ScheduleLayout();
  void LayOut();
  void ShowTitle(QString title);
  void ShowClock();
  void MoveToTray();
  void ShowDiagnostics();
  // Edits the text of a pattern box at a larger size.
  void OpenInputEditor(QComboBox* target);
  void OpenSettings();
  QCoro::Task<void> Close();
  QCoro::Task<void> PickSaveFolder();
  QCoro::Task<void> ShowLog();

  WindowContext context_;
  MainControls c_;
  MainLayout layout_;
  std::unique_ptr<JobBinding> job_;
  std::unique_ptr<StatusBinding> status_;
  std::unique_ptr<UrlListBinding> urlList_;
  std::unique_ptr<FileListBinding> files_;
  std::unique_ptr<TrayIcon> tray_;
  std::unique_ptr<UrlListMenu> urlListMenu_;
  std::unique_ptr<FileListMenu> fileListMenu_;
  std::unique_ptr<HelpCommands> help_;
  std::unique_ptr<frmSetting> setting_;  // the dialog as it was opened last
  PatternChoice* subUrlChoice_ = nullptr;
  PatternChoice* fileChoice_ = nullptr;
  QTimer Timer1;  // the clock
  QTimer layoutTimer_;
  bool closing_ = false;
  bool closed_ = false;
};

}  // namespace zentorin
