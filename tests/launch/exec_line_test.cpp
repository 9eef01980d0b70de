// SPDX-License-Identifier: MIT
#include "launch/exec_line.h"

#include <gtest/gtest.h>

#include "launch/desktop_entry.h"
#include "tests/launch/xdg_tree.h"

namespace zentorin::test {
namespace {

const LaunchTarget kFile{QStringLiteral("/d/a b#1.mp3"), true};
const LaunchTarget kAddress{QStringLiteral("mms://host/$(id);x"), false};

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
  const struct {
    const char* line;
    LaunchTarget target;
    const char* words;
  } cases[] = {
      {"play %f", kFile, "play|/d/a b#1.mp3"},
      {"play %F", kFile, "play|/d/a b#1.mp3"},
      {"play %u", kFile, "play|file:///d/a%20b%231.mp3"},
      {"play %U --end", kAddress, "play|mms://host/$(id);x|--end"},
      {"play --open=%f", kFile, "play|--open=/d/a b#1.mp3"},
      {"play", kFile, "play|/d/a b#1.mp3"},
      {"play %f", {}, "play"},
      {"play %i %c %k 100%%", {}, "play|--icon|i con|再生|/x/e.desktop|100%"},
      {"play %d %D %n %N %v %m x", {}, "play|x"},
      {R"("/opt/my player/run" "a \\"b\\" \\$ \\` \\\\" %f)",
       {},
       R"(/opt/my player/run|a "b" $ ` \)"},
      {"play \"\" ''", {}, "play||"},
      {"play \"%f\"", kFile, "play|/d/a b#1.mp3"},
      {"env A=\"b c\"d play\\\\ er", {}, "env|A=b cd|play er"},
      {"play\\s%f", kFile, "play|/d/a b#1.mp3"},
  };
  for (const auto& c : cases) EXPECT_EQ(Words(c.line, c.target), c.words) << c.line;
}

TEST(ExecLine, LinesThatCannotBeTrustedAreRefused) {
  const struct {
    const char* line;
    LaunchTarget target;
  } cases[] = {
      {"", kFile},
      {"   ", kFile},
      {"%f", kFile},
      {"%c", kFile},
      {"%i play", kFile},
      {"/bin/%f", kFile},
      {"\"%u\" x", kAddress},
      {"sh -c \"play %f\"", kFile},
      {"sh -c 'play %u'", kAddress},
      {"play \"%f", kFile},
      {"play %x", kFile},
      {"play 100%", kFile},
      {"play x%F", kFile},
      {"play\\nrm %f", kFile},
      {"play %f", kAddress},
  };
  for (const auto& c : cases) EXPECT_EQ(Words(c.line, c.target), "-") << c.line;
}

}  // namespace
}  // namespace zentorin::test
