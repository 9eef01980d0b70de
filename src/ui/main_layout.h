// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QSize>

namespace zentorin {

struct MainControls;

// Places the controls of the main window by its resize rules. Sizes that the rules leave open come
// from the controls' own size hints, so that captions stay whole at any font; margins are whole
// pixels. There is no smallest size: on a tiny window the controls overlap.
class MainLayout : public QObject {
  Q_OBJECT

 public:
  // `controls` must outlive the layout.
  explicit MainLayout(MainControls& controls, QObject* parent = nullptr);

  // Lays everything out for the inner size of the window.
  void Apply(QSize inner);
  // The smallest inner size at which every caption is whole, a running download's too, and some
  // rows of the file list are in sight. Lays out once for its measure: Apply() comes after it.
  QSize RoomySize();
  // Puts the headers over the columns of the file list.
  void PlaceHeaders();
  // Shares the status line between its text and the file in hand.
  void PlaceStatus();
  // Shares the run's frame between its counter and the bar.
  void PlaceProgressFrame();

  // Width of the run's bar as a part of its frame, 0 to 1.
  void SetFraction(double fraction);

 private:
  void PlaceProgress();
  void PlaceTop(int width);
  void PlaceBottom(QSize inner);
  void PlaceSite(int width);
  void PlacePatternMode(int width);
  void PlaceDateMode(int width);
  // Answers the lower edge of what it placed.
  int PlaceSave(int top);
  void PlaceFileList(int top);
  int RowHeight() const;
  int CancelWidth() const;

  MainControls& c_;
  double fraction_ = 0;
};

}  // namespace zentorin
