// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace zentorin {

class FileListRow;

// Where a row's file is: its link resolved against the base directory of its page.
QString FileAddressOf(const FileListRow& row);

// What a player is given: a link that names its own scheme as it is, any other one resolved; no
// blanks around it.
QString PlayAddressOf(const FileListRow& row);

}  // namespace zentorin
