// Language files over the real windows: the shipped English file is the
// tables, a pseudo-translation reaches every text the windows show, and
// the English file leaves every window as the built-in English does.
#include <QAbstractButton>
#include <QAction>
#include <QGroupBox>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QRegularExpression>
#include <QtTest>

#include <fstream>
#include <map>
#include <sstream>

#include "app/language_catalog.h"
#include "core/language.h"
#include "core/settings.h"
#include "properties/frm_create_recent.h"
#include "properties/frm_hex2color.h"
#include "properties/frm_main.h"
#include "properties/frm_pic_browser.h"
#include "tests/app/app_fixture.h"

using namespace kp;
using namespace kp::apptest;

namespace {

// The marked text of line k of a section: "«k:frmMain:12»".
std::string Mark(const std::string& heading, size_t k) {
  return "\xC2\xAB" "k:" + heading.substr(1, heading.size() - 2) + ":" + std::to_string(k) +
         "\xC2\xBB";
}

std::string PseudoFile() {
  std::vector<LanguageSectionText> sections;
  for (const CatalogSection& c : LanguageCatalog()) {
    LanguageSectionText s{c.heading, {}};
    for (size_t k = 1; k <= c.targets.size(); ++k) s.lines.push_back(Mark(c.heading, k));
    sections.push_back(std::move(s));
  }
  return LanguageFileText(sections);
}

// The tables are program-wide: a test that translates them puts them back.
class TablesSnapshot {
 public:
  TablesSnapshot() {
    for (const CatalogSection& c : LanguageCatalog())
      for (std::string* t : c.targets) saved_.emplace_back(t, *t);
  }
  ~TablesSnapshot() {
    for (auto& [t, text] : saved_) *t = text;
  }

 private:
  std::vector<std::pair<std::string*, std::string>> saved_;
};

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

  void aPseudoTranslationLeavesNoEnglishInTheMainWindowAndItsDialogs() {
    TablesSnapshot keep;
    App a;
    WriteLanguage(a, PseudoFile());
    QCOMPARE(a.program->Main(""), -1);
    frmMain* m = a.main();
    m->resize(m->sizeHint());
    std::vector<std::pair<QString, QString>> texts;
    Collect(m, texts);
    QStringList left = EnglishLeft(texts);
    // The button the fresh start adds is named with the translated word.
    QVERIFY(left.filter("lstButtons").isEmpty());
    Shot(m, "main");

    frm_Create_Recent* start = m->CreateRecent();
    start->show();
    texts.clear();
    Collect(start, texts);
    left << EnglishLeft(texts);
    Shot(start, "create_recent");
    start->hide();

    frmHex2Color* hex = m->Hex2Color();
    hex->show();
    texts.clear();
    Collect(hex, texts);
    left << EnglishLeft(texts);
    Shot(hex, "hex2color");
    hex->hide();
    QVERIFY2(left.isEmpty(), qPrintable(left.join("\n")));
    QVERIFY(a.prompter.boxes.empty());
  }

  void theEnglishFileLeavesEveryWindowAsTheBuiltInEnglish() {
    std::vector<std::pair<QString, QString>> builtIn, fromFile;
    {
      App a;
      QCOMPARE(a.program->Main(""), -1);
      QCOMPARE(a.store.Get(kSecLanguage, "ENGLISH"), std::string("NO"));
      Collect(a.main(), builtIn);
      CollectGeometry(a.main(), builtIn);
    }
    {
      TablesSnapshot keep;
      App a;
      WriteLanguage(a, LanguageFileOfTables());
      QCOMPARE(a.program->Main(""), -1);
      QCOMPARE(a.store.Get(kSecLanguage, "ENGLISH"), std::string("YES"));
      Collect(a.main(), fromFile);
      CollectGeometry(a.main(), fromFile);
    }
    QCOMPARE(fromFile.size(), builtIn.size());
    for (size_t i = 0; i < builtIn.size(); ++i) QCOMPARE(fromFile[i], builtIn[i]);
  }
};

QTEST_MAIN(LanguageFilesTest)
#include "test_language_files.moc"
