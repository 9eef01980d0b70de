// SPDX-License-Identifier: MIT
#include "ui/main_layout.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QStyle>
#include <QToolButton>
#include <algorithm>
#include <initializer_list>

#include "ui/main_controls.h"
#include "ui/widgets/line_list_view.h"
#include "ui/widgets/link_label.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

// Pixels. Those of the resize rules stand beside their rule below.
constexpr int kEdge = 5;      // left edge of the frames, and of what lies in them
constexpr int kGap = 6;       // between neighbours in a row
constexpr int kLine = 3;      // between rows
constexpr int kTopLines = 5;  // lines of the URL list that are seen
constexpr int kFewRows = 6;   // of the file list, at the least in a roomy window
constexpr int kShortBar = 60;

int HintWidth(const QWidget* widget) {
  return widget->sizeHint().width();
}

int TextWidth(const QWidget* widget, const QString& text) {
  return widget->fontMetrics().horizontalAdvance(text);
}

// The widest of the captions in a column of labels.
int WidestOf(std::initializer_list<const QWidget*> widgets) {
  int widest = 0;
  for (const QWidget* widget : widgets) widest = std::max(widest, HintWidth(widget));
  return widest;
}

// Sets a widget's rectangle; sizes below zero, as a tiny window asks for, become zero.
void Put(QWidget* widget, int left, int top, int width, int height) {
  widget->setGeometry(left, top, std::max(width, 0), std::max(height, 0));
}

// Lays widgets side by side at their own widths, each as high as the row.
class Row {
 public:
  Row(int left, int top, int height) : left_(left), top_(top), height_(height) {}

  Row& Add(QWidget* widget) { return Add(widget, HintWidth(widget)); }
  Row& Add(QWidget* widget, int width) {
    Put(widget, left_, top_, width, height_);
    left_ += std::max(width, 0) + kGap;
    return *this;
  }
  // Left edge of what comes next.
  int Left() const { return left_; }

 private:
  int left_;
  int top_;
  int height_;
};

// Width of a combo box for `chars` characters.
int ComboWidth(const QComboBox* combo, int chars) {
  return HintWidth(combo) +
         (chars - combo->minimumContentsLength()) * combo->fontMetrics().averageCharWidth();
}

}  // namespace

MainLayout::MainLayout(MainControls& controls, QObject* parent) : QObject(parent), c_(controls) {
  connect(c_.lstUrl_All, &LineListView::ColumnsMoved, this, &MainLayout::PlaceHeaders);
}

int MainLayout::RowHeight() const {
  return std::max({c_.txtUrl_Root->sizeHint().height(), c_.cmbFilePattern->sizeHint().height(),
                   c_.cmdLog->sizeHint().height()});
}

void MainLayout::Apply(QSize inner) {
  PlaceTop(inner.width());
  PlaceBottom(inner);
  // frSite runs from the foot of frTop to the head of frBottom, 10 px short of the right edge.
  const int top = c_.frTop->y() + c_.frTop->height();
  Put(c_.frSite, kEdge, top, inner.width() - kEdge - 10, c_.frBottom->y() - top);
  PlaceSite(c_.frSite->width());
}

QSize MainLayout::RoomySize() {
  // In an ample window nothing is cut, and what is left over beside the captions can be taken away.
  const QSize ample(10000, 10000);
  Apply(ample);
  const auto spare = [](const QWidget* frame, const QWidget* last) {
    return frame->width() - last->x() - last->width();
  };
  const int bar = c_.frProgress_0->width() - kShortBar;
  const int width =
      std::min({spare(c_.frReg, c_.lblRegHelp), spare(c_.frModify, c_.Label9),
                spare(c_.frDateEnable, c_.lblDateEnable), spare(c_.frOpt_1, c_.lblBefore_0),
                spare(c_.frOpt_1, c_.lblBefore_1), spare(c_.frOpt_1, c_.lblBefore_2),
                c_.cmdCancel->isHidden() ? bar - CancelWidth() - kGap : bar});
  const int rows = kFewRows * (c_.lstUrl_All->fontMetrics().height() + 2);
  return ample - QSize(width, c_.lstUrl_All->height() - rows);
}

void MainLayout::PlaceTop(int width) {
  const int line =
      std::max(c_.Label7->sizeHint().height(), c_.lblTime->sizeHint().height()) + kLine;
  // frTime is right-aligned, 15 px from the edge.
  const int labelWidth =
      std::max({TextWidth(c_.lblTimeLbl, u"LocalTime"_s), HintWidth(c_.lblTimeLbl)});
  const int timeWidth = TextWidth(c_.lblTime, u"2000/00/00 00:00:00"_s) + kGap;
  const int timeFrame = labelWidth + kGap + timeWidth;
  Put(c_.frTime, width - timeFrame - 15, kLine, timeFrame, line);
  Row(0, 0, line).Add(c_.lblTimeLbl, labelWidth).Add(c_.lblTime, timeWidth);
  c_.frTime->raise();

  const int lineHeight = c_.lstTargetUrl->fontMetrics().height() + 2;
  const int listTop = line + kLine;
  const int height = listTop + kTopLines * lineHeight + 2 * c_.lstTargetUrl->frameWidth() +
                     c_.lstTargetUrl->style()->pixelMetric(QStyle::PM_ScrollBarExtent);
  // frTop and its list end 10 px short of what holds them; the list fills the frame downwards.
  Put(c_.frTop, kEdge, kLine, width - kEdge - 10, height);
  Put(c_.Label7, 0, 0, HintWidth(c_.Label7), line);
  const int button = c_.cmdOrder_0->sizeHint().width();
  Put(c_.cmdOrder_1, 0, listTop, button, (height - listTop) / 2);
  Put(c_.cmdOrder_0, 0, listTop + (height - listTop) / 2, button,
      height - listTop - (height - listTop) / 2);
  const int left = button + kGap;
  Put(c_.lstTargetUrl, left, listTop, c_.frTop->width() - left - 10, height - listTop);
}

void MainLayout::PlaceBottom(QSize inner) {
  const int row = RowHeight();
  // cmdClose keeps to the corner: 20 px from the right edge, 15 px from the lower one.
  const int closeWidth = HintWidth(c_.cmdClose);
  Put(c_.cmdClose, inner.width() - closeWidth - 20, inner.height() - row - 15, closeWidth, row);
  c_.cmdClose->raise();
  // frBottom keeps 10 px from the lower and the right edge.
  const int height = 2 * row + kLine + 5;
  Put(c_.frBottom, kEdge, inner.height() - height - 10, inner.width() - kEdge - 10, height);
  // ChkStandby is right-aligned, 10 px from the bar's edge; the status line has what is left.
  const int bar = c_.frBottom->width();
  const int standby = HintWidth(c_.ChkStandby);
  Put(c_.ChkStandby, bar - standby - 10, 0, standby, row);
  Put(c_.frStatus, 0, 0, bar - standby - 10 - kGap, row);
  PlaceStatus();

  const int top = c_.cmdClose->y() - c_.frBottom->y();
  Row commands(0, top, row);
  commands.Add(c_.cmdAllDownload_0).Add(c_.cmdAllDownload_1).Add(c_.cmdLog);
  if (!c_.cmdDebug->isHidden()) commands.Add(c_.cmdDebug);
  if (!c_.cmdCancel->isHidden()) commands.Add(c_.cmdCancel, CancelWidth());
  // frProgress_o stretches to 5 px before cmdClose, frProgress to the end of frProgress_o less the
  // same 5 px.
  const int left = commands.Left();
  Put(c_.frProgress_o, left, top, c_.cmdClose->x() - c_.frBottom->x() - 5 - left, row);
  PlaceProgressFrame();
}

int MainLayout::CancelWidth() const {
  return HintWidth(c_.cmdCancel) + TextWidth(c_.cmdCancel, u"キャンセル処理中"_s) -
         TextWidth(c_.cmdCancel, c_.cmdCancel->text());
}

void MainLayout::PlaceStatus() {
  const int whole = c_.frStatus->width();
  const int row = c_.frStatus->height();
  // The file in hand keeps half of the line from a long status.
  const int file =
      c_.lblFile->text().isEmpty() ? 0 : std::min(HintWidth(c_.lblFile) + kGap, whole / 2);
  const int status = std::clamp(HintWidth(c_.lblStatus), whole / 3, whole - file);
  Put(c_.lblStatus, 0, 0, status, row);
  Put(c_.lblFile, status + kGap, 0, whole - status - kGap, row);
}

void MainLayout::PlaceProgressFrame() {
  const int row = c_.frProgress_o->height();
  const int counter =
      std::max(HintWidth(c_.lblProgress_o), TextWidth(c_.lblProgress_o, u"000/000"_s));
  Put(c_.lblProgress_o, 0, 0, counter, row);
  const int left = counter + kGap;
  Put(c_.frProgress_0, left, row / 4, c_.frProgress_o->width() - left - 5, row / 2);
  PlaceProgress();
}

void MainLayout::SetFraction(double fraction) {
  fraction_ = std::clamp(fraction, 0.0, 1.0);
  PlaceProgress();
}

void MainLayout::PlaceProgress() {
  Put(c_.lblProgress_0, 0, 0, static_cast<int>(c_.frProgress_0->width() * fraction_),
      c_.frProgress_0->height());
}

void MainLayout::PlaceSite(int width) {
  const int row = RowHeight();
  const int label = WidestOf({c_.Label5, c_.Label1});
  int top = kLine;
  // The first row: the description takes what the mode buttons leave.
  const int modes = HintWidth(c_.Opt_0) + kGap + HintWidth(c_.Opt_1);
  Row(0, 0, row).Add(c_.Opt_0).Add(c_.Opt_1);
  const int modesLeft = std::max(width - modes - 10, label + kGap);
  Put(c_.frOptPattern, modesLeft, top, modes, row);
  Row(0, top, row).Add(c_.Label5, label).Add(c_.txtDescription, modesLeft - label - 2 * kGap);
  top += row + kLine;
  // The root URL stretches to 10 px short of the frame's edge.
  Row(0, top, row).Add(c_.Label1, label).Add(c_.txtUrl_Root, width - label - kGap - 10);
  top += row + kLine;

  const int saveBottom = PlaceSave(top);
  const int left = label + kGap;
  const int optWidth = c_.FrSave->x() - kGap;
  Put(c_.txtUrl_RootBase, left, top, optWidth - left, c_.txtUrl_RootBase->sizeHint().height());
  const int optTop = top + c_.txtUrl_RootBase->height() + kLine;
  // frOpt(1) takes the position of frOpt(0).
  const int optHeight = 5 * row + 4 * kLine;
  Put(c_.frOpt_0, 0, optTop, optWidth, optHeight);
  Put(c_.frOpt_1, 0, optTop, optWidth, optHeight);
  PlacePatternMode(optWidth);
  PlaceDateMode(optWidth);
  PlaceFileList(std::max(optTop + optHeight, saveBottom));
}

void MainLayout::PlacePatternMode(int width) {
  const int row = RowHeight();
  const int label = WidestOf({c_.Label5, c_.Label1, c_.Label2, c_.Label3});
  const int depth = HintWidth(c_.lblDepth) + kGap + ComboWidth(c_.cmbDepth, 3);
  const bool depthShown = !c_.frDepth->isHidden();
  // frReg and frDepth share the width; the pattern box stretches to the right edge of frReg.
  Put(c_.frReg, 0, 0, depthShown ? width - depth - kGap : width, 2 * row + kLine);
  Row(label + kGap, 0, row).Add(c_.lblArrow_0).Add(c_.lblReg).Add(c_.lblArrow_1).Add(c_.lblRegHelp);
  Row(0, row + kLine, row)
      .Add(c_.Label2, label)
      .Add(c_.cmbUrl_SubPattern, c_.frReg->width() - label - kGap);
  Put(c_.frDepth, width - depth, row + kLine, depth, row);
  Row(0, 0, row).Add(c_.lblDepth).Add(c_.cmbDepth, ComboWidth(c_.cmbDepth, 3));

  int top = 2 * (row + kLine);
  Row(0, top, row).Add(c_.Label3, label).Add(c_.cmbFilePattern, width - label - kGap);
  top += row + kLine;
  const int check = std::max(HintWidth(c_.ChkDispModify), HintWidth(c_.ChkModify));
  Put(c_.ChkDispModify, 0, top, check, row);
  Put(c_.ChkModify, 0, top + row + kLine, check, row);
  Put(c_.frModify, check + kGap, top, width - check - kGap, 2 * row + kLine);
  Row(0, 0, row).Add(c_.cmbDate, ComboWidth(c_.cmbDate, 5)).Add(c_.Label9);
  Put(c_.frDateEnable, 0, row + kLine, c_.frModify->width(), row);
  Row(0, 0, row).Add(c_.Label10).Add(c_.lblDateEnable);
}

void MainLayout::PlaceDateMode(int width) {
  const int row = RowHeight();
  const int label = WidestOf({c_.Label5, c_.Label1, c_.Label12});
  // The format and its preview stretch to 10 px short of the frame's edge.
  int top = 0;
  Row(0, top, row).Add(c_.Label12, label).Add(c_.txtFileFormat, width - label - kGap - 10);
  top += row + kLine;
  Row(0, top, row).Add(c_.lblFormat, label).Add(c_.lblFileFormat, width - label - kGap - 10);
  top += row + kLine;
  Put(c_.lblBefore_0, 0, top, HintWidth(c_.lblBefore_0), row);
  top += row + kLine;
  Row(0, top, row)
      .Add(c_.cmbBefore_0, ComboWidth(c_.cmbBefore_0, 5))
      .Add(c_.lblBefore_3)
      .Add(c_.cmbBefore_1, ComboWidth(c_.cmbBefore_1, 5))
      .Add(c_.lblBefore_1);
  top += row + kLine;
  const int zone = HintWidth(c_.lblBefore_2);
  const int dates = TextWidth(c_.lblBeforeDate, u"2000/00/00～2000/00/00"_s) + kGap;
  Row(0, top, row).Add(c_.lblBeforeDate, dates).Add(c_.lblBefore_2, zone);
}

int MainLayout::PlaceSave(int top) {
  const int row = RowHeight();
  const int checks = std::max(HintWidth(c_.ChkOverWrite) + HintWidth(c_.ChkTreeFolder),
                              HintWidth(c_.ChkSkip) + HintWidth(c_.ChkOnlyInSite)) +
                     3 * kGap;
  const int buttons = HintWidth(c_.cmdGo_All_0) + HintWidth(c_.cmdGo_All_1) + kGap;
  const int width = std::max(checks, buttons);
  // FrSave is right-aligned, 10 px from the frame's edge.
  const int left = c_.frSite->width() - width - 10;
  Put(c_.FrSave, left, top, width, 3 * row + 2 * kLine);
  const int button = c_.cmdSavePath->sizeHint().width();
  Put(c_.lblSavePath, 0, 0, HintWidth(c_.lblSavePath), row);
  Put(c_.cmdSavePath, width - button - 5, 0, button, row);
  Put(c_.txtSavePath, 0, row + kLine, width - 5, row);
  const int second = std::max(HintWidth(c_.ChkOverWrite), HintWidth(c_.ChkSkip)) + kGap;
  Put(c_.ChkOverWrite, 0, 2 * (row + kLine), HintWidth(c_.ChkOverWrite), row);
  Put(c_.ChkTreeFolder, second, 2 * (row + kLine), HintWidth(c_.ChkTreeFolder), row);

  int below = top + c_.FrSave->height() + kLine;
  Put(c_.ChkSkip, left, below, HintWidth(c_.ChkSkip), row);
  Put(c_.ChkOnlyInSite, left + second, below, HintWidth(c_.ChkOnlyInSite), row);
  below += row + kLine;
  Put(c_.frGo_All, left, below, width, row);
  const int goWidth = HintWidth(c_.cmdGo_All_0);
  Put(c_.cmdGo_All_0, 0, 0, goWidth, row);
  Put(c_.cmdGo_All_1, goWidth + kGap, 0, width - goWidth - kGap, row);
  below += row + kLine;
  // The row count is right-aligned, 10 px from the frame's edge.
  const int count =
      std::max(HintWidth(c_.lblUrl_All_Cnt), TextWidth(c_.lblUrl_All_Cnt, u"0000000"_s));
  Put(c_.lblUrl_All_Cnt, c_.frSite->x() + c_.frSite->width() - count - 10, c_.frSite->y() + below,
      count, std::min(row, c_.frSite->height() - below));
  return below + row;
}

void MainLayout::PlaceFileList(int top) {
  const int header = c_.lblDescription[0]->sizeHint().height() + kLine;
  // The list ends 10 px short of the frame's right edge and fills it downwards.
  const int width = c_.frSite->width() - 10;
  const QPoint origin = c_.frSite->pos();
  // What lies over frSite ends where it would inside it.
  Put(c_.headerStrip, origin.x(), origin.y() + top, width,
      std::min(header, c_.frSite->height() - top));
  Put(c_.lstUrl_All, origin.x(), origin.y() + top + header, width,
      c_.frSite->height() - top - header);
  PlaceHeaders();
}

void MainLayout::PlaceHeaders() {
  const int frame = c_.lstUrl_All->frameWidth();
  for (int i = 0; i < MainControls::kHeaderCount; ++i) {
    // Header 0 belongs to the sixth column, header 5 to the first.
    LinkLabel* label = c_.lblDescription[i];
    Put(label, frame + c_.lstUrl_All->ColumnLeft(MainControls::kHeaderCount - 1 - i), 0,
        HintWidth(label), c_.headerStrip->height());
  }
}

}  // namespace zentorin
