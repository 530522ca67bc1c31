#include "core/session.h"

#include "core/settings.h"

namespace kp {

void SetMainParams(Project& p, Env& env) {
  bool was = p.bFillingPanel;
  p.bFillingPanel = true;
  env.view.SetMainParams(p);
  p.bFillingPanel = was;
}

void SetDefaultMainParams(Project& p, Env& env) {
  SetDefaultMainParams(p);
  p.sSearchImagesFolder = GetParam(env, "sSearchImagesFolder");
  p.sSearchSoundsFolder = GetParam(env, "sSearchSoundsFolder");
  SetMainParams(p, env);
}

std::string ProjectTitle(const Project& p) { return p.sProjectFile + " - " + Lang().TitleText; }

std::string DesignTitle(const std::string& mainTitle) { return "Design Window - " + mainTitle; }

}  // namespace kp
