// SPDX-License-Identifier: MIT
#include "download/login1_power_control.h"

#include <QCoreApplication>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>

#include "base/message_bus.h"
#include "base/run_state.h"
#include "base/wait.h"
#include "download/login1_names.h"
#include "download/login1_sleep_hold.h"
#include "download/power_action.h"

namespace zentorin {
namespace {

bool IsError(const QDBusMessage& reply) {
  return reply.type() != QDBusMessage::ReplyMessage;
}

// Without the header that would let the service ask the user for authorisation.
QDBusMessage ManagerCall(QLatin1String method, const QVariantList& arguments = {}) {
  QDBusMessage call = QDBusMessage::createMethodCall(login1::Service(), login1::ManagerPath(),
                                                     login1::ManagerInterface(), QString(method));
  call.setArguments(arguments);
  return call;
}

const QString& NotAllowed() {
  static const QString text = QStringLiteral("許可されていません。");
  return text;
}

const QString& NeedsAuthorisation() {
  static const QString text = QStringLiteral("管理者の認証が必要です。");
  return text;
}

// Empty when the action may go on. An answer that is not known here is left to the call itself,
// "inhibited" too, as the call overrides inhibitors.
QString Objection(const QString& answer) {
  if (answer == QStringLiteral("na")) {
    return QStringLiteral("このコンピュータは対応していません。");
  }
  if (answer == QStringLiteral("no")) return NotAllowed();
  if (answer.startsWith(QStringLiteral("challenge"))) return NeedsAuthorisation();
  return {};
}

// A login1 that lacks the method, or the flag.
bool KnowsNoFlags(const QDBusMessage& reply) {
  const QDBusError::ErrorType type = QDBusError(reply).type();
  return type == QDBusError::UnknownMethod || type == QDBusError::InvalidArgs;
}

// Older ones know no session "auto" and say that there is none of this name.
bool IsNoSession(const QDBusMessage& reply) {
  return reply.errorName() == QStringLiteral("org.freedesktop.login1.NoSessionForPID") ||
         reply.errorName() == QStringLiteral("org.freedesktop.login1.NoSuchSession");
}

// A session's name as the service itself would give it.
QDBusMessage NameOfSession(const QDBusMessage& call, const QString& name) {
  return call.createReply(QVariant::fromValue(QDBusVariant(name)));
}

}  // namespace

// One action on its way to the service.
struct Login1PowerControl::Attempt {
  const PowerAction& action;
  const RunState& state;
  bool isOut = false;  // a call that acts has been sent, and its answer has not come
};

QCoro::Task<PowerOutcome> Login1PowerControl::Perform(QString action, const RunState& state) {
  PowerOutcome outcome;
  const PowerAction* const wanted = FindPowerAction(action);
  if (wanted == nullptr) co_return outcome;
  Attempt attempt{.action = *wanted, .state = state};
  QString fault;
  if (wanted->EndsSession()) {
    fault = co_await EndSession(attempt);
  } else {
    fault = co_await ActOnComputer(attempt);
  }
  outcome.done = fault.isEmpty();
  if (outcome.done) {
    outcome.text = QStringLiteral("「%1」を要求し、受け付けられました。").arg(action);
  } else if (!state.CancelRequested()) {
    outcome.text = QStringLiteral("「%1」を実行できません。").arg(action) + fault;
  } else {
    outcome.cancelled = true;
    if (attempt.isOut) {
      outcome.text =
          QStringLiteral("「%1」は要求済みのため、取り消せないことがあります。").arg(action);
    }
  }
  co_return outcome;
}

std::unique_ptr<SleepHold> Login1PowerControl::KeepAwake() {
  return std::make_unique<Login1SleepHold>(bus_);
}

QCoro::Task<QDBusMessage> Login1PowerControl::Ask(const Attempt& attempt, QDBusMessage call) {
  QDBusMessage reply;
  if (attempt.state.CancelRequested()) co_return reply;
  FirstEvent end;
  end.Add(attempt.state, &RunState::Cancelled);
  bus_.Ask(call, &end, [&reply, &end](const QDBusMessage& message) {
    reply = message;
    Q_EMIT end.Came();
  });
  co_await end.Wait();
  co_return reply;
}

QCoro::Task<QDBusMessage> Login1PowerControl::Act(Attempt& attempt, QDBusMessage call) {
  attempt.isOut = !attempt.state.CancelRequested();
  QDBusMessage reply = co_await Ask(attempt, call);
  if (reply.type() != QDBusMessage::InvalidMessage) attempt.isOut = false;
  co_return reply;
}

QCoro::Task<QString> Login1PowerControl::ActOnComputer(Attempt& attempt) {
  const QDBusMessage question = ManagerCall(attempt.action.question);
  const QDBusMessage answer = co_await Ask(attempt, question);
  QString fault = Fault(answer);
  if (fault.isEmpty()) fault = Objection(answer.arguments().value(0).toString());
  if (!fault.isEmpty()) co_return fault;
  const QDBusMessage reply = co_await ForcedCall(attempt);
  fault = Fault(reply);
  co_return fault;
}

// The call without flags has no word for "forced": a login1 that knows no flags overrides the
// inhibitors for whoever is allowed to.
QCoro::Task<QDBusMessage> Login1PowerControl::ForcedCall(Attempt& attempt) {
  const PowerAction& action = attempt.action;
  const QDBusMessage forced = ManagerCall(action.forced, {QVariant::fromValue(action.flags)});
  QDBusMessage reply = co_await Act(attempt, forced);
  if (!IsError(reply) || !KnowsNoFlags(reply)) co_return reply;
  constexpr bool kInteractive = false;
  const QDBusMessage plain = ManagerCall(action.plain, {kInteractive});
  reply = co_await Act(attempt, plain);
  co_return reply;
}

QCoro::Task<QString> Login1PowerControl::EndSession(Attempt& attempt) {
  const QDBusMessage session = co_await OwnSession(attempt);
  QString fault = Fault(session);
  if (!fault.isEmpty()) co_return fault;
  const QString name = session.arguments().value(0).value<QDBusVariant>().variant().toString();
  if (name.isEmpty()) co_return QStringLiteral("ログインセッションがありません。");
  const QDBusMessage call = ManagerCall(attempt.action.forced, {name});
  const QDBusMessage reply = co_await Act(attempt, call);
  fault = Fault(reply);
  co_return fault;
}

// A program that the user's service manager has started belongs to no session by its process
// number. Then the environment names the session; else the user's display session is meant.
QCoro::Task<QDBusMessage> Login1PowerControl::OwnSession(const Attempt& attempt) {
  const auto processId = static_cast<quint32>(QCoreApplication::applicationPid());
  const QDBusMessage byProcess = ManagerCall(QLatin1String("GetSessionByPID"), {processId});
  QDBusMessage found = co_await Ask(attempt, byProcess);
  if (IsNoSession(found)) {
    const QString name = qEnvironmentVariable("XDG_SESSION_ID");
    if (!name.isEmpty()) co_return NameOfSession(byProcess, name);
    const QDBusMessage byUser = ManagerCall(QLatin1String("GetSession"), {QStringLiteral("auto")});
    found = co_await Ask(attempt, byUser);
    if (IsNoSession(found)) co_return NameOfSession(byUser, {});
  }
  if (IsError(found)) co_return found;
  QDBusMessage property = QDBusMessage::createMethodCall(
      login1::Service(), found.arguments().value(0).value<QDBusObjectPath>().path(),
      QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
  property << QStringLiteral("org.freedesktop.login1.Session") << QStringLiteral("Id");
  QDBusMessage reply = co_await Ask(attempt, property);
  co_return reply;
}

// Why an error came instead of an answer; empty for a reply. What stands for a cancel only has to
// be something: the caller knows of the cancel.
QString Login1PowerControl::Fault(const QDBusMessage& reply) const {
  if (!IsError(reply)) return {};
  if (reply.type() == QDBusMessage::InvalidMessage) return QStringLiteral("キャンセルされました。");
  if (reply.errorName() == login1::AuthorisationError()) return NeedsAuthorisation();
  switch (QDBusError(reply).type()) {
    case QDBusError::Disconnected:
    case QDBusError::NoServer:
    case QDBusError::ServiceUnknown:
      return QStringLiteral("電源管理サービス（%1）がありません。").arg(login1::Service());
    case QDBusError::NoReply:
    case QDBusError::Timeout:
    case QDBusError::TimedOut:
      return QStringLiteral("電源管理サービス（%1）から %2 秒以内に応答がありません。")
          .arg(login1::Service())
          .arg(std::chrono::duration<double>(bus_.AnswerTime()).count());
    case QDBusError::AccessDenied:
      return NotAllowed();
    default:
      return QStringLiteral("%1（%2）").arg(reply.errorMessage(), reply.errorName());
  }
}

}  // namespace zentorin
