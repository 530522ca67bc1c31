#include "design/escape_key.h"

#include <QEvent>
#include <QKeyEvent>
#include <QWidget>

namespace kp {

namespace {

class EscapeCloser : public QObject {
 public:
  EscapeCloser(QWidget* window, std::function<void()> close)
      : QObject(window), window_(window), close_(std::move(close)) {}

 protected:
  bool eventFilter(QObject* o, QEvent* e) override {
    // A control that uses Escape (an open list, an editor's completer)
    // takes the key before it comes up to the window.
    if (o != window_ || e->type() != QEvent::KeyPress) return false;
    auto* k = static_cast<QKeyEvent*>(e);
    if (k->key() != Qt::Key_Escape || k->modifiers() != Qt::NoModifier) return false;
    close_();
    return true;
  }

 private:
  QWidget* window_;
  std::function<void()> close_;
};

}  // namespace

void CloseOnEscape(QWidget* window, std::function<void()> close) {
  if (!window || !close) return;
  window->installEventFilter(new EscapeCloser(window, std::move(close)));
}

}  // namespace kp
