// SPDX-License-Identifier: MIT
#include "ui/help_commands.h"

#include <QAction>
#include <QDateTime>

#include "app/program_title.h"
#include "base/message_boxes.h"
#include "jobs/date_template.h"
#include "launch/opener.h"
#include "ui/dialogs/frm_about.h"
#include "ui/main_controls.h"
#include "ui/widgets/link_label.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

// How date templates are written, with an example before and after conversion.
QString TemplateHelpText() {
  const QString example = u"http://www.example.com/{yyyy-mm}/english{yyyymmdd}.mp3"_s;
  const QDateTime day(QDate(2011, 5, 10), QTime(0, 0), Qt::UTC);
  const QStringList lines{
      u"{ yyyymmdd } のように { } で囲まれた内容は日付に変換される。"_s,
      QString(),
      u"　　ここで y , m , d は、それぞれ　年,月,日 を表す"_s,
      u"　　{ yyyymmdd }　→ 20110510 左詰めに 0 が付加された桁数"_s,
      u"　　{ yyyymd }  　　→ 2011510"_s,
      QString(),
      u"例"_s,
      u"　　"_s + example,
      u"　　→ "_s + ExpandDateTemplates(example, day),
  };
  return lines.join("\r\n"_L1);
}

}  // namespace

HelpCommands::HelpCommands(Opener& opener, MessageBoxes& messages, MainControls& controls,
                           QObject* parent)
    : QObject(parent), opener_(opener), messages_(messages) {
  connect(controls.mnuHelp2, &QAction::triggered, this, [this] { Open(HelpPage::Contents); });
  connect(controls.lblRegHelp, &LinkLabel::Activated, this, [this] { Open(HelpPage::Patterns); });
  connect(controls.lblFormat, &LinkLabel::Activated, this, &HelpCommands::ShowTemplateHelp);
  QWidget* window = controls.central->window();
  connect(controls.mnuVersion, &QAction::triggered, this, [this, window] { ShowAbout(window); });
}

QString HelpCommands::PathOf(HelpPage page) {
  const QString folder = FindHelpFolder();
  if (!folder.isEmpty()) return folder + u'/' + HelpFileName(page);
  messages_.Ask(MessageBox::Error(u"ヘルプのファイルが見つかりません。: "_s + HelpFileName(page)));
  return {};
}

void HelpCommands::Open(HelpPage page) {
  const QString path = PathOf(page);
  if (!path.isEmpty()) opener_.OpenWithDefaultHandler(path);
}

void HelpCommands::ShowTemplateHelp() {
  MessageBox box;
  box.title = u"書式設定例"_s;
  box.text = TemplateHelpText();
  messages_.Ask(box);
}

void HelpCommands::ShowAbout(QWidget* window) {
  auto* about = new frmAbout(ProductName() + u' ' + ProductVersion(), LibraryVersions(), window);
  about->setAttribute(Qt::WA_DeleteOnClose);
  connect(about, &frmAbout::SystemInformationRequested, this,
          [this] { opener_.OpenWith(u"システム情報"_s, {}); });
  connect(about, &frmAbout::HistoryRequested, this, [this] {
    const QString path = PathOf(HelpPage::History);
    if (!path.isEmpty()) opener_.PlayOrView(path);
  });
  about->open();
}

}  // namespace zentorin
