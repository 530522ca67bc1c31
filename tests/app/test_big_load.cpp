// Opening a project of 1001 buttons in the main window: the progress
// window is up the whole time and is repainted as the load moves on, while
// events run only every few dozen milliseconds, not after every button.
#include <QLabel>
#include <fstream>
#include <QListWidget>
#include <QThread>
#include <QtTest>

#include "project/project_file.h"
#include "properties/frm_main.h"
#include "properties/frm_message.h"
#include "tests/app/app_fixture.h"

using namespace kp;
using namespace kp::apptest;

namespace {

class PaintCounter : public QObject {
 public:
  int paints = 0;
  bool eventFilter(QObject*, QEvent* e) override {
    if (e->type() == QEvent::Paint) ++paints;
    return false;
  }
};

void WriteBigProject(const std::string& path, int count) {
  Project p;
  SetDefaultMainParams(p);
  p.AppletWidth = 800;
  p.AppletHeight = 600;
  for (int i = 1; i <= count; ++i) {
    tButton& b = p.button(i);
    b.sBName = "Button " + std::to_string(i);
    b.x = static_cast<i16>((i * 37) % 700);
    b.y = static_cast<i16>((i * 53) % 560);
    b.Width = 96;
    b.Height = 32;
    for (int s = 1; s <= 3; ++s) b.Label[s] = b.sBName;
  }
  p.ButtonCount = static_cast<i16>(count);
  std::ofstream(path, std::ios::binary) << ProjectFileText(p, false);
}

}  // namespace

class BigLoadTest : public QObject {
  Q_OBJECT

 private slots:
  void progressWindowIsShownAndRepaintedDuringTheLoad() {
    App a;
    QCOMPARE(a.program->Main(""), -1);
    const std::string path = a.home.path() + "/Projects/Big.kpn";
    WriteBigProject(path, 1001);

    frmMessage* m = a.prompter.Message();
    PaintCounter labelPaints, gaugePaints;
    m->lblMessage->installEventFilter(&labelPaints);
    m->picGauge->installEventFilter(&gaugePaints);
    int drains = 0;
    bool hiddenAtADrain = false;
    std::vector<QString> texts;
    a.prompter.onProcessEvents = [&] {
      ++drains;
      if (!m->isVisible()) hiddenAtADrain = true;
      texts.push_back(m->lblMessage->text());
      // A quiet machine loads 1001 buttons in less than one pacing
      // interval; the first drains take long so that pacing must act.
      if (drains <= 3) QThread::msleep(35);
    };
    QElapsedTimer clock;
    clock.start();
    QCOMPARE(a.main()->OpenProjectFile(path), LoadResult::Loaded);
    const qint64 ms = clock.elapsed();
    a.prompter.onProcessEvents = nullptr;

    QCOMPARE(a.p().ButtonCount, i16(1001));
    QCOMPARE(a.main()->lstButtons->count(), 1001);
    QVERIFY(!hiddenAtADrain);
    QVERIFY(!m->isVisible());
    // Events ran from the first button on, and then at most every ~30 ms.
    QVERIFY2(drains >= 2, qPrintable(QString("drains: %1 in %2 ms").arg(drains).arg(ms)));
    QVERIFY2(drains <= ms / 30 + 1, qPrintable(QString("drains: %1 in %2 ms").arg(drains).arg(ms)));
    QCOMPARE(texts.front(), QString("Loading Button # 1 of 1001"));
    // The text moved on between runs.
    QVERIFY(texts.back() != texts.front());
    QVERIFY(texts.back().startsWith("Loading Button # "));
    // Both the text and the bar were painted over and over.
    QVERIFY2(labelPaints.paints >= 2, qPrintable(QString::number(labelPaints.paints)));
    QVERIFY2(gaugePaints.paints >= 2, qPrintable(QString::number(gaugePaints.paints)));
  }

  void aSmallLoadShowsTheLastButtonsText() {
    App a;
    QCOMPARE(a.program->Main(""), -1);
    QLabel* label = a.prompter.Message()->lblMessage;
    QCOMPARE(a.main()->OpenProjectFile(a.demo()), LoadResult::Loaded);
    // The last text set stands even when no event ran after it.
    QCOMPARE(label->text(), QString("Loading Button # 12 of 12"));
  }
};

QTEST_MAIN(BigLoadTest)
#include "test_big_load.moc"
