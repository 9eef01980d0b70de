// SPDX-License-Identifier: MIT
#include "launch/known_applications.h"

#include <QFileInfo>
#include <array>

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr auto kBrowsers =
    u"x-www-browser,firefox,firefox-esr,org.mozilla.firefox,chromium,google-chrome,"
    u"microsoft-edge,brave-browser,org.gnome.Epiphany,org.kde.falkon,sensible-browser,xdg-open";
constexpr auto kPlayers =
    u"vlc,mpv,org.gnome.Totem,io.github.celluloid_player.Celluloid,smplayer,org.kde.dragonplayer,"
    u"xplayer,parole,mplayer,ffplay";
constexpr auto kMailers =
    u"thunderbird,org.gnome.Evolution,evolution,org.gnome.Geary,"
    u"org.kde.kmail2,claws-mail,sylpheed";

constexpr std::array kTable = {
    KnownApplication{.name = u"ie",
                     .folder = u"<PROGRAM_FILES>",
                     .tail = u"\\Internet Explorer\\IEXPLORE.EXE",
                     .type = u"x-scheme-handler/http",
                     .candidates = kBrowsers},
    KnownApplication{
        .name = u"エクスプローラー",
        .folder = u"<WINDOWS>",
        .tail = u"\\explorer.exe",
        .type = u"inode/directory",
        .candidates = u"org.gnome.Nautilus,org.kde.dolphin,nemo,thunar,caja,pcmanfm-qt,pcmanfm"},
    KnownApplication{.name = u"電卓",
                     .folder = u"<SYSTEM>",
                     .tail = u"\\calc.exe",
                     .type = u"",
                     .candidates =
                         u"org.gnome.Calculator,org.kde.kcalc,qalculate-gtk,mate-calc,galculator,"
                         u"speedcrunch,xcalc"},
    KnownApplication{.name = u"スクリーンキーボード",
                     .folder = u"<SYSTEM>",
                     .tail = u"\\osk.exe",
                     .type = u"",
                     .candidates = u"onboard,org.onboard.Onboard,florence,org.maliit.keyboard,"
                                   u"squeekboard,matchbox-keyboard,"
                                   u"xvkbd"},
    KnownApplication{
        .name = u"ペイント",
        .folder = u"<SYSTEM>",
        .tail = u"\\mspaint.exe",
        .type = u"",
        .candidates = u"org.kde.kolourpaint,com.github.maoschanz.drawing,mtpaint,gpaint,pinta,gimp,"
                      u"org.kde.krita"},
    KnownApplication{.name = u"メモ帳",
                     .folder = u"<WINDOWS>",
                     .tail = u"\\NOTEPAD.EXE",
                     .type = u"text/plain",
                     .candidates = u"org.gnome.TextEditor,org.gnome.gedit,org.kde.kwrite,org.kde."
                                   u"kate,org.xfce.mousepad,xed,"
                                   u"pluma,featherpad,l3afpad"},
    KnownApplication{.name = u"ワードパッド",
                     .folder = u"<PROGRAM_FILES>",
                     .tail = u"\\Windows NT\\Accessories\\wordpad.exe",
                     .type = u"application/rtf",
                     .candidates = u"abiword,libreoffice-writer,org.kde.calligrawords,lowriter"},
    KnownApplication{.name = u"メディア プレーヤー",
                     .folder = u"<PROGRAM_FILES>",
                     .tail = u"\\Windows Media Player\\wmplayer.exe",
                     .type = u"",
                     .candidates = kPlayers},
    KnownApplication{.name = u"mplayer2",
                     .folder = u"<PROGRAM_FILES>",
                     .tail = u"\\Windows Media Player\\mplayer2.exe",
                     .type = u"",
                     .candidates = kPlayers},
    KnownApplication{.name = u"拡大鏡",
                     .folder = u"<SYSTEM>",
                     .tail = u"\\magnify.exe",
                     .type = u"",
                     .candidates = u"org.kde.kmag,kmag,magnus,virtual-magnifying-glass,xmag"},
    KnownApplication{.name = u"システム情報",
                     .folder = u"<SYSTEM>",
                     .tail = u"\\msinfo32.exe",
                     .type = u"",
                     .candidates =
                         u"org.kde.kinfocenter,gnome-system-panel,"
                         u"gnome-info-overview-panel,gnome-about-panel,hardinfo2,hardinfo,"
                         u"cinnamon-settings-info,org.gnome.SystemMonitor,"
                         u"gnome-system-monitor,mate-system-monitor,xfce4-taskmanager"},
    KnownApplication{.name = u"ダイヤラ",
                     .folder = u"<WINDOWS>",
                     .tail = u"\\dialer.exe",
                     .type = u"x-scheme-handler/tel",
                     .candidates = u"org.gnome.Calls,org.kde.phone.dialer,linphone,org.jami.Jami"},
    KnownApplication{
        .name = u"コマンド プロンプト",
        .folder = u"<SYSTEM>",
        .tail = u"\\cmd.exe",
        .type = u"",
        .candidates = u"x-terminal-emulator,org.gnome.Console,org.gnome.Terminal,org.kde.konsole,"
                      u"xfce4-terminal,mate-terminal,lxterminal,alacritty,kitty,foot,xterm"},
    KnownApplication{.name = u"outlookexpress",
                     .folder = u"<PROGRAM_FILES>",
                     .tail = u"\\Outlook Express\\msimn.exe",
                     .type = u"x-scheme-handler/mailto",
                     .candidates = kMailers},
    KnownApplication{
        .name = u"ms excel",
        .folder = u"<OFFICE>",
        .tail = u"EXCEL.EXE",
        .type = u"application/vnd.ms-excel",
        .candidates =
            u"libreoffice-calc,localc,gnumeric,org.kde.calligrasheets,onlyoffice-desktopeditors"},
    KnownApplication{
        .name = u"ms word",
        .folder = u"<OFFICE>",
        .tail = u"WINWORD.EXE",
        .type = u"application/msword",
        .candidates =
            u"libreoffice-writer,lowriter,abiword,org.kde.calligrawords,onlyoffice-desktopeditors"},
    KnownApplication{
        .name = u"ms powerpoint",
        .folder = u"<OFFICE>",
        .tail = u"POWERPNT.EXE",
        .type = u"application/vnd.ms-powerpoint",
        .candidates =
            u"libreoffice-impress,loimpress,org.kde.calligrastage,onlyoffice-desktopeditors"},
    KnownApplication{.name = u"ms access",
                     .folder = u"<OFFICE>",
                     .tail = u"MSACCESS.EXE",
                     .type = u"application/vnd.oasis.opendocument.database",
                     .candidates = u"libreoffice-base,lobase,kexi"},
    KnownApplication{.name = u"ms outlook",
                     .folder = u"<OFFICE>",
                     .tail = u"OUTLOOK.EXE",
                     .type = u"x-scheme-handler/mailto",
                     .candidates = kMailers},
};

// Terminals and the words between them and the command that runs inside: only those that take the
// command as words of its own. A terminal that wants one text would read it with a shell.
struct Terminal {
  QStringView command;
  QStringView option;
};

constexpr std::array kTerminals = {
    Terminal{.command = u"xdg-terminal-exec", .option = {}},
    Terminal{.command = u"x-terminal-emulator", .option = u"-e"},
    Terminal{.command = u"gnome-terminal", .option = u"--"},
    Terminal{.command = u"kgx", .option = u"--"},
    Terminal{.command = u"konsole", .option = u"-e"},
    Terminal{.command = u"xfce4-terminal", .option = u"-x"},
    Terminal{.command = u"mate-terminal", .option = u"-x"},
    Terminal{.command = u"alacritty", .option = u"-e"},
    Terminal{.command = u"kitty", .option = {}},
    Terminal{.command = u"foot", .option = {}},
    Terminal{.command = u"xterm", .option = u"-e"},
};

}  // namespace

const KnownApplication* KnownApplications::Find(const QString& name) {
  const QString asked = name.toLower();
  for (const KnownApplication& application : kTable)
    if (application.name == asked) return &application;
  return nullptr;
}

QString KnownApplications::TablePath(const KnownApplication& application) const {
  return placeholders_.Expand(application.folder.toString() + application.tail.toString());
}

std::optional<ProgramRequest> KnownApplications::RequestFor(const QString& name,
                                                            const LaunchTarget& target) const {
  const KnownApplication* application = Find(name);
  if (application == nullptr) return std::nullopt;
  if (!application->type.isEmpty()) {
    for (const DesktopEntry& program : associations_.ProgramsFor(application->type.toString()))
      if (auto request = RequestFor(program, target)) return request;
  }
  for (const QString& candidate : application->candidates.toString().split(u','))
    if (auto request = Candidate(candidate, target)) return request;
  return Candidate(placeholders_.SystemPath(TablePath(*application)), target);
}

std::optional<ProgramRequest> KnownApplications::RequestFor(const DesktopEntry& entry,
                                                            const LaunchTarget& target) const {
  auto words = ExpandExec(entry, target);
  if (!words) return std::nullopt;
  words->first() = programs_.Folders().FindCommand(words->first());
  if (words->first().isEmpty()) return std::nullopt;
  if (entry.terminal) {
    const QStringList around = TerminalWords();
    if (around.isEmpty()) return std::nullopt;
    *words = around + *words;
  }
  ProgramRequest request;
  request.program = words->takeFirst();
  request.arguments = *words;
  // A folder that is not there would keep the program from starting.
  if (QFileInfo(entry.folder).isDir()) request.workingFolder = entry.folder;
  return request;
}

std::optional<ProgramRequest> KnownApplications::Candidate(const QString& candidate,
                                                           const LaunchTarget& target) const {
  if (const auto entry = programs_.FindById(candidate + u".desktop"_s))
    if (auto request = RequestFor(*entry, target)) return request;
  const QString program = programs_.Folders().FindCommand(candidate);
  if (program.isEmpty()) return std::nullopt;
  ProgramRequest request;
  request.program = program;
  if (!target.text.isEmpty()) request.arguments.append(target.text);
  return request;
}

QStringList KnownApplications::TerminalWords() const {
  for (const auto& [command, option] : kTerminals) {
    const QString program = programs_.Folders().FindCommand(command.toString());
    if (program.isEmpty()) continue;
    QStringList words(program);
    if (!option.isEmpty()) words.append(option.toString());
    return words;
  }
  return {};
}

}  // namespace zentorin
