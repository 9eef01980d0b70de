// SPDX-License-Identifier: MIT
#include "app/kept_choices.h"

#include <QFile>

#include <gtest/gtest.h>

#include "tests/support/temp_dir.h"

namespace zentorin::test {
namespace {

class KeptChoicesTest : public testing::Test {
 protected:
  // What is told of a file with these lines.
  QStringList Load(const QByteArray& lines) {
    home.Write("choices.ini", lines);
    QStringList faults;
    EXPECT_TRUE(kept.Load(path, faults).Ok());
    return faults;
  }
  std::string Numbers() const {
    const FetchChoices& c = kept.choices;
    return QString("%1 %2 %3 %4%5%6")
        .arg(c.connectionsPerHost)
        .arg(c.tries)
        .arg(c.topSpeed)
        .arg(c.keepServerDate)
        .arg(c.decodeNames)
        .arg(c.proxyForFiles)
        .toStdString();
  }

  TempDir home;
  QString path = home.Path("choices.ini");
  KeptChoices kept;
};

TEST_F(KeptChoicesTest, OnlyWhatChangedIsWrittenAndTheRestOfTheFileStays) {
  QStringList faults;
  ASSERT_TRUE(kept.Load(path, faults).Ok() && faults.isEmpty());
  EXPECT_EQ(Numbers(), "6 2 0 000");
  EXPECT_TRUE(kept.Save(path).Ok());
  EXPECT_FALSE(QFile::exists(path)) << "all is default";

  EXPECT_EQ(Load("mine=a b\n[fetch]\ntries=3\nlater=1\n[window]\ncolour=日\n"), QStringList());
  EXPECT_EQ(Numbers(), "6 3 0 000");
  kept.choices = {.connectionsPerHost = 1,
                  .tries = 3,
                  .keepServerDate = true,
                  .decodeNames = true,
                  .topSpeed = 250,
                  .proxyForFiles = true};
  home.Write("choices.ini", "mine=a b\n[fetch]\ntries=10\nlater=1\n[window]\ncolour=日\n");
  ASSERT_TRUE(kept.Save(path).Ok());
  const QByteArray text = home.Read("choices.ini");
  for (const char* line : {"mine=a b\n", "later=1\n", "colour=日\n"}) {
    EXPECT_TRUE(text.contains(line)) << text.toStdString();
  }
  ASSERT_TRUE(kept.Load(path, faults).Ok() && faults.isEmpty());
  EXPECT_EQ(Numbers(), "1 10 250 111") << "what another wrote meanwhile is not taken back";
}

TEST_F(KeptChoicesTest, WhatIsNoValidValueIsToldWithItsFileAndKey) {
  const QStringList faults = Load(
      "[fetch]\nconnections_per_host=0\ntries=99999999999\ntop_speed_kb=a,b\n"
      "keep_server_date=1\ndecode_names=perhaps\nproxy_for_files=TRUE\n");
  EXPECT_EQ(Numbers(), "1 20 0 101");
  ASSERT_EQ(faults.size(), 4);
  EXPECT_EQ(faults[0], "ファイル「" + path +
                           "」の「fetch/connections_per_host」の値「0」は 1 から 12 "
                           "までの数ではありません。1 とします。");
  for (const char* said : {"「fetch/tries」", "「a,b」", "「fetch/decode_names」"}) {
    EXPECT_EQ(faults.filter(said).size(), 1) << said;
  }
  EXPECT_EQ(Load("[fetch\ntries=1\n").size(), 1);
}

TEST_F(KeptChoicesTest, AFileThatCannotBeReadOrWrittenIsTold) {
  home.Write("choices.ini/file", "");
  QStringList faults;
  EXPECT_TRUE(kept.Load(path, faults).message.contains(path));
  EXPECT_TRUE(kept.Save(path).Ok()) << "there is nothing to write";
  kept.choices.tries = 5;
  EXPECT_TRUE(kept.Save(path).message.endsWith(
      path + "」を書き込めません。フォルダであるか、アクセスできないパスです（エラー 75）。"));
}

}  // namespace
}  // namespace zentorin::test
