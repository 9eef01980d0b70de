// SPDX-License-Identifier: MIT
#include "ui/help_commands.h"

#include <QAction>

#include "app/program_title.h"
#include "base/message_boxes.h"
#include "launch/opener.h"
#include "ui/dialogs/frm_about.h"
#include "ui/main_controls.h"
#include "ui/widgets/link_label.h"

namespace zentorin {

HelpCommands::HelpCommands(Opener& opener, MessageBoxes& messages, MainControls& controls,
                           QObject* parent)
    : QObject(parent), opener_(opener), messages_(messages) {
  connect(controls.mnuHelp2, &QAction::triggered, this, [this] { Open(HelpPage::Contents); });
  connect(controls.lblRegHelp, &LinkLabel::Activated, this, [this] { Open(HelpPage::Patterns); });
  QWidget* window = controls.central->window();
  connect(controls.mnuVersion, &QAction::triggered, this, [this, window] { ShowAbout(window); });
}

QString HelpCommands::PathOf(HelpPage page) {
  const QString folder = FindHelpFolder();
  if (!folder.isEmpty()) return folder + u'/' + HelpFileName(page);
  messages_.Ask(MessageBox::Error(QStringLiteral("ヘルプのファイルが見つかりません。: ") +
                                  HelpFileName(page)));
  return {};
}

void HelpCommands::Open(HelpPage page) {
  const QString path = PathOf(page);
  if (!path.isEmpty()) opener_.OpenWithDefaultHandler(path);
}

void HelpCommands::ShowAbout(QWidget* window) {
  auto* about = new frmAbout(ProductName() + u' ' + ProductVersion(), LibraryVersions(), window);
  about->setAttribute(Qt::WA_DeleteOnClose);
  connect(about, &frmAbout::SystemInformationRequested, this,
          [this] { opener_.OpenWith(QStringLiteral("システム情報"), {}); });
  connect(about, &frmAbout::HistoryRequested, this, [this] {
    const QString path = PathOf(HelpPage::History);
    if (!path.isEmpty()) opener_.PlayOrView(path);
  });
  about->open();
}

}  // namespace zentorin
