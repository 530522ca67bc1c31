// frmMain's undo and redo: the Edit menu's history entries, the keys of the
// selection, and the watcher that closes a step when a user operation ends.
#include <QAction>
#include <QApplication>
#include <QEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPlainTextEdit>
#include <QAbstractSpinBox>
#include <QTextEdit>
#include <QTimer>

#include <set>

#include "core/language.h"
#include "design/frm_design.h"
#include "properties/button_list.h"
#include "properties/button_panel.h"
#include "properties/frm_main.h"
#include "properties/global_panel.h"

namespace kp {

namespace {

bool IsTextEntry(const QWidget* w) {
  return qobject_cast<const QLineEdit*>(w) || qobject_cast<const QTextEdit*>(w) ||
         qobject_cast<const QPlainTextEdit*>(w) || qobject_cast<const QAbstractSpinBox*>(w);
}

// A user operation ends at a mouse release, at the release of a key that
// is not typing (a held arrow key repeats; only its last release counts)
// and when a text field loses the focus. The step is closed once the
// event has done its work.
class OperationWatcher : public QObject {
 public:
  OperationWatcher(QObject* parent, std::function<void()> ended)
      : QObject(parent), ended_(std::move(ended)) {}

 protected:
  bool eventFilter(QObject* o, QEvent* e) override {
    switch (e->type()) {
      case QEvent::MouseButtonRelease:
        Later();
        break;
      case QEvent::KeyRelease: {
        auto* k = static_cast<QKeyEvent*>(e);
        if (k->isAutoRepeat()) break;
        const bool typing = IsTextEntry(QApplication::focusWidget()) ||
                            (o->isWidgetType() && IsTextEntry(static_cast<QWidget*>(o)));
        const bool ends = k->key() == Qt::Key_Return || k->key() == Qt::Key_Enter ||
                          k->key() == Qt::Key_Tab || k->key() == Qt::Key_Escape;
        if (!typing || ends) Later();
        break;
      }
      case QEvent::FocusOut:
        if (o->isWidgetType() && IsTextEntry(static_cast<QWidget*>(o))) Later();
        break;
      default:
        break;
    }
    return false;
  }

 private:
  void Later() {
    if (queued_) return;
    queued_ = true;
    QTimer::singleShot(0, this, [this] {
      queued_ = false;
      ended_();
    });
  }

  std::function<void()> ended_;
  bool queued_ = false;
};

}  // namespace

std::vector<std::string*> HistoryWordTargets() {
  HistoryWords& w = Words();
  return {&w.Undo,       &w.Redo,       &w.AddOne,     &w.AddMany,        &w.DeleteOne,
          &w.DeleteMany, &w.MoveOne,    &w.MoveMany,   &w.SizeOne,        &w.SizeMany,
          &w.RenameOne,  &w.RenameMany, &w.ChangeOne,  &w.ChangeMany,     &w.AppletSize,
          &w.PageBlocks, &w.AppletPrograms, &w.Applet, &w.Project,        &w.Duplicate,
          &w.Paste,      &w.Cut,        &w.BringToFront, &w.SendBack,     &w.Align,
          &w.Action};
}

void frmMain::InstallHistory() {
  // Undo and Redo head the Edit menu.
  QAction* first = mnuEdit->actions().value(0, nullptr);
  mnuUndo = new QAction(mnuEdit);
  mnuUndo->setObjectName("mnuUndo");
  mnuUndo->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Z));
  mnuRedo = new QAction(mnuEdit);
  mnuRedo->setObjectName("mnuRedo");
  mnuRedo->setShortcuts({QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z),
                         QKeySequence(Qt::CTRL | Qt::Key_Y)});
  auto* sep = new QAction(mnuEdit);
  sep->setSeparator(true);
  mnuEdit->insertActions(first, {mnuUndo, mnuRedo, sep});
  connect(mnuUndo, &QAction::triggered, this, [this] { mnuUndo_Click(); });
  connect(mnuRedo, &QAction::triggered, this, [this] { mnuRedo_Click(); });

  // The selection's keys, in both windows.
  auto key = [this](const char* name, QKeySequence seq, std::function<void()> run) {
    auto* a = new QAction(this);
    a->setObjectName(name);
    a->setShortcut(seq);
    connect(a, &QAction::triggered, this, std::move(run));
    addAction(a);
    return a;
  };
  mnuSelectAll = key("mnuSelectAll", QKeySequence(Qt::CTRL | Qt::Key_A), [this] { SelectAllButtons(); });
  mnuDuplicateSelection = key("mnuDuplicateSelection", QKeySequence(Qt::CTRL | Qt::Key_D),
                              [this] { DuplicateSelection(); });
  mnuDeleteSelection = key("mnuDeleteSelection", QKeySequence(Qt::Key_Delete), [this] { DeleteSelection(); });
  // Delete belongs to the design window and the list; elsewhere it edits text.
  mnuDeleteSelection->setShortcutContext(Qt::WidgetShortcut);
  lstButtons->addAction(mnuDeleteSelection);
  for (QAction* a : {mnuUndo, mnuRedo, mnuSelectAll, mnuDuplicateSelection}) {
    a->setShortcutContext(Qt::WindowShortcut);
    design_->addAction(a);
  }
  design_->addAction(mnuDeleteSelection);
  for (QAction* a : {mnuUndo, mnuRedo}) addAction(a);

  auto* watcher = new OperationWatcher(this, [this] { RecordStep(); });
  qApp->installEventFilter(watcher);
  UpdateUndoEntries();
}

void frmMain::ApplyHistoryTexts() {
  if (LanguageApplies(env_, lang_)) {
    std::vector<std::string*> targets = HistoryWordTargets();
    if (auto lines = WindowLanguageLines(env_, lang_, "[EditHistory]", targets.size()))
      for (size_t k = 0; k < lines->size() && k < targets.size(); ++k)
        if (!(*lines)[k].empty()) *targets[k] = MessageLineText((*lines)[k]);
  }
  UpdateUndoEntries();
}

void frmMain::RecordStep(const std::string& name) {
  // Nothing is a step while a project loads or a routine fills the panel.
  if (!p_.bReady || p_.bFillingPanel || !historyOn_ || stepHold_ > 0) return;
  std::vector<int> selected;
  for (int i = 1; i <= p_.ButtonCount; ++i)
    if (IsSelected(i)) selected.push_back(i);
  if (history_.Commit(p_, name, selected)) UpdateUndoEntries();
  ShowSavedMark();
}

StepScope::StepScope(frmMain& main, std::string name) : main_(main), name_(std::move(name)) {
  main_.RecordStep();
  ++main_.stepHold_;
}

StepScope::~StepScope() {
  if (--main_.stepHold_ == 0) main_.RecordStep(name_);
}

void frmMain::ResetHistory() {
  history_.Reset(p_);
  historyOn_ = true;
  UpdateUndoEntries();
  ShowSavedMark();
}

void frmMain::UpdateUndoEntries() {
  if (!mnuUndo) return;
  const HistoryWords& w = Words();
  auto entry = [](const std::string& word, const std::string& step) {
    return DisplayText(step.empty() ? word : word + " " + step);
  };
  mnuUndo->setText(entry(w.Undo, history_.UndoName()));
  mnuRedo->setText(entry(w.Redo, history_.RedoName()));
  mnuUndo->setEnabled(history_.CanUndo());
  mnuRedo->setEnabled(history_.CanRedo());
}

void frmMain::ShowSavedMark() {
  const QString title = DisplayText(p_.sMainTitle);
  setWindowTitle(p_.bProjectSaved ? title : "*" + title);
}

void frmMain::mnuUndo_Click() {
  if (!p_.bReady) return;
  // A step left open (a field still being typed in) is closed first.
  RecordStep();
  ShowHistoryChange(history_.Undo(p_));
}

void frmMain::mnuRedo_Click() {
  if (!p_.bReady) return;
  RecordStep();
  ShowHistoryChange(history_.Redo(p_));
}

void frmMain::ShowHistoryChange(const HistoryChange& c) {
  if (!c.done) return;
  const bool was = p_.bFillingPanel;
  p_.bFillingPanel = true;
  // Surfaces and rows for buttons that came or went.
  for (int i = c.countBefore; i > c.countAfter; --i) {
    design_->RemoveButton(i);
    delete lstButtons->takeItem(i - 1);
  }
  for (int i = c.countBefore + 1; i <= c.countAfter; ++i) View().LoadButton(p_, i);
  if (c.applet) View().SetMainParams(p_);
  p_.bFillingPanel = was;
  // Few buttons: each with what lies above it; many: one pass for the
  // transparent ones at the end.
  const bool many = c.buttons.size() > 16;
  for (int i : c.buttons) {
    if (i > p_.ButtonCount) continue;
    if (QListWidgetItem* it = lstButtons->item(i - 1))
      it->setText(DisplayText(p_.button(i).sBName));
    if (i <= c.countBefore) design_->RedrawButton(i, false, false, false, !many);
  }
  if (c.applet) design_->RedrawAllButtons();
  if (many || c.applet) design_->UpdateTransparentBtns(0);
  if (p_.ButtonCount > 0) ShowSelection(c.selection);
  else design_->HideSizers();
  history_.Absorb(p_);
  UpdateUndoEntries();
  ShowSavedMark();
}

void frmMain::ShowSelection(const std::vector<int>& selection) {
  if (selection.size() <= 1) {
    SelectItem_lstButtons(p_.iCurBtn);
    View().SelectButton(p_, p_.iCurBtn);
    return;
  }
  // A group again: the rows, then the marks of the buttons whose mark changed.
  std::set<int> was, now(selection.begin(), selection.end());
  for (int i = 1; i <= p_.ButtonCount; ++i)
    if (IsSelected(i)) was.insert(i);
  for (int r = 0; r < lstButtons->count(); ++r)
    lstButtons->item(r)->setSelected(now.count(r + 1) > 0);
  std::set<int> touched = was;
  touched.insert(now.begin(), now.end());
  for (int i : touched)
    if (i <= p_.ButtonCount && (was.count(i) != now.count(i) || was.size() < 2))
      design_->RedrawButton(i, false, false, true, false);
  design_->HideSizers();
  if (panel) panel->ShowProp(p_.iCurBtn);
  design_->MoveLabelPositioner(p_.iCurBtn);
}

// --- The selection's keys -----------------------------------------------------------

namespace {

ButtonList* ListOf(PanelHooks* panel) {
  auto* bp = dynamic_cast<ButtonPanel*>(panel);
  return bp ? &bp->List() : nullptr;
}

}  // namespace

void frmMain::SelectAllButtons() {
  if (p_.ButtonCount <= 0) return;
  for (int r = 0; r < lstButtons->count(); ++r) lstButtons->item(r)->setSelected(true);
  if (p_.ButtonCount >= 2) design_->HideSizers();
  design_->RedrawAllButtons();
}

std::vector<int> frmMain::SelectedButtons() const {
  std::vector<int> out;
  for (int i = 1; i <= p_.ButtonCount; ++i)
    if (IsSelected(i)) out.push_back(i);
  if (out.empty() && p_.iCurBtn >= 1 && p_.iCurBtn <= p_.ButtonCount) out.push_back(p_.iCurBtn);
  return out;
}

void frmMain::DuplicateSelection() {
  ButtonList* list = ListOf(panel);
  if (!list) return;
  StepScope step(*this, Words().Duplicate);
  for (int i : SelectedButtons()) {
    p_.iCurBtn = static_cast<i16>(i);
    list->btnDuplicate_Click();
  }
}

void frmMain::DeleteSelection() {
  ButtonList* list = ListOf(panel);
  if (!list) return;
  StepScope step(*this, {});
  const std::vector<int> doomed = SelectedButtons();
  // From the top down, so the lower numbers stay valid.
  for (auto it = doomed.rbegin(); it != doomed.rend(); ++it) {
    p_.iCurBtn = static_cast<i16>(*it);
    list->btnRemove_Click();
  }
}

}  // namespace kp
