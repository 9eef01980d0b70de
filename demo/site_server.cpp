// SPDX-License-Identifier: MIT
// Serves the sample site on loopback until it is ended:
//   site_server FOLDER
// Its first line of output is the connect-to map by which every host name leads to it.
#include <QCoreApplication>
#include <QLocale>
#include <cstdio>
#include <optional>

#include "demo/sample_site.h"
#include "tests/support/loopback_server.h"

using namespace Qt::Literals::StringLiterals;

int main(int argc, char** argv) {
  using zentorin::test::Answer;
  using zentorin::test::ReceivedRequest;

  const QCoreApplication application(argc, argv);
  const QDateTime today = QDateTime::currentDateTime();
  const zentorin::demo::SampleSite site(QString::fromLocal8Bit(argc > 1 ? argv[1] : ""), today);
  if (!site.Fault().isEmpty()) {
    std::fprintf(stderr, "%s\n", qUtf8Printable(site.Fault()));
    return 1;
  }

  zentorin::test::LoopbackServer server;
  server.SetFallback([&site](const ReceivedRequest& request) {
    const auto file = site.Find(request.host, request.target);
    if (!file) return Answer::Status(404);
    const QString date =
        QLocale::c().toString(file->lastModified.toUTC(), u"ddd, dd MMM yyyy HH:mm:ss 'GMT'"_s);
    return Answer::Text(file->body, file->contentType).With("Last-Modified", date.toLatin1());
  });
  std::printf("%s\n", qUtf8Printable(server.ConnectTo()));
  std::fflush(stdout);
  return QCoreApplication::exec();
}
