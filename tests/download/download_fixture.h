// SPDX-License-Identifier: MIT
#pragma once

#include <QDirIterator>

#include "tests/support/workspace_test.h"

namespace zentorin::test {

// The list holds one job, "daily": all files of one page, into "save".
class DownloadTest : public WorkspaceTest {
 protected:
  DownloadTest() {
    options.openFolder = false;
    AddJob("daily", "http://site.test/dir/index.html");
  }

  // It is selected.
  void AddJob(const char* description, const char* root) {
    TargetUrlItem item;
    item.Set(TargetUrlItem::Description, description);
    item.Set(TargetUrlItem::Root, root);
    item.Set(TargetUrlItem::SavePath, "save");
    item.Set(TargetUrlItem::FilePattern, "href=\"(.+?\\.mp3)\"");
    item.Set(TargetUrlItem::Depth, "0");
    urlList.InsertBelow(urlList.Count() - 1, item);
    urlList.Select(urlList.Count() - 1);
  }

  void Add(const QString& address, const QString& date = {}) {
    FileListRow row;
    row.Set(FileListRow::Date, date);
    row.Set(FileListRow::Link, address);
    row.Set(FileListRow::Address, address);
    files.Append(row);
  }

  RunOutcome RunRows(const CancelSource& source = {}) {
    DownloadRun run(DownloadContextOf(workspace), DownloadRun::Mode::Single, source.Token(),
                    [](const FinishedRow&) {});
    return QCoro::waitFor(run.Run());
  }

  // Runs one row alone and answers its mark.
  QString MarkOf(const QString& address, const QString& date = {}) {
    files.ClearFileList();
    Add(address, date);
    outcome = RunRows();
    return files.Row(0)[FileListRow::Mark];
  }

  // Of all rows in order: "o|?|x".
  QString Marks() const {
    QStringList marks;
    for (int row = 0; row < files.Count(); ++row) marks.append(files.Row(row)[FileListRow::Mark]);
    return marks.join(u'|');
  }

  // log.txt without the header line and the end of its last entry.
  QByteArray LogText() const {
    QByteArray text = home.Read("log.txt");
    text = text.mid(text.lastIndexOf("-- 2024/05/01 23:30:05 ----\r\n") + 29);
    return text.endsWith("\r\n\r\n\r\n") ? text.chopped(6) : "no end: " + text;
  }

  // The files below the save folder, by name: "a|folder/b".
  QString Saved() const {
    QStringList names;
    QDirIterator it(home.Path("save"), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (it.hasNext()) names.append(it.next().mid(home.Path("save/").size()));
    names.sort();
    return names.join(u'|');
  }

  QString Status() const { return activity.Now().message.text; }

  RunOutcome outcome;  // of the last MarkOf()
};

}  // namespace zentorin::test
