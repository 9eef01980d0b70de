// SPDX-License-Identifier: MIT
#include "crawl/file_list_search.h"

#include <vector>

#include "crawl/file_list.h"

namespace zentorin {
namespace {

int FindKey(const FileList& files, const QString& key, int startRow) {
  if (key.isEmpty()) return -1;
  for (int row = startRow; row < files.Count(); ++row) {
    if (SearchKey(files.Row(row).ToText()).contains(key)) return row;
  }
  return -1;
}

void ShowHits(FileList& files, const std::vector<int>& hits) {
  files.DeselectAll();
  files.SelectOnly(hits);
  if (!hits.empty()) files.SetCurrentRow(hits.back());
}

}  // namespace

QString SearchKey(const QString& text) {
  // Folding can leave letters that have a narrower form again, so widths go first and last.
  const QString narrow = text.normalized(QString::NormalizationForm_KC).toCaseFolded();
  return narrow.normalized(QString::NormalizationForm_KC);
}

int FindInList(const FileList& files, const QString& text, int startRow) {
  return FindKey(files, SearchKey(text), startRow);
}

void FindNext(FileList& files, const QString& text) {
  const QString key = SearchKey(text);
  int row = FindKey(files, key, files.CurrentRow() + 1);
  if (row < 0) row = FindKey(files, key, 0);
  ShowHits(files, row < 0 ? std::vector<int>() : std::vector<int>{row});
}

void FindAll(FileList& files, const QString& text) {
  const QString key = SearchKey(text);
  std::vector<int> hits;
  for (int row = FindKey(files, key, 0); row >= 0; row = FindKey(files, key, row + 1)) {
    hits.push_back(row);
  }
  ShowHits(files, hits);
}

}  // namespace zentorin
