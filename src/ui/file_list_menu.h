// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

#include "app/file_list_commands.h"

namespace zentorin {

class LineListView;
class frmSearch;
struct MainControls;

// The mouse and the keys of the file list: `mnuContext_List`, shortcuts, headers, search dialog.
class FileListMenu : public QObject {
  Q_OBJECT

 public:
  FileListMenu(Workspace& workspace, MainControls& controls, QObject* parent = nullptr);

 Q_SIGNALS:
  void DownloadRequested(bool batch);

 private:
  void FillMenu(MainControls& controls);
  void Sort(FileListRow::Column column, LineListView& view);
  void ShowSearch(QWidget* window);

  Workspace& workspace_;
  FileListCommands commands_;
  frmSearch* search_ = nullptr;  // made when first asked for and kept
};

}  // namespace zentorin
