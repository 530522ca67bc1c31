#include "bench/fixture.h"

#include <string>

namespace kp::bench {

Project FullProject(int count, const std::string& mediaFolder) {
  Project p;
  SetDefaultMainParams(p);
  p.AppletWidth = 800;
  p.AppletHeight = 600;
  p.iFadeStyle = 2;
  p.iABorderStyle = 1;
  p.AppletName = "Bench";
  p.AppletProgramStart = "6 100;1 Button&!01;";
  for (int i = 1; i <= count; ++i) {
    tButton& b = p.button(i);
    const std::string n = std::to_string(i);
    b.sBName = "Button " + n;
    b.x = static_cast<i16>((i * 37) % 700);
    b.y = static_cast<i16>((i * 53) % 560);
    b.Width = 96;
    b.Height = 32;
    b.URL = "page" + n + ".html";
    b.Target = "_self";
    b.Status = "Go to page " + n;
    b.Tip = "Tip " + n;
    b.iBtnType = 5;
    b.ShowHand = true;
    b.ProgramOVER = "4 Button&!0" + n + " 2 Over;5 Button&!0" + n + " 1 FF8000;";
    b.ProgramDOWN = "7 0 alert('" + n + "');";
    b.ProgramUP = "3 Button&!0" + n + " 10 -999 20+ -999 5 100;";
    for (int s = 1; s <= 3; ++s) {
      b.Label[s] = "Label " + n + (s == 2 ? "\\nover" : "");
      b.Font[s] = s == 3 ? "times" : "arial";
      b.FontStyle[s] = 1;
      b.FontSize[s] = 10;
      b.FontColor[s] = 0xFFFFFF;
      b.BackColor[s] = 0x800000 + s * 0x100;
      b.FadeColor[s] = 0x00FFFF;
      b.FadeStyle[s] = static_cast<i16>(s);
      b.BorderStyle[s] = static_cast<i16>(s);
      b.BorderWidth[s] = 4;
      b.BorderShade[s] = 25;
      b.BorderColor[s] = b.BackColor[s];
      b.TFrameThick[s] = 9;
      b.TFrameColor[s] = 0x808080;
      b.FrameThick[s] = 1;
      b.FrameColor[s] = 0xFF;
      b.Image[s] = mediaFolder + "/pic" + std::to_string(s) + ".gif";
      b.Snd[s] = s == 2 ? mediaFolder + "/over.au" : "";
      b.LabelPosX[s] = 24;
      b.LabelPosY[s] = 25;
    }
  }
  p.ButtonCount = static_cast<i16>(count);
  return p;
}

}  // namespace kp::bench
