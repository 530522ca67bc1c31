// The two small editors of the HTML window, without their windows: the page
// text around the applet (before, alternative, after) and the applet's name
// and folders. Both write straight into the project.
#pragma once

#include <string>
#include <string_view>

#include "core/model.h"
#include "generate/html_generator.h"

namespace kp {

// --- Surrounding HTML -----------------------------------------------------------

struct SurHTMLBoxes {
  std::string txtHTMLbefore;
  std::string txtHTMLalt;
  std::string txtHTMLafter;
};

// The editor's own test for JavaScript: button links only, action programs
// are not looked at. The first "javascript:" link (any case) gives true, a
// project whose buttons have none gives false, and with no buttons the
// current value stays. The HTML window's next activation recomputes the
// full test, and each build fixes the body tag again.
bool SurHTMLUseJSCaller(const Project& p, bool current);

// Activation: the flag above into st.bUseJSCaller, then FixBodyTag.
void SurHTML_Activate(Project& p, GeneratorState& st);
// Load: as activation, then the boxes filled from the project.
SurHTMLBoxes SurHTML_Load(Project& p, GeneratorState& st);
// Apply and OK: the three boxes into the project, which is now changed.
// Cancel stores nothing (the body tag fixed on activation stays fixed).
void SurHTML_Apply(Project& p, const SurHTMLBoxes& boxes);

// --- Applet name and folders ---------------------------------------------------------

// What each box stores in the project; the box itself keeps what was typed.
// The code base loses its double quotes, the folders their double quotes,
// bars and back slashes, and the name everything that is no identifier.
std::string FilterCodeBase(std::string_view boxText);
std::string FilterFolderBox(std::string_view boxText);
std::string FilterAppletName(std::string_view boxText);

// A key released in one of the boxes: the filtered text of that box goes
// into the project, which is changed when the value differs.
void txtAppletName_KeyUp(Project& p, const AppletPathsBoxes& boxes);
void txtCodeBase_KeyUp(Project& p, const AppletPathsBoxes& boxes);
void txtImgPath_KeyUp(Project& p, const AppletPathsBoxes& boxes);
void txtSndPath_KeyUp(Project& p, const AppletPathsBoxes& boxes);

// "KestrelPane" and three empty folders, in the project and the boxes; the
// project is changed.
void AppletPaths_RestoreDefaults(Project& p, AppletPathsBoxes& boxes);

// The window's activation makes the code stale, so going back to the HTML
// window regenerates.
inline void AppletPaths_Activate(GeneratorState& st) { MarkHTMLStale(st); }

}  // namespace kp
