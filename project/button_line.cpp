#include "project/button_line.h"

#include "core/conv.h"
#include "project/fields.h"

namespace kp {
namespace {

// A boolean written in the int form: true is -1.
void AddBoolAsInt(std::string& out, bool b) { AddText(out, b ? "-1" : "0"); }

template <class T, class Fn>
void AddTri(std::string& out, const Tri<T>& t, Fn fn) {
  for (int s = 1; s <= 3; ++s) fn(out, t[s]);
}

}  // namespace

std::string FileFieldText(const std::string& path, LineForm form, const std::string& ownFolder) {
  if (form == LineForm::Export) return FileNameOf(path);
  const bool unsafe = path.find_first_of("|\r\n") != std::string::npos;
  if (unsafe && form == LineForm::Project && !ownFolder.empty() && GetFolder(path) == ownFolder) {
    std::string name = FileNameOnly(path);
    if (!name.empty() && name.find_first_of("|\r\n") == std::string::npos) return name;
  }
  return path;
}

void AppendButtonLine(std::string& out, const tButton& b, LineForm form,
                      const std::string& ownFolder) {
  auto num = [](std::string& o, long v) { AddNum(o, v); };
  auto esc = [](std::string& o, const std::string& s) { AddText(o, EscapeField(s)); };
  auto raw = [](std::string& o, const std::string& s) { AddText(o, s); };
  auto boo = [](std::string& o, bool v) { AddBool(o, v); };
  auto file = [form, &ownFolder](std::string& o, const std::string& s) {
    AddText(o, FileFieldText(s, form, ownFolder));
  };
  const bool record = form == LineForm::Record;

  AddNum(out, b.x);
  AddNum(out, b.y);
  AddNum(out, b.Width);
  AddNum(out, b.Height);
  AddTri(out, b.Label, esc);
  esc(out, b.URL);
  esc(out, b.Status);
  esc(out, b.Target);
  AddText(out, record ? "1" : "5");
  std::string t = record ? "" : "t";
  for (int s = 1; s <= 3; ++s)
    if (b.noBackGround[s]) t.push_back(static_cast<char>('0' + s));
  AddText(out, t);
  AddBool(out, b.ShowHand);
  AddTri(out, b.Image, file);
  AddTri(out, b.BackColor, num);
  AddTri(out, b.FontColor, num);
  AddTri(out, b.Font, raw);
  AddTri(out, b.FontStyle, num);
  AddTri(out, b.FontSize, num);
  AddTri(out, b.Snd, file);
  AddTri(out, b.ImgStyle, num);
  AddTri(out, b.PositionText, [](std::string& o, bool v) { AddBoolAsInt(o, v); });
  for (int s = 1; s <= 3; ++s) {
    AddNum(out, b.LabelPosX[s]);
    AddNum(out, b.LabelPosY[s]);
  }
  AddNum(out, b.Hidden);
  raw(out, b.ProgramLEAVE);
  raw(out, b.ProgramOVER);
  raw(out, b.ProgramDOWN);
  raw(out, b.Tip);
  AddTri(out, b.BorderStyle, num);
  AddTri(out, b.BorderWidth, num);
  AddTri(out, b.BorderShade, num);
  AddTri(out, b.BorderAutoColor, boo);
  AddTri(out, b.BorderColor, num);
  AddTri(out, b.TFrameThick, num);
  AddTri(out, b.TFrameColor, num);
  AddTri(out, b.TFrameLight, boo);
  AddTri(out, b.TFrameShade, num);
  AddTri(out, b.TFrameLeftToRight, boo);
  AddTri(out, b.FadeColor, num);
  AddTri(out, b.FadeStyle, num);
  AddTri(out, b.FrameColor, num);
  AddTri(out, b.FrameThick, num);
  AddText(out, EscapeNameField(b.sBName));
  AddTri(out, b.SoundStop, boo);
  AddTri(out, b.SoundLoop, boo);
  for (int s = 1; s <= 3; ++s) {
    AddNum(out, b.ImgX[s]);
    AddNum(out, b.ImgY[s]);
  }
  AddBool(out, b.Radio);
  raw(out, b.ProgramUP);
  raw(out, b.ProgramCHECK);
  raw(out, b.ProgramUNCHECK);
}

namespace {

// How a number is read: the project reader falls back to a default, the
// record reader below field 100 has no fall-back.
struct NumReader {
  bool strict;
  bool ok = true;
  i16 Int(std::string_view f, i16 def) {
    if (!strict) return MakeCInt(f, def);
    i16 v = 0;
    if (!ParseInt16(f, v)) ok = false;
    return v;
  }
  i32 Lng(std::string_view f, i32 def) {
    if (!strict) return MakeCLng(f, def);
    i32 v = 0;
    if (!ParseInt32(f, v)) ok = false;
    return v;
  }
};

std::string FontField(std::string_view f) {
  std::string s(f);
  if (LCase(s) == "dialog") return "arial";
  return s;
}

// Fields common to both forms. Returns false when the field is not one of
// them, so the caller handles it.
bool ApplyCommon(tButton& b, int no, std::string_view f, NumReader& n) {
  auto st = [](int first, int no) { return no - first + 1; };
  if (no == 2) b.Width = n.Int(f, 102);
  else if (no == 3) b.Height = n.Int(f, 42);
  else if (no == 7) b.URL = UnescapeField(f);
  else if (no == 8) b.Status = UnescapeField(f);
  else if (no == 9) b.Target = std::string(f);
  else if (no == 12) b.ShowHand = f == "1";
  else if (no >= 16 && no <= 18) b.BackColor[st(16, no)] = n.Lng(f, 0);
  else if (no >= 19 && no <= 21) b.FontColor[st(19, no)] = n.Lng(f, 0);
  else if (no >= 22 && no <= 24) b.Font[st(22, no)] = FontField(f);
  else if (no >= 25 && no <= 27) b.FontStyle[st(25, no)] = n.Int(f, 0);
  else if (no >= 28 && no <= 30) b.FontSize[st(28, no)] = n.Int(f, 10);
  else if (no >= 34 && no <= 36) b.ImgStyle[st(34, no)] = n.Int(f, 0);
  else if (no >= 37 && no <= 39) b.PositionText[st(37, no)] = n.Int(f, 0) != 0;
  else if (no >= 40 && no <= 45) {
    int s = (no - 40) / 2 + 1;
    if ((no - 40) % 2 == 0) b.LabelPosX[s] = n.Int(f, 0);
    else b.LabelPosY[s] = n.Int(f, 0);
  } else if (no == 46) b.Hidden = n.Int(f, 0);
  else if (no == 47) b.ProgramLEAVE = std::string(f);
  else if (no == 48) b.ProgramOVER = std::string(f);
  else if (no == 49) b.ProgramDOWN = std::string(f);
  else if (no == 50) b.Tip = std::string(f);
  else if (no >= 51 && no <= 53) b.BorderStyle[st(51, no)] = n.Int(f, 0);
  else if (no >= 54 && no <= 56) b.BorderWidth[st(54, no)] = n.Int(f, 7);
  else if (no >= 57 && no <= 59) b.BorderShade[st(57, no)] = n.Int(f, 20);
  else if (no >= 60 && no <= 62) b.BorderAutoColor[st(60, no)] = TextToBool(f);
  else if (no >= 63 && no <= 65) b.BorderColor[st(63, no)] = n.Lng(f, 0);
  else if (no >= 66 && no <= 68) b.TFrameThick[st(66, no)] = n.Int(f, 0);
  else if (no >= 69 && no <= 71) b.TFrameColor[st(69, no)] = n.Lng(f, 0);
  else if (no >= 75 && no <= 77) b.TFrameShade[st(75, no)] = n.Int(f, 0);
  else if (no >= 81 && no <= 83) b.FadeColor[st(81, no)] = n.Lng(f, 0);
  else if (no >= 84 && no <= 86) b.FadeStyle[st(84, no)] = n.Int(f, 0);
  else if (no >= 87 && no <= 89) b.FrameColor[st(87, no)] = n.Lng(f, 0);
  else if (no >= 90 && no <= 92) b.FrameThick[st(90, no)] = n.Int(f, 0);
  else if (no >= 94 && no <= 96) b.SoundStop[st(94, no)] = TextToBool(f);
  else if (no >= 97 && no <= 99) b.SoundLoop[st(97, no)] = TextToBool(f);
  else if (no >= 100 && no <= 105) {
    int s = (no - 100) / 2 + 1;
    i16 v = MakeCInt(f, 0);
    if ((no - 100) % 2 == 0) b.ImgX[s] = v;
    else b.ImgY[s] = v;
  } else if (no == 106) b.Radio = TextToBool(f);
  else if (no == 107) b.ProgramUP = std::string(f);
  else if (no == 108) b.ProgramCHECK = std::string(f);
  else if (no == 109) b.ProgramUNCHECK = std::string(f);
  else return false;
  return true;
}

}  // namespace

void ApplyProjectButtonField(tButton& b, int no, std::string_view f, const FileResolver& resolve) {
  NumReader n{false};
  if (ApplyCommon(b, no, f, n)) return;
  auto st = [](int first, int no) { return no - first + 1; };
  if (no == 0) b.x = MakeCInt(f, 12);
  else if (no == 1) b.y = MakeCInt(f, 12);
  else if (no >= 4 && no <= 6) b.Label[no - 3] = UnescapeField(f);
  else if (no == 10) b.iBtnType = MakeCInt(f, 0);
  else if (no == 11) {
    if (!f.empty() && f[0] == 't') {
      for (int s = 1; s <= 3; ++s)
        b.noBackGround[s] = f.find(static_cast<char>('0' + s)) != std::string_view::npos;
    } else {
      // The older form: exactly "1" makes every state transparent.
      for (int s = 1; s <= 3; ++s) b.noBackGround[s] = f == "1";
    }
  } else if (no >= 13 && no <= 15) b.Image[st(13, no)] = resolve(f);
  else if (no >= 31 && no <= 33) b.Snd[st(31, no)] = resolve(f);
  else if (no >= 72 && no <= 74) b.TFrameLight[st(72, no)] = TextToBool(f);
  else if (no >= 78 && no <= 80) b.TFrameLeftToRight[st(78, no)] = TextToBool(f);
  else if (no == 93) b.sBName = UnescapeField(f);
}

bool ApplyRecordButtonField(tButton& b, int no, std::string_view f, bool builtInLabels) {
  NumReader n{true};
  if (ApplyCommon(b, no, f, n)) return n.ok;
  auto st = [](int first, int no) { return no - first + 1; };
  // Fields 0, 1 (position), 10 (type) and 93 (name) are not read: the
  // target keeps its place and gets its name from the caller.
  if (no >= 4 && no <= 6) {
    if (!builtInLabels) b.Label[no - 3] = UnescapeField(f);
  } else if (no == 11) {
    for (int s = 1; s <= 3; ++s)
      b.noBackGround[s] = f.find(static_cast<char>('0' + s)) != std::string_view::npos;
  } else if (no >= 13 && no <= 15) b.Image[st(13, no)] = std::string(f);
  else if (no >= 31 && no <= 33) b.Snd[st(31, no)] = std::string(f);
  else if (no >= 72 && no <= 74) b.TFrameLight[st(72, no)] = n.Int(f, 0) != 0;
  else if (no >= 78 && no <= 80) b.TFrameLeftToRight[st(78, no)] = n.Int(f, 0) != 0;
  return n.ok;
}

}  // namespace kp
