// SPDX-License-Identifier: MIT
#include "download/stream/vlc_command.h"

#include <gtest/gtest.h>

#include "download/stream/vlc_log.h"

namespace zentorin {
namespace {

QStringList Words(const char* address, const char* path) {
  const VlcRecording recording{.address = address, .path = path, .file = QString(path) + ".part"};
  return VlcArguments(recording, "/run/rc", true);
}

TEST(VlcCommandTest, TheLoggedTextIsTheProgramsOwn) {
  EXPECT_EQ(
      VlcCommandText({.address = "mms://m.test/a {b}.wmv", .path = "/s/a b.wmv", .file = "x"}),
      "\"mms://m.test/a {b}.wmv\" --sout #duplicate{dst=std{access=file,mux=raw,"
      "dst=\"/s/a b.wmv\" vlc:quit}");
  EXPECT_EQ(VlcCommandText({.address = "mms://m.test/a.wma", .path = "/s/a.mp3", .file = "x"}),
            "\"mms://m.test/a.wma\" --sout #transcode{acodec=mp3,channels=2,ab=192}"
            ":duplicate{dst=std{access=file,mux=raw,dst=\"/s/a.mp3\"}");
}

TEST(VlcCommandTest, TheTranslatedChainIsClosedAndTakesTheContainerOfTheEnding) {
  using Case = std::pair<const char*, const char*>;
  for (const auto& [path, chain] :
       {Case("/s/a.WMV",
             "std{access=file,mux=avformat{mux=asf,options={flush_packets=1}}"
             ",dst=\"/s/a.WMV.part\"}"),
        Case("/s/a.mp3",
             "transcode{acodec=mp3,channels=2,ab=192}:"
             "std{access=file,mux=raw,dst=\"/s/a.mp3.part\"}"),
        Case("/s/\"},x\\{.php", "std{access=file,mux=raw,dst=\"/s/\\\"},x\\\\{.php.part\"}")}) {
    EXPECT_EQ(Words("http://s.test/a.wmv", path).filter("--sout=").join('|'),
              QString("--sout=#") + chain);
  }
}

TEST(VlcCommandTest, OnlyStreamsElsewhereAreRecordedAndTheirAddressesAreSpelledOut) {
  using Case = std::pair<const char*, const char*>;
  for (const auto& [address, word] :
       {Case("http://s.test/a b.wmv", "http://s.test/a%20b.wmv"),
        Case("MMS://m.test/日{1}.wmv", "mms://m.test/%E6%97%A5%7B1%7D.wmv"),
        Case(R"(http://[::1]:80/{}|^[]<>"`\?{%41%4%zz%)",
             "http://[::1]:80/%7B%7D%7C%5E%5B%5D%3C%3E%22%60%5C?%7B%41%254%25zz%25"),
        Case("https://u%@s.test", "https://u%@s.test"), Case("file:///etc/passwd", ""),
        Case("--sout=#x", ""), Case("vlc://quit", ""), Case("mms://m.test/a\nb", ""),
        Case("mms:///a", "")}) {
    const QStringList words = Words(address, "/s/a.wmv");
    EXPECT_EQ(words.value(words.size() - 1), word) << address;
  }
}

TEST(VlcLogTest, TheFirstSourceThatIsNoStreamElsewhereIsTold) {
  const QByteArray reader = " main demux debug: creating demux: access='";
  const QByteArray longAddress = "file:///" + QByteArray(3000, 'a');
  const std::pair<QByteArray, QByteArray> cases[] = {
      {reader + "http' demux='any' location='s.test/a' file='(null)'", ""},
      {reader + "' demux='ts' location='' file='(null)'", ""},
      {reader + "' demux='any' location='/dev/screen' file='(null)'", ":///dev/screen"},
      {" avformat demux debug: detected format: mov,mp4", ""},
      {" avformat demux debug: detected format: hls,applehttp", "形式: hls,applehttp"},
      {" main stream debug: creating access: " + longAddress, longAddress.left(2048) + "…"},
  };
  for (const auto& [line, refused] : cases) {
    VlcLog log;
    log.Take(line + "\n main stream debug: creating access: http://s.test/b\n");
    EXPECT_EQ(log.Refused(), QString(refused));
  }
}

}  // namespace
}  // namespace zentorin
