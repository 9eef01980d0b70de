// SPDX-License-Identifier: MIT
#pragma once

#include <QStringView>

namespace zentorin {

// Walks over the tags of a page in document order and linear time: every match of
// \<([^<>]*?)[^\\]\>. The character before the ">" may be an angle bracket too, so "<>>" and "<<>"
// are tags. The views lie in the page text.
class TagSplitter {
 public:
  explicit TagSplitter(QStringView page) : page_(page) {}

  QStringView Next();  // a null view when there is none left

 private:
  QStringView page_;
  qsizetype at_ = 0;
};

}  // namespace zentorin
