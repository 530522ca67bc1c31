// frmDesign: the design window. It holds the applet's surface, a pixel
// buffer of the applet's size that keeps what was painted on it until
// something repaints it; the window only shows the buffer. The buttons'
// own surfaces, the selection handles and the mouse work come on top.
#pragma once

#include <QImage>
#include <QStringList>
#include <QWidget>
#include <functional>

#include "core/model.h"

namespace kp {

class frmDesign : public QWidget {
 public:
  explicit frmDesign(QWidget* parent = nullptr);

  // The applet's size: the buffer and the window's inner size follow.
  void SetAppletSize(int width, int height);
  // Fills the whole surface with the background colour.
  void SetBackColor(Colour c);
  Colour BackColor() const { return backColor_; }

  // The applet's surface, to paint on; Refresh shows what was painted.
  QImage& Surface() { return surface_; }
  void Refresh() { update(); }

  // Removes every button from the window (a new or loading project).
  void ClearButtons();

  // The window stays over `mainWindow` (the setting "frmDesignOnTop") or
  // stands on its own; either way it is shown.
  void ShowOver(QWidget* mainWindow, bool onTop);

  // Files dropped here go to the main window's drop handler.
  std::function<void(const QStringList&)> onFilesDropped;

  // Set by the program's shutdown: only then may the window close.
  bool bUnloading = false;

 protected:
  void paintEvent(QPaintEvent* e) override;
  void closeEvent(QCloseEvent* e) override;
  void dragEnterEvent(QDragEnterEvent* e) override;
  void dropEvent(QDropEvent* e) override;

 private:
  QImage surface_;
  Colour backColor_ = RGB(255, 255, 255);
  QWidget* mainWindow_ = nullptr;
};

}  // namespace kp
