// SPDX-License-Identifier: MIT
#include "ui/dialogs/frm_about.h"

#include <QIcon>

#include "net/library_version.h"
#include "ui_frm_about.h"

// The build system's package version: ZENTORIN_QCORO_VERSION.

namespace zentorin {
namespace {

constexpr int kIconPixels = 64;
constexpr double kTitleScale = 1.4;

}  // namespace

frmAbout::frmAbout(const QString& title, const QStringList& libraries, QWidget* parent)
    : QDialog(parent), ui_(std::make_unique<Ui::frmAbout>()) {
  ui_->setupUi(this);
  ui_->imgIcon->setPixmap(QIcon(QStringLiteral(":/icons/zentorin.svg")).pixmap(kIconPixels));
  QFont large = ui_->lblTitle->font();
  large.setPointSizeF(large.pointSizeF() * kTitleScale);
  ui_->lblTitle->setFont(large);
  ui_->lblTitle->setText(title);
  ui_->lblLibraries->setText(libraries.join(u'\n'));
  connect(ui_->cmdOK, &QPushButton::clicked, this, &QDialog::accept);
  connect(ui_->cmdSysInfo, &QPushButton::clicked, this, &frmAbout::SystemInformationRequested);
  connect(ui_->cmdHistory, &QPushButton::clicked, this, &frmAbout::HistoryRequested);
}

frmAbout::~frmAbout() = default;

QStringList LibraryVersions() {
  return {QStringLiteral("Qt ") + QLatin1String(qVersion()),
          QStringLiteral("libcurl ") + HttpLibraryVersion(),
          QStringLiteral("QCoro ") + QStringLiteral(ZENTORIN_QCORO_VERSION)};
}

}  // namespace zentorin
