#include "properties/frm_set_action.h"

#include <QClipboard>
#include <QCloseEvent>
#include <QComboBox>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QToolButton>

#include "core/conv.h"
#include "core/settings.h"
#include "core/text_tools.h"
#include "properties/button_panel.h"
#include "properties/colour_dialog.h"
#include "properties/frm_main.h"
#include "properties/window_lang.h"

namespace kp {

namespace {

// What a failed list assignment reports as its description.
constexpr const char* kBadRowDescription = "Invalid property array index";

std::string Bytes(const QLineEdit* f) { return ModelText(f->text()); }
std::string Bytes(const QComboBox* c) { return ModelText(c->currentText()); }

bool IsEnter(QEvent* e) {
  if (e->type() != QEvent::KeyPress) return false;
  const int key = static_cast<QKeyEvent*>(e)->key();
  return key == Qt::Key_Return || key == Qt::Key_Enter;
}

}  // namespace

frmSetAction::frmSetAction(QWidget* mainWindow, Project& p, Env& env,
                           std::function<std::vector<int>()> selected)
    : QDialog(mainWindow), mainWindow_(mainWindow), p_(p), env_(env), selected_(std::move(selected)) {
  setObjectName("frmSetAction");
  setModal(true);
  BuildControls();
  BuildLayout();
  ApplyLanguageSection(env_, Texts(), "[frmSetAction]");
  ApplyTexts();
  Connect();
  enterAdds_ = {cmbBlinkDelay, cmbBlinkDelay->lineEdit(), cmbButtonNumber,
                cmbButtonNumber->lineEdit(), lsMiliseconds, lsMiliseconds->lineEdit(),
                txtFrameDelay, txtJavaScript, txtLabel};
  enterMoves_ = {{txtX, txtY},           {txtY, txtWidth},        {txtWidth, txtHeight},
                 {txtHeight, txtFrames}, {txtFrames, txtFrameDelay}, {txtBlinkCount, cmbBlinkDelay}};
}

frmSetAction* frmSetAction::Of(frmMain& main, Project& p, Env& env) {
  auto* w = main.findChild<frmSetAction*>("frmSetAction", Qt::FindDirectChildrenOnly);
  if (w) return w;
  return new frmSetAction(&main, p, env, [&main, &p] {
    std::vector<int> out;
    for (int i = 1; i <= p.ButtonCount; ++i)
      if (main.IsSelected(i)) out.push_back(i);
    return out;
  });
}

void frmSetAction::Connect() {
  connect(cmbAction, &QComboBox::currentIndexChanged, this, [this] { cmbAction_Click(); });
  connect(lstActions, &QListWidget::itemPressed, this, [this] { lstActions_MouseDown(); });
  connect(lstActions, &QListWidget::currentRowChanged, this, [this](int row) {
    // The whole line, for lines wider than the list.
    lstActions->setToolTip(row >= 0 ? lstActions->item(row)->text() : QString());
  });
  connect(btnAdd, &QPushButton::clicked, this, [this] { btnAdd_Click(); });
  connect(btnReplace, &QPushButton::clicked, this, [this] { btnReplace_Click(); });
  connect(btnRemove, &QPushButton::clicked, this, [this] { btnRemove_Click(); });
  connect(btnUP, &QToolButton::clicked, this, [this] { btnUP_Click(); });
  connect(btnDown, &QToolButton::clicked, this, [this] { btnDown_Click(); });
  connect(btnGetHexColor, &QPushButton::clicked, this, [this] { btnGetHexColor_Click(); });
  connect(btnCopyProg, &QPushButton::clicked, this, [this] { btnCopyProg_Click(); });
  connect(btnPasteProg, &QPushButton::clicked, this, [this] { btnPasteProg_Click(); });
  connect(btnOK, &QPushButton::clicked, this, [this] { btnOK_Click(); });
  connect(btnCANCEL, &QPushButton::clicked, this, [this] { btnCANCEL_Click(); });
}

void frmSetAction::myShow(const std::string& key, const std::string& caption) {
  strReturnTo = key;
  setWindowTitle(DisplayText(caption));
  Form_Load();
  exec();
}

void frmSetAction::Form_Load() {
  if (mainWindow_) setWindowIcon(mainWindow_->windowIcon());
  sSorryIDont = TextOf(Texts(), "sSorryIDont");
  sNoActionSelected = TextOf(Texts(), "sNoActionSelected");
  ApplyTexts();
  // A fresh form: nothing typed survives a close.
  for (QLineEdit* f : findChildren<QLineEdit*>()) f->clear();

  cmbButtonNumber->clear();
  for (int i = 1; i <= p_.ButtonCount; ++i) cmbButtonNumber->addItem(DisplayText(p_.button(i).sBName));
  if (cmbButtonNumber->count() > 0) cmbButtonNumber->setCurrentIndex(0);
  cmbButtonNumber->setEditText(cmbButtonNumber->itemText(0));

  cmbAction->setCurrentIndex(0);
  cmbAction_Click();
  cmbStateSelector->clear();
  for (const std::string& s : LineTexts().states) cmbStateSelector->addItem(DisplayText(s));
  cmbStateSelector->setCurrentIndex(0);

  const std::optional<std::string> program = ProgramToEdit(strReturnTo, p_);
  if (!program) env_.prompter.MsgBox(TextOf(Texts(), "sWrongReturn"));
  editor_.Load(program.value_or(""));
  Rebuild();
  SelectRow(-1);
  // The list would take its first row as current with the focus.
  cmbAction->setFocus();
}

ActionTexts frmSetAction::LineTexts() const {
  ActionTexts t;
  for (int i = 0; i < 10; ++i) t.actions[static_cast<size_t>(i)] = ModelText(cmbAction->itemText(i));
  const UiTexts& panel = ButtonPanel::Texts();
  t.states = {TextOf(panel, "btnUpState"), TextOf(panel, "btnOverState"),
              TextOf(panel, "btnDownState")};
  t.lblWidth = ModelText(lblWidth->text());
  t.lblHeight = ModelText(lblHeight->text());
  return t;
}

void frmSetAction::cmbAction_Click() {
  const ActionPanels s = PanelsFor(cmbAction->currentIndex());
  picActionMove->setVisible(s.move);
  picSetLabel->setVisible(s.setLabel);
  btnGetHexColor->setVisible(s.hexColor);
  if (s.hexColor) txtLabel->clear();
  cmbButtonNumber->setVisible(s.buttonNumber);
  picSetTimer->setVisible(s.timer);
  txtJavaScript->setVisible(s.javaScript);
  txtLabel->setVisible(s.label);
  picBlink->setVisible(s.blink);
}

// --- The two lists ----------------------------------------------------------------------

void frmSetAction::Rebuild() {
  lstActions->clear();
  lstActionsCode->clear();
  for (const std::string& c : editor_.Commands()) lstActionsCode->addItem(DisplayText(c));
  for (const std::string& line : editor_.Lines(LineTexts())) lstActions->addItem(DisplayText(line));
}

int frmSetAction::SelectedRow() const {
  QListWidgetItem* item = lstActions->currentItem();
  return item && item->isSelected() ? lstActions->row(item) : -1;
}

void frmSetAction::SelectRow(int row) {
  if (row >= 0 && row < lstActions->count()) {
    lstActions->setCurrentRow(row);
    return;
  }
  lstActions->setCurrentRow(-1);
  lstActions->clearSelection();
}

ActionFields frmSetAction::ReadFields() const {
  ActionFields f;
  f.action = cmbAction->currentIndex();
  f.button = Bytes(cmbButtonNumber);
  f.stateIndex = cmbStateSelector->currentIndex();
  f.x = Bytes(txtX);
  f.y = Bytes(txtY);
  f.width = Bytes(txtWidth);
  f.height = Bytes(txtHeight);
  f.frames = Bytes(txtFrames);
  f.frameDelay = Bytes(txtFrameDelay);
  f.label = Bytes(txtLabel);
  f.milliseconds = Bytes(lsMiliseconds);
  f.script = Bytes(txtJavaScript);
  f.blinkCount = Bytes(txtBlinkCount);
  f.blinkDelay = Bytes(cmbBlinkDelay);
  return f;
}

void frmSetAction::ShowFields(const ActionFields& f) {
  // An editable list takes any name, one that no button has any more too.
  cmbButtonNumber->setEditText(DisplayText(f.button));
  if (f.stateIndex >= 0 && f.stateIndex < cmbStateSelector->count())
    cmbStateSelector->setCurrentIndex(f.stateIndex);
  txtX->setText(DisplayText(f.x));
  txtY->setText(DisplayText(f.y));
  txtWidth->setText(DisplayText(f.width));
  txtHeight->setText(DisplayText(f.height));
  txtFrames->setText(DisplayText(f.frames));
  txtFrameDelay->setText(DisplayText(f.frameDelay));
  txtLabel->setText(DisplayText(f.label));
  lsMiliseconds->setEditText(DisplayText(f.milliseconds));
  txtJavaScript->setText(DisplayText(f.script));
  txtBlinkCount->setText(DisplayText(f.blinkCount));
  cmbBlinkDelay->setEditText(DisplayText(f.blinkDelay));
}

void frmSetAction::lstActions_MouseDown() {
  const int row = SelectedRow();
  if (row < 0 || row >= static_cast<int>(editor_.Commands().size())) return;
  ActionFields f = ReadFields();
  ReadCommandInto(editor_.Commands()[static_cast<size_t>(row)], f);
  // A command of unknown code cannot be selected in cmbAction.
  if (!f.known) return;
  cmbAction->setCurrentIndex(f.action);
  cmbAction_Click();
  ShowFields(f);
}

// --- Commands ---------------------------------------------------------------------------

void frmSetAction::AddOrReplace(bool add) {
  const int row = SelectedRow();
  if (!add && row < 0) {
    env_.prompter.MsgBox(sNoActionSelected, Buttons::OK, sSorryIDont);
    return;
  }
  ActionFields f = ReadFields();
  const AddResult r = PrepareCommand(f, cmbButtonNumber->count() > 0);
  if (r.verdict == AddVerdict::NoButtons) {
    env_.prompter.MsgBox(TextOf(Texts(), "sNoButtons"));
    return;
  }
  if (r.labelBlanked) txtLabel->setText(DisplayText(f.label));
  if (r.verdict != AddVerdict::Ready) return;
  if (add) {
    editor_.Add(r.command);
    Rebuild();
    SelectRow(lstActions->count() - 1);
    return;
  }
  if (!editor_.Replace(row, r.command)) {
    env_.prompter.MsgBox(TextOf(Texts(), "sErrorOnAdd") + sCRLF + kBadRowDescription);
    return;
  }
  Rebuild();
  SelectRow(row);
}

void frmSetAction::btnRemove_Click() {
  const int row = SelectedRow();
  if (row < 0) return;
  const int next = editor_.Remove(row, LineTexts());
  Rebuild();
  SelectRow(next);
}

void frmSetAction::btnUP_Click() {
  const int moved = editor_.Up(SelectedRow());
  if (moved < 0) return;
  Rebuild();
  SelectRow(moved);
}

void frmSetAction::btnDown_Click() {
  const int moved = editor_.Down(SelectedRow());
  if (moved < 0) return;
  Rebuild();
  SelectRow(moved);
}

void frmSetAction::btnGetHexColor_Click() {
  const Colour c = ChooseColour(this, 0);
  if (c == -1) return;
  txtLabel->setText(QString::fromStdString(ColourToHexText(c)));
}

void frmSetAction::btnCopyProg_Click() {
  const std::string program = editor_.Program();
  SetParam(env_, "ProgClipBoard", program);
  QGuiApplication::clipboard()->setText(DisplayText(program));
}

void frmSetAction::btnPasteProg_Click() {
  // The setting only: the system clipboard may hold any text at all.
  const std::string program = GetParam(env_, "ProgClipBoard");
  if (program.empty()) return;
  editor_.Paste(program);
  Rebuild();
}

void frmSetAction::btnOK_Click() {
  StoreProgram(strReturnTo, editor_.Program(), p_, selected_ ? selected_() : std::vector<int>{});
  Close();
}

void frmSetAction::btnCANCEL_Click() { Close(); }

void frmSetAction::Close() {
  accept();
  if (mainWindow_) mainWindow_->activateWindow();
}

void frmSetAction::closeEvent(QCloseEvent* e) {
  // The title bar's close is Cancel.
  e->accept();
  QDialog::closeEvent(e);
}

// --- Keys -------------------------------------------------------------------------------

bool frmSetAction::eventFilter(QObject* watched, QEvent* e) {
  if (IsEnter(e)) {
    for (QObject* o : enterAdds_) {
      if (o != watched) continue;
      btnAdd_Click();
      return true;
    }
    for (const auto& [from, to] : enterMoves_) {
      if (from != watched) continue;
      to->setFocus(Qt::TabFocusReason);
      return true;
    }
  }
  return QDialog::eventFilter(watched, e);
}

}  // namespace kp
