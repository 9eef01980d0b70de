// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

#include "jobs/target_url_item.h"
#include "ui/file_list_menu.h"
#include "ui/help_commands.h"
#include "ui/url_list_menu.h"

class QComboBox;

namespace zentorin {

class Workspace;

// Everything that opens from the main window besides its own controls: the menus of the two lists,
// the help and the editor of the pattern boxes. All references outlive it.
class ListMenus : public QObject {
  Q_OBJECT

 public:
  ListMenus(Workspace& workspace, MainControls& controls);

  // `OpenInputEditor`: edits the text of a pattern box at a larger size.
  void OpenInputEditor(QComboBox* target);

 private:
  Workspace& workspace_;
  MainControls& c_;
  UrlListMenu urlListMenu_;
  FileListMenu fileListMenu_;
  HelpCommands help_;
};

}  // namespace zentorin
