// The action editor: a program of a button event or of the applet, edited
// through the editor's controls with the mouse and the keys, and written
// to the model only by OK.
#include <QClipboard>
#include <QColorDialog>
#include <QComboBox>
#include <QGuiApplication>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QToolButton>
#include <QtTest>

#include "core/settings.h"
#include "properties/button_list.h"
#include "properties/button_panel.h"
#include "properties/frm_main.h"
#include "properties/frm_set_action.h"
#include "tests/app/app_fixture.h"

using namespace kp;
using namespace kp::apptest;

namespace {

ButtonPanel* Panel(App& a) { return static_cast<ButtonPanel*>(a.main()->panel); }
frmSetAction* Editor(App& a) { return frmSetAction::Of(*a.main(), a.p(), a.env()); }

// Opens the editor for the panel's event `event` (its row in cmbAction) of
// the current button and runs `act` in it; `act` closes it.
bool EditButtonEvent(App& a, int event, std::function<void(frmSetAction*)> act) {
  QComboBox* events = Panel(a)->cmbAction;
  QTest::keyClick(events, Qt::Key_Home);
  for (int i = 0; i < event; ++i) QTest::keyClick(events, Qt::Key_Down);
  auto ran = WhenWindow("frmSetAction", [act](QWidget* w) { act(static_cast<frmSetAction*>(w)); });
  QTest::mouseClick(Panel(a)->btnAction, Qt::LeftButton);
  return *ran;
}

bool EditKey(App& a, const std::string& key, std::function<void(frmSetAction*)> act) {
  auto ran = WhenWindow("frmSetAction", [act](QWidget* w) { act(static_cast<frmSetAction*>(w)); });
  Editor(a)->myShow(key, " Applet Actions: On Applet Start");
  return *ran;
}

void ChooseItem(QComboBox* c, int index) {
  c->setFocus();
  QTest::keyClick(c, Qt::Key_Home);
  for (int i = 0; i < index; ++i) QTest::keyClick(c, Qt::Key_Down);
}

void Type(QLineEdit* f, const QString& text) {
  QTest::mouseClick(f, Qt::LeftButton);
  QTest::keyClick(f, Qt::Key_A, Qt::ControlModifier);
  QTest::keyClick(f, Qt::Key_Delete);
  if (!text.isEmpty()) QTest::keyClicks(f, text);
}

void Type(QComboBox* c, const QString& text) { Type(c->lineEdit(), text); }

void ClickRow(QListWidget* list, int row) {
  QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier,
                    list->visualItemRect(list->item(row)).center());
}

QStringList Rows(QListWidget* list) {
  QStringList out;
  for (int i = 0; i < list->count(); ++i) out << list->item(i)->text();
  return out;
}

// A row of the main window's button list, clicked with `mods`.
void ClickButtonRow(App& a, int row, Qt::KeyboardModifiers mods = Qt::NoModifier) {
  QListWidget* list = a.main()->lstButtons;
  QTest::mouseClick(list->viewport(), Qt::LeftButton, mods,
                    list->visualItemRect(list->item(row)).center());
  QTest::qWait(0);
  QCoreApplication::processEvents();
}

QString LastCode(frmSetAction* e) { return e->lstActionsCode->item(e->lstActionsCode->count() - 1)->text(); }

// One command of each kind: how its fields are filled, its text, and a
// change of one field with the text that Replace then makes.
struct Case {
  int action;
  std::function<void(frmSetAction*)> fill;
  QString text;
  std::function<void(frmSetAction*)> change;
  QString changed;
  std::function<void(frmSetAction*)> readBack;  // the fields after a click on the row
};

std::vector<Case> TenCommands() {
  return {
      {0, [](frmSetAction* e) { Type(e->cmbButtonNumber, "News"); }, "1 News",
       [](frmSetAction* e) { Type(e->cmbButtonNumber, "My Button"); }, "1 My&!0Button",
       [](frmSetAction* e) { QCOMPARE(e->cmbButtonNumber->currentText(), QString("News")); }},
      {1, [](frmSetAction* e) { Type(e->cmbButtonNumber, "Home"); }, "2 Home",
       [](frmSetAction* e) { Type(e->cmbButtonNumber, "News"); }, "2 News",
       [](frmSetAction* e) { QCOMPARE(e->cmbButtonNumber->currentText(), QString("Home")); }},
      {2,
       [](frmSetAction* e) {
         Type(e->cmbButtonNumber, "Home");
         Type(e->txtX, "10");
         Type(e->txtY, "");
         Type(e->txtWidth, "20+");
         Type(e->txtHeight, "x");
         Type(e->txtFrames, "-5");
         Type(e->txtFrameDelay, "100");
       },
       "3 Home 10 -999 20+ -999 5 100",
       [](frmSetAction* e) { Type(e->txtY, "7-"); }, "3 Home 10 7- 20+ -999 5 100",
       [](frmSetAction* e) {
         QCOMPARE(e->txtX->text(), QString("10"));
         QCOMPARE(e->txtY->text(), QString(""));
         QCOMPARE(e->txtWidth->text(), QString("20+"));
         QCOMPARE(e->txtHeight->text(), QString(""));
         QCOMPARE(e->txtFrames->text(), QString("5"));
         QCOMPARE(e->txtFrameDelay->text(), QString("100"));
       }},
      {3,
       [](frmSetAction* e) {
         Type(e->cmbButtonNumber, "News");
         ChooseItem(e->cmbStateSelector, 1);
         Type(e->txtLabel, "a;b c");
       },
       "4 News 2 a&!1b&!0c", [](frmSetAction* e) { ChooseItem(e->cmbStateSelector, 2); },
       "4 News 3 a&!1b&!0c",
       [](frmSetAction* e) {
         QCOMPARE(e->txtLabel->text(), QString("a;b c"));
         QCOMPARE(e->cmbStateSelector->currentIndex(), 1);
       }},
      {4,
       [](frmSetAction* e) {
         Type(e->cmbButtonNumber, "News");
         ChooseItem(e->cmbStateSelector, 0);
         Type(e->txtLabel, "FF8000");
       },
       "5 News 1 FF8000", [](frmSetAction* e) { Type(e->txtLabel, "00ff00"); },
       "5 News 1 00ff00",
       [](frmSetAction* e) { QCOMPARE(e->txtLabel->text(), QString("FF8000")); }},
      {5, [](frmSetAction* e) { Type(e->lsMiliseconds, "-300"); }, "6 300",
       [](frmSetAction* e) { Type(e->lsMiliseconds, "abc"); }, "6 100",
       [](frmSetAction* e) { QCOMPARE(e->lsMiliseconds->currentText(), QString("300")); }},
      {6, [](frmSetAction* e) { Type(e->txtJavaScript, "go(\"x|y\")"); }, "7 0 go(&!2x&!3y&!2)",
       [](frmSetAction* e) { Type(e->txtJavaScript, "a^b"); }, "7 0 a&!4b",
       [](frmSetAction* e) { QCOMPARE(e->txtJavaScript->text(), QString("go(\"x|y\")")); }},
      {7,
       [](frmSetAction* e) {
         Type(e->cmbButtonNumber, "Home");
         ChooseItem(e->cmbStateSelector, 2);
       },
       "8 Home 3", [](frmSetAction* e) { ChooseItem(e->cmbStateSelector, 0); }, "8 Home 1",
       [](frmSetAction* e) { QCOMPARE(e->cmbStateSelector->currentIndex(), 2); }},
      {8,
       [](frmSetAction* e) {
         Type(e->cmbButtonNumber, "Home");
         ChooseItem(e->cmbStateSelector, 1);
         Type(e->txtLabel, "000000");
       },
       "9 Home 2 000000", [](frmSetAction* e) { Type(e->txtLabel, "ABCDEF"); }, "9 Home 2 ABCDEF",
       [](frmSetAction* e) { QCOMPARE(e->txtLabel->text(), QString("000000")); }},
      {9,
       [](frmSetAction* e) {
         Type(e->cmbButtonNumber, "News");
         Type(e->txtBlinkCount, "3");
         Type(e->cmbBlinkDelay, "");
       },
       "10 News 3 100", [](frmSetAction* e) { Type(e->txtBlinkCount, "1.5"); },
       "10 News 1.5 100",
       [](frmSetAction* e) {
         QCOMPARE(e->txtBlinkCount->text(), QString("3"));
         QCOMPARE(e->cmbBlinkDelay->currentText(), QString("100"));
       }},
  };
}

}  // namespace

class SetActionTest : public WatchedTest {
  Q_OBJECT

 private:
  static void StartDemo(App& a) {
    QCOMPARE(a.program->Main(a.demo()), -1);
    QVERIFY(a.p().ButtonCount >= 2);
    QCOMPARE(a.p().button(1).sBName, std::string("Home"));
    // The first button is the current one, the only one selected.
    ClickButtonRow(a, 0);
    QCOMPARE(int(a.p().iCurBtn), 1);
    QCOMPARE(a.main()->SelectedCount(), 1);
  }

 private slots:
  void theEventChosenInThePanelIsEditedUnderItsCaption() {
    App a;
    StartDemo(a);
    a.p().button(1).ProgramLEAVE = "6 500;1 Home;";
    QString caption;
    QStringList rows;
    QVERIFY(EditButtonEvent(a, 2, [&](frmSetAction* e) {
      caption = e->windowTitle();
      rows = Rows(e->lstActions);
      QCOMPARE(e->strReturnTo, std::string("ProgramLEAVE"));
      QCOMPARE(e->cmbButtonNumber->count(), int(a.p().ButtonCount));
      QCOMPARE(e->cmbButtonNumber->currentText(), QString("Home"));
      QCOMPARE(e->cmbAction->currentText(), QString("Show"));
      QCOMPARE(e->cmbStateSelector->itemText(1), QString("Mouse-Over"));
      Click(e, "btnCANCEL");
    }));
    QCOMPARE(caption, QString("Set Action --> On Leaving Button"));
    QCOMPARE(rows, QStringList({"Wait: 500 ms", "Show: Home"}));
  }

  void eachCommandIsAddedReadBackReplacedMovedAndRemoved() {
    App a;
    StartDemo(a);
    a.p().button(2).ProgramUP = "";
    ClickButtonRow(a, 1);
    QCOMPARE(int(a.p().iCurBtn), 2);
    std::vector<Case> cases = TenCommands();
    QStringList stored;
    QVERIFY(EditButtonEvent(a, 0, [&](frmSetAction* e) {
      for (const Case& c : cases) {
        ChooseItem(e->cmbAction, c.action);
        c.fill(e);
        Click(e, "btnAdd");
        QCOMPARE(LastCode(e), c.text);
        QCOMPARE(e->lstActions->currentRow(), e->lstActions->count() - 1);
      }
      QCOMPARE(e->lstActions->count(), 10);
      for (int row = 0; row < 10; ++row) {
        const Case& c = cases[static_cast<size_t>(row)];
        // Another command first, so that the row really fills the fields.
        ChooseItem(e->cmbAction, (c.action + 5) % 10);
        ClickRow(e->lstActions, row);
        QCOMPARE(e->cmbAction->currentIndex(), c.action);
        c.readBack(e);
        c.change(e);
        Click(e, "btnReplace");
        QCOMPARE(e->lstActionsCode->item(row)->text(), c.changed);
        QCOMPARE(e->lstActions->currentRow(), row);
      }
      // Moves: the last command to the top and the first one back down.
      ClickRow(e->lstActions, 9);
      for (int k = 0; k < 9; ++k) QTest::mouseClick(e->btnUP, Qt::LeftButton);
      QCOMPARE(e->lstActions->currentRow(), 0);
      QCOMPARE(e->lstActionsCode->item(0)->text(), cases[9].changed);
      QTest::mouseClick(e->btnUP, Qt::LeftButton);  // at the top: nothing
      QCOMPARE(e->lstActionsCode->item(0)->text(), cases[9].changed);
      for (int k = 0; k < 9; ++k) QTest::mouseClick(e->btnDown, Qt::LeftButton);
      QCOMPARE(e->lstActions->currentRow(), 9);
      QCOMPARE(e->lstActionsCode->item(9)->text(), cases[9].changed);
      QTest::mouseClick(e->btnDown, Qt::LeftButton);  // at the bottom: nothing
      QCOMPARE(e->lstActions->currentRow(), 9);
      // Remove the Hide command.
      ClickRow(e->lstActions, 1);
      Click(e, "btnRemove");
      QCOMPARE(e->lstActions->count(), 9);
      QCOMPARE(e->lstActions->currentRow(), 1);
      for (int i = 0; i < e->lstActionsCode->count(); ++i) stored << e->lstActionsCode->item(i)->text();
      Click(e, "btnOK");
    }));
    QCOMPARE(a.p().button(2).ProgramUP,
             std::string("1 My&!0Button;3 Home 10 7- 20+ -999 5 100;4 News 3 a&!1b&!0c;"
                         "5 News 1 00ff00;6 100;7 0 a&!4b;8 Home 1;9 Home 2 ABCDEF;"
                         "10 News 1.5 100;"));
    QCOMPARE(stored.size(), 9);
    QVERIFY(!a.p().bProjectSaved);
    QVERIFY(a.prompter.boxes.empty());
  }

  void theDisplayLinesAreThoseOfTheProgramText() {
    App a;
    StartDemo(a);
    a.p().button(1).ProgramUP = "3 My&!0Button 10 -999 20+ -999 5 100;4 Home 2 Go&!0Home;";
    QVERIFY(EditButtonEvent(a, 0, [&](frmSetAction* e) {
      QCOMPARE(Rows(e->lstActions),
               QStringList({"Move: My Button  ->  x:10 y:   width:20+ height:   f:5 d:100",
                            "Set Label: Home [Mouse-Over]  ->  \"Go Home\""}));
      ClickRow(e->lstActions, 0);
      // The list's tip is the selected line in full.
      QCOMPARE(e->lstActions->toolTip(), e->lstActions->item(0)->text());
      ClickRow(e->lstActions, 1);
      QCOMPARE(e->lstActions->toolTip(), e->lstActions->item(1)->text());
      Click(e, "btnCANCEL");
    }));
  }

  void eachCommandShowsOnlyItsFields() {
    App a;
    StartDemo(a);
    QVERIFY(EditButtonEvent(a, 0, [&](frmSetAction* e) {
      for (int i = 0; i < 10; ++i) {
        ChooseItem(e->cmbAction, i);
        QCOMPARE(e->picActionMove->isVisible(), i == 2);
        QCOMPARE(e->picSetLabel->isVisible(), i == 3 || i == 4 || i == 7 || i == 8);
        QCOMPARE(e->btnGetHexColor->isVisible(), i == 4 || i == 8);
        QCOMPARE(e->cmbButtonNumber->isVisible(), i != 5);
        QCOMPARE(e->picSetTimer->isVisible(), i == 5);
        QCOMPARE(e->txtJavaScript->isVisible(), i == 6);
        QCOMPARE(e->picBlink->isVisible(), i == 9);
        if (e->picSetLabel->isVisible()) QCOMPARE(e->txtLabel->isVisible(), i != 7);
      }
      // A colour command empties the label field.
      ChooseItem(e->cmbAction, 3);
      Type(e->txtLabel, "Hello");
      ChooseItem(e->cmbAction, 4);
      QCOMPARE(e->txtLabel->text(), QString());
      Click(e, "btnCANCEL");
    }));
  }

  // --- The edge cases -----------------------------------------------------------------

  void okWithAnEmptyListStoresTheEmptyString() {
    App a;
    StartDemo(a);
    a.p().button(1).ProgramDOWN = "6 500;";
    a.p().bProjectSaved = true;
    QVERIFY(EditButtonEvent(a, 3, [&](frmSetAction* e) {
      QCOMPARE(e->lstActions->count(), 1);
      ClickRow(e->lstActions, 0);
      Click(e, "btnRemove");
      Click(e, "btnOK");
    }));
    QCOMPARE(a.p().button(1).ProgramDOWN, std::string());
    QVERIFY(!a.p().bProjectSaved);
  }

  void setColorWithFourCharactersAddsNothingAndNoMessage() {
    App a;
    StartDemo(a);
    QVERIFY(EditButtonEvent(a, 0, [&](frmSetAction* e) {
      ChooseItem(e->cmbAction, 4);
      Type(e->txtLabel, "FF00");
      Click(e, "btnAdd");
      QCOMPARE(e->lstActions->count(), 0);
      QCOMPARE(e->lstActionsCode->count(), 0);
      Click(e, "btnCANCEL");
    }));
    QVERIFY(a.prompter.boxes.empty());
  }

  void withNoButtonsWaitAndJavaScriptCanStillBeAdded() {
    App a;
    QCOMPARE(a.program->Main(""), -1);
    // The last button deleted from the list.
    while (a.p().ButtonCount > 0) {
      a.main()->SelectItem_lstButtons(1);
      Panel(a)->List().btnRemove_Click();
    }
    QCOMPARE(int(a.p().ButtonCount), 0);
    QVERIFY(EditKey(a, "AppletProgramStart", [&](frmSetAction* e) {
      QCOMPARE(e->cmbButtonNumber->count(), 0);
      ChooseItem(e->cmbAction, 0);
      Click(e, "btnAdd");
      QCOMPARE(e->lstActions->count(), 0);
      ChooseItem(e->cmbAction, 5);
      Type(e->lsMiliseconds, "250");
      Click(e, "btnAdd");
      ChooseItem(e->cmbAction, 6);
      Type(e->txtJavaScript, "go()");
      Click(e, "btnAdd");
      Click(e, "btnOK");
    }));
    QCOMPARE(a.p().AppletProgramStart, std::string("6 250;7 0 go();"));
    QCOMPARE(a.prompter.boxes.size(), size_t{1});
    QCOMPARE(a.prompter.boxes[0].text, std::string("No Buttons on the Applet"));
  }

  void replaceWithNoRowSelectedSaysNoActionSelected() {
    App a;
    StartDemo(a);
    a.p().button(1).ProgramUP = "6 500;";
    QVERIFY(EditButtonEvent(a, 0, [&](frmSetAction* e) {
      QCOMPARE(e->lstActions->currentRow(), -1);
      ChooseItem(e->cmbAction, 5);
      Type(e->lsMiliseconds, "900");
      Click(e, "btnReplace");
      QCOMPARE(e->lstActionsCode->item(0)->text(), QString("6 500"));
      Click(e, "btnOK");
    }));
    QCOMPARE(a.prompter.boxes.size(), size_t{1});
    QCOMPARE(a.prompter.boxes[0].text, std::string("No action selected."));
    QCOMPARE(a.prompter.boxes[0].title, std::string("Sorry, I don't understand you..."));
    QCOMPARE(a.p().button(1).ProgramUP, std::string("6 500;"));
  }

  void removingTheOnlyRowLeavesBothListsEmpty() {
    App a;
    StartDemo(a);
    QVERIFY(EditButtonEvent(a, 0, [&](frmSetAction* e) {
      ChooseItem(e->cmbAction, 0);
      Click(e, "btnAdd");
      QCOMPARE(e->lstActions->count(), 1);
      QCOMPARE(e->lstActions->currentRow(), 0);
      Click(e, "btnRemove");
      QCOMPARE(e->lstActions->count(), 0);
      QCOMPARE(e->lstActionsCode->count(), 0);
      QCOMPARE(e->lstActions->currentRow(), -1);
      Click(e, "btnRemove");  // nothing selected: nothing happens, no message
      Click(e, "btnCANCEL");
    }));
    QVERIFY(a.prompter.boxes.empty());
  }

  void aPastedUnknownNameShowsAndIsAcceptedWhenReadBack() {
    App a;
    StartDemo(a);
    SetParam(a.env(), "ProgClipBoard", "10 Somewhere&!0Else 5 100;");
    QVERIFY(EditButtonEvent(a, 0, [&](frmSetAction* e) {
      Click(e, "btnPasteProg");
      QCOMPARE(Rows(e->lstActions), QStringList({"Blink: Somewhere Else  ->  times:5 delay:100ms"}));
      ClickRow(e->lstActions, 0);
      QCOMPARE(e->cmbButtonNumber->currentText(), QString("Somewhere Else"));
      Type(e->txtBlinkCount, "2");
      Click(e, "btnReplace");
      QCOMPARE(e->lstActionsCode->item(0)->text(), QString("10 Somewhere&!0Else 2 100"));
      Click(e, "btnOK");
    }));
    QCOMPARE(a.p().button(1).ProgramUP, std::string("10 Somewhere&!0Else 2 100;"));
  }

  // --- Beyond the edge cases ------------------------------------------------------------

  void aStaleButtonNameIsKeptAndAccepted() {
    App a;
    StartDemo(a);
    a.p().button(1).ProgramOVER = "1 Renamed&!0Away;";
    QVERIFY(EditButtonEvent(a, 1, [&](frmSetAction* e) {
      QCOMPARE(Rows(e->lstActions), QStringList({"Show: Renamed Away"}));
      ClickRow(e->lstActions, 0);
      QCOMPARE(e->cmbButtonNumber->currentText(), QString("Renamed Away"));
      ChooseItem(e->cmbAction, 1);
      Click(e, "btnReplace");
      Click(e, "btnOK");
    }));
    QCOMPARE(a.p().button(1).ProgramOVER, std::string("2 Renamed&!0Away;"));
  }

  void aProgramCopiedFromAButtonPastesIntoAnAppletEvent() {
    App a;
    StartDemo(a);
    const std::string program = a.p().button(1).ProgramOVER;
    QVERIFY(!program.empty());
    a.p().AppletProgramStart = "6 100;";
    QVERIFY(EditButtonEvent(a, 1, [&](frmSetAction* e) {
      Click(e, "btnCopyProg");
      Click(e, "btnCANCEL");
    }));
    QCOMPARE(GetParam(a.env(), "ProgClipBoard"), program);
    QCOMPARE(QGuiApplication::clipboard()->text(), QString::fromStdString(program));
    // Paste reads the setting, never the system clipboard.
    QGuiApplication::clipboard()->setText("1 FromElsewhere;");
    QVERIFY(EditKey(a, "AppletProgramStart", [&](frmSetAction* e) {
      QCOMPARE(e->lstActions->count(), 1);
      Click(e, "btnPasteProg");
      QCOMPARE(e->lstActionsCode->count(), 1 + int(SplitProgram(program).size()));
      Click(e, "btnOK");
    }));
    QCOMPARE(a.p().AppletProgramStart, "6 100;" + program);
    QCOMPARE(a.p().button(1).ProgramOVER, program);
  }

  void cancelLeavesTheProgramUntouched() {
    App a;
    StartDemo(a);
    const std::string before = a.p().button(1).ProgramOVER;
    a.p().bProjectSaved = true;
    QVERIFY(EditButtonEvent(a, 1, [&](frmSetAction* e) {
      ClickRow(e->lstActions, 0);
      Click(e, "btnRemove");
      ChooseItem(e->cmbAction, 5);
      Click(e, "btnAdd");
      Click(e, "btnCANCEL");
    }));
    QCOMPARE(a.p().button(1).ProgramOVER, before);
    QVERIFY(a.p().bProjectSaved);
    // Escape is Cancel too, and the next opening shows the stored program.
    QVERIFY(EditButtonEvent(a, 1, [&](frmSetAction* e) {
      QCOMPARE(e->lstActionsCode->count(), int(SplitProgram(before).size()));
      Click(e, "btnRemove");
      QTest::keyClick(e->lstActions, Qt::Key_Escape);
    }));
    QCOMPARE(a.p().button(1).ProgramOVER, before);
  }

  void okWritesEverySelectedButton() {
    App a;
    StartDemo(a);
    ClickButtonRow(a, 1);
    ClickButtonRow(a, 2, Qt::ControlModifier);
    const std::string untouched = a.p().button(1).ProgramCHECK;
    QVERIFY(EditButtonEvent(a, 4, [&](frmSetAction* e) {
      QCOMPARE(e->strReturnTo, std::string("ProgramCHECK"));
      ChooseItem(e->cmbAction, 7);
      Type(e->cmbButtonNumber, "Home");
      Click(e, "btnAdd");
      Click(e, "btnOK");
    }));
    QCOMPARE(a.p().button(2).ProgramCHECK, std::string("8 Home 1;"));
    QCOMPARE(a.p().button(3).ProgramCHECK, std::string("8 Home 1;"));
    QCOMPARE(a.p().button(1).ProgramCHECK, untouched);
  }

  void enterAddsInSomeFieldsAndMovesOnInTheOthers() {
    App a;
    StartDemo(a);
    QVERIFY(EditButtonEvent(a, 0, [&](frmSetAction* e) {
      ChooseItem(e->cmbAction, 3);
      Type(e->txtLabel, "Hi");
      QTest::keyClick(e->txtLabel, Qt::Key_Return);
      QCOMPARE(e->lstActions->count(), 1);
      ChooseItem(e->cmbAction, 2);
      Type(e->txtX, "5");
      QTest::keyClick(e->txtX, Qt::Key_Return);
      QCOMPARE(e->focusWidget(), static_cast<QWidget*>(e->txtY));
      QTest::keyClick(e->txtY, Qt::Key_Return);
      QTest::keyClick(e->txtWidth, Qt::Key_Return);
      QTest::keyClick(e->txtHeight, Qt::Key_Return);
      QTest::keyClick(e->txtFrames, Qt::Key_Return);
      QCOMPARE(e->focusWidget(), static_cast<QWidget*>(e->txtFrameDelay));
      QCOMPARE(e->lstActions->count(), 1);
      QTest::keyClick(e->txtFrameDelay, Qt::Key_Return);
      QCOMPARE(e->lstActions->count(), 2);
      ChooseItem(e->cmbAction, 5);
      Type(e->lsMiliseconds, "700");
      QTest::keyClick(e->lsMiliseconds->lineEdit(), Qt::Key_Return);
      QCOMPARE(e->lstActions->count(), 3);
      ChooseItem(e->cmbAction, 9);
      Type(e->txtBlinkCount, "4");
      QTest::keyClick(e->txtBlinkCount, Qt::Key_Return);
      QCOMPARE(e->lstActions->count(), 3);
      QVERIFY(e->isVisible());
      Click(e, "btnOK");
    }));
    QCOMPARE(a.p().button(1).ProgramUP,
             std::string("4 Home 1 Hi;3 Home 5 -999 -999 -999 0 0;6 700;"));
  }

  void theColourDialogFillsTheColourField() {
    App a;
    StartDemo(a);
    QVERIFY(EditButtonEvent(a, 0, [&](frmSetAction* e) {
      ChooseItem(e->cmbAction, 8);
      auto ran = WhenModal<QColorDialog>([](QColorDialog* d) {
        d->setCurrentColor(QColor(0xFF, 0x80, 0x01));
        d->accept();
      });
      Click(e, "btnGetHexColor");
      QVERIFY(*ran);
      QCOMPARE(e->txtLabel->text(), QString("FF8001"));
      auto cancelled = WhenModal<QColorDialog>([](QColorDialog* d) { d->reject(); });
      Click(e, "btnGetHexColor");
      QVERIFY(*cancelled);
      QCOMPARE(e->txtLabel->text(), QString("FF8001"));
      Click(e, "btnCANCEL");
    }));
  }

  void anUnknownKeyIsReportedAndWritesNothing() {
    App a;
    StartDemo(a);
    const Project before = a.p();
    QVERIFY(EditKey(a, "ProgramSIDEWAYS", [&](frmSetAction* e) {
      QCOMPARE(e->lstActions->count(), 0);
      ChooseItem(e->cmbAction, 5);
      Click(e, "btnAdd");
      Click(e, "btnOK");
    }));
    QCOMPARE(a.prompter.boxes.size(), size_t{1});
    QCOMPARE(a.prompter.boxes[0].text, std::string("Wrong Return Parameters"));
    for (int i = 1; i <= a.p().ButtonCount; ++i) QCOMPARE(a.p().button(i), before.button(i));
    QCOMPARE(a.p().AppletProgramStart, before.AppletProgramStart);
  }

  void everyControlOfEveryCommandFitsTheWindowAtItsDefaultSize() {
    App a;
    StartDemo(a);
    a.p().button(1).ProgramUP =
        "3 My&!0Button 10 -999 20+ -999 5 100;4 Home 2 A&!0label&!0much&!0longer&!0than&!0the&!0"
        "list&!0is&!0wide,&!0to&!0be&!0read&!0in&!0the&!0tip;7 0 alert('x');";
    QVERIFY(EditButtonEvent(a, 0, [&](frmSetAction* e) {
      for (int i = 0; i < 10; ++i) {
        ChooseItem(e->cmbAction, i);
        QCoreApplication::processEvents();
        for (QWidget* w : e->findChildren<QWidget*>()) {
          if (!w->isVisible() || w->parentWidget() == nullptr) continue;
          const QRect r(w->mapTo(e, QPoint(0, 0)), w->size());
          QVERIFY2(e->rect().contains(r), qPrintable(w->objectName()));
          if (auto* b = qobject_cast<QPushButton*>(w))
            QVERIFY2(b->width() >= b->minimumSizeHint().width(), qPrintable(b->objectName()));
        }
        if (!qEnvironmentVariableIsEmpty("KP_SHOT_DIR") && (i == 2 || i == 4))
          e->grab().save(qEnvironmentVariable("KP_SHOT_DIR") + QString("/frmSetAction_%1.png").arg(i));
      }
      Click(e, "btnCANCEL");
    }));
  }
};

QTEST_MAIN(SetActionTest)
#include "test_set_action.moc"
