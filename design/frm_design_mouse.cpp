// The design window's direct manipulation: picking, dragging, the sizing
// handles, the arrow keys, the lock, and the label's marker.
#include <QMenu>

#include <algorithm>

#include "core/startup.h"
#include "design/design_texts.h"
#include "design/frm_design.h"
#include "render/scene.h"

namespace kp {

namespace {

// The colours of the handles: blue while the buttons may move, grey while
// they are locked.
constexpr Colour kSizerUnlocked = 0x800000;
constexpr Colour kSizerLocked = RGB(128, 128, 128);

i16 ToI16(int v) { return static_cast<i16>(std::clamp(v, -32768, 32767)); }

}  // namespace

Box frmDesign::SurfaceBox(int i) {
  const kp::Surface& s = scene_->pButtons(i);
  return {s.Left, s.Top, s.Width(), s.Height()};
}

void frmDesign::SetSurfaceBox(int i, const Box& b) {
  kp::Surface& s = scene_->pButtons(i);
  const bool sized = b.width != s.Width() || b.height != s.Height();
  s.Left = b.left;
  s.Top = b.top;
  s.Resize(b.width, b.height);
  // pButtons_Resize: a surface of a new size is painted again, unless the
  // repaint itself is placing it.
  if (sized && !scene_->bMovingBtn) scene_->RedrawButton(i, false, false, true, true);
}

Selection frmDesign::CurrentSelection() {
  return Selection{host_.SelectedCount(), [this](int j) { return host_.IsSelected(j); }};
}

void frmDesign::FillPanel() {
  if (!ValidButton(p_.iCurBtn)) return;
  host_.ShowProp(p_.iCurBtn);
}

// --- Handles and marks ------------------------------------------------------------

void frmDesign::MoveSizer(int i) {
  if (!ValidButton(i) || !scene_->HasSurface(i)) return;
  const Box b = SurfaceBox(i);
  // Placed whether shown or not: the selection shows and hides them.
  for (int k = 0; k < 4; ++k) picSizer[static_cast<size_t>(k)].pos = SizerPos(k, b);
  markerOnTop_ = false;
  update();
}

void frmDesign::ShowSizers() {
  for (Sizer& s : picSizer) s.visible = true;
  update();
}

void frmDesign::HideSizers() {
  for (Sizer& s : picSizer) s.visible = false;
  update();
}

void frmDesign::DrawMultiSelector(int i) {
  if (!ValidButton(i)) return;
  scene_->DrawMultiSelector(i);
  update();
}

void frmDesign::changeSelColor(bool bUnlocked) {
  sizerColour = bUnlocked ? kSizerUnlocked : kSizerLocked;
  update();
}

// --- Buttons ------------------------------------------------------------------------

void frmDesign::pButtons_MouseDown(int i, int Button, int Shift, double X, double Y) {
  if (!ValidButton(i)) return;
  if (Button == 1) {
    if (Shift != 0 && host_.SelectedCount() < 2 && ValidButton(p_.iCurBtn))
      DrawMultiSelector(p_.iCurBtn);
    p_.iCurBtn = static_cast<i16>(i);
    if (Shift == 0) {
      // A press on a member of a multiple selection keeps it, so that the
      // group can be dragged.
      if (!host_.IsSelected(i)) {
        host_.SelectItem_lstButtons(i);
        MoveSizer(i);
      }
    } else if (host_.IsSelected(i)) {
      host_.DeSelectItem_lstButtons(i);
      RedrawButton(i, false, false, true, false);
    } else {
      host_.AddSelectItem_lstButtons(i);
      DrawMultiSelector(i);
    }
    bMouseDownBtn = true;
    sngStartX = X;
    iStartY = ToI16(RoundHalfEven(Y));
    sngLastX = p_.button(i).x;
    sngLastY = p_.button(i).y;
    host_.ShowProp(p_.iCurBtn);
    host_.SetLastChange(0);
    return;
  }
  p_.iCurBtn = static_cast<i16>(i);
  if (host_.SelectedCount() <= 1) {
    host_.SelectItem_lstButtons(i);
    MoveSizer(i);
  }
  host_.ShowProp(p_.iCurBtn);
  host_.PopupEditMenu(pressGlobal_);
}

void frmDesign::pButtons_MouseMove(int i, int, int, double X, double Y) {
  if (!bMouseDownBtn || bLocked) return;
  try {
    if (!ValidButton(i)) return;
    p_.bProjectSaved = false;
    kp::Surface& surf = scene_->pButtons(i);
    const i16 oldLeft = ToI16(surf.Left), oldTop = ToI16(surf.Top);
    surf.Left = DragTo(oldLeft, X, sngStartX);
    surf.Top = DragTo(oldTop, Y, iStartY);
    const int dx = surf.Left - oldLeft, dy = surf.Top - oldTop;
    const int count = host_.SelectedCount();
    if (count > 1) {
      for (int j = 1; j <= p_.ButtonCount; ++j) {
        if (j == i || !host_.IsSelected(j) || !scene_->HasSurface(j)) continue;
        kp::Surface& other = scene_->pButtons(j);
        other.Left += dx;
        other.Top += dy;
        p_.button(j).x = ToI16(other.Left);
        p_.button(j).y = ToI16(other.Top);
      }
    }
    p_.button(i).x = ToI16(surf.Left);
    p_.button(i).y = ToI16(surf.Top);
    FillPanel();
    if (count <= 1) MoveSizer(i);
    MoveLabelPositioner(i);
    update();
    if (!ValidButton(p_.iCurBtn)) return;
    if (sngLastX == p_.button(p_.iCurBtn).x && sngLastY == p_.button(p_.iCurBtn).y) return;
    const int s = GetStateIndex(p_.sState);
    // An opaque button needs no new picture when it moves; a transparent
    // one takes a new picture from what now lies under it. A repaint may
    // let the release through, so the loop looks again each time.
    for (int j = 1; j <= p_.ButtonCount && bMouseDownBtn; ++j) {
      if (!host_.IsSelected(j)) continue;
      if (s != 0 && p_.button(j).noBackGround[s]) scene_->RedrawButton(j, false, false, true, true);
      else scene_->RedrawTransparentAbove(j);
      NotePassedTransparent(j);
    }
    sngLastX = p_.button(p_.iCurBtn).x;
    sngLastY = p_.button(p_.iCurBtn).y;
  } catch (...) {
    // "Unexpected error at pButtons.MouseMove() Description:" is for the
    // programmer; the event just ends.
  }
}

void frmDesign::pButtons_MouseUp(int i, int, int, double, double) {
  bMouseDownBtn = false;
  // A transparent button the drag has left still shows a piece of it.
  RefreshPassedTransparent();
  if (!ValidButton(i)) return;
  // A group is not snapped to the grid.
  if (host_.SelectedCount() <= 1) {
    if (Session().bAlignXY) {
      AlignX(i, true);
      AlignY(i, true);
      FillPanel();
    }
    MoveSizer(i);
  }
}

// --- Handles ------------------------------------------------------------------------

void frmDesign::picSizer_MouseDown(int k, int, int, double X, double Y) {
  picSizer[static_cast<size_t>(k)].Tag = "Down";
  sngSizerX = X;
  iSizerY = ToI16(RoundHalfEven(Y));
}

void frmDesign::picSizer_MouseMove(int k, int, int, double X, double Y) {
  Sizer& h = picSizer[static_cast<size_t>(k)];
  if (h.Tag != "Down" || bLocked) return;
  const int i = p_.iCurBtn;
  if (!ValidButton(i) || !scene_->HasSurface(i)) return;
  p_.bProjectSaved = false;
  const double S = SizerCoordinate(k, h.pos);
  const bool vertical = k == 0 || k == 2;
  const int N = vertical ? SizerTarget(S, Y, iSizerY) : SizerTarget(S, X, sngSizerX);
  const Box before = SurfaceBox(i);
  const Box after = SizerDrag(k, before, S, N);
  if (!(after == before)) SetSurfaceBox(i, after);
  MoveSizer(i);
  tButton& b = p_.button(i);
  b.x = ToI16(after.left);
  b.y = ToI16(after.top);
  b.Width = ToI16(after.width);
  b.Height = ToI16(after.height);
  MoveLabelPositioner(i);
  update();
  FillPanel();
}

void frmDesign::picSizer_MouseUp(int k, int, int, double, double) {
  picSizer[static_cast<size_t>(k)].Tag = "Up";
  const int i = p_.iCurBtn;
  if (!ValidButton(i)) return;
  if (Session().bAlignWH) {
    // The handles on the top and left edges round up, the others down.
    if (k == 0 || k == 2) {
      AlignY(i, true);
      if (k == 2) {
        AlignH(i, true, true);
        MoveLabelPositioner(i);
      } else {
        AlignH(i, true, false);
      }
    } else {
      AlignX(i, true);
      if (k == 3) {
        AlignW(i, true, true);
        MoveLabelPositioner(i);
      } else {
        AlignW(i, true, false);
      }
    }
  }
  FillPanel();
}

// --- The empty window and the keys ------------------------------------------------------

void frmDesign::Form_MouseDown(int Button, int Shift, double X, double Y) {
  try {
    sngNewBtnX = static_cast<float>(X);
    sngNewBtnY = static_cast<float>(Y);
    if (Button == 2) {
      mnuCommon->popup(pressGlobal_);
      return;
    }
    // A plain press on the empty window ends a multiple selection; Ctrl
    // keeps it.
    if (Button == 1 && p_.ButtonCount > 0 && p_.bReady && Shift != 2 &&
        ValidButton(p_.iCurBtn)) {
      host_.SelectItem_lstButtons(p_.iCurBtn);
      MoveSizer(p_.iCurBtn);
    }
  } catch (...) {
  }
}

void frmDesign::Form_KeyDown(int KeyCode, int Shift) {
  auto run = [](const std::function<void()>& f) {
    if (f) f();
  };
  switch (KeyCode) {
    case 0x58: if (Shift == 2) run(CutItem); break;
    case 0x43: if (Shift == 2) run(CopyItem); break;
    case 0x56: if (Shift == 2) run(PasteItem); break;
    case 0x74: mnuRefresh_Click(); break;
    case 0x26: Nudge(0, -1); break;
    case 0x28: Nudge(0, 1); break;
    case 0x25: Nudge(-1, 0); break;
    case 0x27: Nudge(1, 0); break;
    default: break;
  }
}

void frmDesign::Nudge(int dx, int dy) {
  // The lock does not hold the arrow keys, and they do not snap.
  const std::vector<int> moved = NudgeSelected(p_, CurrentSelection(), dx, dy);
  const int s = GetStateIndex(p_.sState);
  for (int j : moved) {
    if (!scene_->HasSurface(j)) continue;
    NotePassedTransparent(j);
    kp::Surface& surf = scene_->pButtons(j);
    surf.Left = p_.button(j).x;
    surf.Top = p_.button(j).y;
    if (s != 0 && p_.button(j).noBackGround[s]) scene_->RedrawButton(j, false, false, true, false);
    scene_->RedrawTransparentAbove(j);
  }
  // What the step has left keeps no piece of the moved buttons.
  RefreshPassedTransparent();
  if (!moved.empty()) p_.bProjectSaved = false;
  FillPanel();
  if (ValidButton(p_.iCurBtn)) {
    if (host_.SelectedCount() <= 1) MoveSizer(p_.iCurBtn);
    MoveLabelPositioner(p_.iCurBtn);
  }
  update();
}

// --- The lock ---------------------------------------------------------------------------

void frmDesign::mnuLOCKED_Click() {
  bLocked = !bLocked;
  mnuLOCKED->setChecked(bLocked);
  host_.SetLockedMark(bLocked);
  SetLockTitle();
  changeSelColor(!bLocked);
}

// --- The label's marker -------------------------------------------------------------------

void frmDesign::MoveLabelPositioner(int i) {
  const int s = GetStateIndex(p_.sState);
  if (!ValidButton(i) || s == 0 || !p_.button(i).PositionText[s]) {
    picLabelPositioner.visible = false;
    update();
    return;
  }
  const tButton& b = p_.button(i);
  const PointD at = MarkerPos(b.x, b.y, b.LabelPosX[s], b.LabelPosY[s]);
  picLabelPositioner.left = at.x;
  picLabelPositioner.top = at.y;
  picLabelPositioner.visible = true;
  markerOnTop_ = true;
  update();
}

void frmDesign::picLabelPositioner_MouseDown(int, int, double X, double Y) {
  picLabelPositioner.Tag = "DOWN";
  iPosStartX = ToI16(RoundHalfEven(X));
  iPosStartY = ToI16(RoundHalfEven(Y));
}

void frmDesign::picLabelPositioner_MouseMove(int, int, double X, double Y) {
  // The lock does not hold the marker.
  if (picLabelPositioner.Tag != "DOWN") return;
  try {
    p_.bProjectSaved = false;
    Marker& m = picLabelPositioner;
    m.left = m.left + X - iPosStartX;
    m.top = m.top + Y - iPosStartY;
    update();
    const int s = GetStateIndex(p_.sState);
    const int cur = p_.iCurBtn;
    if (s == 0 || !ValidButton(cur)) return;
    tButton& c = p_.button(cur);
    const auto [posX, posY] = LabelPosFromMarker(m.left, m.top, c.x, c.y);
    c.LabelPosX[s] = ToI16(posX);
    c.LabelPosY[s] = ToI16(posY);
    const int count = host_.SelectedCount();
    for (int j = 1; j <= p_.ButtonCount; ++j) {
      if (count == 1) {
        if (j != cur) continue;
      } else {
        if (!host_.IsSelected(j)) continue;
        p_.button(j).LabelPosX[s] = c.LabelPosX[s];
        p_.button(j).LabelPosY[s] = c.LabelPosY[s];
      }
      scene_->RedrawButton(j, false, false, true, false);
    }
    host_.SetLastChange(3);
    FillPanel();
  } catch (...) {
  }
}

void frmDesign::picLabelPositioner_MouseUp(int, int, double, double) {
  picLabelPositioner.Tag = "UP";
  FillPanel();
}

}  // namespace kp
