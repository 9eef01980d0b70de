// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <memory>

#include "app/app_settings.h"
#include "app/kept_choices.h"
#include "app/source_command.h"
#include "base/activity.h"
#include "base/display_clock.h"
#include "base/drives.h"
#include "crawl/date_file_list.h"
#include "crawl/file_list.h"
#include "crawl/file_list_generator.h"
#include "download/run_driver.h"
#include "jobs/job_editor.h"
#include "jobs/log_file.h"
#include "jobs/pattern_lists.h"
#include "jobs/url_list.h"
#include "net/my_xml_http_request.h"

namespace zentorin {

class Clock;
class HttpEngine;
class MessageBoxes;
class Opener;
class PowerControl;
class StreamCapture;

// What touches the world outside the process, as main.cpp or a test chooses it.
struct World {
  Clock& clock;
  MessageBoxes& messages;
  Opener& opener;
  StreamCapture& capture;
  PowerControl& power;
};

// The whole working state of one window and the commands on it, with no window. Members are built
// in the order in which they stand and end in the reverse one.
class Workspace {
 public:
  // `programFolder` is absolute. `connectTo` is the engine's host map, see CurlHttpEngine.
  Workspace(const World& outside, const QString& programFolder, const QString& connectTo);
  ~Workspace();
  Workspace(const Workspace&) = delete;
  Workspace& operator=(const Workspace&) = delete;

  QString SettingsPath() const;  // Conf.txt
  QString ChoicesPath() const;   // choices.ini
  QString PatternsPath() const;  // reglist.txt

  World world;
  Drives drives;
  AppSettings settings;
  KeptChoices keptChoices;
  FetchChoices choices;  // in force: those kept, or this run's own
  Activity activity;
  DisplayClock clock;
  UrlList urlList;
  JobEditor job;
  FileList files;
  DateFileList dateFiles;
  PatternLists patterns;
  LogFile log;
  std::unique_ptr<HttpEngine> engine;
  MyXMLHttpRequest http;
  FileListGenerator generator;
  RunDriver driver;
  SourceCommand source;
};

CrawlContext CrawlContextOf(Workspace& workspace);
DownloadContext DownloadContextOf(Workspace& workspace);

}  // namespace zentorin
