// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <QCoro/QCoroTask>

#include "jobs/target_url_item.h"

namespace zentorin {

class FileDialogs;
class Workspace;

TargetUrlItem NewJob(const QString& defaultSavePath);  // all flags off, depth 1

// The commands of the File menu. A list that a run works on is never replaced, not even by a
// question that was open when an unattended run began.
class ListCommands {
 public:
  ListCommands(Workspace& workspace, FileDialogs& dialogs);

  QCoro::Task<void> New();
  QCoro::Task<void> Open();  // never asks about changes, leaves the "Dirty" mark as it was
  // A file that cannot be read leaves list and file name alone: no later save can go over it.
  QCoro::Task<void> OpenFile(QString path);
  // Both answer whether the list is on disk now; a failed write is reported and leaves it "Dirty".
  QCoro::Task<bool> Save();
  QCoro::Task<bool> SaveAs();

  // False when the program is to stay open, also after a save that failed or was given up.
  QCoro::Task<bool> MayClose();

 private:
  QCoro::Task<bool> WriteTo(QString path);
  QCoro::Task<void> Report(QString message);

  Workspace& workspace_;
  FileDialogs& dialogs_;
};

}  // namespace zentorin
