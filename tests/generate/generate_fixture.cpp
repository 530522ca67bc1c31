#include "tests/generate/generate_fixture.h"

namespace kp::test {

Project TwoButtonExample(TestEnv& t) {
  Project p;
  SetDefaultMainParams(p);
  p.ButtonCount = 2;
  for (int i = 1; i <= 2; ++i) {
    tButton& b = p.button(i);
    for (int s = 1; s <= 3; ++s) {
      b.BackColor[s] = RGB(192, 192, 192);
      b.Font[s] = "Arial";
      b.FontSize[s] = 10;
    }
    b.ShowHand = true;
    b.FontColor[1] = RGB(0, 0, 0);
    b.FontColor[2] = RGB(255, 0, 0);
    b.FontColor[3] = RGB(0, 0, 0);
  }
  tButton& b1 = p.button(1);
  b1.sBName = "Button 1";
  b1.x = 10, b1.y = 10, b1.Width = 100, b1.Height = 30;
  for (int s = 1; s <= 3; ++s) {
    b1.Label[s] = "Home";
    b1.BorderStyle[s] = 1;
    b1.BorderWidth[s] = 2;
    b1.BorderColor[s] = RGB(128, 128, 128);
  }
  b1.URL = "index.htm";
  b1.Target = "_self";
  b1.Status = "Back to the start";

  tButton& b2 = p.button(2);
  b2.sBName = "Latest news";
  b2.x = 120, b2.y = 10, b2.Width = 100, b2.Height = 30;
  for (int s = 1; s <= 3; ++s) b2.Label[s] = "News";
  b2.URL = "news.htm";
  b2.Target = "main";
  b2.Tip = "What's new";
  t.home.write("n.gif", "GIF89a");
  b2.Image[1] = t.home.file("n.gif");
  b2.ImgStyle[1] = 2;
  b2.Snd[2] = t.home.file("click.au");
  return p;
}

std::string TwoButtonExampleBlock() {
  return
      "<!-- BEGIN GENERATED CODE: Kestrel Pane: https://kestrelpane.example/ -->\r\n"
      "<applet name=\"KestrelPane\" code=\"KestrelPane.class\" codebase=\".\" "
      "archive=\"KestrelPane.jar\" width=420 height=180>\r\n"
      "<Param Name=\"cabbase\" value=\"KestrelPane.cab\">\r\n"
      "<Param Name=\"p\" value=\"FFFFFF|Loading...|FF|FFFFFF|13|1|0|2|0|0|||0|7|0||||0|0|1|1|0|1|"
      "0|0|FFFF00|0|FF|1|300|2500|0|13|0|||0|0|0|0|\">\r\n"
      "<Param Name=\"1\" value=\"10|^|100|30|1|0|FF0000|0|808080|C0C0C0|808080|C0C0C0|808080|"
      "C0C0C0|0|^z^69|^21|^22|^20|^213|^2Home|^2index.htm|Back to the start||^e\">\r\n"
      "<Param Name=\"2\" value=\"120|10|100|30|1|0|FF0000|0|^|C0C0C0|0|C0C0C0|0|C0C0C0|0|^z^62|9|"
      "^|0|^813|^2News|^2news.htm||main|n.gif||^2click.au||^6What's new|Latest&!0news|\">\r\n"
      "<BLINK><b>Java is disabled in your Browser!</b></BLINK>\r\n"
      "</applet>\r\n"
      "<!-- END GENERATED CODE -->\r\n";
}

Project PlainProject(int n) {
  Project p;
  SetDefaultMainParams(p);
  p.ButtonCount = static_cast<i16>(n);
  for (int i = 1; i <= n; ++i) {
    tButton& b = p.button(i);
    b.sBName = "Button " + std::to_string(i);
    b.x = static_cast<i16>(10 + 110 * (i - 1));
    b.y = 10;
    b.Width = 100;
    b.Height = 30;
  }
  return p;
}

std::string LineOf(const std::string& text, int k) {
  auto lines = Lines(text);
  return k >= 1 && k <= static_cast<int>(lines.size()) ? lines[static_cast<size_t>(k - 1)] : "";
}

std::vector<std::string> Lines(const std::string& text) {
  std::vector<std::string> out;
  size_t start = 0;
  while (start < text.size()) {
    size_t end = text.find("\r\n", start);
    if (end == std::string::npos) {
      out.push_back(text.substr(start));
      break;
    }
    out.push_back(text.substr(start, end - start));
    start = end + 2;
  }
  return out;
}

std::vector<std::string> ValueFields(const std::string& paramLine) {
  std::vector<std::string> fields;
  size_t start = paramLine.find("value=\"");
  size_t stop = paramLine.rfind("\">");
  if (start == std::string::npos || stop == std::string::npos) return fields;
  start += 7;
  for (size_t pos; start < stop && (pos = paramLine.find('|', start)) != std::string::npos &&
                   pos < stop;
       start = pos + 1)
    fields.push_back(paramLine.substr(start, pos - start));
  return fields;
}

}  // namespace kp::test
