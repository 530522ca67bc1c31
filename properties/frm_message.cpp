#include "properties/frm_message.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>

namespace kp {

Gauge::Gauge(QWidget* parent) : QWidget(parent) {
  setObjectName("picGauge");
  setFixedHeight(16);
  setMinimumWidth(300);
}

void Gauge::Fill(int from, int to) {
  for (int v = from; v <= to; ++v) {
    int step = v - 3;
    if (step >= kFirst && step <= kLast) stripes_[static_cast<size_t>(step - kFirst)] = true;
  }
  update();
}

void Gauge::Clear() {
  std::fill(stripes_.begin(), stripes_.end(), false);
  update();
}

bool Gauge::Striped(int value) const {
  int step = value - 3;
  return step >= kFirst && step <= kLast && stripes_[static_cast<size_t>(step - kFirst)];
}

void Gauge::paintEvent(QPaintEvent*) {
  QPainter p(this);
  p.fillRect(rect(), Qt::white);
  p.setPen(Qt::gray);
  p.drawRect(rect().adjusted(0, 0, -1, -1));
  const double unit = width() / 100.0;
  for (int s = kFirst; s <= kLast; ++s) {
    if (!stripes_[static_cast<size_t>(s - kFirst)]) continue;
    int x0 = static_cast<int>(s * unit), x1 = static_cast<int>((s + 1) * unit);
    p.fillRect(QRect(x0, 1, std::max(1, x1 - x0), height() - 2), QColor(0, 0, 128));
  }
}

UiTexts& frmMessage::Texts() {
  static UiTexts t = {{"btnCANCEL", "Cancel"}};
  return t;
}

frmMessage::frmMessage(QWidget* parent) : QDialog(parent) {
  setObjectName("frmMessage");
  setModal(false);
  lblMessage = new QLabel(this);
  lblMessage->setObjectName("lblMessage");
  lblMessage->setTextFormat(Qt::PlainText);
  lblMessage->setMinimumWidth(300);
  picGauge = new Gauge(this);
  btnCANCEL = new QPushButton(QTextOf(Texts(), "btnCANCEL"), this);
  btnCANCEL->setObjectName("btnCANCEL");
  connect(btnCANCEL, &QPushButton::clicked, this, [this] { btnCANCEL_Click(); });

  auto* row = new QHBoxLayout;
  row->addStretch();
  row->addWidget(btnCANCEL);
  auto* box = new QVBoxLayout(this);
  box->addWidget(lblMessage);
  box->addWidget(picGauge);
  box->addLayout(row);
}

void frmMessage::ShowMessage(const QString& caption, const QString& message, QWidget* owner,
                             bool showCancel) {
  cancelled_ = false;
  setWindowTitle(caption);
  lblMessage->setText(message);
  btnCANCEL->setEnabled(showCancel);
  adjustSize();
  if (owner) {
    QRect o = owner->frameGeometry();
    move(o.center() - QPoint(width() / 2, height() / 2));
  }
  show();
  raise();
  repaint();
}

void frmMessage::SetMessage(const QString& message, bool now) {
  lblMessage->setText(message);
  if (now) lblMessage->repaint();
}

void frmMessage::SetGauge(int from, int to, bool now) {
  picGauge->Fill(from, to);
  if (now) picGauge->repaint();
}

void frmMessage::hideEvent(QHideEvent* e) {
  picGauge->Clear();
  QDialog::hideEvent(e);
}

void frmMessage::btnCANCEL_Click() {
  cancelled_ = true;
  if (onCancel) onCancel();
}

}  // namespace kp
