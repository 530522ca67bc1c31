#include "design/frm_design.h"

#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QMimeData>
#include <QPainter>

namespace kp {

namespace {

QColor ToQ(Colour c) { return QColor(c & 0xFF, (c >> 8) & 0xFF, (c >> 16) & 0xFF); }

QStringList LocalFiles(const QMimeData* data) {
  QStringList files;
  if (!data || !data->hasUrls()) return files;
  for (const QUrl& u : data->urls())
    if (u.isLocalFile()) files << u.toLocalFile();
  return files;
}

}  // namespace

frmDesign::frmDesign(QWidget* parent) : QWidget(parent, Qt::Window) {
  setObjectName("frmDesign");
  setAcceptDrops(true);
  setAttribute(Qt::WA_OpaquePaintEvent);
  SetAppletSize(420, 180);
}

void frmDesign::SetAppletSize(int width, int height) {
  width = std::max(1, width);
  height = std::max(1, height);
  if (surface_.width() != width || surface_.height() != height) {
    QImage next(width, height, QImage::Format_RGB32);
    next.fill(ToQ(backColor_));
    surface_ = next;
  }
  resize(width, height);
  update();
}

void frmDesign::SetBackColor(Colour c) {
  backColor_ = c;
  surface_.fill(ToQ(c));
  update();
}

void frmDesign::ClearButtons() { update(); }

void frmDesign::ShowOver(QWidget* mainWindow, bool onTop) {
  mainWindow_ = mainWindow;
  const QPoint at = pos();
  const bool wasVisible = isVisible();
  // A window with a parent stays over it; one without stands on its own.
  if (onTop && parentWidget() != mainWindow) setParent(mainWindow, Qt::Tool);
  if (!onTop && parentWidget()) setParent(nullptr, Qt::Window);
  if (wasVisible) move(at);
  show();
}

void frmDesign::paintEvent(QPaintEvent*) {
  QPainter p(this);
  p.fillRect(rect(), palette().window());
  p.drawImage(0, 0, surface_);
}

void frmDesign::closeEvent(QCloseEvent* e) {
  // The window lives as long as the program; the user cannot close it.
  if (bUnloading) {
    e->accept();
    return;
  }
  e->ignore();
  if (mainWindow_) mainWindow_->activateWindow();
}

void frmDesign::dragEnterEvent(QDragEnterEvent* e) {
  if (!LocalFiles(e->mimeData()).isEmpty()) e->acceptProposedAction();
}

void frmDesign::dropEvent(QDropEvent* e) {
  QStringList files = LocalFiles(e->mimeData());
  if (files.isEmpty()) return;
  e->acceptProposedAction();
  if (onFilesDropped) onFilesDropped(files);
}

}  // namespace kp
