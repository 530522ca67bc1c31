#include "generate/surrounding.h"

#include <algorithm>

#include "core/conv.h"
#include "generate/js_caller.h"

namespace kp {
namespace {

void Store(Project& p, std::string& field, std::string value) {
  if (field == value) return;
  field = std::move(value);
  p.bProjectSaved = false;
}

}  // namespace

bool SurHTMLUseJSCaller(const Project& p, bool current) {
  const int last = std::max(static_cast<int>(p.Btn.size()) - 1, 0);
  const int count = std::clamp<int>(p.ButtonCount, 0, last);
  bool use = current;
  for (int i = 1; i <= count; ++i) {
    use = StartsWith(LCase(p.button(i).URL), "javascript:");
    if (use) break;
  }
  return use;
}

void SurHTML_Activate(Project& p, GeneratorState& st) {
  st.bUseJSCaller = SurHTMLUseJSCaller(p, st.bUseJSCaller);
  FixBodyTag(p, st.bUseJSCaller);
}

SurHTMLBoxes SurHTML_Load(Project& p, GeneratorState& st) {
  SurHTML_Activate(p, st);
  return {p.sHTMLbefore, p.sHTMLalt, p.sHTMLafter};
}

void SurHTML_Apply(Project& p, const SurHTMLBoxes& boxes) {
  p.sHTMLalt = boxes.txtHTMLalt;
  p.sHTMLbefore = boxes.txtHTMLbefore;
  p.sHTMLafter = boxes.txtHTMLafter;
  p.bProjectSaved = false;
}

std::string FilterCodeBase(std::string_view boxText) { return ReplaceAll(boxText, "\"", "_"); }

std::string FilterFolderBox(std::string_view boxText) { return CleanForList(boxText); }

std::string FilterAppletName(std::string_view boxText) { return CleanName(boxText, false); }

void txtAppletName_KeyUp(Project& p, const AppletPathsBoxes& boxes) {
  Store(p, p.AppletName, FilterAppletName(boxes.txtAppletName));
}

void txtCodeBase_KeyUp(Project& p, const AppletPathsBoxes& boxes) {
  Store(p, p.CodeBase, FilterCodeBase(boxes.txtCodeBase));
}

void txtImgPath_KeyUp(Project& p, const AppletPathsBoxes& boxes) {
  Store(p, p.ImgPath, FilterFolderBox(boxes.txtImgPath));
}

void txtSndPath_KeyUp(Project& p, const AppletPathsBoxes& boxes) {
  Store(p, p.SndPath, FilterFolderBox(boxes.txtSndPath));
}

void AppletPaths_RestoreDefaults(Project& p, AppletPathsBoxes& boxes) {
  p.AppletName = kAppletBaseName;
  p.CodeBase.clear();
  p.ImgPath.clear();
  p.SndPath.clear();
  boxes = {p.AppletName, p.CodeBase, p.ImgPath, p.SndPath};
  p.bProjectSaved = false;
}

}  // namespace kp
