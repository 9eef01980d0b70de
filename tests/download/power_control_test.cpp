// SPDX-License-Identifier: MIT
#include "download/power_control.h"

#include <QTimer>

#include "base/message_bus.h"
#include "download/dry_run_power_control.h"
#include "download/login1_power_control.h"
#include "tests/download/download_fixture.h"
#include "tests/support/private_bus.h"

namespace zentorin {
namespace {

const QString kSuspend = QStringLiteral("スタンバイ");
const QString kPowerOff = QStringLiteral("シャットダウン");
const QString kLogOff = QStringLiteral("ログオフ");
const QString kError = QStringLiteral("org.freedesktop.DBus.Error.");

class PowerControlTest : public test::DownloadTest {
 protected:
  PowerOutcome Perform(const QString& action) {
    services.calls.clear();
    return QCoro::waitFor(login1.Perform(action));
  }
  // The calls that an action makes, with the outcome's text where it was refused.
  QString CallsOf(const QString& action) {
    const PowerOutcome outcome = Perform(action);
    const QString calls = services.calls.join(u' ');
    return outcome.done || outcome.text.isEmpty() ? calls : calls + u'|' + outcome.text;
  }

  test::PrivateBus services;
  MessageBus bus{services.Address()};
  Login1PowerControl login1{bus};
};

TEST_F(PowerControlTest, EveryActionMakesExactlyItsCallsInOrder) {
  const QString session =
      QStringLiteral("GetSessionByPID(%1) Get(org.freedesktop.login1.Session,Id)")
          .arg(QCoreApplication::applicationPid());
  const QList<QPair<QString, QString>> cases = {
      {kSuspend, QStringLiteral("CanSuspend() SuspendWithFlags(16)")},
      {QStringLiteral("休止"), QStringLiteral("CanHibernate() HibernateWithFlags(16)")},
      {kLogOff, session + QStringLiteral(" TerminateSession(7)")},
      {QStringLiteral("再起動"), QStringLiteral("CanReboot() RebootWithFlags(16)")},
      {kPowerOff, QStringLiteral("CanPowerOff() PowerOffWithFlags(16)")},
      {QStringLiteral("閉じる"), QString()},
      {QStringLiteral("shutdown"), QString()},
  };
  for (const auto& each : cases) {
    EXPECT_EQ(CallsOf(each.first), each.second) << each.first.toStdString();
  }
  for (const QString& answer : {QStringLiteral("inhibited"), QStringLiteral("inhibitor-blocked")}) {
    services.answers[QStringLiteral("CanSuspend")] = answer;
    EXPECT_TRUE(Perform(kSuspend).done) << "inhibitors are overridden";
  }
  EXPECT_EQ(Perform(kSuspend).text, QStringLiteral("「スタンバイ」を要求し、受け付けられました。"));
}

TEST_F(PowerControlTest, AServiceThatKnowsNoFlagsIsCalledWithoutThem) {
  for (const char* error : {"UnknownMethod", "InvalidArgs"}) {
    services.errors[QStringLiteral("PowerOffWithFlags")] = {kError + QLatin1String(error)};
    EXPECT_EQ(CallsOf(kPowerOff),
              QStringLiteral("CanPowerOff() PowerOffWithFlags(16) PowerOff(false)"));
  }
  services.errors[QStringLiteral("PowerOffWithFlags")] = {kError + QStringLiteral("UnknownMethod")};
  services.errors[QStringLiteral("PowerOff")] = {kError + QStringLiteral("AccessDenied")};
  EXPECT_EQ(CallsOf(kPowerOff),
            QStringLiteral("CanPowerOff() PowerOffWithFlags(16) PowerOff(false)|"
                           "「シャットダウン」を実行できません。許可されていません。"));
}

TEST_F(PowerControlTest, ARefusalIsASentenceThatNamesTheAction) {
  const QList<QPair<const char*, QString>> answers = {
      {"na", QStringLiteral("このコンピュータは対応していません。")},
      {"no", QStringLiteral("許可されていません。")},
      {"challenge", QStringLiteral("管理者の認証が必要です。")},
      {"challenge-inhibitor-blocked", QStringLiteral("管理者の認証が必要です。")},
  };
  const QString cannot = QStringLiteral("「スタンバイ」を実行できません。");
  for (const auto& each : answers) {
    services.answers[QStringLiteral("CanSuspend")] = QString::fromLatin1(each.first);
    EXPECT_EQ(CallsOf(kSuspend), QStringLiteral("CanSuspend()|") + cannot + each.second);
  }
  services.answers.clear();
  const QString calls = QStringLiteral("CanSuspend() SuspendWithFlags(16)|") + cannot;
  const QList<QPair<const char*, QString>> errors = {
      {"AccessDenied", QStringLiteral("許可されていません。")},
      {"InteractiveAuthorizationRequired", QStringLiteral("管理者の認証が必要です。")},
      {"Failed", QStringLiteral("a reason（org.freedesktop.DBus.Error.Failed）")},
  };
  for (const auto& each : errors) {
    services.errors[QStringLiteral("SuspendWithFlags")] = {kError + QLatin1String(each.first)};
    EXPECT_EQ(CallsOf(kSuspend), calls + each.second);
  }
}

TEST_F(PowerControlTest, ALogOffOutsideASessionTakesTheOneThatTheEnvironmentNames) {
  const QString none = QStringLiteral("org.freedesktop.login1.NoSessionForPID");
  const QString asked =
      QStringLiteral("GetSessionByPID(%1)").arg(QCoreApplication::applicationPid());
  const QByteArray before = qgetenv("XDG_SESSION_ID");
  qputenv("XDG_SESSION_ID", "c3");
  services.errors[QStringLiteral("GetSessionByPID")] = {none, none};
  EXPECT_EQ(CallsOf(kLogOff), asked + QStringLiteral(" TerminateSession(c3)"));
  qunsetenv("XDG_SESSION_ID");
  EXPECT_EQ(
      CallsOf(kLogOff),
      asked + QStringLiteral("|「ログオフ」を実行できません。ログインセッションがありません。"));
  if (!before.isNull()) qputenv("XDG_SESSION_ID", before);
}

TEST_F(PowerControlTest, AMissingOrSilentServiceIsReportedWithinItsBound) {
  const QString missing = QStringLiteral(
      "「シャットダウン」を実行できません。電源管理サービス（org.freedesktop.login1）"
      "がありません。");
  for (const QString& address :
       {QString(), QStringLiteral("unix:path=") + home.Path(QStringLiteral("no-bus"))}) {
    MessageBus noBus(address);
    Login1PowerControl control(noBus);
    const auto hold = control.KeepAwake();
    EXPECT_EQ(QCoro::waitFor(control.Perform(kPowerOff)).text, missing);
  }
  MessageBus impatient(services.Address(), std::chrono::milliseconds(100));
  Login1PowerControl control(impatient);
  for (const char* method : {"PowerOffWithFlags", "CanPowerOff"}) {
    services.silent.insert(QLatin1String(method));
    EXPECT_EQ(QCoro::waitFor(control.Perform(kPowerOff)).text,
              QStringLiteral("「シャットダウン」を実行できません。電源管理サービス"
                             "（org.freedesktop.login1）から 0.1 秒以内に応答がありません。"));
  }
  EXPECT_EQ(services.calls.join(u' '),
            QStringLiteral("CanPowerOff() PowerOffWithFlags(16) CanPowerOff()"));
  services.Withdraw();
  EXPECT_EQ(CallsOf(kPowerOff), u'|' + missing);
}

TEST_F(PowerControlTest, SleepIsHeldOffUntilTheHoldEnds) {
  const QString lock = QStringLiteral("Inhibit(%1,Zentorin,一括ダウンロードの実行中,block)");
  const QString whole = lock.arg(QStringLiteral("sleep:idle"));
  const QString idle = lock.arg(QStringLiteral("idle"));
  const QString released = QStringLiteral("released");
  auto hold = login1.KeepAwake();
  services.WaitForCall(whole);
  // The answer to this question comes after the lock has been handed over.
  EXPECT_EQ(CallsOf(kPowerOff), QStringLiteral("CanPowerOff() PowerOffWithFlags(16)"));
  hold.reset();
  services.WaitForCall(released);

  services.calls.clear();
  services.errors[QStringLiteral("Inhibit")] = {kError + QStringLiteral("AccessDenied")};
  hold = login1.KeepAwake();
  services.WaitForCall(idle);
  hold.reset();  // perhaps before the answer is here: the lock does not outlive it
  services.WaitForCall(released);
  EXPECT_EQ(services.calls, QStringList({whole, idle, released}));
}

TEST_F(PowerControlTest, ADryRunSaysWhatItWouldCall) {
  DryRunPowerControl dry;
  EXPECT_EQ(QCoro::waitFor(dry.Perform(kPowerOff)).text,
            QStringLiteral("「シャットダウン」は試行のため実行しません（呼び出し: "
                           "PowerOffWithFlags(16)）。"));
  EXPECT_TRUE(QCoro::waitFor(dry.Perform(QStringLiteral("閉じる"))).text.isEmpty());
  EXPECT_EQ(dry.KeepAwake(), nullptr);
}

TEST_F(PowerControlTest, ABatchHoldsSleepOffAndActsAfterItsCountdown) {
  CrawlContext crawl{.http = http,
                     .state = state,
                     .board = board,
                     .messages = messages,
                     .clock = shownClock,
                     .clockOptions = clockOptions,
                     .urlList = urlList,
                     .job = job,
                     .files = files};
  FileListGenerator generator{crawl};
  RunDriver driver{context, urlList, generator, login1};
  server.Route(QStringLiteral("/dir/index.html"), test::Answer::Text("nothing"));
  Perform(kSuspend);  // the bus is open now: the hold is asked for at once
  services.calls.clear();
  QStringList before;
  QObject::connect(&driver, &RunDriver::BatchEnded, [&] { before = services.calls; });
  driver.SetCountdownStep(std::chrono::milliseconds(2));
  driver.SetAfterBatchAction(kSuspend);
  QCoro::waitFor(driver.DownloadCommand(true));
  EXPECT_EQ(before.size(), 1) << before.join(u' ').toStdString();
  EXPECT_EQ(services.calls.mid(1),
            QStringList({QStringLiteral("released"), QStringLiteral("CanSuspend()"),
                         QStringLiteral("SuspendWithFlags(16)")}));
  EXPECT_EQ(board.Status(), QStringLiteral("「スタンバイ」を要求し、受け付けられました。"));

  services.calls.clear();
  driver.SetAfterBatchAction(kSuspend);
  QTimer watch;
  QObject::connect(&watch, &QTimer::timeout, [&] {
    if (board.File() == QStringLiteral("0.1")) driver.CancelCommand();
  });
  watch.start(0);
  QCoro::waitFor(driver.DownloadCommand(true));
  EXPECT_TRUE(driver.WasCancelled());
  EXPECT_FALSE(services.calls.contains(QStringLiteral("CanSuspend()")));
}

}  // namespace
}  // namespace zentorin
