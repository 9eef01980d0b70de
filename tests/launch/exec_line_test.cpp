// SPDX-License-Identifier: MIT
#include "launch/exec_line.h"

#include <tuple>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "launch/desktop_entry.h"
#include "tests/launch/xdg_tree.h"

namespace zentorin::test {
namespace {

const LaunchTarget kFile{.text = QStringLiteral("/d/a b#1.mp3"), .isFile = true};
const LaunchTarget kAddress{.text = QStringLiteral("mms://host/$(id);x"), .isFile = false};
const LaunchTarget kNothing;

// The words for a line as it stands in the entry's file, joined with "|"; "-" when it is refused.
std::string Words(const QByteArray& execLine, const LaunchTarget& target) {
  const XdgTree tree;
  const QString path = tree.Write(
      QStringLiteral("e.desktop"),
      "[Desktop Entry]\nType=Application\nName=Player\nName[ja]=再生\nIcon=i con\nExec=" +
          execLine + "\n");
  auto entry = DesktopEntry::Read(path, QStringLiteral("e.desktop"));
  if (!entry) return "no entry";
  entry->path = QStringLiteral("/x/e.desktop");
  const auto words = ExpandExec(*entry, target);
  return words ? words->join(u'|').toStdString() : "-";
}

TEST(ExecLine, FieldCodesAndQuotesAreReadAsEntriesDefineThem) {
  const std::vector<std::tuple<const char*, LaunchTarget, const char*>> cases = {
      {"play %f", kFile, "play|/d/a b#1.mp3"},
      {"play %F", kFile, "play|/d/a b#1.mp3"},
      {"play %u", kFile, "play|file:///d/a%20b%231.mp3"},
      {"play %U --end", kAddress, "play|mms://host/$(id);x|--end"},
      {"play --open=%f", kFile, "play|--open=/d/a b#1.mp3"},
      {"play", kFile, "play|/d/a b#1.mp3"},
      {"play %f", kNothing, "play"},
      {"play %i %c %k 100%%", kNothing, "play|--icon|i con|再生|/x/e.desktop|100%"},
      {"play %d %D %n %N %v %m x", kNothing, "play|x"},
      {R"("/opt/my player/run" "a \\"b\\" \\$ \\` \\\\" %f)",
       {},
       R"(/opt/my player/run|a "b" $ ` \)"},
      {R"(play "" '')", kNothing, "play||"},
      {R"(play "%f")", kFile, "play|/d/a b#1.mp3"},
      {R"(env A="b c"d play\\ er)", kNothing, "env|A=b cd|play er"},
      {R"(play\s%f)", kFile, "play|/d/a b#1.mp3"},
  };
  for (const auto& [line, target, words] : cases) EXPECT_EQ(Words(line, target), words) << line;
}

TEST(ExecLine, LinesThatCannotBeTrustedAreRefused) {
  const std::vector<std::pair<const char*, LaunchTarget>> cases = {
      {"", kFile},
      {"   ", kFile},
      {"%f", kFile},
      {"%c", kFile},
      {"%i play", kFile},
      {"/bin/%f", kFile},
      {R"("%u" x)", kAddress},
      {R"(sh -c "play %f")", kFile},
      {"sh -c 'play %u'", kAddress},
      {R"(play "%f)", kFile},
      {"play %x", kFile},
      {"play 100%", kFile},
      {"play x%F", kFile},
      {R"(play\nrm %f)", kFile},
      {"play %f", kAddress},
  };
  for (const auto& [line, target] : cases) EXPECT_EQ(Words(line, target), "-") << line;
}

}  // namespace
}  // namespace zentorin::test
