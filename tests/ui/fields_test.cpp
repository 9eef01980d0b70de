// SPDX-License-Identifier: MIT
#include "tests/ui/main_window_test.h"

namespace zentorin::test {
namespace {

class FieldsTest : public MainWindowTest {
 protected:
  QString Tag() const { return w->workspace.urlList.Tag(); }
  void Trigger(const char* action) const { w->Find<QAction>(action)->trigger(); }
};

TEST_F(FieldsTest, AListThatIsTypedInSavedAndOpenedAgainShowsTheSameFields) {
  w->Start();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&w->window));
  Trigger("mnuNew");
  EXPECT_EQ(Tag(), QString());
  w->Type("txtDescription", "my job");
  w->Type("txtUrl_Root", "http://h/{yyyy}");
  w->Type("cmbUrl_SubPattern", "href=\"(.+?)\"");
  w->Type("cmbDepth", "2");
  w->Type("cmbFilePattern", "x\\.mp3");
  w->Type("txtSavePath", "my/save*d");
  w->Click("ChkSkip");
  w->Click("ChkDispModify");
  w->Click("ChkModify");
  w->Type("cmbDate", "3");
  EXPECT_EQ(Tag(), "Dirty");
  const QString line = w->workspace.urlList.Line(0);
  EXPECT_EQ(line.split(u'\t'),
            (QStringList{" 1", "my job", "http://h/{yyyy}", "href=\"(.+?)\"", "x\\.mp3", "mysaved",
                         "3", "", ",", "0", "1", "0", "0", "1", "21", "0", "1"}));

  w->dialogs.answer = home.Path("new.dat");
  QTest::keyClick(&w->window, Qt::Key_S, Qt::ControlModifier);
  EXPECT_EQ(w->dialogs.asked.proposedFile, home.Path("無題.dat"));
  EXPECT_EQ(Tag(), QString());
  EXPECT_EQ(w->window.windowTitle(), "Zentorin 0.10　-　new.dat");

  Trigger("mnuNew");
  EXPECT_EQ(w->EditText("txtDescription"), QString());
  EXPECT_EQ(w->window.windowTitle(), "Zentorin 0.10");
  QTest::keyClick(&w->window, Qt::Key_O, Qt::ControlModifier);
  EXPECT_EQ(w->workspace.urlList.Line(0), line);
  EXPECT_EQ(w->EditText("txtDescription"), "my job");
  EXPECT_EQ(w->EditText("cmbDate"), "  3");
  EXPECT_EQ(w->Seen("ChkModify frModify frDepth cmdGo_All_0"),
            "ChkModify frModify frDepth cmdGo_All_0");
  // Neither loading nor walking through the fields is an edit.
  for (int i = 0; i < 40; ++i) QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
  EXPECT_EQ(Tag(), "");
  // Opening neither asks nor touches the mark.
  w->Type("txtDescription", "x");
  QTest::keyClick(&w->window, Qt::Key_O, Qt::ControlModifier);
  EXPECT_EQ(w->EditText("txtDescription"), "my job");
  EXPECT_EQ(Tag(), "Dirty");
  EXPECT_EQ(w->messages.Texts(), QStringList());
}

TEST_F(FieldsTest, KeysThatAFieldCannotHoldAreSwallowed) {
  StartWithJob();
  w->Click("ChkDispModify");
  w->Click("ChkModify");
  w->workspace.job.Edit(TargetUrlItem::Date, {});
  const struct {
    const char* control;
    QString typed;
    QString left;
  } cases[] = {{"cmbDate", "a1x.5-", "1.5"},
               {"cmbDepth", "a.7", "17"},
               {"txtSavePath", "a/:*?\"|<>\\b", "savea\\b"}};
  for (const auto& [control, typed, left] : cases) {
    w->Find(control)->setFocus();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_End);
    QTest::keyClicks(QApplication::focusWidget(), typed);
    EXPECT_EQ(w->EditText(control), left) << control;
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backspace);
    EXPECT_EQ(w->EditText(control), left.chopped(1)) << control;
  }
  // What an input method commits, and a third level that comes as Ctrl and Alt.
  QInputMethodEvent commit;
  commit.setCommitString("年2月");
  w->Find("cmbDepth")->setFocus();
  QApplication::sendEvent(QApplication::focusWidget(), &commit);
  EXPECT_EQ(w->EditText("cmbDepth"), "12");
  QTest::keyClick(QApplication::focusWidget(), 'e', Qt::ControlModifier | Qt::AltModifier);
  EXPECT_EQ(w->EditText("cmbDepth"), "12");
}

TEST_F(FieldsTest, TheModeDecidesWhatIsShown) {
  StartWithJob();
  const QString all = "frOpt_0 frOpt_1 frGo_All";
  EXPECT_EQ(w->Seen(all), "frOpt_0 frGo_All");
  w->Click("Opt_1");
  EXPECT_EQ(w->Seen(all), "frOpt_1");
  EXPECT_FALSE(w->Find("ChkOnlyInSite")->isEnabled());
  EXPECT_FALSE(w->Find("ChkTreeFolder")->isEnabled());
  EXPECT_EQ(Tag(), "Dirty");
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
  EXPECT_TRUE(w->Find("ChkTreeFolder")->isEnabled());
  auto* sub = w->Find<QComboBox>("cmbUrl_SubPattern");
  sub->setFocus();
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_A, Qt::ControlModifier);
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Delete);
  EXPECT_EQ(w->Seen("frDepth cmdGo_All_0 cmdGo_All_1"), "cmdGo_All_1");
}

TEST_F(FieldsTest, AChoiceFromAPatternListLeavesOnlyItsExpression) {
  StartWithJob();
  auto* combo = w->Find<QComboBox>("cmbFilePattern");
  EXPECT_EQ(combo->maxVisibleItems(), 20);
  combo->showPopup();
  const QRect entry = combo->view()->visualRect(combo->model()->index(1, 0));
  QTest::mouseMove(combo->view()->viewport(), entry.center());
  QTest::mouseClick(combo->view()->viewport(), Qt::LeftButton, {}, entry.center());
  const QString expression = "<.+?(?:href|url)=[\"']?(.+?\\.mp3)[\"' >]";
  EXPECT_TRUE(QTest::qWaitFor([&] { return combo->currentText() == expression; }));
  EXPECT_EQ(w->workspace.job[TargetUrlItem::FilePattern], expression);
  EXPECT_EQ(Tag(), "Dirty");
  // A text that merely reads like an entry is no choice, and a locked box opens no editor.
  const QString alike = "(?:a|b)\\.zip";
  combo->addItem(alike);
  w->workspace.job.Edit(TargetUrlItem::FilePattern, alike);
  combo->setFocus();
  QTest::keyClick(combo, Qt::Key_Tab);
  QTest::qWait(30);
  EXPECT_EQ(w->workspace.job[TargetUrlItem::FilePattern], alike);
  w->workspace.board.SetBusy(true);
  QTest::mouseDClick(combo->lineEdit(), Qt::LeftButton);
  EXPECT_EQ(w->window.findChild<QWidget*>("frmInput"), nullptr);
}

TEST_F(FieldsTest, WheelAndKeysStepThroughTheEntriesOnlyFromOneOfThem) {
  StartWithJob();
  const auto turn = [this](const char* name) {
    auto* combo = w->Find(name);
    QWheelEvent wheel({5, 5}, combo->mapToGlobal(QPoint(5, 5)), {}, {0, -120}, Qt::NoButton, {},
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(combo, &wheel);
    return w->EditText(name);
  };
  EXPECT_EQ(turn("cmbDepth"), "1") << "not in use";
  w->Find("cmbDepth")->setFocus();
  EXPECT_EQ(turn("cmbDepth"), "2");
  QTest::keyClick(w->Find("cmbDepth"), Qt::Key_Down);
  EXPECT_EQ(w->workspace.job[TargetUrlItem::Depth], "3");
  const QString expression = w->EditText("cmbFilePattern");
  auto* combo = w->Find<QComboBox>("cmbFilePattern");
  combo->setFocus();
  EXPECT_EQ(turn("cmbFilePattern"), expression);
  QTest::keyClick(combo, Qt::Key_Up);
  EXPECT_TRUE(combo->view()->isVisible());
  EXPECT_EQ(combo->currentText(), expression);
}

TEST_F(FieldsTest, TheSaveFolderIsPickedAndOpened) {
  StartWithJob();
  w->dialogs.answer = home.Path("sub/dir");
  w->Click("cmdSavePath");
  EXPECT_EQ(w->dialogs.asked.title, "保存フォルダの指定");
  EXPECT_EQ(w->dialogs.asked.folder, home.Path("save"));
  EXPECT_EQ(w->EditText("txtSavePath"), "sub\\dir");
  EXPECT_EQ(Tag(), "Dirty");
  QTest::mouseDClick(w->Find("lblSavePath"), Qt::LeftButton);
  QTest::keyClick(w->Find("lblSavePath"), Qt::Key_Return);
  EXPECT_EQ(w->opener.opened, QStringList(2, "folder:" + home.Path("sub/dir")));
  w->dialogs.answer.clear();
  w->Click("cmdSavePath");
  EXPECT_EQ(w->EditText("txtSavePath"), "sub\\dir");
}

TEST_F(FieldsTest, JobsMoveAndStaySelected) {
  StartWithJob();
  w->workspace.urlList.InsertBelow(0, TargetUrlItem());
  w->Click("cmdOrder_0");
  const auto* list = w->Find<LineListView>("lstTargetUrl");
  EXPECT_EQ(list->currentIndex().row(), 1);
  EXPECT_EQ(list->currentIndex().data().toString().left(6), " 2\tjob");
  // A click with Ctrl on the selected job does not take the selection away.
  QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::ControlModifier,
                    list->visualRect(list->currentIndex()).center());
  EXPECT_TRUE(list->selectionModel()->isSelected(list->model()->index(1, 0)));
  w->Click("cmdOrder_1");
  EXPECT_EQ(w->workspace.urlList.SelectedRow(), 0);
  QTest::keyClick(w->Find("lstTargetUrl"), Qt::Key_Down);
  EXPECT_EQ(w->EditText("txtDescription"), QString());
}

TEST_F(FieldsTest, ADroppedListIsOpenedAlsoWhereItFallsOnAField) {
  StartWithJob();
  QMimeData data;
  data.setUrls({QUrl::fromLocalFile(home.Write("other.dat", "1 description = other\r\n"))});
  QDragEnterEvent enter({3, 3}, Qt::CopyAction, &data, Qt::LeftButton, {});
  QApplication::sendEvent(w->Find("txtUrl_Root"), &enter);
  QDropEvent drop({3, 3}, Qt::CopyAction, &data, Qt::LeftButton, {});
  QApplication::sendEvent(w->Find("txtUrl_Root"), &drop);
  EXPECT_EQ(w->EditText("txtDescription"), "other");
  EXPECT_EQ(w->window.windowTitle(), "Zentorin 0.10　-　other.dat");
}

TEST_F(FieldsTest, EveryControlThatTakesTheFocusHasANameToBeReadOut) {
  w->Start();
  for (const QWidget* control : w->window.findChildren<QWidget*>()) {
    if (control->focusPolicy() == Qt::NoFocus || control->objectName().startsWith("qt_")) continue;
    if (control->inherits("QLineEdit") && control->parentWidget()->inherits("QComboBox")) continue;
    if (control->inherits("QMenuBar") || control->inherits("QMenu")) continue;
    if (control->inherits("QAbstractItemView") && control->parentWidget()->isWindow()) continue;
    EXPECT_FALSE(control->accessibleName().isEmpty() &&
                 control->property("text").toString().isEmpty())
        << control->metaObject()->className() << " " << control->objectName().toStdString();
  }
}

}  // namespace
}  // namespace zentorin::test
