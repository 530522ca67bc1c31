// The block of HTML that hosts the applet: begin comment, <applet> tag,
// cabbase, `p`, one parameter per button, the alternative HTML, the closing
// tag, the JavaScript caller when needed and the end comment. The block
// lives in the HTML window's code box, which is the one copy every later
// step (clipboard, build, replace, browser test) reads.
#pragma once

#include <string>
#include <string_view>

#include "core/env.h"
#include "core/model.h"

namespace kp {

class Prompter;

// The generator's program-wide flags.
struct GeneratorState {
  // The code box no longer reflects the project: regenerate on the next
  // activation of the HTML window.
  bool bHTMLStale = true;
  // MakeHTML is running; activation then does nothing more.
  bool bGenerating = false;
  // The project calls JavaScript: MAYSCRIPT, the caller block and onload.
  bool bUseJSCaller = false;
  // Write the archive attribute (and copy the jar when building).
  bool bAddJAR = true;
  // Zero-based button a scroll starts from; never saved.
  i16 iScFirstBtn = 0;
};

// The setting bAddJAR, read once at start: true when it is "1".
bool ReadAddJAR(Env& env);

// The code box txtHTML. Lines enter it through txtADD only, appended to one
// string so that a large project stays linear.
struct CodeBox {
  std::string text;
  // When set, pending window events run before each line, so that the
  // overlay paints during a long generation.
  Prompter* events = nullptr;

  void txtADD(std::string_view line);
  void Clear() { text.clear(); }
};

// The applet-paths window's four boxes, as MakeHTML refills them.
struct AppletPathsBoxes {
  std::string txtAppletName;
  std::string txtCodeBase;
  std::string txtImgPath;
  std::string txtSndPath;
};

// What the HTML window shows around a generation. Every call has a
// do-nothing default so headless callers need not care.
class HtmlWindowView {
 public:
  virtual ~HtmlWindowView() = default;
  // True: the "Please Wait..." overlay shows and the window's commands,
  // the code box and the auto-replace frame are disabled. False: all back.
  virtual void SetGenerating(bool /*busy*/) {}
  virtual void FillAppletPaths(const AppletPathsBoxes&) {}
  virtual void SetAutoReplaceFileName(const std::string&) {}
};

inline constexpr const char* kAppletBaseName = "KestrelPane";

// "HTML Code", and " - " with the project's file name when it has one.
std::string HTMLWindowCaption(const Project& p);

// Whether the project calls JavaScript: a button link starting
// "javascript:" (any case), or "7 " in a button's LEAVE, OVER or DOWN
// program, or else in one of the applet's four programs. UP, CHECK and
// UNCHECK programs are not looked at.
bool NeedsJSCaller(const Project& p);

// Zero-based index of the button a scroll in `direction` (0..3) starts from:
// 0 lowest bottom edge, 1 smallest y, 2 rightmost right edge, 3 smallest x.
// Ties go to the lower index. Returns -1 when no button qualifies, except
// direction 1, which gives 0.
int ScrollFirstButton(const Project& p, int direction);

// The begin and end comments of the block.
std::string BeginComment();
inline constexpr const char* kEndComment = "<!-- END GENERATED CODE -->";
// The <applet ...> line.
std::string AppletTagLine(const Project& p, bool bAddJAR, bool bUseJSCaller);
// The cabbase parameter line.
std::string CabbaseLine();

// Rewrites the code box from the project. Names an unnamed applet
// "KestrelPane" and unescapes the three folders in the model.
void MakeHTML(Project& p, Env& env, GeneratorState& st, CodeBox& txtHTML,
              HtmlWindowView* view = nullptr);

// The HTML window gained activation: recompute bUseJSCaller, then
// regenerate if the code is stale and no generation is running.
void HTMLWindowActivate(Project& p, Env& env, GeneratorState& st, CodeBox& txtHTML,
                        HtmlWindowView* view = nullptr);

// The main window, the design window and the applet-paths window mark the
// code stale whenever they are activated.
inline void MarkHTMLStale(GeneratorState& st) { st.bHTMLStale = true; }

}  // namespace kp
