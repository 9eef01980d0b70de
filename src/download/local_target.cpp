// SPDX-License-Identifier: MIT
#include "download/local_target.h"

#include "net/api_web.h"
#include "net/character_references.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

const QLatin1StringView kSchemeEnd = "://"_L1;

bool HasKnownScheme(const QString& address) {
  return address.startsWith("mms://"_L1, Qt::CaseInsensitive) ||
         address.startsWith("http://"_L1, Qt::CaseInsensitive) ||
         address.startsWith("https://"_L1, Qt::CaseInsensitive);
}

bool LiesDirectlyIn(const QString& directory, const QString& root) {
  return !root.isEmpty() && directory == API_Web::DirectoryOf(root);
}

// A file outside both roots: its site and folders under a folder of their own.
QString ExternalFolder(const QString& directory) {
  QString external = u"zz-External"_s;
  const qsizetype scheme = directory.indexOf(kSchemeEnd);
  if (scheme < 0) return external;
  return external + u'\\' + directory.mid(scheme + kSchemeEnd.size());
}

}  // namespace

QString RowAddress(const FileListRow& row, const QString& root) {
  const QString& base = row[FileListRow::BaseDir];
  QString address = row[FileListRow::Address];
  // An address outside its page's directory is worked out anew from the link as written.
  if (address.isEmpty() || !address.startsWith(base)) {
    address = DecodeReferences(row[FileListRow::Link]);
  }
  const QString& against = base.isEmpty() ? root : base;
  if (against.isEmpty() || HasKnownScheme(address)) return address;
  return API_Web::Resolve(against, address);
}

QString SuffixOf(const QString& address) {
  const qsizetype dot = address.lastIndexOf(u'.');
  return dot < 0 ? QString() : address.mid(dot).toLower();
}

bool IsStreamSuffix(const QString& suffix) {
  return suffix == ".php"_L1 || suffix == ".asx"_L1 || suffix == ".wmv"_L1;
}

QString LastSegment(const QString& address) {
  return address.mid(address.lastIndexOf(u'/') + 1);
}

QString TreeFolder(const QString& address, const QString& rootBase, const QString& root,
                   PercentCodes codes) {
  const QString directory = API_Web::DirectoryOf(address);
  if (LiesDirectlyIn(directory, rootBase)) return {};
  // An empty root would contain every address, so that only known roots are asked.
  const QString& first = rootBase.isEmpty() ? root : rootBase;
  const QString& second = root.isEmpty() ? first : root;
  QString folder = first.isEmpty() ? QString() : API_Web::PathUnder(address, first, second);
  if (folder.isEmpty()) {
    if (LiesDirectlyIn(directory, root)) return {};
    folder = ExternalFolder(directory);
  }
  return CleanRelativePath(folder, codes);
}

QString LocalName(const QString& prefix, const QString& address, PercentCodes codes) {
  const QString name = prefix + LastSegment(address);
  return name.isEmpty() ? QString() : CleanFileName(name, codes);
}

QString WithMp3Suffix(const QString& name) {
  const QLatin1StringView suffix = ".wma"_L1;
  if (!name.endsWith(suffix, Qt::CaseInsensitive)) return name;
  return name.chopped(suffix.size()) + u".mp3"_s;
}

}  // namespace zentorin
