// SPDX-License-Identifier: MIT
#include "app/usage.h"

#include "app/program_title.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

QString HelpText() {
  return uR"(Ｗｅｂサイトから指定パターンのファイルを検索して一括ダウンロードします。

使い方: zentorin [オプション]

  -file パス, -f パス    ＵＲＬリストファイル（*.dat）を開きます。相対パスは、プログラムの
                         フォルダ、次に現在のフォルダから探します。
  -auto [時:分], -a      一括ダウンロードを自動で実行します。時刻を指定すると、その時刻まで
                         待ちます。今日すでに過ぎた時刻は、すぐに始めます。
  -quit [動作], -q       終了後の動作（-auto の後に指定します）:
                           b, standby      スタンバイ    h, hibernation  休止
                           l, logoff       ログオフ      r, reboot       再起動
                           s, shutdown     シャットダウン
                           指定なし        閉じる
  -tasktray              ウィンドウを通知領域に入れて実行します。
  -connections 数        一つのホストに同時に接続する数（1 から 12）。1 なら、必ず一つずつ順番に
                         取得します。この実行だけに効きます。
  -speed 数              ファイルを取得する速度の上限（KB/秒、0 は制限なし）。この実行だけに
                         効きます。
  -debug                 デバッグ用のボタンを表示します。
  --help                 この説明を表示します。
  --version              バージョンを表示します。

画面のない環境（cron など）では、-auto と -file を指定して実行します。経過は標準エラー出力に
表示し、記録を log.txt に残します。

終了ステータス: 0 正常、1 開始できない、2 取得できないファイルやページがある、130 中止

環境変数:
  ZENTORIN_HOME          プログラムのフォルダ（Conf.txt、choices.ini、reglist.txt、
                         log.txt の場所）
  ZENTORIN_CONNECT_TO    接続先の置き換え（ホスト:ポート:アドレス:ポート[,…]）
  ZENTORIN_POWER         dry-run で、電源の操作を実行せずに表示だけします

例: zentorin -auto 23:30 -quit -file ~/lists/nightly.dat
)"_s;
}

}  // namespace

std::optional<QString> PlainAnswer(const QStringList& arguments) {
  if (arguments.contains(u"--help"_s)) return HelpText();
  if (arguments.contains(u"--version"_s)) {
    return ProductName() + u' ' + ProductVersion() + u'\n';
  }
  return std::nullopt;
}

QString HowToRunUnattended() {
  return u"ウィンドウを表示できません。自動実行の方法: zentorin -auto -file リスト.dat"
         "（説明: zentorin --help）"_s;
}

}  // namespace zentorin
