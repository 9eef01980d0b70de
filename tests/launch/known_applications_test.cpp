// SPDX-License-Identifier: MIT
#include "launch/known_applications.h"

#include <QFile>

#include <gtest/gtest.h>

#include "base/drives.h"
#include "launch/folder_placeholders.h"
#include "tests/launch/xdg_tree.h"

namespace zentorin::test {
namespace {

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

TEST_F(KnownApplicationsTest, PlaceholdersStandForFolders) {
  EXPECT_EQ(placeholders_.Expand("<NOWHERE>\\a"), "<NOWHERE>\\a");
  EXPECT_EQ(placeholders_.Expand("<OFFICE>a"), "<OFFICE>a") << "there is none";
  // The newest office folder that holds the spreadsheet counts.
  const QString office = "home/drives/c/Program Files/Microsoft Office/";
  tree_.Write(office + "Office9/EXCEL.EXE", "");
  tree_.Write(office + "Office16/winword.exe", "");
  tree_.Write(office + "Office12/Excel.exe", "");
  EXPECT_EQ(placeholders_.Expand("<OFFICE>a"), "C:\\Program Files\\Microsoft Office\\Office12\\a");
  // The way back names the innermost folder, in any letter case, and none that only begins alike.
  EXPECT_EQ(placeholders_.Collapse("c:\\windows\\System32\\calc.exe"), "<SYSTEM>\\calc.exe");
  EXPECT_EQ(placeholders_.Collapse("C:\\WINDOWS"), "<WINDOWS>");
  EXPECT_EQ(placeholders_.Collapse("C:\\WINDOWSILL\\a"), "C:\\WINDOWSILL\\a");
}

TEST_F(KnownApplicationsTest, TheDesktopsChoiceComesBeforeWhateverElseIsInstalled) {
  const QString page = "http://a.test/";
  EXPECT_EQ(Request("IE", page), "-");
  tree_.AddCommand("xdg-open");
  EXPECT_EQ(Request("IE", page), "bin/xdg-open http://a.test/");
  tree_.AddProgram("firefox", "--new %u");
  EXPECT_EQ(Request("IE", page), "bin/firefox --new http://a.test/");
  tree_.AddProgram("mine", "%u", "MimeType=x-scheme-handler/http;");
  EXPECT_EQ(Request("IE", page), "bin/mine http://a.test/");

  // A program that the user put in the table's place is the last resort.
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
