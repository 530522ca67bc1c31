#include "publish/browser_test.h"

#include "core/conv.h"
#include "core/launcher.h"
#include "core/settings.h"
#include "generate/js_caller.h"
#include "project/project_file.h"
#include "publish/build.h"

namespace kp {

std::string GetTempPageName(const Project& p) {
  std::string name;
  if (p.sProjectFile.empty()) {
    name = p.sProjectName.empty() ? std::string("KestrelPane") : p.sProjectName;
  } else {
    name = FileNameOf(p.sProjectFile);
    name = name.size() > 4 ? name.substr(0, name.size() - 4) : std::string();
  }
  return CleanName(UnescapeField(name), true);
}

bool IsAppletViewer(const std::string& path) {
  return EndsWith(path, "appletViewer.exe", true) || EndsWith(path, "appletViewer", true);
}

std::string TestInBrowser(PublishContext& c) {
  Project& p = c.p;
  Env& env = c.env;

  ShowFoldersNotice(c, true);
  const std::string name = GetTempPageName(p);
  const std::string folder = AppletTempFolder(env);
  MakeLongDir(env, folder);

  if (GetParam(env, "bSaveBackup") == "1") {
    env.prompter.Busy(true);
    (void)SaveProject(p, env, folder + "/" + name + ".kpn", true, false);
    env.prompter.ProcessEvents();
    env.prompter.Busy(false);
  }

  FixBodyTag(p, c.st.bUseJSCaller);

  // The content-type line goes in on the first test only, and only into a
  // head written "<Head>", as the default page has it.
  const LangTexts& lang = Lang();
  if (fReadValue(env, kSecLanguage, lang.LanguageName, "YES") == "YES" &&
      p.sHTMLbefore.find(lang.MetaLine) == std::string::npos) {
    p.sHTMLbefore =
        ReplaceAll(p.sHTMLbefore, "<Head>", std::string("<head> ") + sCRLF + lang.MetaLine + sCRLF);
  }

  std::string page = folder + "/" + name + ".htm";
  if (!env.fs.WriteFileAtomic(page, BuildPageText(c))) page.clear();

  // The applet's files as a build would lay them out, below the test folder.
  const std::string base = EndBackslash(folder);
  const std::string classFolder = MakeRelative(base, p.CodeBase);
  if (!p.CodeBase.empty()) MakePathFolders(env, classFolder);
  Copy_Class_Files(c, classFolder);
  const std::string codeBase = base + p.CodeBase;
  const std::string imageFolder = MakeRelative(codeBase, p.ImgPath);
  if (!p.ImgPath.empty()) MakePathFolders(env, imageFolder);
  std::string soundFolder;
  if (!p.SndPath.empty()) {
    soundFolder = MakeRelative(codeBase, p.SndPath);
    MakePathFolders(env, soundFolder);
  }
  Copy_PixSnds_Files(c, imageFolder, soundFolder);

  // A browser that cannot be started fails in silence.
  if (env.launcher) {
    const BrowserList& b = c.win.browsers;
    const int k = b.listIndex;
    const std::string fullPage = folder + "/" + name + ".htm";
    if (k <= 0) {
      (void)env.launcher->Open(fullPage);
    } else if (static_cast<size_t>(k - 1) < b.List1.size()) {
      const std::string& program = b.List1[static_cast<size_t>(k - 1)];
      if (IsAppletViewer(program))
        (void)env.launcher->Run(program, {name + ".htm"}, true, base);
      else
        (void)env.launcher->Run(program, {fullPage}, true, base);
    }
  }
  return page;
}

}  // namespace kp
