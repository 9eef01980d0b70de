// SPDX-License-Identifier: MIT
#include "download/stream/recording_file.h"

#include <QFile>

#include "base/run_time_error.h"
#include "tests/download/download_fixture.h"

namespace zentorin::test {
namespace {

class RecordingFileTest : public DownloadTest {
 protected:
  // Records into `path` by one of the two ways; answers what stands there in the middle.
  QByteArray Record(int (RecordingFile::*begin)(), const QString& path, bool kept) {
    RecordingFile file(home.Path(path));
    EXPECT_EQ((file.*begin)(), 0);
    EXPECT_EQ(file.Bytes(), 0);
    const QByteArray meanwhile = home.Read(path);
    home.Write(file.Written().mid(home.Path().size() + 1), "new");
    EXPECT_TRUE(!kept || file.Keep() == 0);
    return meanwhile;
  }
};

TEST_F(RecordingFileTest, OnlyARecordingThatIsKeptTakesThePlaceOfAnEarlierOne) {
  const auto part = &RecordingFile::MakePart;
  for (const QString& name : {QString("a.wmv"), QString("録").repeated(83) + ".wmv"}) {
    const QString path = "save/" + name;
    for (const auto way : {&RecordingFile::PutOldAside, part}) {
      home.Write(path, "an old one");
      EXPECT_EQ(Record(way, path, false), way == part ? "an old one" : "");
      EXPECT_EQ(home.Read(path), "an old one");
      Record(way, path, true);
      EXPECT_EQ(home.Read(path), "new");
      EXPECT_EQ(Saved(), name);
      QFile::remove(home.Path(path));
      Record(way, path, false);
      EXPECT_EQ(Saved(), "") << "nothing stays behind";
    }
  }
}

TEST_F(RecordingFileTest, AFileIsMadeWithTheUsersRightsOrNotAtAll) {
  const QFile other(home.Write("save/other", "x"));
  RecordingFile file(home.Path("save/a.wmv"));
  EXPECT_EQ(file.MakePart(), 0);
  EXPECT_EQ(QFile::permissions(file.Written()), other.permissions());
  QFile::remove(file.Written());
  EXPECT_EQ(file.Keep(), static_cast<int>(RunTimeError::PathMissing));
  RecordingFile nowhere(home.Path("none/a.wmv"));
  EXPECT_EQ(nowhere.MakePart(), static_cast<int>(RunTimeError::PathMissing));
}

}  // namespace
}  // namespace zentorin::test
