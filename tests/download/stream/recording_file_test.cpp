// SPDX-License-Identifier: MIT
#include "download/stream/recording_file.h"

#include <QDir>
#include <QFile>

#include "base/run_time_error.h"
#include "tests/download/download_fixture.h"

namespace zentorin::test {
namespace {

class RecordingFileTest : public DownloadTest {
 protected:
  RecordingFileTest() { QDir(home.Path()).mkdir("save"); }

  // Records into "save/NAME" by one of the two ways; answers what stands there in the middle.
  QByteArray Record(int (RecordingFile::*begin)(), const QString& name, bool kept) {
    RecordingFile file(home.Path("save/" + name));
    EXPECT_EQ((file.*begin)(), 0);
    EXPECT_EQ(file.Bytes(), 0);
    const QByteArray meanwhile = home.Read("save/" + name);
    home.Write(file.Written().mid(home.Path().size() + 1), "new");
    EXPECT_EQ(file.Bytes(), 3);
    EXPECT_TRUE(!kept || file.Keep() == 0);
    return meanwhile;
  }
};

TEST_F(RecordingFileTest, OnlyARecordingThatIsKeptTakesThePlaceOfAnEarlierOne) {
  const QString longName = QString("録").repeated(83) + ".wmv";
  for (const QString& name : {QString("a.wmv"), longName}) {
    EXPECT_EQ(Record(&RecordingFile::MakePart, name, false), QByteArray());
    EXPECT_EQ(Saved(), "") << "nothing stays behind";
    for (const auto way : {&RecordingFile::MakePart, &RecordingFile::PutOldAside}) {
      home.Write("save/" + name, "an old one");
      const QByteArray meanwhile = way == &RecordingFile::MakePart ? "an old one" : "";
      EXPECT_EQ(Record(way, name, false), meanwhile);
      EXPECT_EQ(home.Read("save/" + name), "an old one");
      Record(way, name, true);
      EXPECT_EQ(home.Read("save/" + name), "new");
      EXPECT_EQ(Saved(), name);
    }
    QFile::remove(home.Path("save/" + name));
  }
}

TEST_F(RecordingFileTest, AFileIsMadeWithTheUsersRightsOrNotAtAll) {
  const QFile other(home.Write("save/other", "x"));
  RecordingFile file(home.Path("save/a.wmv"));
  EXPECT_EQ(file.MakePart(), 0);
  EXPECT_EQ(QFile::permissions(file.Written()), other.permissions());
  RecordingFile nowhere(home.Path("none/a.wmv"));
  EXPECT_EQ(nowhere.MakePart(), static_cast<int>(RunTimeError::PathMissing));
  QFile::remove(file.Written());
  EXPECT_EQ(file.Keep(), static_cast<int>(RunTimeError::PathMissing));
}

}  // namespace
}  // namespace zentorin::test
