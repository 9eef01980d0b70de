// SPDX-License-Identifier: MIT
#include "ui/list_menus.h"

#include <QComboBox>

#include "app/workspace.h"
#include "ui/dialogs/frm_input.h"
#include "ui/main_controls.h"

namespace zentorin {

ListMenus::ListMenus(Workspace& workspace, MainControls& controls)
    : workspace_(workspace),
      c_(controls),
      urlListMenu_(workspace, *controls.lstTargetUrl),
      fileListMenu_(workspace, controls),
      help_(workspace.world.opener, workspace.world.messages, controls) {}

void ListMenus::OpenInputEditor(QComboBox* target) {
  auto* editor = new frmInput(target->currentText(), target->window());
  editor->setAttribute(Qt::WA_DeleteOnClose);
  editor->SetTag(QStringLiteral("no_commandline"));
  editor->PlaceBelow(QRect(target->mapToGlobal(QPoint()), target->size()));
  JobEditor& job = workspace_.job;
  const auto field =
      target == c_.cmbFilePattern ? TargetUrlItem::FilePattern : TargetUrlItem::SubPattern;
  connect(editor, &frmInput::ValueAccepted, this,
          [&job, field](const QString& value) { job.Edit(field, value); });
  // An unattended run may turn to another job while the editor is open.
  connect(&job, &JobEditor::Loaded, editor, &QDialog::reject);
  editor->open();
}

}  // namespace zentorin
