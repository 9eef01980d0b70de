// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "launch/desktop_entry.h"
#include "launch/exec_line.h"
#include "launch/installed_programs.h"
#include "launch/mime_associations.h"
#include "tests/launch/xdg_tree.h"

namespace zentorin::test {
namespace {

std::string IdsOf(const InstalledPrograms& programs) {
  QStringList ids;
  for (const DesktopEntry& program : programs.List()) ids.append(program.id);
  return ids.join(u' ').toStdString();
}

TEST(InstalledPrograms, OnlyWhatCanBeStartedIsListed) {
  const XdgTree tree;
  tree.AddProgram("good");
  tree.AddProgram("quiet", "%f", "NoDisplay=true");
  tree.AddProgram("tried", "%f", "TryExec=good");
  tree.AddProgram("gone", "%f", "TryExec=missing");
  tree.AddProgram("deleted", "%f", "Hidden=true");
  tree.AddProgram("shadowed");
  tree.AddEntry("shadowed", "Exec=good\nHidden=true");
  tree.Write("data/applications/kde/own-er/deep.desktop",
             "[Desktop Entry]\r\nType=Application\r\nExec=good\r\n");
  tree.AddEntry("no", "Exec=missing");
  const QByteArray head = "[Desktop Entry]\nType=Application\nName=x\n";
  int hostile = 0;
  for (const QByteArray& bytes :
       {QByteArray(), head + "Exec=good\n" + QByteArray("\0\xff\xfe", 3),
        head + "Exec=good\n#" + QByteArray(5 << 20, 'x'),
        QByteArray("[Desktop Entry]\nType=Link\nExec=good\n"),
        head + "[Desktop Action new]\nExec=good\n", head + "Exec=../bin/good\n"}) {
    tree.Write(QString("data/applications/hostile%1.desktop").arg(++hostile), bytes);
  }
  const InstalledPrograms programs(tree.Folders());
  EXPECT_EQ(IdsOf(programs), "kde-own-er-deep.desktop good.desktop quiet.desktop tried.desktop");
  EXPECT_TRUE(programs.FindById("kde-own-er-deep.desktop"));
  EXPECT_FALSE(programs.FindById("shadowed.desktop"));
  EXPECT_FALSE(programs.FindById("../../data-system/applications/good.desktop"));
  const auto quiet = programs.FindById("quiet.desktop");
  EXPECT_EQ(quiet ? programs.ProgramFile(*quiet) : QString(), tree.Path("bin/quiet"));
}

TEST(InstalledPrograms, ProgramsAreFoundByEitherOfTheirNames) {
  const XdgTree tree;
  tree.AddCommand("vlc");
  tree.AddEntry("a", "Name=VLC media players\nExec=vlc");
  tree.AddEntry("b", "Name=vlc Media Player 3.0\nExec=vlc");
  tree.AddEntry("c", "Name=Recorder\nName[ja]=録画\nExec=vlc");
  const InstalledPrograms programs(tree.Folders());
  using Case = std::pair<QString, const char*>;
  for (const auto& [names, id] :
       {Case("VLC media player,VideoLAN VLC", "b.desktop"),
        Case("VideoLAN VLC, recorder", "c.desktop"), Case("録画", "c.desktop")}) {
    const auto found = programs.FindByDisplayName(names);
    EXPECT_EQ(found ? found->id.toStdString() : "", id) << id;
  }
}

std::string NamesFor(const XdgTree& tree, const char* type) {
  const InstalledPrograms programs(tree.Folders());
  QStringList names;
  for (const DesktopEntry& program : MimeAssociations(programs).ProgramsFor(type)) {
    names.append(program.name);
  }
  return names.join(u' ').toStdString();
}

TEST(MimeAssociations, FollowTheOrderOfTheDesktopsRules) {
  const XdgTree tree;
  for (const char* name : {"chosen", "system", "added", "removed", "declared", "other"}) {
    tree.AddProgram(name, "%f", "MimeType=audio/mpeg;");
  }
  tree.AddProgram("unrelated");
  EXPECT_EQ(NamesFor(tree, "audio/mpeg"), "added chosen declared other removed system");

  tree.Write("config-system/mimeapps.list",
             "[Default Applications]\naudio/mpeg=system.desktop;\n"
             "[Added Associations]\naudio/mpeg=removed.desktop;\n");
  tree.Write("config/mimeapps.list",
             "[Default Applications]\naudio/mpeg=not-installed.desktop;chosen.desktop\n"
             "[Added Associations]\naudio/mpeg=added.desktop;\n"
             "[Removed Associations]\naudio/mpeg=removed.desktop;\n");
  EXPECT_EQ(NamesFor(tree, "audio/mpeg"), "chosen system added declared other");

  tree.Write("config/gnome-mimeapps.list",
             "[Default Applications]\naudio/mpeg=other.desktop;\n"
             "[Added Associations]\naudio/mpeg=unrelated.desktop;\n");
  tree.Write("config/kde-mimeapps.list", "[Default Applications]\naudio/mpeg=system.desktop;\n");
  tree.Write("data-system/applications/mimeinfo.cache",
             "[MIME Cache]\naudio/mpeg=system.desktop;added.desktop;\n");
  EXPECT_EQ(NamesFor(tree, "audio/mpeg"), "other chosen system added");
}

TEST(MimeAssociations, AnEntryOfTheUserSpeaksForAllEntriesOfItsId) {
  const XdgTree tree;
  tree.AddProgram("viewer", "%f", "MimeType=text/html;");
  tree.AddProgram("editor", "%f", "MimeType=text/plain;");
  EXPECT_EQ(NamesFor(tree, "text/html"), "viewer editor");

  tree.AddEntry("viewer", "Name=mine\nExec=viewer\nMimeType=text/css;");
  EXPECT_EQ(NamesFor(tree, "text/html"), "editor");
  EXPECT_EQ(NamesFor(tree, "text/css"), "mine editor");
}

const LaunchTarget kFile{.text = "/d/a b#1.mp3", .isFile = true};
const LaunchTarget kAddress{.text = "mms://host/$(id);x", .isFile = false};
const LaunchTarget kNothing;

// The words for a line as it stands in the entry's file, joined with "|"; "-" when it is refused.
std::string Words(const QByteArray& execLine, const LaunchTarget& target) {
  const XdgTree tree;
  tree.AddEntry("e", "Name=Player\nName[ja]=再生\nIcon=i con\nExec=" + execLine);
  auto entry = DesktopEntry::Read(tree.Path("data/applications/e.desktop"), "e.desktop");
  if (!entry) return "no entry";
  entry->path = "/x/e.desktop";
  const auto words = ExpandExec(*entry, target);
  return words ? words->join(u'|').toStdString() : "-";
}

TEST(ExecLine, FieldCodesAndQuotesAreReadAsEntriesDefineThem) {
  using Case = std::tuple<const char*, LaunchTarget, const char*>;
  for (const auto& [line, target, words] :
       {Case("play %F", kFile, "play|/d/a b#1.mp3"),
        Case("play %u", kFile, "play|file:///d/a%20b%231.mp3"),
        Case("play %U --end", kAddress, "play|mms://host/$(id);x|--end"),
        Case("play --open=%f", kFile, "play|--open=/d/a b#1.mp3"),
        Case("play", kFile, "play|/d/a b#1.mp3"),
        Case("play %i %c %k 100%%", kNothing, "play|--icon|i con|再生|/x/e.desktop|100%"),
        Case("play %d %D %n %N %v %m x", kNothing, "play|x"),
        Case(R"("/opt/my player/run" "a \\"b\\" \\$ \\` \\\\" %f)", {},
             R"(/opt/my player/run|a "b" $ ` \)"),
        Case(R"(play "" '')", kNothing, "play||"),
        Case(R"(env A="b c"d play\\ er)", kNothing, "env|A=b cd|play er"),
        Case(R"(play\s%f)", kFile, "play|/d/a b#1.mp3")}) {
    EXPECT_EQ(Words(line, target), words) << line;
  }
}

TEST(ExecLine, LinesThatCannotBeTrustedAreRefused) {
  for (const char* line : {"   ", "/bin/%f", R"(sh -c "play %f")", R"(play "%f)", "play %x",
                           "play 100%", "play x%F", R"(play\nrm %f)"}) {
    EXPECT_EQ(Words(line, kFile), "-") << line;
  }
  EXPECT_EQ(Words("sh -c 'play %u'", kAddress), "-");
  EXPECT_EQ(Words("play %f", kAddress), "-");
}

}  // namespace
}  // namespace zentorin::test
