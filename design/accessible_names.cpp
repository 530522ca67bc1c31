#include "design/accessible_names.h"

#include <QAbstractButton>
#include <QAbstractScrollArea>
#include <QAbstractSlider>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QBoxLayout>
#include <QComboBox>
#include <QEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QScrollBar>
#include <QWidget>

namespace kp {

namespace {

// Names given here carry this mark, so that a later run may renew them.
constexpr const char* kGiven = "kpGivenName";

bool FindIn(QLayout* l, QWidget* w, QLayout** owner, int* index) {
  for (int k = 0; k < l->count(); ++k) {
    QLayoutItem* it = l->itemAt(k);
    if (it->widget() == w) {
      *owner = l;
      *index = k;
      return true;
    }
    if (it->layout() && FindIn(it->layout(), w, owner, index)) return true;
  }
  return false;
}

QWidget* FirstWidget(QLayoutItem* it) {
  if (!it) return nullptr;
  if (it->widget()) return it->widget();
  if (QLayout* l = it->layout())
    for (int k = 0; k < l->count(); ++k)
      if (QWidget* w = FirstWidget(l->itemAt(k))) return w;
  return nullptr;
}

// The item that follows `index` in its layout: the next cell of a grid
// row, the next widget or layout of a box.
QLayoutItem* Next(QLayout* l, int index) {
  if (auto* g = qobject_cast<QGridLayout*>(l)) {
    int r, c, rs, cs;
    g->getItemPosition(index, &r, &c, &rs, &cs);
    return g->itemAtPosition(r, c + cs);
  }
  for (int k = index + 1; k < l->count(); ++k) {
    QLayoutItem* it = l->itemAt(k);
    if (it->widget() || it->layout()) return it;
  }
  return nullptr;
}

QLayoutItem* Previous(QLayout* l, int index) {
  if (auto* g = qobject_cast<QGridLayout*>(l)) {
    int r, c, rs, cs;
    g->getItemPosition(index, &r, &c, &rs, &cs);
    return c > 0 ? g->itemAtPosition(r, c - 1) : nullptr;
  }
  for (int k = index - 1; k >= 0; --k) {
    QLayoutItem* it = l->itemAt(k);
    if (it->widget() || it->layout()) return it;
  }
  return nullptr;
}

// A control that says nothing by itself and wants a label's words.
bool WantsLabel(QWidget* w) {
  if (!w || qobject_cast<QLabel*>(w)) return false;
  if (auto* b = qobject_cast<QAbstractButton*>(w)) {
    // "...", ">>" and the like say nothing to a listener.
    for (QChar c : b->text())
      if (c.isLetterOrNumber()) return false;
    return true;
  }
  return qobject_cast<QLineEdit*>(w) || qobject_cast<QComboBox*>(w) ||
         qobject_cast<QAbstractSpinBox*>(w) || qobject_cast<QAbstractScrollArea*>(w) ||
         qobject_cast<QAbstractSlider*>(w);
}

bool HasBuddyLabel(QWidget* w) {
  if (!w->parentWidget()) return false;
  for (QObject* o : w->parentWidget()->children())
    if (auto* l = qobject_cast<QLabel*>(o); l && l->buddy() == w) return true;
  return false;
}

void BindLabel(QLabel* label) {
  if (label->buddy() || label->text().trimmed().isEmpty()) return;
  QWidget* parent = label->parentWidget();
  if (!parent || !parent->layout()) return;
  QLayout* owner = nullptr;
  int index = -1;
  if (!FindIn(parent->layout(), label, &owner, &index)) return;
  QWidget* field = FirstWidget(Next(owner, index));
  if (!WantsLabel(field) || field->parentWidget() != parent || HasBuddyLabel(field)) return;
  if (!field->accessibleName().isEmpty()) return;
  label->setBuddy(field);
}

bool SoleControl(QWidget* box, QWidget* w) {
  for (QObject* o : box->children())
    if (auto* other = qobject_cast<QWidget*>(o); other && other != w && !other->isHidden() &&
                                                 WantsLabel(other))
      return false;
  return true;
}

void Give(QWidget* w, const QString& name) {
  if (name.isEmpty()) return;
  w->setAccessibleName(name);
  w->setProperty(kGiven, true);
}

QString NameOf(QWidget* w) {
  if (!w->accessibleName().isEmpty()) return w->accessibleName();
  if (w->parentWidget())
    for (QObject* o : w->parentWidget()->children())
      if (auto* l = qobject_cast<QLabel*>(o); l && l->buddy() == w)
        return l->text().remove('&').trimmed();
  return {};
}

// A scroll bar stands beside the field it moves.
void NameScrollBar(QScrollBar* bar) {
  QWidget* parent = bar->parentWidget();
  if (!parent || !parent->layout()) return;
  QLayout* owner = nullptr;
  int index = -1;
  if (!FindIn(parent->layout(), bar, &owner, &index)) return;
  if (QWidget* field = FirstWidget(Previous(owner, index)))
    if (qobject_cast<QLineEdit*>(field)) Give(bar, NameOf(field));
}

void NameLeftOver(QWidget* w) {
  const bool given = w->property(kGiven).toBool();
  if (!given && !w->accessibleName().isEmpty()) return;
  // A picture that acts as a button says what its tool tip says.
  if (auto* l = qobject_cast<QLabel*>(w); l && l->text().isEmpty() && !l->toolTip().isEmpty()) {
    Give(w, l->toolTip().remove('&').trimmed());
    return;
  }
  if (!WantsLabel(w) || HasBuddyLabel(w)) return;
  if (auto* bar = qobject_cast<QScrollBar*>(w)) {
    NameScrollBar(bar);
    if (!bar->accessibleName().isEmpty()) return;
  }
  QString name = w->toolTip().remove('&').trimmed();
  // The one control of a group box has the box's title for its caption.
  if (name.isEmpty())
    if (auto* box = qobject_cast<QGroupBox*>(w->parentWidget()); box && SoleControl(box, w))
      name = box->title().remove('&').trimmed();
  Give(w, name);
}

class Namer : public QObject {
 public:
  using QObject::QObject;

 protected:
  bool eventFilter(QObject* o, QEvent* e) override {
    if (e->type() == QEvent::Show && o->isWidgetType()) {
      auto* w = static_cast<QWidget*>(o);
      if (w->isWindow()) NameControls(w);
    }
    return false;
  }
};

}  // namespace

void NameControls(QWidget* window) {
  if (!window) return;
  for (QLabel* l : window->findChildren<QLabel*>()) BindLabel(l);
  for (QWidget* w : window->findChildren<QWidget*>())
    if (w->window() == window) NameLeftOver(w);
}

void NameControlsOfEveryWindow() {
  if (!qApp || qApp->property("kpNamer").toBool()) return;
  qApp->setProperty("kpNamer", true);
  qApp->installEventFilter(new Namer(qApp));
}

}  // namespace kp
