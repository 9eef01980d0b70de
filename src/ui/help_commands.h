// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

#include "ui/dialogs/help_pages.h"

namespace zentorin {

class MessageBoxes;
class Opener;
struct MainControls;

// The help menu, the about box and the links to the help. All references outlive it.
class HelpCommands : public QObject {
  Q_OBJECT

 public:
  HelpCommands(Opener& opener, MessageBoxes& messages, MainControls& controls,
               QObject* parent = nullptr);

 private:
  // Path of a page; empty, and the user told, when the help is not there.
  QString PathOf(HelpPage page);
  void Open(HelpPage page);
  void ShowTemplateHelp();
  void ShowAbout(QWidget* window);

  Opener& opener_;
  MessageBoxes& messages_;
};

}  // namespace zentorin
