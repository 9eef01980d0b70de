// SPDX-License-Identifier: MIT
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
};

TEST_F(LayoutTest, WhatStretchesKeepsItsDistanceToTheEdgesAndTheBarFillsItsFraction) {
  StartWithJob();
  // How far each of the controls stays from the right or lower edge of what it lies in.
  const QString right =
      u"frTime frTop lstTargetUrl cmdClose frBottom frSite FrSave txtSavePath cmbUrl_SubPattern "
      "cmbFilePattern txtUrl_Root txtFileFormat lblFileFormat lstUrl_All frProgress_0 ChkStandby"_s;
  const QString lower = u"lstTargetUrl cmdClose frBottom lstUrl_All"_s;
  const auto distances = [&] {
    QStringList found;
    for (const QString& name : right.split(u' ')) {
      const auto* control = w->Find(qPrintable(name));
      const QRect free = control->parentWidget()->rect();
      found << name + QString::number(free.right() - control->geometry().right());
      if (!lower.contains(name)) continue;
      found << QString::number(free.bottom() - control->geometry().bottom());
    }
    return found;
  };
  ShowAt({700, 600});
  const QStringList first = distances();
  for (const QSize size : {QSize(1600, 1000), QSize(1000, 760)}) {
    ShowAt(size);
    EXPECT_EQ(distances(), first) << size.width();
  }
  const auto* list = w->Find<LineListView>("lstUrl_All");
  const int left = list->viewport()->mapTo(&w->window, QPoint()).x();
  for (int i = 0; i < 6; ++i) {
    const auto* header = w->Find<QLabel>(qPrintable(QString("lblDescription_%1").arg(i)));
    EXPECT_EQ(header->mapTo(&w->window, QPoint()).x(), left + list->ColumnLeft(5 - i)) << i;
  }
  const Activity::Scope recording(w->workspace.activity, Phase::Recording);
  w->workspace.activity.SetRecorded(0.5);
  ASSERT_TRUE(QTest::qWaitFor([&] { return w->Text("lblDone") == "0.50"; }));
  EXPECT_EQ(w->Find("lblProgress_0")->width(), w->Find("frProgress_0")->width() / 2);
  ShowAt({3, 3});
  EXPECT_LT(w->window.width(), 300);
}

// The controls whose caption their width or height cuts.
std::string CutCaptions(const QWidget& window) {
  QStringList cut;
  for (const QWidget* control : window.findChildren<QWidget*>()) {
    const bool captioned = control->inherits("QLabel") || control->inherits("QAbstractButton");
    if (!captioned || !control->isVisible() || control->objectName() == "lblFileFormat" ||
        control->property("text").toString().isEmpty()) {
      continue;
    }
    const bool inside = control->parentWidget()->rect().contains(control->geometry()) ||
                        control->parentWidget()->objectName() == "headerStrip";
    if (!inside || control->width() < control->sizeHint().width() ||
        control->height() < control->fontMetrics().height()) {
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
    Activity& activity = w->workspace.activity;
    auto downloading = std::make_unique<Activity::Scope>(activity, Phase::Downloading);
    activity.SetBatch(true);
    activity.SetCancelling();
    activity.SetRow({.number = 1000, .count = 1000});
    activity.SetAfterBatch({.offered = true, .chosen = true, .action = "シャットダウン"});
    for (const bool byDate : {false, true}) {
      w->workspace.job.EditFlag(TargetUrlItem::Opt, byDate);
      w->workspace.job.EditBefore(0, "3");
      ASSERT_TRUE(QTest::qWaitFor([&] {
        return w->Text("lblProgress_o") == "1000/1000" &&
               w->Text("lblUrl_All_Cnt").toInt() == w->workspace.files.Count();
      }));
      for (const QSize size : {first, QSize(1000, 760)}) {
        ShowAt(size);
        EXPECT_EQ(CutCaptions(w->window), "") << points << " at " << size.width();
        EXPECT_EQ(Overlaps(w->window), "") << points << " at " << size.width();
      }
    }
    downloading.reset();
    using Dialog = std::pair<const char*, const char*>;
    for (const auto& [action, dialog] :
         {Dialog("mnuSetting", "frmSetting"), Dialog("mnuVersion", "frmAbout"),
          Dialog("mnuContext_List_Search", "frmSearch")}) {
      w->Find<QAction>(action)->trigger();
      ASSERT_TRUE(w->Find(dialog)->isVisible());
      EXPECT_EQ(CutCaptions(*w->Find(dialog)), "") << dialog << points;
    }
    frmInput input("x");
    input.show();
    EXPECT_EQ(CutCaptions(input), "") << points;
  }
  QApplication::setFont(before);
}

TEST_F(LayoutTest, ColoursStayReadableWhenThePaletteTurnsDark) {
  StartWithJob();
  w->workspace.activity.Say("done", Tone::Good);
  const QPalette light = QApplication::palette();
  QPalette dark(QColor(53, 53, 53), QColor(30, 30, 30));
  dark.setColor(QPalette::Link, Qt::blue);
  QApplication::setPalette(dark);
  QCoreApplication::processEvents();
  for (const char* label : {"lblStatus", "lblFormat", "lblRegHelp", "Label5", "lblSavePath"}) {
    const QPalette shown = w->Find(label)->palette();
    EXPECT_GT(qAbs(shown.color(QPalette::WindowText).lightness() -
                   shown.color(QPalette::Window).lightness()),
              90)
        << label;
  }
  QApplication::setPalette(light);
}

}  // namespace
}  // namespace zentorin::test
