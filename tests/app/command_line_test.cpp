// SPDX-License-Identifier: MIT
#include "app/command_line.h"

#include <QDir>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "app/program_title.h"
#include "base/drives.h"
#include "tests/support/temp_dir.h"

namespace zentorin::test {
namespace {

// "debug|auto time|action|tray|file,file|N to a host|N KB|!what is invalid" of what is set.
QString Summary(const CommandLine& line) {
  QStringList parts;
  if (line.debugMode) parts.append("debug");
  if (line.autoMode) parts.append("auto " + line.autoStartTime);
  if (!line.afterBatchAction.isEmpty()) parts.append(line.afterBatchAction);
  if (line.trayMode) parts.append("tray");
  if (!line.files.isEmpty()) parts.append(line.files.join(u','));
  if (line.connections) parts.append(QString::number(*line.connections) + " to a host");
  if (line.topSpeed) parts.append(QString::number(*line.topSpeed) + " KB");
  if (!line.invalidNumber.isEmpty()) parts.append(u'!' + line.invalidNumber);
  if (!line.invalidTime.isEmpty()) parts.append(u'!' + line.invalidTime);
  return parts.join(u'|');
}

TEST(CommandLine, ReadsItsOptionsFromOneText) {
  const std::vector<std::pair<const char*, const char*>> cases = {
      {"", ""},
      {"lists.dat -debug", "debug"},
      {"-auto 23:30 -quit shutdown -file C:\\lists\\nightly.dat",
       "auto 23:30|シャットダウン|C:\\lists\\nightly.dat"},
      {"-a -q -f nightly.dat -tasktray", "auto |閉じる|tray|nightly.dat"},
      {"-DEBUG -Auto 7:5 -QUIT s", "debug|auto 7:5|シャットダウン"},
      {"-quit shutdown -auto", "auto "},
      {"-a -q b", "auto |スタンバイ"},
      {"-a -q hibernation -q l", "auto |ログオフ"},
      {"-a 25:00 -debug", "auto |!25:00"},
      {"-debug -f a.dat -a soon -f b.dat", "debug|auto |a.dat|!soon"},
      {"-a 23:30 -a", "auto "},
      {"-a　-q　-f x.dat", "auto |閉じる|x.dat"},
      {"-auto　23:30", ""},
      {"-unknown -nothing 3 -debug", "debug"},
      {"-f  my  old list.dat ", "my  old list.dat"},
      {"-f \"a b.dat\" -f \tc.dat", "a b.dat,c.dat"},
      {"-connections 1 -Speed 0 -speed 500", "1 to a host|500 KB"},
      {"-connections 13 -debug", "!connections の指定が不正です。\r\n\r\n13 → 1 から 12 までの数"},
      {"-speed -5", "!speed の指定が不正です。\r\n\r\n（値なし） → 0 から 1000000 までの数"},
      {"-f a-b.dat -debug", "debug|a-b.dat"},
  };
  for (const auto& [text, expected] : cases) {
    EXPECT_EQ(Summary(ParseCommandLine(QString::fromUtf8(text))).toStdString(), expected) << text;
  }
  EXPECT_EQ(ParseOptionWords(" q\t  b 　 c　 d　e ").mid(0, 4),
            QStringList({"q", "b", "c　d　e", QString()}));
}

TEST(CommandLine, KeepsArgumentsThatHoldBlanksAndHyphensWhole) {
  const auto summary = [](const QStringList& arguments) {
    return Summary(ParseCommandLine(JoinArguments(arguments)));
  };
  const QString path = "/a b/new -old　-x.dat";
  EXPECT_EQ(summary({"-f", path, "-debug"}), "debug|" + path);
  EXPECT_EQ(summary({"-a -q　-f x.dat"}), "auto |閉じる|x.dat")
      << "an argument that is a piece of command line is read as one";
  EXPECT_EQ(summary({"　-a", " -debug"}), "debug|auto ");
}

TEST(CommandLine, FindsAListInTheProgramsFolderFirst) {
  const TempDir home;
  const TempDir work;
  const QString before = QDir::currentPath();
  QDir::setCurrent(work.Path());
  home.Write("both.dat", "");
  work.Write("both.dat", "");
  const QString here = work.Write("sub/here.dat", "");
  const Drives drives(home.Path());
  EXPECT_EQ(FindListFile("both.dat", drives), home.Path("both.dat"));
  EXPECT_EQ(FindListFile(".\\sub\\here.dat", drives), here);
  EXPECT_EQ(FindListFile("none.dat", drives), home.Path("none.dat"));
  EXPECT_EQ(Summary(ReadArguments({here}, drives)), here) << "as a file manager gives it";
  EXPECT_EQ(Summary(ReadArguments({"none.dat"}, drives)), QString());
  QDir::setCurrent(before);
}

TEST(ProgramTitle, ShowsTheVersionWithoutItsSecondDot) {
  EXPECT_EQ(ProductTitle(0, 0, 8), "Zentorin 0.08");
}

}  // namespace
}  // namespace zentorin::test
