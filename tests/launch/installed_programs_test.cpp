// SPDX-License-Identifier: MIT
#include "launch/installed_programs.h"

#include <utility>

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "tests/launch/xdg_tree.h"

namespace zentorin::test {

using namespace Qt::Literals::StringLiterals;

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
  const QString shadow = "data/applications/shadowed.desktop";
  tree.Write(shadow, "[Desktop Entry]\nType=Application\nExec=good\nHidden=true\n");
  tree.Write("data/applications/kde/own-er/deep.desktop",
             "[Desktop Entry]\r\nType=Application\r\nExec=good\r\n");
  tree.Write("data/applications/no.desktop", "[Desktop Entry]\nType=Application\nExec=missing\n");

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
  tree.Write("data/applications/a.desktop",
             "[Desktop Entry]\nType=Application\nName=VLC media players\nExec=vlc\n");
  tree.Write("data/applications/b.desktop",
             "[Desktop Entry]\nType=Application\nName=vlc Media Player 3.0\nExec=vlc\n");
  tree.Write("data/applications/c.desktop",
             "[Desktop Entry]\nType=Application\nName=Recorder\nName[ja]=録画\nExec=vlc\n");
  const InstalledPrograms programs(tree.Folders());
  using Case = std::pair<QString, const char*>;
  for (const auto& [names, id] :
       {Case("VLC media player,VideoLAN VLC", "b.desktop"),
        Case("VideoLAN VLC, recorder", "c.desktop"), Case("録画", "c.desktop"),
        Case("GetASFStream", ""), Case(" ,,", "")}) {
    const auto found = programs.FindByDisplayName(names);
    EXPECT_EQ(found ? found->id.toStdString() : "", id) << id;
  }
}

TEST(InstalledPrograms, HostileEntriesAreNoPrograms) {
  const XdgTree tree;
  tree.AddCommand("play");
  const QByteArray head = "[Desktop Entry]\nType=Application\nName=x\n";
  using Case = std::pair<const char*, QByteArray>;
  for (const auto& [name, bytes] :
       {Case("empty", {}), Case("binary", head + "Exec=play\n" + QByteArray("\0\xff\xfe", 3)),
        Case("huge", head + "Exec=play\n#" + QByteArray(5 << 20, 'x')), Case("no-exec", head),
        Case("link", "[Desktop Entry]\nType=Link\nExec=play\n"),
        Case("other-group", head + "[Desktop Action new]\nExec=play\n"),
        Case("group-again", head + "[Other]\n[Desktop Entry]\nExec=play\n"),
        Case("line-feed", head + "Exec=pl\\nay\n"), Case("relative", head + "Exec=../bin/play\n"),
        Case("first-counts", head + "Exec=missing\nExec=play\n"),
        Case("before-group", "Exec=play\n" + head)})
    tree.Write(u"data/applications/%1.desktop"_s.arg(name), bytes);
  const QByteArray pipe = tree.Path("data/applications/pipe.desktop").toUtf8();
  ASSERT_EQ(mkfifo(pipe.constData(), 0600), 0);

  EXPECT_EQ(IdsOf(InstalledPrograms(tree.Folders())), "");
}

}  // namespace
}  // namespace zentorin::test
