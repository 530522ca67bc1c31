#include "core/model.h"

#include <unordered_set>

namespace kp {

LangTexts& Lang() {
  static LangTexts texts;
  return texts;
}

void Project::AllocateButtons() {
  Btn.clear();
  Btn.resize(kBtnUpperBound + 1);
}

int GetStateIndex(const std::string& sState) {
  if (sState == "UP") return 1;
  if (sState == "OVER") return 2;
  if (sState == "DOWN") return 3;
  return 0;
}

std::string DefaultHTMLbefore() {
  return std::string("<Html>") + sCRLF + "<Head><Title>Kestrel Pane</Title></Head>" + sCRLF +
         "<Body>" + sCRLF + "<Center>" + sCRLF + sCRLF;
}

std::string DefaultHTMLafter() {
  return std::string(sCRLF) + "</Center>" + sCRLF + "</Body>" + sCRLF + "</Html>";
}

std::string DefaultHTMLalt() { return "<BLINK><b>" + Lang().NoJava + "</b></BLINK>"; }

void SetDefaultMainParams(Project& p) {
  p.AppletWidth = 420;
  p.AppletHeight = 180;
  p.ButtonCount = 0;
  p.BackGround = RGB(255, 255, 255);
  p.DOWNBtn = 0;
  p.BackImg.clear();
  p.BackImgStyle = 0;
  p.iBgOffsetX = 0;
  p.iBgOffsetY = 0;
  p.iABorderStyle = 0;
  p.iABorderWidth = 10;
  p.iABorderShade = 20;
  p.cABorderColor = RGB(0, 0, 255);
  p.cFadeColor = 8388608;
  p.iFadeStyle = 0;
  p.iDescentX = 1;
  p.iDescentY = 1;
  p.AppletName.clear();
  p.CodeBase.clear();
  p.ImgPath.clear();
  p.SndPath.clear();
  p.bUnusualRepaint = 0;
  p.bPreLoad = true;
  p.bClip = true;
  p.bDoScroll = false;
  p.iScStep = 1;
  p.iScDelay = 0;
  p.iScDirection = 0;
  p.cTipBackColor = RGB(255, 255, 0);
  p.cTipTextColor = RGB(0, 0, 0);
  p.cTipBorderColor = RGB(0, 0, 255);
  p.iTipBorderWidth = 1;
  p.iTipDelay = 300;
  p.iTipHideAfter = 2500;
  p.iTipFont = 0;
  p.iTipFontSize = 10;
  p.iTipFontStyle = 0;
  p.sLoading = Lang().Loading;
  p.cLoadingFont = RGB(0, 0, 255);
  p.cLoadingBack = RGB(255, 255, 255);
  p.iLoadingFont_Size = 10;
  p.iLoadingFont_Style = 1;
  p.iLoadingFont_Name = 0;
  p.AppletProgramStart.clear();
  p.AppletProgramOVER.clear();
  p.AppletProgramDOWN.clear();
  p.AppletProgramOUT.clear();
  p.sHTMLbefore = DefaultHTMLbefore();
  p.sHTMLalt = DefaultHTMLalt();
  p.sHTMLafter = DefaultHTMLafter();
  p.sOutputHTML.clear();
  p.sProjectName = "MyProject";
  p.sOutputFolder.clear();
  p.sSearchLinkFolder.clear();
}

std::string Get_FREE_sBName(const Project& p, int self) {
  // One pass to collect the names in use, then the first free number:
  // linear instead of probing every button for every candidate.
  std::unordered_set<std::string> used;
  const std::string& word = Lang().ButtonWord;
  int count = p.ButtonCount;
  if (count > static_cast<int>(p.Btn.size()) - 1) count = static_cast<int>(p.Btn.size()) - 1;
  for (int i = 1; i <= count; ++i) {
    if (i == self) continue;
    const std::string& n = p.Btn[static_cast<size_t>(i)].sBName;
    if (n.size() > word.size() && n.compare(0, word.size(), word) == 0) used.insert(n);
  }
  for (int n = 1;; ++n) {
    std::string candidate = word + std::to_string(n);
    if (!used.count(candidate)) return candidate;
  }
}

}  // namespace kp
