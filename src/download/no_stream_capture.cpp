// SPDX-License-Identifier: MIT
#include "download/no_stream_capture.h"

#include "base/message_boxes.h"
#include "download/result_code.h"
#include "launch/opener.h"

namespace zentorin {

QCoro::Task<int> NoStreamCapture::Capture(QString /*url*/, QString /*path*/) {
  const MessageBox question{
      .title = QStringLiteral("VLC未インストール"),
      .text = QStringLiteral(
          "VLC media player　がインストールされていないようです。\r\n\r\n"
          "ASX(ストリーミング形式）のダウンロードには、VLC media player が必要です。\r\n"
          "VLC のダウンロードサイト（窓の杜）に接続しましょうか？"),
      .buttons = MessageBox::Buttons::YesNo,
      .defaultAnswer = MessageBox::Answer::No};
  const MessageBox::Answer answer = co_await messages_.Ask(question);
  if (answer == MessageBox::Answer::Yes) {
    opener_.OpenWithDefaultHandler(QStringLiteral("https://forest.watch.impress.co.jp/library/"));
  }
  co_return kToolNotInstalled;
}

}  // namespace zentorin
