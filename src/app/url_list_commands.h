// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <QCoro/QCoroTask>

namespace zentorin {

class Workspace;

// Without a selected job all but Add() do nothing.
class UrlListCommands {
 public:
  explicit UrlListCommands(Workspace& workspace) : workspace_(workspace) {}

  void OpenSite();                  // the root URL, date templates expanded, in the browser
  QCoro::Task<void> OpenSource();   // the same as text
  QString CopiedText() const;       // the job's whole line
  void Paste(const QString& text);  // its first line replaces the job's, as it stands
  void Add();                       // below the selected job, else at the end
  QCoro::Task<void> Delete();

 private:
  QString RootAddress() const;

  Workspace& workspace_;
};

}  // namespace zentorin
