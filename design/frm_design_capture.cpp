// What a drag can leave behind: a press whose release went to a menu or a
// dialog, and transparent buttons that took a piece of a dragged button.
#include <algorithm>

#include "design/frm_design.h"
#include "render/scene.h"

namespace kp {

namespace {

Qt::MouseButton QtButtonOf(int button) {
  switch (button) {
    case 1: return Qt::LeftButton;
    case 2: return Qt::RightButton;
    case 4: return Qt::MiddleButton;
    default: return Qt::NoButton;
  }
}

}  // namespace

void frmDesign::EndStaleCapture(Qt::MouseButtons held) {
  if (captured_ == Target::None) return;
  const Qt::MouseButton b = QtButtonOf(capturedButton_);
  if (b != Qt::NoButton && held.testFlag(b)) return;  // a real second button
  const Target t = captured_;
  captured_ = Target::None;
  // The release that never came: the handlers ignore its place.
  switch (t) {
    case Target::Marker: picLabelPositioner_MouseUp(capturedButton_, 0, 0, 0); break;
    case Target::Sizer: picSizer_MouseUp(capturedIndex_, capturedButton_, 0, 0, 0); break;
    case Target::Button:
      if (scene_->HasSurface(capturedIndex_))
        pButtons_MouseUp(capturedIndex_, capturedButton_, 0, 0, 0);
      else
        bMouseDownBtn = false;
      break;
    default: break;
  }
}

void frmDesign::NotePassedTransparent(int i) {
  const int s = GetStateIndex(p_.sState);
  if (s == 0) return;
  for (int j = i + 1; j <= p_.ButtonCount; ++j) {
    if (!p_.button(j).noBackGround[s] || !scene_->DoCover(i, j)) continue;
    if (std::find(passedTransparent_.begin(), passedTransparent_.end(), j) ==
        passedTransparent_.end())
      passedTransparent_.push_back(j);
  }
}

void frmDesign::RefreshPassedTransparent() {
  std::vector<int> passed;
  passed.swap(passedTransparent_);
  std::sort(passed.begin(), passed.end());
  const int s = GetStateIndex(p_.sState);
  if (s == 0) return;
  // Ascending, so that a transparent button over another one takes the
  // lower one's new picture.
  for (int j : passed)
    if (ValidButton(j) && scene_->HasSurface(j) && p_.button(j).noBackGround[s])
      scene_->RedrawButton(j, false, false, true, false);
  update();
}

}  // namespace kp
