// The button list operations: new, duplicate, delete, names, cut, copy,
// paste, the default button, stacking and the Edit menu, through the main
// window's buttons and menu entries.
#include <QAction>
#include <QCheckBox>
#include <QGroupBox>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>
#include <QtTest>

#include "core/conv.h"
#include "core/settings.h"
#include "design/frm_design.h"
#include "project/button_record.h"
#include "properties/button_list.h"
#include "properties/button_panel.h"
#include "properties/frm_main.h"
#include "render/scene.h"
#include "tests/app/app_fixture.h"

using namespace kp;
using namespace kp::apptest;

class ButtonListTest : public WatchedTest {
  Q_OBJECT

 private:
  static ButtonPanel* Panel(App& a) { return static_cast<ButtonPanel*>(a.main()->panel); }
  static ButtonList& List(App& a) { return Panel(a)->List(); }
  static void Click(QPushButton* b) { QTest::mouseClick(b, Qt::LeftButton); }
  static QStringList Rows(App& a) {
    QStringList out;
    for (int r = 0; r < a.main()->lstButtons->count(); ++r)
      out << a.main()->lstButtons->item(r)->text();
    return out;
  }
  static void ClickRow(App& a, int row, Qt::KeyboardModifiers mods = Qt::NoModifier) {
    QListWidget* list = a.main()->lstButtons;
    QTest::mouseClick(list->viewport(), Qt::LeftButton, mods,
                      list->visualItemRect(list->item(row)).center());
    QTest::qWait(0);
    QCoreApplication::processEvents();
  }
  static int Warnings(App& a) {
    int n = 0;
    for (const ShownBox& b : a.prompter.boxes)
      if (b.title == "Warning!") ++n;
    return n;
  }
  // Opens the Edit menu as the menu bar does, so that its entries are set.
  static void OpenEdit(App& a) {
    emit a.main()->mnuEdit->aboutToShow();
  }

 private slots:
  void theFirstButtonOfAnEmptyAppletLiesAt10And10() {
    App a;
    a.program->Main("");
    Click(List(a).btnRemove);
    QCOMPARE(a.p().ButtonCount, 0);
    Click(List(a).btnAddBtn);
    QCOMPARE(a.p().ButtonCount, 1);
    QCOMPARE(a.p().button(1).x, i16{10});
    QCOMPARE(a.p().button(1).y, i16{10});
    QCOMPARE(Rows(a), QStringList{"Button 1"});
    QVERIFY(a.main()->lstButtons->item(0)->isSelected());
    const Surface& s = a.main()->Design()->scene().pButtons(1);
    QCOMPARE(s.Left, 10);
    QCOMPARE(s.Top, 10);
    // The new face stands on the design window at its place.
    QCOMPARE(a.main()->Design()->scene().Compose().pixelColor(10 + 50, 10 + 8),
             QColor(0, 0, 128));
  }

  void aNewButtonGoesUnderTheCurrentOneAndIsShownInThePanel() {
    App a;
    a.program->Main("");
    Click(List(a).btnAddBtn);
    QCOMPARE(a.p().ButtonCount, 2);
    QCOMPARE(a.p().iCurBtn, 2);
    QCOMPARE(int{a.p().button(2).y}, a.p().button(1).y + a.p().button(1).Height + 2);
    QCOMPARE(Panel(a)->txt_btnName->text(), QString("Button 2"));
    QCOMPARE(a.main()->frameBtnProp->title(), QString("Properties for Button 2"));
    QCOMPARE(a.main()->lstButtons->selectedItems().size(), 1);
    QVERIFY(a.main()->lstButtons->item(1)->isSelected());
    QVERIFY(!a.p().bProjectSaved);
  }

  void theDesignWindowsPopUpPlaceIsUsedOnce() {
    App a;
    a.program->Main("");
    frmDesign* d = a.main()->Design();
    d->sngNewBtnX = 200.5f;
    d->sngNewBtnY = 33.0f;
    Click(List(a).btnAddBtn);
    QCOMPARE(a.p().button(2).x, i16{200});
    QCOMPARE(a.p().button(2).y, i16{33});
    QCOMPARE(d->sngNewBtnX, 0.0f);
    QCOMPARE(d->sngNewBtnY, 0.0f);
  }

  void the102ndButtonRaisesTheWarningOnceAndThe103rdDoesNot() {
    App a;
    a.program->Main("");
    while (a.p().ButtonCount < 101) Click(List(a).btnAddBtn);
    QCOMPARE(Warnings(a), 0);
    Click(List(a).btnAddBtn);
    QCOMPARE(Warnings(a), 1);
    QCOMPARE(a.prompter.boxes.back().buttons, Buttons::OKCancelDefaultCancel);
    QVERIFY(a.prompter.boxes.back().text.find("Warning! Creation of more then 100 buttons") == 0);
    QCOMPARE(a.p().ButtonCount, 102);
    Click(List(a).btnAddBtn);
    QCOMPARE(Warnings(a), 1);
    QCOMPARE(a.p().ButtonCount, 103);
    QCOMPARE(a.main()->lstButtons->count(), 103);
  }

  void cancelAtTheWarningLeavesTheCountAndTheList() {
    App a;
    a.program->Main("");
    while (a.p().ButtonCount < 101) Click(List(a).btnAddBtn);
    a.prompter.answers = {Answer::Cancel};
    Click(List(a).btnDuplicate);
    QCOMPARE(a.p().ButtonCount, 101);
    QCOMPARE(a.main()->lstButtons->count(), 101);
  }

  void with1001ButtonsAddShowsTheTwoLineRefusalAndTheCountStays() {
    App a;
    a.program->Main("");
    a.p().ButtonCount = 1001;
    Click(List(a).btnAddBtn);
    QCOMPARE(a.p().ButtonCount, 1001);
    QCOMPARE(a.prompter.boxes.size(), size_t{1});
    QCOMPARE(a.prompter.boxes.back().text,
             std::string("Can't create more buttons on one applet.\r\nYou may use two applets "
                         "and put them on one page instead."));
    Click(List(a).btnDuplicate);
    QCOMPARE(a.p().ButtonCount, 1001);
    QCOMPARE(a.prompter.boxes.size(), size_t{2});
    a.p().ButtonCount = 1;
  }

  void aDuplicateOfAButtonAtX0LandsAt10And10() {
    App a;
    a.program->Main("");
    ButtonPanel* panel = Panel(a);
    panel->txtX->selectAll();
    QTest::keyClicks(panel->txtX, "0");
    QCOMPARE(a.p().button(1).x, i16{0});
    a.p().button(1).ProgramUP = "1 Button&!01;";
    Click(List(a).btnDuplicate);
    QCOMPARE(a.p().ButtonCount, 2);
    QCOMPARE(a.p().button(2).x, i16{10});
    QCOMPARE(a.p().button(2).y, i16{10});
    QCOMPARE(a.p().button(2).sBName, std::string("Button 2"));
    QCOMPARE(a.p().button(2).ProgramUP, std::string("1 Button&!01;"));
    QCOMPARE(Rows(a), (QStringList{"Button 1", "Button 2"}));
    // The copy lies on top of the design window.
    QCOMPARE(a.main()->Design()->scene().pButtons(2).Left, 10);
  }

  void namesButton1AndButton3InUseMakeTheNextFreeNameButton2() {
    App a;
    a.program->Main("");
    ButtonPanel* panel = Panel(a);
    Click(List(a).btnAddBtn);
    panel->txt_btnName->selectAll();
    QTest::keyClicks(panel->txt_btnName, "Button 3");
    QCOMPARE(a.p().button(2).sBName, std::string("Button 3"));
    QCOMPARE(Rows(a), (QStringList{"Button 1", "Button 3"}));
    QCOMPARE(a.main()->frameBtnProp->title(), QString("Properties for Button 3"));
    QCOMPARE(List(a).mnuDelete->text(), QString("Delete Button 3"));
    QCOMPARE(List(a).Get_FREE_sBName(0), std::string("Button 2"));
    Click(List(a).btnAddBtn);
    QCOMPARE(a.p().button(3).sBName, std::string("Button 2"));
  }

  void aNameTypedWithTwoRowsSelectedGoesToBoth() {
    App a;
    a.program->Main("");
    ButtonPanel* panel = Panel(a);
    Click(List(a).btnAddBtn);
    Click(List(a).btnAddBtn);
    ClickRow(a, 0);
    ClickRow(a, 2, Qt::ControlModifier);
    panel->txt_btnName->selectAll();
    QTest::keyClicks(panel->txt_btnName, " Same ");
    QTest::keyClick(panel->txt_btnName, Qt::Key_Return);
    QCOMPARE(a.p().button(1).sBName, std::string("Same"));
    QCOMPARE(a.p().button(3).sBName, std::string("Same"));
    QCOMPARE(a.p().button(2).sBName, std::string("Button 2"));
    QCOMPARE(Rows(a), (QStringList{"Same", "Button 2", "Same"}));
  }

  void deletingTheCurrentButtonMovesTheOthersDownAndSelectsTheFirst() {
    App a;
    a.program->Main("");
    Click(List(a).btnAddBtn);
    Click(List(a).btnAddBtn);
    ClickRow(a, 1);
    const tButton third = a.p().button(3);
    Click(List(a).btnRemove);
    QCOMPARE(a.p().ButtonCount, 2);
    QCOMPARE(a.p().iCurBtn, 1);
    QCOMPARE(Rows(a), (QStringList{"Button 1", "Button 3"}));
    QCOMPARE(a.p().button(2), third);
    QVERIFY(a.main()->lstButtons->item(0)->isSelected());
    QCOMPARE(Panel(a)->txt_btnName->text(), QString("Button 1"));
    // Surface 2 shows the third button's record at its place; the third
    // surface is gone from the picture.
    Scene& scene = a.main()->Design()->scene();
    QCOMPARE(scene.pButtons(2).Top, int{third.y});
    const QImage shown = scene.Compose();
    QCOMPARE(shown.pixelColor(third.x + 50, third.y + 8), QColor(0, 0, 128));
  }

  void afterDeletingTheLastButtonThePanelKeepsItsOldTextAndShowPropDoesNothing() {
    App a;
    a.program->Main("");
    ButtonPanel* panel = Panel(a);
    panel->txtLabel->selectAll();
    QTest::keyClicks(panel->txtLabel, "Old text");
    const tButton gone = a.p().button(1);
    Click(List(a).btnRemove);
    QCOMPARE(a.p().ButtonCount, 0);
    QCOMPARE(a.main()->lstButtons->count(), 0);
    QCOMPARE(panel->txtLabel->text(), QString("Old text"));
    panel->ShowProp(1);
    QCOMPARE(panel->txtLabel->text(), QString("Old text"));
    QVERIFY(!a.main()->Design()->picLabelPositioner.visible);
    // The design window shows the background where the button was.
    QCOMPARE(a.main()->Design()->scene().Compose().pixelColor(gone.x + 50, gone.y + 8),
             QColor(255, 255, 255));
  }

  void pasteNeverOverwritesTheCurrentButtonItAlwaysAddsOne() {
    App a;
    a.program->Main("");
    ButtonPanel* panel = Panel(a);
    panel->txtLabel->selectAll();
    QTest::keyClicks(panel->txtLabel, "Copied|label");
    OpenEdit(a);
    List(a).mnuCopy->trigger();
    QCOMPARE(a.store.Get(kSecParams, "_buffer").value_or(""), ButtonRecordText(a.p().button(1)));
    Click(List(a).btnAddBtn);
    panel->txtLabel->selectAll();
    QTest::keyClicks(panel->txtLabel, "Mine");
    List(a).mnuPaste->trigger();
    QCOMPARE(a.p().ButtonCount, 3);
    QCOMPARE(a.p().iCurBtn, 3);
    QCOMPARE(a.p().button(2).Label[1], std::string("Mine"));
    QCOMPARE(a.p().button(3).Label[1], std::string("Copied|label"));
    QCOMPARE(a.p().button(3).sBName, std::string("Button 3"));
    QCOMPARE(Panel(a)->txtLabel->text(), QString("Copied|label"));
    QCOMPARE(Rows(a).size(), 3);
  }

  void cutStoresTheButtonAndDeletesIt() {
    App a;
    a.program->Main("");
    Click(List(a).btnAddBtn);
    const std::string record = ButtonRecordText(a.p().button(2));
    OpenEdit(a);
    QVERIFY(List(a).mnuCut->isEnabled());
    List(a).mnuCut->trigger();
    QCOMPARE(a.p().ButtonCount, 1);
    QCOMPARE(a.store.Get(kSecParams, "_buffer").value_or(""), record);
    QCOMPARE(Rows(a), QStringList{"Button 1"});
  }

  void makeDefaultTellsWhatItDidAndNewButtonsFollowIt() {
    App a;
    a.program->Main("");
    ButtonPanel* panel = Panel(a);
    panel->txtWidth->selectAll();
    QTest::keyClicks(panel->txtWidth, "64");
    a.main()->mnuMakeDefaultBtn->trigger();
    QCOMPARE(a.prompter.boxes.back().text,
             std::string("Properties of this button will be used to create new ones."));
    Click(List(a).btnAddBtn);
    QCOMPARE(a.p().button(2).Width, i16{64});
    Click(List(a).btnRemove);
    Click(List(a).btnRemove);
    QCOMPARE(a.p().ButtonCount, 0);
    a.main()->mnuMakeDefaultBtn->trigger();
    QCOMPARE(a.prompter.boxes.back().text, std::string("Nothing selected"));
  }

  void bringToFrontAndSendBackMoveTheCurrentButtonOneStep() {
    App a;
    a.program->Main("");
    Click(List(a).btnAddBtn);
    Click(List(a).btnAddBtn);
    ClickRow(a, 0);
    OpenEdit(a);
    QVERIFY(List(a).mnuBringToFront->isEnabled());
    QVERIFY(!List(a).mnuSendBack->isEnabled());
    List(a).mnuBringToFront->trigger();
    QCOMPARE(a.p().iCurBtn, 2);
    QCOMPARE(a.p().button(2).sBName, std::string("Button 1"));
    QCOMPARE(Rows(a), (QStringList{"Button 2", "Button 1", "Button 3"}));
    OpenEdit(a);
    QVERIFY(List(a).mnuSendBack->isEnabled());
    List(a).mnuSendBack->trigger();
    QCOMPARE(a.p().iCurBtn, 1);
    QCOMPARE(Rows(a), (QStringList{"Button 1", "Button 2", "Button 3"}));
    // The last button has no neighbour above: not offered, and nothing moves.
    ClickRow(a, 2);
    OpenEdit(a);
    QVERIFY(!List(a).mnuBringToFront->isEnabled());
    List(a).mnuBringToFront_Click();
    QCOMPARE(a.p().iCurBtn, 3);
    QCOMPARE(a.p().button(3).sBName, std::string("Button 3"));
  }

  void theEditMenuFollowsTheSelection() {
    App a;
    a.program->Main("");
    OpenEdit(a);
    QVERIFY(!a.main()->mnuAlign->isEnabled());
    QVERIFY(List(a).mnuCopy->isEnabled());
    QVERIFY(List(a).mnuDelete->isEnabled());
    QCOMPARE(List(a).mnuDelete->text(), QString("Delete Button 1"));
    QVERIFY(!List(a).mnuBringToFront->isEnabled());
    QVERIFY(!List(a).mnuSendBack->isEnabled());
    Click(List(a).btnAddBtn);
    ClickRow(a, 0);
    ClickRow(a, 1, Qt::ControlModifier);
    OpenEdit(a);
    QVERIFY(a.main()->mnuAlign->isEnabled());
    QVERIFY(!List(a).mnuCut->isEnabled());
    QVERIFY(!List(a).mnuCopy->isEnabled());
    QVERIFY(!List(a).mnuDuplicate->isEnabled());
    QVERIFY(!List(a).mnuDelete->isEnabled());
    QVERIFY(List(a).mnuSendBack->isEnabled());
    Click(List(a).btnRemove);
    Click(List(a).btnRemove);
    OpenEdit(a);
    QCOMPARE(List(a).mnuDelete->text(), QString("Delete"));
    QVERIFY(!List(a).mnuDelete->isEnabled());
  }

  void theEditMenuListsTheButtonOperationsFirstThenTheDesignBlock() {
    App a;
    a.program->Main("");
    QStringList order;
    for (QAction* x : a.main()->mnuEdit->actions())
      order << (x->isSeparator() ? QString("-") : x->menu() ? x->menu()->objectName()
                                                            : x->objectName());
    const QStringList expected = {"mnuUndo",         "mnuRedo",     "-",
                                  "mnuCut",          "mnuCopy",     "mnuPaste", "-",
                                  "mnuDuplicate",    "mnuDelete",   "-",        "mnuBringToFront",
                                  "mnuSendBack",     "-",           "mnuAlign", "mnuGrid",
                                  "mnuLOCKED",       "mnuRefresh"};
    QCOMPARE(order, expected);
  }

  void onlyTheCurrentButtonIsDeletedWhateverElseIsSelected() {
    App a;
    a.program->Main("");
    Click(List(a).btnAddBtn);
    Click(List(a).btnAddBtn);
    ClickRow(a, 0);
    ClickRow(a, 1, Qt::ControlModifier);
    QCOMPARE(a.p().iCurBtn, 2);
    Click(List(a).btnRemove);
    QCOMPARE(Rows(a), (QStringList{"Button 1", "Button 3"}));
  }

  void listTextsHaveOneEntryAControl() {
    const UiTexts& t = ButtonList::Texts();
    std::set<std::string> names;
    for (const UiText& u : t) QVERIFY(names.insert(u.control).second);
    QCOMPARE(TextOf(t, "btnAddBtn"), std::string("&New Button"));
    QCOMPARE(TextOf(t, "btnAddBtn.ToolTip"), std::string("Create New Button"));
    QCOMPARE(TextOf(t, "btnDuplicate.ToolTip"), std::string("Make a Copy of Selected Button"));
    QCOMPARE(TextOf(t, "btnRemove"), std::string("&Delete Button"));
  }
};

QTEST_MAIN(ButtonListTest)
#include "test_button_list.moc"
