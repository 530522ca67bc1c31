// Escape in a window that is not a dialog, handled as a dialog handles it:
// a key the focused control leaves unused reaches the window and closes it.
#pragma once

#include <functional>

class QWidget;

namespace kp {

// `close` runs when Escape reaches `window` unused by its controls.
void CloseOnEscape(QWidget* window, std::function<void()> close);

}  // namespace kp
