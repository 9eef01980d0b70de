// SPDX-License-Identifier: MIT
#include "launch/known_applications.h"

#include <QFileInfo>

namespace zentorin {
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

constexpr KnownApplication kTable[] = {
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
    {u"ダイヤラ", u"<WINDOWS>", u"\\dialer.exe", u"x-scheme-handler/tel",
     u"org.gnome.Calls,org.kde.phone.dialer,linphone,org.jami.Jami"},
    {u"コマンド プロンプト", u"<SYSTEM>", u"\\cmd.exe", u"",
     u"x-terminal-emulator,org.gnome.Console,org.gnome.Terminal,org.kde.konsole,"
     u"xfce4-terminal,mate-terminal,lxterminal,alacritty,kitty,foot,xterm"},
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
};

// Terminals and the words between them and the command that runs inside: only those that take the
// command as words of its own. A terminal that wants one text would read it with a shell.
struct Terminal {
  const char16_t* command;
  const char16_t* option;  // may be empty
};

constexpr Terminal kTerminals[] = {
    {u"xdg-terminal-exec", u""},
    {u"x-terminal-emulator", u"-e"},
    {u"gnome-terminal", u"--"},
    {u"kgx", u"--"},
    {u"konsole", u"-e"},
    {u"xfce4-terminal", u"-x"},
    {u"mate-terminal", u"-x"},
    {u"alacritty", u"-e"},
    {u"kitty", u""},
    {u"foot", u""},
    {u"xterm", u"-e"},
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
  const QString program = words->takeFirst();
  // A folder that is not there would keep the program from starting.
  const QString folder = QFileInfo(entry.folder).isDir() ? entry.folder : QString();
  return ProgramRequest{program, *words, folder};
}

std::optional<ProgramRequest> KnownApplications::Candidate(const QString& candidate,
                                                           const LaunchTarget& target) const {
  if (const auto entry = programs_.FindById(candidate + QStringLiteral(".desktop")))
    if (auto request = RequestFor(*entry, target)) return request;
  const QString program = programs_.Folders().FindCommand(candidate);
  if (program.isEmpty()) return std::nullopt;
  QStringList arguments;
  if (!target.text.isEmpty()) arguments.append(target.text);
  return ProgramRequest{program, arguments, {}};
}

QStringList KnownApplications::TerminalWords() const {
  for (const Terminal& terminal : kTerminals) {
    const QString program = programs_.Folders().FindCommand(QString::fromUtf16(terminal.command));
    if (program.isEmpty()) continue;
    const QString option = QString::fromUtf16(terminal.option);
    return option.isEmpty() ? QStringList{program} : QStringList{program, option};
  }
  return {};
}

}  // namespace zentorin
