// The colour and text tools: the multi-line label editor, Hex2Color, the
// colour dialog wrapper, the notice with its setting, the progress window,
// and the Qt prompter's boxes.
#include <QCheckBox>
#include <QColorDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QTextBlock>
#include <QPushButton>
#include <QtTest>

#include "core/settings.h"
#include "design/colour_box.h"
#include "properties/colour_dialog.h"
#include "properties/file_filter.h"
#include "properties/frm_hex2color.h"
#include "properties/frm_message.h"
#include "properties/frm_multi_line_editor.h"
#include "properties/frm_my_msg_box.h"
#include "properties/qt_prompter.h"
#include "tests/app/app_fixture.h"

using namespace kp;
using namespace kp::apptest;

class ToolsTest : public WatchedTest {
  Q_OBJECT

 private:

  struct Hex {
    test::TestEnv t;
    QWidget main;
    frmHex2Color form{&main, t.env};
    Hex() { form.show(); }
    QStringList Fields() const {
      return {form.txtHEX->text(), form.txtRED->text(), form.txtGREEN->text(),
              form.txtBLUE->text()};
    }
    void TypeHex(const QString& text) {
      form.txtHEX->clear();
      QTest::keyClicks(form.txtHEX, text);
    }
  };

  // A QtPrompter over its own settings, for the notices.
  struct Notices {
    test::TestEnv t;
    QtPrompter prompter;
    Env env{t.fs, t.store, prompter, t.view, t.home.path()};
  };

 private slots:
  // --- Multi-line labels ---

  void labelWithTwoBreaksShowsAnEmptySecondLine() {
    QWidget main;
    QLineEdit txtLabel("a\\n\\nb");
    frmMultiLineEditor editor(&main, &txtLabel, "Multiline Editor");
    editor.show();
    QCOMPARE(editor.txtEditor->toPlainText(), QString("a\n\nb"));
    QCOMPARE(editor.txtEditor->document()->blockCount(), 3);
    QCOMPARE(editor.txtEditor->document()->findBlockByNumber(1).text(), QString());
    // Filling the editor wrote nothing back.
    QCOMPARE(txtLabel.text(), QString("a\\n\\nb"));
    QCOMPARE(editor.windowTitle(), QString("Multiline Editor"));
    QCOMPARE(editor.btnClose->text(), QString("&Close"));
  }

  void emptyLineTypedInTheEditorComesBackWithABlank() {
    QWidget main;
    QLineEdit txtLabel;
    frmMultiLineEditor editor(&main, &txtLabel, "Multiline Editor");
    editor.show();
    QTest::keyClicks(editor.txtEditor, "a");
    QTest::keyClick(editor.txtEditor, Qt::Key_Return);
    QTest::keyClick(editor.txtEditor, Qt::Key_Return);
    QTest::keyClicks(editor.txtEditor, "b");
    QCOMPARE(txtLabel.text(), QString("a\\n \\nb"));
  }

  void labelEndingInABreakIsNotRewrittenByTheFill() {
    QWidget main;
    QLineEdit txtLabel("x\\n");
    int changes = 0;
    QObject::connect(&txtLabel, &QLineEdit::textChanged, [&] { ++changes; });
    frmMultiLineEditor editor(&main, &txtLabel, "Multiline Editor");
    editor.show();
    editor.Form_Activate();
    QCOMPARE(changes, 0);
    editor.txtEditor->moveCursor(QTextCursor::End);
    QTest::keyClicks(editor.txtEditor, "y");
    QCOMPARE(txtLabel.text(), QString("x\\ny"));
  }

  void ctrlAOnKeyUpSelectsTheWholeText() {
    QWidget main;
    QLineEdit txtLabel("one\\ntwo");
    frmMultiLineEditor editor(&main, &txtLabel, "Multiline Editor");
    editor.show();
    editor.txtEditor->moveCursor(QTextCursor::End);
    QTest::keyRelease(editor.txtEditor, Qt::Key_A, Qt::ControlModifier);
    QCOMPARE(editor.txtEditor->textCursor().selectedText().size(), 7);
  }

  void closeHidesTheEditor() {
    QWidget main;
    QLineEdit txtLabel;
    frmMultiLineEditor editor(&main, &txtLabel, "Multiline Editor");
    editor.show();
    editor.btnClose->click();
    QVERIFY(!editor.isVisible());
  }

  // --- Hex2Color ---

  void hexFF0000Gives255And0And0() {
    Hex h;
    h.TypeHex("FF0000");
    QCOMPARE(h.Fields(), QStringList({"FF0000", "255", "0", "0"}));
    QCOMPARE(h.form.picColor->colour(), RGB(255, 0, 0));
  }

  void hexFFGivesRed255AndTheOthers0() {
    Hex h;
    h.form.picColor->setColour(RGB(1, 2, 3));
    h.TypeHex("FF");
    QCOMPARE(h.Fields(), QStringList({"FF", "255", "0", "0"}));
    QCOMPARE(h.form.picColor->colour(), RGB(255, 0, 0));
  }

  void hexThatIsNotHexadecimalEmptiesTheDecimalFields() {
    Hex h;
    h.TypeHex("12");
    h.TypeHex("GG");
    QCOMPARE(h.Fields(), QStringList({"GG", "", "", ""}));
    QCOMPARE(h.form.picColor->colour(), RGB(0x12, 0, 0));
  }

  void hexFieldIsTrimmedInPlace() {
    Hex h;
    h.TypeHex(" 00FF00 ");
    QCOMPARE(h.Fields(), QStringList({"00FF00", "0", "255", "0"}));
  }

  void decimalFieldsGiveTheColourAndTheHex() {
    Hex h;
    h.form.txtRED->setText("1");
    h.form.txtGREEN->setText("171");
    h.form.txtBLUE->clear();
    QTest::keyClicks(h.form.txtBLUE, "12");
    QCOMPARE(h.form.txtHEX->text(), QString("01AB0C"));
    QCOMPARE(h.form.picColor->colour(), RGB(1, 171, 12));
  }

  void decimalFieldThatIsNotANumberEmptiesTheHex() {
    Hex h;
    h.form.txtGREEN->clear();
    QTest::keyClicks(h.form.txtGREEN, "x");
    QCOMPARE(h.form.txtHEX->text(), QString());
  }

  void loadShowsTheColourInAllFourForms() {
    Hex h;
    h.form.picColor->setColour(RGB(16, 32, 255));
    h.form.Form_Load();
    QCOMPARE(h.Fields(), QStringList({"1020FF", "16", "32", "255"}));
  }

  void enterMovesAroundTheFourFields() {
    Hex h;
    QApplication::setActiveWindow(&h.form);
    h.form.txtHEX->setFocus();
    QLineEdit* order[] = {h.form.txtRED, h.form.txtGREEN, h.form.txtBLUE, h.form.txtHEX};
    for (QLineEdit* next : order) {
      QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
      QCOMPARE(QApplication::focusWidget(), static_cast<QWidget*>(next));
    }
  }

  void cancelledColourDialogChangesNoField() {
    Hex h;
    h.form.picColor->setColour(RGB(10, 20, 30));
    h.form.Form_Load();
    const QStringList before = h.Fields();
    SharedCustColors().fill(7);
    const CustColors tableBefore = SharedCustColors();
    auto ran = WhenModal<QColorDialog>([](QColorDialog* d) {
      d->setCurrentColor(QColor(200, 100, 50));
      QColorDialog::setCustomColor(0, QColor(1, 2, 3));
      d->reject();
    });
    h.form.picColor_Click();
    QVERIFY(*ran);
    QCOMPARE(h.Fields(), before);
    QCOMPARE(h.form.picColor->colour(), RGB(10, 20, 30));
    QVERIFY(SharedCustColors() == tableBefore);
  }

  void acceptedColourDialogFillsTheFieldsAndKeepsTheCustomColours() {
    Hex h;
    SharedCustColors().fill(0);
    QColor startedWith;
    QColor customShown;
    auto ran = WhenModal<QColorDialog>([&](QColorDialog* d) {
      startedWith = d->currentColor();
      customShown = QColorDialog::customColor(1);
      d->setCurrentColor(QColor(200, 100, 50));
      QColorDialog::setCustomColor(2, QColor(9, 8, 7));
      d->accept();
    });
    SharedCustColors()[4] = 40;  // custom colour 2: red 40
    h.form.picColor->setColour(RGB(1, 2, 3));
    h.form.picColor_Click();
    QVERIFY(*ran);
    QCOMPARE(startedWith, QColor(1, 2, 3));
    QCOMPARE(customShown, QColor(40, 0, 0));
    QCOMPARE(h.Fields(), QStringList({"C86432", "200", "100", "50"}));
    QCOMPARE(int(SharedCustColors()[8]), 9);
    QCOMPARE(int(SharedCustColors()[9]), 8);
    QCOMPARE(int(SharedCustColors()[10]), 7);
  }

  // --- MyMsgBox ---

  void myMsgBoxWithTheSettingAt0ShowsNothing() {
    Notices n;
    SetParam(n.env, "Warn_Space_in_FileName", "0");
    bool shown = false;
    WhenModal<frmMyMsgBox>([&](frmMyMsgBox* d) {
      shown = true;
      d->accept();
    }, 300);
    QVERIFY(!MyMsgBox(n.env, "Warning!", "text", "Warn next time", "Warn_Space_in_FileName"));
    QTest::qWait(400);
    QVERIFY(!shown);
    QCOMPARE(GetParam(n.env, "Warn_Space_in_FileName"), std::string("0"));
  }

  void myMsgBoxShowsTickedAndClearingTheBoxEndsTheWarning() {
    Notices n;
    QString title, text, check;
    bool ticked = false, visible = false;
    auto ran = WhenModal<frmMyMsgBox>([&](frmMyMsgBox* d) {
      title = d->windowTitle();
      text = d->txtMessage->toPlainText();
      check = d->chkBox->text();
      visible = d->chkBox->isVisible();
      ticked = d->chkBox->isChecked();
      QVERIFY(d->txtMessage->isReadOnly());
      QCOMPARE(d->btnOK->text(), QString("&Ok"));
      d->chkBox->click();
      d->btnOK->click();
    });
    QVERIFY(MyMsgBox(n.env, "Warning!", "line one\r\nline two", "Warn next time",
                     "Warn_Space_in_FileName"));
    QVERIFY(*ran);
    QCOMPARE(title, QString("Warning!"));
    QCOMPARE(text, QString("line one\nline two"));
    QCOMPARE(check, QString("Warn next time"));
    QVERIFY(visible);
    QVERIFY(ticked);
    QCOMPARE(GetParam(n.env, "Warn_Space_in_FileName"), std::string("0"));
  }

  void myMsgBoxWithoutCheckTextHidesTheCheckBox() {
    Notices n;
    bool visible = true;
    WhenModal<frmMyMsgBox>([&](frmMyMsgBox* d) {
      visible = d->chkBox->isVisible();
      d->btnOK->click();
    });
    QVERIFY(MyMsgBox(n.env, "Note", "text", "", "WAV2AU_Auto_Convertion"));
    QVERIFY(!visible);
    QCOMPARE(GetParam(n.env, "WAV2AU_Auto_Convertion"), std::string("1"));
  }

  // --- frmMessage ---

  void gaugeDrawsOneStripeAValueAndLeavingClearsIt() {
    QWidget owner;
    owner.resize(400, 300);
    owner.show();
    frmMessage m(&owner);
    m.ShowMessage("Saving", "Saving Buttons to File...", &owner, false);
    QVERIFY(m.isVisible());
    QCOMPARE(m.windowTitle(), QString("Saving"));
    QCOMPARE(m.lblMessage->text(), QString("Saving Buttons to File..."));
    QVERIFY(!m.btnCANCEL->isEnabled());
    m.SetGauge(10, 40);
    QVERIFY(!m.picGauge->Striped(9));
    QVERIFY(m.picGauge->Striped(10));
    QVERIFY(m.picGauge->Striped(40));
    QVERIFY(!m.picGauge->Striped(41));
    m.hide();
    QVERIFY(!m.picGauge->Striped(10));
  }

  void messageCancelRunsTheWorksCancel() {
    frmMessage m;
    int cancels = 0;
    m.onCancel = [&] { ++cancels; };
    m.ShowMessage("Tiling", "Please Wait...", nullptr, true);
    QVERIFY(m.btnCANCEL->isEnabled());
    QVERIFY(!m.Cancelled());
    m.btnCANCEL->click();
    QVERIFY(m.Cancelled());
    QCOMPARE(cancels, 1);
    m.ShowMessage("Tiling", "Please Wait...", nullptr, true);
    QVERIFY(!m.Cancelled());
  }

  void prompterProgressUsesTheMessageWindow() {
    QtPrompter pr;
    pr.ProgressShow("Loading Project...");
    QVERIFY(pr.Message()->isVisible());
    QCOMPARE(pr.Message()->windowTitle(), QString("Kestrel Pane 2.02"));
    pr.ProgressSet("Loading Button # 1 of 2", 50);
    QCOMPARE(pr.Message()->lblMessage->text(), QString("Loading Button # 1 of 2"));
    QVERIFY(pr.Message()->picGauge->Striped(50));
    QVERIFY(!pr.Message()->picGauge->Striped(51));
    pr.ProgressHide();
    QVERIFY(!pr.Message()->isVisible());
  }

  // --- Message boxes ---

  void messageBoxWithoutTitleShowsTheProgramsTitleAndTheExactText() {
    QtPrompter pr;
    QString title, text;
    Qt::TextFormat format = Qt::AutoText;
    WhenModal<QMessageBox>([&](QMessageBox* b) {
      title = b->windowTitle();
      text = b->text();
      format = b->textFormat();
      b->button(QMessageBox::Ok)->click();
    });
    Prompter& base = pr;
    QCOMPARE(base.MsgBox("<Html>\r\nsecond line"), Answer::OK);
    QCOMPARE(title, QString("Kestrel Pane 2.02"));
    QCOMPARE(text, QString("<Html>\nsecond line"));
    QCOMPARE(format, Qt::PlainText);
  }

  void messageBoxButtonsGiveTheirAnswers() {
    QtPrompter pr;
    const std::pair<QMessageBox::StandardButton, Answer> cases[] = {
        {QMessageBox::Yes, Answer::Yes}, {QMessageBox::No, Answer::No},
        {QMessageBox::Cancel, Answer::Cancel}};
    for (auto [button, answer] : cases) {
      QString title;
      WhenModal<QMessageBox>([&, button = button](QMessageBox* b) {
        title = b->windowTitle();
        b->button(button)->click();
      });
      QCOMPARE(pr.MsgBox("q", Buttons::YesNoCancel, "KestrelPane", Icon::Question), answer);
      QCOMPARE(title, QString("KestrelPane"));
    }
  }

  void filtersMapToTheQtForm() {
    QCOMPARE(QtFilter("Kestrel Pane Projects (*.kpn)|*.kpn|All Files (*.*)|*.*"),
             std::string("Kestrel Pane Projects (*.kpn);;All Files (*)"));
    QCOMPARE(QtFilter("Pictures|*.gif;*.jpg"), std::string("Pictures (*.gif *.jpg)"));
  }

  void toolTextTablesHoldTheirCaptions() {
    QCOMPARE(TextOf(frmHex2Color::Texts(), "frmHex2Color"), std::string("Hex2Color"));
    QCOMPARE(TextOf(frmHex2Color::Texts(), "btnClose"), std::string("&Close"));
    QCOMPARE(TextOf(frmMyMsgBox::Texts(), "btnOK"), std::string("&Ok"));
    QCOMPARE(TextOf(frmMultiLineEditor::Texts(), "btnClose"), std::string("&Close"));
  }
};

QTEST_MAIN(ToolsTest)
#include "test_tools.moc"
