// SPDX-License-Identifier: MIT
#include "power/login1_power_control.h"

#include <QCoreApplication>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>

#include "base/message_bus.h"
#include "base/wait.h"
#include "power/login1_sleep_hold.h"
#include "power/power_action.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

bool IsError(const QDBusMessage& reply) {
  return reply.type() != QDBusMessage::ReplyMessage;
}

// Without the header that would let the service ask the user for authorisation.
QDBusMessage ManagerCall(QLatin1StringView method, const QVariantList& arguments = {}) {
  QDBusMessage call = QDBusMessage::createMethodCall(login1::Service(), login1::ManagerPath(),
                                                     login1::ManagerInterface(), QString(method));
  call.setArguments(arguments);
  return call;
}

const QString& NotAllowed() {
  static const QString text = u"許可されていません。"_s;
  return text;
}

const QString& NeedsAuthorisation() {
  static const QString text = u"管理者の認証が必要です。"_s;
  return text;
}

// Empty when the action may go on. An answer that is not known here is left to the call itself,
// "inhibited" too, as the call overrides inhibitors.
QString Objection(const QString& answer) {
  if (answer == u"na"_s) {
    return u"このコンピュータは対応していません。"_s;
  }
  if (answer == u"no"_s) return NotAllowed();
  if (answer.startsWith(u"challenge"_s)) return NeedsAuthorisation();
  return {};
}

// A login1 that lacks the method, or the flag.
bool KnowsNoFlags(const QDBusMessage& reply) {
  const QDBusError::ErrorType type = QDBusError(reply).type();
  return type == QDBusError::UnknownMethod || type == QDBusError::InvalidArgs;
}

// Older ones know no session "auto" and say that there is none of this name.
bool IsNoSession(const QDBusMessage& reply) {
  return reply.errorName() == u"org.freedesktop.login1.NoSessionForPID"_s ||
         reply.errorName() == u"org.freedesktop.login1.NoSuchSession"_s;
}

// A session's name as the service itself would give it.
QDBusMessage NameOfSession(const QDBusMessage& call, const QString& name) {
  return call.createReply(QVariant::fromValue(QDBusVariant(name)));
}

}  // namespace

struct Login1PowerControl::Attempt {
  const PowerAction& action;
  CancelToken cancel;
  bool isOut = false;  // a call that acts has been sent, and its answer has not come
};

QCoro::Task<PowerOutcome> Login1PowerControl::Perform(QString action, CancelToken cancel) {
  PowerOutcome outcome;
  const PowerAction* const wanted = FindPowerAction(action);
  if (wanted == nullptr) co_return outcome;
  Attempt attempt{.action = *wanted, .cancel = cancel};
  QString fault;
  if (wanted->EndsSession()) {
    fault = co_await EndSession(attempt);
  } else {
    fault = co_await ActOnComputer(attempt);
  }
  outcome.done = fault.isEmpty();
  if (outcome.done) {
    outcome.text = u"「%1」を要求し、受け付けられました。"_s.arg(action);
  } else if (!cancel.Cancelled()) {
    outcome.text = u"「%1」を実行できません。"_s.arg(action) + fault;
  } else {
    outcome.cancelled = true;
    if (attempt.isOut) {
      outcome.text = u"「%1」は要求済みのため、取り消せないことがあります。"_s.arg(action);
    }
  }
  co_return outcome;
}

std::unique_ptr<SleepHold> Login1PowerControl::KeepAwake() {
  return std::make_unique<Login1SleepHold>(bus_);
}

QCoro::Task<QDBusMessage> Login1PowerControl::Ask(const Attempt& attempt, QDBusMessage call) {
  QDBusMessage reply;
  if (attempt.cancel.Cancelled()) co_return reply;
  FirstEvent end;
  end.Add(attempt.cancel);
  bus_.Ask(call, &end, [&reply, &end](const QDBusMessage& message) {
    reply = message;
    Q_EMIT end.Came();
  });
  co_await end.Wait();
  co_return reply;
}

QCoro::Task<QDBusMessage> Login1PowerControl::Act(Attempt& attempt, QDBusMessage call) {
  attempt.isOut = !attempt.cancel.Cancelled();
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
  if (name.isEmpty()) co_return u"ログインセッションがありません。"_s;
  const QDBusMessage call = ManagerCall(attempt.action.forced, {name});
  const QDBusMessage reply = co_await Act(attempt, call);
  fault = Fault(reply);
  co_return fault;
}

// A program that the user's service manager has started belongs to no session by its process
// number. Then the environment names the session; else the user's display session is meant.
QCoro::Task<QDBusMessage> Login1PowerControl::OwnSession(const Attempt& attempt) {
  const auto processId = static_cast<quint32>(QCoreApplication::applicationPid());
  const QDBusMessage byProcess = ManagerCall("GetSessionByPID"_L1, {processId});
  QDBusMessage found = co_await Ask(attempt, byProcess);
  if (IsNoSession(found)) {
    const QString name = qEnvironmentVariable("XDG_SESSION_ID");
    if (!name.isEmpty()) co_return NameOfSession(byProcess, name);
    const QDBusMessage byUser = ManagerCall("GetSession"_L1, {u"auto"_s});
    found = co_await Ask(attempt, byUser);
    if (IsNoSession(found)) co_return NameOfSession(byUser, {});
  }
  if (IsError(found)) co_return found;
  QDBusMessage property = QDBusMessage::createMethodCall(
      login1::Service(), found.arguments().value(0).value<QDBusObjectPath>().path(),
      u"org.freedesktop.DBus.Properties"_s, u"Get"_s);
  property << u"org.freedesktop.login1.Session"_s << u"Id"_s;
  QDBusMessage reply = co_await Ask(attempt, property);
  co_return reply;
}

// Why an error came instead of an answer; empty for a reply. What stands for a cancel only has to
// be something: the caller knows of the cancel.
QString Login1PowerControl::Fault(const QDBusMessage& reply) const {
  if (!IsError(reply)) return {};
  if (reply.type() == QDBusMessage::InvalidMessage) return u"キャンセルされました。"_s;
  if (reply.errorName() == login1::AuthorisationError()) return NeedsAuthorisation();
  switch (QDBusError(reply).type()) {
    case QDBusError::Disconnected:
    case QDBusError::NoServer:
    case QDBusError::ServiceUnknown:
      return u"電源管理サービス（%1）がありません。"_s.arg(login1::Service());
    case QDBusError::NoReply:
    case QDBusError::Timeout:
    case QDBusError::TimedOut:
      return u"電源管理サービス（%1）から %2 秒以内に応答がありません。"_s.arg(login1::Service())
          .arg(std::chrono::duration<double>(bus_.AnswerTime()).count());
    case QDBusError::AccessDenied:
      return NotAllowed();
    default:
      return u"%1（%2）"_s.arg(reply.errorMessage(), reply.errorName());
  }
}

}  // namespace zentorin
