// The browser list windows: frmBrowserSetup with its two parallel lists and
// frmAddEditBrowser, answered through their buttons and fields.
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QtTest>

#include "app/frm_browser_setup.h"
#include "core/settings.h"
#include "properties/frm_main.h"
#include "properties/qt_prompter.h"
#include "publish/browsers.h"
#include "tests/app/app_fixture.h"
#include "tests/app/window_driver.h"

using namespace kp;
using namespace kp::apptest;

namespace {

struct Browsers {
  test::TempDir home;
  test::FaultFs fs;
  MemorySettings store;
  QtPrompter prompter;
  ProjectView view;
  Env env{fs, store, prompter, view, home.path()};

  Browsers() {
    Set("Count", "3");
    Set("B0", "/usr/bin/firefox");
    Set("Name0", "Firefox");
    Set("B1", "/usr/bin/chromium");
    Set("Name1", "Chromium");
    Set("B2", "/opt/viewer/appletViewer");
    Set("Name2", "Viewer");
    Set("Selected", "2");
  }
  void Set(const std::string& key, const std::string& value) {
    store.Set(kSecBrowsers, key, value);
  }
  std::string Get(const std::string& key) { return store.Get(kSecBrowsers, key).value_or(""); }
};

QStringList Rows(QListWidget* l) {
  QStringList rows;
  for (int i = 0; i < l->count(); ++i) rows << l->item(i)->text();
  return rows;
}

void ClickRow(QListWidget* l, int row) {
  QRect r = l->visualItemRect(l->item(row));
  QTest::mouseClick(l->viewport(), Qt::LeftButton, Qt::NoModifier, r.center());
}

}  // namespace

class BrowserSetupTest : public WatchedTest {
  Q_OBJECT

 private slots:
  void theSetupWindowShowsTheStoredListWithItsTexts() {
    Browsers b;
    QString title, names, paths;
    QStringList nameRows, pathRows;
    QStringList buttons;
    auto ran = WhenWindow("frmBrowserSetup", [&](QWidget* w) {
      title = w->windowTitle();
      names = Control<QLabel>(w, "lblNames")->text();
      paths = Control<QLabel>(w, "lblPaths")->text();
      nameRows = Rows(Control<QListWidget>(w, "ListNames"));
      pathRows = Rows(Control<QListWidget>(w, "ListPaths"));
      for (const char* n : {"btnAddBrowser", "btnEdit", "btnRemoveBrowser", "btnOK", "btnCANCEL"})
        buttons << Control<QPushButton>(w, n)->text();
      Click(w, "btnCANCEL");
    });
    QVERIFY(!frmBrowserSetup::Run(nullptr, b.env));
    QVERIFY(*ran);
    QCOMPARE(title, QString("Browsers"));
    QCOMPARE(names, QString("Browser name:"));
    QCOMPARE(paths, QString("Browser location:"));
    QCOMPARE(nameRows, (QStringList{"Firefox", "Chromium", "Viewer"}));
    QCOMPARE(pathRows,
             (QStringList{"/usr/bin/firefox", "/usr/bin/chromium", "/opt/viewer/appletViewer"}));
    QCOMPARE(buttons, (QStringList{"&Add...", "&Edit", "&Remove", "&Ok", "&Cancel"}));
  }

  void anEntryWithoutANameShowsUnnamed() {
    Browsers b;
    b.store.Set(kSecBrowsers, "Count", "4");
    b.Set("B3", "/usr/bin/other");
    QStringList rows;
    auto ran = WhenWindow("frmBrowserSetup", [&](QWidget* w) {
      rows = Rows(Control<QListWidget>(w, "ListNames"));
      Click(w, "btnCANCEL");
    });
    frmBrowserSetup::Run(nullptr, b.env);
    QVERIFY(*ran);
    QCOMPARE(rows.value(3), QString("Unnamed"));
  }

  void okInTheBrowserSetupResetsTheSelectionToDefault() {
    Browsers b;
    auto ran = WhenWindow("frmBrowserSetup", [&](QWidget* w) { Click(w, "btnOK"); });
    QVERIFY(frmBrowserSetup::Run(nullptr, b.env));
    QVERIFY(*ran);
    QCOMPARE(b.Get("Selected"), std::string("-1"));
    QCOMPARE(b.Get("Count"), std::string("3"));
    QCOMPARE(b.Get("Name2"), std::string("Viewer"));
    // The HTML window's box goes back to its first row.
    BrowserList list;
    GetBrowsers(b.env, list);
    QCOMPARE(list.listIndex, 0);
    QCOMPARE(list.cmbBrowser.size(), size_t{4});
  }

  void cancelInTheSetupWindowKeepsTheOldListEvenAfterManyRemovals() {
    Browsers b;
    QStringList left;
    auto ran = WhenWindow("frmBrowserSetup", [&](QWidget* w) {
      auto* names = Control<QListWidget>(w, "ListNames");
      for (int k = 0; k < 3; ++k) {
        ClickRow(names, 0);
        Click(w, "btnRemoveBrowser");
      }
      left = Rows(names) + Rows(Control<QListWidget>(w, "ListPaths"));
      Click(w, "btnCANCEL");
    });
    QVERIFY(!frmBrowserSetup::Run(nullptr, b.env));
    QVERIFY(*ran);
    QVERIFY(left.isEmpty());
    QCOMPARE(b.Get("Count"), std::string("3"));
    QCOMPARE(b.Get("B0"), std::string("/usr/bin/firefox"));
    QCOMPARE(b.Get("Name1"), std::string("Chromium"));
    QCOMPARE(b.Get("Selected"), std::string("2"));
  }

  void escapeInTheSetupWindowIsCancel() {
    Browsers b;
    auto ran = WhenWindow("frmBrowserSetup", [&](QWidget* w) {
      Click(w, "btnRemoveBrowser");
      QTest::keyClick(w, Qt::Key_Escape);
    });
    QVERIFY(!frmBrowserSetup::Run(nullptr, b.env));
    QVERIFY(*ran);
    QCOMPARE(b.Get("Selected"), std::string("2"));
  }

  void removeTakesTheRowOutOfBothListsAndOkStoresTheRest() {
    Browsers b;
    QStringList names, paths;
    auto ran = WhenWindow("frmBrowserSetup", [&](QWidget* w) {
      ClickRow(Control<QListWidget>(w, "ListPaths"), 1);
      Click(w, "btnRemoveBrowser");
      names = Rows(Control<QListWidget>(w, "ListNames"));
      paths = Rows(Control<QListWidget>(w, "ListPaths"));
      Click(w, "btnOK");
    });
    QVERIFY(frmBrowserSetup::Run(nullptr, b.env));
    QVERIFY(*ran);
    QCOMPARE(names, (QStringList{"Firefox", "Viewer"}));
    QCOMPARE(paths, (QStringList{"/usr/bin/firefox", "/opt/viewer/appletViewer"}));
    QCOMPARE(b.Get("Count"), std::string("2"));
    QCOMPARE(b.Get("B1"), std::string("/opt/viewer/appletViewer"));
    QCOMPARE(b.Get("Name1"), std::string("Viewer"));
  }

  void clickingARowInOneListSelectsTheSameRowInTheOther() {
    Browsers b;
    int pathRow = -1, nameRow = -1;
    auto ran = WhenWindow("frmBrowserSetup", [&](QWidget* w) {
      auto* names = Control<QListWidget>(w, "ListNames");
      auto* paths = Control<QListWidget>(w, "ListPaths");
      ClickRow(names, 2);
      pathRow = paths->currentRow();
      ClickRow(paths, 1);
      nameRow = names->currentRow();
      Click(w, "btnCANCEL");
    });
    frmBrowserSetup::Run(nullptr, b.env);
    QVERIFY(*ran);
    QCOMPARE(pathRow, 2);
    QCOMPARE(nameRow, 1);
  }

  void addAppendsARowAndAnEmptyNameBecomesUnnamed() {
    Browsers b;
    QString caption, lblName, lblPath;
    QStringList names, paths;
    auto ran = WhenWindow("frmBrowserSetup", [&](QWidget* w) {
      WhenWindow("frmAddEditBrowser", [&](QWidget* e) {
        caption = e->windowTitle();
        lblName = Control<QLabel>(e, "lblName")->text();
        lblPath = Control<QLabel>(e, "lblPath")->text();
        QTest::keyClicks(Control<QLineEdit>(e, "txtPath"), "/usr/local/bin/lynx");
        Click(e, "btnOK");
      });
      Click(w, "btnAddBrowser");
      names = Rows(Control<QListWidget>(w, "ListNames"));
      paths = Rows(Control<QListWidget>(w, "ListPaths"));
      Click(w, "btnOK");
    });
    QVERIFY(frmBrowserSetup::Run(nullptr, b.env));
    QVERIFY(*ran);
    QCOMPARE(caption, QString("Browser's location and name"));
    QCOMPARE(lblName, QString("Name:"));
    QCOMPARE(lblPath, QString("Path:"));
    QCOMPARE(names.value(3), QString("Unnamed"));
    QCOMPARE(paths.value(3), QString("/usr/local/bin/lynx"));
    QCOMPARE(b.Get("Count"), std::string("4"));
    QCOMPARE(b.Get("B3"), std::string("/usr/local/bin/lynx"));
    QCOMPARE(b.Get("Name3"), std::string("Unnamed"));
  }

  void cancelInTheAddWindowAddsNothing() {
    Browsers b;
    QStringList names;
    auto ran = WhenWindow("frmBrowserSetup", [&](QWidget* w) {
      WhenWindow("frmAddEditBrowser", [&](QWidget* e) {
        QTest::keyClicks(Control<QLineEdit>(e, "txtName"), "Lynx");
        Click(e, "btnCANCEL");
      });
      Click(w, "btnAddBrowser");
      names = Rows(Control<QListWidget>(w, "ListNames"));
      Click(w, "btnCANCEL");
    });
    frmBrowserSetup::Run(nullptr, b.env);
    QVERIFY(*ran);
    QCOMPARE(names.size(), 3);
  }

  void editFillsTheFieldsFromTheRowAndChangesOnlyThatRow() {
    Browsers b;
    QString shownName, shownPath;
    QStringList names, paths;
    auto ran = WhenWindow("frmBrowserSetup", [&](QWidget* w) {
      ClickRow(Control<QListWidget>(w, "ListNames"), 1);
      WhenWindow("frmAddEditBrowser", [&](QWidget* e) {
        auto* name = Control<QLineEdit>(e, "txtName");
        shownName = name->text();
        shownPath = Control<QLineEdit>(e, "txtPath")->text();
        name->clear();
        QTest::keyClicks(name, "Chromium Dev");
        Click(e, "btnOK");
      });
      Click(w, "btnEdit");
      names = Rows(Control<QListWidget>(w, "ListNames"));
      paths = Rows(Control<QListWidget>(w, "ListPaths"));
      Click(w, "btnOK");
    });
    frmBrowserSetup::Run(nullptr, b.env);
    QVERIFY(*ran);
    QCOMPARE(shownName, QString("Chromium"));
    QCOMPARE(shownPath, QString("/usr/bin/chromium"));
    QCOMPARE(names, (QStringList{"Firefox", "Chromium Dev", "Viewer"}));
    QCOMPARE(paths.value(1), QString("/usr/bin/chromium"));
    QCOMPARE(b.Get("Name1"), std::string("Chromium Dev"));
  }

  void editWithoutASelectedRowOpensNothing() {
    Browsers b;
    bool opened = false;
    auto ran = WhenWindow("frmBrowserSetup", [&](QWidget* w) {
      WhenWindow("frmAddEditBrowser", [&](QWidget* e) {
        opened = true;
        Click(e, "btnCANCEL");
      }, nullptr, 300);
      Click(w, "btnEdit");
      QTest::qWait(350);
      Click(w, "btnCANCEL");
    });
    frmBrowserSetup::Run(nullptr, b.env);
    QVERIFY(*ran);
    QVERIFY(!opened);
  }

  void enterInThePathMovesToTheNameAndEnterInTheNameIsOk() {
    Browsers b;
    bool nameFocused = false, stillOpen = false;
    QStringList names;
    auto ran = WhenWindow("frmBrowserSetup", [&](QWidget* w) {
      WhenWindow("frmAddEditBrowser", [&](QWidget* e) {
        auto* path = Control<QLineEdit>(e, "txtPath");
        auto* name = Control<QLineEdit>(e, "txtName");
        path->setFocus();
        QTest::keyClicks(path, "/usr/bin/w3m");
        QTest::keyClick(path, Qt::Key_Return);
        nameFocused = name->hasFocus();
        stillOpen = e->isVisible();
        QTest::keyClicks(name, "W3m");
        QTest::keyClick(name, Qt::Key_Return);
      });
      Click(w, "btnAddBrowser");
      names = Rows(Control<QListWidget>(w, "ListNames"));
      Click(w, "btnCANCEL");
    });
    frmBrowserSetup::Run(nullptr, b.env);
    QVERIFY(*ran);
    QVERIFY(nameFocused);
    QVERIFY(stillOpen);
    QCOMPARE(names.value(3), QString("W3m"));
  }

  void browseFillsThePathAndAnEmptyNameFromTheChosenFile() {
    Browsers b;
    const std::string program = b.home.file("netsurf.exe");
    test::WriteBytes(program, "#!/bin/sh\n");
    QStringList filters;
    QString path, name;
    auto ran = WhenWindow("frmBrowserSetup", [&](QWidget* w) {
      WhenWindow("frmAddEditBrowser", [&](QWidget* e) {
        WhenWindow("OpenFileDialog", [&](QWidget* f) {
          filters = qobject_cast<QFileDialog*>(f)->nameFilters();
          ChooseFile(f, QString::fromStdString(program));
        });
        Click(e, "btnBrowse");
        path = Control<QLineEdit>(e, "txtPath")->text();
        name = Control<QLineEdit>(e, "txtName")->text();
        Click(e, "btnCANCEL");
      });
      Click(w, "btnAddBrowser");
      Click(w, "btnCANCEL");
    });
    frmBrowserSetup::Run(nullptr, b.env);
    QVERIFY(*ran);
    QCOMPARE(filters, (QStringList{"Programs (*)", "All Files (*)"}));
    QCOMPARE(path, QString::fromStdString(program));
    QCOMPARE(name, QString("Netsurf"));
  }

  void theMainWindowsBrowsersEntryOpensTheSetup() {
    App a;
    a.program->Main("");
    QVERIFY(a.main()->mnuSettings->actions().contains(a.main()->mnuBrowserSetup));
    a.store.Set(kSecBrowsers, "Selected", "1");
    auto ran = WhenWindow("frmBrowserSetup", [&](QWidget* w) { Click(w, "btnOK"); });
    a.main()->mnuBrowserSetup->trigger();
    QVERIFY(*ran);
    QCOMPARE(a.store.Get(kSecBrowsers, "Selected").value_or(""), std::string("-1"));
  }

  void theWindowsTextTablesHaveOneEntryAControl() {
    for (const UiTexts* t : {&frmBrowserSetup::Texts(), &frmAddEditBrowser::Texts()}) {
      std::set<std::string> names;
      for (const UiText& u : *t) {
        QVERIFY(names.insert(u.control).second);
        QVERIFY(!u.text.empty());
      }
    }
    QCOMPARE(TextOf(frmBrowserSetup::Texts(), "sSpecifyName"),
             std::string("Please Specify Browser Name:"));
    QCOMPARE(TextOf(frmBrowserSetup::Texts(), "sNameOfBrowser"), std::string("Name of the Browser"));
  }
};

QTEST_MAIN(BrowserSetupTest)
#include "test_browser_setup.moc"
