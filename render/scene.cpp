#include "render/scene.h"

#include <algorithm>
#include <utility>

#include "render/borders.h"
#include "render/checked.h"

namespace kp {
namespace rd = render_detail;

namespace {
DesignHooks& NoHooks() {
  static DesignHooks none;
  return none;
}
}  // namespace

Scene::Scene(Project& p, Prompter& prompter, TextMeasure& measure, DesignHooks* hooks)
    : p_(p), prompter_(prompter), measure_(measure), hooks_(hooks ? hooks : &NoHooks()) {
  design_.backColor = p.BackGround;
}

Scene::~Scene() = default;

bool Scene::SetDesignSize(int w, int h) {
  return Allocate(design_, w, h, "the applet's background");
}

long long Scene::SurfaceBytes() const {
  long long total = design_.img.sizeInBytes();
  for (const auto& b : buttons_)
    if (b) total += b->img.sizeInBytes();
  return total;
}

bool Scene::Allocate(Surface& s, int w, int h, const std::string& what) {
  w = std::max(0, w);
  h = std::max(0, h);
  if (w == s.Width() && h == s.Height()) return true;
  const long long need = 4LL * w * h;
  // The old buffer lives until the new one is filled, so both count.
  const bool withinBudget = surfaceBudget <= 0 || SurfaceBytes() + need <= surfaceBudget;
  if (withinBudget && s.Resize(w, h)) return true;
  s.img = QImage();
  ++memoryFailures;
  if (!bNoMemoryErrors) {
    const std::string text = "Not enough memory to draw " + what + ": a surface of " +
                             std::to_string(w) + " x " + std::to_string(h) + " pixels needs " +
                             std::to_string((need + (1 << 20) - 1) >> 20) + " MB.";
    if (prompter_.MsgBox(text, Buttons::OKCancel, "Error", Icon::Critical) == Answer::Cancel)
      bNoMemoryErrors = true;
  }
  return false;
}

Surface& Scene::pButtons(int i) {
  if (i < 1) i = 0;  // slot 0 is never a button; it absorbs bad numbers
  if (static_cast<size_t>(i) >= buttons_.size()) buttons_.resize(static_cast<size_t>(i) + 1);
  auto& slot = buttons_[static_cast<size_t>(i)];
  if (!slot) slot = std::make_unique<Surface>();
  return *slot;
}

bool Scene::HasSurface(int i) const {
  return i >= 1 && static_cast<size_t>(i) < buttons_.size() && buttons_[static_cast<size_t>(i)];
}

void Scene::ClearButtons() { buttons_.clear(); }

void Scene::LoadButton(int i) {
  pButtons(i);
  RedrawButton(i, false, false, false, false);
}

void Scene::RemoveButton(int i) {
  if (!HasSurface(i)) return;
  buttons_.erase(buttons_.begin() + i);
}

void Scene::SwapButtons(int i, int j) {
  pButtons(i);
  pButtons(j);
  std::swap(buttons_[static_cast<size_t>(i)], buttons_[static_cast<size_t>(j)]);
}

QImage Scene::Compose() const {
  QImage out = design_.img.copy();
  if (out.isNull()) return out;
  for (int i = 1; i <= p_.ButtonCount; ++i) {
    if (!HasSurface(i)) continue;
    const Surface& s = *buttons_[static_cast<size_t>(i)];
    BitBlt(out, s.Left, s.Top, s.Width(), s.Height(), s.img, 0, 0, Rop::SRCCOPY);
  }
  return out;
}

QImage Scene::ComposeApplet() const {
  QImage out = NewBuffer(p_.AppletWidth, p_.AppletHeight, p_.BackGround);
  if (out.isNull()) return out;
  BitBlt(out, 0, 0, out.width(), out.height(), Compose(), 0, 0, Rop::SRCCOPY);
  return out;
}

QImage Scene::TakeAppletPicture() {
  if (design_.Width() != p_.AppletWidth || design_.Height() != p_.AppletHeight) {
    QImage out = ComposeApplet();
    design_.img = QImage();
    return out;
  }
  // The same pixels as ComposeApplet: the buttons over the design surface,
  // which covers the applet exactly.
  QImage out = std::move(design_.img);
  design_.img = QImage();
  for (int i = 1; i <= p_.ButtonCount; ++i) {
    if (!HasSurface(i)) continue;
    const Surface& s = *buttons_[static_cast<size_t>(i)];
    BitBlt(out, s.Left, s.Top, s.Width(), s.Height(), s.img, 0, 0, Rop::SRCCOPY);
  }
  return out;
}

void Scene::RepaintAll() {
  DrawBackGround(true, false);
  DrawAppletBorder();
  for (int i = 1; i <= p_.ButtonCount; ++i) RedrawButton(i, false, false, false, false);
}

void Scene::RedrawAllButtons() {
  for (int i = 1; i <= p_.ButtonCount; ++i) RedrawButton(i, false, false, true, false);
}

void Scene::RepaintAfterResize() {
  // A screen-wide tile survives a larger window; a fade is drawn to the
  // applet's size and so does not.
  if (p_.bReady && (!bTiledToScreen || p_.iFadeStyle != 0)) DrawBackGround(true, true);
  else if (p_.iABorderStyle != 0) DrawBackGround(true, false);
  else DrawBackGround(false, false);
  DrawAppletBorder();
  UpdateTransparentBtns(0);
}

void Scene::Refresh() {
  prompter_.Busy(true);
  DrawBackGround(true, false);
  DrawAppletBorder();
  UpdateTransparentBtns(0);
  prompter_.Busy(false);
}

void Scene::Place(int i) {
  const tButton& b = p_.button(i);
  if (b.Width < 0 || b.Height < 0) throw rd::DrawError{"Invalid property value"};
  Surface& s = pButtons(i);
  s.Left = b.x;
  s.Top = b.y;
  if (!Allocate(s, b.Width, b.Height, "button " + std::to_string(i) + " " + sQuote + b.sBName + sQuote))
    throw rd::DrawError{"Out of memory"};
}

void Scene::RedrawButton(int i, bool bMoveSizer, bool bMoveLabel, bool bSkipMove,
                         bool bRedrawAbove) {
  if (i < 1 || i > p_.ButtonCount || i >= static_cast<int>(p_.Btn.size())) return;
  try {
    if (!bSkipMove) {
      bMovingBtn = true;
      Place(i);
      bMovingBtn = false;
    }
    DrawPix(i);
    DrawLabel(i);
    DrawBorder(i);
    if (hooks_->SelectedCount() >= 2 && hooks_->IsSelected(i)) DrawMultiSelector(i);
    if (bMoveSizer) hooks_->MoveSizer(i);
    if (bMoveLabel) hooks_->MoveLabelPositioner(i);
    if (bRedrawAbove) RedrawTransparentAbove(i);
  } catch (...) {
    // A repaint that fails ends here, without a message.
    bMovingBtn = false;
  }
}

void Scene::Report(const char* routine, int i, const std::string& description, bool& silenced) {
  if (silenced) return;
  const std::string text = std::string("Error on On ") + routine + "(" + std::to_string(i) + ") " +
                           sCRLF + description + sCRLF + sCRLF +
                           "Please save your project to avoid possible data loss!";
  if (prompter_.MsgBox(text, Buttons::OKCancel, "Error") == Answer::Cancel) silenced = true;
}

void Scene::DrawBorder(int i) {
  const int s = GetStateIndex(p_.sState);
  if (s == 0 || !HasSurface(i)) return;
  tButton& b = p_.button(i);
  try {
    // The automatic colour is copied into the record at drawing time.
    if (b.BorderAutoColor[s]) b.BorderColor[s] = b.BackColor[s];
    Surface& surf = pButtons(i);
    i16 X = rd::I16(surf.Left), Y = rd::I16(surf.Top);
    if (!Draw3DF(surf.img, b.BorderStyle[s], X, Y, rd::I16(surf.Width()), rd::I16(surf.Height()),
                 b.BorderColor[s], b.BorderShade[s], b.BorderWidth[s], true))
      throw rd::Overflow();
  } catch (const rd::DrawError& e) {
    Report("DrawBorder", i, e.description, bNoBorderErrors);
  }
}

void Scene::DrawAppletBorder() {
  i16 X = 0, Y = 0;
  Draw3DF(design_.img, p_.iABorderStyle, X, Y, p_.AppletWidth, p_.AppletHeight, p_.cABorderColor,
          p_.iABorderShade, p_.iABorderWidth, false);
}

}  // namespace kp
