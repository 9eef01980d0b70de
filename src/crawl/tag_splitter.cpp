// SPDX-License-Identifier: MIT
#include "crawl/tag_splitter.h"

namespace zentorin {

QStringView TagSplitter::Next() {
  while (true) {
    const qsizetype start = page_.indexOf(u'<', at_);
    if (start < 0) break;
    qsizetype last = start + 1;  // the candidate for the character before the closing ">"
    for (; last + 1 < page_.size(); ++last) {
      if (page_[last] != u'\\' && page_[last + 1] == u'>') {
        at_ = last + 2;
        return page_.sliced(start, at_ - start);
      }
      if (page_[last] == u'<' || page_[last] == u'>') break;
    }
    // No "<" lies between: a tag that fails here is never looked at twice.
    at_ = last;
  }
  at_ = page_.size();
  return {};
}

}  // namespace zentorin
