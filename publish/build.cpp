#include "publish/build.h"

#include <vector>

#include "core/conv.h"
#include "core/folders.h"
#include "core/launcher.h"
#include "core/settings.h"
#include "generate/js_caller.h"
#include "publish/player.h"
#include "publish/publish_texts.h"

namespace kp {

namespace {

const char* const kClassFiles[] = {"KestrelPane.class", "KestrelPane.cab", "KestrelPane.jar"};

std::string TwoLineEnds() { return std::string(sCRLF) + sCRLF; }

// One failed copy: the message unless silenced, error 70 never.
void OnCopyError(PublishContext& c, CopyPhase phase, const std::string& file, int button,
                 const std::string& to, const IoStatus& status, CopyReport& report) {
  if (status.sameFile) {
    ++report.skipped;
    return;
  }
  ++report.failed;
  report.failures.push_back(file + ": " + status.message);
  const int number = CopyErrorNumber(c.env, file, to, status);
  // 70 is what a file copied onto itself gives: it is already where it
  // should be.
  if (c.state.bStopCopyMessages || number == 70) return;
  const TextTable& t = ReadyForUploadTexts();
  const std::string text = CopyErrorMessage(phase, file, button) + TwoLineEnds() + status.message +
                           TextIn(t, "sErrorNumber") + std::to_string(number) + TwoLineEnds() +
                           TextIn(t, "sStopMessages");
  ++report.reported;
  if (c.env.prompter.MsgBox(text, Buttons::OKCancel, "", Icon::Critical) == Answer::Cancel)
    c.state.bStopCopyMessages = true;
}

// Copies `file` into `folder` (which ends with a separator) unless it is
// already there by name.
void CopyInto(PublishContext& c, CopyPhase phase, const std::string& file, int button,
              const std::string& folder, CopyReport& report) {
  const std::string to = folder + FileNameOnly(file);
  if (to == file) {
    ++report.skipped;
    return;
  }
  IoStatus s = c.env.fs.CopyFile(file, to);
  if (s) {
    ++report.copied;
    return;
  }
  OnCopyError(c, phase, file, button, to, s, report);
}

int UsedButtons(const Project& p) {
  int last = static_cast<int>(p.Btn.size()) - 1;
  int n = p.ButtonCount;
  if (n > last) n = last;
  return n < 0 ? 0 : n;
}

}  // namespace

void CopyReport::Add(const CopyReport& o) {
  copied += o.copied;
  skipped += o.skipped;
  failed += o.failed;
  reported += o.reported;
  failures.insert(failures.end(), o.failures.begin(), o.failures.end());
}

std::string PageText(const Project& p, const CodeBox& txtHTML) {
  std::string page;
  page.reserve(p.sHTMLbefore.size() + txtHTML.text.size() + p.sHTMLafter.size() + 2);
  page += p.sHTMLbefore;
  page += txtHTML.text;
  page += p.sHTMLafter;
  page += sCRLF;
  return page;
}

std::string BuildPageText(PublishContext& c) {
  std::string page = PageText(c.p, c.txtHTML);
  return PlayerWanted(c) ? WithPlayerScript(page, c.p.CodeBase) : page;
}

bool FolderHoldsFiles(Env& env, const std::string& folder) {
  if (folder.empty()) return false;
  return !env.fs.ListFiles(folder).empty();
}

bool SomeFilesWarning(PublishContext& c) {
  const TextTable& t = SomeFilesWarningTexts();
  Dialog d;
  d.name = "frmSomeFilesWarning";
  d.caption = TextIn(t, "Caption") + Lang().TitleText;
  d.text = TextIn(t, "txtMessage.1") + sCRLF + TextIn(t, "txtMessage.2") + sCRLF +
           TextIn(t, "txtMessage.3");
  d.buttons = {{TextIn(t, "btnYes"), nullptr}, {TextIn(t, "btnNo"), nullptr}};
  d.checkCaption = TextIn(t, "chkShowNextTime");
  d.checked = true;
  d.beep = true;
  d.cancelButton = 1;
  DialogResult r = c.env.prompter.ShowDialog(d);
  if (r.checked != d.checked) SetParam(c.env, "DontShowSomeFilesWarning", r.checked ? "0" : "1");
  c.state.bSomeFilesProceed = r.button == 0;
  return c.state.bSomeFilesProceed;
}

void ReadyForUpload(PublishContext& c, const std::string& folder) {
  const TextTable& t = ReadyForUploadTexts();
  Dialog d;
  d.name = "frmReadyForUpload";
  d.caption = TextIn(t, "Caption") + Lang().TitleText;
  d.text = TextIn(t, "lblMessage") + TwoLineEnds() + TextIn(t, "lblCaseSensitive");
  Env& env = c.env;
  d.buttons = {{TextIn(t, "btnExplore"),
                [&env, folder] {
                  if (env.launcher) (void)env.launcher->Explore(folder);
                }},
               {TextIn(t, "btnOK"), nullptr}};
  d.checkCaption = TextIn(t, "chkShowNextTime");
  d.checked = true;
  d.cancelButton = 1;
  DialogResult r = env.prompter.ShowDialog(d);
  if (r.checked != d.checked) SetParam(env, "DontShowReadyForUpload", r.checked ? "0" : "1");
}

BuildReport BuildApplet(PublishContext& c, bool bWithFiles) {
  Project& p = c.p;
  Env& env = c.env;
  BuildReport report;

  // The start folder is only proposed: a cancelled dialog leaves the
  // project's output folder as it was, and the disk too. The folder is
  // made once a page in it is chosen.
  std::string startFolder = p.sOutputFolder.empty()
                                ? EndBackslash(WriteFolder(env)) + "Projects/" + p.sProjectName
                                : p.sOutputFolder;

  FileDialog fd;
  fd.filter = kHtmlFilter;
  fd.folder = startFolder;
  fd.folderMadeOnAccept = true;
  fd.fileName = p.sProjectName + ".html";
  fd.defaultExt = "html";
  fd.overwritePrompt = true;
  fd.pathMustExist = true;
  fd.hideReadOnly = true;

  std::string page;
  for (;;) {
    page = env.prompter.SaveFileDialog(fd);
    if (page.empty()) return report;
    PrepareDir(env, GetFolder(page));
    if (!bWithFiles || GetParam(env, "DontShowSomeFilesWarning") != "0" ||
        !FolderHoldsFiles(env, GetFolder(page)))
      break;
    if (SomeFilesWarning(c)) break;
    fd.folder = GetFolder(page);  // the dialog comes back where it was
  }

  p.sOutputFolder = GetFolder(page);
  p.sOutputHTML = page;
  report.page = page;

  // The page's own name only: its folders are the local disk's business.
  CheckFileName(env, FileNameOnly(page));
  FixBodyTag(p, c.st.bUseJSCaller);

  if (IoStatus s = env.fs.WriteFileAtomic(page, BuildPageText(c)); !s) {
    env.prompter.MsgBox(s.message, Buttons::OK, "", Icon::Critical);
    report.result = BuildResult::WriteFailed;
    return report;
  }
  report.result = BuildResult::Built;

  if (bWithFiles) report.media = Copy_Req_File(c, page);
  if (GetParam(env, "DontShowReadyForUpload") == "0") ReadyForUpload(c, GetFolder(page));
  return report;
}

void MakePathFolders(Env& env, const std::string& path) {
  if (path.empty()) return;
  std::string folder = ReplaceAll(path, "\\", "/");
  // A code base on a server: its folders are the user's business. Joined to
  // the page's folder the address is no longer at the front, so it is
  // looked for anywhere.
  if (folder.find("://") != std::string::npos) return;
  MakeLongDir(env, EndBackslash(folder));
}

CopyReport Copy_Class_Files(PublishContext& c, const std::string& folder) {
  CopyReport r;
  const std::string programFolder = EndBackslash(c.env.programFolder);
  if (programFolder == folder) return r;
  std::vector<std::string> names;
  for (const char* name : kClassFiles) {
    if (std::string(name) == "KestrelPane.jar" && !c.st.bAddJAR) continue;
    names.push_back(name);
  }
  if (PlayerWanted(c)) names.push_back(kPlayerFile);
  for (const std::string& name : names) {
    const std::string from = programFolder + name;
    const std::string to = folder + name;
    if (from == to) continue;
    if (!c.env.fs.FileExists(from)) continue;
    IoStatus s = c.env.fs.CopyFile(from, to);
    if (s) {
      ++r.copied;
    } else if (s.sameFile) {
      ++r.skipped;
    } else {
      ++r.failed;
      r.failures.push_back(from + ": " + s.message);
    }
  }
  return r;
}

CopyReport Copy_Req_File(PublishContext& c, const std::string& pagePath) {
  const Project& p = c.p;
  const std::string base = GetFolder(pagePath);

  const std::string classFolder = MakeRelative(base, p.CodeBase);
  if (!p.CodeBase.empty()) MakePathFolders(c.env, classFolder);
  CopyReport classes = Copy_Class_Files(c, classFolder);

  // Pictures and sounds live below the code base, where the applet looks.
  const std::string codeBase = base + p.CodeBase;
  const std::string imageFolder = MakeRelative(codeBase, p.ImgPath);
  if (!p.ImgPath.empty()) MakePathFolders(c.env, imageFolder);
  std::string soundFolder;
  if (!p.SndPath.empty()) {
    soundFolder = MakeRelative(codeBase, p.SndPath);
    MakePathFolders(c.env, soundFolder);
  }
  CopyReport r = Copy_PixSnds_Files(c, imageFolder, soundFolder);
  r.Add(classes);
  ShowFoldersNotice(c, false);
  return r;
}

CopyReport Copy_PixSnds_Files(PublishContext& c, const std::string& imageFolder,
                              const std::string& soundFolder) {
  const Project& p = c.p;
  CopyReport r;
  const std::string images = EndBackslash(imageFolder);

  if (!p.BackImg.empty()) CopyInto(c, CopyPhase::Background, p.BackImg, 0, images, r);

  const int count = UsedButtons(p);
  if (count == 0) return r;

  for (int i = 1; i <= count; ++i)
    for (int s = 1; s <= 3; ++s) {
      const std::string& file = p.button(i).Image[s];
      if (!file.empty()) CopyInto(c, CopyPhase::Pictures, file, i, images, r);
    }

  const std::string sounds = soundFolder.empty() ? images : EndBackslash(soundFolder);
  for (int i = 1; i <= count; ++i)
    for (int s = 1; s <= 3; ++s) {
      const std::string& file = p.button(i).Snd[s];
      if (file.empty() || sounds + FileNameOnly(file) == file) {
        if (!file.empty()) ++r.skipped;
        continue;
      }
      WaitForAuFile(c, file);
      CopyInto(c, CopyPhase::Sounds, file, i, sounds, r);
    }
  return r;
}

void WaitForAuFile(PublishContext& c, const std::string& path) {
  if (!EndsWith(path, ".au", true) || c.env.fs.FileExists(path)) return;
  if (c.view) c.view->ShowOverlay(TextIn(ReadyForUploadTexts(), "sCheckingAu"));
  for (int seconds : {1, 2, 3}) {
    if (c.env.fs.FileExists(path)) break;
    WaitWithEvents(c, std::chrono::seconds(seconds));
  }
  if (c.view) {
    c.view->ShowOverlay("");
    c.view->HideOverlay();
  }
}

std::string CopyErrorMessage(CopyPhase phase, const std::string& file, int button) {
  const TextTable& t = ReadyForUploadTexts();
  const std::vector<std::string> number{std::to_string(button)};
  std::string head;
  switch (phase) {
    case CopyPhase::Background:
      head = TextIn(t, "sCopyBackground");
      break;
    case CopyPhase::Pictures:
      head = TextWith(t, "sCopyPicture", number);
      break;
    case CopyPhase::Sounds:
      head = TextWith(t, "sCopySound", number);
      break;
    case CopyPhase::None:
      break;
  }
  if (file.empty() || phase == CopyPhase::None) {
    const char* word = phase == CopyPhase::Background ? "BACKGROUND"
                       : phase == CopyPhase::Pictures ? "PICTURES"
                       : phase == CopyPhase::Sounds   ? "SOUNDS"
                                                      : "";
    return TextIn(t, "sUnexpectedError") + TwoLineEnds() + file +
           TwoLineEnds() + word;
  }
  return head + TwoLineEnds() + file;
}

int CopyErrorNumber(Env& env, const std::string& from, const std::string& to,
                    const IoStatus& status) {
  if (status.permissionLike) return 70;
  if (!env.fs.FileExists(from)) return 53;
  if (!env.fs.DirExists(GetFolder(to))) return 76;
  return 75;
}

void ShowFoldersNotice(PublishContext& c, bool bForTest) {
  if (bForTest) return;
  const Project& p = c.p;
  if (p.CodeBase.empty() && p.ImgPath.empty() && p.SndPath.empty()) return;
  const TextTable& t = ReadyForUploadTexts();
  MyMsgBox(c.env, TextIn(t, "sNoticeTitle"), TextIn(t, "sFoldersNotice"),
           TextIn(t, "sShowNoticeNextTime"), "ShowDifferentDirsWarning", "1", "0", "1");
}

}  // namespace kp
