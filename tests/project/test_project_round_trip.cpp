// A save never writes a file that loads back differently: every text field
// is tried with each character the file format treats specially, and either
// the reload equals what was saved or the save stops with a message naming
// the field, leaving the old file as it was.
#include <gtest/gtest.h>

#include <filesystem>
#include <functional>

#include "core/conv.h"
#include "project/project_file.h"
#include "tests/project/project_fixture.h"

namespace kp::test {
namespace {

enum class Kind {
  Raw,         // written as it stands
  Esc,         // escaped on writing, unescaped on reading
  Name,        // the button name's escape
  EscRawRead,  // escaped on writing, read as it stands (target, code base)
  Block,       // a page text block, lines of any number
  Setting,     // one line of the settings block
};

struct TextField {
  std::string name;  // as the message names it
  bool onButton;
  Kind kind;
  std::function<std::string&(Project&)> ref;
};

std::vector<TextField> AllTextFields() {
  std::vector<TextField> f;
  auto applet = [&](const char* n, Kind k, std::string Project::*m) {
    f.push_back({n, false, k, [m](Project& p) -> std::string& { return p.*m; }});
  };
  auto button = [&](const char* n, Kind k, std::string tButton::*m) {
    f.push_back({n, true, k, [m](Project& p) -> std::string& { return p.button(1).*m; }});
  };
  auto tri = [&](const char* n, Kind k, Tri<std::string> tButton::*m) {
    static const char* const st[] = {"", " (UP)", " (OVER)", " (DOWN)"};
    for (int s = 1; s <= 3; ++s)
      f.push_back({std::string(n) + st[s], true, k,
                   [m, s](Project& p) -> std::string& { return (p.button(1).*m)[s]; }});
  };
  applet("AppletProgramOVER", Kind::Raw, &Project::AppletProgramOVER);
  applet("AppletProgramDOWN", Kind::Raw, &Project::AppletProgramDOWN);
  applet("AppletProgramOUT", Kind::Raw, &Project::AppletProgramOUT);
  applet("AppletProgramStart", Kind::Raw, &Project::AppletProgramStart);
  applet("AppletName", Kind::Raw, &Project::AppletName);
  applet("CodeBase", Kind::EscRawRead, &Project::CodeBase);
  applet("ImgPath", Kind::Raw, &Project::ImgPath);
  applet("SndPath", Kind::Raw, &Project::SndPath);
  applet("sLoading", Kind::Raw, &Project::sLoading);
  tri("Label", Kind::Esc, &tButton::Label);
  button("URL", Kind::Esc, &tButton::URL);
  button("Status", Kind::Esc, &tButton::Status);
  button("Target", Kind::EscRawRead, &tButton::Target);
  tri("Font", Kind::Raw, &tButton::Font);
  button("ProgramLEAVE", Kind::Raw, &tButton::ProgramLEAVE);
  button("ProgramOVER", Kind::Raw, &tButton::ProgramOVER);
  button("ProgramDOWN", Kind::Raw, &tButton::ProgramDOWN);
  button("Tip", Kind::Raw, &tButton::Tip);
  button("sBName", Kind::Name, &tButton::sBName);
  button("ProgramUP", Kind::Raw, &tButton::ProgramUP);
  button("ProgramCHECK", Kind::Raw, &tButton::ProgramCHECK);
  button("ProgramUNCHECK", Kind::Raw, &tButton::ProgramUNCHECK);
  applet("sHTMLbefore", Kind::Block, &Project::sHTMLbefore);
  applet("sHTMLalt", Kind::Block, &Project::sHTMLalt);
  applet("sHTMLafter", Kind::Block, &Project::sHTMLafter);
  applet("sOutputHTML", Kind::Setting, &Project::sOutputHTML);
  applet("sProjectsPath", Kind::Setting, &Project::sProjectsPath);
  applet("sOutputFolder", Kind::Setting, &Project::sOutputFolder);
  applet("sSearchImagesFolder", Kind::Setting, &Project::sSearchImagesFolder);
  applet("sSearchSoundsFolder", Kind::Setting, &Project::sSearchSoundsFolder);
  applet("sSearchLinkFolder", Kind::Setting, &Project::sSearchLinkFolder);
  return f;
}

// Each special text, put between two letters.
const char* const kSpecials[] = {"|",   "^",   "\r",  "\n",  "\r\n", "\"",  "&!", "&!0",
                                 "&!1", "&!2", "&!3", "&!4", ";",    " ",   "  ", "^\"; ;\"^",
                                 "[End: sHTMLbefore]", "\r\n[Start: kpProjectSettings]\r\n"};

bool HasLineBreak(const std::string& v) { return v.find_first_of("\r\n") != std::string::npos; }

bool HasTypedEscape(const std::string& v) {
  for (const char* e : {"&!0", "&!1", "&!2", "&!3", "&!4"})
    if (v.find(e) != std::string::npos) return true;
  return false;
}

bool HasMarkerLine(const std::string& v) {
  for (const char* m : {"[End: sHTMLbefore]", "[Start: kpProjectSettings]"}) {
    for (size_t at = v.find(m); at != std::string::npos; at = v.find(m, at + 1)) {
      const size_t end = at + std::string(m).size();
      const bool startsLine = at == 0 || v[at - 1] == '\n' || v[at - 1] == '\r';
      const bool endsLine = end == v.size() || v[end] == '\r' || v[end] == '\n';
      if (startsLine && endsLine) return true;
    }
  }
  return false;
}

// The cases the format cannot carry, worked out independently of the writer.
bool MustBeRefused(Kind k, const std::string& v) {
  switch (k) {
    case Kind::Raw: return HasLineBreak(v) || v.find('|') != std::string::npos;
    case Kind::Esc:
    case Kind::Name: return HasLineBreak(v) || HasTypedEscape(v);
    case Kind::EscRawRead: return HasLineBreak(v);
    case Kind::Block: return HasMarkerLine(v);
    case Kind::Setting: return HasLineBreak(v) || HasMarkerLine(v);
  }
  return true;
}

// What the reload holds for a saved value: the value itself, except where
// the format changes it by design.
std::string Reloaded(Kind k, const std::string& v) {
  if (k == Kind::EscRawRead) return EscapeField(v);
  if (k == Kind::Block) return ReplaceAll(ReplaceAll(ReplaceAll(v, "\r\n", "\n"), "\r", "\n"), "\n", "\r\n");
  return v;
}

std::vector<std::string> FolderEntries(const std::string& dir) {
  std::vector<std::string> names;
  for (auto& e : std::filesystem::directory_iterator(dir)) names.push_back(e.path().filename());
  std::sort(names.begin(), names.end());
  return names;
}

TEST(ProjectRoundTrip, EverySpecialCharacterInEveryTextFieldComesBackOrStopsTheSave) {
  TestEnv t;
  const std::string path = t.home.file("p.kpn");
  int refused = 0, kept = 0;
  for (const TextField& field : AllTextFields()) {
    for (const char* special : kSpecials) {
      const std::string value = std::string("a") + special + "b";
      SCOPED_TRACE(field.name + " = " + ByteHex(value));
      Project p = MakeProject(t, 2);
      p.sHTMLbefore = "<html>";
      p.sHTMLafter = "</html>";
      ASSERT_TRUE(SaveProject(p, t.env, path, false, false));
      const std::string old = t.home.read("p.kpn");
      const auto entries = FolderEntries(t.home.path());
      const size_t shownBefore = t.prompter.shown.size();

      field.ref(p) = value;
      const bool saved = SaveProject(p, t.env, path, false, false);
      if (MustBeRefused(field.kind, value)) {
        ++refused;
        EXPECT_FALSE(saved);
        ASSERT_EQ(t.prompter.shown.size(), shownBefore + 1);
        const std::string& msg = t.prompter.Last().text;
        EXPECT_NE(msg.find("The project was not saved"), std::string::npos) << msg;
        EXPECT_NE(msg.find(field.name), std::string::npos) << msg;
        if (field.onButton) {
          EXPECT_NE(msg.find("button 1 "), std::string::npos) << msg;
        }
        EXPECT_EQ(t.home.read("p.kpn"), old);
        EXPECT_EQ(FolderEntries(t.home.path()), entries);
        continue;
      }
      ++kept;
      ASSERT_TRUE(saved) << t.prompter.Last().text;
      EXPECT_EQ(t.prompter.shown.size(), shownBefore);
      Project q;
      ASSERT_EQ(LoadProject2(q, t.env, path), LoadResult::Loaded);
      Project expected = p;
      field.ref(expected) = Reloaded(field.kind, value);
      EXPECT_EQ(field.ref(q), field.ref(expected));
      // Nothing shifted: every other field of both buttons and of the
      // applet came back too.
      EXPECT_EQ(q.ButtonCount, 2);
      EXPECT_EQ(q.button(1), expected.button(1));
      EXPECT_EQ(q.button(2), expected.button(2));
      for (const TextField& other : AllTextFields())
        if (!other.onButton) {
          EXPECT_EQ(other.ref(q), other.ref(expected)) << other.name;
        }
      EXPECT_EQ(q.AppletWidth, p.AppletWidth);
      EXPECT_EQ(q.iDescentY, p.iDescentY);
    }
  }
  // Both outcomes occur: the check does not simply refuse everything.
  EXPECT_GT(refused, 50);
  EXPECT_GT(kept, 300);
}

TEST(ProjectRoundTrip, BlockLineEndsAreKeptInTheFormTheFileLoadsThem) {
  TestEnv t;
  Project p = MakeProject(t, 1);
  p.sHTMLbefore = "<html>\n<body>\r<p>";
  ASSERT_TRUE(SaveProject(p, t.env, t.home.file("p.kpn"), false, false));
  EXPECT_EQ(p.sHTMLbefore, "<html>\r\n<body>\r\n<p>");
  Project q;
  ASSERT_EQ(LoadProject2(q, t.env, t.home.file("p.kpn")), LoadResult::Loaded);
  EXPECT_EQ(q.sHTMLbefore, p.sHTMLbefore);
}

// A project in a folder whose name holds "|", with its media beside it.
struct BarFolder {
  TestEnv t;
  std::string folder;
  std::string project;
  BarFolder() {
    folder = t.home.file("Shop|Bar 2");
    std::filesystem::create_directories(folder);
    project = folder + "/bar.kpn";
    WriteBytes(folder + "/up.gif", "GIF89a");
    WriteBytes(folder + "/click.au", ".snd");
    WriteBytes(folder + "/back.gif", "GIF89a");
  }
};

TEST(ProjectRoundTrip, MediaBesideAProjectInAFolderWithABarAreWrittenAsBareNames) {
  BarFolder f;
  Project p = MakeProject(f.t, 2);
  p.BackImg = f.folder + "/back.gif";
  p.button(1).Image[1] = f.folder + "/up.gif";
  p.button(1).Snd[3] = f.folder + "/click.au";
  p.button(2).sBName = "Second";
  p.AppletProgramStart = "6 100;";
  ASSERT_TRUE(SaveProject(p, f.t.env, f.project, false, false));
  const std::string text = ReadBytes(f.project);
  EXPECT_EQ(FieldOf(LineOf(text, 2), 6), "back.gif");
  EXPECT_EQ(FieldOf(LineOf(text, 3), 13), "up.gif");
  EXPECT_EQ(FieldOf(LineOf(text, 3), 33), "click.au");
  EXPECT_EQ(text.find("Shop|Bar"), std::string::npos);

  Project q;
  ASSERT_EQ(LoadProject2(q, f.t.env, f.project), LoadResult::Loaded);
  EXPECT_EQ(q.BackImg, p.BackImg);
  EXPECT_EQ(q.button(1), p.button(1));
  EXPECT_EQ(q.button(2), p.button(2));
  EXPECT_EQ(q.button(2).sBName, "Second");
  EXPECT_EQ(q.AppletProgramStart, "6 100;");
  EXPECT_EQ(f.t.prompter.CountMsg(), 0);
}

TEST(ProjectRoundTrip, FullPathsWithoutABarStayFullPaths) {
  TestEnv t;
  t.home.write("up.gif", "GIF89a");
  Project p = MakeProject(t, 1);
  p.button(1).Image[1] = t.home.file("up.gif");
  ASSERT_TRUE(SaveProject(p, t.env, t.home.file("p.kpn"), false, false));
  EXPECT_EQ(FieldOf(LineOf(t.home.read("p.kpn"), 3), 13), t.home.file("up.gif"));
}

TEST(ProjectRoundTrip, MediaInAnotherFolderWithABarStopTheSaveNamingButtonAndField) {
  BarFolder f;
  const std::string elsewhere = f.t.home.file("Other|Pics");
  std::filesystem::create_directories(elsewhere);
  WriteBytes(elsewhere + "/over.gif", "GIF89a");
  const std::string target = f.t.home.file("plain.kpn");
  Project p = MakeProject(f.t, 3);
  ASSERT_TRUE(SaveProject(p, f.t.env, target, false, false));
  const std::string old = ReadBytes(target);
  p.button(3).sBName = "Contact";
  p.button(3).Image[2] = elsewhere + "/over.gif";
  EXPECT_FALSE(SaveProject(p, f.t.env, target, false, false));
  const std::string& msg = f.t.prompter.Last().text;
  EXPECT_NE(msg.find("button 3 \"Contact\""), std::string::npos) << msg;
  EXPECT_NE(msg.find("Image (OVER)"), std::string::npos) << msg;
  EXPECT_NE(msg.find("\"|\""), std::string::npos) << msg;
  EXPECT_EQ(ReadBytes(target), old);
}

TEST(ProjectRoundTrip, AMediaFileWhoseOwnNameHoldsABarStopsTheSave) {
  BarFolder f;
  WriteBytes(f.folder + "/a|b.gif", "GIF89a");
  Project p = MakeProject(f.t, 1);
  p.BackImg = f.folder + "/a|b.gif";
  EXPECT_FALSE(SaveProject(p, f.t.env, f.project, false, false));
  EXPECT_NE(f.t.prompter.Last().text.find("BackImg"), std::string::npos);
  EXPECT_NE(f.t.prompter.Last().text.find("the applet"), std::string::npos);
  EXPECT_FALSE(std::filesystem::exists(f.project));
}

TEST(ProjectRoundTrip, SaveAsIntoAnotherFolderStopsWhereTheBareNameWouldNotLeadBack) {
  BarFolder f;
  Project p = MakeProject(f.t, 1);
  p.button(1).Image[1] = f.folder + "/up.gif";
  ASSERT_TRUE(SaveProject(p, f.t.env, f.project, false, false));
  // The same project saved elsewhere: the picture's folder is not the
  // file's, so no bare name can lead back to it.
  EXPECT_FALSE(SaveProject(p, f.t.env, f.t.home.file("copy.kpn"), false, false));
  EXPECT_NE(f.t.prompter.Last().text.find("Image (UP)"), std::string::npos);
  EXPECT_FALSE(std::filesystem::exists(f.t.home.file("copy.kpn")));
}

}  // namespace
}  // namespace kp::test
