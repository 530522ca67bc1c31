// The texts a window shows: its title and what its labels, fields, buttons,
// lists and tables hold. The guide's pictures must not show a scratch
// folder of the run that drew them.
#pragma once

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QComboBox>
#include <QDir>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTextEdit>
#include <QWidget>

namespace kp::apptest {

inline void AddModelTexts(const QAbstractItemModel* m, const QModelIndex& parent,
                          QStringList& out) {
  if (!m) return;
  for (int r = 0; r < m->rowCount(parent); ++r)
    for (int c = 0; c < m->columnCount(parent); ++c) {
      const QModelIndex i = m->index(r, c, parent);
      out << m->data(i, Qt::DisplayRole).toString();
      if (c == 0 && m->hasChildren(i)) AddModelTexts(m, i, out);
    }
}

inline QStringList TextsShown(QWidget* w) {
  QStringList out{w->windowTitle()};
  for (QWidget* c : w->findChildren<QWidget*>()) {
    if (!c->isVisibleTo(w)) continue;
    if (auto* l = qobject_cast<QLabel*>(c)) out << l->text();
    else if (auto* e = qobject_cast<QLineEdit*>(c)) out << e->text();
    else if (auto* b = qobject_cast<QAbstractButton*>(c)) out << b->text();
    else if (auto* t = qobject_cast<QPlainTextEdit*>(c)) out << t->toPlainText();
    else if (auto* t = qobject_cast<QTextEdit*>(c)) out << t->toPlainText();
    if (auto* box = qobject_cast<QComboBox*>(c))
      for (int k = 0; k < box->count(); ++k) out << box->itemText(k);
    // A list of files shows the folder it lists, not the whole file system.
    // A header shares its view's rows.
    auto* v = qobject_cast<QAbstractItemView*>(c);
    if (v && !qobject_cast<QHeaderView*>(c))
      AddModelTexts(v->model(), v->rootIndex(), out);
  }
  return out;
}

// The texts that name a path in the system's temporary folder.
inline QStringList TempPathsShown(QWidget* w) {
  const QString temp = QDir::tempPath() + "/";
  QStringList found;
  for (const QString& t : TextsShown(w))
    if (t.contains(temp) || t.contains(QDir::toNativeSeparators(temp))) found << t;
  return found;
}

}  // namespace kp::apptest
