// SPDX-License-Identifier: MIT
#include "ui/url_list_menu.h"

#include <QClipboard>
#include <QGuiApplication>

#include "app/workspace.h"
#include "ui/widgets/context_menu.h"
#include "ui/widgets/line_list_view.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

UrlListMenu::UrlListMenu(Workspace& workspace, LineListView& view, QObject* parent)
    : QObject(parent), commands_(workspace) {
  auto* menu = new ContextMenu("mnuContext_TargetUrl", view);
  UrlList& list = workspace.urlList;
  connect(menu, &ContextMenu::AskedByMouse, this, [&list](const QModelIndex& entry) {
    if (entry.row() != list.SelectedRow()) list.Select(entry.row());
  });
  const auto on = [this](const QAction* action, auto command) {
    connect(action, &QAction::triggered, this, command);
  };
  on(menu->AddEntry("mnuContext_TargetUrl_OpenSite", u"サイトを開く"_s),
     [this] { commands_.OpenSite(); });
  on(menu->AddEntry("mnuContext_TargetUrl_OpenSource", u"ソース"_s),
     [this] { commands_.OpenSource(); });
  menu->addSeparator();
  on(menu->AddEntry("mnuTargetUrl_Copy", u"コピー"_s, QKeySequence::Copy), [this] {
    const QString text = commands_.CopiedText();
    if (!text.isEmpty()) QGuiApplication::clipboard()->setText(text);
  });
  on(menu->AddEntry("mnuTargetUrl_Paste", u"貼り付け"_s, QKeySequence::Paste),
     [this] { commands_.Paste(QGuiApplication::clipboard()->text()); });
  menu->addSeparator();
  on(menu->AddEntry("mnuTargetUrl_Add", u"追加（下）"_s, Qt::Key_Insert),
     [this] { commands_.Add(); });
  on(menu->AddEntry("mnuTargetUrl_Del", u"削除"_s, QKeySequence::Delete),
     [this] { commands_.Delete(); });
  connect(&view, &QAbstractItemView::doubleClicked, this, [this] { commands_.OpenSite(); });
}

}  // namespace zentorin
