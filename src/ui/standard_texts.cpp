// SPDX-License-Identifier: MIT
#include "ui/standard_texts.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QTranslator>

namespace zentorin {

void ShowStandardTextsInJapanese() {
  auto* translator = new QTranslator(QCoreApplication::instance());
  if (translator->load(QStringLiteral("qtbase_ja"),
                       QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
    QCoreApplication::installTranslator(translator);
  }
}

}  // namespace zentorin
