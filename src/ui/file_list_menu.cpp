// SPDX-License-Identifier: MIT
#include "ui/file_list_menu.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QShortcut>

#include "app/workspace.h"
#include "crawl/file_list_search.h"
#include "ui/dialogs/frm_search.h"
#include "ui/main_controls.h"
#include "ui/widgets/context_menu.h"
#include "ui/widgets/line_list_view.h"
#include "ui/widgets/link_label.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

FileListMenu::FileListMenu(Workspace& workspace, MainControls& controls, QObject* parent)
    : QObject(parent), workspace_(workspace), commands_(workspace) {
  FillMenu(controls);
  connect(controls.lstUrl_All, &QAbstractItemView::doubleClicked, this,
          [this] { commands_.Play(); });
  for (int i = 0; i < MainControls::kHeaderCount; ++i) {
    // The headers are numbered from the parent page back to the mark.
    const auto column = FileListRow::Column(FileListRow::Parent - i);
    connect(controls.lblDescription[i], &LinkLabel::Activated, this,
            [this, column, &controls] { Sort(column, *controls.lstUrl_All); });
    // The headers from the keyboard: Ctrl+1 sorts by the first column, and so on.
    auto* keys = new QShortcut(Qt::CTRL | static_cast<Qt::Key>(Qt::Key_1 + int{column}),
                               controls.lstUrl_All);
    keys->setContext(Qt::WidgetShortcut);
    connect(keys, &QShortcut::activated, controls.lblDescription[i], &LinkLabel::Activated);
  }
}

void FileListMenu::FillMenu(MainControls& controls) {
  LineListView& view = *controls.lstUrl_All;
  auto* menu = new ContextMenu("mnuContext_List", view);
  menu->OnlyWithEntries();
  const auto on = [this](const QAction* action, auto command) {
    connect(action, &QAction::triggered, this, command);
  };
  on(menu->AddEntry("mnuSelectAll", u"全て選択"_s, QKeySequence::SelectAll),
     [this] { commands_.SelectAll(); });
  on(menu->AddEntry("mnuContext_List_Download_Kobetu", u"ダウンロード"_s),
     [this] { Q_EMIT DownloadRequested(false); });
  on(menu->AddEntry("mnuContext_List_Download_All", u"ダウンロード　一括"_s),
     [this] { Q_EMIT DownloadRequested(true); });
  menu->addSeparator();
  on(menu->AddEntry("mnuContext_List_OpenSite", u"サイトを開く"_s),
     [this] { commands_.OpenSite(); });
  on(menu->AddEntry("mnuContext_List_OpenSource", u"ソース"_s), [this] { commands_.OpenSource(); });
  on(menu->AddEntry("mnuContext_List_Play", u"再生／閲覧"_s), [this] { commands_.Play(); });
  menu->addSeparator();
  on(menu->AddEntry("mnuContext_List_Copy", u"コピー"_s, QKeySequence::Copy),
     [this] { QGuiApplication::clipboard()->setText(commands_.CopiedText()); });
  on(menu->AddEntry("mnuContext_List_Search", u"検索"_s, QKeySequence::Find),
     [this, &view] { ShowSearch(view.window()); });
  menu->addSeparator();
  on(menu->AddEntry("mnuContext_List_Delete", u"削除"_s, QKeySequence::Delete),
     [this] { commands_.Delete(); });
}

void FileListMenu::Sort(FileListRow::Column column, LineListView& view) {
  commands_.Sort(column);
  // The list's tag text holds the direction.
  view.setProperty("Tag", commands_.SortTag());
}

void FileListMenu::ShowSearch(QWidget* window) {
  if (search_ == nullptr) {
    search_ = new frmSearch(window);
    FileList& files = workspace_.files;
    connect(search_, &frmSearch::FindNextRequested, this,
            [&files](const QString& text) { FindNext(files, text); });
    connect(search_, &frmSearch::FindAllRequested, this,
            [&files](const QString& text) { FindAll(files, text); });
  }
  search_->show();
  search_->raise();
  search_->activateWindow();
}

}  // namespace zentorin
