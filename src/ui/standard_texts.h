// SPDX-License-Identifier: MIT
#pragma once

namespace zentorin {

// Qt's own texts, whatever the locale; needs a QApplication and stays English without the files.
void ShowStandardTextsInJapanese();

}  // namespace zentorin
