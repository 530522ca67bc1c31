// Answering the program's modal windows the way a person does: wait for the
// window by its name, then click its buttons, tick its boxes or type into
// it. The publishing and browser windows are found by their form names.
#pragma once

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QDialogButtonBox>
#include <QElapsedTimer>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>
#include <QtTest>
#include <functional>
#include <memory>

namespace kp::apptest {

// Polls every 10 ms for `ms` for a visible modal window that `match`
// accepts, and runs `act` on it once. The flag tells whether it ran.
inline std::shared_ptr<bool> WhenModalMatches(std::function<bool(QWidget*)> match,
                                              std::function<void(QWidget*)> act, int ms) {
  auto ran = std::make_shared<bool>(false);
  auto* timer = new QTimer;
  auto clock = std::make_shared<QElapsedTimer>();
  clock->start();
  QObject::connect(timer, &QTimer::timeout, [timer, match, act, clock, ms, ran] {
    QWidget* w = QApplication::activeModalWidget();
    if (w && w->isVisible() && match(w)) {
      timer->stop();
      timer->deleteLater();
      *ran = true;
      act(w);
      return;
    }
    if (clock->elapsed() > ms) {
      timer->stop();
      timer->deleteLater();
    }
  });
  timer->start(10);
  return ran;
}

// Runs `act` on the first visible modal window whose objectName is `name`
// and that is not `skip`, within `ms`.
inline std::shared_ptr<bool> WhenWindow(const QString& name, std::function<void(QWidget*)> act,
                                        QWidget* skip = nullptr, int ms = 5000) {
  return WhenModalMatches([name, skip](QWidget* w) { return w != skip && w->objectName() == name; },
                          act, ms);
}

// The same for the first visible modal message box.
inline std::shared_ptr<bool> WhenBox(std::function<void(QMessageBox*)> act, int ms = 5000) {
  return WhenModalMatches([](QWidget* w) { return qobject_cast<QMessageBox*>(w) != nullptr; },
                          [act](QWidget* w) { act(qobject_cast<QMessageBox*>(w)); }, ms);
}

// A control of a window by its name.
template <class T>
T* Control(QWidget* w, const char* name) {
  return w->findChild<T*>(QString::fromLatin1(name));
}

inline void Click(QWidget* w, const char* button) {
  auto* b = Control<QAbstractButton>(w, button);
  QVERIFY2(b, button);
  QVERIFY2(b->isVisible(), button);
  QTest::mouseClick(b, Qt::LeftButton);
}

// Clicks a check box on its box, where a person would.
inline void Tick(QWidget* w, const char* box) {
  auto* c = Control<QCheckBox>(w, box);
  QVERIFY2(c, box);
  QVERIFY2(c->isVisible(), box);
  QTest::mouseClick(c, Qt::LeftButton, Qt::NoModifier, QPoint(8, c->height() / 2));
}

// Types a path into a file dialog's name box and presses its accept button.
inline void ChooseFile(QWidget* w, const QString& path) {
  auto* d = qobject_cast<QFileDialog*>(w);
  QVERIFY(d);
  auto* edit = d->findChild<QLineEdit*>("fileNameEdit");
  QVERIFY(edit);
  edit->setText(path);
  auto* box = d->findChild<QDialogButtonBox*>("buttonBox");
  QVERIFY(box);
  QPushButton* accept = box->button(d->acceptMode() == QFileDialog::AcceptSave
                                        ? QDialogButtonBox::Save
                                        : QDialogButtonBox::Open);
  QVERIFY(accept);
  QVERIFY(accept->isEnabled());
  QTest::mouseClick(accept, Qt::LeftButton);
}

inline void CancelFile(QWidget* w) {
  auto* box = w->findChild<QDialogButtonBox*>("buttonBox");
  QVERIFY(box);
  QTest::mouseClick(box->button(QDialogButtonBox::Cancel), Qt::LeftButton);
}

}  // namespace kp::apptest
