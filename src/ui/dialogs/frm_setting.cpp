// SPDX-License-Identifier: MIT
#include "ui/dialogs/frm_setting.h"

#include <QDir>
#include <utility>

#include "app/app_settings.h"
#include "app/file_dialogs.h"
#include "app/kept_choices.h"
#include "base/message_boxes.h"
#include "base/number_text.h"
#include "ui/widgets/key_filter.h"
#include "ui_frm_setting.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

// Characters that no file name may hold, as a character class and as the message names them.
constexpr QStringView kForbidden(uR"([/:*?"|<>\])");
constexpr QStringView kForbiddenExpression(uR"([/:*?"|<>\\])");
constexpr int kTypeMismatch = 13;
constexpr int kLargestDiffHours = 14;  // the time zones of the world: -12 to +14
constexpr int kSmallestDiffHours = -12;

QString ToolCaption(const QString& tool, const QString& path) {
  return tool + (path.isEmpty() ? u"（インストールされていません）"_s : u" (%1)"_s.arg(path));
}

}  // namespace

frmSetting::frmSetting(SettingContext context, QWidget* parent)
    : QDialog(parent), context_(std::move(context)), ui_(std::make_unique<Ui::frmSetting>()) {
  ui_->setupUi(this);
  Fill();
  FillChoices();
  Connect();
}

frmSetting::~frmSetting() = default;

void frmSetting::Fill() {
  const AppSettings& settings = context_.settings;
  ui_->txtDefaultSavePath->setText(settings.defaultSavePath);
  ui_->chkOpenFolder->setChecked(settings.download.openFolder);
  ui_->ChkVLCShow->setChecked(settings.download.vlcShow);
  ui_->ChkGMTDate->setChecked(settings.clock.useGmt);
  for (int hours = kSmallestDiffHours; hours <= kLargestDiffHours; ++hours) {
    ui_->cmbGmtDiff->addItem(PadLeft(QString::number(hours), 3));
  }
  ui_->cmbGmtDiff->setEditText(PadLeft(QString::number(settings.clock.gmtDiffHours), 3));
  ui_->ChkWmaToMp3->setChecked(settings.download.wmaToMp3);
  ui_->OptStreaming_0->setText(ToolCaption(u"VLC media player"_s, context_.toolPaths.value(0)));
  ui_->OptStreaming_1->setText(ToolCaption(u"GetASFStream"_s, context_.toolPaths.value(1)));
  (settings.download.streamingTool == 1 ? ui_->OptStreaming_1 : ui_->OptStreaming_0)
      ->setChecked(true);
  // The frame's tag holds the index of the chosen tool.
  ui_->frStreaming->setProperty("Tag", settings.download.streamingTool);
  ui_->ChkAutoClose->setChecked(settings.download.autoClose);
  ui_->chkAddDate->setChecked(settings.download.addDate);
  ui_->txtAddDateFormat->setText(settings.download.addDateFormat);
  ui_->frAddDateFormat->setEnabled(settings.download.addDate);
}

void frmSetting::FillChoices() {
  const auto fill = [](QSpinBox* box, const IntRange& range, int number) {
    box->setRange(range.least, range.most);
    box->setValue(number);
  };
  const FetchChoices& choices = context_.choices;
  fill(ui_->spnConnections, kConnectionsPerHost, choices.connectionsPerHost);
  fill(ui_->spnTries, kTries, choices.tries);
  fill(ui_->spnTopSpeed, kTopSpeed, choices.topSpeed);
  ui_->chkServerDate->setChecked(choices.keepServerDate);
  ui_->chkDecodeNames->setChecked(choices.decodeNames);
  ui_->chkProxyForFiles->setChecked(choices.proxyForFiles);
}

void frmSetting::Connect() {
  connect(ui_->cmdSaveFolderPath, &QToolButton::clicked, this, &frmSetting::PickFolder);
  connect(ui_->chkAddDate, &QCheckBox::toggled, this, [this](bool on) {
    context_.settings.download.addDate = on;
    ui_->frAddDateFormat->setEnabled(on);
  });
  connect(ui_->txtAddDateFormat, &QLineEdit::textChanged, this,
          [this](const QString& text) { context_.settings.download.addDateFormat = text; });
  connect(ui_->ChkVLCShow, &QCheckBox::toggled, this, &frmSetting::ToolWindowShown);
  connect(ui_->OptStreaming_0, &QRadioButton::clicked, this,
          [this] { ui_->frStreaming->setProperty("Tag", 0); });
  connect(ui_->OptStreaming_1, &QRadioButton::clicked, this,
          [this] { ui_->frStreaming->setProperty("Tag", 1); });
  auto* format = new KeyFilter(kForbiddenExpression.toString(), KeyFilter::Mode::AllButMatching,
                               ui_->txtAddDateFormat);
  connect(format, &KeyFilter::Refused, this, &frmSetting::RefuseKey);
  new KeyFilter(u"[-0-9]"_s, KeyFilter::Mode::OnlyMatching, ui_->cmbGmtDiff);
  connect(ui_->cmdClose, &QPushButton::clicked, this, &frmSetting::TakeOver);
}

void frmSetting::RefuseKey() {
  MessageBox box;
  box.text = kForbidden.toString() + u" の各文字は使用不可"_s;
  context_.messages.Ask(box);
}

QCoro::Task<void> frmSetting::PickFolder() {
  FileDialog dialog;
  dialog.title = u"保存フォルダの指定"_s;
  dialog.folder = ui_->txtDefaultSavePath->text();
  if (!QDir::isAbsolutePath(dialog.folder)) dialog.folder = context_.programFolder;
  const QString folder = co_await context_.dialogs.AskForFolder(dialog);
  if (!folder.isEmpty()) ui_->txtDefaultSavePath->setText(folder);
}

QCoro::Task<void> frmSetting::TakeOver() {
  bool isNumber = false;
  const int gmtDiff = ui_->cmbGmtDiff->currentText().trimmed().toInt(&isNumber);
  if (!isNumber) {
    const MessageBox box =
        MessageBox::Error(QString::number(kTypeMismatch) + u" 時差が数値ではありません。: "_s +
                          ui_->cmbGmtDiff->currentText());
    co_await context_.messages.Ask(box);
    ui_->cmbGmtDiff->setFocus();
    co_return;
  }
  AppSettings& settings = context_.settings;
  settings.defaultSavePath = ui_->txtDefaultSavePath->text();
  settings.download.openFolder = ui_->chkOpenFolder->isChecked();
  settings.download.vlcShow = ui_->ChkVLCShow->isChecked();
  settings.clock.useGmt = ui_->ChkGMTDate->isChecked();
  settings.clock.gmtDiffHours = gmtDiff;
  settings.download.wmaToMp3 = ui_->ChkWmaToMp3->isChecked();
  settings.download.streamingTool = ui_->frStreaming->property("Tag").toInt();
  settings.download.autoClose = ui_->ChkAutoClose->isChecked();
  TakeChoices();
  accept();
}

// What the command line set for this run goes to the file only when it is changed here.
void frmSetting::TakeChoices() {
  const FetchChoices chosen{.connectionsPerHost = ui_->spnConnections->value(),
                            .tries = ui_->spnTries->value(),
                            .keepServerDate = ui_->chkServerDate->isChecked(),
                            .decodeNames = ui_->chkDecodeNames->isChecked(),
                            .topSpeed = ui_->spnTopSpeed->value(),
                            .proxyForFiles = ui_->chkProxyForFiles->isChecked()};
  context_.keptChoices.Take(context_.choices, chosen);
  context_.choices = chosen;
}

}  // namespace zentorin
