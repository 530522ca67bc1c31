#include "publish/replace.h"

#include <algorithm>

#include "core/conv.h"
#include "core/folders.h"
#include "core/launcher.h"
#include "core/settings.h"
#include "publish/build.h"
#include "publish/player.h"
#include "publish/publish_texts.h"

namespace kp {

namespace {

constexpr std::string_view kOpenTag = "<applet";
constexpr std::string_view kCloseTag = "</applet>";

int CountTicked(const AutoReplacePage& page) {
  return static_cast<int>(std::count(page.ticked.begin(), page.ticked.end(), true));
}

char Lower(char ch) { return ch >= 'A' && ch <= 'Z' ? static_cast<char>(ch - 'A' + 'a') : ch; }

size_t FindNoCase(const std::string& text, std::string_view what, size_t from) {
  if (what.empty() || from > text.size()) return std::string::npos;
  for (size_t i = from; i + what.size() <= text.size(); ++i) {
    size_t k = 0;
    while (k < what.size() && Lower(text[i + k]) == Lower(what[k])) ++k;
    if (k == what.size()) return i;
  }
  return std::string::npos;
}

// Shows the failure's text; false, so that a step can end with it.
bool ShowFailure(Env& env, const IoStatus& s) {
  env.prompter.MsgBox(s.message, Buttons::OK, "", Icon::Critical);
  return false;
}

// A page whose write permissions were all taken away is not replaced.
IoStatus CheckPageWritable(Env& env, const std::string& path) {
  if (env.fs.Inspect(path).writeProtected)
    return IoStatus::Fail(TextWith(ReplaceListTexts(), "sWriteProtected", {path}));
  return {};
}

// Ticked applets that were left as they were: said in so many words, so a
// page that stayed unchanged is not taken for a replaced one.
void ReportNotReplaced(PublishContext& c, const AutoReplacePage& page) {
  const ReplaceOutcome& o = page.outcome;
  if (o.notReplaced.empty()) return;
  c.state.bReplaceIncomplete = true;
  std::string rows;
  for (int row : o.notReplaced) rows += (rows.empty() ? "" : ", ") + std::to_string(row);
  const TextTable& t = ReplaceReportTexts();
  const std::string& why = TextIn(t, o.unclosed ? "sUnclosedApplet" : "sPassedOver");
  const std::string text =
      TextWith(t, o.notReplaced.size() == 1 ? "sAppletNotReplaced" : "sAppletsNotReplaced",
               {rows, page.sourcePath, why});
  c.env.prompter.MsgBox(text, Buttons::OK, "", Icon::Exclamation);
}

}  // namespace

std::string CountWord(int count) {
  // The table has no word for eight, so 8 reads "Nine" and 9 "Ten": kept
  // as the program has always counted.
  if (count >= 0 && count < 10) return TextIn(ReplaceListTexts(), "sCount" + std::to_string(count));
  return std::to_string(count);
}

std::string CountMessage(int count, const std::string& path) {
  return CountWord(count) +
         TextIn(ReplaceListTexts(), count == 1 ? "sAppletFoundIn" : "sAppletsFoundIn") +
         FileNameOnly(path);
}

std::vector<std::string> FindApplets(const std::string& pageText) {
  std::vector<std::string> rows;
  size_t pos = 0;
  for (;;) {
    size_t a = pageText.find(kOpenTag, pos);
    if (a == std::string::npos) break;
    size_t g = pageText.find('>', a);
    if (g == std::string::npos) break;
    rows.push_back(pageText.substr(a, g - a + 1) + "...");
    pos = g;
  }
  return rows;
}

std::string NewAppletCode(const std::string& codeBox) {
  size_t a = FindNoCase(codeBox, kOpenTag, 0);
  if (a == std::string::npos) return "";
  for (size_t e = FindNoCase(codeBox, kCloseTag, a); e != std::string::npos;
       e = FindNoCase(codeBox, kCloseTag, e + 1)) {
    if (e == 0 || codeBox[e - 1] == '\n') return codeBox.substr(a, e + kCloseTag.size() - a);
  }
  return "";
}

namespace {

// The page text while applets are replaced: the part already rebuilt, then
// the rest of the original page from `rest_`. Each replacement appends to
// the rebuilt part instead of making the whole text anew, and positions are
// those of the whole text, as if it had been rebuilt.
class SplicedText {
 public:
  explicit SplicedText(const std::string& original) : orig_(original) {}

  size_t find(std::string_view what, size_t from) const {
    const size_t head = done_.size();
    if (from < head) {
      size_t p = done_.find(what, from);
      if (p != std::string::npos) return p;
      // A match that straddles the two parts.
      const size_t s = std::max(from, head >= what.size() ? head - what.size() + 1 : 0);
      std::string seam = done_.substr(s);
      seam.append(orig_, rest_, what.size() - 1);
      p = seam.find(what);
      if (p != std::string::npos) return s + p;
      from = head;
    }
    size_t p = orig_.find(what, rest_ + (from - head));
    return p == std::string::npos ? p : head + (p - rest_);
  }

  // The whole text becomes [0, a) + code + [b, end).
  void replace(size_t a, size_t b, const std::string& code) {
    if (a > done_.size()) {
      const size_t n = a - done_.size();
      done_.append(orig_, rest_, n);
      rest_ += n;
    }
    if (b <= done_.size()) {
      std::string after = done_.substr(b);
      done_.resize(a);
      done_ += code;
      done_ += after;
    } else {
      rest_ += b - done_.size();
      done_.resize(a);
      done_ += code;
    }
  }

  std::string str() && {
    done_.append(orig_, rest_, std::string::npos);
    return std::move(done_);
  }

 private:
  const std::string& orig_;
  std::string done_;
  size_t rest_ = 0;
};

}  // namespace

std::string ReplaceTickedApplets(const std::string& pageText, const std::vector<bool>& ticked,
                                 const std::string& newCode, ReplaceOutcome* outcome) {
  ReplaceOutcome local;
  ReplaceOutcome& out = outcome ? *outcome : local;
  out = {};
  std::vector<bool> done(ticked.size(), false);
  SplicedText text(pageText);
  size_t start = 0;
  size_t index = 0;
  for (;;) {
    size_t a = text.find(kOpenTag, start);
    if (a == std::string::npos) break;
    size_t e = text.find(kCloseTag, a);
    ++index;
    // Without a closing tag there is nothing to replace up to, and the
    // search ends.
    if (e == std::string::npos) {
      out.unclosed = true;
      break;
    }
    // The next search starts from this old end position, even after the
    // text before it changed length: an applet close behind a longer one
    // is then passed over.
    start = e;
    if (index > ticked.size() || !ticked[index - 1]) continue;
    if (newCode.empty()) continue;
    text.replace(a, e + kCloseTag.size(), newCode);
    done[index - 1] = true;
    ++out.replaced;
  }
  for (size_t k = 0; k < ticked.size(); ++k)
    if (ticked[k] && !done[k]) out.notReplaced.push_back(static_cast<int>(k) + 1);
  return std::move(text).str();
}

std::string BackupPathFor(Env& env, const std::string& pagePath) {
  // Cut at the last "."; a path without one has its whole text taken as the
  // extension.
  size_t dot = pagePath.rfind('.');
  std::string base = dot == std::string::npos ? "" : pagePath.substr(0, dot);
  std::string ext = dot == std::string::npos ? pagePath : pagePath.substr(dot);
  std::string candidate = base + "_backup" + ext;
  for (int n = 1; env.fs.FileExists(candidate); ++n)
    candidate = base + "_backup" + std::to_string(n) + ext;
  return candidate;
}

void txtAutoReplaceHTML_FileName_KeyUp(PublishContext& c, const std::string& text) {
  c.win.txtAutoReplaceHTML_FileName = text;
  c.p.sOutputHTML = text;
  c.p.bProjectSaved = false;
}

void btnGetAutoReplaceHTML_filename_Click(PublishContext& c) {
  Env& env = c.env;
  std::string folder = GetParam(env, "sLastReplacedFolder");
  if (folder.empty()) folder = EndBackslash(WriteFolder(env)) + "Projects";
  myChDir(env, folder);
  FileDialog fd;
  fd.filter = kHtmlFilter;
  fd.folder = folder;
  std::string chosen = env.prompter.OpenFileDialog(fd);
  if (chosen.empty()) return;
  SetParam(env, "sLastReplacedFolder", GetFolder(chosen));
  c.win.txtAutoReplaceHTML_FileName = chosen;
  c.p.sOutputHTML = chosen;
  c.p.bProjectSaved = false;
}

bool btnAutoReplaceHTML_Click(PublishContext& c) {
  Env& env = c.env;
  if (c.win.txtAutoReplaceHTML_FileName.empty()) btnGetAutoReplaceHTML_filename_Click(c);
  if (c.win.txtAutoReplaceHTML_FileName.empty()) return false;

  bool replaced = false;
  const std::string path = c.win.txtAutoReplaceHTML_FileName;
  if (env.fs.FileExists(path)) {
    AutoReplacePage page;
    replaced = BeginOperation(c, page, path);
  } else {
    env.prompter.MsgBox(TextWith(ReplaceListTexts(), "sPageNotFound", {path}));
    btnGetAutoReplaceHTML_filename_Click(c);
  }
  if (!c.win.txtAutoReplaceHTML_FileName.empty())
    CheckFileName(env, FileNameOnly(c.win.txtAutoReplaceHTML_FileName));
  return replaced;
}

bool DoDetect(PublishContext& c, AutoReplacePage& page, const std::string& path) {
  page.bLoaded = false;
  page.rows.clear();
  page.ticked.clear();
  if (IoStatus s = c.env.fs.ReadFile(path, page.pageText); !s) {
    ShowFailure(c.env, s);
    return false;
  }
  page.rows = FindApplets(page.pageText);
  page.ticked.assign(page.rows.size(), false);
  page.bLoaded = true;
  return true;
}

bool BeginOperation(PublishContext& c, AutoReplacePage& page, const std::string& path) {
  page.sourcePath = path;
  if (!DoDetect(c, page, path)) return false;
  if (!page.rows.empty()) page.ticked[0] = true;
  page.txtMSG = CountMessage(static_cast<int>(page.rows.size()), path);

  CheckList list;
  list.name = "frmAutoRepHTML_2";
  const TextTable& t = ReplaceListTexts();
  list.caption = TextIn(t, "Caption");
  list.message = page.txtMSG;
  list.rows = page.rows;
  list.selectAllCaption = TextIn(t, "btnSelectAll");
  list.clearAllCaption = TextIn(t, "btnDeselectAll");
  list.actionCaption = TextIn(t, "btnReplace");
  list.cancelCaption = TextIn(t, "btnCANCEL");
  // The window stays open until a replacement ran or it is cancelled: a
  // window that runs the action itself stays up through its messages.
  bool replaced = false;
  list.action = [&c, &page, &replaced](const std::vector<bool>& ticked) {
    page.ticked = ticked;
    page.ticked.resize(page.rows.size(), false);
    replaced = btnReplace_Click(c, page);
    return replaced;
  };
  for (;;) {
    list.ticked = page.ticked;
    if (!c.env.prompter.ShowCheckList(list)) return false;
    if (replaced) return true;
    page.ticked = list.ticked;
    page.ticked.resize(page.rows.size(), false);
    if (btnReplace_Click(c, page)) return true;
  }
}

bool btnReplace_Click(PublishContext& c, AutoReplacePage& page) {
  Env& env = c.env;
  env.prompter.Busy(true);
  c.state.bReplaceFailed = false;
  c.state.bReplaceIncomplete = false;
  const bool ran = RunReplacement(c, page);
  if (ran) {
    const bool stored = ReplaceFileStep(c, page);
    c.state.bReplaceFailed = !stored;
    if (stored) ReportNotReplaced(c, page);
    if (stored && GetParam(env, "DontShowAutoRepConfirm") == "0")
      Ready(c, static_cast<int>(page.rows.size()), page.outcome.replaced, page.sourcePath,
            page.backupPath);
  }
  env.prompter.Busy(false);
  return ran;
}

bool RunReplacement(PublishContext& c, AutoReplacePage& page) {
  Env& env = c.env;
  // Guards a second click: the text was already replaced once.
  if (!page.bLoaded) {
    env.prompter.MsgBox(TextIn(ReplaceReportTexts(), "sReloadInput"));
    return false;
  }
  if (page.rows.empty()) {
    env.prompter.MsgBox(TextIn(ReplaceReportTexts(), "sNoAppletsInFile"));
    return false;
  }
  if (CountTicked(page) == 0) {
    const TextTable& t = ReplaceReportTexts();
    env.prompter.MsgBox(TextIn(t, "sCheckOne"), Buttons::OK, TextIn(t, "sCheckOneTitle"));
    return false;
  }
  page.bLoaded = false;
  page.pageText =
      ReplaceTickedApplets(page.pageText, page.ticked, NewAppletCode(c.txtHTML.text), &page.outcome);
  if (PlayerWanted(c)) page.pageText = WithPlayerScript(page.pageText, c.p.CodeBase);

  const std::string folder = AppletTempFolder(env);
  MakeLongDir(env, folder);
  page.tempPath = folder + "/_AutoReplace_HTML.htm";
  (void)env.fs.RemoveFile(page.tempPath);
  if (IoStatus s = env.fs.WriteFileAtomic(page.tempPath, page.pageText); !s) {
    ShowFailure(env, s);
    return false;
  }
  return true;
}

bool ReplaceFileStep(PublishContext& c, AutoReplacePage& page) {
  Env& env = c.env;
  if (page.rows.empty()) {
    env.prompter.MsgBox(TextIn(ReplaceReportTexts(), "sCantFindApplets"));
    return false;
  }
  if (CountTicked(page) >= 1) {
    page.backupPath = BackupPathFor(env, page.sourcePath);
    // The page is intact until its backup exists.
    // A write-protected page is refused before its backup is made.
    if (IoStatus s = CheckPageWritable(env, page.sourcePath); !s) return ShowFailure(env, s);
    if (IoStatus s = env.fs.CopyFile(page.sourcePath, page.backupPath); !s)
      return ShowFailure(env, s);
    // The copy replaces the page in one step, so the page is never missing
    // or half written, and a page that is a link stays a link to its file.
    if (IoStatus s = env.fs.CopyFile(page.tempPath, page.sourcePath); !s)
      return ShowFailure(env, s);
    if (IoStatus s = env.fs.RemoveFile(page.tempPath); !s) return ShowFailure(env, s);
  }
  if (c.win.chkUpdateRequired) {
    CopyReport r = Copy_Req_File(c, page.sourcePath);
    if (r.failed > 0) {
      // Failures the copy loop kept silent are still failures of the step.
      if (r.failed > r.reported) {
        std::string text = TextIn(ReplaceReportTexts(), "sNotCopiedBesidePage");
        for (const std::string& f : r.failures) text += std::string(sCRLF) + f;
        env.prompter.MsgBox(text, Buttons::OK, "", Icon::Critical);
      }
      return false;
    }
  }
  return true;
}

void Ready(PublishContext& c, int total, int replaced, const std::string& path,
           const std::string& backup) {
  Env& env = c.env;
  if (replaced < 1) {
    env.prompter.MsgBox(TextWith(ReplaceReportTexts(), "sNoneReplaced", {path}));
    return;
  }
  const TextTable& t = ReplaceReportTexts();
  Dialog d;
  d.name = "frmAutoRepHTML_MSG";
  d.caption = TextIn(t, "Caption");
  d.text = TextWith(t, "sReplaced",
                    {path, std::to_string(total), std::to_string(replaced), backup});
  const std::string folder = GetFolder(path);
  d.buttons = {{TextIn(t, "btnOK"), nullptr}, {TextIn(t, "btnExplore"), [&env, folder] {
                                                 if (env.launcher) (void)env.launcher->Explore(folder);
                                               }}};
  d.checkCaption = TextIn(t, "chkShowNextTime");
  d.checked = true;
  d.cancelButton = 0;
  DialogResult r = env.prompter.ShowDialog(d);
  if (r.checked != d.checked) SetParam(env, "DontShowAutoRepConfirm", r.checked ? "0" : "1");
}

}  // namespace kp
