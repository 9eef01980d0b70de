// SPDX-License-Identifier: MIT
#include "download/stream/tool_lookup.h"

#include <QDir>
#include <QFileInfo>

#include "launch/exec_line.h"
#include "launch/installed_programs.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr QLatin1StringView kStreamGetFile = "StreamGet.exe"_L1;

bool IsVlc(const QString& path) {
  const QString name = QFileInfo(path).fileName();
  return name.compare("vlc"_L1, Qt::CaseInsensitive) == 0 ||
         name.compare("cvlc"_L1, Qt::CaseInsensitive) == 0;
}

// "StreamGet.exe" in a folder, in whatever letter case; empty when it is not there.
QString StreamGetIn(const QString& folder) {
  if (!QDir::isAbsolutePath(folder)) return {};
  const QStringList files = QDir(folder).entryList({kStreamGetFile}, QDir::Files);
  return files.isEmpty() ? QString() : QDir(folder).filePath(files.first());
}

// The folder of the compatibility layer's drives.
QString DrivesFolder(const QStringList& words) {
  constexpr QLatin1StringView kPrefix = "WINEPREFIX="_L1;
  QString prefix = qEnvironmentVariable("WINEPREFIX", QDir::homePath() + u"/.wine"_s);
  for (const QString& word : words) {
    if (word.startsWith(kPrefix)) prefix = word.sliced(kPrefix.size());
  }
  return prefix + u"/dosdevices/"_s;
}

QString StreamGetNamedIn(const QStringList& words) {
  for (QString word : words) {
    word.replace(u'\\', u'/');
    if (!word.endsWith(u'/' + kStreamGetFile, Qt::CaseInsensitive)) continue;
    if (word.size() > 2 && word[1] == u':') {
      word = DrivesFolder(words) + word.toLower().left(2) + word.sliced(2);
    }
    if (const QString file = StreamGetIn(QFileInfo(word).path()); !file.isEmpty()) return file;
  }
  return {};
}

}  // namespace

std::optional<FoundTool> ToolLookup::Find(int setting) const {
  return setting == kStreamGet ? FindStreamGet() : FindVlc();
}

std::optional<FoundTool> ToolLookup::FindAny() const {
  auto vlc = FindVlc();
  return vlc ? vlc : FindStreamGet();
}

// VLC is the program file of its desktop entry, and without one the command "vlc" or "cvlc" of the
// path. The file must have one of these two names: what an entry starts instead (a sandbox, a
// script) cannot be given the words that VLC understands.
std::optional<FoundTool> ToolLookup::FindVlc() const {
  QStringList candidates;
  const auto entry = programs_.FindByDisplayName(u"VLC media player,VideoLAN VLC"_s);
  if (entry) candidates.append(programs_.ProgramFile(*entry));
  candidates +=
      {programs_.Folders().FindCommand(u"vlc"_s), programs_.Folders().FindCommand(u"cvlc"_s)};
  for (const QString& path : candidates) {
    if (IsVlc(path)) return FoundTool{.kind = FoundTool::Kind::Vlc, .path = path, .words = {path}};
  }
  return std::nullopt;
}

// StreamGet is a Windows program: the entry that a compatibility layer made for it starts it. Its
// file lies in the entry's folder or is named in the entry's Exec, as a path of this system or as
// one of the layer's ("C:\…", below $WINEPREFIX).
std::optional<FoundTool> ToolLookup::FindStreamGet() const {
  const auto entry = programs_.FindByDisplayName(u"GetASFStream"_s);
  if (!entry) return std::nullopt;
  auto words = ExpandExec(*entry, {});
  if (!words) return std::nullopt;
  QString path = StreamGetIn(entry->folder);
  if (path.isEmpty()) path = StreamGetNamedIn(*words);
  if (path.isEmpty()) return std::nullopt;
  words->first() = programs_.ProgramFile(*entry);
  return FoundTool{.kind = FoundTool::Kind::StreamGet, .path = path, .words = *words};
}

QStringList ToolLookup::Paths() const {
  QStringList paths;
  for (const int setting : {kVlc, kStreamGet}) {
    paths.append(Find(setting).value_or(FoundTool()).path);
  }
  return paths;
}

}  // namespace zentorin
