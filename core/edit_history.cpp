#include "core/edit_history.h"

#include <algorithm>
#include <initializer_list>
#include <type_traits>
#include <utility>

namespace kp {

namespace {

// The record fields in file order; a per-state field is three slots.
#define KP_BUTTON_FIELDS(X)                                                                    \
  X(sBName) X(x) X(y) X(Width) X(Height) X(Label) X(PositionText) X(LabelPosX) X(LabelPosY)  \
  X(URL) X(Target) X(Status) X(Tip) X(BackColor) X(Font) X(FontStyle) X(FontSize)            \
  X(FontColor) X(Image) X(ImgStyle) X(iBtnType) X(BorderStyle) X(BorderWidth)                \
  X(BorderShade) X(BorderAutoColor) X(BorderColor) X(TFrameThick) X(TFrameColor)             \
  X(TFrameLight) X(TFrameShade) X(TFrameLeftToRight) X(Hidden) X(noBackGround) X(ShowHand)   \
  X(Snd) X(SoundStop) X(SoundLoop) X(ProgramUP) X(ProgramLEAVE) X(ProgramOVER)               \
  X(ProgramDOWN) X(ProgramCHECK) X(ProgramUNCHECK) X(FadeColor) X(FadeStyle) X(FrameColor)   \
  X(FrameThick) X(ImgX) X(ImgY) X(Radio)

#define KP_APPLET_FIELDS(X)                                                                    \
  X(AppletWidth) X(AppletHeight) X(ButtonCount) X(BackGround) X(DOWNBtn) X(BackImg)          \
  X(BackImgStyle) X(iBgOffsetX) X(iBgOffsetY) X(iABorderStyle) X(iABorderWidth)              \
  X(iABorderShade) X(cABorderColor) X(cFadeColor) X(iFadeStyle) X(iDescentX) X(iDescentY)    \
  X(AppletName) X(CodeBase) X(ImgPath) X(SndPath) X(bUnusualRepaint) X(bPreLoad) X(bClip)    \
  X(bDoScroll) X(iScStep) X(iScDelay) X(iScDirection) X(cTipBackColor) X(cTipTextColor)      \
  X(cTipBorderColor) X(iTipBorderWidth) X(iTipDelay) X(iTipHideAfter) X(iTipFont)            \
  X(iTipFontSize) X(iTipFontStyle) X(sLoading) X(cLoadingFont) X(cLoadingBack)               \
  X(iLoadingFont_Size) X(iLoadingFont_Style) X(iLoadingFont_Name) X(AppletProgramStart)      \
  X(AppletProgramOVER) X(AppletProgramDOWN) X(AppletProgramOUT) X(sHTMLbefore) X(sHTMLalt)   \
  X(sHTMLafter) X(sOutputHTML) X(sProjectName) X(sOutputFolder) X(sSearchImagesFolder)       \
  X(sSearchSoundsFolder) X(sSearchLinkFolder)

template <class T>
struct IsTri : std::false_type {};
template <class T>
struct IsTri<Tri<T>> : std::true_type {};

template <class F, class First, class... Rest>
void Slot(int& k, F& f, First& a, Rest&... r) {
  if constexpr (IsTri<std::remove_cv_t<First>>::value) {
    for (int s = 0; s < 3; ++s) f(k++, a.v[s], r.v[s]...);
  } else {
    f(k++, a, r...);
  }
}

#define KP_BUTTON_SLOT(name) Slot(k, f, b.name...);
template <class F, class... B>
void ForEachButtonSlot(F&& f, B&... b) {
  int k = 0;
  KP_BUTTON_FIELDS(KP_BUTTON_SLOT)
}

#define KP_APPLET_SLOT(name) Slot(k, f, p.name...);
template <class F, class... P>
void ForEachAppletSlot(F&& f, P&... p) {
  int k = 0;
  KP_APPLET_FIELDS(KP_APPLET_SLOT)
}

// Slot numbers of the first slot of each field, by name.
#define KP_NAME(name) #name,
constexpr const char* kButtonFieldNames[] = {KP_BUTTON_FIELDS(KP_NAME)};
constexpr const char* kAppletFieldNames[] = {KP_APPLET_FIELDS(KP_NAME)};

template <class T>
constexpr bool kIsText = std::is_same_v<std::remove_cv_t<T>, std::string>;

struct Differ {
  RecordPatch& out;
  template <class T>
  void operator()(int k, const T& a, const T& b) const {
    if (a == b) return;
    const auto slot = static_cast<std::uint16_t>(k);
    if constexpr (kIsText<T>)
      out.texts.push_back({slot, a, b});
    else
      out.numbers.push_back({slot, static_cast<i32>(a), static_cast<i32>(b)});
  }
};

// One pass over the slots; the changes are in slot order.
struct Applier {
  const RecordPatch& patch;
  bool after;
  std::size_t n = 0;
  std::size_t t = 0;
  template <class T>
  void operator()(int k, T& m) {
    if (n < patch.numbers.size() && patch.numbers[n].slot == k) {
      if constexpr (!kIsText<T>) {
        const i32 v = after ? patch.numbers[n].after : patch.numbers[n].before;
        if constexpr (std::is_same_v<T, bool>)
          m = v != 0;
        else
          m = static_cast<T>(v);
      }
      ++n;
    }
    if (t < patch.texts.size() && patch.texts[t].slot == k) {
      if constexpr (kIsText<T>) m = after ? patch.texts[t].after : patch.texts[t].before;
      ++t;
    }
  }
};

template <class T>
constexpr int SlotsOf() {
  return IsTri<T>::value ? 3 : 1;
}
#define KP_BUTTON_WIDTH(name) SlotsOf<decltype(tButton::name)>(),
#define KP_APPLET_WIDTH(name) SlotsOf<decltype(Project::name)>(),
constexpr int kButtonWidths[] = {KP_BUTTON_FIELDS(KP_BUTTON_WIDTH)};
constexpr int kAppletWidths[] = {KP_APPLET_FIELDS(KP_APPLET_WIDTH)};

template <std::size_t N>
int SlotOfName(const char* const (&names)[N], const int (&widths)[N], const std::string& field) {
  int slot = 0;
  for (std::size_t i = 0; i < N; ++i) {
    if (field == names[i]) return slot;
    slot += widths[i];
  }
  return -1;
}

}  // namespace

std::size_t RecordPatch::Bytes() const {
  std::size_t n = numbers.capacity() * sizeof(NumberChange) + texts.capacity() * sizeof(TextChange);
  // Short texts live inside the string object; longer ones on the heap.
  for (const TextChange& t : texts)
    for (const std::string* s : {&t.before, &t.after})
      if (s->capacity() > 15) n += s->capacity() + 1;
  return n;
}

std::size_t HistoryStep::Bytes() const {
  std::size_t n = sizeof(HistoryStep) + name.capacity() + applet.Bytes() +
                  buttons.capacity() * sizeof(ButtonPatch) +
                  (selBefore.capacity() + selAfter.capacity()) * sizeof(i16);
  for (const ButtonPatch& b : buttons) n += b.fields.Bytes();
  return n;
}

RecordPatch DiffButtons(const tButton& before, const tButton& after) {
  RecordPatch out;
  ForEachButtonSlot(Differ{out}, before, after);
  return out;
}

RecordPatch DiffApplet(const Project& before, const Project& after) {
  RecordPatch out;
  ForEachAppletSlot(Differ{out}, before, after);
  return out;
}

void ApplyToButton(tButton& b, const RecordPatch& patch, bool after) {
  Applier a{patch, after};
  ForEachButtonSlot(a, b);
}

void ApplyToApplet(Project& p, const RecordPatch& patch, bool after) {
  Applier a{patch, after};
  ForEachAppletSlot(a, p);
}

int ButtonSlotOf(const std::string& field) {
  return SlotOfName(kButtonFieldNames, kButtonWidths, field);
}

int AppletSlotOf(const std::string& field) {
  return SlotOfName(kAppletFieldNames, kAppletWidths, field);
}

HistoryWords& Words() {
  static HistoryWords w;
  return w;
}

std::string WordFor(const std::string& one, const std::string& many, std::size_t n) {
  if (n == 1) return one;
  std::string s = many;
  if (auto at = s.find("%1"); at != std::string::npos) s.replace(at, 2, std::to_string(n));
  return s;
}

namespace {

// True when every change of every button is in one of the given slots.
bool OnlySlots(const HistoryStep& step, std::initializer_list<int> slots) {
  for (const ButtonPatch& b : step.buttons) {
    if (!b.fields.texts.empty() &&
        std::any_of(b.fields.texts.begin(), b.fields.texts.end(), [&](const TextChange& t) {
          return std::find(slots.begin(), slots.end(), t.slot) == slots.end();
        }))
      return false;
    for (const NumberChange& c : b.fields.numbers)
      if (std::find(slots.begin(), slots.end(), c.slot) == slots.end()) return false;
  }
  return true;
}

bool AppletOnly(const RecordPatch& a, std::initializer_list<const char*> fields) {
  std::vector<int> slots;
  for (const char* f : fields) slots.push_back(AppletSlotOf(f));
  auto in = [&](int k) { return std::find(slots.begin(), slots.end(), k) != slots.end(); };
  for (const NumberChange& c : a.numbers)
    if (!in(c.slot)) return false;
  for (const TextChange& t : a.texts)
    if (!in(t.slot)) return false;
  return true;
}

}  // namespace

std::string StepNameOf(const HistoryStep& step, int countBefore, int countAfter) {
  const HistoryWords& w = Words();
  if (countAfter > countBefore)
    return WordFor(w.AddOne, w.AddMany, static_cast<std::size_t>(countAfter - countBefore));
  if (countAfter < countBefore)
    return WordFor(w.DeleteOne, w.DeleteMany, static_cast<std::size_t>(countBefore - countAfter));
  const std::size_t n = step.buttons.size();
  if (n > 0 && step.applet.empty()) {
    const int x = ButtonSlotOf("x"), y = ButtonSlotOf("y");
    const int wd = ButtonSlotOf("Width"), ht = ButtonSlotOf("Height");
    if (OnlySlots(step, {x, y})) return WordFor(w.MoveOne, w.MoveMany, n);
    // A new size may place the label and the picture again.
    std::initializer_list<int> sized = {x, y, wd, ht,
                                        ButtonSlotOf("LabelPosX"), ButtonSlotOf("LabelPosX") + 1,
                                        ButtonSlotOf("LabelPosX") + 2, ButtonSlotOf("LabelPosY"),
                                        ButtonSlotOf("LabelPosY") + 1, ButtonSlotOf("LabelPosY") + 2};
    if (OnlySlots(step, sized)) return WordFor(w.SizeOne, w.SizeMany, n);
    if (OnlySlots(step, {ButtonSlotOf("sBName")})) return WordFor(w.RenameOne, w.RenameMany, n);
    return WordFor(w.ChangeOne, w.ChangeMany, n);
  }
  if (n == 0 && !step.applet.empty()) {
    if (AppletOnly(step.applet, {"AppletWidth", "AppletHeight"})) return w.AppletSize;
    if (AppletOnly(step.applet, {"sHTMLbefore", "sHTMLalt", "sHTMLafter"})) return w.PageBlocks;
    if (AppletOnly(step.applet, {"AppletProgramStart", "AppletProgramOVER", "AppletProgramDOWN",
                                 "AppletProgramOUT"}))
      return w.AppletPrograms;
    return w.Applet;
  }
  return w.Project;
}

// --- The history ------------------------------------------------------------------

void EditHistory::Reset(const Project& p) {
  base_ = p;
  baseSel_.clear();
  hasBase_ = true;
  steps_.clear();
  cursor_ = 0;
  saved_ = 0;
}

bool EditHistory::Commit(const Project& p, const std::string& name,
                         const std::vector<int>& selection) {
  if (!hasBase_) {
    Reset(p);
    return false;
  }
  const std::vector<i16> selBefore = baseSel_;
  if (!selection.empty()) baseSel_.assign(selection.begin(), selection.end());
  HistoryStep step;
  const std::size_t slots = std::min(p.Btn.size(), base_.Btn.size());
  for (std::size_t i = 1; i < slots; ++i) {
    if (p.Btn[i] == base_.Btn[i]) continue;
    ButtonPatch b{static_cast<i16>(i), DiffButtons(base_.Btn[i], p.Btn[i])};
    base_.Btn[i] = p.Btn[i];
    step.buttons.push_back(std::move(b));
  }
  step.applet = DiffApplet(base_, p);
  if (step.buttons.empty() && step.applet.empty()) return false;
  const int countBefore = base_.ButtonCount;
  ApplyToApplet(base_, step.applet, true);
  step.selBefore = selBefore;
  step.selAfter = baseSel_;
  step.curBefore = base_.iCurBtn;
  step.curAfter = p.iCurBtn;
  base_.iCurBtn = p.iCurBtn;
  step.name = name.empty() ? StepNameOf(step, countBefore, p.ButtonCount) : name;
  // A new change drops the steps that were undone.
  steps_.erase(steps_.begin() + static_cast<long>(cursor_), steps_.end());
  if (saved_ > static_cast<long>(cursor_)) saved_ = -1;
  steps_.push_back(std::move(step));
  ++cursor_;
  while (steps_.size() > limit_) {
    steps_.pop_front();
    --cursor_;
    if (saved_ >= 0) --saved_;
  }
  return true;
}

void EditHistory::MarkSaved(const Project& p) {
  Commit(p);
  saved_ = static_cast<long>(cursor_);
}

void EditHistory::Absorb(const Project& p) {
  if (!hasBase_) return;
  const std::size_t slots = std::min(p.Btn.size(), base_.Btn.size());
  for (std::size_t i = 1; i < slots; ++i)
    if (!(p.Btn[i] == base_.Btn[i])) base_.Btn[i] = p.Btn[i];
  const RecordPatch applet = DiffApplet(base_, p);
  if (!applet.empty()) ApplyToApplet(base_, applet, true);
  base_.iCurBtn = p.iCurBtn;
}

std::string EditHistory::UndoName() const { return CanUndo() ? steps_[cursor_ - 1].name : ""; }

std::string EditHistory::RedoName() const { return CanRedo() ? steps_[cursor_].name : ""; }

HistoryChange EditHistory::Apply(Project& p, const HistoryStep& s, bool after) {
  HistoryChange c;
  c.done = true;
  c.countBefore = p.ButtonCount;
  for (const ButtonPatch& b : s.buttons) {
    ApplyToButton(p.Btn[static_cast<std::size_t>(b.index)], b.fields, after);
    base_.Btn[static_cast<std::size_t>(b.index)] = p.Btn[static_cast<std::size_t>(b.index)];
    c.buttons.push_back(b.index);
  }
  ApplyToApplet(p, s.applet, after);
  ApplyToApplet(base_, s.applet, after);
  c.applet = !s.applet.empty();
  c.countAfter = p.ButtonCount;
  i16 cur = after ? s.curAfter : s.curBefore;
  if (cur > p.ButtonCount) cur = p.ButtonCount;
  if (cur < 1 && p.ButtonCount > 0) cur = 1;
  p.iCurBtn = cur;
  base_.iCurBtn = cur;
  const std::vector<i16>& sel = after ? s.selAfter : s.selBefore;
  for (i16 i : sel)
    if (i >= 1 && i <= p.ButtonCount) c.selection.push_back(i);
  baseSel_.assign(c.selection.begin(), c.selection.end());
  p.bProjectSaved = AtSaved();
  return c;
}

HistoryChange EditHistory::Undo(Project& p) {
  Commit(p);
  if (!CanUndo()) return {};
  --cursor_;
  return Apply(p, steps_[cursor_], false);
}

HistoryChange EditHistory::Redo(Project& p) {
  // Pending changes are a new step, which drops the redo steps.
  Commit(p);
  if (!CanRedo()) return {};
  ++cursor_;
  return Apply(p, steps_[cursor_ - 1], true);
}

std::size_t EditHistory::StepBytes() const {
  std::size_t n = 0;
  for (const HistoryStep& s : steps_) n += s.Bytes();
  return n;
}

std::size_t EditHistory::MemoryBytes() const {
  std::size_t n = sizeof(*this) + StepBytes() + base_.Btn.capacity() * sizeof(tButton);
  for (const tButton& b : base_.Btn)
    ForEachButtonSlot(
        [&n](int, const auto& m) {
          if constexpr (kIsText<std::remove_cv_t<std::remove_reference_t<decltype(m)>>>)
            if (m.capacity() > 15) n += m.capacity() + 1;
        },
        b);
  return n;
}

}  // namespace kp
