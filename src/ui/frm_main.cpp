// SPDX-License-Identifier: MIT
#include "ui/frm_main.h"

#include <QApplication>
#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QShortcut>
#include <QToolButton>

#include "app/auto_run.h"
#include "app/closing.h"
#include "app/file_dialogs.h"
#include "app/list_commands.h"
#include "app/program_title.h"
#include "app/run_summary.h"
#include "app/workspace.h"
#include "base/message_boxes.h"
#include "download/stream_capture.h"
#include "launch/opener.h"
#include "ui/dialogs/frm_input.h"
#include "ui/dialogs/frm_setting.h"
#include "ui/file_list_binding.h"
#include "ui/file_list_menu.h"
#include "ui/help_commands.h"
#include "ui/job_binding.h"
#include "ui/status_binding.h"
#include "ui/tray_icon.h"
#include "ui/url_list_binding.h"
#include "ui/url_list_menu.h"
#include "ui/widgets/key_filter.h"
#include "ui/widgets/line_list_view.h"
#include "ui/widgets/link_label.h"
#include "ui/widgets/list_drop.h"
#include "ui/widgets/pattern_choice.h"
#include "ui/window_place.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr std::chrono::milliseconds kClockInterval(100);

// Gives up every question that is open, as if its window had been closed by hand.
void DismissDialogs() {
  for (QWidget* window : QApplication::topLevelWidgets()) {
    if (window->isModal() && window->isVisible()) window->close();
  }
}

}  // namespace

frmMain::frmMain(const WindowContext& context)
    : context_(context),
      c_(*this),
      layout_(c_),
      job_(std::make_unique<JobBinding>(context.workspace.job, context.workspace.clock, c_)),
      status_(std::make_unique<StatusBinding>(context.workspace.activity, context.workspace.files,
                                              c_, layout_, *job_)),
      urlList_(std::make_unique<UrlListBinding>(context.workspace.urlList, context.workspace.files,
                                                *c_.lstTargetUrl)),
      files_(std::make_unique<FileListBinding>(context.workspace.files, *c_.lstUrl_All)),
      tray_(std::make_unique<TrayIcon>()),
      urlListMenu_(std::make_unique<UrlListMenu>(context.workspace, *c_.lstTargetUrl)),
      fileListMenu_(std::make_unique<FileListMenu>(context.workspace, c_)),
      help_(std::make_unique<HelpCommands>(context.workspace.world.opener,
                                           context.workspace.world.messages, c_)),
      subUrlChoice_(new PatternChoice(*c_.cmbUrl_SubPattern, u"Timer_ComboSubUrl"_s)),
      fileChoice_(new PatternChoice(*c_.cmbFilePattern, u"Timer_ComboFile"_s)) {
  setObjectName(u"frmMain"_s);
  setWindowTitle(ProductTitle());
  setWindowIcon(QIcon(u":/icons/zentorin.svg"_s));
  c_.cmdDebug->hide();
  SetKeyFilters();
  ConnectCommands();
  ConnectMenus();
  ConnectSaveFolder();
  ConnectPatterns();
  ConnectState();
  ConnectTray();
  connect(new ListDrop(this), &ListDrop::Dropped, this, &frmMain::OpenListFile);
  Timer1.setInterval(kClockInterval);
  connect(&Timer1, &QTimer::timeout, this, &frmMain::ShowClock);
  Timer1.start();
  ShowClock();
}

frmMain::~frmMain() = default;

void frmMain::PlaceBySettings() {
  const QSize menus(0, menuBar()->sizeHint().height());
  setGeometry(PlaceFromSettings(context_.workspace.settings, layout_.RoomySize() + menus));
  subUrlChoice_->SetEntries(context_.workspace.patterns.SubUrl());
  fileChoice_->SetEntries(context_.workspace.patterns.File());
}

void frmMain::FinishStartUp(bool debugMode) {
  ShowTitle(ProgramTitle(context_.workspace.urlList.CurrentListFile()));
  c_.cmdDebug->setVisible(debugMode);
  ScheduleLayout();
}

void frmMain::RestoreFromTray() {
  tray_->Remove();
  showNormal();
  raise();
  activateWindow();
}

void frmMain::OpenListFile(const QString& path) {
  if (!closing_) context_.lists.OpenFile(path);
}

void frmMain::ComeForward() {
  if (tray_->IsShown()) {
    RestoreFromTray();
    return;
  }
  setWindowState(windowState() & ~Qt::WindowMinimized);
  show();
  raise();
  activateWindow();
}

void frmMain::ConnectCommands() {
  UrlList& urls = context_.workspace.urlList;
  connect(c_.cmdOrder_0, &QToolButton::clicked, this, [&urls] { urls.MoveSelected(+1); });
  connect(c_.cmdOrder_1, &QToolButton::clicked, this, [&urls] { urls.MoveSelected(-1); });
  connect(c_.cmdGo_All_0, &QPushButton::clicked, this, [this] { Generate(true); });
  connect(c_.cmdGo_All_1, &QPushButton::clicked, this, [this] { Generate(false); });
  connect(c_.cmdAllDownload_0, &QPushButton::clicked, this, [this] { Download(false); });
  connect(c_.cmdAllDownload_1, &QPushButton::clicked, this, [this] { Download(true); });
  connect(fileListMenu_.get(), &FileListMenu::DownloadRequested, this, &frmMain::Download);
  connect(c_.cmdCancel, &QPushButton::clicked, this, &frmMain::Cancel);
  connect(c_.cmdLog, &QPushButton::clicked, this, &frmMain::ShowLog);
  connect(c_.cmdDebug, &QPushButton::clicked, this, &frmMain::ShowDiagnostics);
  connect(c_.cmdClose, &QPushButton::clicked, this, &QWidget::close);
  const auto* escape = new QShortcut(Qt::Key_Escape, this);
  connect(escape, &QShortcut::activated, this, &frmMain::Cancel);
}

void frmMain::ConnectMenus() {
  connect(c_.mnuNew, &QAction::triggered, this, [this] { context_.lists.New(); });
  connect(c_.mnuOpen, &QAction::triggered, this, [this] { context_.lists.Open(); });
  connect(c_.mnuSave, &QAction::triggered, this, [this] { context_.lists.Save(); });
  connect(c_.mnuSaveAs, &QAction::triggered, this, [this] { context_.lists.SaveAs(); });
  connect(c_.mnuClose, &QAction::triggered, this, &QWidget::close);
  connect(c_.mnuSetting, &QAction::triggered, this, &frmMain::OpenSettings);
}

void frmMain::ConnectSaveFolder() {
  connect(c_.lblSavePath, &LinkLabel::Activated, this, [this] {
    Workspace& workspace = context_.workspace;
    const QString path = workspace.drives.ToSystemPath(workspace.job[TargetUrlItem::SavePath]);
    workspace.world.opener.OpenFolder(path);
  });
  connect(c_.cmdSavePath, &QToolButton::clicked, this, &frmMain::PickSaveFolder);
}

void frmMain::ConnectPatterns() {
  JobEditor& job = context_.workspace.job;
  connect(subUrlChoice_, &PatternChoice::DoubleClicked, this,
          [this] { OpenInputEditor(c_.cmbUrl_SubPattern); });
  connect(fileChoice_, &PatternChoice::DoubleClicked, this,
          [this] { OpenInputEditor(c_.cmbFilePattern); });
  connect(subUrlChoice_, &PatternChoice::Chosen, this,
          [&job](const QString& expression) { job.Edit(TargetUrlItem::SubPattern, expression); });
  connect(fileChoice_, &PatternChoice::Chosen, this,
          [&job](const QString& expression) { job.Edit(TargetUrlItem::FilePattern, expression); });
  connect(&job, &JobEditor::Loaded, subUrlChoice_, &PatternChoice::Forget);
  connect(&job, &JobEditor::Loaded, fileChoice_, &PatternChoice::Forget);
}

void frmMain::ConnectState() {
  connect(job_.get(), &JobBinding::LayoutNeeded, this, &frmMain::ScheduleLayout);
  connect(status_.get(), &StatusBinding::LayoutNeeded, this, &frmMain::ScheduleLayout);
  layoutTimer_.setSingleShot(true);
  layoutTimer_.setInterval(0);
  connect(&layoutTimer_, &QTimer::timeout, this, &frmMain::LayOut);
  Workspace& workspace = context_.workspace;
  connect(&workspace.urlList, &UrlList::CurrentListFileChanged, this,
          [this] { ShowTitle(ProgramTitle(context_.workspace.urlList.CurrentListFile())); });
  connect(&workspace.driver, &RunDriver::CloseRequested, this, &QWidget::close);
  // The status line says how a run ended; what it came to is behind it until the next command.
  connect(&workspace.driver, &RunDriver::RunEnded, status_.get(),
          [this](const RunOutcome& outcome) { status_->SetDetails(SummaryOf(outcome)); });
  connect(&workspace.driver, &RunDriver::RunningChanged, status_.get(), [this](bool running) {
    if (running) status_->SetDetails({});
  });
}

void frmMain::ConnectTray() {
  AutoRun& autoRun = context_.autoRun;
  connect(&autoRun, &AutoRun::TitleChanged, this, &frmMain::ShowTitle);
  connect(&autoRun, &AutoRun::TrayTipChanged, tray_.get(), &TrayIcon::SetTip);
  connect(&autoRun, &AutoRun::MoveToTrayRequested, this, &frmMain::MoveToTray);
  connect(&autoRun, &AutoRun::RestoreFromTrayRequested, this, &frmMain::RestoreFromTray);
  connect(tray_.get(), &TrayIcon::RestoreRequested, this, &frmMain::RestoreFromTray);
}

void frmMain::SetKeyFilters() {
  using Mode = KeyFilter::Mode;
  new KeyFilter(u"[0123456789.]"_s, Mode::OnlyMatching, c_.cmbDate);
  for (QComboBox* combo : {c_.cmbBefore_0, c_.cmbBefore_1, c_.cmbDepth}) {
    new KeyFilter(u"[0-9]"_s, Mode::OnlyMatching, combo);
  }
  new KeyFilter(u"[/:*?\"|<>]"_s, Mode::AllButMatching, c_.txtSavePath);
}

// What a refused command asks for gets the focus.
QCoro::Task<void> frmMain::Generate(bool listOnly) {
  const ListOutcome outcome = co_await context_.workspace.driver.GenerateCommand(listOnly);
  if (outcome.refusal == ListOutcome::Refusal::NoJob) c_.lstTargetUrl->setFocus();
  if (outcome.refusal == ListOutcome::Refusal::NoRootUrl) c_.txtUrl_Root->setFocus();
}

QCoro::Task<void> frmMain::Download(bool batch) {
  const RunOutcome outcome = co_await context_.workspace.driver.DownloadCommand(batch);
  if (!outcome.nothingSelected) co_return;
  const bool hasRows = context_.workspace.files.Count() > 0;
  (hasRows ? c_.lstUrl_All : c_.lstTargetUrl)->setFocus();
}

void frmMain::Cancel() {
  CancelWork(context_.workspace, context_.autoRun);
}

void frmMain::ScheduleLayout() {
  if (!layoutTimer_.isActive()) layoutTimer_.start();
}

void frmMain::LayOut() {
  layout_.Apply(c_.central->size());
}

void frmMain::ShowTitle(QString title) {
  // Qt's place for a mark of its own; doubled it stands for itself.
  setWindowTitle(title.replace(u"[*]"_s, u"[*][*]"_s));
}

void frmMain::ShowClock() {
  const DisplayClock& clock = context_.workspace.clock;
  if (const QString text = clock.Text(); c_.lblTime->text() != text) {
    c_.lblTime->setText(text);
    job_->ShowFormatPreview();
  }
  if (c_.lblTimeLbl->text() != clock.Label()) {
    c_.lblTimeLbl->setText(clock.Label());
    c_.lblTimeLbl->setToolTip(clock.LabelHint());
    ScheduleLayout();
  }
}

void frmMain::MoveToTray() {
  if (!TrayIcon::IsAvailable()) {
    showMinimized();
    return;
  }
  tray_->Add();
  hide();
}

void frmMain::resizeEvent(QResizeEvent* event) {
  QMainWindow::resizeEvent(event);
  LayOut();
}

void frmMain::changeEvent(QEvent* event) {
  QMainWindow::changeEvent(event);
  if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) ScheduleLayout();
}

void frmMain::closeEvent(QCloseEvent* event) {
  if (closed_) {
    event->accept();
    return;
  }
  event->ignore();
  if (!closing_) Close();
}

// While the last work unwinds, nothing new can be started.
QCoro::Task<void> frmMain::Close() {
  closing_ = true;
  DismissDialogs();
  RememberPlace(*this, context_.workspace.settings);
  const bool mayClose = co_await context_.lists.MayClose();
  if (!mayClose) {
    closing_ = false;
    Q_EMIT KeptOpen();
    co_return;
  }
  c_.central->setEnabled(false);
  menuBar()->setEnabled(false);
  const Outcome written = co_await CloseSteps(context_.workspace, context_.autoRun);
  if (!written.Ok()) Q_EMIT SettingsLost(written.message);
  closed_ = true;
  tray_->Remove();
  close();
  Q_EMIT Closed();
}

QCoro::Task<void> frmMain::PickSaveFolder() {
  Workspace& workspace = context_.workspace;
  const QString before = workspace.job[TargetUrlItem::SavePath];
  FileDialog dialog;
  dialog.title = u"保存フォルダの指定"_s;
  dialog.folder = workspace.drives.ToSystemPath(before);
  const QString folder = co_await context_.dialogs.AskForFolder(dialog);
  // A run that began behind the dialog works on a job of its own.
  if (folder.isEmpty() || workspace.driver.IsRunning()) co_return;
  workspace.job.Edit(TargetUrlItem::SavePath, workspace.drives.ToStoredPath(folder));
}

QCoro::Task<void> frmMain::ShowLog() {
  Workspace& workspace = context_.workspace;
  MessageBox box;
  if (!workspace.log.Exists()) {
    box.text = u"ログファイルを生成されていません！"_s;
    co_await workspace.world.messages.Ask(box);
    co_return;
  }
  QString text;
  const Outcome outcome = workspace.log.Read(text);
  if (outcome.Ok()) {
    workspace.world.opener.ShowText(text, u"log.txt"_s);
    co_return;
  }
  box = MessageBox::Error(outcome.message);
  co_await workspace.world.messages.Ask(box);
}

void frmMain::OpenInputEditor(QComboBox* target) {
  auto* editor = new frmInput(target->currentText(), target->window());
  editor->setAttribute(Qt::WA_DeleteOnClose);
  editor->SetTag(u"no_commandline"_s);
  editor->PlaceBelow(QRect(target->mapToGlobal(QPoint()), target->size()));
  JobEditor& job = context_.workspace.job;
  const auto field =
      target == c_.cmbFilePattern ? TargetUrlItem::FilePattern : TargetUrlItem::SubPattern;
  connect(editor, &frmInput::ValueAccepted, this,
          [&job, field](const QString& value) { job.Edit(field, value); });
  // An unattended run may turn to another job while the editor is open.
  connect(&job, &JobEditor::Loaded, editor, &QDialog::reject);
  editor->open();
}

void frmMain::OpenSettings() {
  const SettingContext context{.settings = context_.workspace.settings,
                               .keptChoices = context_.workspace.keptChoices,
                               .choices = context_.workspace.choices,
                               .dialogs = context_.dialogs,
                               .messages = context_.workspace.world.messages,
                               .programFolder = context_.workspace.drives.ProgramFolder(),
                               .toolPaths = context_.toolPaths};
  setting_ = std::make_unique<frmSetting>(context, this);
  connect(setting_.get(), &QDialog::accepted, this, &frmMain::ShowClock);
  connect(setting_.get(), &frmSetting::ToolWindowShown, this,
          [this](bool shown) { context_.workspace.world.capture.ShowToolWindow(shown); });
  setting_->open();
}

void frmMain::ShowDiagnostics() {
  Workspace& workspace = context_.workspace;
  const QStringList lines{
      ProductName() + u' ' + ProductVersion(),
      u"プログラムのフォルダ: "_s + workspace.drives.ProgramFolder(),
      u"ＵＲＬリスト: "_s + workspace.urlList.CurrentListFile(),
      u"ファイルリスト: %1 行、選択 %2 行"_s.arg(workspace.files.Count())
          .arg(workspace.files.SelectedCount()),
      u"選択中の行: "_s + workspace.job.Fields().ToLine(),
  };
  workspace.world.opener.ShowText(lines.join("\r\n"_L1), u"Debug"_s);
}

}  // namespace zentorin
