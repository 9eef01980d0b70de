// SPDX-License-Identifier: MIT
#include "base/status_board.h"
#include "tests/ui/main_window_test.h"
#include "ui/dialogs/frm_input.h"

namespace zentorin::test {

using namespace Qt::Literals::StringLiterals;

namespace {

class LayoutTest : public MainWindowTest {
 protected:
  void ShowAt(QSize size) {
    w->window.resize(size);
    QCoreApplication::processEvents();
  }
  // Edges inside the parent, the last two exclusive.
  int Left(const char* name) const { return w->Find(name)->x(); }
  int Top(const char* name) const { return w->Find(name)->y(); }
  int Right(const char* name) const { return Left(name) + w->Find(name)->width(); }
  int Bottom(const char* name) const { return Top(name) + w->Find(name)->height(); }
  int Width(const char* name) const { return w->Find(name)->width(); }
};

TEST_F(LayoutTest, TheControlsFollowTheWindowByTheRules) {
  StartWithJob();
  for (const QSize size : {QSize(700, 600), QSize(1000, 760), QSize(1600, 1000)}) {
    ShowAt(size);
    const int width = Width("central");
    const int height = w->Find("central")->height();
    EXPECT_EQ(Right("frTime"), width - 15);
    EXPECT_EQ(Right("frTop"), width - 10);
    EXPECT_EQ(Bottom("lstTargetUrl"), w->Find("frTop")->height());
    EXPECT_EQ(Right("lstTargetUrl"), Width("frTop") - 10);
    EXPECT_EQ(Right("cmdClose"), width - 20);
    EXPECT_EQ(Bottom("cmdClose"), height - 15);
    EXPECT_EQ(Bottom("frBottom"), height - 10);
    EXPECT_EQ(Right("frBottom"), width - 10);
    EXPECT_EQ(Top("frSite"), Bottom("frTop"));
    EXPECT_EQ(Right("frSite"), width - 10);
    EXPECT_EQ(Bottom("frSite"), Top("frBottom"));
    EXPECT_EQ(Right("FrSave"), Width("frSite") - 10);
    EXPECT_EQ(Right("txtSavePath"), Width("FrSave") - 5);
    EXPECT_EQ(Right("lstUrl_All"), Right("frSite") - 10);
    EXPECT_EQ(Bottom("lstUrl_All"), Bottom("frSite"));
    EXPECT_EQ(Right("lblUrl_All_Cnt"), Right("frSite") - 10);
    EXPECT_LE(Right("frOpt_0"), Left("FrSave"));
    EXPECT_EQ(Right("cmbUrl_SubPattern"), Width("frReg"));
    EXPECT_EQ(Right("cmbFilePattern"), Width("frOpt_0"));
    EXPECT_EQ(Right("txtUrl_Root"), Width("frSite") - 10);
    EXPECT_EQ(Right("txtFileFormat"), Width("frOpt_1") - 10);
    EXPECT_EQ(Right("lblFileFormat"), Width("frOpt_1") - 10);
    EXPECT_EQ(w->Find("frOpt_1")->geometry(), w->Find("frOpt_0")->geometry());
    EXPECT_EQ(Left("frBottom") + Right("frProgress_o"), Left("cmdClose") - 5);
    EXPECT_EQ(Right("frProgress_0"), Width("frProgress_o") - 5);
    EXPECT_EQ(Right("ChkStandby"), Width("frBottom") - 10);
  }
  ShowAt({3, 3});
  EXPECT_LT(w->window.width(), 300);
}

TEST_F(LayoutTest, TheBarIsTheFractionOfItsFrame) {
  StartWithJob();
  StatusBoard& board = w->workspace.board;
  board.SetProgressShown(true);
  for (const char* fraction : {"0.5", "1", "0"}) {
    board.SetDone(QLatin1StringView(fraction));
    ASSERT_TRUE(QTest::qWaitFor([&] { return w->Text("lblDone") == QLatin1StringView(fraction); }));
    const double frame = Width("frProgress_0");
    EXPECT_EQ(Width("lblProgress_0"), static_cast<int>(frame * QByteArray(fraction).toDouble()));
  }
}

// The controls whose caption their width or height cuts.
std::string CutCaptions(const QWidget& window) {
  QStringList cut;
  for (const QWidget* control : window.findChildren<QWidget*>()) {
    const bool captioned = qobject_cast<const QLabel*>(control) != nullptr ||
                           qobject_cast<const QAbstractButton*>(control) != nullptr;
    if (!captioned || !control->isVisible() || control->objectName() == "lblFileFormat" ||
        control->property("text").toString().isEmpty()) {
      continue;
    }
    const QSize hint = control->sizeHint();
    if (control->width() < hint.width() || control->height() < control->fontMetrics().height() ||
        !(control->parentWidget()->rect().contains(control->geometry()) ||
          control->parentWidget()->objectName() == "headerStrip")) {
      cut += control->objectName();
    }
  }
  return cut.join(u' ').toStdString();
}

// Pairs of neighbours in a frame that lie on each other.
std::string Overlaps(const QWidget& window) {
  QStringList pairs;
  for (const char* name : {"frSite", "frTop", "frBottom", "frReg", "frOpt_0", "frOpt_1", "FrSave",
                           "headerStrip", "frModify", "frStatus"}) {
    const auto* frame = window.findChild<QWidget*>(QLatin1StringView(name));
    const auto inside = frame->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
    for (const QWidget* one : inside) {
      for (const QWidget* other : inside) {
        if (one < other && one->isVisible() && other->isVisible() &&
            one->geometry().intersects(other->geometry())) {
          pairs += one->objectName() + u'/' + other->objectName();
        }
      }
    }
  }
  return pairs.join(u' ').toStdString();
}

TEST_F(LayoutTest, NoCaptionIsCutOrCoveredAtAnyFontSize) {
  const QFont before = QApplication::font();
  for (int points = 9; points <= 14; ++points) {
    QFont font = before;
    font.setPointSize(points);
    QApplication::setFont(font);
    Restart();
    StartWithJob();
    EXPECT_EQ(w->window.devicePixelRatio(),
              qEnvironmentVariable("QT_SCALE_FACTOR", "1").toDouble());
    const QSize first = w->window.size();
    w->workspace.job.EditFlag(TargetUrlItem::DispModify, true);
    w->workspace.job.EditFlag(TargetUrlItem::Modify, true);
    w->workspace.board.SetCancelShown(true);
    w->workspace.board.SetCancelCaption("キャンセル処理中");
    w->workspace.board.SetProgressShown(true);
    w->workspace.board.SetCounter("1000/1000");
    w->workspace.board.SetStandby(
        {.visible = true, .checked = true, .caption = "シャットダウン", .toolTip = {}});
    for (const bool byDate : {false, true}) {
      w->workspace.job.EditFlag(TargetUrlItem::Opt, byDate);
      w->workspace.job.EditBefore(0, "3");
      QTest::qWait(150);  // the counter is shown at most ten times a second
      for (const QSize size : {first, QSize(1000, 760)}) {
        w->Find("cmdDebug")->setVisible(size != first);
        ShowAt(size);
        EXPECT_EQ(CutCaptions(w->window), "") << points << " at " << size.width();
        EXPECT_EQ(Overlaps(w->window), "") << points << " at " << size.width();
      }
    }
    for (const char* action : {"mnuSetting", "mnuVersion", "mnuContext_List_Search"}) {
      w->Find<QAction>(action)->trigger();
    }
    for (const char* dialog : {"frmSetting", "frmAbout", "frmSearch"}) {
      ASSERT_TRUE(w->Find(dialog)->isVisible());
      EXPECT_EQ(CutCaptions(*w->Find(dialog)), "") << dialog << points;
    }
    frmInput input("x");
    input.show();
    EXPECT_EQ(CutCaptions(input), "") << points;
  }
  QApplication::setFont(before);
}

TEST_F(LayoutTest, HeadersStandOverTheirColumns) {
  StartWithJob();
  ShowAt({1000, 760});
  const auto* list = w->Find<LineListView>("lstUrl_All");
  for (int i = 0; i < 6; ++i) {
    const auto* header = w->Find<QLabel>(qPrintable(u"lblDescription_%1"_s.arg(i)));
    const int left = header->mapTo(&w->window, QPoint()).x();
    const int column = list->viewport()->mapTo(&w->window, QPoint()).x() + list->ColumnLeft(5 - i);
    EXPECT_EQ(left, column) << i;
  }
}

TEST_F(LayoutTest, ColoursStayReadableWhenThePaletteTurnsDark) {
  StartWithJob();
  w->workspace.board.SetStatus("done", StatusBoard::kBlue);
  const QPalette light = QApplication::palette();
  const auto contrast = [this](const char* label) {
    const QPalette palette = w->Find(label)->palette();
    return qAbs(palette.color(QPalette::WindowText).lightness() -
                palette.color(QPalette::Window).lightness());
  };
  EXPECT_EQ(w->Find("lblStatus")->palette().color(QPalette::WindowText), QColor(0, 0, 255));
  QPalette dark(QColor(53, 53, 53), QColor(30, 30, 30));
  dark.setColor(QPalette::Link, Qt::blue);
  QApplication::setPalette(dark);
  QCoreApplication::processEvents();
  for (const char* label : {"lblStatus", "lblFormat", "lblRegHelp", "Label5", "lblSavePath"}) {
    EXPECT_GT(contrast(label), 90) << label;
  }
  QApplication::setPalette(light);
}

}  // namespace
}  // namespace zentorin::test
