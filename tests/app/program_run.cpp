// SPDX-License-Identifier: MIT
#include "tests/app/program_run.h"

#include <QEventLoop>
#include <QRegularExpression>
#include <QTimer>
#include <csignal>

#include <QCoro/QCoroProcess>
#include <QCoro/QCoroSignal>
#include <gtest/gtest.h>

#include "base/ansi_text.h"

namespace zentorin::test {
namespace {

constexpr std::chrono::seconds kPatience(30);

}  // namespace

QByteArray ListFile(const QList<JobFields>& jobs) {
  QByteArray bytes;
  for (int i = 0; i < jobs.size(); ++i) {
    for (const auto& [key, value] : jobs[i]) {
      bytes += QByteArray::number(i + 1) + ' ' + key + " = " + value + "\r\n";
    }
    bytes += "\r\n";
  }
  return bytes;
}

ProgramRun::ProgramRun(const TempDir& home, const QString& connectTo) {
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  environment.remove("DISPLAY");
  environment.remove("WAYLAND_DISPLAY");
  environment.remove("ZENTORIN_POWER");
  const QString noBus = "unix:path=" + home.Path("no-bus");
  environment.insert("DBUS_SYSTEM_BUS_ADDRESS", noBus);
  environment.insert("DBUS_SESSION_BUS_ADDRESS", noBus);
  environment.insert("ZENTORIN_HOME", home.Path());
  environment.insert("ZENTORIN_CONNECT_TO", connectTo);
  process_.setProcessEnvironment(environment);
  process_.setProgram(QStringLiteral(ZENTORIN_PROGRAM));
}

ProgramRun::~ProgramRun() {
  if (process_.state() == QProcess::NotRunning) return;
  process_.kill();
  process_.waitForFinished();
}

void ProgramRun::SetVariable(const char* name, const QString& value) {
  QProcessEnvironment environment = process_.processEnvironment();
  environment.insert(QString::fromLatin1(name), value);
  process_.setProcessEnvironment(environment);
}

void ProgramRun::Start(const QStringList& arguments) {
  process_.setArguments(arguments);
  process_.start();
}

int ProgramRun::Run(const QStringList& arguments) {
  Start(arguments);
  return WaitForEnd();
}

int ProgramRun::WaitForEnd() {
  if (process_.state() != QProcess::NotRunning) {
    QCoro::waitFor(qCoro(&process_, &QProcess::finished, kPatience));
  }
  const bool ended = process_.state() == QProcess::NotRunning;
  EXPECT_TRUE(ended) << "still running: " << Errors().toStdString();
  return ended && process_.exitStatus() == QProcess::NormalExit ? process_.exitCode() : -1;
}

bool ProgramRun::WaitForError(const QString& text) {
  while (!Errors().contains(text)) {
    if (process_.state() == QProcess::NotRunning) return false;
    // A loop of its own: the signal is a private one, which no coroutine may await.
    QEventLoop loop;
    QObject::connect(&process_, &QProcess::readyReadStandardError, &loop, &QEventLoop::quit);
    QObject::connect(&process_, &QProcess::finished, &loop, &QEventLoop::quit);
    QTimer::singleShot(kPatience, &loop, [&loop] { loop.exit(1); });
    if (loop.exec() != 0) return false;
  }
  return true;
}

void ProgramRun::Send(int signal) const {
  ::kill(static_cast<pid_t>(process_.processId()), signal);
}

QString ProgramRun::Errors() {
  errors_ += process_.readAllStandardError();
  return QString::fromUtf8(errors_);
}

QString ProgramRun::Output() {
  return QString::fromUtf8(process_.readAllStandardOutput());
}

QString LogWithoutDates(const TempDir& home) {
  static const QRegularExpression kDates("^-- \\d{4}/\\d\\d/\\d\\d \\d\\d:\\d\\d:\\d\\d ----\r$",
                                         QRegularExpression::MultilineOption);
  return DecodeAnsi(home.Read("log.txt")).replace(kDates, "DATE\r");
}

}  // namespace zentorin::test
