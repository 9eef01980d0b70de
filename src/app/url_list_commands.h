// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <QCoro/QCoroTask>

namespace zentorin {

class Workspace;

// The commands on the selected job of the URL list. Without a selected job all but Add() do
// nothing. The workspace outlives the commands and every task.
class UrlListCommands {
 public:
  explicit UrlListCommands(Workspace& workspace) : workspace_(workspace) {}

  // The root URL with its date templates expanded, in the browser or as text.
  void OpenSite();
  QCoro::Task<void> OpenSource();
  // The job's whole line; empty without a job.
  QString CopiedText() const;
  // Puts the first line of a text in the place of the job's line, as it stands, and loads it.
  void Paste(const QString& text);
  // A new job below the selected one, else at the end of the list.
  void Add();
  QCoro::Task<void> Delete();

 private:
  QString RootAddress() const;

  Workspace& workspace_;
};

}  // namespace zentorin
