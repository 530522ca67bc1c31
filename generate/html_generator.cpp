#include "generate/html_generator.h"

#include <algorithm>

#include "actions/program.h"
#include "core/conv.h"
#include "core/prompter.h"
#include "core/settings.h"
#include "generate/js_caller.h"
#include "generate/param_encoding.h"
#include "project/project_file.h"

namespace kp {
namespace {

// Buttons 1..ButtonCount that the array really holds.
int UsedButtons(const Project& p) {
  int last = static_cast<int>(p.Btn.size()) - 1;
  return std::clamp<int>(p.ButtonCount, 0, std::max(last, 0));
}

// Marks the window busy for the life of one generation.
struct BusyWindow {
  GeneratorState& st;
  HtmlWindowView* view;
  BusyWindow(GeneratorState& s, HtmlWindowView* v) : st(s), view(v) {
    st.bGenerating = true;
    if (view) view->SetGenerating(true);
  }
  ~BusyWindow() {
    if (view) view->SetGenerating(false);
    st.bGenerating = false;
  }
};

}  // namespace

bool ReadAddJAR(Env& env) { return GetParam(env, "bAddJAR") == "1"; }

void CodeBox::txtADD(std::string_view line) {
  if (events) events->ProcessEvents();
  text.append(line);
  text.append(sCRLF);
}

std::string HTMLWindowCaption(const Project& p) {
  std::string caption = "HTML Code";
  if (!p.sProjectFile.empty()) caption += " - " + FileNameOnly(p.sProjectFile);
  return caption;
}

bool NeedsJSCaller(const Project& p) {
  const int count = UsedButtons(p);
  for (int i = 1; i <= count; ++i) {
    const tButton& b = p.button(i);
    if (StartsWith(LCase(b.URL), "javascript:")) return true;
    if (HasJavaScriptCall(b.ProgramLEAVE) || HasJavaScriptCall(b.ProgramOVER) ||
        HasJavaScriptCall(b.ProgramDOWN))
      return true;
  }
  return HasJavaScriptCall(p.AppletProgramStart) || HasJavaScriptCall(p.AppletProgramOVER) ||
         HasJavaScriptCall(p.AppletProgramOUT) || HasJavaScriptCall(p.AppletProgramDOWN);
}

int ScrollFirstButton(const Project& p, int direction) {
  const int count = UsedButtons(p);
  int chosen = 0;  // one-based; 0 is none
  switch (direction) {
    case 0: {
      int best = 0;
      for (int i = 1; i <= count; ++i) {
        int edge = p.button(i).y + p.button(i).Height;
        if (edge > best) best = edge, chosen = i;
      }
      break;
    }
    case 1: {
      // This search starts as if button 1 were chosen, so an empty list
      // gives 0 rather than -1.
      chosen = 1;
      int best = 32000;
      for (int i = 1; i <= count; ++i) {
        if (p.button(i).y < best) best = p.button(i).y, chosen = i;
      }
      break;
    }
    case 2: {
      int best = 0;
      for (int i = 1; i <= count; ++i) {
        int edge = p.button(i).x + p.button(i).Width;
        if (edge > best) best = edge, chosen = i;
      }
      break;
    }
    case 3: {
      int best = 32000;
      for (int i = 1; i <= count; ++i) {
        if (p.button(i).x < best) best = p.button(i).x, chosen = i;
      }
      break;
    }
    default:
      return -1;
  }
  return chosen - 1;
}

std::string BeginComment() {
  return std::string("<!-- BEGIN GENERATED CODE: Kestrel Pane: ") + kHomePage + " -->";
}

std::string AppletTagLine(const Project& p, bool bAddJAR, bool bUseJSCaller) {
  std::string line = "<applet name=";
  line += sQuote;
  line += p.AppletName;
  line += sQuote;
  line += " code=";
  line += sQuote;
  line += kAppletBaseName;
  line += ".class";
  line += sQuote;
  line += " codebase=";
  line += sQuote;
  line += p.CodeBase.empty() ? std::string(".") : p.CodeBase;
  line += sQuote;
  if (bAddJAR) {
    line += " archive=";
    line += sQuote;
    line += kAppletBaseName;
    line += ".jar";
    line += sQuote;
  }
  line += " width=" + std::to_string(p.AppletWidth);
  line += " height=" + std::to_string(p.AppletHeight);
  if (bUseJSCaller) line += " MAYSCRIPT";
  line += ">";
  return line;
}

std::string CabbaseLine() {
  return std::string("<Param Name=") + sQuote + "cabbase" + sQuote + " value=" + sQuote +
         kAppletBaseName + ".cab" + sQuote + ">";
}

void MakeHTML(Project& p, Env& env, GeneratorState& st, CodeBox& txtHTML, HtmlWindowView* view) {
  st.bHTMLStale = false;
  BusyWindow busy(st, view);

  if (p.AppletName.empty()) p.AppletName = kAppletBaseName;
  p.CodeBase = UnescapeField(p.CodeBase);
  p.ImgPath = UnescapeField(p.ImgPath);
  p.SndPath = UnescapeField(p.SndPath);
  if (view) {
    view->FillAppletPaths({p.AppletName, p.CodeBase, p.ImgPath, p.SndPath});
    view->SetAutoReplaceFileName(p.sOutputHTML);
  }

  if (p.iScDirection >= 0 && p.iScDirection <= 3)
    st.iScFirstBtn = static_cast<i16>(ScrollFirstButton(p, p.iScDirection));

  txtHTML.events = &env.prompter;
  txtHTML.Clear();
  const int count = UsedButtons(p);
  // A button line is about 160 characters once packed.
  txtHTML.text.reserve(1024 + static_cast<size_t>(count) * 256 + p.sHTMLalt.size());

  FileProbe probe(env.fs);
  txtHTML.txtADD(BeginComment());
  txtHTML.txtADD(AppletTagLine(p, st.bAddJAR, st.bUseJSCaller));
  txtHTML.txtADD(CabbaseLine());
  txtHTML.txtADD(AppletParamLine(p, st.iScFirstBtn, probe));

  ParamBuilder builder;
  std::string repeats, packed;
  for (int i = 1; i <= count; ++i) {
    BuildButtonLine(builder, p, i, probe);
    repeats.clear();
    PackRepeatsInto(builder.sParamLine, repeats);
    packed.clear();
    PackBlanksInto(repeats, packed);
    txtHTML.txtADD(packed);
  }

  if (!p.sHTMLalt.empty()) txtHTML.txtADD(p.sHTMLalt);
  txtHTML.txtADD("</applet>");
  if (st.bUseJSCaller) txtHTML.txtADD(GetJSCaller(env, p.AppletName));
  txtHTML.txtADD(kEndComment);
}

void HTMLWindowActivate(Project& p, Env& env, GeneratorState& st, CodeBox& txtHTML,
                        HtmlWindowView* view) {
  st.bUseJSCaller = NeedsJSCaller(p);
  if (st.bHTMLStale && !st.bGenerating) MakeHTML(p, env, st, txtHTML, view);
}

}  // namespace kp
