// SPDX-License-Identifier: MIT
#include "base/message_bus.h"

#include <QDBusMessage>
#include <QEventLoop>
#include <QLocalServer>
#include <QLocalSocket>

#include <gtest/gtest.h>

#include "tests/support/private_bus.h"

namespace zentorin::test {
namespace {

using std::chrono::milliseconds;

const QString kAbsent = "org.freedesktop.DBus.Error.Disconnected";

QDBusMessage Question() {
  const QString service = "org.freedesktop.login1";
  return QDBusMessage::createMethodCall(service, "/", service, "CanSuspend");
}

// The event loop runs until the answer is there.
QDBusMessage AnswerOf(MessageBus& bus) {
  QDBusMessage answer;
  QEventLoop loop;
  bus.Ask(Question(), &loop, [&](const QDBusMessage& reply) {
    answer = reply;
    loop.quit();
  });
  loop.exec();
  return answer;
}

// Takes connections at a socket and says `words` to each first line, or nothing at all.
class OddBus : public QLocalServer {
 public:
  explicit OddBus(QByteArray words) : words_(std::move(words)) {
    EXPECT_TRUE(listen(dir_.Path("bus")));
    connect(this, &QLocalServer::newConnection, this, [this] {
      QLocalSocket* const socket = nextPendingConnection();
      connect(socket, &QLocalSocket::readyRead, socket, [this, socket] {
        if (!socket->readAll().contains("BEGIN")) socket->write(words_);
      });
    });
  }
  QString Address() const { return "unix:path=" + fullServerName(); }

 private:
  TempDir dir_;
  QByteArray words_;
};

TEST(MessageBus, ABusThatDoesNotGreetCountsAsMissingAndHoldsNothingUp) {
  PrivateBus services;
  MessageBus good(services.Address());
  for (const QByteArray& words : {QByteArray(), QByteArray("REJECTED EXTERNAL\r\n"),
                                  QByteArray("OK 0123\r\n"), QByteArray(10'000, 'x')}) {
    const OddBus odd(words);
    MessageBus bad(odd.Address(), milliseconds(200));
    bad.Ask(Question(), &bad, [](const QDBusMessage&) {});
    EXPECT_EQ(AnswerOf(good).arguments(), QVariantList({"yes"}));
    EXPECT_EQ(AnswerOf(bad).errorName(), kAbsent) << words.left(20).toStdString();
    EXPECT_EQ(BusGreeting(odd.Address()).WaitFor(milliseconds(50)), BusGreeting::State::Absent);
  }
  EXPECT_EQ(BusGreeting(services.Address()).WaitFor(std::chrono::seconds(30)),
            BusGreeting::State::Answered);
  // An address may name several places.
  const QString dead = "tcp:host=a.test,port=1;unix:path=/nonexistent/bus";
  MessageBus second(dead + u';' + services.Address());
  EXPECT_EQ(AnswerOf(second).type(), QDBusMessage::ReplyMessage);
  for (const QString& address : {QString(), dead}) {
    MessageBus none(address);
    EXPECT_EQ(AnswerOf(none).errorName(), kAbsent);
  }
}

TEST(MessageBus, WhatWasSentArrivesThoughTheBusObjectEndsAtOnce) {
  PrivateBus services;
  auto receiver = std::make_unique<QObject>();
  bool told = false;
  {
    MessageBus bus(services.Address());
    bus.Send(Question());
    bus.Ask(Question(), receiver.get(), [&](const QDBusMessage&) { told = true; });
  }
  services.WaitForCall("CanSuspend()");
  MessageBus bus(services.Address());
  bus.Ask(Question(), receiver.get(), [&](const QDBusMessage&) { told = true; });
  receiver.reset();
  EXPECT_EQ(AnswerOf(bus).type(), QDBusMessage::ReplyMessage);
  EXPECT_FALSE(told) << "nobody is there to be told";
  EXPECT_EQ(services.calls.size(), 2);
}

}  // namespace
}  // namespace zentorin::test
