// SPDX-License-Identifier: MIT
#include "launch/installed_programs.h"

#include <utility>

#include <gtest/gtest.h>
#include <sys/stat.h>

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
  tree.AddProgram(QStringLiteral("good"));
  tree.AddProgram(QStringLiteral("quiet"), "%f", "NoDisplay=true");
  tree.AddProgram(QStringLiteral("tried"), "%f", "TryExec=good");
  tree.AddProgram(QStringLiteral("gone"), "%f", "TryExec=missing");
  tree.AddProgram(QStringLiteral("deleted"), "%f", "Hidden=true");
  tree.AddProgram(QStringLiteral("shadowed"));
  const QString shadow = QStringLiteral("data/applications/shadowed.desktop");
  tree.Write(shadow, "[Desktop Entry]\nType=Application\nExec=good\nHidden=true\n");
  tree.Write(QStringLiteral("data/applications/kde/own-er/deep.desktop"),
             "[Desktop Entry]\r\nType=Application\r\nExec=good\r\n");
  tree.Write(QStringLiteral("data/applications/no.desktop"),
             "[Desktop Entry]\nType=Application\nExec=missing\n");

  const InstalledPrograms programs(tree.Folders());

  EXPECT_EQ(IdsOf(programs), "kde-own-er-deep.desktop good.desktop quiet.desktop tried.desktop");
  EXPECT_TRUE(programs.FindById(QStringLiteral("kde-own-er-deep.desktop")));
  EXPECT_FALSE(programs.FindById(QStringLiteral("shadowed.desktop")));
  EXPECT_FALSE(programs.FindById(QStringLiteral("../../data-system/applications/good.desktop")));
  const auto quiet = programs.FindById(QStringLiteral("quiet.desktop"));
  EXPECT_EQ(quiet ? programs.ProgramFile(*quiet) : QString(),
            tree.Path(QStringLiteral("bin/quiet")));
}

TEST(InstalledPrograms, ProgramsAreFoundByEitherOfTheirNames) {
  const XdgTree tree;
  tree.AddCommand(QStringLiteral("vlc"));
  tree.Write(QStringLiteral("data/applications/a.desktop"),
             "[Desktop Entry]\nType=Application\nName=VLC media players\nExec=vlc\n");
  tree.Write(QStringLiteral("data/applications/b.desktop"),
             "[Desktop Entry]\nType=Application\nName=vlc Media Player 3.0\nExec=vlc\n");
  tree.Write(QStringLiteral("data/applications/c.desktop"),
             "[Desktop Entry]\nType=Application\nName=Recorder\nName[ja]=録画\nExec=vlc\n");
  const InstalledPrograms programs(tree.Folders());
  const std::vector<std::pair<QString, const char*>> cases = {
      {QStringLiteral("VLC media player,VideoLAN VLC"), "b.desktop"},
      {QStringLiteral("VideoLAN VLC, recorder"), "c.desktop"},
      {QStringLiteral("録画"), "c.desktop"},
      {QStringLiteral("GetASFStream"), ""},
      {QStringLiteral(" ,,"), ""},
  };
  for (const auto& [names, id] : cases) {
    const auto found = programs.FindByDisplayName(names);
    EXPECT_EQ(found ? found->id.toStdString() : "", id) << id;
  }
}

TEST(InstalledPrograms, HostileEntriesAreNoPrograms) {
  const XdgTree tree;
  tree.AddCommand(QStringLiteral("play"));
  const QByteArray head = "[Desktop Entry]\nType=Application\nName=x\n";
  const std::vector<std::pair<const char*, QByteArray>> cases = {
      {"empty", {}},
      {"binary", head + "Exec=play\n" + QByteArray("\0\xff\xfe", 3)},
      {"huge", head + "Exec=play\n#" + QByteArray(5 << 20, 'x')},
      {"no-exec", head},
      {"link", "[Desktop Entry]\nType=Link\nExec=play\n"},
      {"other-group", head + "[Desktop Action new]\nExec=play\n"},
      {"group-again", head + "[Other]\n[Desktop Entry]\nExec=play\n"},
      {"line-feed", head + "Exec=pl\\nay\n"},
      {"relative", head + "Exec=../bin/play\n"},
      {"first-counts", head + "Exec=missing\nExec=play\n"},
      {"before-group", "Exec=play\n" + head},
  };
  for (const auto& [name, bytes] : cases)
    tree.Write(QStringLiteral("data/applications/%1.desktop").arg(QLatin1String(name)), bytes);
  const QByteArray pipe = tree.Path(QStringLiteral("data/applications/pipe.desktop")).toUtf8();
  ASSERT_EQ(mkfifo(pipe.constData(), 0600), 0);

  EXPECT_EQ(IdsOf(InstalledPrograms(tree.Folders())), "");
}

}  // namespace
}  // namespace zentorin::test
