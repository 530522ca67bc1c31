// The button special options and the label descent: edits through the
// dialog's controls write the selected buttons in the current state, redraw
// them, and leave codes that the copy to the other states repeats.
#include <QColorDialog>
#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QScrollBar>
#include <QToolButton>
#include <QtTest>

#include "design/colour_box.h"
#include "design/frm_design.h"
#include "properties/button_panel.h"
#include "properties/frm_button_effects.h"
#include "properties/frm_main.h"
#include "properties/global_panel.h"
#include "render/scene.h"
#include "tests/app/app_fixture.h"

using namespace kp;
using namespace kp::apptest;

namespace {

QImage Composed(App& a) { return a.main()->Design()->scene().Compose(); }
QRect RectOf(const tButton& b) { return QRect(b.x, b.y, b.Width, b.Height); }

void Retype(QLineEdit* f, const QString& text) {
  f->setFocus();
  f->selectAll();
  QTest::keyClicks(f, text);
}

}  // namespace

class ButtonSpecialTest : public WatchedTest {
  Q_OBJECT

 private:
  static ButtonPanel* Panel(App& a) { return static_cast<ButtonPanel*>(a.main()->panel); }

  static void ClickRow(App& a, int row, Qt::KeyboardModifiers mods = Qt::NoModifier) {
    QListWidget* list = a.main()->lstButtons;
    QTest::mouseClick(list->viewport(), Qt::LeftButton, mods,
                      list->visualItemRect(list->item(row)).center());
    QTest::qWait(0);
    QCoreApplication::processEvents();
  }

  static frmButtonSpecial* Open(App& a) {
    QTest::mouseClick(Panel(a)->btnTFrame, Qt::LeftButton);
    return a.main()->general->ButtonSpecial();
  }

  static void PickColour(ColourBox* box, QColor c) {
    auto ran = WhenModal<QColorDialog>([c](QColorDialog* d) {
      d->setCurrentColor(c);
      d->accept();
    });
    QTest::mouseClick(box, Qt::LeftButton);
    QVERIFY(*ran);
  }

 private slots:
  void specialOpensTheDialogNamedByTheButtonsToolTipShowingTheCurrentState() {
    App a;
    a.program->Main(a.demo());
    ClickRow(a, 1);
    QTest::mouseClick(Panel(a)->btnOverState, Qt::LeftButton);
    frmButtonSpecial* d = Open(a);
    QVERIFY(d->isVisible());
    QVERIFY(!d->isModal());
    QCOMPARE(d->windowTitle(), QString("Button Special Options"));
    const tButton& b = a.p().button(2);
    QCOMPARE(d->picBackColor->colour(), b.BackColor[2]);
    QCOMPARE(d->picFadeColor->colour(), b.FadeColor[2]);
    QCOMPARE(d->cmbFadeStyle->currentIndex(), int(b.FadeStyle[2]));
    QCOMPARE(d->txtThick->text(), QString::number(b.TFrameThick[2]));
    QCOMPARE(d->txtFrameThick->text(), QString::number(b.FrameThick[2]));
    QVERIFY(a.p().bProjectSaved);
    Click(d, "btnClose");
    QVERIFY(!d->isVisible());
  }

  void withDownStateAndTwoButtonsSelectedSwappingColoursChangesTheDownColoursOfBoth() {
    App a;
    a.program->Main(a.demo());
    ClickRow(a, 0);
    ClickRow(a, 2, Qt::ControlModifier);
    QTest::mouseClick(Panel(a)->btnDownState, Qt::LeftButton);
    const tButton one = a.p().button(1), three = a.p().button(3);
    QVERIFY(one.BackColor[3] != three.BackColor[3]);
    frmButtonSpecial* d = Open(a);
    const QImage before = Composed(a);
    Click(d, "btnChangeColors");
    for (auto [i, was] : {std::pair{1, one}, std::pair{3, three}}) {
      const tButton& b = a.p().button(i);
      QCOMPARE(b.BackColor[3], was.FadeColor[3]);
      QCOMPARE(b.FadeColor[3], was.BackColor[3]);
      QCOMPARE(b.BackColor[1], was.BackColor[1]);
      QCOMPARE(b.BackColor[2], was.BackColor[2]);
      QVERIFY2(Composed(a).copy(RectOf(b)) != before.copy(RectOf(b)), "the face was redrawn");
    }
    QCOMPARE(d->picBackColor->colour(), a.p().button(a.p().iCurBtn).BackColor[3]);
    QCOMPARE(int(a.p().iLast_Change), 28);
    QVERIFY(!a.p().bProjectSaved);
  }

  void aChangeInThisDialogEnablesCopyToAll() {
    App a;
    a.program->Main(a.demo());
    ClickRow(a, 0);
    QVERIFY(!Panel(a)->btnCopyToAll->isEnabled());
    frmButtonSpecial* d = Open(a);
    Retype(d->txtShade, "40");
    QCOMPARE(int(a.p().button(1).TFrameShade[1]), 40);
    QCOMPARE(d->scrollShade->value(), 40);
    QVERIFY(Panel(a)->btnCopyToAll->isEnabled());
    QCOMPARE(int(a.p().iLast_Change), 20);
  }

  void aTextBorderGivenInOverIsCopiedToTheOtherStates() {
    App a;
    a.program->Main(a.demo());
    ClickRow(a, 3);
    QTest::mouseClick(Panel(a)->btnOverState, Qt::LeftButton);
    frmButtonSpecial* d = Open(a);
    const QImage before = Composed(a);
    PickColour(d->picColor, QColor(255, 0, 0));
    Retype(d->txtThick, "2");
    QCOMPARE(d->scrollThick->value(), 2);
    const tButton& b = a.p().button(4);
    QCOMPARE(b.TFrameColor[2], RGB(255, 0, 0));
    QCOMPARE(int(b.TFrameThick[2]), 2);
    QVERIFY2(Composed(a).copy(RectOf(b)) != before.copy(RectOf(b)), "the text border shows");
    QVERIFY(Panel(a)->btnCopyToAll->isEnabled());
    QTest::mouseClick(Panel(a)->btnCopyToAll, Qt::LeftButton);
    QCOMPARE(int(b.TFrameThick[1]), 2);
    QCOMPARE(int(b.TFrameThick[3]), 2);
    QVERIFY(!Panel(a)->btnCopyToAll->isEnabled());
  }

  void everyCodeOfTheDialogIsRepeatedInTheOtherStates() {
    App a;
    a.program->Main(a.demo());
    ClickRow(a, 0);
    ClickRow(a, 1, Qt::ControlModifier);
    QTest::mouseClick(Panel(a)->btnOverState, Qt::LeftButton);
    frmButtonSpecial* d = Open(a);
    ButtonPanel* panel = Panel(a);
    auto copy = [&] { QTest::mouseClick(panel->btnCopyToAll, Qt::LeftButton); };
    // 18 text border colour, 19 thick, 20 shade, 21 light, 22 direction.
    PickColour(d->picColor, QColor(0, 0, 255));
    copy();
    for (int i : {1, 2})
      for (int s : {1, 3}) QCOMPARE(a.p().button(i).TFrameColor[s], RGB(0, 0, 255));
    Retype(d->txtThick, "3");
    copy();
    Retype(d->txtShade, "55");
    copy();
    d->cmbLight->setFocus();
    QTest::keyClick(d->cmbLight, Qt::Key_Down);
    QCOMPARE(int(a.p().iLast_Change), 21);
    copy();
    d->cmbLeftToRight->setFocus();
    QTest::keyClick(d->cmbLeftToRight, Qt::Key_Down);
    copy();
    // 23 frame colour and 24 thickness: written, not drawn.
    const QImage before = Composed(a);
    PickColour(d->picFrameColor, QColor(0, 128, 0));
    QCOMPARE(int(a.p().iLast_Change), 23);
    copy();
    Retype(d->txtFrameThick, "4");
    QCOMPARE(Composed(a), before);
    copy();
    // 25 face colour, 26 fade colour, 27 fade style.
    PickColour(d->picBackColor, QColor(200, 100, 0));
    copy();
    PickColour(d->picFadeColor, QColor(0, 100, 200));
    copy();
    d->cmbFadeStyle->setFocus();
    QTest::keyClick(d->cmbFadeStyle, Qt::Key_End);
    QCOMPARE(int(a.p().iLast_Change), 27);
    copy();
    for (int i : {1, 2}) {
      const tButton& b = a.p().button(i);
      for (int s : {1, 3}) {
        QCOMPARE(int(b.TFrameThick[s]), 3);
        QCOMPARE(int(b.TFrameShade[s]), 55);
        QVERIFY(b.TFrameLight[s]);
        QVERIFY(b.TFrameLeftToRight[s]);
        QCOMPARE(b.FrameColor[s], RGB(0, 128, 0));
        QCOMPARE(int(b.FrameThick[s]), 4);
        QCOMPARE(b.BackColor[s], RGB(200, 100, 0));
        QCOMPARE(b.FadeColor[s], RGB(0, 100, 200));
        QCOMPARE(int(b.FadeStyle[s]), 4);
        if (b.BorderAutoColor[s]) QCOMPARE(b.BorderColor[s], RGB(200, 100, 0));
      }
    }
    // 28, the swap: both colours as the dialog shows them.
    Click(d, "btnChangeColors");
    copy();
    for (int i : {1, 2})
      for (int s : {1, 3}) {
        QCOMPARE(a.p().button(i).BackColor[s], RGB(0, 100, 200));
        QCOMPARE(a.p().button(i).FadeColor[s], RGB(200, 100, 0));
      }
  }

  void enterMovesAlongTheThreeNumberFields() {
    App a;
    a.program->Main(a.demo());
    frmButtonSpecial* d = Open(a);
    d->txtThick->setFocus();
    QTest::keyClick(d->txtThick, Qt::Key_Return);
    QCOMPARE(d->focusWidget(), d->txtShade);
    QTest::keyClick(d->txtShade, Qt::Key_Return);
    QCOMPARE(d->focusWidget(), d->txtFrameThick);
    QTest::keyClick(d->txtFrameThick, Qt::Key_Return);
    QCOMPARE(d->focusWidget(), d->txtThick);
  }

  void aStateChangeOnTheMainWindowShowsWhenTheDialogIsActivatedAgain() {
    App a;
    a.program->Main(a.demo());
    ClickRow(a, 0);
    frmButtonSpecial* d = Open(a);
    a.p().button(1).TFrameShade[3] = 77;
    QTest::mouseClick(Panel(a)->btnDownState, Qt::LeftButton);
    QEvent activate(QEvent::WindowActivate);
    QApplication::sendEvent(d, &activate);
    QCOMPARE(d->txtShade->text(), QString("77"));
    QCOMPARE(int(a.p().iLast_Change), 0);
  }

  // --- Descent ------------------------------------------------------------------------------

  void restoreDefaultsOfDescentAloneChangesNoModelValue() {
    App a;
    a.program->Main(a.demo());
    a.p().iDescentX = 3;
    a.p().iDescentY = 4;
    a.main()->general->mnuDescent->trigger();
    frmDescent* d = a.main()->general->Descent();
    QVERIFY(d->isVisible());
    QVERIFY(d->isModal());
    QCOMPARE(d->windowTitle(), QString("Button's Label Down State Descent"));
    QCOMPARE(d->txtX->text(), QString("3"));
    Click(d, "btnRestoreDefaults");
    QCOMPARE(d->txtX->text(), QString("1"));
    QCOMPARE(d->txtY->text(), QString("1"));
    QCOMPARE(int(a.p().iDescentX), 3);
    QCOMPARE(int(a.p().iDescentY), 4);
    Click(d, "btnCANCEL");
    QCOMPARE(int(a.p().iDescentX), 3);
    QVERIFY(a.p().bProjectSaved);
  }

  void descentOkStoresBothNumbersAndEnterInYPressesOk() {
    App a;
    a.program->Main(a.demo());
    a.main()->general->mnuDescent->trigger();
    frmDescent* d = a.main()->general->Descent();
    Retype(d->txtX, "5");
    QTest::keyClick(d->txtX, Qt::Key_Return);
    QCOMPARE(d->focusWidget(), d->txtY);
    QTest::keyClicks(d->txtY, "zz");
    QTest::keyClick(d->txtY, Qt::Key_Return);
    QVERIFY(!d->isVisible());
    QCOMPARE(int(a.p().iDescentX), 5);
    QCOMPARE(int(a.p().iDescentY), 0);
    QVERIFY(!a.p().bProjectSaved);
  }
};

QTEST_MAIN(ButtonSpecialTest)
#include "test_button_effects.moc"
