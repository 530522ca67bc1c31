#include "core/help.h"

#include "core/conv.h"
#include "core/launcher.h"

namespace kp {

std::string HelpIndexPath(const Env& env, const LangSettings& lang) {
  std::string page = ReplaceAll(lang.sHelpIndex, "\\", "/");
  while (!page.empty() && page.front() == '/') page.erase(0, 1);
  return EndBackslash(env.programFolder) + page;
}

bool mnuHelpContents_Click(Env& env, const LangSettings& lang) {
  const std::string page = HelpIndexPath(env, lang);
  if (!env.fs.FileExists(page)) {
    env.prompter.MsgBox(page + " not found.");
    return false;
  }
  IoStatus s = env.launcher ? env.launcher->Open(page)
                            : IoStatus::Fail("No program can be started here.");
  if (s) return true;
  env.prompter.MsgBox(s.message);
  return false;
}

}  // namespace kp
