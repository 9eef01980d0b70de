// SPDX-License-Identifier: MIT
#include "terminal/terminal.h"

#include <QCoreApplication>
#include <array>
#include <thread>
#include <vector>

#include <QCoro/QCoroSignal>
#include <gtest/gtest.h>
#include <pty.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include "app/auto_run.h"
#include "app/command_line.h"
#include "app/run_summary.h"
#include "download/run_outcome.h"
#include "terminal/qt_messages.h"
#include "terminal/terminal_messages.h"
#include "terminal/terminal_progress.h"
#include "terminal/terminal_text.h"
#include "tests/support/fake_workspace.h"

namespace zentorin::test {
namespace {

// Both ends of a pipe or of a pseudo-terminal of 20 columns without output processing.
class Ends {
 public:
  explicit Ends(bool terminal) {
    winsize size = {.ws_row = 5, .ws_col = 20, .ws_xpixel = 0, .ws_ypixel = 0};
    termios raw = {};
    ::cfmakeraw(&raw);
    const bool made = terminal
                          ? ::openpty(ends_.data(), ends_.data() + 1, nullptr, &raw, &size) == 0
                          : ::pipe(ends_.data()) == 0;
    EXPECT_TRUE(made);
  }
  ~Ends() {
    for (const int end : ends_) ::close(end);
  }

  int Writer() const { return ends_[1]; }
  QString Take() const {
    // A pseudo-terminal hands over in pieces, and late: it is read up to a mark.
    EXPECT_EQ(::write(Writer(), "", 1), 1);
    QByteArray text;
    while (!text.endsWith('\0')) {
      std::array<char, 4096> bytes = {};
      const ssize_t count = ::read(ends_[0], bytes.data(), bytes.size());
      if (count <= 0) break;
      text.append(bytes.data(), count);
    }
    return QString::fromUtf8(text.chopped(1));
  }

 private:
  std::array<int, 2> ends_ = {-1, -1};
};

TEST(TerminalText, CountsWideCharactersTwiceAndMarksNotAtAll) {
  EXPECT_EQ(TerminalWidth("aｱ漢！\U0001F600か\u3099"), 1 + 1 + 2 + 2 + 2 + 2);
  EXPECT_EQ(CutToWidth("a漢字", 4), "a漢");
  EXPECT_EQ(CutToWidth("\U0001F600か\u3099漢", 4), "\U0001F600か\u3099");
  EXPECT_EQ(CutToWidth("漢字", 4), "漢字");
}

TEST(Terminal, DrawsOneLineOverAndKeepsOthersAboveIt) {
  const Ends ends(true);
  Terminal terminal(ends.Writer());
  terminal.Refresh("ダウンロード中 1/3 http://a\x1b[31m.test/");
  terminal.Line("x Error");
  terminal.EndRefresh();
  terminal.Refresh("漢字漢字漢字漢字漢字", " 9 バイト");
  const QString clear = "\r\x1b[K";
  const QString cut = "ダウンロード中 1/3 ";
  EXPECT_EQ(ends.Take(),
            clear + cut + clear + "x Error\n" + cut + clear + clear + "漢字漢字漢 9 バイト");
}

TEST(Terminal, WritesWholeLinesOnAPipeAndEscapesWhatCouldActOnAScreen) {
  const Ends ends(false);
  Terminal terminal(ends.Writer());
  terminal.Refresh("never seen");
  terminal.Line("名前\x1b]0;x\u202E");
  EXPECT_EQ(ends.Take(), "名前\\u{1b}]0;x\\u{202e}\n");
  terminal.Line(QString(10'000, u'x'));
  EXPECT_LT(ends.Take().size(), 4'100);
}

TEST(TerminalMessages, AnswerAQuestionByItsDefault) {
  const Ends ends(false);
  Terminal terminal(ends.Writer());
  TerminalMessages messages(terminal);
  const MessageBox asked{.title = QString(),
                         .text = "接続しましょうか？",
                         .buttons = MessageBox::Buttons::YesNo,
                         .defaultAnswer = MessageBox::Answer::No};
  EXPECT_EQ(QCoro::waitFor(messages.Ask(asked)), MessageBox::Answer::No);
  EXPECT_EQ(ends.Take(), "接続しましょうか？ → いいえ\n");
}

TEST(QtMessages, StandOnLinesOfTheirOwn) {
  const Ends ends(true);
  Terminal terminal(ends.Writer());
  const QtMessages messages(terminal);
  terminal.Refresh("12%");
  std::thread([] { qWarning("from elsewhere"); }).join();
  QCoreApplication::sendPostedEvents();
  qInfo("here");
  const QString clear = "\r\x1b[K";
  EXPECT_EQ(ends.Take(), clear + "12%" + clear + "from elsewhere\n12%" + clear + "here\n12%");
}

TEST(TerminalProgress, ShowsEveryStepOfTheCountdownAndTheFaultOfEveryJob) {
  const TempDir home;
  FakeWorkspace w(home);
  const Ends ends(true);
  Terminal terminal(ends.Writer());
  AutoRun run(w.workspace);
  const TerminalProgress progress(w.workspace, run, terminal);
  TargetUrlItem job;
  job.Set(TargetUrlItem::Opt, "1");
  job.Set(TargetUrlItem::Format, "http://h/a.wmv");
  job.Set(TargetUrlItem::Before, "0");
  for (int row = 0; row < 2; ++row) w.workspace.urlList.InsertBelow(row - 1, job);
  w.capture.result = {.code = RowCode::Fatal, .reason = "無効"};
  w.workspace.driver.SetCountdownStep(std::chrono::milliseconds(1));
  ASSERT_TRUE(run.Arm(ParseCommandLine("-a -q h")));
  QCoro::waitFor(qCoro(&run, &AutoRun::Finished));
  const QString drawn = ends.Take();
  EXPECT_EQ(drawn.count("無効\n"), 2) << drawn.toStdString();
  for (int tenths = 49; tenths >= 0; --tenths) {
    const QString step = QString::number(tenths / 10.0, 'f', 1);
    EXPECT_TRUE(drawn.contains("休止 します。  " + step)) << step.toStdString();
  }
}

TEST(RunSummary, CountsRowsByWhatBecameOfThem) {
  RunOutcome outcome;
  for (const RowCode code : std::vector<RowCode>{
           RowCode::Complete, RowCode::SkipExisting, RowCode::SkipNone, RowCode::Fatal,
           RowCode::OutOfDiskSpace, RunTimeError::InputOutput, RowCode::Cancelled}) {
    RowOutcome row;
    row.code = code;
    row.bytes = code == RowCode::Complete ? 1200 : 0;
    if (code == RowCode::SkipNone) row.reason.kind = MissKind::Gone;
    if (code == RowCode::Fatal) row.reason.kind = MissKind::NotRecorded;
    outcome.Add(row);
  }
  RunOutcome batch;
  for (int job = 0; job < 7; ++job) batch.rootsMissing += QString("サイト%1").arg(job);
  for (int page = 0; page < 1000; ++page) batch.missing.Add(MissKind::HttpStatus);
  batch.Add(outcome);
  EXPECT_EQ(SummaryOf(outcome),
            "異常終了: ジョブ 0、ファイル 完了 1・失敗 3・スキップ 2、1,200 バイト"
            "（リンク切れ 1・録画できない 1）");
  EXPECT_EQ(SummaryOf(batch),
            SummaryOf(outcome).replace("1・録", "1・HTTP エラー 1,000・録") +
                "\nルートURLが見つからないジョブ: 「サイト0」「サイト1」「サイト2」"
                "「サイト3」「サイト4」 ほか 2 件");
}

}  // namespace
}  // namespace zentorin::test
