// SPDX-License-Identifier: MIT
#include "ui/widgets/fixed_pitch_font.h"

#include <QFont>
#include <QFontDatabase>
#include <QStringList>

namespace zentorin {

QFont FixedPitchFont(const QFont& base) {
  QFont font(base);
  font.setFamilies({QStringLiteral("Noto Sans Mono CJK JP"), QStringLiteral("IPAGothic"),
                    QStringLiteral("TakaoGothic"), QStringLiteral("VL Gothic"),
                    QFontDatabase::systemFont(QFontDatabase::FixedFont).family()});
  font.setStyleHint(QFont::Monospace);
  font.setFixedPitch(true);
  return font;
}

}  // namespace zentorin
