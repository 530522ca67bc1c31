#include "project/project_file.h"

#include <optional>
#include <string_view>
#include <utility>
#include <unordered_map>
#include <vector>

#include "core/conv.h"
#include "core/event_pacer.h"
#include "core/messages.h"
#include "core/session.h"
#include "core/settings.h"
#include "project/button_line.h"
#include "project/button_record.h"
#include "project/fields.h"
#include "project/old_formats.h"

namespace kp {
namespace {


void AppendAppletLine(std::string& out, const Project& p, bool bNamesOnly,
                      const std::string& ownFolder) {
  AddNum(out, p.AppletWidth);
  AddNum(out, p.AppletHeight);
  AddNum(out, p.ButtonCount);
  AddText(out, "R");
  AddNum(out, p.DOWNBtn);
  AddNum(out, p.BackGround);
  AddText(out, FileFieldText(p.BackImg, bNamesOnly ? LineForm::Export : LineForm::Project,
                            ownFolder));
  AddNum(out, p.BackImgStyle);
  AddText(out, p.AppletProgramOVER);
  AddText(out, p.AppletProgramDOWN);
  AddText(out, p.AppletProgramOUT);
  AddNum(out, p.iBgOffsetX);
  AddNum(out, p.iBgOffsetY);
  AddText(out, p.AppletProgramStart);
  AddText(out, p.AppletName);
  AddBool(out, p.bUnusualRepaint != 0);
  AddBool(out, p.bDoScroll);
  AddNum(out, p.iScStep);
  AddNum(out, p.iScDelay);
  AddNum(out, p.iScDirection);
  AddText(out, EscapeField(p.CodeBase));
  AddBool(out, p.bPreLoad);
  AddNum(out, p.cTipBackColor);
  AddNum(out, p.cTipTextColor);
  AddNum(out, p.cTipBorderColor);
  AddNum(out, p.iTipBorderWidth);
  AddNum(out, p.iTipDelay);
  AddNum(out, p.iTipHideAfter);
  AddNum(out, p.iTipFontStyle);
  AddNum(out, p.iTipFontSize);
  AddNum(out, p.iTipFont);
  AddBool(out, p.bClip);
  AddText(out, "reserved");
  AddText(out, p.ImgPath);
  AddText(out, p.SndPath);
  AddNum(out, p.iABorderStyle);
  AddNum(out, p.iABorderWidth);
  AddNum(out, p.iABorderShade);
  AddNum(out, p.cABorderColor);
  AddNum(out, p.cFadeColor);
  AddNum(out, p.iFadeStyle);
  AddText(out, p.sLoading);
  AddNum(out, p.cLoadingFont);
  AddNum(out, p.cLoadingBack);
  AddNum(out, p.iLoadingFont_Size);
  AddNum(out, p.iLoadingFont_Style);
  AddNum(out, p.iLoadingFont_Name);
  AddNum(out, p.iDescentX);
  AddNum(out, p.iDescentY);
}

// Applies field `no` of the applet line; `radioAll` reports the relic
// field 3.
void ApplyAppletField(Project& p, int no, std::string_view f, const FileResolver& resolve,
                      bool& radioAll) {
  switch (no) {
    case 0: p.AppletWidth = MakeCInt(f, 420); break;
    case 1: p.AppletHeight = MakeCInt(f, 180); break;
    case 2: p.ButtonCount = MakeCInt(f, 0); break;
    case 3: radioAll = f == "1"; break;
    case 4: p.DOWNBtn = MakeCInt(f, 0); break;
    case 5: p.BackGround = MakeCLng(f, 0); break;
    case 6: p.BackImg = resolve(f); break;
    case 7: p.BackImgStyle = MakeCInt(f, 0); break;
    case 8: p.AppletProgramOVER = std::string(f); break;
    case 9: p.AppletProgramDOWN = std::string(f); break;
    case 10: p.AppletProgramOUT = std::string(f); break;
    case 11: p.iBgOffsetX = MakeCInt(f, 0); break;
    case 12: p.iBgOffsetY = MakeCInt(f, 0); break;
    case 13: p.AppletProgramStart = std::string(f); break;
    case 14: p.AppletName = std::string(f); break;
    case 15: p.bUnusualRepaint = TextToBool(f) ? -1 : 0; break;
    case 16: p.bDoScroll = TextToBool(f); break;
    case 17: p.iScStep = MakeCInt(f, 1); break;
    case 18: p.iScDelay = MakeCInt(f, 0); break;
    case 19: p.iScDirection = MakeCInt(f, 0); break;
    // Deliberately not unescaped; a lone "." stands for no code base.
    case 20: p.CodeBase = f == "." ? std::string() : std::string(f); break;
    case 21: p.bPreLoad = TextToBool(f); break;
    case 22: p.cTipBackColor = MakeCLng(f, 0); break;
    case 23: p.cTipTextColor = MakeCLng(f, 0); break;
    case 24: p.cTipBorderColor = MakeCLng(f, 0); break;
    case 25: p.iTipBorderWidth = MakeCInt(f, 1); break;
    case 26: p.iTipDelay = MakeCInt(f, 300); break;
    case 27: p.iTipHideAfter = MakeCInt(f, 2500); break;
    case 28: p.iTipFontStyle = MakeCInt(f, 0); break;
    case 29: p.iTipFontSize = MakeCInt(f, 10); break;
    case 30: p.iTipFont = MakeCInt(checkIn(f, 0, 2, 0), 0); break;
    case 31: p.bClip = TextToBool(f); break;
    case 33: p.ImgPath = std::string(f); break;
    case 34: p.SndPath = std::string(f); break;
    case 35: p.iABorderStyle = MakeCInt(f, 0); break;
    case 36: p.iABorderWidth = MakeCInt(f, 0); break;
    case 37: p.iABorderShade = MakeCInt(f, 20); break;
    case 38: p.cABorderColor = MakeCLng(f, 0); break;
    case 39: p.cFadeColor = MakeCLng(f, 0); break;
    case 40: p.iFadeStyle = MakeCInt(f, 0); break;
    case 41: p.sLoading = std::string(f); break;
    case 42: p.cLoadingFont = MakeCLng(f, 0); break;
    case 43: p.cLoadingBack = MakeCLng(f, RGB(255, 255, 255)); break;
    case 44: p.iLoadingFont_Size = MakeCInt(f, 10); break;
    case 45: p.iLoadingFont_Style = MakeCInt(f, 0); break;
    case 46: p.iLoadingFont_Name = MakeCInt(f, 0); break;
    case 47: p.iDescentX = MakeCInt(f, 0); break;
    case 48: p.iDescentY = MakeCInt(f, 0); break;
    default: break;  // 32 "reserved", and anything past 48
  }
}

void AppendBlock(std::string& out, const char* name, const std::string& text) {
  if (text.empty()) return;
  out += "[Start: ";
  out += name;
  out += "]\r\n";
  out += text;
  out += "\r\n[End: ";
  out += name;
  out += "]\r\n";
}

// Lines of a text file. CR LF ends a line; a lone CR or LF is taken too.
std::vector<std::string_view> SplitLines(std::string_view text) {
  std::vector<std::string_view> lines;
  size_t start = 0;
  for (size_t i = 0; i < text.size(); ++i) {
    char c = text[i];
    if (c != '\r' && c != '\n') continue;
    lines.push_back(text.substr(start, i - start));
    if (c == '\r' && i + 1 < text.size() && text[i + 1] == '\n') ++i;
    start = i + 1;
  }
  if (start < text.size()) lines.push_back(text.substr(start));
  return lines;
}

// The lines between "[Start: name]" and "[End: name]" joined with CR LF;
// false when the start marker is absent. A missing end marker collects to
// the end of the file.
bool ReadBlock(const std::string& fileText, const std::string& name, std::string& out) {
  const std::string start = "[Start: " + name + "]";
  const std::string end = "[End: " + name + "]";
  auto lines = SplitLines(fileText);
  size_t i = 0;
  while (i < lines.size() && lines[i] != start) ++i;
  if (i == lines.size()) return false;
  std::string text;
  bool first = true;
  for (++i; i < lines.size() && lines[i] != end; ++i) {
    if (!first) text += sCRLF;
    text.append(lines[i]);
    first = false;
  }
  out = std::move(text);
  return true;
}

// Resolution of the file fields of one load, with its warning state.
class Resolver {
 public:
  Resolver(Env& env, std::string folder) : env_(env), folder_(std::move(folder)) {}

  std::string operator()(std::string_view field) {
    std::string text(field);
    if (text.empty()) return text;
    if (!Exists(text)) {
      std::string candidate = folder_ + FileNameOnly(text);
      if (Exists(candidate)) text = candidate;
    }
    if (!IsAbsolutePath(text)) text = folder_ + text;
    WarnMissing(text);
    return text;
  }

  void WarnMissing(const std::string& path) {
    if (path.empty() || warningsOff_ || Exists(path)) return;
    const std::string text = SharedText("sMissingFile", {folder_});
    if (env_.prompter.MsgBox(text, Buttons::OKCancel, SharedText("sMissingFileTitle"),
                             Icon::Exclamation) == Answer::Cancel)
      warningsOff_ = true;
  }

 private:
  // Buttons share their pictures and sounds: each path is looked up on the
  // disk once per load.
  bool Exists(const std::string& path) {
    auto [it, fresh] = known_.try_emplace(path, false);
    if (fresh) it->second = env_.fs.FileExists(path);
    return it->second;
  }

  Env& env_;
  std::string folder_;
  bool warningsOff_ = false;
  std::unordered_map<std::string, bool> known_;
};

// A failure inside the load, with the button number it happened at.
struct LoadError {
  std::string message;
  int buttonNo = 0;
};

constexpr const char* kPastEnd = "Input past end of file";


// --- What a save may write ----------------------------------------------------
//
// The file has no quoting: "|" ends a field, a line break ends a line, and
// a marker line ends a block. A text holding one of them would load back
// as something else, and silently shift every field after it. Each text
// field is checked in the form it is written in before anything is
// written; the format's own deliberate changes (an escaped target or code
// base read back raw, "&nbsp" read as a blank) are not counted.

enum class FieldForm {
  Raw,        // written and read as it stands
  Esc,        // EscapeField, UnescapeField
  Name,       // EscapeNameField, UnescapeField
  EscRawRead, // EscapeField on writing, read as it stands
  Written,    // the text as written (file fields)
};

const char* const kMarkers[] = {
    "[Start: sHTMLbefore]",       "[End: sHTMLbefore]", "[Start: sHTMLalt]",
    "[End: sHTMLalt]",            "[Start: sHTMLafter]", "[End: sHTMLafter]",
    "[Start: kpProjectSettings]", "[End: kpProjectSettings]"};

std::string Quoted(std::string_view s) { return std::string(sQuote) + std::string(s) + sQuote; }

// Why the value of a line field would not come back as it is; "" when it
// would.
std::string UnkeptInLine(const std::string& v, FieldForm form) {
  if (v.find_first_of("\r\n") != std::string::npos)
    return "holds a line break, which ends the line in the project file";
  switch (form) {
    case FieldForm::Raw:
    case FieldForm::Written:
      if (v.find('|') != std::string::npos)
        return "holds " + Quoted("|") +
               ", which ends a field in the project file, so every field after it would shift";
      return "";
    case FieldForm::Esc:
    case FieldForm::Name: {
      const std::string back =
          UnescapeField(form == FieldForm::Name ? EscapeNameField(v) : EscapeField(v));
      if (back == v || back == ReplaceAll(v, "&nbsp", " ")) return "";
      // "&" is never escaped, so an escape text typed in comes back as the
      // character it stands for.
      static const char* const kBecomes[] = {" ", ";", sQuote, "|", "^"};
      for (size_t at = v.find("&!"); at != std::string::npos; at = v.find("&!", at + 1)) {
        if (at + 2 < v.size() && v[at + 2] >= '0' && v[at + 2] <= '4')
          return "holds the text " + Quoted(v.substr(at, 3)) + ", which the project file reads back as " +
                 Quoted(kBecomes[v[at + 2] - '0']);
      }
      return "would be read back from the project file as " + Quoted(back);
    }
    case FieldForm::EscRawRead: return "";
  }
  return "";
}

// Why a block's text would not come back as it is; "" when it would.
std::string UnkeptInBlock(const std::string& text) {
  size_t start = 0;
  for (;;) {
    const size_t end = text.find_first_of("\r\n", start);
    const std::string_view line =
        std::string_view(text).substr(start, end == std::string::npos ? std::string::npos : end - start);
    for (const char* marker : kMarkers)
      if (line == marker)
        return "holds the line " + Quoted(marker) + ", which the project file takes as a block marker";
    if (end == std::string::npos) return "";
    start = end + (text.compare(end, 2, "\r\n") == 0 ? 2 : 1);
  }
}

struct Unsavable {
  std::string owner;  // "button 2 ("Home")", "the applet", ...
  std::string field;
  std::string why;
};

std::optional<Unsavable> FindUnsavable(const Project& p, bool bNamesOnly,
                                       const std::string& ownFolder) {
  const LineForm form = bNamesOnly ? LineForm::Export : LineForm::Project;
  std::optional<Unsavable> found;
  auto check = [&](const std::string& owner, const std::string& field, const std::string& v,
                   FieldForm f) {
    if (found) return;
    const std::string why = UnkeptInLine(v, f);
    if (!why.empty()) found = Unsavable{owner, field, why};
  };
  auto checkFile = [&](const std::string& owner, const std::string& field, const std::string& v) {
    check(owner, field, FileFieldText(v, form, ownFolder), FieldForm::Written);
  };
  static const char* const kState[] = {"", " (UP)", " (OVER)", " (DOWN)"};

  const std::string applet = "the applet";
  checkFile(applet, "BackImg", p.BackImg);
  check(applet, "AppletProgramOVER", p.AppletProgramOVER, FieldForm::Raw);
  check(applet, "AppletProgramDOWN", p.AppletProgramDOWN, FieldForm::Raw);
  check(applet, "AppletProgramOUT", p.AppletProgramOUT, FieldForm::Raw);
  check(applet, "AppletProgramStart", p.AppletProgramStart, FieldForm::Raw);
  check(applet, "AppletName", p.AppletName, FieldForm::Raw);
  check(applet, "CodeBase", p.CodeBase, FieldForm::EscRawRead);
  check(applet, "ImgPath", p.ImgPath, FieldForm::Raw);
  check(applet, "SndPath", p.SndPath, FieldForm::Raw);
  check(applet, "sLoading", p.sLoading, FieldForm::Raw);

  for (int i = 1; i <= p.ButtonCount && !found; ++i) {
    const tButton& b = p.button(i);
    const std::string owner = "button " + std::to_string(i) + " " + Quoted(b.sBName);
    for (int s = 1; s <= 3; ++s) check(owner, std::string("Label") + kState[s], b.Label[s], FieldForm::Esc);
    check(owner, "URL", b.URL, FieldForm::Esc);
    check(owner, "Status", b.Status, FieldForm::Esc);
    check(owner, "Target", b.Target, FieldForm::EscRawRead);
    for (int s = 1; s <= 3; ++s) checkFile(owner, std::string("Image") + kState[s], b.Image[s]);
    for (int s = 1; s <= 3; ++s) check(owner, std::string("Font") + kState[s], b.Font[s], FieldForm::Raw);
    for (int s = 1; s <= 3; ++s) checkFile(owner, std::string("Snd") + kState[s], b.Snd[s]);
    check(owner, "ProgramLEAVE", b.ProgramLEAVE, FieldForm::Raw);
    check(owner, "ProgramOVER", b.ProgramOVER, FieldForm::Raw);
    check(owner, "ProgramDOWN", b.ProgramDOWN, FieldForm::Raw);
    check(owner, "Tip", b.Tip, FieldForm::Raw);
    check(owner, "sBName", b.sBName, FieldForm::Name);
    check(owner, "ProgramUP", b.ProgramUP, FieldForm::Raw);
    check(owner, "ProgramCHECK", b.ProgramCHECK, FieldForm::Raw);
    check(owner, "ProgramUNCHECK", b.ProgramUNCHECK, FieldForm::Raw);
  }
  if (found) return found;

  const std::pair<const char*, const std::string*> blocks[] = {
      {"sHTMLbefore", &p.sHTMLbefore}, {"sHTMLalt", &p.sHTMLalt}, {"sHTMLafter", &p.sHTMLafter}};
  for (const auto& [name, text] : blocks) {
    const std::string why = UnkeptInBlock(*text);
    if (!why.empty()) return Unsavable{"the page text", name, why};
  }
  const std::pair<const char*, const std::string*> settings[] = {
      {"sOutputHTML", &p.sOutputHTML},
      {"sProjectName", &p.sProjectName},
      {"sProjectsPath", &p.sProjectsPath},
      {"sOutputFolder", &p.sOutputFolder},
      {"sSearchImagesFolder", &p.sSearchImagesFolder},
      {"sSearchSoundsFolder", &p.sSearchSoundsFolder},
      {"sSearchLinkFolder", &p.sSearchLinkFolder}};
  for (const auto& [name, text] : settings) {
    // A normal save leaves the name's line empty, an export the others.
    if ((std::string_view(name) == "sProjectName") != bNamesOnly) continue;
    std::string why = text->find_first_of("\r\n") != std::string::npos
                          ? "holds a line break, which ends the line in the project file"
                          : UnkeptInBlock(*text);
    if (!why.empty()) return Unsavable{"the project settings", name, why};
  }
  return std::nullopt;
}

// Line ends of a page text as the file keeps them: every CR, LF and CR LF
// becomes CR LF, which is how the text loads back.
std::string FileLineEnds(const std::string& text) {
  if (text.find_first_of("\r\n") == std::string::npos) return text;
  std::string out;
  out.reserve(text.size() + 16);
  for (size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    if (c != '\r' && c != '\n') {
      out.push_back(c);
      continue;
    }
    out += sCRLF;
    if (c == '\r' && i + 1 < text.size() && text[i + 1] == '\n') ++i;
  }
  return out;
}

}  // namespace

std::string ProjectFileText(const Project& p, bool bNamesOnly, const std::string& ownFolder) {
  std::string out;
  out.reserve(64 + 700 * static_cast<size_t>(p.ButtonCount > 0 ? p.ButtonCount : 0));
  out += kProjectHeader;
  out += sCRLF;
  AppendAppletLine(out, p, bNamesOnly, ownFolder);
  out += sCRLF;
  LineForm form = bNamesOnly ? LineForm::Export : LineForm::Project;
  for (int i = 1; i <= p.ButtonCount; ++i) {
    AppendButtonLine(out, p.button(i), form, ownFolder);
    out += sCRLF;
  }
  out += sCRLF;
  AppendBlock(out, "sHTMLbefore", p.sHTMLbefore);
  AppendBlock(out, "sHTMLalt", p.sHTMLalt);
  AppendBlock(out, "sHTMLafter", p.sHTMLafter);
  out += sCRLF;
  out += "[Start: kpProjectSettings]\r\n";
  const std::string* lines[7] = {&p.sOutputHTML,         nullptr, &p.sProjectsPath,
                                 &p.sOutputFolder,       &p.sSearchImagesFolder,
                                 &p.sSearchSoundsFolder, &p.sSearchLinkFolder};
  for (int k = 0; k < 7; ++k) {
    if (bNamesOnly) {
      if (k == 1) out += p.sProjectName;
    } else if (lines[k]) {
      out += *lines[k];
    }
    out += sCRLF;
  }
  out += "[End: kpProjectSettings]\r\n\r\n";
  return out;
}

bool SaveProject(Project& p, Env& env, const std::string& path, bool bKeepState,
                 bool bNamesOnly) {
  p.sProjectName = FileNameOf(path, true);
  // The page texts load back with CR LF whatever they were written with;
  // the model takes that form now, so that what is kept equals what loads.
  for (std::string* text : {&p.sHTMLbefore, &p.sHTMLalt, &p.sHTMLafter})
    *text = FileLineEnds(*text);
  const std::string ownFolder = GetFolder(path);
  if (auto bad = FindUnsavable(p, bNamesOnly, ownFolder)) {
    env.prompter.MsgBox(SharedText("sNotSaved", {bad->owner, bad->field, bad->why, path}),
                        Buttons::OK, "", Icon::Exclamation);
    return false;
  }
  env.prompter.ProgressShow(SharedText("sSavingButtons"));
  env.prompter.Busy(true);
  // Progress per button, as the text is built line by line.
  for (int i = 1; i <= p.ButtonCount; ++i)
    env.prompter.ProgressSet(
        SharedText("sSavingButton", {std::to_string(i), std::to_string(p.ButtonCount)}),
        i * 100 / p.ButtonCount);
  std::string text = ProjectFileText(p, bNamesOnly, ownFolder);
  IoStatus st = env.fs.WriteFileAtomic(path, text);
  env.prompter.Busy(false);
  env.prompter.ProgressHide();
  if (!st) {
    env.prompter.MsgBox(
        // The reason follows the fixed text, so a full disk or a
        // write-protected file is named as what it is.
        SharedText("sSaveFailed", {st.message}),
        Buttons::OK, "", Icon::Critical);
    return false;
  }
  if (!bKeepState) {
    p.bProjectSaved = true;
    WriteRecent(env, path);
  }
  return true;
}

bool load_sHTMLbefore(Project& p, const std::string& fileText) {
  return ReadBlock(fileText, "sHTMLbefore", p.sHTMLbefore);
}

bool load_sHTMLalt(Project& p, const std::string& fileText) {
  bool found = ReadBlock(fileText, "sHTMLalt", p.sHTMLalt);
  if (p.sHTMLalt.empty()) p.sHTMLalt = DefaultHTMLalt();
  return found;
}

bool load_sHTMLafter(Project& p, const std::string& fileText) {
  return ReadBlock(fileText, "sHTMLafter", p.sHTMLafter);
}

bool load_ProjectSettings(Project& p, const std::string& fileText) {
  std::string block;
  if (!ReadBlock(fileText, "kpProjectSettings", block)) return false;
  std::string* targets[7] = {&p.sOutputHTML,         nullptr, &p.sProjectsPath,
                             &p.sOutputFolder,       &p.sSearchImagesFolder,
                             &p.sSearchSoundsFolder, &p.sSearchLinkFolder};
  auto lines = SplitLines(block);
  for (size_t k = 0; k < 7 && k < lines.size(); ++k)
    if (targets[k]) *targets[k] = std::string(lines[k]);
  return true;
}

namespace {

// Steps after the file was read: format test, applet, buttons, blocks.
// Throws nothing; a failure comes back as LoadError.
LoadResult ReadProjectText(Project& p, Env& env, const std::string& path, const std::string& text,
                           LoadError& err) {
  auto lines = SplitLines(text);
  size_t next = 0;
  if (lines.empty()) {
    err.message = kPastEnd;
    return LoadResult::Failed;
  }
  std::string_view line1 = lines[next++];
  bool convert = false;
  if (line1.find("KestrelPane Project 2.0") != std::string_view::npos) {
  } else if (StartsWith(line1, "QuailStone Project 1.") ||
             StartsWith(line1, "KestrelPane Project 1.") ||
             StartsWith(line1, "LinnetPlum Project 1.")) {
    env.prompter.MsgBox(SharedText("sEarlierVersion"), Buttons::OK, SharedText("sWarningTitle"),
                        Icon::Exclamation);
    convert = true;
  } else if (StartsWith(line1, "KestrelPane Project")) {
    env.prompter.MsgBox(SharedText("sLaterVersion", {std::string(line1), kHomePage}));
    return LoadResult::Refused;
  } else {
    env.prompter.MsgBox(SharedText("sNotSupported"));
    return LoadResult::Refused;
  }

  Resolver resolve(env, GetFolder(path));
  FileResolver resolveFn = [&resolve](std::string_view f) { return resolve(f); };
  auto nextLine = [&](std::string& out) {
    if (next >= lines.size()) return false;
    out = convert ? ConvertOldLine(lines[next]) : std::string(lines[next]);
    ++next;
    return true;
  };

  std::string line;
  if (!nextLine(line)) {
    err.message = kPastEnd;
    return LoadResult::Failed;
  }
  bool radioAll = false;
  ForEachField(line, [&](int no, std::string_view f) {
    ApplyAppletField(p, no, f, resolveFn, radioAll);
    return no < kAppletFields - 1;
  });
  SetMainParams(p, env);

  const int count = p.ButtonCount;
  EventPacer pacer;
  for (int i = 1; i <= count; ++i) {
    err.buttonNo = i;
    if (!nextLine(line)) {
      err.message = kPastEnd;
      return LoadResult::Failed;
    }
    if (i > kBtnUpperBound) {
      err.message = "Subscript out of range";
      return LoadResult::Failed;
    }
    env.prompter.ProgressSet(
        SharedText("sLoadingButton", {std::to_string(i), std::to_string(count)}), i * 100 / count);
    if (pacer.Due()) env.prompter.ProcessEvents();
    int labelsPending = 0;
    if (MakeDefaultButtonDeferred(p, env, i, true, "", &labelsPending) ==
        RecordResult::ProcessEnds)
      return LoadResult::ProcessEnds;
    tButton& b = p.button(i);
    if (radioAll) b.Radio = true;
    int fields = 0;
    ForEachField(line, [&](int no, std::string_view f) {
      ApplyProjectButtonField(b, no, f, resolveFn);
      fields = no + 1;
      return no < kButtonFields - 1;
    });
    // Labels the line did not carry keep the default record's free name.
    if (labelsPending > 0 && fields < 4 + labelsPending) {
      std::string free = Get_FREE_sBName(p, i);
      for (int s = fields > 4 ? fields - 3 : 1; s <= labelsPending; ++s) b.Label[s] = free;
    }
    if (b.iBtnType == 0)
      for (int s = 1; s <= 3; ++s) b.BorderStyle[s] = 0;
    for (int s = 1; s <= 3; ++s)
      if (b.BorderAutoColor[s]) b.BorderColor[s] = b.BackColor[s];
    p.iCurBtn = static_cast<i16>(i);
    env.view.LoadButton(p, i);
  }

  load_sHTMLbefore(p, text);
  load_sHTMLalt(p, text);
  load_sHTMLafter(p, text);
  load_ProjectSettings(p, text);
  return LoadResult::Loaded;
}

void FinishLoad(Project& p, Env& env) {
  env.prompter.Busy(false);
  env.prompter.ProgressHide();
  p.bReady = true;
  env.view.SetTitles(p.sMainTitle, DesignTitle(p.sMainTitle));
}

}  // namespace

LoadResult LoadProject2(Project& p, Env& env, const std::string& path) {
  env.view.HideHTMLWindow();
  std::string text;
  // A device or a pipe would never end, a huge file would fill the memory:
  // both are refused before anything is read.
  IoStatus read = CheckReadable(env.fs, path);
  if (read) read = env.fs.ReadFile(path, text);
  bool imported = false;
  if (path.size() >= 4 && path.compare(path.size() - 4, 4, ".lpm") == 0 && read) {
    auto lines = SplitLines(text);
    std::string_view first = lines.empty() ? std::string_view() : lines[0];
    if (first.find("KestrelPane") == std::string_view::npos &&
        first.find("LinnetPlum") == std::string_view::npos)
      return LoadProject_OLD(p, env, path);
    imported = true;
  }

  p.bReady = false;
  p.AllocateButtons();
  SetDefaultMainParams(p, env);
  p.iDescentX = 0;
  p.iDescentY = 0;
  env.prompter.ProgressShow(SharedText("sLoadingProject"));
  env.prompter.Busy(true);
  env.view.ClearButtons();
  p.ButtonCount = 0;
  p.iCurBtn = 0;

  LoadError err;
  LoadResult result =
      read ? ReadProjectText(p, env, path, text, err) : (err.message = read.message, LoadResult::Failed);

  if (result == LoadResult::Refused) {
    p.ButtonCount = 0;
    p.iCurBtn = 0;
  } else if (result == LoadResult::Failed) {
    p.ButtonCount = static_cast<i16>(err.buttonNo >= 2 ? err.buttonNo - 1 : 0);
    if (p.iCurBtn > p.ButtonCount) p.iCurBtn = p.ButtonCount;
    env.prompter.Busy(false);
    env.prompter.ProgressHide();
    env.prompter.MsgBox(SharedText("sErrorLoading", {err.message}), Buttons::OK, "",
                        Icon::Critical);
  } else if (result == LoadResult::Loaded) {
    p.sProjectName = FileNameOf(path, true);
    if (p.iCurBtn > 0) env.view.SelectButton(p, p.iCurBtn);
    p.bProjectSaved = true;
    if (!imported) {
      p.sProjectFile = path;
      p.sMainTitle = ProjectTitle(p);
      WriteRecent(env, path);
    }
  }
  if (result != LoadResult::ProcessEnds) FinishLoad(p, env);
  return result;
}

}  // namespace kp
