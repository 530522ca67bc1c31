// The button property panel: typing, clicking and picking in its controls
// writes the model for the selected buttons in the current state, redraws
// them on the design window, and records the last change.
#include <QCheckBox>
#include <QColorDialog>
#include <QComboBox>
#include <QFrame>
#include <QGroupBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QToolButton>
#include <QtTest>

#include "core/conv.h"
#include "design/frm_design.h"
#include "properties/button_list.h"
#include "properties/button_panel.h"
#include "design/colour_box.h"
#include "properties/frm_main.h"
#include "properties/frm_my_msg_box.h"
#include "publish/sound.h"
#include "render/scene.h"
#include "tests/app/app_fixture.h"

using namespace kp;
using namespace kp::apptest;

namespace {

// Answers every modal window of type T that opens until it is destroyed:
// closes it and remembers what it said.
template <class T>
class ModalCounter {
 public:
  explicit ModalCounter(std::function<void(T*)> act) : act_(std::move(act)) {
    QObject::connect(&timer_, &QTimer::timeout, [this] {
      T* w = dynamic_cast<T*>(QApplication::activeModalWidget());
      if (!w || !w->isVisible() || w == last_) return;
      last_ = w;
      ++count;
      act_(w);
      last_ = nullptr;
    });
    timer_.start(5);
  }
  int count = 0;

 private:
  QTimer timer_;
  std::function<void(T*)> act_;
  T* last_ = nullptr;
};

QRect RectOf(const tButton& b) { return QRect(b.x, b.y, b.Width, b.Height); }

QImage Region(const QImage& img, const QRect& r) { return img.copy(r); }

}  // namespace

class PanelTest : public WatchedTest {
  Q_OBJECT

 private:
  static ButtonPanel* Panel(App& a) { return static_cast<ButtonPanel*>(a.main()->panel); }
  static QImage Composed(App& a) { return a.main()->Design()->scene().Compose(); }

  // Clicks a row of the button list with the modifiers, as the user does.
  static void ClickRow(App& a, int row, Qt::KeyboardModifiers mods = Qt::NoModifier) {
    QListWidget* list = a.main()->lstButtons;
    const QRect r = list->visualItemRect(list->item(row));
    QTest::mouseClick(list->viewport(), Qt::LeftButton, mods, r.center());
    QTest::qWait(0);
    QCoreApplication::processEvents();
  }

  // The fresh program with n buttons, added by the New Button button.
  static void AddButtons(App& a, int total) {
    while (a.p().ButtonCount < total)
      QTest::mouseClick(Panel(a)->List().btnAddBtn, Qt::LeftButton);
  }

  static void Retype(QLineEdit* f, const QString& text) {
    f->setFocus();
    f->selectAll();
    QTest::keyClicks(f, text);
  }

 private slots:
  void theFreshProgramsPanelShowsTheDefaultButton() {
    App a;
    a.program->Main("");
    ButtonPanel* panel = Panel(a);
    QVERIFY(panel);
    QCOMPARE(panel->txt_btnName->text(), QString("Button 1"));
    QCOMPARE(panel->txtLabel->text(), QString("Button 1"));
    QCOMPARE(panel->txtWidth->text(), QString("100"));
    QCOMPARE(panel->txtHeight->text(), QString("40"));
    QCOMPARE(panel->lsTarget->currentText(), QString("_self"));
    QCOMPARE(panel->cmbBorderStyle->currentText(), QString("Raised"));
    QVERIFY(panel->bBold);
    QVERIFY(!panel->bItalic);
    QVERIFY(!panel->btnCopyToAll->isEnabled());
    QVERIFY(a.p().bProjectSaved);
    QCOMPARE(a.main()->frameBtnProp->title(), QString("Properties for Button 1"));
  }

  void showPropWithNoButtonsChangesNothingAndTheFillingGuardStaysFalse() {
    App a;
    a.program->Main("");
    ButtonPanel* panel = Panel(a);
    QTest::mouseClick(panel->List().btnRemove, Qt::LeftButton);
    QCOMPARE(a.p().ButtonCount, 0);
    QCOMPARE(panel->txtLabel->text(), QString("Button 1"));
    a.p().button(1).Label[1] = "not shown";
    panel->ShowProp(1);
    QCOMPARE(panel->txtLabel->text(), QString("Button 1"));
    QVERIFY(!a.p().bFillingPanel);
  }

  void typingALabelWithThreeRowsSelectedChangesAllThreeInTheCurrentStateOnly() {
    App a;
    a.program->Main("");
    ButtonPanel* panel = Panel(a);
    AddButtons(a, 4);
    QTest::mouseClick(panel->btnOverState, Qt::LeftButton);
    QCOMPARE(a.p().sState, std::string("OVER"));
    ClickRow(a, 0);
    ClickRow(a, 1, Qt::ControlModifier);
    ClickRow(a, 2, Qt::ControlModifier);
    QCOMPARE(panel->SelectedRowCount(), 3);
    QCOMPARE(a.p().iCurBtn, 3);
    const QImage before = Composed(a);
    Retype(panel->txtLabel, "Go");
    for (int i = 1; i <= 3; ++i) {
      const tButton& b = a.p().button(i);
      QCOMPARE(b.Label[2], std::string("Go"));
      QCOMPARE(b.Label[1], "Button " + std::to_string(i));
      QCOMPARE(b.Label[3], "Button " + std::to_string(i));
      // Each of the three was painted again with its new label.
      QVERIFY(Region(Composed(a), RectOf(b)) != Region(before, RectOf(b)));
    }
    QCOMPARE(a.p().button(4).Label[2], std::string("Button 4"));
    QCOMPARE(Region(Composed(a), RectOf(a.p().button(4))), Region(before, RectOf(a.p().button(4))));
    QCOMPARE(a.p().iLast_Change, i16{1});
    QVERIFY(panel->btnCopyToAll->isEnabled());
    QVERIFY(!a.p().bProjectSaved);
  }

  void typingAWidthWithTwoRowsSelectedWritesBothAndRedrawsBoth() {
    App a;
    a.program->Main("");
    ButtonPanel* panel = Panel(a);
    AddButtons(a, 3);
    ClickRow(a, 0);
    ClickRow(a, 2, Qt::ControlModifier);
    Retype(panel->txtWidth, "150");
    Scene& scene = a.main()->Design()->scene();
    for (int i : {1, 3}) {
      QCOMPARE(a.p().button(i).Width, i16{150});
      QCOMPARE(scene.pButtons(i).Width(), 150);
      // The face reaches the new right edge on the design window.
      const tButton& b = a.p().button(i);
      QCOMPARE(Composed(a).pixelColor(b.x + 140, b.y + b.Height / 2),
               Region(scene.pButtons(i).img, QRect(140, b.Height / 2, 1, 1)).pixelColor(0, 0));
    }
    QCOMPARE(a.p().button(2).Width, i16{100});
    QCOMPARE(scene.pButtons(2).Width(), 100);
    QCOMPARE(a.p().iLast_Change, i16{0});
  }

  void uncheckingCenterTextByClickingItLeavesItChecked() {
    App a;
    a.program->Main("");
    ButtonPanel* panel = Panel(a);
    QVERIFY(panel->chkCenterText->isChecked());
    QTest::mouseClick(panel->chkCenterText, Qt::LeftButton);
    QVERIFY(panel->chkCenterText->isChecked());
    QVERIFY(!panel->chkPositionText->isChecked());
    QVERIFY(!a.p().button(1).PositionText[1]);
    QCOMPARE(a.p().iLast_Change, i16{2});
  }

  void manualTextPositionShowsItsFieldsAndTheyMoveTheLabel() {
    App a;
    a.program->Main("");
    ButtonPanel* panel = Panel(a);
    QTest::mouseClick(panel->chkPositionText, Qt::LeftButton);
    QVERIFY(panel->chkPositionText->isChecked());
    QVERIFY(!panel->chkCenterText->isChecked());
    QVERIFY(!panel->frameTextPos->isHidden());
    QVERIFY(a.p().button(1).PositionText[1]);
    QCOMPARE(panel->txtLabelPosX->text(), QString::number(a.p().button(1).LabelPosX[1]));
    QCOMPARE(a.p().iLast_Change, i16{3});
    QVERIFY(a.main()->Design()->picLabelPositioner.visible);
    const QImage before = Composed(a);
    Retype(panel->txtLabelPosX, "3");
    QCOMPARE(a.p().button(1).LabelPosX[1], i16{3});
    QVERIFY(Region(Composed(a), RectOf(a.p().button(1))) !=
            Region(before, RectOf(a.p().button(1))));
    QTest::mouseClick(panel->chkCenterText, Qt::LeftButton);
    QVERIFY(!a.p().button(1).PositionText[1]);
    QVERIFY(panel->frameTextPos->isHidden());
    QVERIFY(!a.main()->Design()->picLabelPositioner.visible);
  }

  void aStateTabClickDisablesCopyToAllAndShowsEveryButtonInThatState() {
    App a;
    a.program->Main("");
    ButtonPanel* panel = Panel(a);
    AddButtons(a, 2);
    Retype(panel->txtLabel, "x");
    QVERIFY(panel->btnCopyToAll->isEnabled());
    QTest::mouseClick(panel->btnDownState, Qt::LeftButton);
    QVERIFY(!panel->btnCopyToAll->isEnabled());
    QCOMPARE(a.p().iLast_Change, i16{0});
    QCOMPARE(a.p().sState, std::string("DOWN"));
    QVERIFY(panel->btnDownState->isChecked());
    QVERIFY(!panel->btnUpState->isChecked());
    QVERIFY(panel->txtLabel->hasFocus() || !panel->isActiveWindow());
    // The panel shows the down state, lowered border included.
    QCOMPARE(panel->cmbBorderStyle->currentText(), QString("Lowered"));
    QCOMPARE(panel->txtLabel->text(), QString("Button 2"));
    // Both faces show the down colour, blue, just inside the border.
    for (int i : {1, 2}) {
      const tButton& b = a.p().button(i);
      const QColor c = Composed(a).pixelColor(b.x + b.Width / 2, b.y + b.BorderWidth[3] + 1);
      QCOMPARE(c, QColor(0, 0, 255));
    }
  }

  void afterSetLastChange0NoEditIsPendingEvenWhenTheLastWasNeverCopied() {
    App a;
    a.program->Main("");
    ButtonPanel* panel = Panel(a);
    Retype(panel->txtLabel, "Only up");
    QCOMPARE(a.p().iLast_Change, i16{1});
    panel->SetLastChange(0);
    QCOMPARE(a.p().iLast_Change, i16{0});
    QVERIFY(!panel->btnCopyToAll->isEnabled());
    panel->btnCopyToAll_Click();
    QCOMPARE(a.p().button(1).Label[2], std::string("Button 1"));
    QCOMPARE(a.p().button(1).Label[3], std::string("Button 1"));
  }

  void copyToAllRepeatsTheLastEditInTheOtherStatesAndDisablesItself() {
    App a;
    a.program->Main("");
    ButtonPanel* panel = Panel(a);
    Retype(panel->txtLabel, "All");
    QTest::mouseClick(panel->btnCopyToAll, Qt::LeftButton);
    for (int s = 1; s <= 3; ++s) QCOMPARE(a.p().button(1).Label[s], std::string("All"));
    QVERIFY(!panel->btnCopyToAll->isEnabled());
    QCOMPARE(a.p().iLast_Change, i16{1});
    // A state tab and back does not enable it again.
    QTest::mouseClick(panel->btnOverState, Qt::LeftButton);
    QTest::mouseClick(panel->btnUpState, Qt::LeftButton);
    QVERIFY(!panel->btnCopyToAll->isEnabled());
  }

  void aJavaScriptLinkRaisesNoWarningButABlankInALinkDoes() {
    App a;
    a.program->Main("");
    ButtonPanel* panel = Panel(a);
    QStringList texts;
    ModalCounter<frmMyMsgBox> boxes([&](frmMyMsgBox* box) {
      texts << box->windowTitle() << box->txtMessage->toPlainText();
      // "Warn next time" cleared: the next letters pass quietly.
      box->chkBox->setChecked(false);
      box->btnOK->click();
    });
    Retype(panel->txtURL, "javascript:alert(1)");
    Retype(panel->txtURL, "javascript:alert('a b')");
    QTest::qWait(20);
    QCOMPARE(boxes.count, 0);
    QCOMPARE(a.p().button(1).URL, std::string("javascript:alert('a b')"));
    Retype(panel->txtURL, "a b.htm");
    QTest::qWait(20);
    QCOMPARE(boxes.count, 1);
    QCOMPARE(texts.value(0), QString("Warning! Strange chars..."));
    QVERIFY(texts.value(1).startsWith("This file name contains spaces!"));
    QCOMPARE(a.p().button(1).URL, std::string("a b.htm"));
    QCOMPARE(a.store.Get(kSecParams, "Warn_Space_in_FileName").value_or(""), std::string("0"));
  }

  void aTargetWithADotWarnsAfterEnter() {
    App a;
    a.program->Main("");
    ButtonPanel* panel = Panel(a);
    QStringList texts;
    ModalCounter<frmMyMsgBox> boxes([&](frmMyMsgBox* box) {
      texts << box->txtMessage->toPlainText();
      box->btnOK->click();
    });
    panel->lsTarget->lineEdit()->selectAll();
    QTest::keyClicks(panel->lsTarget->lineEdit(), "main.htm");
    QCOMPARE(a.p().button(1).Target, std::string("_self"));  // a list writes on Enter
    QTest::keyClick(panel->lsTarget->lineEdit(), Qt::Key_Return);
    QTest::qWait(20);
    QCOMPARE(a.p().button(1).Target, std::string("main.htm"));
    QCOMPARE(boxes.count, 1);
    QVERIFY(texts.value(0).startsWith("Dots, comas and other special chars"));
  }

  void fontSizeIsHeldToItsRangeOnEnter() {
    App a;
    a.program->Main("");
    ButtonPanel* panel = Panel(a);
    QLineEdit* size = panel->lsFontSize->lineEdit();
    size->selectAll();
    QTest::keyClicks(size, "2");
    QTest::keyClick(size, Qt::Key_Return);
    QCOMPARE(a.p().button(1).FontSize[1], i16{3});
    QCOMPARE(a.p().iLast_Change, i16{5});
    size->selectAll();
    QTest::keyClicks(size, "14");
    QTest::keyClick(size, Qt::Key_Return);
    QCOMPARE(a.p().button(1).FontSize[1], i16{14});
  }

  // The keys go where the keyboard sends them: to the focused list, not to
  // its inner text field. Sizes that are not list items must be written too.
  void typedFontSizesOutsideTheListAreWrittenOnEnter() {
    App a;
    a.program->Main("");
    ButtonPanel* panel = Panel(a);
    // The inner field hands its focus to the list, so the list gets the keys.
    QCOMPARE(panel->lsFontSize->lineEdit()->focusProxy(), panel->lsFontSize);
    QWidget* keys = panel->lsFontSize;
    for (int size : {17, 30, 40, 200}) {
      panel->lsFontSize->lineEdit()->selectAll();
      QTest::keyClicks(keys, QString::number(size));
      QCOMPARE(panel->lsFontSize->currentText(), QString::number(size));
      QTest::keyClick(keys, Qt::Key_Return);
      QCOMPARE(a.p().button(1).FontSize[1], static_cast<i16>(size));
      QCOMPARE(a.p().iLast_Change, i16{5});
    }
    // Out of range falls back to the bounds, still through the keys.
    panel->lsFontSize->lineEdit()->selectAll();
    QTest::keyClicks(keys, "1500");
    QTest::keyClick(keys, Qt::Key_Enter, Qt::KeypadModifier);
    QCOMPARE(a.p().button(1).FontSize[1], i16{999});
    // A size from the list still works by the keys: one write, no second.
    panel->lsFontSize->lineEdit()->selectAll();
    QTest::keyClicks(keys, "12");
    QTest::keyClick(keys, Qt::Key_Return);
    QCOMPARE(a.p().button(1).FontSize[1], i16{12});
  }

  void enterInATextFieldIsSwallowed() {
    App a;
    a.program->Main("");
    ButtonPanel* panel = Panel(a);
    bool returned = false;
    QObject::connect(panel->txtLabel, &QLineEdit::returnPressed, [&] { returned = true; });
    Retype(panel->txtLabel, "abc");
    QTest::keyClick(panel->txtLabel, Qt::Key_Return);
    QVERIFY(!returned);
    QCOMPARE(panel->txtLabel->text(), QString("abc"));
    QCOMPARE(a.p().button(1).Label[1], std::string("abc"));
  }

  void borderWidthAndItsScrollBarNeverFeedEachOtherInALoop() {
    App a;
    a.program->Main("");
    ButtonPanel* panel = Panel(a);
    Retype(panel->txtBorderWidth, "12");
    QCOMPARE(a.p().button(1).BorderWidth[1], i16{12});
    QCOMPARE(panel->scrollBorderWidth->value(), 12);
    QCOMPARE(a.p().iLast_Change, i16{15});
    // Above the bar's range the model keeps the number; the bar stays.
    Retype(panel->txtBorderWidth, "1200");
    QCOMPARE(a.p().button(1).BorderWidth[1], i16{1200});
    QCOMPARE(panel->scrollBorderWidth->value(), 120);
    QCOMPARE(panel->txtBorderWidth->text(), QString("1200"));
    panel->scrollBorderWidth->setValue(5);
    QCOMPARE(panel->txtBorderWidth->text(), QString("5"));
    QCOMPARE(a.p().button(1).BorderWidth[1], i16{5});
    QVERIFY(!panel->bScrollMark);
  }

  void manualImageStyleShowsTheOffsetFieldsWhichWriteOnKeyUp() {
    App a;
    a.program->Main("");
    ButtonPanel* panel = Panel(a);
    QVERIFY(panel->frameImgOffset->isHidden());
    panel->cmbImgStyle->setFocus();
    QTest::keyClick(panel->cmbImgStyle, Qt::Key_Down);
    QCOMPARE(panel->cmbImgStyle->currentText(), QString("Manual"));
    QVERIFY(!panel->frameImgOffset->isHidden());
    QCOMPARE(a.p().button(1).ImgStyle[1], i16{1});
    QCOMPARE(a.p().iLast_Change, i16{9});
    Retype(panel->txtImgX, "7");
    QCOMPARE(a.p().button(1).ImgX[1], i16{7});
    QCOMPARE(a.p().iLast_Change, i16{32});
  }

  void boldToggleFlipsOnMouseDownAndWritesTheStyle() {
    App a;
    a.program->Main("");
    ButtonPanel* panel = Panel(a);
    QVERIFY(panel->bBold);  // the default record is bold
    QTest::mousePress(panel->imgBold, Qt::LeftButton);
    QVERIFY(!panel->bBold);
    QCOMPARE(panel->imgBold->look(), PictureToggle::Hovered);
    QCOMPARE(a.p().button(1).FontStyle[1], i16{0});
    QCOMPARE(a.p().iLast_Change, i16{6});
    QTest::mousePress(panel->imgItalic, Qt::LeftButton);
    QCOMPARE(panel->imgItalic->look(), PictureToggle::Pressed);
    QCOMPARE(a.p().button(1).FontStyle[1], i16{2});
    QCOMPARE(a.p().iLast_Change, i16{7});
    QTest::mousePress(panel->imgBold, Qt::LeftButton);
    QCOMPARE(a.p().button(1).FontStyle[1], i16{3});
    panel->SetFontStyle(0);
    QVERIFY(!panel->bBold && !panel->bItalic);
    QCOMPARE(panel->imgBold->look(), PictureToggle::Up);
  }

  void transparentBoxWritesTheStateAndShowsTheBackgroundThrough() {
    App a;
    a.program->Main("");
    ButtonPanel* panel = Panel(a);
    const tButton& b = a.p().button(1);
    QTest::mouseClick(panel->chkTransparent, Qt::LeftButton);
    QVERIFY(b.noBackGround[1]);
    QVERIFY(!b.noBackGround[2]);
    QCOMPARE(a.p().iLast_Change, i16{31});
    // The middle of the face shows the applet's white background.
    QCOMPARE(Composed(a).pixelColor(b.x + 12, b.y + b.Height / 2), QColor(255, 255, 255));
  }

  void aCancelledColourDialogChangesNothing() {
    App a;
    a.program->Main("");
    ButtonPanel* panel = Panel(a);
    Retype(panel->txtLabel, "L");
    const Colour before = a.p().button(1).BackColor[1];
    auto ran = WhenModal<QColorDialog>([](QColorDialog* d) { d->reject(); });
    QTest::mouseClick(panel->picBackColor, Qt::LeftButton);
    QVERIFY(*ran);
    QCOMPARE(a.p().button(1).BackColor[1], before);
    QCOMPARE(a.p().iLast_Change, i16{1});
  }

  void aChosenColourIsWrittenAndPainted() {
    App a;
    a.program->Main("");
    ButtonPanel* panel = Panel(a);
    auto ran = WhenModal<QColorDialog>([](QColorDialog* d) {
      d->setCurrentColor(QColor(0, 255, 0));
      d->accept();
    });
    QTest::mouseClick(panel->picBackColor, Qt::LeftButton);
    QVERIFY(*ran);
    const tButton& b = a.p().button(1);
    QCOMPARE(b.BackColor[1], RGB(0, 255, 0));
    QCOMPARE(panel->picBackColor->colour(), RGB(0, 255, 0));
    QCOMPARE(a.p().iLast_Change, i16{11});
    QCOMPARE(Composed(a).pixelColor(b.x + b.Width / 2, b.y + b.BorderWidth[1] + 1),
             QColor(0, 255, 0));
  }

  void autoColourHidesTheBorderColourBox() {
    App a;
    a.program->Main("");
    ButtonPanel* panel = Panel(a);
    QVERIFY(panel->chkBorderAutoColor->isChecked());
    QVERIFY(panel->picBorderColor->isHidden());
    QTest::mouseClick(panel->chkBorderAutoColor, Qt::LeftButton);
    QVERIFY(!a.p().button(1).BorderAutoColor[1]);
    QVERIFY(!panel->picBorderColor->isHidden());
    QCOMPARE(panel->picBorderColor->colour(), a.p().button(1).BorderColor[1]);
    QCOMPARE(a.p().iLast_Change, i16{14});
  }

  void moreOptionsShowsAndHidesTheFourOptions() {
    App a;
    a.program->Main("");
    ButtonPanel* panel = Panel(a);
    QCOMPARE(panel->btnAdvanced->text(), QString("More Options"));
    QVERIFY(panel->chkShowHand->isHidden());
    QTest::mouseClick(panel->btnAdvanced, Qt::LeftButton);
    for (QCheckBox* c : {panel->chkShowHand, panel->chkDOWNBtn, panel->chkRadio, panel->chkHidden})
      QVERIFY(!c->isHidden());
    QCOMPARE(panel->btnAdvanced->text(), QString(">>"));
    QCOMPARE(panel->btnAdvanced->toolTip(), QString("Less Options"));
    QTest::mouseClick(panel->btnAdvanced, Qt::LeftButton);
    QVERIFY(panel->chkShowHand->isHidden());
    QCOMPARE(panel->btnAdvanced->text(), QString("<<"));
    QCOMPARE(panel->btnAdvanced->toolTip(), QString("More Options"));
  }

  void initiallyPressedIsOneNumberForTheWholeApplet() {
    App a;
    a.program->Main("");
    ButtonPanel* panel = Panel(a);
    AddButtons(a, 2);
    QTest::mouseClick(panel->btnAdvanced, Qt::LeftButton);
    QTest::mouseClick(panel->chkDOWNBtn, Qt::LeftButton);
    QCOMPARE(a.p().DOWNBtn, i16{2});
    QCOMPARE(a.p().iLast_Change, i16{0});
    ClickRow(a, 0);
    QVERIFY(!panel->chkDOWNBtn->isChecked());
    ClickRow(a, 1);
    QVERIFY(panel->chkDOWNBtn->isChecked());
    QTest::mouseClick(panel->chkDOWNBtn, Qt::LeftButton);
    QCOMPARE(a.p().DOWNBtn, i16{0});
  }

  void hiddenShowHandAndRadioAreWrittenWithoutACode() {
    App a;
    a.program->Main("");
    ButtonPanel* panel = Panel(a);
    QTest::mouseClick(panel->btnAdvanced, Qt::LeftButton);
    QTest::mouseClick(panel->chkHidden, Qt::LeftButton);
    QTest::mouseClick(panel->chkShowHand, Qt::LeftButton);
    QTest::mouseClick(panel->chkRadio, Qt::LeftButton);
    QCOMPARE(a.p().button(1).Hidden, i16{1});
    QVERIFY(!a.p().button(1).ShowHand);
    QVERIFY(a.p().button(1).Radio);
    QCOMPARE(a.p().iLast_Change, i16{0});
  }

  void theImagePickerPutsTheChosenFileInTheImageBox() {
    App a;
    a.program->Main("");
    ButtonPanel* panel = Panel(a);
    const std::string pic = a.home.path() + "/Projects/demo_star.gif";
    // The regular file dialog; the picture browser has tests of its own.
    a.store.Set(kSecParams, "chk_RegPixDlgBox", "1");
    a.prompter.openAnswers = {pic};
    QTest::mouseClick(panel->btnGetBitmap, Qt::LeftButton);
    QCOMPARE(a.prompter.openDialogs.back().filter,
             std::string("GIF , JPG (*.gif;*.jpg)|*.gif;*.jpg| All Files (*.*)|*.*"));
    QCOMPARE(a.p().button(1).Image[1], pic);
    QCOMPARE(a.p().iLast_Change, i16{8});
    QCOMPARE(a.p().sSearchImagesFolder, a.home.path() + "/Projects/");
    QCOMPARE(a.store.Get(kSecParams, "sSearchImagesFolder").value_or(""),
             a.home.path() + "/Projects/");
  }

  void theSoundPickerTakesAnAuFileAsItIs() {
    App a;
    a.program->Main("");
    ButtonPanel* panel = Panel(a);
    const std::string au = a.home.path() + "/Projects/click.au";
    a.prompter.openAnswers = {au};
    QTest::mouseClick(panel->btnGetSound, Qt::LeftButton);
    QCOMPARE(a.prompter.openDialogs.back().filter, std::string(kSoundFilter));
    QCOMPARE(panel->txtSound->text(), QString::fromStdString(au));
    QCOMPARE(a.p().button(1).Snd[1], au);
    QCOMPARE(a.p().iLast_Change, i16{10});
  }

  void theLinkPickerWritesTheLinkAndKeepsItsFolder() {
    App a;
    a.program->Main("");
    ButtonPanel* panel = Panel(a);
    a.p().bProjectSaved = true;
    const std::string page = a.home.path() + "/Projects/page.htm";
    a.prompter.openAnswers = {page};
    QTest::mouseClick(panel->btnGetLink, Qt::LeftButton);
    QCOMPARE(a.prompter.openDialogs.back().filter,
             std::string("HTML (*.htm;*.html)|*.htm;*.html|All Files (*.*)|*.*"));
    QCOMPARE(a.p().button(1).URL, page);
    QCOMPARE(a.p().sSearchLinkFolder, a.home.path() + "/Projects/");
    QVERIFY(!a.p().bProjectSaved);
  }

  void panelTextsHaveOneEntryAControlAndTheEnglishDefaults() {
    const UiTexts& t = ButtonPanel::Texts();
    std::set<std::string> names;
    for (const UiText& u : t) QVERIFY(names.insert(u.control).second);
    QCOMPARE(TextOf(t, "btnCopyToAll.ToolTip"),
             std::string("Copy last change to other button states"));
    QCOMPARE(TextOf(t, "chkDOWNBtn"), std::string("Initially Pressed "));
    QCOMPARE(TextOf(t, "chkSoundStop"), std::string("Stop playing sound when state changes"));
    QCOMPARE(TextOf(t, "btnAction"), std::string("Set Action -->"));
  }
};

QTEST_MAIN(PanelTest)
#include "test_panel.moc"
