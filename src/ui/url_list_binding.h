// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

namespace zentorin {

class FileList;
class LineListView;
class UrlList;

// A click on a job, or moving to it by a key, selects it.
class UrlListBinding : public QObject {
  Q_OBJECT

 public:
  // `files`: of the job that is shown.
  UrlListBinding(UrlList& list, const FileList& files, LineListView& view,
                 QObject* parent = nullptr);

 private:
  void ShowSelected(int row);

  UrlList& list_;
  LineListView& view_;
  bool following_ = false;  // the view is being changed by the list, not by the user
};

}  // namespace zentorin
