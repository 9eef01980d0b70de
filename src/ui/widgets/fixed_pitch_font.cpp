// SPDX-License-Identifier: MIT
#include "ui/widgets/fixed_pitch_font.h"

#include <QFont>
#include <QFontDatabase>
#include <QStringList>

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

QFont FixedPitchFont(const QFont& base) {
  QFont font(base);
  font.setFamilies({u"Noto Sans Mono CJK JP"_s, u"IPAGothic"_s, u"TakaoGothic"_s, u"VL Gothic"_s,
                    QFontDatabase::systemFont(QFontDatabase::FixedFont).family()});
  font.setStyleHint(QFont::Monospace);
  font.setFixedPitch(true);
  return font;
}

}  // namespace zentorin
