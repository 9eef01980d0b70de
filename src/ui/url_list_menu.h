// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

#include "app/url_list_commands.h"

namespace zentorin {

class LineListView;

// The mouse and the keys of the URL list: `mnuContext_TargetUrl`, shortcuts.
class UrlListMenu : public QObject {
  Q_OBJECT

 public:
  UrlListMenu(Workspace& workspace, LineListView& view, QObject* parent = nullptr);

 private:
  UrlListCommands commands_;
};

}  // namespace zentorin
