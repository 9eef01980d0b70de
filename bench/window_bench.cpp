// SPDX-License-Identifier: MIT
// The main window over long lists, drawn off screen. CPU times.
#include <QApplication>
#include <QScrollBar>

#include <benchmark/benchmark.h>

#include "app/auto_run.h"
#include "app/file_list_commands.h"
#include "app/list_commands.h"
#include "tests/support/fake_workspace.h"
#include "ui/frm_main.h"
#include "ui/widgets/line_list_view.h"

namespace zentorin::test {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kRows = 100'000;
constexpr int kRowsAnAnnouncement = 1'000;
constexpr int kJobs = 1'000;

struct OpenWindow {
  OpenWindow() {
    window.resize(1000, 760);
    window.show();
    window.FinishStartUp(false);
    QCoreApplication::processEvents();
  }
  LineListView& FileView() const { return *window.findChild<LineListView*>(u"lstUrl_All"_s); }
  // As a crawl adds them, with the window drawing in between.
  void AppendRows() {
    for (int i = 0; i < kRows; ++i) {
      FileListRow row;
      row.Set(FileListRow::Date, u"2024/05/01 23:30:05"_s);
      row.Set(FileListRow::Size, u" 1,234"_s);
      row.Set(FileListRow::Link, u"files/%1.mp3"_s.arg((i * 7919) % kRows));
      row.Set(FileListRow::BaseDir, u"http://site.test/files"_s);
      row.Set(FileListRow::Parent, u"http://site.test/files/index.html"_s);
      row.Set(FileListRow::Address, u"http://site.test/files/%1.mp3"_s.arg(i));
      workspace.files.Append(row);
      if (i % kRowsAnAnnouncement != 0) continue;
      workspace.files.Flush();
      QCoreApplication::processEvents();
    }
    workspace.files.Flush();
    QCoreApplication::processEvents();
  }

  TempDir home;
  FakeWorkspace fake{home};
  Workspace& workspace = fake.workspace;
  AutoRun autoRun{workspace};
  ListCommands lists{workspace, fake.dialogs};
  frmMain window{
      {.workspace = workspace, .autoRun = autoRun, .lists = lists, .dialogs = fake.dialogs}};
};

void AppendRows(benchmark::State& state) {
  OpenWindow open;
  for (auto _ : state) {
    open.AppendRows();
    state.PauseTiming();
    open.workspace.files.ClearFileList();
    QCoreApplication::processEvents();
    state.ResumeTiming();
  }
}
BENCHMARK(AppendRows)->Unit(benchmark::kMillisecond);

void SortRows(benchmark::State& state) {
  OpenWindow open;
  open.AppendRows();
  FileListCommands commands(open.workspace);
  for (auto _ : state) {
    commands.Sort(FileListRow::Link);
    QCoreApplication::processEvents();
  }
}
BENCHMARK(SortRows)->Unit(benchmark::kMillisecond);

void ScrollAPage(benchmark::State& state) {
  OpenWindow open;
  open.AppendRows();
  QScrollBar& bar = *open.FileView().verticalScrollBar();
  for (auto _ : state) {
    if (bar.value() == bar.maximum()) bar.setValue(0);
    bar.triggerAction(QScrollBar::SliderPageStepAdd);
    QCoreApplication::processEvents();
  }
}
BENCHMARK(ScrollAPage)->Unit(benchmark::kMillisecond);

// A download marks its rows one by one.
void MarkARow(benchmark::State& state) {
  OpenWindow open;
  open.AppendRows();
  FileList& files = open.workspace.files;
  FileListRow row = files.Row(0);
  row.Set(FileListRow::Mark, u"o"_s);
  int next = 0;
  for (auto _ : state) {
    files.SetCurrentRow(next);
    files.SetRow(next, row);
    files.SetSelected(next, false);
    next = (next + 1) % kRows;
    QCoreApplication::processEvents();
  }
}
BENCHMARK(MarkARow)->Unit(benchmark::kMillisecond);

void OpenOnALongList(benchmark::State& state) {
  TempDir folder;
  QByteArray text;
  for (int job = 1; job <= kJobs; ++job) {
    const QByteArray number = QByteArray::number(job);
    text += number + " description = job\r\n" + number + " root = http://site.test/\r\n";
  }
  const QString path = folder.Write(u"long.dat"_s, text);
  for (auto _ : state) {
    OpenWindow open;
    open.window.OpenListFile(path);
    QCoreApplication::processEvents();
  }
}
BENCHMARK(OpenOnALongList)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace zentorin::test

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
