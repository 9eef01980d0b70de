// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QSize>

namespace zentorin {

struct MainControls;

// Places the controls by the resize rules; sizes that those leave open come from size hints, so
// that captions stay whole at any font. On a tiny window the controls overlap.
class MainLayout : public QObject {
  Q_OBJECT

 public:
  explicit MainLayout(MainControls& controls, QObject* parent = nullptr);

  void Apply(QSize inner);
  // The smallest inner size at which every caption is whole. Lays out for it: Apply() comes after.
  QSize RoomySize();
  void PlaceHeaders();
  void PlaceStatus();         // text and file in hand
  void PlaceProgressFrame();  // counter and bar

  void SetFraction(double fraction);  // of the bar, 0 to 1

 private:
  void PlaceProgress();
  void PlaceTop(int width);
  void PlaceBottom(QSize inner);
  void PlaceSite(int width);
  void PlacePatternMode(int width);
  void PlaceDateMode(int width);
  int PlaceSave(int top);  // answers its lower edge
  void PlaceFileList(int top);
  int RowHeight() const;
  int CancelWidth() const;

  MainControls& c_;
  double fraction_ = 0;
};

}  // namespace zentorin
