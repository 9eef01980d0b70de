// SPDX-License-Identifier: MIT
#include "ui/main_controls.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>
#include <QToolButton>
#include <initializer_list>

#include "ui/widgets/field_combo.h"
#include "ui/widgets/fixed_pitch_font.h"
#include "ui/widgets/line_list_view.h"
#include "ui/widgets/link_label.h"

// Makes the icons known: a resource in a static library has to be asked for, outside all
// namespaces.
static void InitIcons() {
  Q_INIT_RESOURCE(icons);
}

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

// Gives a control the name by which style sheets, tests and assistive programs find it.
template <typename T>
T* Named(T* control, const char* name) {
  control->setObjectName(QLatin1StringView(name));
  return control;
}

QFrame* MakeFrame(QWidget* parent, const char* name) {
  auto* frame = Named(new QFrame(parent), name);
  frame->setFrameShape(QFrame::NoFrame);
  return frame;
}

QLabel* MakeLabel(QWidget* parent, const char* name, const QString& caption = {}) {
  auto* label = Named(new QLabel(caption, parent), name);
  label->setTextFormat(Qt::PlainText);
  return label;
}

template <typename Button>
Button* MakeButton(QWidget* parent, const char* name, const QString& caption,
                   const QString& toolTip = {}) {
  auto* button = Named(new Button(parent), name);
  button->setText(caption);
  button->setToolTip(toolTip);
  return button;
}

QLineEdit* MakeEdit(QWidget* parent, const char* name, const QString& accessibleName) {
  auto* edit = Named(new QLineEdit(parent), name);
  edit->setAccessibleName(accessibleName);
  edit->setFont(FixedPitchFont(edit->font()));
  return edit;
}

QComboBox* MakeCombo(QWidget* parent, const char* name, const QString& accessibleName,
                     const QString& toolTip = {}) {
  QComboBox* combo = Named(new FieldCombo(parent), name);
  combo->setAccessibleName(accessibleName);
  combo->setToolTip(toolTip);
  return combo;
}

// "0.5", "1", "1.5", then whole days up to 30.
QStringList DayItems() {
  QStringList items{u"0.5"_s, u"1"_s, u"1.5"_s};
  for (int day = 2; day <= 30; ++day) items.append(QString::number(day));
  return items;
}

QComboBox* MakeDayCombo(QWidget* parent, const char* name, const QString& accessibleName) {
  auto* combo = MakeCombo(parent, name, accessibleName,
                          u"ファイル更新日時指定 － 0.5(12時間)前から 1(24時間)前 1.5(36時間)前 "
                          "2(2日)前　空白:全て"_s);
  combo->addItems(DayItems());
  combo->setCurrentIndex(-1);
  return combo;
}

}  // namespace

MainControls::MainControls(QMainWindow& window) {
  InitIcons();
  central = Named(new QWidget(&window), "central");
  window.setCentralWidget(central);
  MakeTop();
  MakeSite();
  MakePatternMode();
  MakeDateMode();
  MakeSave();
  MakeFileList();
  MakeBottom();
  MakeMenus(window);
  SetTabOrder();
}

void MainControls::MakeTop() {
  frTop = MakeFrame(central, "frTop");
  Label7 = MakeLabel(frTop, "Label7", u"URL リスト"_s);
  cmdOrder_1 = MakeButton<QToolButton>(frTop, "cmdOrder_1", {}, u"選択行を上に移動"_s);
  cmdOrder_0 = MakeButton<QToolButton>(frTop, "cmdOrder_0", {}, u"選択行を下に移動"_s);
  cmdOrder_1->setIcon(QIcon(u":/icons/up.svg"_s));
  cmdOrder_0->setIcon(QIcon(u":/icons/down.svg"_s));
  cmdOrder_1->setAccessibleName(cmdOrder_1->toolTip());
  cmdOrder_0->setAccessibleName(cmdOrder_0->toolTip());
  cmdOrder_1->setFocusPolicy(Qt::StrongFocus);
  cmdOrder_0->setFocusPolicy(Qt::StrongFocus);
  lstTargetUrl = Named(new LineListView({3, 50, 200}, frTop), "lstTargetUrl");
  lstTargetUrl->setFont(FixedPitchFont(lstTargetUrl->font()));
  lstTargetUrl->setAccessibleName(Label7->text());
  Label7->setBuddy(lstTargetUrl);

  frTime = MakeFrame(central, "frTime");
  lblTimeLbl = MakeLabel(frTime, "lblTimeLbl", u"日本標準時"_s);
  lblTime = MakeLabel(frTime, "lblTime");
  lblTime->setFont(FixedPitchFont(lblTime->font()));
}

void MainControls::MakeSite() {
  frSite = MakeFrame(central, "frSite");
  Label5 = MakeLabel(frSite, "Label5", u"サイト"_s);
  txtDescription = MakeEdit(frSite, "txtDescription", Label5->text());
  Label5->setBuddy(txtDescription);
  frOptPattern = MakeFrame(frSite, "frOptPattern");
  Opt_0 = MakeButton<QRadioButton>(frOptPattern, "Opt_0", u"パターン"_s,
                                   u"ファイル名が特定パターンで表現できる場合"_s);
  Opt_1 = MakeButton<QRadioButton>(frOptPattern, "Opt_1", u"日付書式"_s,
                                   u"ファイル名に日時が入っているような場合"_s);
  Label1 = MakeLabel(frSite, "Label1", u"ルートURL"_s);
  txtUrl_Root = MakeEdit(frSite, "txtUrl_Root", Label1->text());
  Label1->setBuddy(txtUrl_Root);
  txtUrl_RootBase = MakeEdit(frSite, "txtUrl_RootBase", u"ルートURLのベース"_s);
  txtUrl_RootBase->setReadOnly(true);
  txtUrl_RootBase->setFrame(false);
  txtUrl_RootBase->setFocusPolicy(Qt::ClickFocus);
  QPalette flat = txtUrl_RootBase->palette();
  flat.setColor(QPalette::Base, Qt::transparent);
  txtUrl_RootBase->setPalette(flat);
}

void MainControls::MakePatternMode() {
  frOpt_0 = MakeFrame(frSite, "frOpt_0");
  frReg = MakeFrame(frOpt_0, "frReg");
  lblReg = MakeLabel(frReg, "lblReg", u"正規表現で指定可"_s);
  lblArrow_0 = MakeLabel(frReg, "lblArrow_0", u"↓"_s);
  lblArrow_1 = MakeLabel(frReg, "lblArrow_1", u"↓"_s);
  lblRegHelp = Named(new LinkLabel(u"使用例"_s, LinkLabel::Kind::Link, frReg), "lblRegHelp");
  Label2 = MakeLabel(frReg, "Label2", u"サブURL"_s);
  cmbUrl_SubPattern = MakeCombo(frReg, "cmbUrl_SubPattern", Label2->text(),
                                u"正規表現を使用してサブURLパターンを指定"_s);
  Label2->setBuddy(cmbUrl_SubPattern);
  frDepth = MakeFrame(frOpt_0, "frDepth");
  lblDepth = MakeLabel(frDepth, "lblDepth", u"深度"_s);
  cmbDepth = MakeCombo(frDepth, "cmbDepth", lblDepth->text(), u"探索深度"_s);
  for (int depth = 0; depth <= 9; ++depth) cmbDepth->addItem(QString::number(depth));
  cmbDepth->setCurrentIndex(-1);
  lblDepth->setBuddy(cmbDepth);
  Label3 = MakeLabel(frOpt_0, "Label3", u"ファイル"_s);
  cmbFilePattern = MakeCombo(frOpt_0, "cmbFilePattern", Label3->text(),
                             u"正規表現を使用してファイルLパターンを指定"_s);
  Label3->setBuddy(cmbFilePattern);
  ChkDispModify = MakeButton<QCheckBox>(frOpt_0, "ChkDispModify", u"更新日表示"_s);
  ChkModify = MakeButton<QCheckBox>(frOpt_0, "ChkModify", u"更新日時指定"_s);
  frModify = MakeFrame(frOpt_0, "frModify");
  cmbDate = MakeDayCombo(frModify, "cmbDate", ChkModify->text());
  Label9 = MakeLabel(frModify, "Label9", u"日前以降"_s);
  frDateEnable = MakeFrame(frModify, "frDateEnable");
  Label10 = MakeLabel(frDateEnable, "Label10", u"以降の更新日のみ対象"_s);
  lblDateEnable = MakeLabel(frDateEnable, "lblDateEnable", u"協定世界時刻"_s);
}

void MainControls::MakeDateMode() {
  frOpt_1 = MakeFrame(frSite, "frOpt_1");
  Label12 = MakeLabel(frOpt_1, "Label12", u"URL 書式"_s);
  txtFileFormat = MakeEdit(frOpt_1, "txtFileFormat", Label12->text());
  Label12->setBuddy(txtFileFormat);
  lblFormat = Named(new LinkLabel(u"書式"_s, LinkLabel::Kind::Link, frOpt_1), "lblFormat");
  lblFileFormat = MakeLabel(frOpt_1, "lblFileFormat");
  lblBefore_0 = MakeLabel(frOpt_1, "lblBefore_0", u"ダウンロード実行日時の"_s);
  cmbBefore_0 = MakeDayCombo(frOpt_1, "cmbBefore_0", lblBefore_0->text());
  lblBefore_3 = MakeLabel(frOpt_1, "lblBefore_3", u"～"_s);
  lblBefore_1 = MakeLabel(frOpt_1, "lblBefore_1", u"日前迄"_s);
  cmbBefore_1 = MakeDayCombo(frOpt_1, "cmbBefore_1", lblBefore_1->text());
  lblBefore_2 = MakeLabel(frOpt_1, "lblBefore_2", u"日本標準時"_s);
  lblBeforeDate = MakeLabel(frOpt_1, "lblBeforeDate");
  lblBeforeDate->setFont(FixedPitchFont(lblBeforeDate->font()));
}

void MainControls::MakeSave() {
  FrSave = MakeFrame(frSite, "FrSave");
  lblSavePath = Named(new LinkLabel(u"ファイル保存先"_s, LinkLabel::Kind::DoubleClick, FrSave),
                      "lblSavePath");
  lblSavePath->setToolTip(u"ダブルクリックでフォルダを開きます"_s);
  txtSavePath = MakeEdit(FrSave, "txtSavePath", lblSavePath->text());
  cmdSavePath = MakeButton<QToolButton>(FrSave, "cmdSavePath", {});
  cmdSavePath->setIcon(QIcon(u":/icons/folder.svg"_s));
  cmdSavePath->setAccessibleName(u"保存フォルダの指定"_s);
  cmdSavePath->setFocusPolicy(Qt::StrongFocus);
  ChkOverWrite = MakeButton<QCheckBox>(FrSave, "ChkOverWrite", u"OverWrite"_s,
                                       u"既存のファイルが在っても上書きダウンロードします。"_s);
  ChkTreeFolder = MakeButton<QCheckBox>(FrSave, "ChkTreeFolder", u"TreeFolder"_s,
                                        u"Webと同じ構造のフォルダを作成する"_s);
  ChkSkip =
      MakeButton<QCheckBox>(frSite, "ChkSkip", u"Skip"_s, u"一括ダウンロードスキップ（対象外）"_s);
  ChkOnlyInSite = MakeButton<QCheckBox>(frSite, "ChkOnlyInSite", u"OnlyUnderRoot"_s,
                                        u"ルートURL以下のみ探索対象"_s);
  frGo_All = MakeFrame(frSite, "frGo_All");
  cmdGo_All_0 = MakeButton<QPushButton>(frGo_All, "cmdGo_All_0", u"子URLリスト"_s,
                                        u"確認用にサブURLリスト一覧を表示します"_s);
  cmdGo_All_1 = MakeButton<QPushButton>(frGo_All, "cmdGo_All_1", u"ファイルリスト生成"_s,
                                        u"ダウンロードするファイルのリストを作成します"_s);
}

void MainControls::MakeFileList() {
  // Not inside frSite: the list stays live while the frame is disabled.
  headerStrip = Named(new QWidget(central), "headerStrip");
  const std::array<QString, kHeaderCount> captions{u"ParentUrl"_s, u"BaseUrl"_s,       u"FileUrl"_s,
                                                   u"KByte"_s,     u"更新日時(GMT)"_s, u"*"_s};
  for (int i = 0; i < kHeaderCount; ++i) {
    auto* label = new LinkLabel(captions.at(i), LinkLabel::Kind::Plain, headerStrip);
    label->setObjectName(u"lblDescription_%1"_s.arg(i));
    label->setFont(FixedPitchFont(label->font()));
    label->setToolTip(u"クリックで昇順/降順 基準列 の並べ替え可"_s);
    lblDescription.at(i) = label;
  }
  lstUrl_All = Named(new LineListView({2, 24, 32, 120, 140, 170}, central), "lstUrl_All");
  lstUrl_All->setFont(FixedPitchFont(lstUrl_All->font()));
  lstUrl_All->setSelectionMode(QAbstractItemView::ExtendedSelection);
  lstUrl_All->setAccessibleName(u"ファイルリスト"_s);
  lblUrl_All_Cnt = MakeLabel(central, "lblUrl_All_Cnt");
  lblUrl_All_Cnt->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
}

void MainControls::MakeBottom() {
  frBottom = MakeFrame(central, "frBottom");
  frStatus = MakeFrame(frBottom, "frStatus");
  lblStatus = MakeLabel(frStatus, "lblStatus");
  lblFile = MakeLabel(frStatus, "lblFile");
  ChkStandby = MakeButton<QCheckBox>(frBottom, "ChkStandby", u"シャットダウン"_s,
                                     u"一括ダウンロード終了後にPCをスタンバイ状態にします。"_s);
  cmdAllDownload_0 = MakeButton<QPushButton>(
      frBottom, "cmdAllDownload_0", u"ダウンロード"_s,
      u"ファイルリストを作成後、全てのファイルをフォルダにダウンロードします。"_s);
  cmdAllDownload_1 = MakeButton<QPushButton>(
      frBottom, "cmdAllDownload_1", u"一括ダウンロード"_s,
      u"ＵＲＬリスト全てのファイルリストを作成し、指定のフォルダに一括ダウンロードします。"_s);
  cmdLog =
      MakeButton<QPushButton>(frBottom, "cmdLog", u"ログ表示"_s, u"ログファイルを表示します"_s);
  cmdDebug = MakeButton<QPushButton>(frBottom, "cmdDebug", u"Debug"_s);
  cmdCancel = MakeButton<QPushButton>(frBottom, "cmdCancel", u"キャンセル"_s,
                                      u"実行中の処理をキャンセルします"_s);
  frProgress_o = MakeFrame(frBottom, "frProgress_o");
  lblProgress_o = MakeLabel(frProgress_o, "lblProgress_o");
  frProgress_0 = MakeFrame(frProgress_o, "frProgress_0");
  frProgress_0->setFrameShape(QFrame::StyledPanel);
  lblProgress_0 = MakeLabel(frProgress_0, "lblProgress_0");
  lblProgress_0->setAutoFillBackground(true);
  lblProgress_0->setBackgroundRole(QPalette::Highlight);
  lblDone = MakeLabel(frBottom, "lblDone", u"0"_s);
  lblDone->hide();
  cmdClose = MakeButton<QPushButton>(central, "cmdClose", u"閉じる"_s, u"設定を保存して終了"_s);
}

void MainControls::MakeMenus(QMainWindow& window) {
  QMenuBar* bar = window.menuBar();
  const auto addAction = [](QMenu* menu, const char* name, const QString& caption) {
    return Named(menu->addAction(caption), name);
  };
  mnuFile = Named(bar->addMenu(u"ファイル"_s), "mnuFile");
  mnuNew = addAction(mnuFile, "mnuNew", u"新規"_s);
  mnuOpen = addAction(mnuFile, "mnuOpen", u"開く"_s);
  mnuSave = addAction(mnuFile, "mnuSave", u"上書き保存"_s);
  mnuSaveAs = addAction(mnuFile, "mnuSaveAs", u"名前を付けて保存"_s);
  mnuFile->addSeparator();
  mnuClose = addAction(mnuFile, "mnuClose", u"閉じる"_s);
  mnuNew->setShortcut(QKeySequence::New);
  mnuOpen->setShortcut(QKeySequence::Open);
  mnuSave->setShortcut(QKeySequence::Save);
  mnuSaveAs->setShortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_S));
  mnuClose->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Q));
  mnuTool = Named(bar->addMenu(u"ツール"_s), "mnuTool");
  mnuSetting = addAction(mnuTool, "mnuSetting", u"設定"_s);
  mnuHelp = Named(bar->addMenu(u"ヘルプ"_s), "mnuHelp");
  mnuHelp2 = addAction(mnuHelp, "mnuHelp2", u"ヘルプ"_s);
  mnuHelp2->setShortcut(QKeySequence::HelpContents);
  mnuVersion = addAction(mnuHelp, "mnuVersion", u"バージョン"_s);
}

void MainControls::SetTabOrder() {
  const std::initializer_list<QWidget*> order = {
      lstTargetUrl,   cmdOrder_1,    cmdOrder_0,    txtDescription,    Opt_0,
      Opt_1,          txtUrl_Root,   lblRegHelp,    cmbUrl_SubPattern, cmbDepth,
      cmbFilePattern, ChkDispModify, ChkModify,     cmbDate,           txtFileFormat,
      lblFormat,      cmbBefore_0,   cmbBefore_1,   lblSavePath,       txtSavePath,
      cmdSavePath,    ChkOverWrite,  ChkTreeFolder, ChkSkip,           ChkOnlyInSite,
      cmdGo_All_0,    cmdGo_All_1,   lstUrl_All,    cmdAllDownload_0,  cmdAllDownload_1,
      cmdLog,         cmdDebug,      cmdCancel,     ChkStandby,        cmdClose};
  QWidget* previous = nullptr;
  for (QWidget* widget : order) {
    if (previous != nullptr) QWidget::setTabOrder(previous, widget);
    previous = widget;
  }
}

}  // namespace zentorin
