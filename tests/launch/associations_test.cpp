// SPDX-License-Identifier: MIT
#include <QFile>

#include <gtest/gtest.h>

#include "base/drives.h"
#include "launch/folder_placeholders.h"
#include "launch/known_applications.h"
#include "launch/mime_associations.h"
#include "tests/launch/xdg_tree.h"

namespace zentorin::test {
namespace {

std::string NamesFor(const XdgTree& tree, const char* type) {
  const InstalledPrograms programs(tree.Folders());
  QStringList names;
  for (const DesktopEntry& program : MimeAssociations(programs).ProgramsFor(type))
    names.append(program.name);
  return names.join(u' ').toStdString();
}

TEST(MimeAssociations, FollowTheOrderOfTheDesktopsRules) {
  const XdgTree tree;
  for (const char* name : {"chosen", "system", "added", "removed", "declared", "other"})
    tree.AddProgram(name, "%f", "MimeType=audio/mpeg;");
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

  tree.Write("data/applications/viewer.desktop",
             "[Desktop Entry]\nType=Application\nName=mine\nExec=viewer\nMimeType=text/css;\n");
  EXPECT_EQ(NamesFor(tree, "text/html"), "editor");
  EXPECT_EQ(NamesFor(tree, "text/css"), "mine editor");
  EXPECT_EQ(NamesFor(tree, "audio/mpeg"), "");
  EXPECT_EQ(NamesFor(tree, ""), "");
}

class KnownApplicationsTest : public testing::Test {
 protected:
  std::string Request(const QString& name, const QString& address = {}) const {
    const auto request = known_.RequestFor(name, LaunchTarget{.text = address, .isFile = false});
    if (!request) return "-";
    QStringList words = QStringList{request->program} + request->arguments;
    words.replaceInStrings(tree_.Path({}) + u'/', QString());
    return words.join(u' ').toStdString();
  }

  XdgTree tree_;
  Drives drives_{tree_.Path("home")};
  InstalledPrograms programs_{tree_.Folders()};
  FolderPlaceholders placeholders_{drives_};
  KnownApplications known_{programs_, placeholders_};
};

TEST_F(KnownApplicationsTest, PathsOfTheTableHavePlaceholdersForTheirFolders) {
  using Case = std::pair<QString, QString>;
  for (const auto& [name, path] :
       {Case("IE", "C:\\Program Files\\Internet Explorer\\IEXPLORE.EXE"),
        Case("メモ帳", "C:\\WINDOWS\\NOTEPAD.EXE"), Case("電卓", "C:\\WINDOWS\\system32\\calc.exe"),
        Case("MS Excel", "<OFFICE>EXCEL.EXE")}) {
    const KnownApplication* found = KnownApplications::Find(name);
    ASSERT_NE(found, nullptr);
    EXPECT_EQ(known_.TablePath(*found), path);
  }
  EXPECT_EQ(KnownApplications::Find("excel"), nullptr);
}

TEST_F(KnownApplicationsTest, AFolderIsWrittenBackAsItsPlaceholder) {
  EXPECT_EQ(placeholders_.Expand("<NOWHERE>\\a"), "<NOWHERE>\\a");
  EXPECT_EQ(placeholders_.Collapse("c:\\windows\\SYSTEM32\\a.exe"), "<SYSTEM>\\a.exe");
  EXPECT_EQ(placeholders_.Collapse("C:\\WINDOWS"), "<WINDOWS>");
  EXPECT_EQ(placeholders_.Collapse("C:\\WINDOWS32"), "C:\\WINDOWS32");
}

TEST_F(KnownApplicationsTest, TheNewestOfficeFolderThatHoldsTheSpreadsheetCounts) {
  const QString office = "home/drives/c/Program Files/Microsoft Office/";
  tree_.Write(office + "Office9/EXCEL.EXE", "");
  EXPECT_EQ(placeholders_.Expand("<OFFICE>WINWORD.EXE"),
            "C:\\Program Files\\Microsoft Office\\Office9\\WINWORD.EXE");
  tree_.Write(office + "Office16/winword.exe", "");
  tree_.Write(office + "Office12/Excel.exe", "");
  EXPECT_EQ(placeholders_.Folder("<OFFICE>"), "C:\\Program Files\\Microsoft Office\\Office12\\");
}

TEST_F(KnownApplicationsTest, TheDesktopsChoiceComesBeforeWhateverElseIsInstalled) {
  const QString ie = "IE";
  const QString page = "http://a.test/";
  EXPECT_EQ(Request(ie, page), "-");
  tree_.AddCommand("xdg-open");
  EXPECT_EQ(Request(ie, page), "bin/xdg-open http://a.test/");
  tree_.AddProgram("firefox", "--new %u");
  EXPECT_EQ(Request(ie, page), "bin/firefox --new http://a.test/");
  tree_.AddProgram("mine", "%u", "MimeType=x-scheme-handler/http;");
  EXPECT_EQ(Request(ie, page), "bin/mine http://a.test/");

  EXPECT_EQ(Request("電卓"), "-");
  tree_.AddCommand("xcalc");
  EXPECT_EQ(Request("電卓"), "bin/xcalc");
  EXPECT_EQ(Request("nothing such"), "-");
}

TEST_F(KnownApplicationsTest, AProgramThatTheUserPutInTheTablesPlaceIsTheLastResort) {
  const QString place = "home/drives/c/WINDOWS/system32/magnify.exe";
  const QString path = tree_.Write(place, "#!/bin/sh\n");
  EXPECT_EQ(Request("拡大鏡"), "-");
  QFile::setPermissions(path, QFile::ReadOwner | QFile::ExeOwner);
  EXPECT_EQ(Request("拡大鏡"), place.toStdString());
}

TEST_F(KnownApplicationsTest, ATerminalProgramNeedsATerminal) {
  tree_.AddProgram("mutt", "%u", "Terminal=true\nMimeType=x-scheme-handler/mailto;");
  const QString mail = "mailto:a@b.test";
  EXPECT_EQ(Request("OutlookExpress", mail), "-");
  tree_.AddCommand("gnome-terminal");
  EXPECT_EQ(Request("OutlookExpress", mail), "bin/gnome-terminal -- bin/mutt mailto:a@b.test");
}

}  // namespace
}  // namespace zentorin::test
