// SPDX-License-Identifier: MIT
#include "app/workspace.h"

#include "net/curl_http_engine.h"

namespace zentorin {
namespace {

CrawlContext CrawlContextOf(Workspace& workspace) {
  return {workspace.http,           workspace.state, workspace.board,
          workspace.world.messages, workspace.clock, workspace.settings.clock,
          workspace.urlList,        workspace.job,   workspace.files};
}

DownloadContext DownloadContextOf(Workspace& workspace) {
  const World& world = workspace.world;
  return {*workspace.engine,
          workspace.http,
          workspace.state,
          workspace.board,
          world.messages,
          world.capture,
          world.opener,
          workspace.log,
          workspace.drives,
          workspace.settings.download,
          workspace.settings.clock,
          workspace.job,
          workspace.files,
          workspace.clock};
}

}  // namespace

Workspace::Workspace(const World& outside, const QString& programFolder, const QString& connectTo)
    : world(outside),
      drives(programFolder),
      clock(world.clock, settings.clock),
      job(urlList),
      dateFiles(job, files, world.clock, clock),
      log(programFolder + QStringLiteral("/log.txt"), world.clock),
      engine(std::make_unique<CurlHttpEngine>(state, connectTo)),
      http(*engine, state),
      generator(CrawlContextOf(*this)),
      driver(DownloadContextOf(*this), urlList, generator, world.power) {}

Workspace::~Workspace() = default;

QString Workspace::SettingsPath() const {
  return drives.ProgramFolder() + QStringLiteral("/Conf.txt");
}

QString Workspace::PatternsPath() const {
  return drives.ProgramFolder() + QStringLiteral("/reglist.txt");
}

}  // namespace zentorin
