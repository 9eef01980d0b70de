// SPDX-License-Identifier: MIT
#include "app/workspace.h"

#include "net/curl_http_engine.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

CrawlContext CrawlContextOf(Workspace& workspace) {
  return {.http = workspace.http,
          .state = workspace.state,
          .board = workspace.board,
          .messages = workspace.world.messages,
          .clock = workspace.clock,
          .clockOptions = workspace.settings.clock,
          .urlList = workspace.urlList,
          .job = workspace.job,
          .files = workspace.files};
}

DownloadContext DownloadContextOf(Workspace& workspace) {
  const World& world = workspace.world;
  return {.engine = *workspace.engine,
          .http = workspace.http,
          .state = workspace.state,
          .board = workspace.board,
          .messages = world.messages,
          .capture = world.capture,
          .opener = world.opener,
          .log = workspace.log,
          .drives = workspace.drives,
          .options = workspace.settings.download,
          .clockOptions = workspace.settings.clock,
          .job = workspace.job,
          .files = workspace.files,
          .clock = workspace.clock};
}

}  // namespace

Workspace::Workspace(const World& outside, const QString& programFolder, const QString& connectTo)
    : world(outside),
      drives(programFolder),
      clock(world.clock, settings.clock),
      job(urlList),
      dateFiles(job, files, world.clock, clock),
      log(programFolder + u"/log.txt"_s, world.clock),
      engine(std::make_unique<CurlHttpEngine>(state, connectTo)),
      http(*engine, state),
      generator(CrawlContextOf(*this)),
      driver(DownloadContextOf(*this), urlList, generator, world.power),
      source({http, state, board, world.messages, world.opener, driver}) {}

Workspace::~Workspace() = default;

QString Workspace::SettingsPath() const {
  return drives.ProgramFolder() + u"/Conf.txt"_s;
}

QString Workspace::PatternsPath() const {
  return drives.ProgramFolder() + u"/reglist.txt"_s;
}

}  // namespace zentorin
