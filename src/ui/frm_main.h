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

struct WindowContext {
  Workspace& workspace;
  AutoRun& autoRun;
  ListCommands& lists;
  FileDialogs& dialogs;
  // NOLINTNEXTLINE(readability-redundant-member-init): may be left out of an initialiser
  QStringList toolPaths = {};  // of the two streaming tools; empty for one that is not installed
};

// Shows the state that lives below it and hands every command down.
class frmMain : public QMainWindow {
  Q_OBJECT

 public:
  explicit frmMain(const WindowContext& context);
  ~frmMain() override;

  // Once settings and patterns are loaded.
  void PlaceBySettings();
  void FinishStartUp(bool debugMode);  // after a start-up without a fault

  void RestoreFromTray();

  void OpenListFile(const QString& path);  // unless work runs

  void ComeForward();

 Q_SIGNALS:
  void KeptOpen();                            // the closing question was answered by staying
  void SettingsLost(const QString& message);  // which never keeps the window from closing
  void Closed();                              // nothing works any more

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
  QCoro::Task<void> Generate(bool listOnly);
  QCoro::Task<void> Download(bool batch);
  void Cancel();
  void SetKeyFilters();
  void ScheduleLayout();
  void LayOut();
  void ShowTitle(QString title);
  void ShowClock();
  void MoveToTray();
  void ShowDiagnostics();
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
