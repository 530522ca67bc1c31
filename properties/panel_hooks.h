// What the design window and the list commands ask of the button property
// panel, so that neither needs the panel's widgets.
#pragma once

namespace kp {

class PanelHooks {
 public:
  virtual ~PanelHooks() = default;
  // Fills the panel from Btn(i) and sState, under bFillingPanel.
  virtual void ShowProp(int i) = 0;
  // Stores the code of the last edit and enables the copy-to-states button
  // exactly when the code is not 0.
  virtual void SetLastChange(int code) = 0;
};

}  // namespace kp
