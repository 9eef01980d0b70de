// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace zentorin {

// What the click on `lblFormat` explains: how date templates are written, with an example before
// and after conversion. Lines are joined with CR LF.
QString TemplateHelpText();

}  // namespace zentorin
