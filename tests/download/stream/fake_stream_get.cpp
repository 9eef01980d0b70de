// SPDX-License-Identifier: MIT
// Plays StreamGet on a display: shows its windows, waits for keys, reads and writes its settings in
// the folder where it is started.
//   fake_stream_get record     asks, and records once it was told yes
//   fake_stream_get stuck      does nothing, and asks when it has done so for a while
//   fake_stream_get exists     says that the file is there already
//   fake_stream_get hidden     runs without a window
//   fake_stream_get stranger TITLE   another program with a question of that title
#include <QFile>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QTimer>
#include <QWindow>
#include <functional>

namespace {

// A window that goes when the letter Y comes in it.
class Window : public QWindow {
 public:
  Window(const QString& title, QWindow* owner, std::function<void()> answered)
      : answered_(std::move(answered)) {
    setTitle(title);
    setTransientParent(owner);
    resize(200, 100);
    show();
  }

 protected:
  void keyPressEvent(QKeyEvent* event) override {
    if (event->key() != Qt::Key_Y) return;
    hide();
    answered_();
  }

 private:
  std::function<void()> answered_;
};

void Write(const QString& path, const char* bytes, QFile::OpenMode mode = QFile::WriteOnly) {
  QFile file(path);
  if (file.open(mode)) file.write(bytes);
}

// As its settings ask for it; those of this test are in ASCII.
void Record() {
  QFile settings("StreamGet.ini");
  if (!settings.open(QFile::ReadOnly)) return;
  const QStringList lines = QString(settings.readAll()).split("\r\n");
  const QString folder = lines.filter("SavePath=Z:").value(0).mid(11).replace('\\', '/');
  Write(folder + '/' + lines.filter("ASFURL01=").value(0).section('/', -1), "recorded");
  Write("StreamGet.ini", "ASFPLAY=45%\r\n", QFile::Append);
  QTimer::singleShot(700, qApp, &QGuiApplication::quit);
}

void Answered() {
  Write("answered", "yes");
  QCoreApplication::quit();
}

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "xcb");
  const QString mode = argc > 1 ? argv[1] : "";
  QGuiApplication::setApplicationName(mode == "stranger" ? "stranger" : "streamget.exe");
  QGuiApplication app(argc, argv);
  if (mode == "hidden") return app.exec();
  Window main(mode == "exists"     ? "song.wmv は既に存在します"
              : mode == "stranger" ? argv[2]
                                   : "GetASFStream",
              nullptr, &QCoreApplication::quit);
  std::unique_ptr<Window> question;
  if (mode == "record") question = std::make_unique<Window>("確認", &main, Record);
  if (mode == "stuck") question = std::make_unique<Window>("注意", &main, Answered);
  return app.exec();
}
