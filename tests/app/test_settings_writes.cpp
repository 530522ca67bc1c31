// The designer writes its settings file once an operation: the keys one
// command changes go out together when the command's event is done, so a
// kill between two commands loses nothing.
#include <QtTest>
#include <fstream>
#include <sstream>

#include "core/settings.h"
#include "platform/qt_settings_store.h"
#include "properties/frm_main.h"
#include "tests/app/app_fixture.h"

using namespace kp;
using namespace kp::apptest;

namespace {

class CountingQtStore : public QtSettingsStore {
 public:
  using QtSettingsStore::QtSettingsStore;
  int changes = 0;
  std::string Set(const std::string& s, const std::string& k, const std::string& v) override {
    ++changes;
    return QtSettingsStore::Set(s, k, v);
  }
  std::string SetMany(const std::string& s,
                      const std::vector<std::pair<std::string, std::string>>& v) override {
    ++changes;
    return QtSettingsStore::SetMany(s, v);
  }
};

std::string OnDisk(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  std::ostringstream s;
  s << in.rdbuf();
  return s.str();
}

// The program as App starts it, with its settings in a real file.
struct FileApp {
  FileApp() : store(home.path() + "/settings.ini") {
    CopySampleProjects(home.path() + "/Projects");
    store.Set(kSecParams, "DontShow_frm_Create_Recent", "1");
    store.Set(kSecParams, "DontAskToAssociate", "1");
    program = std::make_unique<Program>(fs, store, prompter, association, home.path());
    program->endProcess = [](int) {};
  }
  ~FileApp() { program.reset(); }
  test::TempDir home;
  test::FaultFs fs;
  CountingQtStore store;
  TestPrompter prompter;
  FakeAssociation association;
  std::unique_ptr<Program> program;
};

}  // namespace

class SettingsWritesTest : public QObject {
  Q_OBJECT

 private slots:
  void openingAProjectIsOneWrite() {
    FileApp a;
    QCOMPARE(a.program->Main(""), -1);
    QCoreApplication::processEvents();
    const int writes = a.store.Writes();
    const int changes = a.store.changes;
    const std::string demo = a.home.path() + "/Projects/Demo.kpn";
    a.prompter.openAnswers = {demo};
    a.program->MainWindow()->mnuOpen_Click();
    QCOMPARE(a.program->project().ButtonCount, i16(12));
    // The folder of the dialog and the recent list: two changes, and the
    // load let events run in between...
    QVERIFY2(a.store.changes - changes >= 2,
             qPrintable(QString::number(a.store.changes - changes)));
    // ...one write, as the command ended, and none left for later.
    QCOMPARE(a.store.Writes(), writes + 1);
    QCoreApplication::processEvents();
    QCOMPARE(a.store.Writes(), writes + 1);
    const std::string text = OnDisk(a.home.path() + "/settings.ini");
    QVERIFY2(text.find("File1=" + demo) != std::string::npos, text.c_str());
    QVERIFY2(text.find("sProjectsPath=") != std::string::npos, text.c_str());
  }

  void startingTheProgramIsOneWrite() {
    FileApp a;
    const int writes = a.store.Writes();
    QCOMPARE(a.program->Main(""), -1);
    QCoreApplication::processEvents();
    QVERIFY2(a.store.Writes() - writes <= 1, qPrintable(QString::number(a.store.Writes() - writes)));
  }
};

QTEST_MAIN(SettingsWritesTest)
#include "test_settings_writes.moc"
