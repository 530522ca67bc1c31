// The main window's File menu: save, save as, open, recent files, dropped
// files, new, exit; the design window's surface.
#include <QFileDialog>
#include <QGroupBox>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMessageBox>
#include <QMimeData>
#include <QPushButton>
#include <QtTest>

#include "core/conv.h"
#include "design/frm_design.h"
#include "design/colour_box.h"
#include "properties/colour_dialog.h"
#include "properties/file_filter.h"
#include "properties/frm_create_recent.h"
#include "properties/frm_hex2color.h"
#include "properties/frm_main.h"
#include "properties/frm_multi_line_editor.h"
#include "properties/twips.h"
#include "tests/app/app_fixture.h"

using namespace kp;
using namespace kp::apptest;

class MainWindowTest : public WatchedTest {
  Q_OBJECT

 private:
  static void Drop(QWidget* target, const QStringList& paths) {
    QMimeData data;
    QList<QUrl> urls;
    for (const QString& p : paths) urls << QUrl::fromLocalFile(p);
    data.setUrls(urls);
    QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(target, &enter);
    QVERIFY(enter.isAccepted());
    QDropEvent drop(QPointF(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(target, &drop);
  }

 private slots:
  void yesOnTheSaveQuestionOfANeverSavedProjectOpensSaveAsAndCancelKeepsTheProgramOpen() {
    App a;
    a.program->Main("");
    a.prompter.realBoxes = true;
    a.prompter.realFileDialogs = true;
    a.p().bProjectSaved = false;
    QString boxTitle, boxText, dialogFile, dialogFolder;
    bool saveMode = false;
    auto dialogRan = std::make_shared<bool>(false);
    auto boxRan = WhenModal<QMessageBox>([&](QMessageBox* box) {
      boxTitle = box->windowTitle();
      boxText = box->text();
      dialogRan = WhenModal<QFileDialog>([&](QFileDialog* d) {
        saveMode = d->acceptMode() == QFileDialog::AcceptSave;
        dialogFolder = d->directory().absolutePath();
        dialogFile = d->selectedFiles().value(0);
        d->reject();
      });
      box->button(QMessageBox::Yes)->click();
    });
    QVERIFY(!a.main()->close());
    QVERIFY(*boxRan);
    QVERIFY(*dialogRan);
    QCOMPARE(boxTitle, QString("KestrelPane"));
    QCOMPARE(boxText, QString("The Project  has changed.\n\nDo you want to Save the changes?"));
    QVERIFY(saveMode);
    QCOMPARE(dialogFolder, QString::fromStdString(a.home.path() + "/Projects"));
    QVERIFY(dialogFile.endsWith("/MyProject.kpn"));
    QVERIFY(a.main()->isVisible());
    QVERIFY(!a.p().bProjectSaved);
    QVERIFY(a.ended.empty());
    QVERIFY(!a.store.Get(kSecSizes + "/frmMain", "Width"));
  }

  void cancelOnTheSaveQuestionKeepsTheProgramOpen() {
    App a;
    a.program->Main("");
    a.p().bProjectSaved = false;
    a.prompter.answers = {Answer::Cancel};
    QVERIFY(!a.main()->close());
    QVERIFY(a.main()->isVisible());
    QVERIFY(a.prompter.saveDialogs.empty());
  }

  void noOnTheSaveQuestionCloses() {
    App a;
    a.program->Main("");
    a.p().bProjectSaved = false;
    a.prompter.answers = {Answer::No};
    a.main()->mnuExit_Click();
    QVERIFY(!a.main()->isVisible());
    QVERIFY(!a.main()->Design()->isVisible());
    QVERIFY(a.prompter.saveDialogs.empty());
  }

  void yesWithASuccessfulSaveCloses() {
    App a;
    a.program->Main("");
    a.p().bProjectSaved = false;
    const std::string path = a.home.path() + "/Projects/Saved.kpn";
    a.prompter.saveAnswers = {path};
    QVERIFY(a.main()->close());
    QVERIFY(a.fs.FileExists(path));
  }

  void saveAsWritesTheFileTitlesTheWindowAndListsItAsRecent() {
    App a;
    a.program->Main("");
    const std::string path = a.home.path() + "/Projects/Bar One.kpn";
    a.prompter.saveAnswers = {path};
    a.p().bProjectSaved = false;
    a.main()->mnuSave_Click();
    QCOMPARE(a.prompter.saveDialogs.size(), size_t(1));
    const FileDialog& d = a.prompter.saveDialogs[0];
    QCOMPARE(d.fileName, std::string("MyProject.kpn"));
    QCOMPARE(d.folder, a.home.path() + "/Projects");
    QCOMPARE(d.defaultExt, std::string("kpn"));
    QVERIFY(d.overwritePrompt);
    QVERIFY(StartsWith(test::ReadBytes(path), "KestrelPane Project 2.02\r\n"));
    QCOMPARE(a.p().sProjectFile, path);
    QCOMPARE(a.p().sProjectName, std::string("Bar One"));
    QVERIFY(a.p().bProjectSaved);
    QCOMPARE(a.main()->windowTitle(), QString::fromStdString(path + " - Kestrel Pane 2.02"));
    QCOMPARE(a.main()->Design()->windowTitle(),
             QString::fromStdString("Design Window - " + path + " - Kestrel Pane 2.02"));
    QCOMPARE(a.store.Get(kSecParams, "sProjectsPath"),
             std::optional<std::string>(a.home.path() + "/Projects"));
    QVERIFY(a.main()->mnuRecent[0]->isVisible());
    QCOMPARE(a.main()->mnuRecent[0]->text(), QString::fromStdString(ShortPath(path)));
    QVERIFY(!a.main()->mnuRecent[1]->isVisible());
  }

  void saveOfASavedProjectWritesWithoutADialog() {
    App a;
    a.program->Main(a.demo());
    a.p().button(1).URL = "changed.html";
    a.p().bProjectSaved = false;
    a.main()->mnuSave_Click();
    QVERIFY(a.prompter.saveDialogs.empty());
    QVERIFY(a.p().bProjectSaved);
    QVERIFY(test::ReadBytes(a.demo()).find("changed.html") != std::string::npos);
  }

  void cancelledSaveAsChangesNothing() {
    App a;
    a.program->Main("");
    a.p().bProjectSaved = false;
    a.main()->mnuSaveAs_Click();
    QCOMPARE(a.p().sProjectFile, std::string());
    QVERIFY(!a.p().bProjectSaved);
    QCOMPARE(a.main()->windowTitle(), QString("Kestrel Pane 2.02"));
  }

  void saveAsStartsInTheFolderOfTheLastDialog() {
    App a;
    a.store.Set(kSecParams, "sProjectsPath", "/somewhere/else");
    a.program->Main("");
    a.main()->mnuSaveAs_Click();
    QCOMPARE(a.prompter.saveDialogs.at(0).folder, std::string("/somewhere/else"));
  }

  void openOffersTheProjectFiltersAndLoadsTheChoice() {
    App a;
    a.program->Main("");
    a.prompter.openAnswers = {a.demo()};
    a.main()->mnuOpen_Click();
    QCOMPARE(a.prompter.openDialogs.size(), size_t(1));
    QCOMPARE(a.prompter.openDialogs[0].filter, std::string(kOpenProjectFilter));
    QCOMPARE(a.prompter.openDialogs[0].folder, a.home.path() + "/Projects");
    QCOMPARE(QtFilter(kOpenProjectFilter),
             std::string("Kestrel Pane Projects (*.kpn);;Quail Stone Projects (*.qst);;"
                         "LinnetPlum Projects (*.lpm);;All Files (*)"));
    QCOMPARE(a.p().sProjectFile, a.demo());
    QCOMPARE(a.main()->lstButtons->count(), 12);
    QCOMPARE(a.main()->windowTitle(), QString::fromStdString(a.demo() + " - Kestrel Pane 2.02"));
  }

  void realOpenDialogShowsTheFilters() {
    App a;
    a.program->Main("");
    a.prompter.realFileDialogs = true;
    QStringList filters;
    auto ran = WhenModal<QFileDialog>([&](QFileDialog* d) {
      filters = d->nameFilters();
      d->reject();
    });
    a.main()->mnuOpen_Click();
    QVERIFY(*ran);
    QCOMPARE(filters, QStringList({"Kestrel Pane Projects (*.kpn)", "Quail Stone Projects (*.qst)",
                                   "LinnetPlum Projects (*.lpm)", "All Files (*)"}));
    QCOMPARE(a.p().ButtonCount, i16(1));
  }

  void everyCommandThatDropsTheProjectStopsOnCancel() {
    App a;
    a.program->Main("");
    a.main()->OpenProjectFile(a.demo());
    a.p().bProjectSaved = false;
    a.p().button(1).URL = "edited";
    const size_t boxesBefore = a.prompter.boxes.size();

    a.prompter.answers = {Answer::Cancel, Answer::Cancel, Answer::Cancel, Answer::Cancel};
    a.prompter.openAnswers = {a.demo()};
    a.main()->mnuNew_Click();
    a.main()->mnuOpen_Click();
    a.main()->mnuRecent_Click(1);
    Drop(a.main(), {QString::fromStdString(a.demo())});
    QCOMPARE(a.prompter.boxes.size(), boxesBefore + 4);
    QVERIFY(a.prompter.openDialogs.empty());
    QCOMPARE(a.p().button(1).URL, std::string("edited"));
    QCOMPARE(a.p().ButtonCount, i16(12));
  }

  void droppedFileOpensThroughTheSamePath() {
    App a;
    a.program->Main("");
    Drop(a.main(), {QString::fromStdString(a.demo()), QString::fromStdString(a.home.file("x"))});
    QCOMPARE(a.p().sProjectFile, a.demo());
    QCOMPARE(a.p().ButtonCount, i16(12));
    QVERIFY(a.prompter.boxes.empty());
  }

  void fileDroppedOnTheDesignWindowOpensToo() {
    App a;
    a.program->Main("");
    Drop(a.main()->Design(), {QString::fromStdString(a.demo())});
    QCOMPARE(a.p().sProjectFile, a.demo());
  }

  void droppedFileAsksAboutUnsavedChangesFirst() {
    App a;
    a.program->Main("");
    a.p().bProjectSaved = false;
    a.prompter.answers = {Answer::No};
    Drop(a.main(), {QString::fromStdString(a.demo())});
    QCOMPARE(a.prompter.boxes.size(), size_t(1));
    QCOMPARE(a.prompter.boxes[0].title, std::string("KestrelPane"));
    QCOMPARE(a.p().sProjectFile, a.demo());
  }

  void recentEntryLoadsItsFile() {
    App a;
    a.program->Main(a.demo());
    WhenModal<frm_Create_Recent>([](frm_Create_Recent* d) { d->reject(); });
    a.main()->mnuNew_Click();
    QCOMPARE(a.p().ButtonCount, i16(0));
    a.main()->mnuRecent_Click(1);
    QCOMPARE(a.p().sProjectFile, a.demo());
    QCOMPARE(a.p().ButtonCount, i16(12));
  }

  void recentEntriesShowTheShortenedPathNewestFirst() {
    App a;
    const std::string longPath = "/a/very/long/folder/name/that/goes/on/and/on/Project.kpn";
    a.store.Set(kSecRecent, "File1", longPath);
    a.store.Set(kSecRecent, "File2", "/short.kpn");
    a.store.Set(kSecRecent, "File3", "-1");
    a.store.Set(kSecRecent, "File4", "/x&y.kpn");
    a.program->Main("");
    QCOMPARE(a.main()->mnuRecent[0]->text(), QString::fromStdString(ShortPath(longPath)));
    QVERIFY(a.main()->mnuRecent[0]->text().contains("...."));
    QCOMPARE(a.main()->mnuRecent[1]->text(), QString("/short.kpn"));
    QVERIFY(!a.main()->mnuRecent[2]->isVisible());
    QCOMPARE(a.main()->mnuRecent[3]->text(), QString("/x&&y.kpn"));
  }

  void noRecentEntriesWhenTheFirstIsEmpty() {
    App a;
    a.store.Set(kSecRecent, "File1", "-1");
    a.store.Set(kSecRecent, "File2", "/short.kpn");
    a.program->Main("");
    for (QAction* r : a.main()->mnuRecent) QVERIFY(!r->isVisible());
    QVERIFY(!a.main()->mnuRecentSep->isVisible());
  }

  void newAsksFirstThenLeavesNoButtonAndShowsOnlyTheNewProjectFrame() {
    App a;
    a.program->Main(a.demo());
    a.p().bProjectSaved = false;
    a.prompter.answers = {Answer::No};
    bool onlyNew = false;
    auto ran = WhenModal<frm_Create_Recent>([&](frm_Create_Recent* d) {
      onlyNew = d->frameNew->isVisible() && !d->frameOpen->isVisible();
      d->txtProjectName->setText("Second");
      d->btnCreate->click();
    });
    a.main()->mnuNew_Click();
    QVERIFY(*ran);
    QVERIFY(onlyNew);
    QCOMPARE(a.prompter.boxes.size(), size_t(1));
    QCOMPARE(a.p().ButtonCount, i16(0));
    QCOMPARE(a.p().iCurBtn, i16(0));
    QCOMPARE(a.p().sProjectFile, std::string());
    QCOMPARE(a.p().sProjectName, std::string("Second"));
    QCOMPARE(a.p().AppletWidth, i16(420));
    QVERIFY(a.p().bProjectSaved);
    QCOMPARE(a.main()->lstButtons->count(), 0);
    QCOMPARE(a.main()->windowTitle(), QString("Kestrel Pane 2.02"));
    QVERIFY(a.main()->txtBackImg->text().isEmpty());
  }

  void newUnloadsTheMultiLineEditor() {
    App a;
    a.program->Main("");
    QLineEdit label;
    QPointer<QWidget> editor = a.main()->MultiLineEditor(&label);
    QVERIFY(editor);
    WhenModal<frm_Create_Recent>([](frm_Create_Recent* d) { d->reject(); });
    a.main()->mnuNew_Click();
    QVERIFY(!editor);
  }

  void myExitStoresTheWindowSizesInTwips() {
    App a;
    a.program->Main("");
    a.main()->move(30, 40);
    a.main()->resize(600, 420);
    QVERIFY(a.main()->close());
    const std::string sec = kSecSizes + "/frmMain";
    QCOMPARE(a.store.Get(sec, "Left"), std::optional<std::string>("450"));
    QCOMPARE(a.store.Get(sec, "Top"), std::optional<std::string>("600"));
    QCOMPARE(a.store.Get(sec, "Width"), std::optional<std::string>("9000"));
    QCOMPARE(a.store.Get(sec, "Height"), std::optional<std::string>("6300"));
    QCOMPARE(a.store.Get(kSecSizes + "/frmDesign", "Width"),
             std::optional<std::string>(std::to_string(420 * 15)));
  }

  void storedSizesPlaceTheWindowAtTheNextStart() {
    App a;
    const std::string sec = kSecSizes + "/frmMain";
    a.store.Set(sec, "Left", "1500");
    a.store.Set(sec, "Top", "750");
    a.store.Set(sec, "Width", "9750");
    a.store.Set(sec, "Height", "6000");
    a.program->Main("");
    QCOMPARE(a.main()->pos(), QPoint(100, 50));
    QCOMPARE(a.main()->size(), QSize(650, 400));
  }

  void narrowWindowIsWidenedTo7020Twips() {
    App a;
    a.program->Main("");
    a.main()->resize(200, 300);
    a.main()->Form_Load();
    // 7020 twips are 468 pixels; the panels' own minimum may ask for more.
    QCOMPARE(a.main()->width(), std::max(468, a.main()->minimumSizeHint().width()));
    QVERIFY(a.main()->width() >= 468);
    a.main()->resize(700, 300);
    a.main()->Form_Load();
    QCOMPARE(a.main()->width(), 700);
  }

  void designWindowShowsTheAppletSurfaceInTheBackgroundColour() {
    App a;
    a.program->Main("");
    frmDesign* d = a.main()->Design();
    // The surface covers at least the window, which is the applet.
    QCOMPARE(d->size(), QSize(420, 180));
    QVERIFY(d->Surface().width() >= 420 && d->Surface().height() >= 180);
    QCOMPARE(d->Surface().pixelColor(10, 10), QColor(255, 255, 255));
    a.main()->OpenProjectFile(a.demo());
    QCOMPARE(d->size(), QSize(a.p().AppletWidth, a.p().AppletHeight));
    QVERIFY(d->Surface().width() >= a.p().AppletWidth);
    // The demo's background picture is tiled over its colour.
    QVERIFY(d->Surface().pixelColor(5, 5) != QColor(255, 255, 255));
    QCOMPARE(a.main()->picGeneralBackGround->colour(), a.p().BackGround);
    QCOMPARE(a.main()->txtAppletWidth->text(), QString::number(a.p().AppletWidth));
  }

  void designWindowRefusesTheUsersClose() {
    App a;
    a.program->Main("");
    QVERIFY(!a.main()->Design()->close());
    QVERIFY(a.main()->Design()->isVisible());
  }

  void designWindowStaysOverTheMainWindowWhenSet() {
    App a;
    a.store.Set(kSecParams, "frmDesignOnTop", "1");
    a.program->Main("");
    QCOMPARE(a.main()->Design()->parentWidget(), static_cast<QWidget*>(a.main()));
    a.store.Set(kSecParams, "frmDesignOnTop", "0");
    a.main()->ShowDesign();
    QVERIFY(a.main()->Design()->parentWidget() == nullptr);
    QVERIFY(a.main()->Design()->isVisible());
  }

  void makeDefaultMenuEntriesFollowTheirSetting() {
    App a;
    a.program->Main("");
    QVERIFY(!a.main()->mnuMakeDefaultBtn->isVisible());
    App b;
    b.store.Set(kSecParams, "mnuMakeDefaultBtn", "1");
    b.program->Main("");
    QVERIFY(b.main()->mnuMakeDefaultBtn->isVisible());
  }

  void hex2ColorOpensBesideTheMainWindow() {
    App a;
    a.program->Main("");
    a.main()->mnuHex2Color_Click();
    QVERIFY(a.main()->Hex2Color()->isVisible());
    QCOMPARE(a.main()->Hex2Color()->windowTitle(), QString("Hex2Color"));
  }

  void textTablesHaveOneEntryAControl() {
    const UiTexts& t = frmMain::Texts();
    std::set<std::string> names;
    for (const UiText& u : t) {
      QVERIFY(names.insert(u.control).second);
      QVERIFY(!u.text.empty());
    }
    QCOMPARE(TextOf(t, "sMOREOPTIONS"), std::string("More Options"));
    QCOMPARE(TextOf(t, "sLESSOPTIONS"), std::string("Less Options"));
    UiTexts copy = t;
    ReplaceByPosition(copy, {"&Datei", "&Neu"});
    QCOMPARE(TextOf(copy, "mnuFile"), std::string("&Datei"));
    QCOMPARE(TextOf(copy, "mnuNew"), std::string("&Neu"));
    QCOMPARE(TextOf(copy, "mnuOpen"), TextOf(t, "mnuOpen"));
  }
};

QTEST_MAIN(MainWindowTest)
#include "test_main_window.moc"
