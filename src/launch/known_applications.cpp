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

// Name, folder, tail, type, candidates.
constexpr auto kTable = std::to_array<KnownApplication>({
    {u"ie", u"<PROGRAM_FILES>", u"\\Internet Explorer\\IEXPLORE.EXE", u"x-scheme-handler/http",
     kBrowsers},
    {u"エクスプローラー", u"<WINDOWS>", u"\\explorer.exe", u"inode/directory",
     u"org.gnome.Nautilus,org.kde.dolphin,nemo,thunar,caja,pcmanfm-qt,pcmanfm"},
    {u"電卓", u"<SYSTEM>", u"\\calc.exe", u"",
     u"org.gnome.Calculator,org.kde.kcalc,qalculate-gtk,mate-calc,galculator,speedcrunch,xcalc"},
    {u"スクリーンキーボード", u"<SYSTEM>", u"\\osk.exe", u"",
     u"onboard,org.onboard.Onboard,florence,org.maliit.keyboard,squeekboard,matchbox-keyboard,"
     u"xvkbd"},
    {u"ペイント", u"<SYSTEM>", u"\\mspaint.exe", u"",
     u"org.kde.kolourpaint,com.github.maoschanz.drawing,mtpaint,gpaint,pinta,gimp,org.kde.krita"},
    {u"メモ帳", u"<WINDOWS>", u"\\NOTEPAD.EXE", u"text/plain",
     u"org.gnome.TextEditor,org.gnome.gedit,org.kde.kwrite,org.kde.kate,org.xfce.mousepad,xed,"
     u"pluma,featherpad,l3afpad"},
    {u"ワードパッド", u"<PROGRAM_FILES>", u"\\Windows NT\\Accessories\\wordpad.exe",
     u"application/rtf", u"abiword,libreoffice-writer,org.kde.calligrawords,lowriter"},
    {u"メディア プレーヤー", u"<PROGRAM_FILES>", u"\\Windows Media Player\\wmplayer.exe", u"",
     kPlayers},
    {u"mplayer2", u"<PROGRAM_FILES>", u"\\Windows Media Player\\mplayer2.exe", u"", kPlayers},
    {u"拡大鏡", u"<SYSTEM>", u"\\magnify.exe", u"",
     u"org.kde.kmag,kmag,magnus,virtual-magnifying-glass,xmag"},
    {u"システム情報", u"<SYSTEM>", u"\\msinfo32.exe", u"",
     u"org.kde.kinfocenter,gnome-system-panel,gnome-info-overview-panel,gnome-about-panel,"
     u"hardinfo2,hardinfo,cinnamon-settings-info,org.gnome.SystemMonitor,gnome-system-monitor,"
     u"mate-system-monitor,xfce4-taskmanager"},
    {u"ダイヤラ", u"<WINDOWS>", u"\\dialer.exe", u"x-scheme-handler/tel",
     u"org.gnome.Calls,org.kde.phone.dialer,linphone,org.jami.Jami"},
    {u"コマンド プロンプト", u"<SYSTEM>", u"\\cmd.exe", u"",
     u"x-terminal-emulator,org.gnome.Console,org.gnome.Terminal,org.kde.konsole,xfce4-terminal,"
     u"mate-terminal,lxterminal,alacritty,kitty,foot,xterm"},
    {u"outlookexpress", u"<PROGRAM_FILES>", u"\\Outlook Express\\msimn.exe",
     u"x-scheme-handler/mailto", kMailers},
    {u"ms excel", u"<OFFICE>", u"EXCEL.EXE", u"application/vnd.ms-excel",
     u"libreoffice-calc,localc,gnumeric,org.kde.calligrasheets,onlyoffice-desktopeditors"},
    {u"ms word", u"<OFFICE>", u"WINWORD.EXE", u"application/msword",
     u"libreoffice-writer,lowriter,abiword,org.kde.calligrawords,onlyoffice-desktopeditors"},
    {u"ms powerpoint", u"<OFFICE>", u"POWERPNT.EXE", u"application/vnd.ms-powerpoint",
     u"libreoffice-impress,loimpress,org.kde.calligrastage,onlyoffice-desktopeditors"},
    {u"ms access", u"<OFFICE>", u"MSACCESS.EXE", u"application/vnd.oasis.opendocument.database",
     u"libreoffice-base,lobase,kexi"},
    {u"ms outlook", u"<OFFICE>", u"OUTLOOK.EXE", u"x-scheme-handler/mailto", kMailers},
});

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
  for (const KnownApplication& application : kTable) {
    if (application.name == asked) return &application;
  }
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
    for (const DesktopEntry& program : associations_.ProgramsFor(application->type.toString())) {
      if (auto request = RequestFor(program, target)) return request;
    }
  }
  for (const QString& candidate : application->candidates.toString().split(u',')) {
    if (auto request = Candidate(candidate, target)) return request;
  }
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
  if (const auto entry = programs_.FindById(candidate + u".desktop"_s)) {
    if (auto request = RequestFor(*entry, target)) return request;
  }
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
