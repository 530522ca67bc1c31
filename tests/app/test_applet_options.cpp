// The applet's options: the Global Properties panel typed into and clicked,
// and the special options, program settings, border, fade and offset
// windows, each through real mouse and key events; the model, the settings
// and the design window's pixels are checked after each.
#include <QCheckBox>
#include <QColorDialog>
#include <QComboBox>
#include <QGroupBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QtTest>

#include "core/session.h"
#include "core/settings.h"
#include "core/startup.h"
#include "design/colour_box.h"
#include "design/frm_design.h"
#include "properties/applet_options.h"
#include "properties/frm_advanced.h"
#include "properties/frm_applet_dialogs.h"
#include "properties/frm_button_effects.h"
#include "properties/frm_main.h"
#include "properties/frm_set_action.h"
#include "properties/frm_applet_behaviour.h"
#include "properties/global_panel.h"
#include "render/scene.h"
#include "tests/app/app_fixture.h"

using namespace kp;
using namespace kp::apptest;

namespace {

QImage Composed(App& a) { return a.main()->Design()->scene().Compose(); }

// A point of the applet that no button covers, inside any applet border.
QPoint FreePoint(const Project& p) {
  const int margin = p.iABorderStyle != 0 ? p.iABorderWidth + 1 : 1;
  for (int y = margin; y < p.AppletHeight - margin; ++y)
    for (int x = margin; x < p.AppletWidth - margin; ++x) {
      bool covered = false;
      for (int i = 1; i <= p.ButtonCount && !covered; ++i) {
        const tButton& b = p.button(i);
        covered = QRect(b.x, b.y, b.Width, b.Height).contains(x, y);
      }
      if (!covered) return QPoint(x, y);
    }
  return QPoint(-1, -1);
}

void Retype(QLineEdit* f, const QString& text) {
  f->setFocus();
  f->selectAll();
  QTest::keyClicks(f, text);
}


// Why a window's controls do not show whole, "" when they do: each visible
// control lies inside its parent and has at least its smallest good size,
// and no two controls of one parent overlap.
QString LayoutFault(QWidget* window) {
  const QList<QWidget*> all = window->findChildren<QWidget*>();
  for (QWidget* w : all) {
    // The program's own controls: the toolkit's inner parts size themselves.
    if (w->objectName().isEmpty() || w->objectName().startsWith("qt_")) continue;
    if (!w->isVisible() || w->isWindow() || !w->parentWidget()) continue;
    if (!w->parentWidget()->rect().contains(w->geometry()))
      return w->objectName() + " leaves its parent";
    const QSize least = w->minimumSizeHint();
    if (least.isValid() && (w->width() < least.width() || w->height() < least.height()))
      return w->objectName() + " is clipped";
    for (QWidget* o : all) {
      if (o == w || !o->isVisible() || o->isWindow() || o->parentWidget() != w->parentWidget() ||
          o->objectName().isEmpty() || o->objectName().startsWith("qt_"))
        continue;
      if (w->geometry().intersects(o->geometry()))
        return w->objectName() + " overlaps " + o->objectName();
    }
  }
  return QString();
}

void Shot(QWidget* window, const char* name) {
  const QByteArray dir = qgetenv("KP_SHOT_DIR");
  if (!dir.isEmpty()) window->grab().save(QString::fromUtf8(dir) + "/" + name + ".png");
}

QColor ColourOf(Colour c) { return QColor(c & 0xFF, (c >> 8) & 0xFF, (c >> 16) & 0xFF); }

}  // namespace

class AppletOptionsTest : public WatchedTest {
  Q_OBJECT

 private:
  static GlobalPanel* General(App& a) { return a.main()->general; }

 private slots:
  // --- Size of the applet ---------------------------------------------------------------

  void fiveTypedInAppletWidthFollowedByEnterYieldsTen() {
    App a;
    a.program->Main(a.demo());
    GlobalPanel* g = General(a);
    QLineEdit* w = a.main()->txtAppletWidth;
    QVERIFY(!w->isReadOnly());
    QVERIFY(g->picUpdateDesignSize->isHidden());
    Retype(w, "5");
    QCOMPARE(int(a.p().AppletWidth), 10);
    QVERIFY(!a.p().bProjectSaved);
    // The design window is out of date until Enter.
    QVERIFY(!g->picUpdateDesignSize->isHidden());
    QVERIFY(!g->lblUpdateDesignSize->isHidden());
    QTest::keyClick(w, Qt::Key_Return);
    QCOMPARE(w->text(), QString("10"));
    QCOMPARE(int(a.p().AppletWidth), 10);
    QVERIFY(g->picUpdateDesignSize->isHidden());
    QCOMPARE(a.main()->Design()->width(), 10);
  }

  void abcInAppletWidthLeavesTheOldValueAndTheFieldShowsItAgain() {
    App a;
    a.program->Main(a.demo());
    QLineEdit* w = a.main()->txtAppletWidth;
    const i16 before = a.p().AppletWidth;
    Retype(w, "abc");
    QCOMPARE(a.p().AppletWidth, before);
    QTest::keyClick(w, Qt::Key_Return);
    QCOMPARE(a.p().AppletWidth, before);
    QCOMPARE(w->text(), QString::number(before));
  }

  void aHeightTypedAndClickedOnTheUpdateLabelIsTakenAtOnce() {
    App a;
    a.program->Main(a.demo());
    GlobalPanel* g = General(a);
    QLineEdit* h = a.main()->txtAppletHeight;
    Retype(h, "150");
    QTest::mouseClick(g->lblUpdateDesignSize, Qt::LeftButton);
    QCOMPARE(int(a.p().AppletHeight), 150);
    QCOMPARE(a.main()->Design()->height(), 150);
    QVERIFY(g->picUpdateDesignSize->isHidden());
    // Bigger than the limit: held to it.
    Retype(h, "40000");
    QTest::mouseClick(g->picUpdateDesignSize, Qt::LeftButton);
    QCOMPARE(int(a.p().AppletHeight), 32000);
    QCOMPARE(h->text(), QString("32000"));
  }

  // --- Background picture ---------------------------------------------------------------

  void aPictureNameTypedIntoAnEmptyBackImgSelectsTile() {
    App a;
    a.program->Main("");
    GlobalPanel* g = General(a);
    QLineEdit* t = a.main()->txtBackImg;
    QVERIFY(t->text().isEmpty());
    QCOMPARE(g->cmbBackImgStyle->currentIndex(), -1);
    QVERIFY(!g->cmbBackImgStyle->isEnabled());
    const QString picture = QString::fromStdString(a.home.path() + "/Projects/demo_bg.jpg");
    Retype(t, picture);
    QCOMPARE(g->cmbBackImgStyle->currentText(), QString("Tile"));
    QVERIFY(g->cmbBackImgStyle->isEnabled());
    QVERIFY(!g->picBgOffset->isHidden());
    QCOMPARE(a.p().BackImg, picture.toStdString());
    QCOMPARE(int(a.p().BackImgStyle), 3);
    QTest::keyClick(t, Qt::Key_Return);
    // The picture repeats from the corner: every free pixel is the
    // picture's own at the place modulo its size.
    const QImage tile(picture);
    QVERIFY(!tile.isNull());
    const QPoint at = FreePoint(a.p());
    QVERIFY(at.x() >= 0);
    QCOMPARE(Composed(a).pixelColor(at), tile.pixelColor(at.x() % 64, at.y() % 64));
    // Emptied: no style, the list off.
    Retype(t, "");
    QTest::keyClick(t, Qt::Key_Backspace);
    QCOMPARE(g->cmbBackImgStyle->currentIndex(), -1);
    QVERIFY(!g->cmbBackImgStyle->isEnabled());
    QCOMPARE(int(a.p().BackImgStyle), 0);
  }

  void centerHidesTheOffsetControl() {
    App a;
    a.program->Main(a.demo());
    GlobalPanel* g = General(a);
    QCOMPARE(g->cmbBackImgStyle->currentText(), QString("Tile"));
    QVERIFY(!g->picBgOffset->isHidden());
    QVERIFY(a.p().bProjectSaved);
    const QImage before = Composed(a);
    g->cmbBackImgStyle->setFocus();
    QTest::keyClick(g->cmbBackImgStyle, Qt::Key_Up);
    QCOMPARE(g->cmbBackImgStyle->currentText(), QString("Center"));
    QVERIFY(g->picBgOffset->isHidden());
    QCOMPARE(int(a.p().BackImgStyle), 2);
    QVERIFY(!a.p().bProjectSaved);
    // One picture in the middle: a free corner shows the applet's colour
    // now, not the tile.
    const QImage after = Composed(a);
    QVERIFY(after != before);
    const QPoint corner(a.p().iABorderWidth + 1, a.p().iABorderWidth + 1);
    QVERIFY(after.pixelColor(corner) != QImage(QString::fromStdString(a.p().BackImg)).pixelColor(corner));
    // Back to Manual: the offset control returns.
    QTest::keyClick(g->cmbBackImgStyle, Qt::Key_Up);
    QCOMPARE(int(a.p().BackImgStyle), 1);
    QVERIFY(!g->picBgOffset->isHidden());
  }

  void thePickedBackgroundColourIsPaintedUnderTheButtons() {
    App a;
    a.program->Main("");
    auto ran = WhenModal<QColorDialog>([](QColorDialog* d) {
      d->setCurrentColor(QColor(10, 200, 30));
      d->accept();
    });
    QTest::mouseClick(a.main()->picGeneralBackGround, Qt::LeftButton);
    QVERIFY(*ran);
    QCOMPARE(a.p().BackGround, RGB(10, 200, 30));
    QCOMPARE(a.main()->picGeneralBackGround->colour(), RGB(10, 200, 30));
    QCOMPARE(Composed(a).pixelColor(FreePoint(a.p())), QColor(10, 200, 30));
    QVERIFY(!a.p().bProjectSaved);
  }

  void aCancelledBackgroundColourChangesNothing() {
    App a;
    a.program->Main("");
    const Colour before = a.p().BackGround;
    auto ran = WhenModal<QColorDialog>([](QColorDialog* d) { d->reject(); });
    QTest::mouseClick(a.main()->picGeneralBackGround, Qt::LeftButton);
    QVERIFY(*ran);
    QCOMPARE(a.p().BackGround, before);
    QVERIFY(a.p().bProjectSaved);
  }

  // --- Offset ---------------------------------------------------------------------------------

  void theOffsetDialogAppliesBothNumbersAndCancelKeepsWhatApplyWrote() {
    App a;
    a.program->Main(a.demo());
    GlobalPanel* g = General(a);
    QTest::mouseClick(g->picBgOffset, Qt::LeftButton);
    frmSetBgOffset* d = g->SetBgOffset();
    QVERIFY(d->isVisible());
    QCOMPARE(d->txtX->text(), QString::number(a.p().iBgOffsetX));
    const QImage before = Composed(a);
    Retype(d->txtX, "7");
    QCOMPARE(d->scrollX->value(), 7);
    QTest::keyClick(d->txtX, Qt::Key_Return);
    QCOMPARE(d->focusWidget(), d->txtY);
    QTest::keyClicks(d->txtY, "5");
    QCOMPARE(a.p().iBgOffsetX, i16{0});
    QTest::mouseClick(d->btnApply, Qt::LeftButton);
    QCOMPARE(int(a.p().iBgOffsetX), 7);
    QCOMPARE(int(a.p().iBgOffsetY), 5);
    QVERIFY(Composed(a) != before);
    Retype(d->txtX, "99");
    QTest::mouseClick(d->btnCANCEL, Qt::LeftButton);
    QVERIFY(!d->isVisible());
    QCOMPARE(int(a.p().iBgOffsetX), 7);
  }

  // --- Border -----------------------------------------------------------------------------------

  void withAutoFullRepaintClearABorderChangeWaitsForTheRepaintButton() {
    App a;
    a.program->Main("");
    GlobalPanel* g = General(a);
    QCOMPARE(a.p().iABorderStyle, i16{0});
    QTest::mouseClick(g->btnAppletBorder, Qt::LeftButton);
    frmAppletBorder* d = g->AppletBorder();
    QVERIFY(d->isVisible());
    QVERIFY(d->chkAutoFullRepaint->isChecked());
    QVERIFY(!d->btnRepainBackGround_and_border->isEnabled());
    Tick(d, "chkAutoFullRepaint");
    QVERIFY(!d->chkAutoFullRepaint->isChecked());
    QCOMPARE(a.store.Get(kSecParams, "ABorder_AutoFullRepaint"), std::optional<std::string>("0"));
    QVERIFY(d->btnRepainBackGround_and_border->isEnabled());
    const QImage before = Composed(a);
    d->cmbBorderStyle->setFocus();
    QTest::keyClick(d->cmbBorderStyle, Qt::Key_Down);
    QCOMPARE(int(a.p().iABorderStyle), 1);
    QVERIFY(!a.p().bProjectSaved);
    QVERIFY2(Composed(a) == before, "no repaint while the box is clear");
    QTest::mouseClick(d->btnRepainBackGround_and_border, Qt::LeftButton);
    const QImage after = Composed(a);
    QVERIFY(after != before);
    // The raised border's light edge on the top row.
    QVERIFY(after.pixelColor(a.p().AppletWidth / 2, 0) != before.pixelColor(a.p().AppletWidth / 2, 0));
    // Checked again: every edit repaints at once.
    Tick(d, "chkAutoFullRepaint");
    QCOMPARE(a.store.Get(kSecParams, "ABorder_AutoFullRepaint"), std::optional<std::string>("1"));
    Retype(d->txtBorderWidth, "3");
    QCOMPARE(int(a.p().iABorderWidth), 3);
    QCOMPARE(d->scrollBorderWidth->value(), 3);
    QVERIFY(Composed(a) != after);
    // The form only hides.
    d->close();
    QVERIFY(!d->isVisible());
    QCOMPARE(g->AppletBorder(), d);
  }

  // --- Fade ---------------------------------------------------------------------------------------

  void changeColorsTwiceRestoresBothColours() {
    App a;
    a.program->Main("");
    GlobalPanel* g = General(a);
    QTest::mouseClick(g->btnAppletFade, Qt::LeftButton);
    frmAppletFade* d = g->AppletFade();
    QVERIFY(d->isVisible());
    const Colour back = a.p().BackGround, fade = a.p().cFadeColor;
    QVERIFY(back != fade);
    const QPoint at = FreePoint(a.p());
    QCOMPARE(Composed(a).pixelColor(at), ColourOf(back));
    QTest::mouseClick(d->btnChangeColors, Qt::LeftButton);
    QCOMPARE(a.p().BackGround, fade);
    QCOMPARE(a.p().cFadeColor, back);
    QCOMPARE(d->picGeneralBackGround->colour(), fade);
    QCOMPARE(a.main()->picGeneralBackGround->colour(), fade);
    QCOMPARE(Composed(a).pixelColor(at), ColourOf(fade));
    QTest::mouseClick(d->btnChangeColors, Qt::LeftButton);
    QCOMPARE(a.p().BackGround, back);
    QCOMPARE(a.p().cFadeColor, fade);
    QCOMPARE(Composed(a).pixelColor(at), ColourOf(back));
    QVERIFY(!a.p().bProjectSaved);
  }

  void aFadeStyleChosenPaintsTheGradient() {
    App a;
    a.program->Main("");
    GlobalPanel* g = General(a);
    QTest::mouseClick(g->btnAppletFade, Qt::LeftButton);
    frmAppletFade* d = g->AppletFade();
    d->cmbFadeStyle->setFocus();
    QTest::keyClick(d->cmbFadeStyle, Qt::Key_Down);
    QCOMPARE(int(a.p().iFadeStyle), 1);
    // The gradient starts with the fade colour in the first column.
    QCOMPARE(Composed(a).pixelColor(0, a.p().AppletHeight - 1), ColourOf(a.p().cFadeColor));
  }

  // --- Special options ------------------------------------------------------------------------------

  void restoreDefaultsFollowedByCancelChangesNothing() {
    App a;
    a.program->Main(a.demo());
    GlobalPanel* g = General(a);
    const SpecialOptions before = SpecialOptionsOf(a.p());
    QVERIFY(before != SpecialDefaults());
    QTest::mouseClick(g->btnAppletSpecial, Qt::LeftButton);
    frmSpecial* d = g->Special();
    QVERIFY(d->isVisible());
    QCOMPARE(d->windowTitle(), QString("Applet's Special Options - Demo.kpn"));
    QCOMPARE(d->ReadControls(), before);
    Click(d, "btnRestoreDefaults");
    QCOMPARE(d->ReadControls(), SpecialDefaults());
    QCOMPARE(SpecialOptionsOf(a.p()), before);
    Click(d, "btnCANCEL");
    QVERIFY(!d->isVisible());
    QCOMPARE(SpecialOptionsOf(a.p()), before);
    QVERIFY(a.p().bProjectSaved);
  }

  void okReadsEveryFieldAndABadNumberIsToldWhileTheOthersAreStillRead() {
    App a;
    a.program->Main("");
    GlobalPanel* g = General(a);
    QTest::mouseClick(g->btnAppletSpecial, Qt::LeftButton);
    frmSpecial* d = g->Special();
    Retype(d->txtTipBorderWidth, "x3");
    Retype(d->txtTipHideAfter, "4000");
    Tick(d, "chkTipItalic");
    Tick(d, "chkDoScroll");
    QVERIFY(d->optDirections[2]->isEnabled());
    QTest::mouseClick(d->optDirections[2], Qt::LeftButton, Qt::NoModifier, QPoint(6, d->optDirections[2]->height() / 2));
    QTest::mouseClick(d->optUnusualRepaint, Qt::LeftButton, Qt::NoModifier, QPoint(6, d->optUnusualRepaint->height() / 2));
    Retype(d->txtiScStep, "12");
    QCOMPARE(d->scrolliScStep->value(), 12);
    Retype(d->txt_sLoading, "Wait");
    QTest::keyClick(d->txt_sLoading, Qt::Key_Return);
    QVERIFY(!d->isVisible());
    QCOMPARE(a.prompter.boxes.size(), size_t{1});
    QCOMPARE(a.prompter.boxes[0].text, std::string("Type mismatch"));
    QCOMPARE(int(a.p().iTipBorderWidth), 1);
    QCOMPARE(int(a.p().iTipHideAfter), 4000);
    QCOMPARE(int(a.p().iTipFontStyle), 2);
    QVERIFY(a.p().bDoScroll);
    QCOMPARE(int(a.p().iScDirection), 2);
    QCOMPARE(int(a.p().iScStep), 12);
    QCOMPARE(int(a.p().bUnusualRepaint), -1);
    QCOMPARE(a.p().sLoading, std::string("Wait"));
    QVERIFY(!a.p().bProjectSaved);
  }

  void scrollingOffDisablesItsControlsAndEnterWalksTheTipFields() {
    App a;
    a.program->Main("");
    frmSpecial* d = General(a)->Special();
    QTest::mouseClick(General(a)->btnAppletSpecial, Qt::LeftButton);
    QVERIFY(!d->chkDoScroll->isChecked());
    for (QWidget* w : {static_cast<QWidget*>(d->txtiScStep), static_cast<QWidget*>(d->scrolliScDelay),
                       static_cast<QWidget*>(d->optDirections[0])})
      QVERIFY(!w->isEnabled());
    d->txtTipBorderWidth->setFocus();
    QTest::keyClick(d->txtTipBorderWidth, Qt::Key_Return);
    QCOMPARE(d->focusWidget(), d->txtTipDelay);
    QTest::keyClick(d->txtTipDelay, Qt::Key_Return);
    QCOMPARE(d->focusWidget(), d->txtTipHideAfter);
    QTest::keyClick(d->txtTipHideAfter, Qt::Key_Return);
    QCOMPARE(d->focusWidget(), d->txt_sLoading);
    Click(d, "btnCANCEL");
  }

  // --- Program settings ---------------------------------------------------------------------------

  void programSettingsOkStoresEveryBoxAndTheDontKeysNegated() {
    App a;
    a.program->Main("");
    QVERIFY(General(a)->mnuAdvanced);
    General(a)->mnuAdvanced->trigger();
    frmAdvanced* d = General(a)->Advanced();
    QVERIFY(d->isVisible());
    QCOMPARE(d->ReadControls(), AdvancedOptionsOf(a.env()));
    const bool createRecent = d->chk_Create_Recent->isChecked();
    Tick(d, "chkAutoTile");
    Tick(d, "chkSaveBackup");
    QVERIFY(Session().bSaveBackup);
    Tick(d, "chkReadyForUpload");
    Tick(d, "chk_Create_Recent");
    Tick(d, "chk_RegPixDlgBox");
    Click(d, "btnOK");
    QVERIFY(!d->isVisible());
    QCOMPARE(GetParam(a.env(), "AutoTile"), std::string("0"));
    QVERIFY(!a.main()->bAutoTile);
    QVERIFY(!a.main()->Design()->scene().bAutoTile);
    QCOMPARE(GetParam(a.env(), "bSaveBackup"), std::string("1"));
    QCOMPARE(GetParam(a.env(), "DontShowReadyForUpload"), std::string("1"));
    QCOMPARE(GetParam(a.env(), "DontShow_frm_Create_Recent"), std::string(createRecent ? "1" : "0"));
    QCOMPARE(GetParam(a.env(), "DontShowSomeFilesWarning"), std::string("0"));
    QCOMPARE(GetParam(a.env(), "chk_RegPixDlgBox"), std::string("1"));
    QVERIFY(a.main()->Design()->isVisible());
    Session().bSaveBackup = false;
  }

  void programSettingsCancelWritesNothing() {
    App a;
    a.program->Main("");
    const auto before = a.store.Get(kSecParams, "AutoTile");
    General(a)->mnuAdvanced->trigger();
    frmAdvanced* d = General(a)->Advanced();
    Tick(d, "chkAutoTile");
    Tick(d, "chk_RegPixDlgBox");
    Click(d, "btnCANCEL");
    QCOMPARE(a.store.Get(kSecParams, "AutoTile"), before);
    QCOMPARE(GetParam(a.env(), "chk_RegPixDlgBox"), std::string("0"));
  }

  void programSettingsRestoreIsQuietAndResetAllAsks() {
    App a;
    a.program->Main("");
    SetParam(a.env(), "bShowGrid", "1");
    SetParam(a.env(), "chk_RegPixDlgBox", "1");
    fWriteValue(a.env(), kSecRecent, "File1", "/x.kpn");
    General(a)->mnuAdvanced->trigger();
    frmAdvanced* d = General(a)->Advanced();
    QVERIFY(d->chk_RegPixDlgBox->isChecked());
    const size_t boxes = a.prompter.boxes.size();
    Click(d, "btnRestoreDefaults");
    QCOMPARE(a.prompter.boxes.size(), boxes);
    QCOMPARE(d->ReadControls(), AdvancedDefaults());
    QCOMPARE(a.store.Get(kSecParams, "bShowGrid"), std::optional<std::string>());
    QCOMPARE(a.store.Get(kSecRecent, "File1"), std::optional<std::string>("/x.kpn"));
    // The whole version after the question; No keeps everything.
    a.prompter.answers.push_back(Answer::No);
    Click(d, "btnResetAll");
    QCOMPARE(a.prompter.boxes.back().text, std::string("Reset KestrelPane 2.02 registry?"));
    QCOMPARE(a.store.Get(kSecRecent, "File1"), std::optional<std::string>("/x.kpn"));
    a.prompter.answers.push_back(Answer::Yes);
    Click(d, "btnResetAll");
    QCOMPARE(a.store.Get(kSecRecent, "File1"), std::optional<std::string>());
    Click(d, "btnCANCEL");
  }

  void everyNewWindowShowsItsControlsWholeAtItsFirstSize() {
    App a;
    a.program->Main(a.demo());
    GlobalPanel* g = General(a);
    a.main()->show();
    QCoreApplication::processEvents();
    QCOMPARE(LayoutFault(a.main()->frmGeneral), QString());
    Shot(a.main(), "frmMain");
    struct Named {
      QWidget* w;
      const char* name;
    };
    const Named windows[] = {{g->Special(), "frmSpecial"},       {g->Advanced(), "frmAdvanced"},
                             {g->AppletBorder(), "frmAppletBorder"}, {g->AppletFade(), "frmAppletFade"},
                             {g->SetBgOffset(), "frmSetBgOffset"}, {g->ButtonSpecial(), "frmButtonSpecial"},
                             {g->Descent(), "frmDescent"}};
    for (const Named& n : windows) {
      n.w->adjustSize();
      n.w->show();
      QCoreApplication::processEvents();
      QVERIFY2(LayoutFault(n.w).isEmpty(), qPrintable(QString(n.name) + ": " + LayoutFault(n.w)));
      Shot(n.w, n.name);
      n.w->hide();
    }
    Shot(a.main()->Design(), "frmDesign");
  }

  // --- Saving -------------------------------------------------------------------------------------

  void everyAppletOptionSurvivesSaveAndLoad() {
    App a;
    a.program->Main("");
    GlobalPanel* g = General(a);
    QTest::mouseClick(g->btnAppletSpecial, Qt::LeftButton);
    frmSpecial* s = g->Special();
    SpecialOptions o = SpecialOptionsOf(a.p());
    o.txt_sLoading = "Please hold";
    o.pic_cLoadingFont = RGB(1, 2, 3);
    o.pic_cLoadingBack = RGB(4, 5, 6);
    o.cmb_iLoadingFont_Name = 2;
    o.cmb_iLoadingFont_Size = "14";
    o.chk_Bold_LoadingFont = false;
    o.chk_Italic_LoadingFont = true;
    o.chkClip = false;
    o.txtTipBorderWidth = "3";
    o.lsTipFont = 1;
    o.lsTipFontSize = "12";
    o.chkTipBold = true;
    o.picTipBackColor = RGB(7, 8, 9);
    o.picTipTextColor = RGB(10, 11, 12);
    o.picTipBorderColor = RGB(13, 14, 15);
    o.txtTipDelay = "100";
    o.txtTipHideAfter = "900";
    o.optUnusualRepaint = true;
    o.chkDoScroll = true;
    o.optDirections = 3;
    o.txtiScDelay = "20";
    o.txtiScStep = "4";
    o.chkPreLoad = false;
    s->ShowOptions(o);
    Click(s, "btnOK");
    QTest::mouseClick(g->btnAppletBorder, Qt::LeftButton);
    frmAppletBorder* b = g->AppletBorder();
    b->cmbBorderStyle->setFocus();
    QTest::keyClick(b->cmbBorderStyle, Qt::Key_Down);
    QTest::keyClick(b->cmbBorderStyle, Qt::Key_Down);
    Retype(b->txtBorderWidth, "6");
    Retype(b->txtBorderShade, "33");
    QTest::mouseClick(g->btnAppletFade, Qt::LeftButton);
    QTest::mouseClick(g->AppletFade()->btnChangeColors, Qt::LeftButton);
    g->AppletFade()->cmbFadeStyle->setFocus();
    QTest::keyClick(g->AppletFade()->cmbFadeStyle, Qt::Key_End);
    const Project want = a.p();
    const std::string file = a.home.path() + "/Projects/Options.kpn";
    a.prompter.saveAnswers.push_back(file);
    a.main()->mnuSaveAs->trigger();
    QVERIFY(a.p().bProjectSaved);
    SetDefaultMainParams(a.p(), a.env());
    QVERIFY(SpecialOptionsOf(a.p()) != o);
    QCOMPARE(int(a.main()->OpenProjectFile(file)), int(LoadResult::Loaded));
    QCOMPARE(SpecialOptionsOf(a.p()), o);
    QCOMPARE(a.p().iABorderStyle, i16{2});
    QCOMPARE(a.p().iABorderWidth, i16{6});
    QCOMPARE(a.p().iABorderShade, i16{33});
    QCOMPARE(a.p().BackGround, want.BackGround);
    QCOMPARE(a.p().cFadeColor, want.cFadeColor);
    QCOMPARE(a.p().iFadeStyle, i16{4});
    // The panel and the dialogs show what was loaded.
    QCOMPARE(a.main()->picGeneralBackGround->colour(), want.BackGround);
    QCOMPARE(g->AppletFade()->cmbFadeStyle->currentIndex(), 4);
  }

  // --- The applet's programs ---------------------------------------------------------------

  void eachAppletProgramButtonOpensTheActionEditorOnItsOwnProgram() {
    App a;
    a.program->Main(a.demo());
    a.p().AppletProgramStart = "6 500;";
    a.p().AppletProgramOVER = "1 Home;2 News;";
    a.p().AppletProgramDOWN = "";
    a.p().AppletProgramOUT = "10 Home 3 150;";
    GlobalPanel* g = General(a);
    const char* keys[] = {"AppletProgramStart", "AppletProgramOVER", "AppletProgramDOWN",
                          "AppletProgramOUT"};
    const int rows[] = {1, 2, 0, 1};
    for (int k = 0; k < 4; ++k) {
      std::string key;
      int count = -1;
      QString caption;
      auto seen = WhenWindow("frmSetAction", [&](QWidget* w) {
        auto* e = dynamic_cast<frmSetAction*>(w);
        QVERIFY(e);
        key = e->strReturnTo;
        count = e->lstActions->count();
        caption = e->windowTitle();
        Click(e, "btnCANCEL");
      });
      QTest::mouseClick(g->btnAppletProgram[k], Qt::LeftButton);
      QVERIFY(*seen);
      QCOMPARE(key, std::string(keys[k]));
      QCOMPARE(count, rows[k]);
      QVERIFY2(caption.endsWith(g->btnAppletProgram[k]->toolTip()), qPrintable(caption));
    }
    QCOMPARE(a.p().AppletProgramOVER, std::string("1 Home;2 News;"));
  }
};

QTEST_MAIN(AppletOptionsTest)
#include "test_applet_options.moc"
