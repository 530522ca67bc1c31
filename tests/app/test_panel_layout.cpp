// The button panel at the main window's first size: every control of every
// mode is in sight, the small scroll bars have a thumb to drag, fields keep
// their width when neighbours come and go, and translated captions are
// not cut.
#include <QAbstractButton>
#include <QCheckBox>
#include <QComboBox>
#include <QFile>
#include <QFrame>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QStyleOptionSlider>
#include <QTemporaryDir>
#include <QtTest>

#include <fstream>

#include "app/language_catalog.h"
#include "core/language.h"
#include "properties/button_panel.h"
#include "properties/frm_main.h"
#include "tests/app/app_fixture.h"

using namespace kp;
using namespace kp::apptest;

namespace {

ButtonPanel* Panel(App& a) { return static_cast<ButtonPanel*>(a.main()->panel); }

// The started program at the size its main window first takes.
void Start(App& a) {
  QCOMPARE(a.program->Main(a.demo()), -1);
  a.main()->show();
  QVERIFY(QTest::qWaitForWindowExposed(a.main()));
  QCoreApplication::processEvents();
}

void Settle() {
  for (int k = 0; k < 3; ++k) QCoreApplication::processEvents();
}

// Saves a picture of the panel when KP_LAYOUT_SHOTS names a folder.
void Shot(App& a, const char* name) {
  const QByteArray dir = qgetenv("KP_LAYOUT_SHOTS");
  if (dir.isEmpty()) return;
  a.main()->grab().save(QString::fromLocal8Bit(dir) + "/" + name + ".png");
}

// The controls of the panel that show but lie outside the part of the
// panel one can see, with their places.
QStringList OutOfSight(App& a) {
  ButtonPanel* panel = Panel(a);
  auto* scroll = a.main()->findChild<QScrollArea*>("scrollBtnProp");
  if (!scroll) return {"no scroll area"};
  QWidget* view = scroll->viewport();
  const QRect seen = view->rect();
  QStringList out;
  const QSize size = a.main()->size(), hint = a.main()->sizeHint();
  const QString window = QString(" (window %1x%2, wants %3x%4)")
                             .arg(size.width()).arg(size.height()).arg(hint.width()).arg(hint.height());
  for (QWidget* w : panel->findChildren<QWidget*>()) {
    if (!w->isVisible() || w->objectName().isEmpty() || w->objectName().startsWith("qt_")) continue;
    if (qobject_cast<QFrame*>(w) && !qobject_cast<QLabel*>(w) && w->objectName().startsWith("frame"))
      continue;
    const QRect r(w->mapTo(view, QPoint(0, 0)), w->size());
    if (!seen.contains(r))
      out << QString("%1 at %2,%3 %4x%5 outside %6x%7")
                 .arg(w->objectName())
                 .arg(r.x())
                 .arg(r.y())
                 .arg(r.width())
                 .arg(r.height())
                 .arg(seen.width())
                 .arg(seen.height()) + window;
  }
  return out;
}

QRect Part(QScrollBar* bar, QStyle::SubControl part) {
  QStyleOptionSlider opt;
  opt.initFrom(bar);
  opt.orientation = bar->orientation();
  opt.minimum = bar->minimum();
  opt.maximum = bar->maximum();
  opt.sliderPosition = bar->sliderPosition();
  opt.sliderValue = bar->value();
  opt.singleStep = bar->singleStep();
  opt.pageStep = bar->pageStep();
  opt.upsideDown = bar->invertedAppearance();
  if (bar->orientation() == Qt::Horizontal) opt.state |= QStyle::State_Horizontal;
  return bar->style()->subControlRect(QStyle::CC_ScrollBar, &opt, part, bar);
}

// Captions narrower than their text, in a window whose layout could have
// given them room.
QStringList Cut(QWidget* window) {
  QStringList out;
  for (QWidget* w : window->findChildren<QWidget*>()) {
    if (!w->isVisible() || w->objectName().startsWith("qt_")) continue;
    QString text;
    if (auto* l = qobject_cast<QLabel*>(w)) text = l->text();
    else if (auto* b = qobject_cast<QAbstractButton*>(w)) text = b->text();
    if (text.isEmpty()) continue;
    const int need = qobject_cast<QLabel*>(w) ? w->minimumSizeHint().width() : w->sizeHint().width();
    if (w->width() < need)
      out << QString("%1 \"%2\": %3 < %4").arg(w->objectName(), text).arg(w->width()).arg(need);
  }
  return out;
}

}  // namespace

class PanelLayoutTest : public QObject {
  Q_OBJECT

 private slots:
  void theNormalPanelIsInSight() {
    App a;
    Start(a);
    Shot(a, "panel_normal");
    const QStringList out = OutOfSight(a);
    QVERIFY2(out.isEmpty(), qPrintable(out.join("\n")));
  }

  void moreOptionsKeepsTheRightSideInSight() {
    App a;
    Start(a);
    ButtonPanel* panel = Panel(a);
    const int before = panel->btnAdvanced->mapTo(a.main(), QPoint(0, 0)).x();
    QTest::mouseClick(panel->btnAdvanced, Qt::LeftButton);
    Settle();
    QVERIFY(panel->chkHidden->isVisible());
    Shot(a, "panel_more_options");
    const QStringList out = OutOfSight(a);
    QVERIFY2(out.isEmpty(), qPrintable(out.join("\n")));
    // The options button stays where the pointer left it.
    QCOMPARE(panel->btnAdvanced->mapTo(a.main(), QPoint(0, 0)).x(), before);
  }

  void manualTextPositionKeepsSetActionInSight() {
    App a;
    Start(a);
    ButtonPanel* panel = Panel(a);
    const QRect action = panel->btnAction->geometry();
    QTest::mouseClick(panel->chkPositionText, Qt::LeftButton, Qt::NoModifier,
                      QPoint(8, panel->chkPositionText->height() / 2));
    Settle();
    QVERIFY(panel->txtLabelPosX->isVisible());
    Shot(a, "panel_manual_text");
    const QStringList out = OutOfSight(a);
    QVERIFY2(out.isEmpty(), qPrintable(out.join("\n")));
    QCOMPARE(panel->btnAction->geometry(), action);
  }

  void everyModeAtOnceStaysInSight() {
    App a;
    Start(a);
    ButtonPanel* panel = Panel(a);
    QTest::mouseClick(panel->btnAdvanced, Qt::LeftButton);
    panel->chkPositionText->click();
    panel->cmbImgStyle->setCurrentIndex(1);
    Settle();
    QVERIFY(panel->txtImgX->isVisible());
    Shot(a, "panel_all_modes");
    const QStringList out = OutOfSight(a);
    QVERIFY2(out.isEmpty(), qPrintable(out.join("\n")));
  }

  void theImagePathKeepsItsWidthWithAnImageStyle() {
    App a;
    Start(a);
    ButtonPanel* panel = Panel(a);
    const int width = panel->txtImage->width();
    QVERIFY(width >= 80);
    for (int style : {1, 2, 0, 1}) {
      panel->cmbImgStyle->setCurrentIndex(style);
      Settle();
      QCOMPARE(panel->frameImgOffset->isVisible(), style == 1);
      QCOMPARE(panel->txtImage->width(), width);
    }
    Shot(a, "panel_image_style");
    const QStringList out = OutOfSight(a);
    QVERIFY2(out.isEmpty(), qPrintable(out.join("\n")));
  }

  void theWidthAndShadeBarsHaveRoomForAThumb() {
    App a;
    Start(a);
    ButtonPanel* panel = Panel(a);
    for (QScrollBar* bar : {panel->scrollBorderWidth, panel->scrollBorderShade}) {
      const QRect groove = Part(bar, QStyle::SC_ScrollBarGroove);
      const QRect thumb = Part(bar, QStyle::SC_ScrollBarSlider);
      QVERIFY2(thumb.width() >= 8, qPrintable(bar->objectName()));
      // The thumb can travel: the groove is well longer than the thumb.
      QVERIFY2(groove.width() >= thumb.width() + 16, qPrintable(bar->objectName()));
      QVERIFY(groove.intersects(thumb));
    }
  }

  void aColourCaptionKeepsItsDistanceFromItsSwatch() {
    App a;
    Start(a);
    ButtonPanel* panel = Panel(a);
    for (const char* pair : {"lblFontColor:picFontColor", "lblBackColor:picBackColor"}) {
      const QStringList names = QString(pair).split(':');
      auto* label = panel->findChild<QLabel*>(names[0]);
      auto* box = panel->findChild<QWidget*>(names[1]);
      QVERIFY(label && box);
      const int textEnd = label->x() + label->contentsRect().left() +
                          label->fontMetrics().horizontalAdvance(label->text());
      QVERIFY2(box->x() - textEnd >= 4, qPrintable(QString("%1: %2").arg(pair).arg(box->x() - textEnd)));
      QCOMPARE(label->y() + label->height() / 2, box->y() + box->height() / 2);
    }
  }

  void aPseudoTranslationCutsNoCaptionOfTheMainWindow() {
    TablesSnapshot keep;
    App a;
    std::ofstream(a.home.path() + "/english_lng", std::ios::binary) << PseudoLanguageFile();
    Start(a);
    ButtonPanel* panel = Panel(a);
    QTest::mouseClick(panel->btnAdvanced, Qt::LeftButton);
    panel->chkPositionText->click();
    panel->cmbImgStyle->setCurrentIndex(1);
    Settle();
    Shot(a, "panel_pseudo");
    QVERIFY(panel->chkHidden->text().contains(QChar(0xAB)));
    const QStringList cut = Cut(a.main());
    QVERIFY2(cut.isEmpty(), qPrintable(cut.join("\n")));
    const QStringList out = OutOfSight(a);
    QVERIFY2(out.isEmpty(), qPrintable(out.join("\n")));
  }
};

// The panel is laid out for a desktop screen; the offscreen one is only
// 800 x 600, so the test gives it a common desktop size.
int main(int argc, char** argv) {
  QTemporaryDir dir;
  if (qgetenv("QT_QPA_PLATFORM") == "offscreen" && dir.isValid()) {
    const QString config = dir.filePath("screens.json");
    QFile f(config);
    if (f.open(QIODevice::WriteOnly))
      f.write(R"({"screens": [{"name": "desk", "x": 0, "y": 0, "width": 1366, "height": 768,
                  "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1}]})");
    f.close();
    qputenv("QT_QPA_PLATFORM", ("offscreen:configfile=" + config).toLocal8Bit());
  }
  QApplication app(argc, argv);
  PanelLayoutTest test;
  return QTest::qExec(&test, argc, argv);
}
#include "test_panel_layout.moc"
