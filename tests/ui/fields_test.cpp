// SPDX-License-Identifier: MIT
#include "tests/ui/main_window_test.h"
#include "ui/dialogs/help_pages.h"

namespace zentorin::test {
namespace {

class FieldsTest : public MainWindowTest {
 protected:
  QString Tag() const { return w->workspace.urlList.Tag(); }
};

TEST_F(FieldsTest, AListThatIsTypedInSavedAndOpenedAgainShowsTheSameFields) {
  // A list that cannot be read keeps no window shut.
  w->Start({"-f", "none.dat"});
  ASSERT_TRUE(QTest::qWaitForWindowActive(&w->window));
  EXPECT_EQ(w->messages.Texts().filter("none.dat").size(), 1);
  w->messages.boxes.clear();
  w->Click("mnuNew");
  using Typed = std::pair<const char*, const char*>;
  for (const auto& [field, text] :
       {Typed("txtDescription", "my job"), Typed("txtUrl_Root", "http://h/{yyyy}"),
        Typed("cmbUrl_SubPattern", "href=\"(.+?)\""), Typed("cmbDepth", "2"),
        Typed("cmbFilePattern", "x\\.mp3"), Typed("txtSavePath", "my/save*d")}) {
    w->Type(field, text);
  }
  for (const char* box : {"ChkSkip", "ChkDispModify", "ChkModify"}) w->Click(box);
  w->Type("cmbDate", "3");
  EXPECT_EQ(Tag(), "Dirty");
  const QString line = w->workspace.urlList.Item(0).ToLine();
  EXPECT_EQ(line.split(u'\t'),
            (QStringList{" 1", "my job", "http://h/{yyyy}", "href=\"(.+?)\"", "x\\.mp3", "mysaved",
                         "3", "", ",", "0", "1", "0", "0", "1", "21", "0", "1"}));

  w->dialogs.answer = home.Path("new.dat");
  QTest::keyClick(&w->window, Qt::Key_S, Qt::ControlModifier);
  EXPECT_EQ(w->dialogs.asked.proposedFile, home.Path("無題.dat"));
  EXPECT_EQ(Tag(), QString());
  EXPECT_EQ(w->window.windowTitle(), "Zentorin 0.10　-　new.dat");

  w->Click("mnuNew");
  EXPECT_EQ(w->Text("txtDescription"), QString());
  QTest::keyClick(&w->window, Qt::Key_O, Qt::ControlModifier);
  EXPECT_EQ(w->workspace.urlList.Item(0).ToLine(), line);
  EXPECT_EQ(w->Text("cmbDate"), "  3");
  // Neither loading nor walking through the fields is an edit.
  for (int i = 0; i < 40; ++i) QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
  EXPECT_EQ(Tag(), "");
  // Opening neither asks nor touches the mark.
  w->Type("txtDescription", "x");
  QTest::keyClick(&w->window, Qt::Key_O, Qt::ControlModifier);
  EXPECT_EQ(w->Text("txtDescription"), "my job");
  EXPECT_EQ(Tag(), "Dirty");
  EXPECT_EQ(w->messages.Texts(), QStringList());
}

TEST_F(FieldsTest, KeysThatAFieldCannotHoldAreSwallowed) {
  StartWithJob();
  w->Click("ChkDispModify");
  w->Click("ChkModify");
  w->workspace.job.Edit(TargetUrlItem::Date, {});
  using Case = std::tuple<const char*, QString, QString>;
  for (const auto& [control, typed, left] :
       {Case("cmbDate", "a1x.5-9", "1.5"), Case("cmbDepth", "a.7", "1"),
        Case("txtSavePath", "a/:*?\"|<>\\b", "savea\\")}) {
    w->Find(control)->setFocus();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_End);
    QTest::keyClicks(QApplication::focusWidget(), typed);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backspace);
    EXPECT_EQ(w->Text(control), left) << control;
  }
  // What an input method commits, and a third level that comes as Ctrl and Alt.
  QInputMethodEvent commit;
  commit.setCommitString("年2月");
  w->Find("cmbDepth")->setFocus();
  QApplication::sendEvent(QApplication::focusWidget(), &commit);
  QTest::keyClick(QApplication::focusWidget(), 'e', Qt::ControlModifier | Qt::AltModifier);
  EXPECT_EQ(w->Text("cmbDepth"), "12");
}

TEST_F(FieldsTest, TheModeDecidesWhatIsShown) {
  StartWithJob();
  const QString all = "frOpt_0 frOpt_1 frGo_All";
  EXPECT_EQ(w->Seen(all), "frOpt_0 frGo_All");
  w->Click("Opt_1");
  EXPECT_EQ(w->Seen(all), "frOpt_1");
  EXPECT_FALSE(w->Find("ChkTreeFolder")->isEnabled());
  w->Type("txtFileFormat", "http://h/{yyyymmdd}.mp3");
  EXPECT_EQ(w->Text("lblFileFormat"), "http://h/20240501.mp3");
  w->Type("cmbBefore_0", "0x");
  w->Type("cmbBefore_1", "1");
  EXPECT_EQ(w->Text("lblBeforeDate"), "2024/05/01～2024/04/30");
  EXPECT_EQ(w->Cell(1, FileListRow::Address), "http://h/20240501.mp3");
  // A click on the job that is shown already leaves its list as the user has it.
  auto* rows = w->Find<LineListView>("lstUrl_All");
  rows->clearSelection();
  QWidget* jobs = w->Find<LineListView>("lstTargetUrl")->viewport();
  QTest::mouseClick(jobs, Qt::LeftButton, {}, {20, 8});
  QTest::mouseClick(jobs, Qt::RightButton, {}, {20, 8});
  QTest::keyClick(w->Find("mnuContext_TargetUrl"), Qt::Key_Escape);
  EXPECT_FALSE(rows->selectionModel()->hasSelection());
  w->workspace.files.ClearFileList();
  QTest::mouseClick(jobs, Qt::LeftButton, {}, {20, 8});
  EXPECT_EQ(rows->model()->rowCount(), 2);
  w->Click("Opt_0");
  w->Find<QComboBox>("cmbUrl_SubPattern")->lineEdit()->selectAll();
  w->Find("cmbUrl_SubPattern")->setFocus();
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Delete);
  EXPECT_EQ(w->Seen("frDepth cmdGo_All_0 cmdGo_All_1"), "cmdGo_All_1");
}

TEST_F(FieldsTest, AChoiceFromAPatternListLeavesOnlyItsExpression) {
  StartWithJob();
  auto* combo = w->Find<QComboBox>("cmbFilePattern");
  combo->showPopup();
  const QRect entry = combo->view()->visualRect(combo->model()->index(1, 0));
  QTest::mouseMove(combo->view()->viewport(), entry.center());
  QTest::mouseClick(combo->view()->viewport(), Qt::LeftButton, {}, entry.center());
  const QString expression = "<.+?(?:href|url)=[\"']?(.+?\\.mp3)[\"' >]";
  EXPECT_TRUE(QTest::qWaitFor([&] { return combo->currentText() == expression; }));
  EXPECT_EQ(w->workspace.job[TargetUrlItem::FilePattern], expression);
  // A text that merely reads like an entry is no choice.
  const QString alike = "(?:a|b)\\.zip";
  combo->addItem(alike);
  w->workspace.job.Edit(TargetUrlItem::FilePattern, alike);
  combo->setFocus();
  QTest::keyClick(combo, Qt::Key_Tab);
  EXPECT_FALSE(combo->findChild<QTimer*>("Timer_ComboFile")->isActive());
  EXPECT_EQ(w->workspace.job[TargetUrlItem::FilePattern], alike);
}

TEST_F(FieldsTest, WheelAndKeysStepThroughTheEntriesOnlyFromOneOfThem) {
  StartWithJob();
  const auto turn = [this](const char* name) {
    auto* combo = w->Find(name);
    QWheelEvent wheel({5, 5}, combo->mapToGlobal(QPoint(5, 5)), {}, {0, -120}, Qt::NoButton, {},
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(combo, &wheel);
    return w->Text(name);
  };
  EXPECT_EQ(turn("cmbDepth"), "1") << "not in use";
  w->Find("cmbDepth")->setFocus();
  EXPECT_EQ(turn("cmbDepth"), "2");
  QTest::keyClick(w->Find("cmbDepth"), Qt::Key_Down);
  EXPECT_EQ(w->workspace.job[TargetUrlItem::Depth], "3");
  const QString expression = w->Text("cmbFilePattern");
  auto* combo = w->Find<QComboBox>("cmbFilePattern");
  combo->setFocus();
  EXPECT_EQ(turn("cmbFilePattern"), expression);
  QTest::keyClick(combo, Qt::Key_Up);
  EXPECT_TRUE(combo->view()->isVisible());
  EXPECT_EQ(combo->currentText(), expression);
}

TEST_F(FieldsTest, TheSaveFolderIsPickedAndOpenedAndTheExamplesToo) {
  StartWithJob();
  for (const QString& picked : {home.Path("sub/dir"), QString()}) {
    w->dialogs.answer = picked;
    w->Click("cmdSavePath");
    EXPECT_EQ(w->Text("txtSavePath"), "sub\\dir");
  }
  EXPECT_EQ(w->dialogs.asked.folder, home.Path("sub/dir"));
  EXPECT_EQ(Tag(), "Dirty");
  QTest::mouseDClick(w->Find("lblSavePath"), Qt::LeftButton);
  QTest::keyClick(w->Find("lblSavePath"), Qt::Key_Return);
  w->Click("lblRegHelp");
  const QString folder = "folder:" + home.Path("sub/dir");
  EXPECT_EQ(w->opener.opened,
            QStringList({folder, folder, "default:" + FindHelpFolder() + "/patterns.html"}));
}

TEST_F(FieldsTest, ADroppedListIsOpenedAlsoWhereItFallsOnAField) {
  StartWithJob();
  auto* field = w->Find("txtUrl_Root");
  QMimeData data;
  data.setUrls({QUrl::fromLocalFile(home.Write("other.dat", "1 description = other\r\n"))});
  QDragEnterEvent enter({3, 3}, Qt::CopyAction, &data, Qt::LeftButton, {});
  QApplication::sendEvent(field, &enter);
  QDropEvent drop({3, 3}, Qt::CopyAction, &data, Qt::LeftButton, {});
  QApplication::sendEvent(field, &drop);
  EXPECT_EQ(w->Text("txtDescription"), "other");
}

TEST_F(FieldsTest, EveryControlThatTakesTheFocusHasANameToBeReadOut) {
  w->Start();
  for (const QWidget* control : w->window.findChildren<QWidget*>()) {
    const QWidget* parent = control->parentWidget();
    const bool isPart = control->inherits("QMenuBar") || control->inherits("QMenu") ||
                        control->objectName().startsWith("qt_") ||
                        (control->inherits("QLineEdit") && parent->inherits("QComboBox")) ||
                        (control->inherits("QAbstractItemView") && parent->isWindow());
    if (isPart || control->focusPolicy() == Qt::NoFocus) continue;
    EXPECT_NE(control->accessibleName() + control->property("text").toString(), "")
        << control->metaObject()->className() << " " << control->objectName().toStdString();
  }
}

}  // namespace
}  // namespace zentorin::test
