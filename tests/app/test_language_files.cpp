// Language files over the real windows: the shipped English file is the
// tables, a pseudo-translation reaches every text the windows show, and
// the English file leaves every window as the built-in English does.
#include <QAbstractButton>
#include <QAction>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QMenu>
#include <QMenuBar>
#include <QRegularExpression>
#include <QtTest>

#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <sstream>

#include "app/frm_applet_paths.h"
#include "app/frm_ask_to_associate.h"
#include "app/frm_browser_setup.h"
#include "app/frm_html.h"
#include "app/frm_sur_html.h"
#include "app/html_windows.h"
#include "app/language_catalog.h"
#include "core/conv.h"
#include "core/language.h"
#include "core/messages.h"
#include "core/settings.h"
#include "design/frm_design.h"
#include "design/frm_grid.h"
#include "properties/button_list_model.h"
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
#include "properties/frm_pic_browser.h"
#include "properties/frm_publish_dialogs.h"
#include "properties/frm_set_action.h"
#include "properties/frm_wav2au.h"
#include "properties/global_panel.h"
#include "project/project_file.h"
#include "publish/build.h"
#include "publish/publish_texts.h"
#include "publish/replace.h"
#include "tests/app/app_fixture.h"

using namespace kp;
using namespace kp::apptest;

namespace {

bool HasLetters(const QString& s) { return s.contains(QRegularExpression("[A-Za-z]{2,}")); }

// Every visible text of a window and its menus: captions, tool tips, menu
// entries, with the widget's geometry for the layout comparison.
void Collect(QWidget* w, std::vector<std::pair<QString, QString>>& out) {
  auto add = [&out](const QObject* o, const QString& what, const QString& text) {
    out.emplace_back(o->objectName() + "/" + what, text);
  };
  add(w, "title", w->windowTitle());
  for (QWidget* c : w->findChildren<QWidget*>()) {
    if (!c->isVisibleTo(w)) continue;
    if (auto* l = qobject_cast<QLabel*>(c)) add(c, "text", l->text());
    if (auto* b = qobject_cast<QAbstractButton*>(c)) add(c, "text", b->text());
    if (auto* g = qobject_cast<QGroupBox*>(c)) add(c, "title", g->title());
    if (auto* e = qobject_cast<QPlainTextEdit*>(c); e && e->isReadOnly())
      add(c, "text", e->toPlainText());
    // The items of a list the program fills itself; an editable box is a
    // field the user types into, and the applet's font names are values.
    const bool values = c->objectName() == "cmb_iLoadingFont_Name" || c->objectName() == "lsTipFont";
    if (auto* b = qobject_cast<QComboBox*>(c); b && !b->isEditable() && !values)
      for (int i = 0; i < b->count(); ++i) add(c, "item" + QString::number(i), b->itemText(i));
    add(c, "tip", c->toolTip());
  }
  for (QAction* a : w->findChildren<QAction*>())
    if (a->isVisible() && !a->isSeparator() && !a->data().isValid()) add(a, "action", a->text());
}

void CollectGeometry(QWidget* w, std::vector<std::pair<QString, QString>>& out) {
  for (QWidget* c : w->findChildren<QWidget*>()) {
    const QRect r = c->geometry();
    out.emplace_back(c->objectName() + "/" + c->metaObject()->className(),
                     QString("%1,%2,%3,%4").arg(r.x()).arg(r.y()).arg(r.width()).arg(r.height()));
  }
}

void WriteLanguage(App& a, const std::string& text) {
  std::ofstream(a.home.path() + "/english_lng", std::ios::binary) << text;
}

QStringList EnglishLeft(const std::vector<std::pair<QString, QString>>& texts) {
  QStringList left;
  for (const auto& [where, text] : texts)
    if (HasLetters(text) && !text.contains(QChar(0xAB))) left << where + " = " + text;
  return left;
}

void Shot(QWidget* w, const char* name) {
  const QByteArray dir = qgetenv("KP_LANG_SHOTS");
  if (dir.isEmpty()) return;
  w->grab().save(QString::fromLocal8Bit(dir) + "/" + name + ".png");
}

// Every window the program shows, made and shown as its command does, in a
// fixed order. The modal windows are shown without their event loop.
std::vector<std::pair<QString, QWidget*>> OpenEveryWindow(App& a) {
  frmMain* m = a.main();
  GlobalPanel* g = m->general;
  HtmlWindows* h = a.program->Html();
  auto* panel = dynamic_cast<ButtonPanel*>(m->panel);
  std::vector<std::pair<QString, QWidget*>> out = {{"frmMain", m}, {"frmDesign", m->Design()}};
  auto add = [&out](const char* name, QWidget* w) {
    w->show();
    out.emplace_back(name, w);
  };
  m->Design()->Grid()->Form_Load();
  add("frmGrid", m->Design()->Grid());
  add("frm_Create_Recent", m->CreateRecent());
  add("frmHex2Color", m->Hex2Color());
  g->Special()->Form_Load();
  add("frmSpecial", g->Special());
  g->Advanced()->Form_Load();
  add("frmAdvanced", g->Advanced());
  g->AppletBorder()->Form_Load();
  add("frmAppletBorder", g->AppletBorder());
  g->AppletFade()->Form_Load();
  add("frmAppletFade", g->AppletFade());
  g->SetBgOffset()->Form_Activate();
  add("frmSetBgOffset", g->SetBgOffset());
  g->ButtonSpecial()->Form_Activate();
  add("frmButtonSpecial", g->ButtonSpecial());
  g->Descent()->Form_Load();
  add("frmDescent", g->Descent());
  add("frmHTML", h->HTML());
  add("frmSurHTML", h->SurHTML());
  add("frmAppletPaths", h->AppletPaths());
  add("frmSetAction", frmSetAction::Of(*m, a.p(), a.env()));
  if (panel) add("frmMultiLineEditor", m->MultiLineEditor(panel->txtLabel));
  add("frmPicBroser", new frmPicBrowser(m, a.env()));
  add("frmBrowserSetup", new frmBrowserSetup(a.env(), m));
  add("frmEditBrowser", new frmAddEditBrowser(a.env(), m));
  add("frmAskToAssociate", new frmAskToAssociate(a.env(), a.association, m));
  add("frmWav2Au", new frmWav2Au(m, a.env()));
  frmMessage* note = a.prompter.Message();
  note->ShowMessage(DisplayText(Lang().TitleText), "", m, true);
  out.emplace_back("frmMessage", note);
  add("frmSomeFilesWarning", new frmSomeFilesWarning(m));
  add("frmReadyForUpload", new frmReadyForUpload(m));
  add("frmAutoRepHTML_MSG", new frmAutoRepHTML_MSG(m));
  add("frmAutoRepHTML_2", new frmAutoRepHTML_2(m));
  return out;
}

// The texts of every window, each under its window's name.
std::vector<std::pair<QString, QString>> EveryWindowsTexts(App& a, bool geometry) {
  std::vector<std::pair<QString, QString>> all;
  for (const auto& [name, w] : OpenEveryWindow(a)) {
    std::vector<std::pair<QString, QString>> texts;
    Collect(w, texts);
    if (geometry) CollectGeometry(w, texts);
    for (auto& [where, text] : texts) all.emplace_back(name + ":" + where, text);
  }
  return all;
}

// The publishing commands' windows as the commands open them.
struct PublishDesk {
  explicit PublishDesk(App& a) : c{a.p(), a.env(), st, txtHTML, win, state} {}
  GeneratorState st;
  CodeBox txtHTML;
  HtmlWindowState win;
  PublishState state;
  PublishContext c;
};

// Collects the texts of the modal window `name` once it opens, then
// closes it with `button`.
std::shared_ptr<bool> CollectModal(const char* name, const char* button,
                                   std::vector<std::pair<QString, QString>>& out) {
  return WhenWindow(name, [&out, name, button](QWidget* w) {
    std::vector<std::pair<QString, QString>> texts;
    Collect(w, texts);
    for (auto& [where, text] : texts) out.emplace_back(QString(name) + ":" + where, text);
    Shot(w, name);
    Click(w, button);
  });
}

// Each message box shown: its title and text.
QStringList BoxesLeftEnglish(const std::vector<ShownBox>& boxes) {
  std::vector<std::pair<QString, QString>> texts;
  for (const ShownBox& b : boxes) {
    texts.emplace_back("box title", DisplayText(b.title));
    texts.emplace_back("box text", DisplayText(b.text));
  }
  return EnglishLeft(texts);
}

// The table targets that kept their English after every window was made:
// a text no language routine reaches.
QStringList TargetsNotTranslated() {
  QStringList left;
  for (const CatalogSection& c : LanguageCatalog())
    for (size_t k = 0; k < c.targets.size(); ++k)
      if (MessageLineOf(*c.targets[k]) != PseudoMark(c.heading, k + 1))
        left << QString::fromStdString(c.heading + " line " + std::to_string(k + 1) + " = " +
                                       *c.targets[k]);
  return left;
}

// The sources of the levels, to look for message texts written in place.
std::vector<std::filesystem::path> LevelSources() {
  std::vector<std::filesystem::path> out;
  for (const char* level : {"core", "project", "actions", "generate", "publish", "design",
                            "properties", "app"})
    for (const auto& e : std::filesystem::directory_iterator(test::SourcePath(level)))
      if (e.path().extension() == ".cpp") out.push_back(e.path());
  return out;
}

}  // namespace

class LanguageFilesTest : public QObject {
  Q_OBJECT

 private slots:
  void theShippedEnglishFileIsWrittenFromTheTables() {
    std::ifstream in(std::string(KP_BIN_DIR) + "/english_lng", std::ios::binary);
    QVERIFY(in.good());
    std::stringstream ss;
    ss << in.rdbuf();
    QCOMPARE(ss.str(), LanguageFileOfTables());
  }

  void everySectionFitsItsCountAndEveryHeadingIsThere() {
    std::map<std::string, size_t> seen;
    for (const CatalogSection& c : LanguageCatalog()) {
      QVERIFY2(!seen.count(c.heading), c.heading.c_str());
      seen[c.heading] = c.targets.size();
      QVERIFY(!c.targets.empty());
      if (c.fixedLines) QVERIFY2(c.targets.size() <= c.fixedLines, c.heading.c_str());
    }
    for (const char* h : {"[frmMain]", "[frmDesign]", "[frmHTML]", "[frmAdvanced]",
                          "[frmBrowserSetup]", "[frmButtonSpecial]", "[frmSetAction]",
                          "[frmAutoRepHTML_MSG]", "[frmAutoRepHTML_2]", "[frmSpecial]",
                          "[frmGrid]", "[frmEditBrowser]", "[frmDescent]", "[frmSetBgOffset]",
                          "[frmReadyForUpload]", "[frm_Create_Recent]", "[frmSomeFilesWarning]",
                          "[frmAppletPaths]", "[frmAskToAssociate]", "[frmSurHTML]",
                          "[frmHex2Color]", "[frmAppletBorder]", "[frmAppletFade]",
                          "[frmPicBroser]"})
      QVERIFY2(seen.count(h), h);
  }

  void frmPicBroserIsThePictureBrowsersHeading() {
    TablesSnapshot keep;
    App a;
    WriteLanguage(a, "[frmPicBrowser]\r\nwrong\r\n[frmPicBroser]\r\nBildwahl\r\n");
    QCOMPARE(a.program->Main(""), -1);
    frmPicBrowser browser(a.main(), a.env());
    QCOMPARE(frmPicBrowser::Texts()[0].text, std::string("Bildwahl"));
  }

  void aPseudoTranslationLeavesNoEnglishInAnyWindowOrMenu() {
    TablesSnapshot keep;
    App a;
    WriteLanguage(a, PseudoLanguageFile());
    QCOMPARE(a.program->Main(""), -1);
    frmMain* m = a.main();
    m->resize(m->sizeHint());
    const auto texts = EveryWindowsTexts(a, false);
    // Every window was reached, each with texts of its own.
    QVERIFY(texts.size() > 400);
    for (const char* name : {"frmGrid", "frmSetAction", "frmReadyForUpload", "frmAutoRepHTML_2",
                             "frmEditBrowser", "frmMessage"}) {
      bool seen = false;
      for (const auto& t : texts) seen = seen || t.first.startsWith(QString(name) + ":");
      QVERIFY2(seen, name);
    }
    QStringList left = EnglishLeft(texts);
    // The button the fresh start adds is named with the translated word.
    QVERIFY(left.filter("lstButtons").isEmpty());
    for (const QString& l : left) qInfo("English left: %s", qPrintable(l));
    QVERIFY2(left.isEmpty(), qPrintable(left.join("\n")));
    QVERIFY(a.prompter.boxes.empty());
    Shot(m, "main");
    for (const auto& [name, w] : OpenEveryWindow(a))
      if (name == "frmAdvanced" || name == "frmSetAction" || name == "frmSpecial")
        Shot(w, qPrintable(name));
  }

  void everyLineOfThePseudoFileReachesItsText() {
    TablesSnapshot keep;
    App a;
    WriteLanguage(a, PseudoLanguageFile());
    QCOMPARE(a.program->Main(""), -1);
    (void)OpenEveryWindow(a);
    const QStringList left = TargetsNotTranslated();
    QVERIFY2(left.isEmpty(), qPrintable(left.join("\n")));
  }

  void messageBoxesAndPublishingWindowsSpeakTheLanguage() {
    TablesSnapshot keep;
    App a;
    WriteLanguage(a, PseudoLanguageFile());
    // The command line names no file: the start-up's own message.
    QCOMPARE(a.program->Main("NoSuchProject.kpn"), -1);
    QCOMPARE(a.prompter.boxes.size(), size_t(1));
    frmMain* m = a.main();

    a.p().bProjectSaved = false;
    a.prompter.answers = {Answer::Cancel};
    QCOMPARE(m->AskToSaveChanges(), std::string("CANCEL"));
    a.p().iCurBtn = 0;
    MakeDefaultButtonFromCurrent(a.p(), a.env());
    const std::string bad = a.home.path() + "/Projects/Bad.kpn";
    std::ofstream(bad, std::ios::binary) << "Not a project\r\n";
    QCOMPARE(LoadProject2(a.p(), a.env(), bad), LoadResult::Refused);
    PublishDesk desk(a);
    AutoReplacePage stale;
    QVERIFY(!RunReplacement(desk.c, stale));
    QCOMPARE(a.prompter.boxes.size(), size_t(5));
    QStringList left = BoxesLeftEnglish(a.prompter.boxes);

    std::vector<std::pair<QString, QString>> shown;
    auto warned = CollectModal("frmSomeFilesWarning", "btnNo", shown);
    QVERIFY(!SomeFilesWarning(desk.c));
    QVERIFY(*warned);
    auto built = CollectModal("frmReadyForUpload", "btnOK", shown);
    ReadyForUpload(desk.c, a.home.path());
    QVERIFY(*built);
    auto reported = CollectModal("frmAutoRepHTML_MSG", "btnOK", shown);
    Ready(desk.c, 2, 1, a.home.path() + "/page.html", a.home.path() + "/page_backup.html");
    QVERIFY(*reported);
    const std::string page = a.home.path() + "/page.html";
    std::ofstream(page, std::ios::binary) << "<applet code=a></applet><applet code=b></applet>";
    auto listed = CollectModal("frmAutoRepHTML_2", "btnCANCEL", shown);
    AutoReplacePage found;
    QVERIFY(!BeginOperation(desk.c, found, page));
    QVERIFY(*listed);
    auto noticed = CollectModal("frmMyMsgBox", "btnOK", shown);
    CheckTargetName(a.env(), "a b");
    QVERIFY(*noticed);
    // Each window showed the command's texts on its own controls.
    for (const auto& [where, text] : shown) QVERIFY2(!where.contains("/button"), qPrintable(where));
    left << EnglishLeft(shown);
    QVERIFY2(left.isEmpty(), qPrintable(left.join("\n")));
  }

  void noMessageIsWrittenInPlace() {
    // A message box, notice or progress text is looked up in a table; the
    // one exception is the box that says the language file is missing.
    const std::regex literal(
        "(MsgBox|Notice|ProgressShow|ProgressSet|ShowOverlay)\\(\\s*(std::string\\()?\"[^\"]|"
        "MyMsgBox\\(\\s*[\\w.]+,\\s*\"");
    QStringList found;
    for (const auto& path : LevelSources()) {
      std::ifstream in(path);
      std::string line;
      for (int n = 1; std::getline(in, line); ++n)
        if (std::regex_search(line, literal) && line.find("Language File: ") == std::string::npos)
          found << QString::fromStdString(path.filename().string() + ":" + std::to_string(n));
    }
    QVERIFY2(found.isEmpty(), qPrintable(found.join("\n")));
    QVERIFY(LevelSources().size() > 50);
  }

  void theEnglishFileLeavesEveryWindowAsTheBuiltInEnglish() {
    std::vector<std::pair<QString, QString>> builtIn, fromFile;
    {
      App a;
      QCOMPARE(a.program->Main(""), -1);
      QCOMPARE(a.store.Get(kSecLanguage, "ENGLISH"), std::string("NO"));
      builtIn = EveryWindowsTexts(a, true);
    }
    {
      TablesSnapshot keep;
      App a;
      WriteLanguage(a, LanguageFileOfTables());
      QCOMPARE(a.program->Main(""), -1);
      QCOMPARE(a.store.Get(kSecLanguage, "ENGLISH"), std::string("YES"));
      fromFile = EveryWindowsTexts(a, true);
    }
    QVERIFY(builtIn.size() > 400);
    QCOMPARE(fromFile.size(), builtIn.size());
    for (size_t i = 0; i < builtIn.size(); ++i) QCOMPARE(fromFile[i], builtIn[i]);
  }
};

QTEST_MAIN(LanguageFilesTest)
#include "test_language_files.moc"
