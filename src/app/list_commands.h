// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <QCoro/QCoroTask>

#include "jobs/target_url_item.h"

namespace zentorin {

class FileDialogs;
class Workspace;

// A job as a new one begins: all flags off, the settings' save folder, depth 1.
TargetUrlItem NewJob(const QString& defaultSavePath);

// The commands of the File menu on the URL list, with their questions. A list that a run works on
// is never replaced: not even by a question that was open when an unattended run began. Both
// references outlive the commands. The window's title follows UrlList::CurrentListFileChanged().
class ListCommands {
 public:
  ListCommands(Workspace& workspace, FileDialogs& dialogs);

  QCoro::Task<void> New();
  // Never asks about unsaved changes and leaves the "Dirty" mark as it was.
  QCoro::Task<void> Open();
  // The same for a file that is known already. A file that cannot be read is reported and leaves
  // list and file name as they were, so that no later save can go over it.
  QCoro::Task<void> OpenFile(QString path);
  // Both answer whether the list is on disk now; a failed write is reported and leaves it "Dirty".
  QCoro::Task<bool> Save();
  QCoro::Task<bool> SaveAs();

  // The question before the program ends; false when it is to stay open. A "yes" whose save fails
  // or is given up keeps it open too, as the changes would be lost.
  QCoro::Task<bool> MayClose();

 private:
  QCoro::Task<bool> WriteTo(QString path);
  QCoro::Task<void> Report(QString message);

  Workspace& workspace_;
  FileDialogs& dialogs_;
};

}  // namespace zentorin
