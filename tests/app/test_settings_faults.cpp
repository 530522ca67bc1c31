// The designer's start with settings it cannot read or cannot repair: it
// says so and opens, instead of asking for a restart that cannot help.
#include <QtTest>

#include "core/conv.h"
#include "core/settings.h"
#include "project/button_record.h"
#include "properties/frm_main.h"
#include "tests/app/app_fixture.h"

using namespace kp;
using namespace kp::apptest;

class SettingsFaultsTest : public QObject {
  Q_OBJECT

  static int BoxesWith(const App& a, const std::string& part) {
    int n = 0;
    for (const ShownBox& b : a.prompter.boxes)
      if (b.text.find(part) != std::string::npos) ++n;
    return n;
  }

 private slots:
  void damagedRecordInALockedStoreOpensWithTheBuiltInRecord() {
    App a;
    a.store.data[kSecParams]["sDefaultBtn"] =
        ReplaceAll(kBuiltInDefaultButton, "0|0|100|", "0|0|abc|");
    a.store.failWrites = true;
    a.store.where = "the settings file /conf/k.ini";
    QCOMPARE(a.program->Main(a.demo()), -1);
    QVERIFY(a.ended.empty());
    QVERIFY(a.main() != nullptr);
    QCOMPARE(BoxesWith(a, "Registry settings are currupted."), 1);
    QCOMPARE(BoxesWith(a, "could not be written to the settings file /conf/k.ini"), 1);
    QCOMPARE(BoxesWith(a, "Please restart"), 0);
    QCOMPARE(a.p().ButtonCount, 12);
  }

  void unreadableSettingsAreNamedAtStart() {
    App a;
    a.store.readProblem = "The settings file /conf/k.ini is not a settings file: garbage.";
    QCOMPARE(a.program->Main(""), -1);
    QCOMPARE(BoxesWith(a, a.store.readProblem), 1);
    QCOMPARE(BoxesWith(a, "Unable to write"), 0);
  }
};

QTEST_MAIN(SettingsFaultsTest)
#include "test_settings_faults.moc"
