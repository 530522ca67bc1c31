#include "generate/param_encoding.h"

#include <charconv>

#include "core/conv.h"

namespace kp {
namespace {

// The digits of the repeat counts.
constexpr std::string_view kDigits = "0123456789abcdefghijklmnopqrstuvwxyz";

// Plain decimal into a stack buffer: the generator writes tens of thousands
// of numbers and must not allocate for each.
struct Decimal {
  char buf[24];
  std::string_view text;
  explicit Decimal(long long v) {
    auto r = std::to_chars(buf, buf + sizeof buf, v);
    text = std::string_view(buf, static_cast<size_t>(r.ptr - buf));
  }
};

// The escaped text form. Most texts hold none of the three escaped
// characters; those are copied without the replacement passes.
std::string Escaped(std::string_view text) {
  if (text.find_first_of("\"|^") == std::string_view::npos) return std::string(text);
  return EscapeField(text, false);
}

// The file-name form: the name without its folder, escaped.
std::string FileNameField(std::string_view path) { return Escaped(FileNameOnly(path)); }

// The folder text of field 36 and 37: a "/" at the end unless empty or
// already there.
std::string FolderField(const std::string& path) {
  if (path.empty() || path.back() == '/') return path;
  return path + "/";
}

}  // namespace

bool FileProbe::Exists(const std::string& path) {
  if (path.empty()) return false;
  auto it = known_.find(path);
  if (it != known_.end()) return it->second;
  bool found = fs_.FileExists(path) || fs_.DirExists(path);
  known_.emplace(path, found);
  return found;
}

// --- Builder ------------------------------------------------------------------

void ParamBuilder::AddHeaderField(std::string_view value) {
  sParamLine.append(value);
  sParamLine.push_back('|');
}

void ParamBuilder::AddHeaderField(long long value) { AddHeaderField(Decimal(value).text); }

void ParamBuilder::AddButtonField(std::string_view value) {
  bool repeat = !value.empty() && value == sLastField;
  if (repeat) {
    sParamLine.push_back('^');
  } else {
    sParamLine.append(value);
  }
  sParamLine.push_back('|');
  sLastField.assign(value);
}

void ParamBuilder::AddButtonField(long long value) { AddButtonField(Decimal(value).text); }

void ParamBuilder::Begin(std::string_view name) {
  sParamLine.assign("<Param Name=");
  sParamLine.append(sQuote);
  sParamLine.append(name);
  sParamLine.append(sQuote);
  sParamLine.append(" value=");
  sParamLine.append(sQuote);
  sLastField.clear();
}

void ParamBuilder::End() {
  sParamLine.append(sQuote);
  sParamLine.push_back('>');
}

// --- Field helpers ------------------------------------------------------------

std::string ColorText(Colour colour) {
  char hex[8];
  auto r = std::to_chars(hex, hex + sizeof hex, static_cast<std::uint32_t>(colour), 16);
  const std::string_view digits(hex, static_cast<size_t>(r.ptr - hex));
  const size_t len = digits.size();

  char rgb[6] = {'0', '0', '0', '0', '0', '0'};
  if (len > 1) {
    // Pairs cut from the right: red, green, blue; a lone leftover digit is
    // the low digit of its pair.
    for (int part = 0; part < 3; ++part) {
      for (int d = 0; d < 2; ++d) {
        size_t fromRight = static_cast<size_t>(part * 2 + d);  // 0 = last digit
        if (fromRight >= len) continue;
        char c = digits[len - 1 - fromRight];
        if (c >= 'a' && c <= 'f') c = static_cast<char>(c - 'a' + 'A');
        rgb[part * 2 + (1 - d)] = c;
      }
    }
  }
  // Up to five leading zeros go; the sixth character always stays.
  size_t skip = 0;
  while (skip < 5 && rgb[skip] == '0') ++skip;
  return std::string(rgb + skip, 6 - skip);
}

i16 PixelSize(i16 points) { return CurToInt(static_cast<std::int64_t>(points) * 13300); }

int FontIndex(std::string_view name) {
  std::string lower = LCase(name);
  if (lower == "arial") return 0;
  if (lower == "courier") return 1;
  if (lower == "times") return 2;
  if (lower == "dialog") return 3;
  return 0;
}

int ImageStyleField(const tButton& b, int state, FileProbe& probe) {
  return probe.Exists(b.Image[state]) ? b.ImgStyle[state] : 9;
}

std::string TargetField(const tButton& b) {
  if (b.URL.empty() || b.Target == "_self") return "";
  return Escaped(b.Target);
}

std::string NameField(const tButton& b, int index) {
  const std::string& word = Lang().ButtonWord;
  Decimal n(index);
  if (b.sBName.size() == word.size() + n.text.size() &&
      b.sBName.compare(0, word.size(), word) == 0 &&
      std::string_view(b.sBName).substr(word.size()) == n.text)
    return "";
  return EscapeNameField(b.sBName);
}

int AppletFlags(const Project& p) {
  int flags = 2;  // always set
  if (p.bUnusualRepaint != 0) flags += 16;
  if (p.bDoScroll) flags += 8;
  if (p.bPreLoad) flags += 4;
  if (p.bClip) flags += 1;
  return flags;
}

std::int32_t ButtonFlags(const tButton& b) {
  std::int32_t f = 0;
  if (b.SoundLoop[3]) f += 131072;
  if (b.SoundLoop[2]) f += 65536;
  if (b.SoundLoop[1]) f += 32768;
  if (b.SoundStop[3]) f += 16384;
  if (b.SoundStop[2]) f += 8192;
  if (b.SoundStop[1]) f += 4096;
  if (b.TFrameLeftToRight[3]) f += 2048;
  if (b.TFrameLeftToRight[2]) f += 1024;
  if (b.TFrameLeftToRight[1]) f += 512;
  if (b.TFrameLight[3]) f += 256;
  if (b.TFrameLight[2]) f += 128;
  if (b.TFrameLight[1]) f += 64;
  if (b.Hidden != 0) f += 32;
  if (b.noBackGround[3]) f += 16;
  if (b.noBackGround[2]) f += 8;
  if (b.noBackGround[1]) f += 4;
  if (b.Radio) f += 2;
  if (b.ShowHand) f += 1;
  return f;
}

// --- Packing ------------------------------------------------------------------
//
// Both passes are defined as whole-text replacements, longest run first.
// The patterns never overlap and no replacement creates a new match of the
// same or a shorter pattern, so a maximal run of k units ends up as
// floor(k / longest) longest chunks followed by one chunk for the rest;
// scanning the runs once gives the same text in linear time.

void PackRepeatsInto(std::string_view s, std::string& out) {
  const size_t n = s.size();
  size_t i = 0;
  while (i < n) {
    if (s[i] != '^' || i + 1 >= n || s[i + 1] != '|') {
      size_t next = s.find('^', i + 1);
      if (next == std::string_view::npos) next = n;
      out.append(s.substr(i, next - i));
      i = next;
      continue;
    }
    size_t pairs = 0;
    while (i + 1 < n && s[i] == '^' && s[i + 1] == '|') {
      ++pairs;
      i += 2;
    }
    for (; pairs >= 35; pairs -= 35) out.append("^z");
    if (pairs >= 2) {
      out.push_back('^');
      out.push_back(kDigits[pairs]);
    } else if (pairs == 1) {
      out.append("^|");
    }
  }
}

void PackBlanksInto(std::string_view s, std::string& out) {
  const size_t n = s.size();
  size_t i = 0;
  while (i < n) {
    if (s[i] != '|') {
      size_t next = s.find('|', i);
      if (next == std::string_view::npos) next = n;
      out.append(s.substr(i, next - i));
      i = next;
      continue;
    }
    size_t bars = 0;
    while (i < n && s[i] == '|') {
      ++bars;
      ++i;
    }
    for (; bars >= 36; bars -= 36) out.append("||^y");
    if (bars >= 4) {
      out.append("||^");
      out.push_back(kDigits[bars - 2]);
    } else {
      out.append(bars, '|');
    }
  }
}

std::string PackRepeats(std::string_view line) {
  std::string out;
  out.reserve(line.size());
  PackRepeatsInto(line, out);
  return out;
}

std::string PackBlanks(std::string_view line) {
  std::string out;
  out.reserve(line.size());
  PackBlanksInto(line, out);
  return out;
}

// --- The two kinds of parameter ---------------------------------------------------

std::string AppletParamLine(const Project& p, i16 iScFirstBtn, FileProbe& probe) {
  ParamBuilder b;
  b.Begin("p");
  b.AddHeaderField(ColorText(p.BackGround));                                 // 1
  b.AddHeaderField(p.sLoading);                                              // 2
  b.AddHeaderField(ColorText(p.cLoadingFont));                               // 3
  b.AddHeaderField(ColorText(p.cLoadingBack));                               // 4
  b.AddHeaderField(PixelSize(p.iLoadingFont_Size));                          // 5
  b.AddHeaderField(p.iLoadingFont_Style);                                    // 6
  b.AddHeaderField(p.iLoadingFont_Name);                                     // 7
  b.AddHeaderField(p.ButtonCount);                                           // 8
  b.AddHeaderField(p.iFadeStyle);                                            // 9
  b.AddHeaderField(p.iFadeStyle != 0 ? ColorText(p.cFadeColor) : "0");       // 10
  b.AddHeaderField(p.AppletProgramStart);                                    // 11
  b.AddHeaderField(FileNameField(p.BackImg));                                   // 12
  b.AddHeaderField(probe.Exists(p.BackImg) ? p.BackImgStyle : 0);            // 13
  b.AddHeaderField(AppletFlags(p));                                          // 14
  b.AddHeaderField(p.DOWNBtn);                                               // 15
  b.AddHeaderField(p.AppletProgramOVER);                                     // 16
  b.AddHeaderField(p.AppletProgramDOWN);                                     // 17
  b.AddHeaderField(p.AppletProgramOUT);                                      // 18
  b.AddHeaderField(p.BackImgStyle != 2 ? p.iBgOffsetX : 0);                  // 19
  b.AddHeaderField(p.BackImgStyle != 2 ? p.iBgOffsetY : 0);                  // 20
  b.AddHeaderField(p.iDescentX);                                             // 21
  b.AddHeaderField(p.iDescentY);                                             // 22
  b.AddHeaderField(iScFirstBtn);                                             // 23
  b.AddHeaderField(p.iScStep);                                               // 24
  b.AddHeaderField(p.iScDelay);                                              // 25
  b.AddHeaderField(p.iScDirection);                                          // 26
  b.AddHeaderField(ColorText(p.cTipBackColor));                              // 27
  b.AddHeaderField(ColorText(p.cTipTextColor));                              // 28
  b.AddHeaderField(ColorText(p.cTipBorderColor));                            // 29
  b.AddHeaderField(p.iTipBorderWidth);                                       // 30
  b.AddHeaderField(p.iTipDelay);                                             // 31
  b.AddHeaderField(p.iTipHideAfter);                                         // 32
  b.AddHeaderField(p.iTipFontStyle);                                         // 33
  b.AddHeaderField(PixelSize(p.iTipFontSize));                               // 34
  b.AddHeaderField(p.iTipFont);                                              // 35
  b.AddHeaderField(FolderField(p.ImgPath));                                  // 36
  b.AddHeaderField(FolderField(p.SndPath));                                  // 37
  const bool border = p.iABorderStyle != 0;
  b.AddHeaderField(p.iABorderStyle);                                         // 38
  b.AddHeaderField(border ? p.iABorderWidth : 0);                            // 39
  b.AddHeaderField(border ? p.iABorderShade : 0);                            // 40
  b.AddHeaderField(border ? ColorText(p.cABorderColor) : "0");               // 41
  b.End();
  return std::move(b.sParamLine);
}

void BuildButtonLine(ParamBuilder& b, const Project& p, int i, FileProbe& probe) {
  const tButton& t = p.button(i);
  b.Begin(Decimal(i).text);

  b.AddButtonField(t.x);                                                     // 1-4
  b.AddButtonField(t.y);
  b.AddButtonField(t.Width);
  b.AddButtonField(t.Height);
  b.AddButtonField(ButtonFlags(t));                                          // 5
  for (int s = 1; s <= 3; ++s)                                               // 6-8
    b.AddButtonField(!t.Label[s].empty() ? ColorText(t.FontColor[s]) : "0");
  for (int s = 1; s <= 3; ++s) {                                             // 9-14
    bool border = t.BorderStyle[s] != 0 && t.BorderWidth[s] != 0;
    b.AddButtonField(border ? ColorText(t.BorderColor[s]) : "0");
    b.AddButtonField(!t.noBackGround[s] ? ColorText(t.BackColor[s]) : "0");
  }
  for (int s = 1; s <= 3; ++s)                                               // 15-17
    b.AddButtonField(!t.Label[s].empty() && t.TFrameThick[s] != 0 ? ColorText(t.TFrameColor[s])
                                                                    : "0");
  for (int s = 1; s <= 3; ++s)                                               // 18-20
    b.AddButtonField(t.FadeStyle[s] != 0 ? ColorText(t.FadeColor[s]) : "0");
  for (int s = 1; s <= 3; ++s)                                               // 21-23
    b.AddButtonField(t.FrameThick[s] != 0 ? ColorText(t.FrameColor[s]) : "0");
  for (int s = 1; s <= 3; ++s) b.AddButtonField(t.PositionText[s] ? -1 : 0);  // 24-26
  for (int s = 1; s <= 3; ++s) {                                             // 27-32
    b.AddButtonField(t.PositionText[s] ? t.LabelPosX[s] : 0);
    b.AddButtonField(t.PositionText[s] ? t.LabelPosY[s] : 0);
  }
  for (int s = 1; s <= 3; ++s) b.AddButtonField(FontIndex(t.Font[s]));      // 33-35
  for (int s = 1; s <= 3; ++s) b.AddButtonField(t.TFrameShade[s]);          // 36-38
  for (int s = 1; s <= 3; ++s) b.AddButtonField(t.FontStyle[s]);            // 39-41
  for (int s = 1; s <= 3; ++s) b.AddButtonField(t.FadeStyle[s]);            // 42-44
  for (int s = 1; s <= 3; ++s) b.AddButtonField(t.TFrameThick[s]);          // 45-47
  for (int s = 1; s <= 3; ++s) b.AddButtonField(t.FrameThick[s]);           // 48-50
  for (int s = 1; s <= 3; ++s) {                                             // 51-56
    b.AddButtonField(t.ImgX[s]);
    b.AddButtonField(t.ImgY[s]);
  }
  for (int s = 1; s <= 3; ++s) b.AddButtonField(ImageStyleField(t, s, probe));  // 57-59
  for (int s = 1; s <= 3; ++s) b.AddButtonField(t.BorderStyle[s]);          // 60-62
  for (int s = 1; s <= 3; ++s)                                               // 63-65
    b.AddButtonField(t.BorderStyle[s] != 0 ? t.BorderWidth[s] : 0);
  for (int s = 1; s <= 3; ++s) b.AddButtonField(t.BorderShade[s]);          // 66-68
  for (int s = 1; s <= 3; ++s) b.AddButtonField(PixelSize(t.FontSize[s]));  // 69-71
  for (int s = 1; s <= 3; ++s) b.AddButtonField(Escaped(t.Label[s]));   // 72-74
  b.AddButtonField(Escaped(t.URL));                                          // 75
  b.AddButtonField(Escaped(t.Status));                                       // 76
  b.AddButtonField(TargetField(t));                                          // 77
  for (int s = 1; s <= 3; ++s) b.AddButtonField(FileNameField(t.Image[s]));    // 78-80
  for (int s = 1; s <= 3; ++s) b.AddButtonField(FileNameField(t.Snd[s]));      // 81-83
  b.AddButtonField(t.ProgramUP);                                             // 84
  b.AddButtonField(t.ProgramLEAVE);                                          // 85
  b.AddButtonField(t.ProgramOVER);                                           // 86
  b.AddButtonField(t.ProgramDOWN);                                           // 87
  b.AddButtonField(t.ProgramCHECK);                                          // 88
  b.AddButtonField(t.ProgramUNCHECK);                                        // 89
  b.AddButtonField(Escaped(t.Tip));                                          // 90
  b.AddButtonField(NameField(t, i));                                         // 91
  b.End();
}

std::string ButtonParamLine(const Project& p, int i, FileProbe& probe) {
  ParamBuilder b;
  BuildButtonLine(b, p, i, probe);
  std::string repeats = PackRepeats(b.sParamLine);
  return PackBlanks(repeats);
}

}  // namespace kp
