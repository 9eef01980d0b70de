// SPDX-License-Identifier: MIT
#include "download/stream/vlc_command.h"

#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace zentorin {
namespace {

QString ChainFor(const QString& path) {
  const QStringList words =
      VlcArguments({.address = QStringLiteral("http://s.test/a.wmv"), .path = path},
                   QStringLiteral("/run/rc"), false);
  return words.filter(QStringLiteral("--sout=")).value(0);
}

TEST(VlcCommandTest, TheLoggedTextIsTheProgramsOwn) {
  EXPECT_EQ(VlcCommandText({.address = QStringLiteral("mms://m.test/a b.wmv"),
                            .path = QStringLiteral("/s/a b.wmv")}),
            QStringLiteral("\"mms://m.test/a b.wmv\" --sout #duplicate{dst=std{access=file,mux=raw,"
                           "dst=\"/s/a b.wmv\" vlc:quit}"));
  EXPECT_EQ(VlcCommandText({.address = QStringLiteral("mms://m.test/a.wma"),
                            .path = QStringLiteral("/s/a.mp3")}),
            QStringLiteral("\"mms://m.test/a.wma\" --sout #transcode{acodec=mp3,channels=2,ab=192}"
                           ":duplicate{dst=std{access=file,mux=raw,dst=\"/s/a.mp3\"}"));
}

TEST(VlcCommandTest, TheTranslatedChainIsClosedAndTakesTheContainerOfTheEnding) {
  EXPECT_EQ(ChainFor(QStringLiteral("/s/a.WMV")),
            QStringLiteral("--sout=#std{access=file,mux=avformat{mux=asf,options={flush_packets=1}}"
                           ",dst=\"/s/a.WMV\"}"));
  EXPECT_EQ(ChainFor(QStringLiteral("/s/a.mp3")),
            QStringLiteral("--sout=#transcode{acodec=mp3,channels=2,ab=192}:"
                           "std{access=file,mux=raw,dst=\"/s/a.mp3\"}"));
  EXPECT_EQ(ChainFor(QStringLiteral("/s/\"},x\\{.php")),
            QStringLiteral("--sout=#std{access=file,mux=raw,dst=\"/s/\\\"},x\\\\{.php\"}"));
}

TEST(VlcCommandTest, OnlyStreamsElsewhereAreRecorded) {
  const std::vector<std::pair<const char*, const char*>> cases = {
      {"http://s.test/a b.wmv", "http://s.test/a%20b.wmv"},
      {"MMS://m.test/日.wmv", "mms://m.test/%E6%97%A5.wmv"},
      {"file:///etc/passwd", ""},
      {"--sout=#x", ""},
      {"vlc://quit", ""},
      {"mms://m.test/a\nb", ""},
      {"mms:///a", ""},
  };
  for (const auto& [address, word] : cases) {
    const QStringList words =
        VlcArguments({.address = QString::fromUtf8(address), .path = QStringLiteral("/s/a.wmv")},
                     QStringLiteral("/run/rc"), true);
    EXPECT_EQ(words.isEmpty() ? QString() : words.last(), QString::fromUtf8(word)) << address;
  }
}

}  // namespace
}  // namespace zentorin
