// What a screen reader and a keyboard see: every visible control of every
// window has a name, the state tabs follow the accessibility actions as
// they follow a click, and the small toggles are buttons with a state.
#include <QAccessible>
#include <QAccessibleActionInterface>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QtTest>

#include <algorithm>
#include <string_view>

#include "app/frm_applet_paths.h"
#include "app/frm_ask_to_associate.h"
#include "app/frm_browser_setup.h"
#include "app/frm_html.h"
#include "app/frm_sur_html.h"
#include "app/html_windows.h"
#include "design/colour_box.h"
#include "design/frm_design.h"
#include "design/frm_grid.h"
#include "properties/button_panel.h"
#include "properties/frm_advanced.h"
#include "properties/frm_applet_behaviour.h"
#include "properties/frm_applet_dialogs.h"
#include "properties/frm_button_effects.h"
#include "properties/frm_create_recent.h"
#include "properties/frm_hex2color.h"
#include "properties/frm_main.h"
#include "properties/frm_message.h"
#include "properties/frm_multi_line_editor.h"
#include "properties/frm_my_msg_box.h"
#include "properties/frm_pic_browser.h"
#include "properties/frm_publish_dialogs.h"
#include "properties/frm_set_action.h"
#include "properties/global_panel.h"
#include "tests/app/app_fixture.h"

using namespace kp;
using namespace kp::apptest;

namespace {

bool IsControl(QAccessible::Role r) {
  switch (r) {
    case QAccessible::PushButton:
    case QAccessible::CheckBox:
    case QAccessible::RadioButton:
    case QAccessible::ComboBox:
    case QAccessible::EditableText:
    case QAccessible::SpinBox:
    case QAccessible::ScrollBar:
    case QAccessible::Slider:
    case QAccessible::List:
    case QAccessible::Tree:
    case QAccessible::Table:
    case QAccessible::ButtonMenu:
    case QAccessible::ButtonDropDown:
    case QAccessible::PageTab:
      return true;
    default:
      return false;
  }
}

QString Describe(QAccessibleInterface* i) {
  QObject* o = i->object();
  return QString("%1 (%2, role %3, name \"%4\")")
      .arg(o ? o->objectName() : QString("?"))
      .arg(o ? o->metaObject()->className() : "?")
      .arg(int(i->role()))
      .arg(i->text(QAccessible::Name));
}

// Walks the accessible tree of a window and lists what a screen reader
// could not name: a visible control without a name, or a field that only
// borrowed the title of its group box.
void Walk(QAccessibleInterface* i, QStringList& bad, int depth = 0) {
  if (!i || depth > 40) return;
  auto* w = qobject_cast<QWidget*>(i->object());
  if (w && !w->isVisible()) return;
  if (w && depth > 0 && !w->isWindow() && IsControl(i->role()) && !i->state().invisible) {
    const QString name = i->text(QAccessible::Name).trimmed();
    // The inner parts of a compound control (a combo box's own line edit,
    // a list's viewport) speak through their owner.
    const bool part = qobject_cast<QComboBox*>(w->parentWidget()) ||
                      w->objectName().startsWith("qt_");
    if (!part) {
      if (name.isEmpty()) bad << Describe(i);
      // Qt falls back on the title of the group box around a field that
      // has no name of its own.
      if (auto* g = qobject_cast<QGroupBox*>(w->parentWidget()))
        if (w->accessibleName().isEmpty() && !name.isEmpty() &&
            name == g->title().remove('&').trimmed() && !qobject_cast<QAbstractButton*>(w))
          bad << Describe(i) + " named after its group box";
    }
  }
  for (int k = 0; k < i->childCount(); ++k) {
    QAccessibleInterface* c = i->child(k);
    if (!c) continue;
    auto* cw = qobject_cast<QWidget*>(c->object());
    if (cw && cw->isWindow()) continue;
    Walk(c, bad, depth + 1);
  }
}

QStringList Unnamed(QWidget* window) {
  QStringList bad;
  Walk(QAccessible::queryAccessibleInterface(window), bad);
  for (QString& s : bad) s.prepend(window->objectName() + ": ");
  return bad;
}

// Shows a window, lists what it leaves unnamed and hides it again.
QStringList Check(QWidget* w) {
  if (!w) return {"a window that did not open"};
  w->show();
  QCoreApplication::processEvents();
  QStringList bad = Unnamed(w);
  w->hide();
  return bad;
}

// Shows a window, presses Escape in it (in `focus` when given) and tells
// whether the window went away.
bool EscapeCloses(QWidget* w, QWidget* focus = nullptr) {
  if (!w) return false;
  w->show();
  w->activateWindow();
  if (!QTest::qWaitForWindowActive(w)) return false;
  QWidget* target = focus ? focus : w;
  target->setFocus();
  QTest::keyClick(target, Qt::Key_Escape);
  QCoreApplication::processEvents();
  return !w->isVisible();
}

ButtonPanel* Panel(App& a) { return static_cast<ButtonPanel*>(a.main()->panel); }

QAccessibleActionInterface* Actions(QWidget* w) {
  QAccessibleInterface* i = QAccessible::queryAccessibleInterface(w);
  return i ? i->actionInterface() : nullptr;
}

}  // namespace

class AccessibilityTest : public WatchedTest {
  Q_OBJECT

 private slots:
  void everyVisibleControlOfTheMainAndDesignWindowsHasAName() {
    App a;
    a.program->Main(a.demo());
    frmMain* m = a.main();
    QStringList bad = Unnamed(m);
    bad << Unnamed(m->Design());
    // The panel's other modes show more controls.
    ButtonPanel* panel = Panel(a);
    QTest::mouseClick(panel->btnAdvanced, Qt::LeftButton);
    panel->chkPositionText->click();
    panel->cmbImgStyle->setCurrentIndex(1);
    QCoreApplication::processEvents();
    QVERIFY(panel->txtImgX->isVisible());
    QVERIFY(panel->txtLabelPosX->isVisible());
    QVERIFY(panel->chkHidden->isVisible());
    bad << Unnamed(m);
    bad.removeDuplicates();
    for (const QString& b : bad) qWarning().noquote() << b;
    QVERIFY2(bad.isEmpty(), qPrintable(QString("%1 controls without a fitting name").arg(bad.size())));
  }

  void aFieldTakesTheTextOfItsLabelAndFollowsATranslation() {
    App a;
    a.program->Main("");
    ButtonPanel* panel = Panel(a);
    auto name = [](QWidget* w) {
      return QAccessible::queryAccessibleInterface(w)->text(QAccessible::Name);
    };
    QCOMPARE(name(panel->txtLabel), QString("Label:"));
    QCOMPARE(name(panel->txtURL), QString("Link:"));
    QCOMPARE(name(panel->picFontColor), QString("Text Color:"));
    QCOMPARE(name(panel->picBackColor), QString("Button Color:"));
    QVERIFY(name(a.main()->txtBackImg) != a.main()->frmGeneral->title());
    auto* lbl = panel->findChild<QLabel*>("lblLabel");
    QVERIFY(lbl);
    lbl->setText("Beschriftung:");
    QCOMPARE(name(panel->txtLabel), QString("Beschriftung:"));
  }

  void boldAndItalicAreButtonsWithACheckedState() {
    App a;
    a.program->Main("");
    ButtonPanel* panel = Panel(a);
    QAccessibleInterface* bold = QAccessible::queryAccessibleInterface(panel->imgBold);
    QVERIFY(bold);
    QVERIFY(bold->role() == QAccessible::CheckBox || bold->role() == QAccessible::PushButton);
    QVERIFY(bold->state().checkable);
    QCOMPARE(bool(bold->state().checked), panel->bBold);
    QAccessibleActionInterface* act = bold->actionInterface();
    QVERIFY(act);
    const bool before = panel->bBold;
    const int style = a.p().button(1).FontStyle[1];
    act->doAction(QAccessibleActionInterface::toggleAction());
    QCOMPARE(panel->bBold, !before);
    QCOMPARE(bool(bold->state().checked), !before);
    QVERIFY(a.p().button(1).FontStyle[1] != style);
    // The keyboard reaches it as well.
    QVERIFY(panel->imgItalic->focusPolicy() & Qt::TabFocus);
    QTest::keyClick(panel->imgItalic, Qt::Key_Space);
    QVERIFY(panel->bItalic);
  }

  void aColourBoxIsAButtonThatSaysWhoseColourItIs() {
    App a;
    a.program->Main("");
    ButtonPanel* panel = Panel(a);
    QAccessibleInterface* i = QAccessible::queryAccessibleInterface(panel->picBorderColor);
    QVERIFY(i->text(QAccessible::Name).contains("Border"));
    QVERIFY(i->actionInterface());
    QVERIFY(i->actionInterface()->actionNames().contains(QAccessibleActionInterface::pressAction()));
    QVERIFY(panel->picFontColor->focusPolicy() & Qt::TabFocus);
  }

  void theStateTabsFollowTheirAccessibilityActions() {
    App a;
    a.program->Main(a.demo());
    ButtonPanel* panel = Panel(a);
    QCOMPARE(a.p().sState, std::string("UP"));
    auto checkedTabs = [&] {
      int n = 0;
      for (QPushButton* t : {panel->btnUpState, panel->btnOverState, panel->btnDownState})
        n += t->isChecked() ? 1 : 0;
      return n;
    };
    QAccessibleActionInterface* over = Actions(panel->btnOverState);
    QVERIFY(over);
    QVERIFY(over->actionNames().contains(QAccessibleActionInterface::toggleAction()));
    over->doAction(QAccessibleActionInterface::toggleAction());
    QCoreApplication::processEvents();
    QCOMPARE(checkedTabs(), 1);
    QVERIFY(panel->btnOverState->isChecked());
    QCOMPARE(a.p().sState, std::string("OVER"));
    QCOMPARE(panel->txtLabel->text(), ShownText(a.p().button(a.p().iCurBtn).Label[2]));

    // Toggling the tab that is on leaves it on.
    over->doAction(QAccessibleActionInterface::toggleAction());
    QCoreApplication::processEvents();
    QCOMPARE(checkedTabs(), 1);
    QCOMPARE(a.p().sState, std::string("OVER"));

    QAccessibleActionInterface* down = Actions(panel->btnDownState);
    down->doAction(QAccessibleActionInterface::pressAction());
    QTRY_COMPARE(a.p().sState, std::string("DOWN"));
    QCOMPARE(checkedTabs(), 1);
    QVERIFY(panel->btnDownState->isChecked());

    // The keyboard alone: focus on a tab, Space.
    panel->btnUpState->setFocus();
    QTest::keyClick(panel->btnUpState, Qt::Key_Space);
    QTRY_COMPARE(a.p().sState, std::string("UP"));
    QCOMPARE(checkedTabs(), 1);
  }

  void everyOptionDialogNamesItsControls() {
    App a;
    a.program->Main(a.demo());
    frmMain* m = a.main();
    GlobalPanel* g = m->general;
    QVERIFY(g);
    QStringList bad;
    bad << Check(g->Advanced());
    bad << Check(g->AppletBorder());
    bad << Check(g->AppletFade());
    bad << Check(g->SetBgOffset());
    bad << Check(g->ButtonSpecial());
    bad << Check(g->Descent());
    bad << Check(m->Design()->Grid());
    bad << Check(m->CreateRecent());
    bad << Check(m->Hex2Color());
    HtmlWindows* html = a.program->Html();
    QVERIFY(html);
    bad << Check(html->SurHTML());
    bad << Check(html->AppletPaths());
    {
      frmMessage w(m);
      bad << Check(&w);
    }
    {
      frmAskToAssociate w(a.env(), a.association, m);
      bad << Check(&w);
    }
    {
      frmAddEditBrowser w(a.env(), m);
      bad << Check(&w);
    }
    for (const QString& b : bad) qWarning().noquote() << b;
    QVERIFY2(bad.isEmpty(), qPrintable(QString("%1 controls without a fitting name").arg(bad.size())));
  }

  // Lists, code boxes and picture buttons of the remaining windows.
  void theRemainingWindowsNameTheirControls() {
    App a;
    a.program->Main(a.demo());
    frmMain* m = a.main();
    QStringList bad;
    bad << Check(m->general->Special());
    bad << Check(m->MultiLineEditor(Panel(a)->txtLabel));
    bad << Check(frmSetAction::Of(*m, a.p(), a.env()));
    bad << Check(a.program->Html()->HTML());
    {
      frmPicBrowser w(m, a.env());
      bad << Check(&w);
    }
    {
      // As a notice shows it: with a title, and no check box without a text.
      frmMyMsgBox w(m);
      w.setWindowTitle("Notice");
      w.show();
      QVERIFY(!w.chkBox->isVisible());
      QCOMPARE(QAccessible::queryAccessibleInterface(w.txtMessage)->text(QAccessible::Name),
               QString("Notice"));
      bad << Check(&w);
    }
    {
      frmAutoRepHTML_MSG w(m);
      bad << Check(&w);
    }
    {
      frmAutoRepHTML_2 w(m);
      bad << Check(&w);
    }
    {
      frmBrowserSetup w(a.env(), m);
      bad << Check(&w);
    }
    for (const QString& b : bad) qWarning().noquote() << b;
    QVERIFY2(bad.isEmpty(), qPrintable(QString("%1 controls without a fitting name").arg(bad.size())));
  }

  void aFieldWithoutALabelIsNotNamedAfterItsFrame() {
    App a;
    a.program->Main(a.demo());
    frmMain* m = a.main();
    auto name = [](QWidget* w) {
      return QAccessible::queryAccessibleInterface(w)->text(QAccessible::Name);
    };
    frmSpecial* special = m->general->Special();
    auto* frame = special->findChild<QGroupBox*>("frameLoading");
    QVERIFY(frame);
    QVERIFY(!name(special->txt_sLoading).isEmpty());
    QVERIFY(name(special->txt_sLoading) != frame->title().trimmed());
    frmHTML* html = a.program->Html()->HTML();
    QVERIFY(!name(html->txtAutoReplaceHTML_FileName).isEmpty());
    QVERIFY(name(html->txtAutoReplaceHTML_FileName) != html->frmAutoHTMLReplace->title().trimmed());
    QCOMPARE(name(html->txtHTML), QString::fromStdString(TextOf(frmHTML::Texts(), "frmHTML")));
  }

  void theBrowserListsFollowTheCaptionsAboveThem() {
    App a;
    a.program->Main("");
    auto name = [](QWidget* w) {
      return QAccessible::queryAccessibleInterface(w)->text(QAccessible::Name);
    };
    {
      frmBrowserSetup w(a.env(), a.main());
      QCOMPARE(name(w.ListNames), QString("Browser name:"));
      QCOMPARE(name(w.ListPaths), QString("Browser location:"));
    }
    // A translated caption names the list in the translation.
    UiTexts& t = frmBrowserSetup::Texts();
    auto it = std::find_if(t.begin(), t.end(), [](const UiText& x) { return std::string_view(x.control) == "lblPaths"; });
    QVERIFY(it != t.end());
    const std::string english = it->text;
    it->text = "Ort:";
    frmBrowserSetup w(a.env(), a.main());
    it->text = english;
    QCOMPARE(name(w.ListPaths), QString("Ort:"));
  }

  void thePictureBrowserNamesItsPlacesBeforeItIsFilled() {
    App a;
    a.program->Main("");
    frmPicBrowser w(a.main(), a.env());
    auto name = [](QWidget* w) {
      return QAccessible::queryAccessibleInterface(w)->text(QAccessible::Name);
    };
    QCOMPARE(name(w.Drive1), QString("Look in:"));
    QCOMPARE(name(w.btnOK), QString("Ok"));
    QVERIFY(!name(w.Dir1).isEmpty());
    QVERIFY(name(w.Scroll) != name(w.Dir1));
  }

  // Windows that are not dialogs close on Escape as the dialogs do.
  void escapeClosesTheHexColourWindow() {
    App a;
    a.program->Main(a.demo());
    frmHex2Color* h = a.main()->Hex2Color();
    QVERIFY(EscapeCloses(h, h->txtHEX));
  }

  void escapeClosesTheMultiLineEditor() {
    App a;
    a.program->Main(a.demo());
    frmMultiLineEditor* e = a.main()->MultiLineEditor(Panel(a)->txtLabel);
    QVERIFY(EscapeCloses(e, e->txtEditor));
  }

  void escapeClosesTheHtmlWindow() {
    App a;
    a.program->Main(a.demo());
    frmHTML* html = a.program->Html()->HTML();
    QVERIFY(EscapeCloses(html, html->txtHTML));
  }

  void escapeClosesTheAppletPathsWindow() {
    App a;
    a.program->Main(a.demo());
    QVERIFY(EscapeCloses(a.program->Html()->AppletPaths()));
  }

  void escapeClosesTheSurroundingHtmlWindow() {
    App a;
    a.program->Main(a.demo());
    QVERIFY(EscapeCloses(a.program->Html()->SurHTML()));
  }
};

QTEST_MAIN(AccessibilityTest)
#include "test_accessibility.moc"
