// SPDX-License-Identifier: MIT
#include "ui/standard_texts.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

void ShowStandardTextsInJapanese() {
  QLocale::setDefault(QLocale(QLocale::Japanese, QLocale::Japan));
  auto* translator = new QTranslator(QCoreApplication::instance());
  if (translator->load(u"qtbase_ja"_s, QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
    QCoreApplication::installTranslator(translator);
  }
}

}  // namespace zentorin
