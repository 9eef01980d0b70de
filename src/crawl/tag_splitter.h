// SPDX-License-Identifier: MIT
#pragma once

#include <QStringView>

namespace zentorin {

// Walks over the tags of a page: every match of \<([^<>]*?)[^\\]\> in document order. A tag is a
// "<", the shortest run of characters that are no angle brackets, one character that is not a
// backslash (an angle bracket too, so "<>>" and "<<>" are tags) and a ">". The views lie in the
// page text, which has to outlive them. Both the walk and the count take time proportional to
// the page.
class TagSplitter {
 public:
  explicit TagSplitter(QStringView page) : page_(page) {}

  // The next tag; a null view when there is none left.
  QStringView Next();

  static qsizetype CountTags(QStringView page);

 private:
  QStringView page_;
  qsizetype at_ = 0;
};

}  // namespace zentorin
