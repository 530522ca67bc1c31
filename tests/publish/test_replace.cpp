#include <gtest/gtest.h>

#include <filesystem>
#include <random>

#include "core/conv.h"
#include "core/settings.h"
#include "publish/replace.h"
#include "tests/publish/publish_fixture.h"

namespace kp {
namespace {

using test::CheckListAnswer;
using test::DialogAnswer;
using test::Exists;
using test::FilesIn;
using test::MakeFiles;
using test::Pub;
using test::TempDir;

const std::string kCRLF = "\r\n";

const std::string kAppletA =
    "<applet name=\"A\" code=\"Old.class\" width=10 height=10>\n"
    "<param name=\"x\" value=\"1\">\n</applet>";
const std::string kAppletB = "<applet name=\"B\" code=\"Old.class\">\n</applet>";
const std::string kAppletC = "<applet name=\"C\" code=\"Old.class\">\n</applet>";

// Three applets in a page with line feeds only.
std::string ThreeApplets() {
  return "<html>\n<body>\n" + kAppletA + "\n<p>one</p>\n" + kAppletB + "\n<p>two</p>\n" + kAppletC +
         "\n</body>\n</html>\n";
}

struct ReplaceFixture : Pub {
  TempDir site;
  ReplaceFixture() {
    AddButton("Home");
    Generate();
  }
  std::string NewCode() const { return NewAppletCode(txtHTML.text); }
  std::string Page() const { return site.read("page.html"); }
  // Runs the replacement on page.html with the given ticks.
  bool ReplaceWith(const std::vector<bool>& ticks) {
    win.txtAutoReplaceHTML_FileName = site.file("page.html");
    prompter().checkListAnswers.push_back(CheckListAnswer{true, ticks});
    return btnAutoReplaceHTML_Click(c);
  }
};

std::string Replaced(std::string page, const std::string& applet, const std::string& code) {
  size_t at = page.find(applet);
  return page.replace(at, applet.size(), code);
}

const std::string kPlayerLine = "<script type=\"text/javascript\" src=\"KestrelPane.js\"></script>";

// The player's line as a replacement adds it to these pages: after their
// last applet, which closes the line before "</body>", with that line's
// line feed.
std::string WithPlayerBeforeBody(std::string page) {
  return page.replace(page.rfind("</body>"), 0, kPlayerLine + "\n");
}

TEST(AutoReplace, NewCodeIsTheAppletTagThroughItsClosingTagWithCarriageReturns) {
  ReplaceFixture f;
  const std::string code = f.NewCode();
  EXPECT_EQ(code.rfind("<applet name=\"KestrelPane\"", 0), 0u);
  EXPECT_EQ(code.substr(code.size() - 9), "</applet>");
  EXPECT_NE(code.find("\r\n<Param Name=\"1\""), std::string::npos);
  EXPECT_EQ(code.find("<!--"), std::string::npos);
}

TEST(AutoReplace, NewCodeClosingTagMustStandAtTheStartOfALine) {
  EXPECT_EQ(NewAppletCode("x <APPLET a>\r\n<p> </applet> inline\r\n</Applet>\r\nrest"),
            "<APPLET a>\r\n<p> </applet> inline\r\n</Applet>");
  EXPECT_EQ(NewAppletCode("no applet here"), "");
}

TEST(AutoReplace, SelectingOnlyTheSecondOfThreeLeavesTheOthersByteForByte) {
  ReplaceFixture f;
  f.site.write("page.html", ThreeApplets());
  ASSERT_TRUE(f.ReplaceWith({false, true, false}));
  EXPECT_EQ(f.Page(), WithPlayerBeforeBody(Replaced(ThreeApplets(), kAppletB, f.NewCode())));
  EXPECT_EQ(f.site.read("page_backup.html"), ThreeApplets());
}

TEST(AutoReplace, LineFeedPageKeepsItsLineEndsOnlyTheNewCodeHasCarriageReturns) {
  ReplaceFixture f;
  f.site.write("page.html", ThreeApplets());
  ASSERT_TRUE(f.ReplaceWith({true, true, true}));
  std::string page = f.Page();
  std::string expected = ThreeApplets();
  for (const std::string& a : {kAppletA, kAppletB, kAppletC})
    expected = Replaced(expected, a, f.NewCode());
  EXPECT_EQ(page, WithPlayerBeforeBody(expected));
  // Outside the three new blocks there is not one carriage return.
  std::string outside = page;
  for (size_t at; (at = outside.find(f.NewCode())) != std::string::npos;)
    outside.erase(at, f.NewCode().size());
  EXPECT_EQ(outside.find('\r'), std::string::npos);
  EXPECT_EQ(outside, "<html>\n<body>\n\n<p>one</p>\n\n<p>two</p>\n\n" + kPlayerLine +
                         "\n</body>\n</html>\n");
}

TEST(AutoReplace, ShorterCodePassesOverAnAppletCloseBehindAndShiftsTheRows) {
  // The search goes on from the replaced applet's old end: when the new
  // code is much shorter, the next applet lies before that point.
  ReplaceFixture f;
  const std::string longA =
      "<applet name=\"A\">\n" + std::string(f.NewCode().size() + 2000, 'p') + "\n</applet>";
  const std::string page = "<body>\n" + longA + "\n" + kAppletB + "\n" + std::string(4000, ' ') +
                           "\n" + kAppletC + "\n</body>\n";
  f.site.write("page.html", page);
  // Rows 1 and 3 ticked: C is reached as row 2, which is not ticked.
  ASSERT_TRUE(f.ReplaceWith({true, false, true}));
  EXPECT_EQ(f.Page(), WithPlayerBeforeBody(Replaced(page, longA, f.NewCode())));

  f.site.write("page.html", page);
  ASSERT_TRUE(f.ReplaceWith({true, true, false}));
  EXPECT_EQ(f.Page(), WithPlayerBeforeBody(
                          Replaced(Replaced(page, longA, f.NewCode()), kAppletC, f.NewCode())));
}

TEST(AutoReplace, NoSelectionKeepsTheWindowOpenWithTheWarning) {
  ReplaceFixture f;
  f.site.write("page.html", ThreeApplets());
  // Replace with nothing ticked, then Cancel.
  EXPECT_FALSE(f.ReplaceWith({false, false, false}));
  ASSERT_EQ(f.prompter().checkLists.size(), 2u);
  auto msgs = f.Messages();
  ASSERT_EQ(msgs.size(), 1u);
  EXPECT_EQ(msgs[0].text, "Please check at least one applet.");
  EXPECT_EQ(msgs[0].title, "No Applets Selected for Replace");
  EXPECT_EQ(f.Page(), ThreeApplets());
  EXPECT_FALSE(Exists(f.site.file("page_backup.html")));
}

TEST(AutoReplace, TheListShowsEveryAppletWithTheFirstTicked) {
  ReplaceFixture f;
  f.site.write("page.html", ThreeApplets());
  f.win.txtAutoReplaceHTML_FileName = f.site.file("page.html");
  btnAutoReplaceHTML_Click(f.c);  // cancelled at once
  ASSERT_EQ(f.prompter().checkLists.size(), 1u);
  const CheckList& l = f.prompter().checkLists[0];
  EXPECT_EQ(l.caption, "Replacing Applet Code in existing HTML file");
  EXPECT_EQ(l.message, "Three applets found in: page.html");
  EXPECT_EQ(l.rows, (std::vector<std::string>{
                        "<applet name=\"A\" code=\"Old.class\" width=10 height=10>...",
                        "<applet name=\"B\" code=\"Old.class\">...",
                        "<applet name=\"C\" code=\"Old.class\">..."}));
  EXPECT_EQ(l.ticked, (std::vector<bool>{true, false, false}));
  EXPECT_EQ(l.actionCaption, "Replace Selected Applets");
  EXPECT_EQ(l.selectAllCaption, "Select All");
  EXPECT_EQ(l.clearAllCaption, "Clear All");
  EXPECT_EQ(l.cancelCaption, "Cancel");
  EXPECT_EQ(f.Page(), ThreeApplets());
}

TEST(AutoReplace, ReplacingTwiceGivesPageBackupThenPageBackup1) {
  ReplaceFixture f;
  f.site.write("page.html", ThreeApplets());
  ASSERT_TRUE(f.ReplaceWith({true, false, false}));
  const std::string first = f.Page();
  ASSERT_TRUE(f.ReplaceWith({false, true, false}));
  EXPECT_EQ(f.site.read("page_backup.html"), ThreeApplets());
  EXPECT_EQ(f.site.read("page_backup1.html"), first);
  EXPECT_EQ(FilesIn(f.site.path()),
            (std::vector<std::string>{"page.html", "page_backup.html", "page_backup1.html"}));
  EXPECT_EQ(BackupPathFor(f.env, f.site.file("page.html")), f.site.file("page_backup2.html"));
}

TEST(AutoReplace, PagePathWithoutADotCannotBeBackedUpAndStaysAsItWas) {
  ReplaceFixture f;
  ASSERT_EQ(f.site.path().find('.'), std::string::npos);
  f.site.write("page", ThreeApplets());
  f.win.txtAutoReplaceHTML_FileName = f.site.file("page");
  f.prompter().checkListAnswers.push_back(CheckListAnswer{true, {}});
  btnAutoReplaceHTML_Click(f.c);
  // The whole path was taken for the extension.
  EXPECT_EQ(BackupPathFor(f.env, f.site.file("page")), "_backup" + f.site.file("page"));
  EXPECT_EQ(f.site.read("page"), ThreeApplets());
  EXPECT_EQ(FilesIn(f.site.path()), std::vector<std::string>{"page"});
  auto msgs = f.Messages();
  ASSERT_EQ(msgs.size(), 1u);
  EXPECT_EQ(msgs[0].text, "No such file or directory");
  EXPECT_TRUE(f.DialogsNamed("frmAutoRepHTML_MSG").empty());
}

TEST(AutoReplace, AppletInsideAnHtmlCommentCounts) {
  ReplaceFixture f;
  f.site.write("page.html", "<!-- <applet name=\"old\"> -->\n" + kAppletB + "\n");
  f.win.txtAutoReplaceHTML_FileName = f.site.file("page.html");
  btnAutoReplaceHTML_Click(f.c);
  ASSERT_EQ(f.prompter().checkLists.size(), 1u);
  EXPECT_EQ(f.prompter().checkLists[0].rows.size(), 2u);
  EXPECT_EQ(f.prompter().checkLists[0].message, "Two applets found in: page.html");
}

TEST(AutoReplace, UpperCaseAppletTagIsNotFound) {
  ReplaceFixture f;
  f.site.write("page.html", "<APPLET code=\"x\">\n</APPLET>\n");
  f.win.txtAutoReplaceHTML_FileName = f.site.file("page.html");
  f.prompter().checkListAnswers.push_back(CheckListAnswer{true, {}});
  EXPECT_FALSE(btnAutoReplaceHTML_Click(f.c));
  EXPECT_EQ(f.prompter().checkLists[0].message, "No applets found in: page.html");
  EXPECT_EQ(f.Messages()[0].text,
            "I'm sorry... I wasn't able to find any existing applets in this file." + kCRLF +
                "You have to insert your applet to this file manually.");
}

TEST(AutoReplace, WithoutUpdateNoFileButThePageAndTheBackupIsWritten) {
  ReplaceFixture f;
  TempDir media;
  MakeFiles(media.path(), {"a.gif", "s.au"});
  MakeFiles(f.t.home.path(), {"KestrelPane.class"});
  f.p.button(1).Image[1] = media.file("a.gif");
  f.p.button(1).Snd[1] = media.file("s.au");
  f.Generate();
  f.site.write("page.html", ThreeApplets());
  f.win.chkUpdateRequired = false;
  ASSERT_TRUE(f.ReplaceWith({true, false, false}));
  EXPECT_EQ(FilesIn(f.site.path()), (std::vector<std::string>{"page.html", "page_backup.html"}));
  // The temp file was moved into the page.
  EXPECT_FALSE(Exists(f.t.home.file("AppletTemp/_AutoReplace_HTML.htm")));

  f.win.chkUpdateRequired = true;
  ASSERT_TRUE(f.ReplaceWith({true, false, false}));
  EXPECT_EQ(FilesIn(f.site.path()),
            (std::vector<std::string>{"KestrelPane.class", "a.gif", "page.html", "page_backup.html",
                                      "page_backup1.html", "s.au"}));
}

TEST(AutoReplace, ReportHasTheProgramsTextAndCanBeTurnedOff) {
  ReplaceFixture f;
  f.site.write("page.html", ThreeApplets());
  f.prompter().dialogAnswers = {DialogAnswer{1, {}}, DialogAnswer{0, false}};  // Explore, Ok
  ASSERT_TRUE(f.ReplaceWith({true, false, true}));
  auto d = f.DialogsNamed("frmAutoRepHTML_MSG");
  ASSERT_EQ(d.size(), 1u);
  EXPECT_EQ(d[0].caption, "Operation Completed");
  EXPECT_EQ(d[0].text, "File: " + kCRLF + "\"" + f.site.file("page.html") + "\"" + kCRLF +
                           " is updated and is ready for upload." + kCRLF + kCRLF +
                           "Total applets found: 3. Replaced applets: 2." + kCRLF + kCRLF +
                           "Original HTML file saved as: " + kCRLF + "\"" +
                           f.site.file("page_backup.html") + "\"" + kCRLF);
  EXPECT_EQ(d[0].buttons[0].caption, "&Ok");
  EXPECT_EQ(d[0].buttons[1].caption, "View files in the File &Manager");
  EXPECT_EQ(d[0].checkCaption, "show this message next time.");
  ASSERT_EQ(f.launcher.calls.size(), 1u);
  EXPECT_EQ(f.launcher.calls[0].verb, "explore");
  EXPECT_EQ(f.launcher.calls[0].args[0], f.site.path() + "/");
  EXPECT_EQ(GetParam(f.env, "DontShowAutoRepConfirm"), "1");

  ASSERT_TRUE(f.ReplaceWith({true, false, false}));
  EXPECT_EQ(f.DialogsNamed("frmAutoRepHTML_MSG").size(), 1u);
}

TEST(AutoReplace, ReadyWithNothingReplacedSaysSo) {
  Pub f;
  Ready(f.c, 3, 0, "/x/page.html", "/x/page_backup.html");
  ASSERT_EQ(f.Messages().size(), 1u);
  EXPECT_EQ(f.Messages()[0].text, "No applets were replaced in \"/x/page.html\"");
  EXPECT_TRUE(f.prompter().dialogs.empty());
}

TEST(AutoReplace, SecondReplaceOfTheSameLoadAsksForAReload) {
  ReplaceFixture f;
  f.site.write("page.html", ThreeApplets());
  AutoReplacePage page;
  page.sourcePath = f.site.file("page.html");
  ASSERT_TRUE(DoDetect(f.c, page, page.sourcePath));
  page.ticked[0] = true;
  EXPECT_TRUE(RunReplacement(f.c, page));
  EXPECT_EQ(f.t.home.read("AppletTemp/_AutoReplace_HTML.htm"), page.pageText);
  EXPECT_FALSE(RunReplacement(f.c, page));
  EXPECT_EQ(f.Messages().back().text, "Please reload the input file.");
}

TEST(AutoReplace, FileStepWithoutAppletsExplainsTheCauses) {
  Pub f;
  AutoReplacePage page;
  EXPECT_FALSE(ReplaceFileStep(f.c, page));
  EXPECT_EQ(f.Messages()[0].text,
            "I can't find any applets." + kCRLF + kCRLF + "Possible causes:" + kCRLF +
                " 1.There are no applets created by Kestrel Pane" + kCRLF +
                " 2. Missing  \"<APPLET...\" " + kCRLF + " 3. Missing  \"</APPLET>\"");
}

TEST(AutoReplace, MissingPageIsToldAndThePickerOpens) {
  ReplaceFixture f;
  f.win.txtAutoReplaceHTML_FileName = f.site.file("gone.html");
  EXPECT_FALSE(btnAutoReplaceHTML_Click(f.c));
  ASSERT_EQ(f.Messages().size(), 1u);
  EXPECT_EQ(f.Messages()[0].text, "File: \"" + f.site.file("gone.html") + "\" not found");
  ASSERT_EQ(f.prompter().fileDialogs.size(), 1u);
  EXPECT_EQ(f.prompter().fileDialogs[0].folder, f.t.home.path() + "/Projects");
  EXPECT_EQ(f.prompter().fileDialogs[0].filter,
            "HTML (*.htm;*.html)|*.htm;*.html|All Files (*.*)|*.*");
}

TEST(AutoReplace, PickerStoresTheFolderTheBoxAndTheProjectsPage) {
  ReplaceFixture f;
  f.site.write("page.html", "x");
  f.p.bProjectSaved = true;
  f.prompter().openAnswers = {f.site.file("page.html")};
  btnGetAutoReplaceHTML_filename_Click(f.c);
  EXPECT_EQ(GetParam(f.env, "sLastReplacedFolder"), f.site.path() + "/");
  EXPECT_EQ(f.win.txtAutoReplaceHTML_FileName, f.site.file("page.html"));
  EXPECT_EQ(f.p.sOutputHTML, f.site.file("page.html"));
  EXPECT_FALSE(f.p.bProjectSaved);
  // The next pick starts where the last one was.
  btnGetAutoReplaceHTML_filename_Click(f.c);
  EXPECT_EQ(f.prompter().fileDialogs[1].folder, f.site.path() + "/");
  EXPECT_EQ(f.p.sOutputHTML, f.site.file("page.html"));
}

TEST(AutoReplace, EmptyBoxRunsThePickerFirstAndStopsWhenItIsCancelled) {
  ReplaceFixture f;
  EXPECT_FALSE(btnAutoReplaceHTML_Click(f.c));
  EXPECT_EQ(f.prompter().fileDialogs.size(), 1u);
  EXPECT_TRUE(f.prompter().checkLists.empty());
  EXPECT_TRUE(f.Messages().empty());
}

TEST(AutoReplace, BlankInThePageNameWarnsAboutSpaces) {
  ReplaceFixture f;
  f.site.write("my page.html", ThreeApplets());
  f.win.txtAutoReplaceHTML_FileName = f.site.file("my page.html");
  btnAutoReplaceHTML_Click(f.c);
  ASSERT_FALSE(f.prompter().shown.empty());
  EXPECT_EQ(f.prompter().shown.back().kind, "notice");
  EXPECT_NE(f.prompter().shown.back().text.find("This file name contains spaces!"),
            std::string::npos);
}

TEST(AutoReplace, KeyUpInTheBoxStoresThePageAndChangesTheProject) {
  Pub f;
  txtAutoReplaceHTML_FileName_KeyUp(f.c, "/x/y.html");
  EXPECT_EQ(f.p.sOutputHTML, "/x/y.html");
  EXPECT_FALSE(f.p.bProjectSaved);
}

TEST(CountMessage, TheTableHasNoEightSoEightReadsNineAndNineReadsTen) {
  EXPECT_EQ(CountWord(0), "No");
  EXPECT_EQ(CountWord(1), "One");
  EXPECT_EQ(CountWord(7), "Seven");
  EXPECT_EQ(CountWord(8), "Nine");
  EXPECT_EQ(CountWord(9), "Ten");
  EXPECT_EQ(CountWord(10), "10");
  EXPECT_EQ(CountWord(123), "123");
  EXPECT_EQ(CountMessage(1, "/a/b/page.html"), "One applet found in: page.html");
  EXPECT_EQ(CountMessage(0, "/a/b/page.html"), "No applets found in: page.html");
  EXPECT_EQ(CountMessage(8, "p.htm"), "Nine applets found in: p.htm");
}

TEST(FindApplets, EachRowRunsFromTheTagToItsFirstGreaterThan) {
  EXPECT_EQ(FindApplets("a<applet x=1>b<applet>c<applet y"),
            (std::vector<std::string>{"<applet x=1>...", "<applet>..."}));
  EXPECT_TRUE(FindApplets("<Applet>").empty());
}


// The replacement as the text describes it, rebuilding the whole text for
// each applet: what the faster one must equal, quirks included.
std::string RebuildEachTime(const std::string& pageText, const std::vector<bool>& ticked,
                            const std::string& newCode, int& replaced) {
  std::string text = pageText;
  size_t start = 0, index = 0;
  replaced = 0;
  for (;;) {
    size_t a = text.find("<applet", start);
    if (a == std::string::npos) break;
    size_t e = text.find("</applet>", a);
    ++index;
    if (e == std::string::npos) break;
    start = e;
    if (index > ticked.size() || !ticked[index - 1] || newCode.empty()) continue;
    text = text.substr(0, a) + newCode + text.substr(e + 9);
    ++replaced;
  }
  return text;
}

TEST(ReplaceTickedApplets, EqualsRebuildingTheTextForEachAppletOnRandomPages) {
  std::mt19937 rng(1234);
  const std::vector<std::string> pieces = {"<applet", "</applet>", "<applet x>", "</applet>\n",
                                           "a",       "bb\n",      "<",          "applet",
                                           "</",      "t>"};
  const std::vector<std::string> codes = {"", "<APPLET>\r\n</APPLET>", "<applet>", "<app",
                                          "</applet>", std::string(40, 'n'),
                                          "<applet><applet>\n</applet>"};
  for (int round = 0; round < 4000; ++round) {
    std::string page;
    const int n = static_cast<int>(rng() % 24);
    for (int k = 0; k < n; ++k) page += pieces[rng() % pieces.size()];
    std::vector<bool> ticked(rng() % 8);
    for (size_t k = 0; k < ticked.size(); ++k) ticked[k] = rng() % 3 != 0;
    const std::string& code = codes[rng() % codes.size()];
    int expectedCount = 0;
    const std::string expected = RebuildEachTime(page, ticked, code, expectedCount);
    ReplaceOutcome outcome;
    ASSERT_EQ(ReplaceTickedApplets(page, ticked, code, &outcome), expected)
        << "page: " << page << "\ncode: " << code;
    EXPECT_EQ(outcome.replaced, expectedCount) << page;
  }
}

TEST(ReplaceTickedApplets, TellsWhichTickedAppletsWereLeftAndWhy) {
  ReplaceOutcome o;
  const std::string page = "<applet a>\n</applet>\n<applet b>\n";
  EXPECT_EQ(ReplaceTickedApplets(page, {true, true}, "<APPLET>\n</APPLET>", &o),
            "<APPLET>\n</APPLET>\n<applet b>\n");
  EXPECT_EQ(o.replaced, 1);
  EXPECT_EQ(o.notReplaced, std::vector<int>{2});
  EXPECT_TRUE(o.unclosed);
}

}  // namespace
}  // namespace kp
