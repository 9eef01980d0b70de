// SPDX-License-Identifier: MIT
#include "power/power_control.h"

#include <unistd.h>

#include "base/message_bus.h"
#include "power/dry_run_power_control.h"
#include "power/login1_power_control.h"
#include "tests/download/download_fixture.h"
#include "tests/support/private_bus.h"

namespace zentorin {
namespace {

const QString kSuspend = "スタンバイ";
const QString kPowerOff = "シャットダウン";
const QString kLogOff = "ログオフ";
const QString kError = "org.freedesktop.DBus.Error.";
const QString kAsked = QString("GetSessionByPID(%1)").arg(::getpid());

class PowerControlTest : public test::DownloadTest {
 protected:
  PowerOutcome Perform(const QString& action) {
    services.calls.clear();
    return QCoro::waitFor(login1.Perform(action, state));
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
  const QString session = kAsked + " Get(org.freedesktop.login1.Session,Id)";
  const std::pair<QString, QString> cases[] = {
      {kSuspend, "CanSuspend() SuspendWithFlags(16)"},
      {"休止", "CanHibernate() HibernateWithFlags(16)"},
      {kLogOff, session + " TerminateSession(7)"},
      {"再起動", "CanReboot() RebootWithFlags(16)"},
      {kPowerOff, "CanPowerOff() PowerOffWithFlags(16)"},
      {"閉じる", ""},
      {"shutdown", ""},
  };
  for (const auto& [action, calls] : cases) {
    EXPECT_EQ(CallsOf(action), calls) << action.toStdString();
  }
  for (const char* answer : {"inhibited", "inhibitor-blocked"}) {
    services.answers["CanSuspend"] = answer;
    EXPECT_TRUE(Perform(kSuspend).done) << "inhibitors are overridden";
  }
  EXPECT_EQ(Perform(kSuspend).text, "「スタンバイ」を要求し、受け付けられました。");
}

TEST_F(PowerControlTest, AServiceThatKnowsNoFlagsIsCalledWithoutThem) {
  for (const char* error : {"UnknownMethod", "InvalidArgs"}) {
    services.errors["PowerOffWithFlags"] = {kError + error};
    EXPECT_EQ(CallsOf(kPowerOff), "CanPowerOff() PowerOffWithFlags(16) PowerOff(false)");
  }
  services.errors["PowerOffWithFlags"] = {kError + "UnknownMethod"};
  services.errors["PowerOff"] = {kError + "AccessDenied"};
  EXPECT_EQ(CallsOf(kPowerOff),
            "CanPowerOff() PowerOffWithFlags(16) PowerOff(false)|"
            "「シャットダウン」を実行できません。許可されていません。");
}

TEST_F(PowerControlTest, ARefusalIsASentenceThatNamesTheAction) {
  const char* const answers[][2] = {
      {"na", "このコンピュータは対応していません。"},
      {"no", "許可されていません。"},
      {"challenge", "管理者の認証が必要です。"},
      {"challenge-inhibitor-blocked", "管理者の認証が必要です。"},
  };
  const QString cannot = "「スタンバイ」を実行できません。";
  for (const auto& [answer, reason] : answers) {
    services.answers["CanSuspend"] = answer;
    EXPECT_EQ(CallsOf(kSuspend), "CanSuspend()|" + cannot + reason);
  }
  services.answers.clear();
  const QString calls = "CanSuspend() SuspendWithFlags(16)|" + cannot;
  const char* const errors[][2] = {
      {"AccessDenied", "許可されていません。"},
      {"InteractiveAuthorizationRequired", "管理者の認証が必要です。"},
      {"Failed", "a reason（org.freedesktop.DBus.Error.Failed）"},
  };
  for (const auto& [error, reason] : errors) {
    services.errors["SuspendWithFlags"] = {kError + error};
    EXPECT_EQ(CallsOf(kSuspend), calls + reason);
  }
}

TEST_F(PowerControlTest, ALogOffOutsideASessionTakesThatOfTheEnvironmentOrOfTheDisplay) {
  const QString none = "org.freedesktop.login1.NoSessionForPID";
  const QByteArray before = qgetenv("XDG_SESSION_ID");
  qputenv("XDG_SESSION_ID", "c3");
  services.errors["GetSessionByPID"] = {none, none, none};
  EXPECT_EQ(CallsOf(kLogOff), kAsked + " TerminateSession(c3)");
  qunsetenv("XDG_SESSION_ID");
  const QString auto_ = kAsked + " GetSession(auto)";
  EXPECT_EQ(CallsOf(kLogOff),
            auto_ + " Get(org.freedesktop.login1.Session,Id) TerminateSession(7)");
  services.errors["GetSession"] = {"org.freedesktop.login1.NoSuchSession"};
  EXPECT_EQ(CallsOf(kLogOff),
            auto_ + "|「ログオフ」を実行できません。ログインセッションがありません。");
  if (!before.isNull()) qputenv("XDG_SESSION_ID", before);
}

TEST_F(PowerControlTest, ACancelEndsTheWaitForAnAnswerAndMakesNoFurtherCall) {
  services.errors["PowerOffWithFlags"] = {kError + "UnknownMethod"};
  const QString out = "「%1」は要求済みのため、取り消せないことがあります。";
  const struct {
    QString action;
    QString method;  // stays without an answer
    QString text;
  } cases[] = {
      {kSuspend, "CanSuspend", {}},
      {kLogOff, "GetSessionByPID", {}},
      {kLogOff, "Get", {}},
      {kSuspend, "SuspendWithFlags", out.arg(kSuspend)},
      {kPowerOff, "PowerOff", out.arg(kPowerOff)},
      {kLogOff, "TerminateSession", out.arg(kLogOff)},
  };
  MessageBus patient(services.Address(), std::chrono::hours(1));
  Login1PowerControl control(patient);
  RunDriver driver{context, urlList, generator, control};
  driver.SetCountdownStep(std::chrono::milliseconds(0));
  QObject::connect(&services, &test::PrivateBus::Called, &driver, [&] {
    if (services.silent.contains(services.calls.last().section(u'(', 0, 0))) driver.CancelCommand();
  });
  for (const auto& [action, method, text] : cases) {
    services.silent = {method};
    state.ClearCancel();
    board.SetStandby({.visible = true, .checked = true, .caption = action, .toolTip = {}});
    driver.SetAfterBatchAction(action);
    QCoro::waitFor(driver.PowerActionCountdown());
    EXPECT_TRUE(services.calls.last().startsWith(method + u'(')) << method.toStdString();
    EXPECT_EQ(board.Status(), text);
    EXPECT_TRUE(driver.WasCancelled());
  }
}

TEST_F(PowerControlTest, AMissingOrSilentServiceIsReportedWithinItsBound) {
  const QString missing =
      "「シャットダウン」を実行できません。電源管理サービス（org.freedesktop.login1）"
      "がありません。";
  for (const QString& address : {QString(), "unix:path=" + home.Path("no-bus")}) {
    MessageBus noBus(address);
    Login1PowerControl control(noBus);
    const auto hold = control.KeepAwake();
    EXPECT_EQ(QCoro::waitFor(control.Perform(kPowerOff, state)).text, missing);
  }
  MessageBus impatient(services.Address(), std::chrono::milliseconds(100));
  Login1PowerControl control(impatient);
  for (const char* method : {"PowerOffWithFlags", "CanPowerOff"}) {
    services.silent.insert(method);
    EXPECT_EQ(QCoro::waitFor(control.Perform(kPowerOff, state)).text,
              "「シャットダウン」を実行できません。電源管理サービス"
              "（org.freedesktop.login1）から 0.1 秒以内に応答がありません。");
  }
  EXPECT_EQ(services.calls.join(u' '), "CanPowerOff() PowerOffWithFlags(16) CanPowerOff()");
  services.Withdraw();
  EXPECT_EQ(CallsOf(kPowerOff), u'|' + missing);
}

TEST_F(PowerControlTest, SleepIsHeldOffUntilTheHoldEnds) {
  const QString lock = "Inhibit(%1,Zentorin,一括ダウンロードの実行中,block)";
  const QString whole = lock.arg("sleep:idle");
  const QString idle = lock.arg("idle");
  auto hold = login1.KeepAwake();
  services.WaitForCall(whole);
  // The answer to this question comes after the lock has been handed over.
  EXPECT_EQ(CallsOf(kPowerOff), "CanPowerOff() PowerOffWithFlags(16)");
  hold.reset();
  services.WaitForCall("released");

  services.calls.clear();
  services.errors["Inhibit"] = {kError + "AccessDenied"};
  hold = login1.KeepAwake();
  services.WaitForCall(idle);
  hold.reset();  // perhaps before the answer is here: the lock does not outlive it
  services.WaitForCall("released");
  EXPECT_EQ(services.calls, QStringList({whole, idle, "released"}));
}

TEST_F(PowerControlTest, ADryRunSaysWhatItWouldCall) {
  DryRunPowerControl dry;
  EXPECT_EQ(QCoro::waitFor(dry.Perform(kPowerOff, state)).text,
            "「シャットダウン」は試行のため実行しません（呼び出し: "
            "PowerOffWithFlags(16)）。");
  EXPECT_TRUE(QCoro::waitFor(dry.Perform("閉じる", state)).text.isEmpty());
  EXPECT_EQ(dry.KeepAwake(), nullptr);
}

TEST_F(PowerControlTest, ABatchHoldsSleepOffAndActsAfterItsCountdown) {
  RunDriver driver{context, urlList, generator, login1};
  server.Route("/dir/index.html", test::Answer::Text("nothing"));
  Perform(kSuspend);  // the bus is open now: the hold is asked for at once
  services.calls.clear();
  QStringList before;
  QObject::connect(&driver, &RunDriver::BatchEnded, [&] { before = services.calls; });
  driver.SetCountdownStep(std::chrono::milliseconds(2));
  driver.SetAfterBatchAction(kSuspend);
  QCoro::waitFor(driver.DownloadCommand(true));
  EXPECT_EQ(before.size(), 1) << before.join(u' ').toStdString();
  EXPECT_EQ(services.calls.mid(1).join(' '), "released CanSuspend() SuspendWithFlags(16)");
  EXPECT_EQ(board.Status(), "「スタンバイ」を要求し、受け付けられました。");
}

}  // namespace
}  // namespace zentorin
