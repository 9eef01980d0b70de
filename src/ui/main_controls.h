// SPDX-License-Identifier: MIT
#pragma once

#include <array>

class QAction;
class QCheckBox;
class QComboBox;
class QFrame;
class QLabel;
class QLineEdit;
class QMainWindow;
class QMenu;
class QPushButton;
class QRadioButton;
class QToolButton;
class QWidget;

namespace zentorin {

class LineListView;
class LinkLabel;

// Every control of the main window, made once with its caption and tooltip and named after itself;
// the element of a control array carries its index behind an underscore. Qt's parents own them:
// the frames lie in the window's central widget, their contents in the frames.
struct MainControls {
  explicit MainControls(QMainWindow& window);

  QWidget* central = nullptr;

  // frTop: the URL list. The clock lies over its top line.
  QFrame* frTop = nullptr;
  QLabel* Label7 = nullptr;
  LineListView* lstTargetUrl = nullptr;
  QToolButton* cmdOrder_0 = nullptr;
  QToolButton* cmdOrder_1 = nullptr;
  QFrame* frTime = nullptr;
  QLabel* lblTimeLbl = nullptr;
  QLabel* lblTime = nullptr;

  // frSite: the fields of the selected job. The file list lies in its lower part but is not its
  // child: it stays live while the frame is disabled.
  QFrame* frSite = nullptr;
  QLabel* Label5 = nullptr;
  QLineEdit* txtDescription = nullptr;
  QLabel* Label1 = nullptr;
  QLineEdit* txtUrl_Root = nullptr;
  QLineEdit* txtUrl_RootBase = nullptr;
  QFrame* frOptPattern = nullptr;
  QRadioButton* Opt_0 = nullptr;
  QRadioButton* Opt_1 = nullptr;
  QCheckBox* ChkSkip = nullptr;
  QCheckBox* ChkOnlyInSite = nullptr;

  // frOpt(0): files by pattern.
  QFrame* frOpt_0 = nullptr;
  QFrame* frReg = nullptr;
  QLabel* lblReg = nullptr;
  LinkLabel* lblRegHelp = nullptr;
  QLabel* lblArrow_0 = nullptr;
  QLabel* lblArrow_1 = nullptr;
  QLabel* Label2 = nullptr;
  QComboBox* cmbUrl_SubPattern = nullptr;
  QFrame* frDepth = nullptr;
  QLabel* lblDepth = nullptr;
  QComboBox* cmbDepth = nullptr;
  QLabel* Label3 = nullptr;
  QComboBox* cmbFilePattern = nullptr;
  QCheckBox* ChkDispModify = nullptr;
  QCheckBox* ChkModify = nullptr;
  QFrame* frModify = nullptr;
  QComboBox* cmbDate = nullptr;
  QLabel* Label9 = nullptr;
  QFrame* frDateEnable = nullptr;
  QLabel* Label10 = nullptr;
  QLabel* lblDateEnable = nullptr;

  // frOpt(1): files by date format.
  QFrame* frOpt_1 = nullptr;
  QLabel* Label12 = nullptr;
  QLineEdit* txtFileFormat = nullptr;
  LinkLabel* lblFormat = nullptr;
  QLabel* lblFileFormat = nullptr;
  QLabel* lblBefore_0 = nullptr;
  QLabel* lblBefore_1 = nullptr;
  QLabel* lblBefore_2 = nullptr;
  QLabel* lblBefore_3 = nullptr;
  QComboBox* cmbBefore_0 = nullptr;
  QComboBox* cmbBefore_1 = nullptr;
  QLabel* lblBeforeDate = nullptr;

  // FrSave: where the files go.
  QFrame* FrSave = nullptr;
  LinkLabel* lblSavePath = nullptr;
  QLineEdit* txtSavePath = nullptr;
  QToolButton* cmdSavePath = nullptr;
  QCheckBox* ChkOverWrite = nullptr;
  QCheckBox* ChkTreeFolder = nullptr;

  QFrame* frGo_All = nullptr;
  QPushButton* cmdGo_All_0 = nullptr;
  QPushButton* cmdGo_All_1 = nullptr;

  // The column headers; their index runs against the columns (0 is the parent page, 5 the mark).
  static constexpr int kHeaderCount = 6;
  QWidget* headerStrip = nullptr;
  std::array<LinkLabel*, kHeaderCount> lblDescription = {};
  LineListView* lstUrl_All = nullptr;
  QLabel* lblUrl_All_Cnt = nullptr;

  // frBottom: progress, status and commands. `cmdClose` lies over it, in the window's corner.
  QFrame* frBottom = nullptr;
  QFrame* frStatus = nullptr;
  QLabel* lblStatus = nullptr;
  QLabel* lblFile = nullptr;
  QCheckBox* ChkStandby = nullptr;
  QPushButton* cmdAllDownload_0 = nullptr;
  QPushButton* cmdAllDownload_1 = nullptr;
  QPushButton* cmdLog = nullptr;
  QPushButton* cmdDebug = nullptr;
  QPushButton* cmdCancel = nullptr;
  QFrame* frProgress_o = nullptr;
  QLabel* lblProgress_o = nullptr;  // the run's counter
  QFrame* frProgress_0 = nullptr;
  QLabel* lblProgress_0 = nullptr;  // the bar
  QLabel* lblDone = nullptr;        // never shown: the fraction that the bar reads
  QPushButton* cmdClose = nullptr;

  QMenu* mnuFile = nullptr;
  QAction* mnuNew = nullptr;
  QAction* mnuOpen = nullptr;
  QAction* mnuSave = nullptr;
  QAction* mnuSaveAs = nullptr;
  QAction* mnuClose = nullptr;
  QMenu* mnuTool = nullptr;
  QAction* mnuSetting = nullptr;
  QMenu* mnuHelp = nullptr;
  QAction* mnuHelp2 = nullptr;
  QAction* mnuVersion = nullptr;

 private:
  void MakeTop();
  void MakeSite();
  void MakePatternMode();
  void MakeDateMode();
  void MakeSave();
  void MakeFileList();
  void MakeBottom();
  void MakeMenus(QMainWindow& window);
  void SetTabOrder();
};

}  // namespace zentorin
