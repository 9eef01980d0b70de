// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>

#include "base/change_throttle.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

// Controls that a refused command asks the window to put the focus on.
enum class FocusTarget {
  UrlList,   // `lstTargetUrl`
  RootUrl,   // `txtUrl_Root`
  FileList,  // `lstUrl_All`
};

// Everything that the bottom of the main window shows, kept without a window: status line, current
// file, progress, counters, busy state, the cancel button and the after-batch box. Commands write
// here; a window or a terminal listens. Fast-changing values (progress, counter, current file) are
// announced through ProgressChanged(), at most ten times a second unless AnnounceProgress() is
// called; all others at once through Changed(). Reading always gives the newest value.
class StatusBoard : public QObject {
  Q_OBJECT

 public:
  // Colours of the status line, as 0xBBGGRR numbers.
  static constexpr quint32 kBlack = 0x000000;
  static constexpr quint32 kBlue = 0xFF0000;
  static constexpr quint32 kRed = 0x0000FF;

  // The box that asks for an action after the batch (`ChkStandby`).
  struct Standby {
    bool visible = false;
    bool checked = false;
    QString caption;
    QString toolTip;
    bool operator==(const Standby&) const = default;
  };

  explicit StatusBoard(QObject* parent = nullptr);

  // `lblStatus`: text and text colour.
  void SetStatus(const QString& text, quint32 colour = kBlack);
  const QString& Status() const { return status_; }
  quint32 StatusColour() const { return statusColour_; }

  // Locks and frees the editing surface; nothing else.
  void SetBusy(bool busy);
  bool Busy() const { return busy_; }

  // `frSite` as a whole; the download run disables it while it walks the rows.
  void SetSiteEnabled(bool enabled);
  bool SiteEnabled() const { return siteEnabled_; }

  // `lblFile`: the page or file in hand.
  void SetFile(const QString& text);
  const QString& File() const { return file_; }

  // `lblDone`: the fraction done of the file in hand, as text; the bar reads its number.
  void SetDone(const QString& fraction);
  const QString& Done() const { return done_; }

  // The run's bar, 0 to 1, its counter ("3/12") and whether its frame `frProgress_o` is shown.
  void SetProgress(double fraction);
  double Progress() const { return progress_; }
  void SetCounter(const QString& text);
  const QString& Counter() const { return counter_; }
  void SetProgressShown(bool shown);
  bool ProgressShown() const { return progressShown_; }

  // Bytes of the file in hand that are on disk, for displays that show more than the bar.
  void SetFileBytes(qint64 bytes);
  qint64 FileBytes() const { return fileBytes_; }

  // `lblUrl_All_Cnt`.
  void SetFileCount(const QString& text);
  const QString& FileCount() const { return fileCount_; }

  // `cmdCancel`: the caption is "キャンセル" at rest and "キャンセル処理中" after a press.
  void SetCancelShown(bool shown);
  bool CancelShown() const { return cancelShown_; }
  void SetCancelEnabled(bool enabled);
  bool CancelEnabled() const { return cancelEnabled_; }
  void SetCancelCaption(const QString& text);
  const QString& CancelCaption() const { return cancelCaption_; }

  void SetStandby(const Standby& standby);
  const Standby& GetStandby() const { return standby_; }

  // For a value that comes no faster than it is to be seen: a change of a fast-changing one is
  // announced now.
  void AnnounceProgress() { throttle_.Flush(); }

  // Puts the focus on a control; without a window nothing happens.
  void RequestFocus(FocusTarget target) { Q_EMIT FocusRequested(target); }

 Q_SIGNALS:
  void Changed();
  void ProgressChanged();
  void FocusRequested(FocusTarget target);

 private:
  QString status_;
  quint32 statusColour_ = kBlack;
  bool busy_ = false;
  bool siteEnabled_ = true;
  QString file_;
  QString done_ = u"0"_s;
  double progress_ = 0;
  QString counter_;
  bool progressShown_ = false;
  qint64 fileBytes_ = 0;
  QString fileCount_;
  bool cancelShown_ = false;
  bool cancelEnabled_ = false;
  QString cancelCaption_;
  Standby standby_;
  ChangeThrottle throttle_;
};

}  // namespace zentorin
