// SPDX-License-Identifier: MIT
#include "power/power_control.h"

#include <unistd.h>

#include "base/message_bus.h"
#include "power/dry_run_power_control.h"
#include "power/login1_power_control.h"
#include "tests/support/private_bus.h"
#include "tests/support/workspace_test.h"

namespace zentorin {
namespace {

const QString kSuspend = "スタンバイ";
const QString kPowerOff = "シャットダウン";
const QString kLogOff = "ログオフ";
const QString kError = "org.freedesktop.DBus.Error.";
const QString kAsked = QString("GetSessionByPID(%1)").arg(::getpid());

class PowerControlTest : public test::WorkspaceTest {
 protected:
  PowerOutcome Perform(const QString& action) {
    services.calls.clear();
    return QCoro::waitFor(login1.Perform(action, {}));
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

TEST_F(PowerControlTest, EveryActionMakesExactlyItsCallsInOrderAndADryRunTellsTheLastOfThem) {
  const QString session = kAsked + " Get(org.freedesktop.login1.Session,Id)";
  DryRunPowerControl dry;
  EXPECT_EQ(dry.KeepAwake(), nullptr);
  const std::pair<QString, QString> cases[] = {
      {kSuspend, "CanSuspend() SuspendWithFlags(16)"},
      {"休止", "CanHibernate() HibernateWithFlags(16)"},
      {"再起動", "CanReboot() RebootWithFlags(16)"},
      {kPowerOff, "CanPowerOff() PowerOffWithFlags(16)"},
      {"閉じる", ""},
      {"shutdown", ""},
  };
  for (const auto& [action, calls] : cases) {
    EXPECT_EQ(CallsOf(action), calls) << action.toStdString();
    const QString said = QCoro::waitFor(dry.Perform(action, {})).text;
    EXPECT_TRUE(said.contains(calls.section(u' ', 1))) << said.toStdString();
    EXPECT_EQ(said.isEmpty(), calls.isEmpty());
  }
  EXPECT_EQ(CallsOf(kLogOff), session + " TerminateSession(7)");
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
  services.errors = {{"PowerOffWithFlags", {kError + "UnknownMethod"}},
                     {"PowerOff", {kError + "AccessDenied"}}};
  EXPECT_TRUE(CallsOf(kPowerOff).endsWith(
      "PowerOff(false)|「シャットダウン」を実行できません。許可されていません。"));
}

TEST_F(PowerControlTest, ARefusalIsASentenceThatNamesTheAction) {
  const char* const cases[][3] = {
      // an answer to the question, or else an error of the call
      {"na", nullptr, "このコンピュータは対応していません。"},
      {"no", nullptr, "許可されていません。"},
      {"challenge-inhibitor-blocked", nullptr, "管理者の認証が必要です。"},
      {"yes", "AccessDenied", "許可されていません。"},
      {"yes", "InteractiveAuthorizationRequired", "管理者の認証が必要です。"},
      {"yes", "Failed", "a reason（org.freedesktop.DBus.Error.Failed）"},
  };
  for (const auto& [answer, error, reason] : cases) {
    services.answers["CanSuspend"] = answer;
    if (error != nullptr) services.errors["SuspendWithFlags"] = {kError + error};
    const QString calls = error == nullptr ? "CanSuspend()" : "CanSuspend() SuspendWithFlags(16)";
    EXPECT_EQ(CallsOf(kSuspend), calls + "|「スタンバイ」を実行できません。" + reason);
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
  // An action, the method that stays without an answer, and whether that one acts.
  const std::tuple<QString, QString, bool> cases[] = {
      {kSuspend, "CanSuspend", false}, {kLogOff, "GetSessionByPID", false},
      {kLogOff, "Get", false},         {kSuspend, "SuspendWithFlags", true},
      {kPowerOff, "PowerOff", true},   {kLogOff, "TerminateSession", true},
  };
  MessageBus patient(services.Address(), std::chrono::hours(1));
  Login1PowerControl control(patient);
  RunDriver asking{DownloadContextOf(workspace), urlList, workspace.generator, control};
  asking.SetCountdownStep(std::chrono::milliseconds(0));
  QObject::connect(&services, &test::PrivateBus::Called, &asking, [&] {
    if (services.silent.contains(services.calls.last().section(u'(', 0, 0))) asking.CancelCommand();
  });
  for (const auto& [action, method, acts] : cases) {
    services.silent = {method};
    asking.SetAfterBatchAction(action);
    EXPECT_TRUE(QCoro::waitFor(asking.BatchCommand()).cancelled);
    services.calls.removeAll("released");
    EXPECT_TRUE(services.calls.last().startsWith(method + u'(')) << method.toStdString();
    const QString warning = u'「' + action + "」は要求済みのため、取り消せないことがあります。";
    EXPECT_EQ(activity.Now().message.text, acts ? warning : QString());
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
    EXPECT_EQ(QCoro::waitFor(control.Perform(kPowerOff, {})).text, missing);
  }
  MessageBus impatient(services.Address(), std::chrono::seconds(1));
  Login1PowerControl control(impatient);
  for (const char* method : {"PowerOffWithFlags", "CanPowerOff"}) {
    services.silent.insert(method);
    EXPECT_EQ(QCoro::waitFor(control.Perform(kPowerOff, {})).text,
              "「シャットダウン」を実行できません。電源管理サービス"
              "（org.freedesktop.login1）から 1 秒以内に応答がありません。");
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

}  // namespace
}  // namespace zentorin
