#include "project/new_project.h"

#include "core/messages.h"
#include "core/session.h"
#include "project/button_record.h"

namespace kp {

bool FreshStart(Project& p, Env& env) {
  p.sState = "UP";
  SetDefaultMainParams(p, env);
  const int i = AddNewButton(p, env);
  if (i < 0) return false;
  // Where the add command puts the first button of an empty applet.
  if (i > 0) {
    p.button(i).x = 10;
    p.button(i).y = 10;
  }
  env.view.LoadButton(p, p.iCurBtn);
  p.bProjectSaved = true;
  return true;
}

void NewProject(Project& p, Env& env) {
  SetDefaultMainParams(p, env);
  p.ButtonCount = 0;
  p.iCurBtn = 0;
  env.view.ClearButtons();
  p.sProjectFile.clear();
  p.sMainTitle = Lang().TitleText;
  env.view.SetTitles(p.sMainTitle, DesignTitle(p.sMainTitle));
  p.bProjectSaved = true;
}

std::string AskToSaveChanges(Project& p, Env& env, const std::function<void()>& save) {
  if (p.bProjectSaved) return "SAVED";
  Answer a = env.prompter.MsgBox(SharedText("sAskSave", {p.sProjectFile}), Buttons::YesNoCancel,
                                 SharedText("sAskSaveTitle"), Icon::Question);
  if (a == Answer::Yes) {
    save();
    return "YES";
  }
  return a == Answer::No ? "NO" : "CANCEL";
}

}  // namespace kp
