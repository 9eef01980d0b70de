// SPDX-License-Identifier: MIT
#include "app/workspace.h"

#include "net/curl_http_engine.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

std::unique_ptr<HttpEngine> MakeEngine(const QString& connectTo, Activity& activity) {
  auto engine = std::make_unique<CurlHttpEngine>(connectTo);
  engine->TellPauses([&activity](const QString& host, std::chrono::seconds left) {
    activity.SetWaiting(
        host.isEmpty() ? QString()
                       : u"%1 の求めで待っています（あと %2 秒）"_s.arg(host).arg(left.count()));
  });
  return engine;
}

}  // namespace

CrawlContext CrawlContextOf(Workspace& workspace) {
  return {.http = workspace.http,
          .activity = workspace.activity,
          .messages = workspace.world.messages,
          .clock = workspace.clock,
          .urlList = workspace.urlList,
          .job = workspace.job,
          .files = workspace.files,
          .choices = workspace.choices};
}

DownloadContext DownloadContextOf(Workspace& workspace) {
  const World& world = workspace.world;
  return {{.engine = *workspace.engine,
           .http = workspace.http,
           .activity = workspace.activity,
           .capture = world.capture,
           .drives = workspace.drives,
           .options = workspace.settings.download,
           .clock = workspace.clock,
           .choices = workspace.choices},
          world.messages,
          world.opener,
          workspace.log,
          workspace.job,
          workspace.files};
}

Workspace::Workspace(const World& outside, const QString& programFolder, const QString& connectTo)
    : world(outside),
      drives(programFolder),
      clock(world.clock, settings.clock),
      job(urlList),
      dateFiles(job, files, world.clock, clock),
      log(programFolder + u"/log.txt"_s, world.clock),
      engine(MakeEngine(connectTo, activity)),
      http(*engine, activity, choices),
      generator(CrawlContextOf(*this)),
      driver(DownloadContextOf(*this), urlList, generator, world.power),
      source({http, activity, world.messages, world.opener}) {}

Workspace::~Workspace() = default;

QString Workspace::SettingsPath() const {
  return drives.ProgramFolder() + u"/Conf.txt"_s;
}

QString Workspace::ChoicesPath() const {
  return drives.ProgramFolder() + u"/choices.ini"_s;
}

QString Workspace::PatternsPath() const {
  return drives.ProgramFolder() + u"/reglist.txt"_s;
}

}  // namespace zentorin
