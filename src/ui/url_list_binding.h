// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

namespace zentorin {

class FileList;
class LineListView;
class UrlList;

// Shows the URL list in its view. A click on a job, or moving to it by a key, selects it; the
// list's own selection (after a load, a move, a delete) is shown. All references must outlive the
// binding.
class UrlListBinding : public QObject {
  Q_OBJECT

 public:
  // `files`: the file list of the job that is shown.
  UrlListBinding(UrlList& list, const FileList& files, LineListView& view,
                 QObject* parent = nullptr);

 private:
  void ShowSelected(int row);

  UrlList& list_;
  LineListView& view_;
  bool following_ = false;  // the view is being changed by the list, not by the user
};

}  // namespace zentorin
