#include "properties/button_list_model.h"

#include <algorithm>
#include <cmath>
#include <exception>
#include <utility>

#include "core/conv.h"
#include "core/messages.h"
#include "project/button_record.h"

namespace kp {

namespace {

i16 ToI16(long v) {
  return static_cast<i16>(std::clamp<long>(v, -32768, 32767));
}

bool IsButton(const Project& p, int i) { return i >= 1 && i <= p.ButtonCount; }

}  // namespace

PlacementGaps GapsFor(bool bAlignXY, i16 iGridX, i16 iGridY) {
  if (!bAlignXY) return {};
  return {iGridX, iGridY};
}

std::string Warning101Text() { return SharedText("sWarning101"); }

bool ConfirmMoreButtons(const Project& p, Env& env) {
  // Asked once on the way up: a user who went past 101 is not asked again.
  if (p.ButtonCount != 101) return true;
  return env.prompter.MsgBox(Warning101Text(), Buttons::OKCancelDefaultCancel,
                             SharedText("sWarning101Title"), Icon::Exclamation) != Answer::Cancel;
}

Placement NewButtonPlacement(const Project& p, int previous, NextPlacement& next,
                             PlacementGaps gaps, i16 width, i16 height) {
  Placement at;
  if (next.x > 0) {
    at.x = ToI16(std::lround(std::nearbyint(next.x)));
    at.y = ToI16(std::lround(std::nearbyint(next.y)));
    next = NextPlacement{};
    return at;
  }
  if (p.ButtonCount > 1 && IsButton(p, previous) && previous != p.ButtonCount) {
    const tButton& prev = p.button(previous);
    if (prev.x > 0 && prev.y > 0) {
      long x = prev.x;
      long y = static_cast<long>(prev.y) + prev.Height + gaps.y;
      if (y + height > p.AppletHeight) {
        // The next column, level with the topmost button.
        long top = 32767;
        for (int i = 1; i < p.ButtonCount; ++i) top = std::min<long>(top, p.button(i).y);
        y = top;
        x = static_cast<long>(prev.x) + prev.Width + gaps.x;
        if (x + width > p.AppletWidth) x = 10;
      }
      at.x = ToI16(x);
      at.y = ToI16(y);
      return at;
    }
  }
  return at;
}

Placement DuplicatePlacement(const Project& p, i16 x, i16 y) {
  if (x + 50 >= p.AppletWidth || y + 50 >= p.AppletHeight || x <= 0 || y <= 0) return {10, 10};
  return {ToI16(x + 5), ToI16(y + 5)};
}

std::string AddFailedText(const std::string& description) {
  return SharedText("sAddFailed", {description});
}

ListResult AddButton(Project& p, Env& env, NextPlacement& next, PlacementGaps gaps) {
  if (!ConfirmMoreButtons(p, env)) return ListResult::Cancelled;
  const int previous = p.iCurBtn;
  try {
    // The limit and its refusal, the count, iCurBtn, the default record
    // and the free name.
    const int i = AddNewButton(p, env);
    if (i < 0) return ListResult::ProcessEnds;
    if (i == 0) return ListResult::Refused;
    tButton& b = p.button(i);
    const Placement at = NewButtonPlacement(p, previous, next, gaps, b.Width, b.Height);
    b.x = at.x;
    b.y = at.y;
    return ListResult::Done;
  } catch (const std::exception& e) {
    env.prompter.MsgBox(AddFailedText(e.what()));
    return ListResult::Failed;
  }
}

ListResult DuplicateButton(Project& p, Env& env) {
  if (!ConfirmMoreButtons(p, env)) return ListResult::Cancelled;
  if (!IsButton(p, p.iCurBtn)) return ListResult::Cancelled;
  try {
    tButton copy = p.button(p.iCurBtn);
    if (!CanAddButton(p)) {
      env.prompter.MsgBox(Lang().TooManyButtons);
      return ListResult::Refused;
    }
    p.bProjectSaved = false;
    ++p.ButtonCount;
    p.iCurBtn = p.ButtonCount;
    const Placement at = DuplicatePlacement(p, copy.x, copy.y);
    copy.x = at.x;
    copy.y = at.y;
    tButton& b = p.button(p.iCurBtn);
    b = std::move(copy);
    b.sBName = Get_FREE_sBName(p, p.iCurBtn);
    return ListResult::Done;
  } catch (const std::exception& e) {
    env.prompter.MsgBox(AddFailedText(e.what()));
    return ListResult::Failed;
  }
}

bool RemoveCurrentButton(Project& p) {
  if (p.iCurBtn == 0 || p.ButtonCount < 1 || !IsButton(p, p.iCurBtn)) return false;
  for (int i = p.iCurBtn; i <= p.ButtonCount - 1; ++i) p.button(i) = p.button(i + 1);
  p.bProjectSaved = false;
  --p.ButtonCount;
  p.iCurBtn = 1;
  return true;
}

std::string SetButtonNames(Project& p, const std::vector<int>& selected, const std::string& text) {
  const std::string name = Trim(text);
  for (int i : selected)
    if (IsButton(p, i)) p.button(i).sBName = name;
  p.bProjectSaved = false;
  return name;
}

bool CopyButton(Project& p, Env& env) {
  if (!IsButton(p, p.iCurBtn)) return false;
  return WriteToREgistry(p, env, p.iCurBtn, "_buffer");
}

bool PasteOverCurrent(Project& p, Env& env) {
  if (!IsButton(p, p.iCurBtn)) return true;
  return MakeDefaultButton(p, env, p.iCurBtn, false, "_buffer") != RecordResult::ProcessEnds;
}

void MakeDefaultButtonFromCurrent(Project& p, Env& env) {
  if (p.ButtonCount == 0 || !IsButton(p, p.iCurBtn)) {
    env.prompter.MsgBox(SharedText("sNothingSelected"));
    return;
  }
  if (WriteToREgistry(p, env, p.iCurBtn, "")) env.prompter.MsgBox(SharedText("sDefaultMade"));
}

EditMenuState EditMenuStateOf(const Project& p, int selectedRows, const std::string& deleteWord) {
  EditMenuState m;
  const bool any = p.ButtonCount > 0;
  const bool current = IsButton(p, p.iCurBtn);
  m.align = p.ButtonCount > 1;
  m.bringToFront = any && current && p.iCurBtn != p.ButtonCount;
  m.sendBack = any && current && p.iCurBtn != 1;
  m.cutCopyDuplicate = selectedRows == 1 && p.iCurBtn > 0;
  m.remove = m.cutCopyDuplicate;
  m.deleteCaption =
      current ? deleteWord + " " + p.button(p.iCurBtn).sBName : deleteWord;
  return m;
}

}  // namespace kp
