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

const LaunchTarget kFile{.text = "/d/a b#1.mp3", .isFile = true};
const LaunchTarget kAddress{.text = "mms://host/$(id);x", .isFile = false};
const LaunchTarget kNothing;

// The words for a line as it stands in the entry's file, joined with "|"; "-" when it is refused.
std::string Words(const QByteArray& execLine, const LaunchTarget& target) {
  const XdgTree tree;
  const QString path = tree.Write(
      "e.desktop",
      "[Desktop Entry]\nType=Application\nName=Player\nName[ja]=再生\nIcon=i con\nExec=" +
          execLine + "\n");
  auto entry = DesktopEntry::Read(path, "e.desktop");
  if (!entry) return "no entry";
  entry->path = "/x/e.desktop";
  const auto words = ExpandExec(*entry, target);
  return words ? words->join(u'|').toStdString() : "-";
}

TEST(ExecLine, FieldCodesAndQuotesAreReadAsEntriesDefineThem) {
  using Case = std::tuple<const char*, LaunchTarget, const char*>;
  for (const auto& [line, target, words] :
       {Case("play %f", kFile, "play|/d/a b#1.mp3"), Case("play %F", kFile, "play|/d/a b#1.mp3"),
        Case("play %u", kFile, "play|file:///d/a%20b%231.mp3"),
        Case("play %U --end", kAddress, "play|mms://host/$(id);x|--end"),
        Case("play --open=%f", kFile, "play|--open=/d/a b#1.mp3"),
        Case("play", kFile, "play|/d/a b#1.mp3"), Case("play %f", kNothing, "play"),
        Case("play %i %c %k 100%%", kNothing, "play|--icon|i con|再生|/x/e.desktop|100%"),
        Case("play %d %D %n %N %v %m x", kNothing, "play|x"),
        Case(R"("/opt/my player/run" "a \\"b\\" \\$ \\` \\\\" %f)", {},
             R"(/opt/my player/run|a "b" $ ` \)"),
        Case(R"(play "" '')", kNothing, "play||"), Case(R"(play "%f")", kFile, "play|/d/a b#1.mp3"),
        Case(R"(env A="b c"d play\\ er)", kNothing, "env|A=b cd|play er"),
        Case(R"(play\s%f)", kFile, "play|/d/a b#1.mp3")})
    EXPECT_EQ(Words(line, target), words) << line;
}

TEST(ExecLine, LinesThatCannotBeTrustedAreRefused) {
  for (const char* line : {"", "   ", "%f", "%c", "%i play", "/bin/%f", R"(sh -c "play %f")",
                           R"(play "%f)", "play %x", "play 100%", "play x%F", R"(play\nrm %f)"}) {
    EXPECT_EQ(Words(line, kFile), "-") << line;
  }
  for (const char* line : {R"("%u" x)", "sh -c 'play %u'", "play %f"})
    EXPECT_EQ(Words(line, kAddress), "-") << line;
}

}  // namespace
}  // namespace zentorin::test
