// Snapping to the grid, lining buttons up, packing them into rows and
// columns, and moving a button one step in the stacking order.
#include <QGuiApplication>
#include <QScreen>

#include <algorithm>

#include "core/startup.h"
#include "design/frm_design.h"
#include "design/frm_grid.h"
#include "render/scene.h"

namespace kp {

// --- Snapping ------------------------------------------------------------------------

void frmDesign::SnapField(int i, i16 tButton::*field, const std::optional<i16>& snapped,
                          bool bMoveSizer) {
  if (!snapped) return;
  tButton& b = p_.button(i);
  if (*snapped != b.*field) p_.bProjectSaved = false;
  b.*field = *snapped;
  RedrawButton(i, false, false, false, true);
  if (bMoveSizer) MoveSizer(i);
}

void frmDesign::AlignX(int i, bool bMoveSizer) {
  if (bLocked || !ValidButton(i)) return;
  SnapField(i, &tButton::x, SnapPos(p_.button(i).x, Session().iGridX), bMoveSizer);
}

void frmDesign::AlignY(int i, bool bMoveSizer) {
  if (bLocked || !ValidButton(i)) return;
  SnapField(i, &tButton::y, SnapPos(p_.button(i).y, Session().iGridY), bMoveSizer);
}

void frmDesign::AlignW(int i, bool bMoveSizer, bool bRoundUp) {
  if (bLocked || !ValidButton(i)) return;
  SnapField(i, &tButton::Width, SnapSize(p_.button(i).Width, Session().iGridX, bRoundUp),
            bMoveSizer);
}

void frmDesign::AlignH(int i, bool bMoveSizer, bool bRoundUp) {
  if (bLocked || !ValidButton(i)) return;
  SnapField(i, &tButton::Height, SnapSize(p_.button(i).Height, Session().iGridY, bRoundUp),
            bMoveSizer);
}

// --- Lining up -----------------------------------------------------------------------

namespace {

void LineUp(frmDesign& w, Project& p, DesignHost& host, Edge e) {
  try {
    const int cur = p.iCurBtn;
    const Selection sel{host.SelectedCount(), [&host](int j) { return host.IsSelected(j); }};
    const std::vector<int> done = AlignEdges(p, e, cur, sel);
    for (int j : done) w.scene().RedrawButton(j, false, false, false, true);
    if (!done.empty()) p.bProjectSaved = false;
    if (cur >= 1 && cur <= p.ButtonCount) {
      if (sel.count <= 1) w.MoveSizer(cur);
      w.MoveLabelPositioner(cur);
    }
    w.update();
  } catch (...) {
  }
}

}  // namespace

void frmDesign::Align_Left() { LineUp(*this, p_, host_, Edge::Left); }
void frmDesign::Align_Right() { LineUp(*this, p_, host_, Edge::Right); }
void frmDesign::Align_Top() { LineUp(*this, p_, host_, Edge::Top); }
void frmDesign::Align_Bottom() { LineUp(*this, p_, host_, Edge::Bottom); }

// --- Packing ----------------------------------------------------------------------------

namespace {

PackParams PackParamsOf(frmDesign& w, Project& p) {
  PackParams pp;
  const SessionVars& s = Session();
  pp.bAlignXY = s.bAlignXY;
  pp.iGridX = s.iGridX;
  pp.iGridY = s.iGridY;
  QScreen* screen = w.screen() ? w.screen() : QGuiApplication::primaryScreen();
  const QRect area = screen ? screen->availableGeometry() : QRect(0, 0, 1024, 768);
  pp.screenClientW = area.width();
  pp.screenClientH = area.height();
  pp.twipsX = 15;
  pp.twipsY = 15;
  const QRect frame = w.frameGeometry();
  pp.frameW = std::max(0, frame.width() - w.width());
  pp.frameH = std::max(0, frame.height() - w.height());
  pp.setClientWidth = [&w, &p](int cw) { w.SetAppletSize(cw, p.AppletHeight); };
  pp.setClientHeight = [&w, &p](int ch) { w.SetAppletSize(p.AppletWidth, ch); };
  pp.placed = [&w](int n) { w.scene().RedrawButton(n, false, false, false, false); };
  return pp;
}

}  // namespace

void frmDesign::Align_Horizontal_Row() {
  try {
    const PackResult r = kp::Align_Horizontal_Row(p_, p_.iCurBtn, CurrentSelection(),
                                                  PackParamsOf(*this, p_));
    p_.bProjectSaved = false;
    MoveSizer(p_.iCurBtn);
    if (r.resizeWindow) SetAppletSize(r.clientW, r.clientH);
    if (!CHECK_POS_frmDesign()) Center_frmDesign();
    update();
  } catch (...) {
  }
}

void frmDesign::Align_Vertical_Column() {
  try {
    const PackResult r = kp::Align_Vertical_Column(p_, p_.iCurBtn, CurrentSelection(),
                                                   PackParamsOf(*this, p_));
    p_.bProjectSaved = false;
    MoveSizer(p_.iCurBtn);
    if (r.resizeWindow) SetAppletSize(r.clientW, r.clientH);
    if (!CHECK_POS_frmDesign()) Center_frmDesign();
    update();
  } catch (...) {
  }
}

// --- Stacking ---------------------------------------------------------------------------

namespace {

// The records change places; the surfaces stay where they are and take
// the content of the record now at their number, so the number decides
// the stacking.
void Exchange(frmDesign& w, Project& p, DesignHost& host, int step) {
  const int i = p.iCurBtn, j = i + step;
  if (i < 1 || i > p.ButtonCount || j < 1 || j > p.ButtonCount) return;
  std::swap(p.button(i), p.button(j));
  w.scene().RedrawButton(std::min(i, j), false, false, false, true);
  w.scene().RedrawButton(std::max(i, j), false, false, false, true);
  p.iCurBtn = static_cast<i16>(j);
  host.SelectItem_lstButtons(j);
  host.RenewList();
  w.MoveSizer(j);
  w.MoveLabelPositioner(j);
  p.bProjectSaved = false;
  w.update();
}

}  // namespace

void frmDesign::Public_mnuBringToFront_Click() { Exchange(*this, p_, host_, 1); }

void frmDesign::Public_mnuSendBack_Click() { Exchange(*this, p_, host_, -1); }

// --- Grid dialog --------------------------------------------------------------------------

frmGrid* frmDesign::Grid() {
  if (!grid_) grid_ = new frmGrid(*this, p_, env_, host_, this);
  return grid_;
}

void frmDesign::mnuGrid_Click() { Grid()->ShowDialog(); }

}  // namespace kp
