// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

#include "ui/dialogs/help_pages.h"

namespace zentorin {

class MessageBoxes;
class Opener;
struct MainControls;

// The help menu, the about box and the links to the help.
class HelpCommands : public QObject {
  Q_OBJECT

 public:
  HelpCommands(Opener& opener, MessageBoxes& messages, MainControls& controls,
               QObject* parent = nullptr);

 private:
  QString PathOf(HelpPage page);  // empty, and the user told, when it is not there
  void Open(HelpPage page);
  void ShowTemplateHelp();
  void ShowAbout(QWidget* window);

  Opener& opener_;
  MessageBoxes& messages_;
};

}  // namespace zentorin
