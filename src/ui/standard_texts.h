// SPDX-License-Identifier: MIT
#pragma once

namespace zentorin {

// Shows Qt's own texts (file dialogs, the menus of text fields) in the language of the program's,
// whatever the locale. Once a QApplication stands; without the translations they stay in English.
void ShowStandardTextsInJapanese();

}  // namespace zentorin
