// SPDX-License-Identifier: MIT
#include "ui/dialogs/frm_about.h"

#include <QIcon>

#include "net/curl_http_engine.h"
#include "ui_frm_about.h"

// The build system's package version: ZENTORIN_QCORO_VERSION.

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kIconPixels = 64;
constexpr double kTitleScale = 1.4;

}  // namespace

frmAbout::frmAbout(const QString& title, const QStringList& libraries, QWidget* parent)
    : QDialog(parent), ui_(std::make_unique<Ui::frmAbout>()) {
  ui_->setupUi(this);
  ui_->imgIcon->setPixmap(QIcon(u":/icons/zentorin.svg"_s).pixmap(kIconPixels));
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
  return {u"Qt "_s + QLatin1StringView(qVersion()), u"libcurl "_s + HttpLibraryVersion(),
          u"QCoro "_s + QLatin1StringView(ZENTORIN_QCORO_VERSION)};
}

}  // namespace zentorin
