// SPDX-License-Identifier: MIT
#include "launch/mime_associations.h"

#include <QMimeDatabase>
#include <QSet>
#include <optional>

#include "launch/key_file.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

// The lists of one folder: those for the running desktop come before the one for all of them.
struct ListFile {
  std::optional<KeyFile> file;
  bool forOneDesktop = false;
};

std::vector<ListFile> ListsIn(const QString& folder, const QStringList& desktops) {
  std::vector<ListFile> lists;
  for (const QString& desktop : desktops) {
    if (desktop.contains(u'/')) continue;
    lists.push_back({KeyFile::Read(folder + u'/' + desktop + u"-mimeapps.list"_s), true});
  }
  lists.push_back({KeyFile::Read(folder + u"/mimeapps.list"_s), false});
  return lists;
}

// Gathers the ids for one type, folder by folder.
class IdGatherer {
 public:
  explicit IdGatherer(QString type) : type_(std::move(type)) {}

  void TakeLists(const QString& folder, const QStringList& desktops) {
    for (const ListFile& list : ListsIn(folder, desktops)) {
      if (!list.file) continue;
      defaults_ += list.file->List(u"Default Applications"_s, type_);
      // A list for one desktop chooses defaults only.
      if (list.forOneDesktop) continue;
      Associate(list.file->List(u"Added Associations"_s, type_));
      for (const QString& id : list.file->List(u"Removed Associations"_s, type_)) {
        closed_.insert(id);
      }
    }
  }

  // What the programs of a data folder declare; less important folders cannot speak for them again.
  void TakePrograms(const QString& dataFolder) {
    const auto cache = KeyFile::Read(dataFolder + u"/applications/mimeinfo.cache"_s);
    QStringList declared;
    if (cache) declared = cache->List(u"MIME Cache"_s, type_);
    QStringList here;
    InstalledPrograms::VisitEntries(dataFolder, [&](const QString& id, const QString& path) {
      here.append(id);
      if (cache || closed_.contains(id)) return;
      const auto entry = DesktopEntry::Read(path, id);
      if (entry && entry->types.contains(type_)) declared.append(id);
    });
    Associate(declared);
    for (const QString& id : here) closed_.insert(id);
  }

  QStringList Finish() {
    QStringList ids = defaults_ + associated_;
    ids.removeDuplicates();
    return ids;
  }

 private:
  void Associate(const QStringList& ids) {
    for (const QString& id : ids) {
      if (!closed_.contains(id)) associated_.append(id);
    }
  }

  QString type_;
  QStringList defaults_;
  QStringList associated_;
  QSet<QString> closed_;  // may not be associated any more
};

}  // namespace

QStringList MimeAssociations::IdsFor(const QString& type) const {
  const XdgFolders& folders = programs_.Folders();
  IdGatherer ids(type);
  for (const QString& folder : folders.config) ids.TakeLists(folder, folders.desktops);
  for (const QString& folder : folders.data) {
    ids.TakeLists(folder + u"/applications"_s, folders.desktops);
    ids.TakePrograms(folder);
  }
  return ids.Finish();
}

std::vector<DesktopEntry> MimeAssociations::ProgramsFor(const QString& type) const {
  QStringList ids;
  if (!type.isEmpty()) ids = IdsFor(type);
  // Everything is a kind of octet stream; a program for that is a program for nothing in
  // particular.
  const QMimeType known = QMimeDatabase().mimeTypeForName(type);
  for (const QString& parent : known.allAncestors()) {
    if (parent != u"application/octet-stream"_s) ids += IdsFor(parent);
  }
  ids.removeDuplicates();
  std::vector<DesktopEntry> found;
  for (const QString& id : ids) {
    auto program = programs_.FindById(id);
    if (program) found.push_back(std::move(*program));
  }
  return found;
}

QString MimeAssociations::TypeOfExtension(const QString& extension) {
  if (extension.isEmpty()) return {};
  const QMimeType type =
      QMimeDatabase().mimeTypeForFile(u"x."_s + extension, QMimeDatabase::MatchExtension);
  return type.isDefault() ? QString() : type.name();
}

}  // namespace zentorin
