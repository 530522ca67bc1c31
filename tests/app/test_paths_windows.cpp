// The two editors of the HTML window: the applet's name and folders, and
// the page text around the applet.
#include <QAction>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QtTest>

#include "core/conv.h"
#include "generate/js_caller.h"
#include "publish/player.h"
#include "tests/app/html_fixture.h"

using namespace kp;
using namespace kp::apptest;

namespace {

std::string AppletLine(const std::string& code) {
  size_t a = code.find("<applet name=");
  if (a == std::string::npos) return "";
  return code.substr(a, code.find('\r', a) - a);
}

// Types `text` over whatever the box holds, as the user would.
void TypeOver(QLineEdit* box, const QString& text) {
  box->setFocus();
  QTest::keyClick(box, Qt::Key_A, Qt::ControlModifier);
  QTest::keyClick(box, Qt::Key_Delete);
  QTest::keyClicks(box, text);
}

void TypeOver(QPlainTextEdit* box, const QString& text) {
  box->setFocus();
  QTest::keyClick(box, Qt::Key_A, Qt::ControlModifier);
  QTest::keyClick(box, Qt::Key_Delete);
  QTest::keyClicks(box, text);
}

// The HTML window, then its Advanced button.
frmAppletPaths* OpenPaths(HtmlApp& a) {
  frmHTML* w = a.OpenHTML();
  QTest::mouseClick(w->btnAdvanced, Qt::LeftButton);
  frmAppletPaths* paths = a.html().ExistingAppletPaths();
  if (paths) (void)WaitActive(paths);
  return paths;
}

frmSurHTML* OpenSurHTML(HtmlApp& a) {
  frmHTML* w = a.OpenHTML();
  w->mnuSurHTML->trigger();
  frmSurHTML* sur = a.html().ExistingSurHTML();
  if (sur) (void)WaitActive(sur);
  return sur;
}

}  // namespace

class PathsWindowsTest : public WatchedTest {
  Q_OBJECT

 private slots:
  void pathsWindowShowsTheGeneratedNameAndFolders() {
    HtmlApp a;
    QVERIFY(a.StartOnDemo());
    a.p().AppletName.clear();
    a.p().ImgPath = "pics&!0big";  // escaped in the model: unescaped by the generation
    frmAppletPaths* paths = OpenPaths(a);
    QVERIFY(paths);
    QCOMPARE(paths->txtAppletName->text(), QString("KestrelPane"));
    QCOMPARE(a.p().AppletName, std::string("KestrelPane"));
    QCOMPARE(paths->txtImgPath->text(), QString("pics big"));
    QCOMPARE(a.p().ImgPath, std::string("pics big"));
    QCOMPARE(paths->lblNote->text(),
             QString(" Note: Start folder for 'Images' and 'Sounds' is 'Codebase'  "));
  }

  void aBlankTypedInTheAppletNameBecomesAnUnderscore() {
    HtmlApp a;
    QVERIFY(a.StartOnDemo());
    frmAppletPaths* paths = OpenPaths(a);
    a.p().bProjectSaved = true;
    TypeOver(paths->txtAppletName, "My Bar");
    QCOMPARE(a.p().AppletName, std::string("My_Bar"));
    QCOMPARE(paths->txtAppletName->text(), QString("My Bar"));
    QVERIFY(!a.p().bProjectSaved);
  }

  void anAppletNameBeginningWithADigitGetsAnUnderscoreInFront() {
    HtmlApp a;
    QVERIFY(a.StartOnDemo());
    frmAppletPaths* paths = OpenPaths(a);
    TypeOver(paths->txtAppletName, "2bars");
    QCOMPARE(a.p().AppletName, std::string("_2bars"));
    QCOMPARE(paths->txtAppletName->text(), QString("2bars"));
    // The generation writes the name the model holds.
    QTest::mouseClick(paths->btnClose, Qt::LeftButton);
    QVERIFY(WaitActive(a.html().HTML()));
    QVERIFY(StartsWith(AppletLine(a.code()), "<applet name=\"_2bars\" "));
    QCOMPARE(paths->txtAppletName->text(), QString("_2bars"));
  }

  void
  aBackSlashTypedInTheImagesBoxReachesTheModelAsASlashAndStaysInTheBoxUntilTheNextGeneration() {
    HtmlApp a;
    QVERIFY(a.StartOnDemo());
    frmAppletPaths* paths = OpenPaths(a);
    TypeOver(paths->txtImgPath, "pics\\small");
    QCOMPARE(a.p().ImgPath, std::string("pics/small"));
    QCOMPARE(paths->txtImgPath->text(), QString("pics\\small"));
    TypeOver(paths->txtSndPath, "snd|\"x\"");
    QCOMPARE(a.p().SndPath, std::string("snd__x_"));

    QTest::mouseClick(paths->btnClose, Qt::LeftButton);
    QVERIFY(WaitActive(a.html().HTML()));
    QCOMPARE(a.html().HTML()->Generations(), 2);
    QCOMPARE(paths->txtImgPath->text(), QString("pics/small"));
    QCOMPARE(paths->txtSndPath->text(), QString("snd__x_"));
    QVERIFY(Contains(a.code(), "|pics/small/|snd__x_/|"));
  }

  void aDoubleQuoteTypedInTheCodeBaseBecomesAnUnderscore() {
    HtmlApp a;
    QVERIFY(a.StartOnDemo());
    frmAppletPaths* paths = OpenPaths(a);
    TypeOver(paths->txtCodeBase, "my \"code\"\\x");
    QCOMPARE(a.p().CodeBase, std::string("my _code_\\x"));
  }

  void restoreDefaultsFollowedByClosingGivesTheTagNameKestrelPaneAndTheCodeBaseDot() {
    HtmlApp a;
    QVERIFY(a.StartOnDemo());
    frmAppletPaths* paths = OpenPaths(a);
    TypeOver(paths->txtAppletName, "Other");
    TypeOver(paths->txtCodeBase, "code");
    TypeOver(paths->txtImgPath, "img");
    TypeOver(paths->txtSndPath, "snd");
    QCOMPARE(a.p().CodeBase, std::string("code"));
    a.p().bProjectSaved = true;

    QTest::mouseClick(paths->btnRestoreDefaults, Qt::LeftButton);
    QCOMPARE(a.p().AppletName, std::string("KestrelPane"));
    QVERIFY(a.p().CodeBase.empty() && a.p().ImgPath.empty() && a.p().SndPath.empty());
    QCOMPARE(paths->txtAppletName->text(), QString("KestrelPane"));
    QVERIFY(paths->txtCodeBase->text().isEmpty() && paths->txtImgPath->text().isEmpty() &&
            paths->txtSndPath->text().isEmpty());
    QVERIFY(!a.p().bProjectSaved);

    QTest::mouseClick(paths->btnClose, Qt::LeftButton);
    QVERIFY(!paths->isVisible());
    QVERIFY(WaitActive(a.html().HTML()));
    QVERIFY(StartsWith(AppletLine(a.code()),
                       "<applet name=\"KestrelPane\" code=\"KestrelPane.class\" codebase=\".\" "));
  }

  void openingThePathsWindowMakesTheCodeRegenerateOnTheWayBack() {
    HtmlApp a;
    QVERIFY(a.StartOnDemo());
    frmAppletPaths* paths = OpenPaths(a);
    QVERIFY(a.html().st.bHTMLStale);
    QCOMPARE(a.html().HTML()->Generations(), 1);
    paths->close();
    QVERIFY(WaitActive(a.html().HTML()));
    QCOMPARE(a.html().HTML()->Generations(), 2);
  }

  void enterWalksFromTheNameThroughTheFoldersToTheCloseButton() {
    HtmlApp a;
    QVERIFY(a.StartOnDemo());
    frmAppletPaths* paths = OpenPaths(a);
    paths->txtAppletName->setFocus();
    QTRY_VERIFY(paths->txtAppletName->hasFocus());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    QVERIFY(paths->txtCodeBase->hasFocus());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    QVERIFY(paths->txtImgPath->hasFocus());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Enter);
    QVERIFY(paths->txtSndPath->hasFocus());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    QVERIFY(paths->btnClose->hasFocus());
    QVERIFY(paths->isVisible());
  }

  void thePlayerScriptBoxIsTickedByDefaultAndWritesTheSetting() {
    HtmlApp a;
    QVERIFY(a.StartOnDemo());
    frmAppletPaths* paths = OpenPaths(a);
    QVERIFY(paths);
    QCOMPARE(paths->chkAddPlayerScript->text(),
             QString("Add the player script (shows the bar in today's browsers)"));
    QVERIFY(paths->chkAddPlayerScript->isChecked());
    QVERIFY(!a.store.Get(kSecParams, "bAddPlayerScript"));

    QTest::mouseClick(paths->chkAddPlayerScript, Qt::LeftButton);
    QVERIFY(!paths->chkAddPlayerScript->isChecked());
    QCOMPARE(a.store.Get(kSecParams, "bAddPlayerScript"), std::optional<std::string>("0"));
    QVERIFY(!PlayerScriptSetting(a.env()));

    QTest::mouseClick(paths->chkAddPlayerScript, Qt::LeftButton);
    QCOMPARE(a.store.Get(kSecParams, "bAddPlayerScript"), std::optional<std::string>("1"));
  }

  void thePlayerScriptBoxShowsAStoredOff() {
    HtmlApp a;
    a.store.Set(kSecParams, "bAddPlayerScript", "0");
    QVERIFY(a.StartOnDemo());
    frmAppletPaths* paths = OpenPaths(a);
    QVERIFY(paths);
    QVERIFY(!paths->chkAddPlayerScript->isChecked());
  }

  void untickingThePlayerScriptBoxHidesTheNoteAndKeepsTheSavedPageBare() {
    HtmlApp a;
    QVERIFY(a.StartOnDemo());
    frmHTML* w = a.OpenHTML();
    QVERIFY(!w->lblPlayerNote->isHidden());
    QCOMPARE(w->lblPlayerNote->text(),
             QString("The page shows the bar in today's browsers through KestrelPane.js."));
    frmAppletPaths* paths = OpenPaths(a);
    QTest::mouseClick(paths->chkAddPlayerScript, Qt::LeftButton);
    QTest::mouseClick(paths->btnClose, Qt::LeftButton);
    QVERIFY(WaitActive(w));
    QVERIFY(w->lblPlayerNote->isHidden());

    test::TempDir out;
    a.prompter.saveAnswers = {out.file("page.html")};
    w->mnuSaveHTML_Only->trigger();
    Settle();
    QVERIFY(!Contains(ReadBytes(out.file("page.html")), "<script"));
  }

  void thePlayerScriptTextComesLastInTheWindowsTextTable() {
    // Language files replace the texts by position: the older lines keep
    // their places.
    const UiTexts& t = frmAppletPaths::Texts();
    QCOMPARE(t.size(), size_t(10));
    QCOMPARE(std::string(t[8].control), std::string("btnClose"));
    QCOMPARE(std::string(t.back().control), std::string("chkAddPlayerScript"));
    const UiTexts& html = frmHTML::Texts();
    QVERIFY(html.size() >= 3);
    QCOMPARE(std::string(html[html.size() - 3].control), std::string("sCheckingAU"));
    QCOMPARE(std::string(html[html.size() - 2].control), std::string("lblPlayerNote"));
    QCOMPARE(std::string(html.back().control), std::string("txtAutoReplaceHTML_FileName.Name"));
  }

  void cancelInSurroundingHtmlKeepsTheThreeTextsButTheBodyChangeStays() {
    HtmlApp a;
    QVERIFY(a.StartOnDemo());
    a.p().sHTMLbefore = DefaultHTMLbefore();
    a.p().sHTMLalt = "<b>no java</b>";
    a.p().sHTMLafter = DefaultHTMLafter();
    a.p().button(1).URL = "javascript:go()";
    const std::string alt = a.p().sHTMLalt, after = a.p().sHTMLafter;

    frmSurHTML* sur = OpenSurHTML(a);
    QVERIFY(sur);
    // Opening fixed the body tag for the JavaScript link, in the model.
    QVERIFY(Contains(a.p().sHTMLbefore, kCallerBody));
    const std::string before = a.p().sHTMLbefore;
    QVERIFY(sur->txtHTMLbefore->toPlainText().contains(kCallerBody));

    TypeOver(sur->txtHTMLbefore, "<html><body>");
    TypeOver(sur->txtHTMLalt, "alt");
    TypeOver(sur->txtHTMLafter, "</body></html>");
    a.p().bProjectSaved = true;
    QTest::mouseClick(sur->btnCANCEL, Qt::LeftButton);
    QVERIFY(!sur->isVisible());
    QCOMPARE(a.p().sHTMLbefore, before);
    QCOMPARE(a.p().sHTMLalt, alt);
    QCOMPARE(a.p().sHTMLafter, after);
    QVERIFY(a.p().bProjectSaved);
  }

  void applyAndOkStoreTheThreeBoxesAndMarkTheProjectChanged() {
    HtmlApp a;
    QVERIFY(a.StartOnDemo());
    frmSurHTML* sur = OpenSurHTML(a);
    QCOMPARE(sur->windowTitle(), QString("Surrounding HTML - Kestrel Pane 2.02"));
    a.p().bProjectSaved = true;
    TypeOver(sur->txtHTMLbefore, "<html>");
    sur->txtHTMLbefore->moveCursor(QTextCursor::End);
    QTest::keyClick(sur->txtHTMLbefore, Qt::Key_Return);
    QTest::keyClicks(sur->txtHTMLbefore, "<body>");
    TypeOver(sur->txtHTMLalt, "");
    TypeOver(sur->txtHTMLafter, "</html>");
    QTest::mouseClick(sur->btnApply, Qt::LeftButton);
    QVERIFY(sur->isVisible());
    QCOMPARE(a.p().sHTMLbefore, std::string("<html>\r\n<body>"));
    QCOMPARE(a.p().sHTMLalt, std::string());
    QCOMPARE(a.p().sHTMLafter, std::string("</html>"));
    QVERIFY(!a.p().bProjectSaved);

    TypeOver(sur->txtHTMLafter, "</body></html>");
    QTest::mouseClick(sur->btnOK, Qt::LeftButton);
    QVERIFY(!sur->isVisible());
    QCOMPARE(a.p().sHTMLafter, std::string("</body></html>"));

    // An empty alternative adds no line to the code.
    VisitAndRegenerate(a);
    QVERIFY(Contains(a.code(), std::string(sCRLF) + "</applet>"));
    QVERIFY(!Contains(a.code(), std::string(sCRLF) + sCRLF + "</applet>"));
  }

  void surroundingHtmlOpensAfreshFromTheProjectEachTime() {
    HtmlApp a;
    QVERIFY(a.StartOnDemo());
    frmSurHTML* sur = OpenSurHTML(a);
    QTest::mouseClick(sur->btnCANCEL, Qt::LeftButton);
    a.p().sHTMLafter = "<!-- new after -->";
    a.html().HTML()->mnuSurHTML->trigger();
    QVERIFY(WaitActive(sur));
    QCOMPARE(sur->txtHTMLafter->toPlainText(), QString("<!-- new after -->"));
  }

  void aTextLeftAsItWasKeepsItsBytes() {
    HtmlApp a;
    QVERIFY(a.StartOnDemo());
    // Windows-1252 text with line feeds alone: not UTF-8, not CR LF.
    a.p().sHTMLbefore = "<html>\n<head><title>Caf\xE9</title></head>\n<body>\n";
    a.p().sHTMLafter = "</body>\n</html>";
    const std::string before = a.p().sHTMLbefore;
    frmSurHTML* sur = OpenSurHTML(a);
    QCOMPARE(sur->txtHTMLbefore->toPlainText(),
             QString::fromUtf8("<html>\n<head><title>Caf\xC3\xA9</title></head>\n<body>\n"));
    TypeOver(sur->txtHTMLafter, "</html>");
    QTest::mouseClick(sur->btnOK, Qt::LeftButton);
    QCOMPARE(a.p().sHTMLbefore, before);
    QCOMPARE(a.p().sHTMLafter, std::string("</html>"));
  }

  void bothEditorsAreReachedFromTheMainWindowMenu() {
    HtmlApp a;
    QVERIFY(a.StartOnDemo());
    QVERIFY(a.html().mnuSurHTML && a.html().mnuAppletPaths);
    a.html().mnuAppletPaths->trigger();
    QVERIFY(a.html().ExistingAppletPaths());
    QVERIFY(WaitActive(a.html().ExistingAppletPaths()));
    QCOMPARE(a.html().ExistingAppletPaths()->txtAppletName->text(), DisplayText(a.p().AppletName));
    // Closing with no HTML window open goes back to the main window.
    a.html().ExistingAppletPaths()->close();
    QVERIFY(WaitActive(a.main()));
    a.html().mnuSurHTML->trigger();
    QVERIFY(a.html().ExistingSurHTML());
    QVERIFY(WaitActive(a.html().ExistingSurHTML()));
  }

 private:
  // The main window and back: the code is generated afresh.
  static void VisitAndRegenerate(HtmlApp& a) {
    QVERIFY(Activate(a.main()));
    QVERIFY(Activate(a.html().HTML()));
  }
};

QTEST_MAIN(PathsWindowsTest)
#include "test_paths_windows.moc"
