#include "properties/button_list.h"

#include <QAction>
#include <QGroupBox>
#include <QLayout>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>

#include <functional>

#include "core/startup.h"
#include "design/frm_design.h"
#include "properties/button_panel.h"
#include "properties/frm_main.h"

namespace kp {

UiTexts& ButtonList::Texts() {
  static UiTexts t = {
      {"btnAddBtn", "&New Button"},
      {"btnAddBtn.ToolTip", "Create New Button"},
      {"btnDuplicate", "&Duplicate"},
      {"btnDuplicate.ToolTip", "Make a Copy of Selected Button"},
      {"btnRemove", "&Delete Button"},
      {"btnRemove.ToolTip", "Delete Button"},
      {"mnuCut", "Cu&t"},
      {"mnuCopy", "&Copy"},
      {"mnuPaste", "&Paste"},
      {"mnuDuplicate", "&Duplicate"},
      {"sDelete", "Delete"},
      {"mnuBringToFront", "Bring to &Front"},
      {"mnuSendBack", "Send &Back"},
  };
  return t;
}

ButtonList::ButtonList(frmMain& main, ButtonPanel& panel, Project& p, Env& env)
    : QObject(&panel), main_(main), panel_(panel), p_(p), env_(env) {
  setObjectName("ButtonList");
  // The three buttons stand under the list.
  QWidget* frame = main.frameButtons;
  btnAddBtn = new QPushButton(frame);
  btnAddBtn->setObjectName("btnAddBtn");
  btnDuplicate = new QPushButton(frame);
  btnDuplicate->setObjectName("btnDuplicate");
  btnRemove = new QPushButton(frame);
  btnRemove->setObjectName("btnRemove");
  if (QLayout* box = frame->layout())
    for (QPushButton* b : {btnAddBtn, btnDuplicate, btnRemove}) box->addWidget(b);
  connect(btnAddBtn, &QPushButton::clicked, this, [this] { btnAddBtn_Click(); });
  connect(btnDuplicate, &QPushButton::clicked, this, [this] { btnDuplicate_Click(); });
  connect(btnRemove, &QPushButton::clicked, this, [this] { btnRemove_Click(); });

  // The Edit menu's entries, ahead of the design window's block.
  QMenu* edit = main.mnuEdit;
  QAction* before = edit->actions().value(0, nullptr);
  auto entry = [&](const char* name, std::function<void()> run) {
    auto* a = new QAction(edit);
    a->setObjectName(name);
    connect(a, &QAction::triggered, this, std::move(run));
    edit->insertAction(before, a);
    return a;
  };
  auto separator = [&] {
    auto* a = new QAction(edit);
    a->setSeparator(true);
    edit->insertAction(before, a);
  };
  mnuCut = entry("mnuCut", [this] { mnuCut_Click(); });
  mnuCopy = entry("mnuCopy", [this] { mnuCopy_Click(); });
  mnuPaste = entry("mnuPaste", [this] { mnuPaste_Click(); });
  separator();
  mnuDuplicate = entry("mnuDuplicate", [this] { btnDuplicate_Click(); });
  mnuDelete = entry("mnuDelete", [this] { btnRemove_Click(); });
  separator();
  mnuBringToFront = entry("mnuBringToFront", [this] { mnuBringToFront_Click(); });
  mnuSendBack = entry("mnuSendBack", [this] { mnuSendBack_Click(); });
  connect(edit, &QMenu::aboutToShow, this, [this] { mnuEdit_Click(); });

  main.mnuMakeDefaultBtn->setEnabled(true);
  connect(main.mnuMakeDefaultBtn, &QAction::triggered, this, [this] { mnuMakeDefaultBtn_Click(); });

  // The design window's pop-up and keys reach the same commands.
  if (frmDesign* d = main.Design()) {
    d->btnAddBtn_Click = [this] { btnAddBtn_Click(); };
    d->pub_mnuPaste_Click = [this] { pub_mnuPaste_Click(); };
    d->CutItem = [this] { CutItem(); };
    d->CopyItem = [this] { CopyItem(); };
    d->PasteItem = [this] { PasteItem(); };
  }
  ApplyTexts();
}

void ButtonList::ApplyTexts() {
  const UiTexts& t = Texts();
  for (QPushButton* b : {btnAddBtn, btnDuplicate, btnRemove}) {
    const std::string name = b->objectName().toStdString();
    b->setText(QTextOf(t, name));
    b->setToolTip(QTextOf(t, name + ".ToolTip"));
  }
  for (QAction* a : {mnuCut, mnuCopy, mnuPaste, mnuDuplicate, mnuBringToFront, mnuSendBack})
    a->setText(QTextOf(t, a->objectName().toStdString()));
  const bool current = p_.iCurBtn >= 1 && p_.iCurBtn <= p_.ButtonCount;
  ShowDeleteCaption(current ? p_.button(p_.iCurBtn).sBName : std::string());
}

frmDesign* ButtonList::Design() { return main_.Design(); }

PlacementGaps ButtonList::Gaps() const {
  const SessionVars& s = Session();
  return GapsFor(s.bAlignXY, s.iGridX, s.iGridY);
}

std::string ButtonList::Get_FREE_sBName(int index) const { return kp::Get_FREE_sBName(p_, index); }

void ButtonList::ShowDeleteCaption(const std::string& name) {
  const std::string& word = TextOf(Texts(), "sDelete");
  mnuDelete->setText(ShownText(name.empty() ? word : word + " " + name));
}

// --- Add, duplicate, delete ------------------------------------------------------------

void ButtonList::ShowNewButton() {
  const int i = p_.iCurBtn;
  Design()->LoadButton(i);
  QListWidget* list = main_.lstButtons;
  while (list->count() < i) list->addItem(QString());
  list->item(i - 1)->setText(ShownText(p_.button(i).sBName));
  main_.SelectItem_lstButtons(i);
  panel_.ShowProp(i);
  // The handles and the label marker follow the new button.
  Design()->RedrawButton(i, true, true, false, true);
}

void ButtonList::btnAddBtn_Click() {
  StepScope step(main_, {});
  frmDesign* d = Design();
  NextPlacement next{d->sngNewBtnX, d->sngNewBtnY};
  const ListResult r = AddButton(p_, env_, next, Gaps());
  d->sngNewBtnX = next.x;
  d->sngNewBtnY = next.y;
  if (r == ListResult::ProcessEnds) {
    if (main_.endProcess) main_.endProcess(3);
    return;
  }
  if (r == ListResult::Done) ShowNewButton();
}

void ButtonList::btnDuplicate_Click() {
  StepScope step(main_, Words().Duplicate);
  if (DuplicateButton(p_, env_) == ListResult::Done) ShowNewButton();
}

void ButtonList::btnRemove_Click() {
  if (p_.iCurBtn == 0 || p_.ButtonCount < 1) return;
  StepScope step(main_, {});
  env_.prompter.Busy(true);
  const int from = p_.iCurBtn;
  const int last = p_.ButtonCount;
  RemoveCurrentButton(p_);
  // The records moved down one; each surface shows its new record, and the
  // last surface is no button any more.
  for (int i = from; i <= last - 1; ++i) Design()->RedrawButton(i, false, false, false, true);
  Design()->RemoveButton(last);
  delete main_.lstButtons->takeItem(from - 1);
  if (p_.ButtonCount > 0) {
    main_.SelectItem_lstButtons(1);
    panel_.ShowProp(1);
    Design()->RedrawButton(1, true, true, true, false);
  } else {
    // No button left: no handles, no marker; the panel keeps its text.
    Design()->HideSizers();
    Design()->picLabelPositioner.visible = false;
    Design()->update();
  }
  env_.prompter.Busy(false);
}

// --- Names ---------------------------------------------------------------------------------

void ButtonList::RenameRows(const std::vector<int>& rows) {
  QListWidget* list = main_.lstButtons;
  for (int i : rows)
    if (i >= 1 && i <= list->count()) list->item(i - 1)->setText(ShownText(p_.button(i).sBName));
}

void ButtonList::txt_btnName_KeyUp() {
  if (p_.bFillingPanel) return;
  const std::vector<int> selected = panel_.SelectedButtons();
  const std::string name = SetButtonNames(p_, selected, ModelText(panel_.txt_btnName->text()));
  RenameRows(selected);
  main_.frameBtnProp->setTitle(QTextOf(frmMain::Texts(), "frameBtnProp") + ShownText(name));
  ShowDeleteCaption(name);
}

// --- Clipboard and default button -------------------------------------------------------------

void ButtonList::mnuCopy_Click() { CopyButton(p_, env_); }

void ButtonList::mnuCut_Click() {
  StepScope step(main_, Words().Cut);
  if (!CopyButton(p_, env_)) return;
  btnRemove_Click();
}

void ButtonList::mnuPaste_Click() {
  StepScope step(main_, Words().Paste);
  const int before = p_.ButtonCount;
  btnAddBtn_Click();
  if (p_.ButtonCount == before) return;
  if (!PasteOverCurrent(p_, env_)) {
    if (main_.endProcess) main_.endProcess(3);
    return;
  }
  RenameRows({p_.iCurBtn});
  panel_.ShowProp(p_.iCurBtn);
  Design()->RedrawButton(p_.iCurBtn, true, true, false, true);
}

void ButtonList::mnuMakeDefaultBtn_Click() { MakeDefaultButtonFromCurrent(p_, env_); }

// --- Stacking ---------------------------------------------------------------------------------

void ButtonList::mnuBringToFront_Click() {
  const EditMenuState m = EditMenuStateOf(p_, panel_.SelectedRowCount(), "");
  if (!m.bringToFront) return;
  StepScope step(main_, Words().BringToFront);
  Design()->Public_mnuBringToFront_Click();
}

void ButtonList::mnuSendBack_Click() {
  const EditMenuState m = EditMenuStateOf(p_, panel_.SelectedRowCount(), "");
  if (!m.sendBack) return;
  StepScope step(main_, Words().SendBack);
  Design()->Public_mnuSendBack_Click();
}

// --- The Edit menu ------------------------------------------------------------------------------

void ButtonList::mnuEdit_Click() {
  const EditMenuState m =
      EditMenuStateOf(p_, panel_.SelectedRowCount(), TextOf(Texts(), "sDelete"));
  QMenu* edit = main_.mnuEdit;
  // The alignment entries are the design window's block of this menu.
  if (auto* align = edit->findChild<QMenu*>("mnuAlign")) align->menuAction()->setEnabled(m.align);
  for (QAction* a : edit->actions())
    if (a->objectName() == "mnuAlign") a->setEnabled(m.align);
  mnuBringToFront->setEnabled(m.bringToFront);
  mnuSendBack->setEnabled(m.sendBack);
  mnuCut->setEnabled(m.cutCopyDuplicate);
  mnuCopy->setEnabled(m.cutCopyDuplicate);
  mnuDuplicate->setEnabled(m.cutCopyDuplicate);
  mnuDelete->setEnabled(m.remove);
  mnuDelete->setText(ShownText(m.deleteCaption));
}

}  // namespace kp
