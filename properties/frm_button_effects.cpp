#include "properties/frm_button_effects.h"

#include <QComboBox>
#include <QEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include "core/conv.h"
#include "design/colour_box.h"
#include "design/frm_design.h"
#include "properties/button_panel.h"
#include "properties/colour_dialog.h"
#include "properties/frm_main.h"
#include "properties/window_lang.h"

namespace kp {

// The order is the order of the "[frmButtonSpecial]" section of a language file.
UiTexts& frmButtonSpecial::Texts() {
  static UiTexts t = {
      {"frameFade", " Button Fade "},
      {"lblBackColor", "Button Color:"},
      {"lblFadeColor", "Fade Color:"},
      {"btnChangeColors.ToolTip", "Swap Colors"},
      {"frameFrame", " Frame "},
      {"lblFrameColor", "color:"},
      {"lblFrameThick", "thick:"},
      {"lblFrameNote", "Frame is visible in browser only"},
      {"frameTFrame", " Text Border: "},
      {"lblColor", "color:"},
      {"lblThick", "thick:"},
      {"lblShade", "shade:"},
      {"cmbLight0", "Dark"},
      {"cmbLight1", "Light"},
      {"cmbLeftToRight0", "Top->Down"},
      {"cmbLeftToRight1", "Left->Right"},
      {"btnClose", "Close"},
      {"btnChangeColors", "<->"},
      {"cmbFadeStyle.0", "Mono Color"},
      {"cmbFadeStyle.1", "Left <-> Right"},
      {"cmbFadeStyle.2", "Top <-> Bottom"},
      {"cmbFadeStyle.3", "Left <- Center -> Right"},
      {"cmbFadeStyle.4", "Top <- Center -> Bottom"},
  };
  return t;
}

namespace {

const char* const kFadeStyles[] = {"Mono Color", "Left <-> Right", "Top <-> Bottom",
                                   "Left <- Center -> Right", "Top <- Center -> Bottom"};

std::string FieldText(const QLineEdit* f) { return PathBytes(f->text()); }

void SelectIndex(QComboBox* c, int index) {
  c->setCurrentIndex(index >= 0 && index < c->count() ? index : -1);
}

}  // namespace

frmButtonSpecial::frmButtonSpecial(frmMain& main, ButtonPanel& panel, Project& p, Env& env,
                                   const LangSettings& lang)
    : QDialog(&main), main_(main), panel_(panel), p_(p), env_(env) {
  setObjectName("frmButtonSpecial");
  ApplyLanguageSection(env_, lang, Texts(), "[frmButtonSpecial]");
  BuildControls();
  BuildLayout();
  ApplyTexts();
  Connect();
}

void frmButtonSpecial::BuildControls() {
  auto colour = [this](const char* name) {
    auto* b = NamedControl(new ColourBox(this), name);
    b->setFixedSize(40, 20);
    return b;
  };
  auto field = [this](const char* name) {
    auto* f = NamedControl(new QLineEdit(this), name);
    f->setFixedWidth(48);
    f->installEventFilter(this);
    return f;
  };
  auto bar = [this](const char* name, int hi) {
    auto* s = NamedControl(new QScrollBar(Qt::Horizontal, this), name);
    s->setRange(0, hi);
    s->setMinimumWidth(100);
    return s;
  };
  cmbFadeStyle = NamedControl(new QComboBox(this), "cmbFadeStyle");
  for (const char* s : kFadeStyles) cmbFadeStyle->addItem(QString::fromLatin1(s));
  picBackColor = colour("picBackColor");
  picFadeColor = colour("picFadeColor");
  btnChangeColors = NamedControl(new QPushButton(this), "btnChangeColors");
  picFrameColor = colour("picFrameColor");
  txtFrameThick = field("txtFrameThick");
  scrollFrameThick = bar("scrollFrameThick", 999);
  lblFrameNote = NamedControl(new QLabel(this), "lblFrameNote");
  picColor = colour("picColor");
  txtThick = field("txtThick");
  scrollThick = bar("scrollThick", 9);
  txtShade = field("txtShade");
  scrollShade = bar("scrollShade", 999);
  cmbLight = NamedControl(new QComboBox(this), "cmbLight");
  cmbLeftToRight = NamedControl(new QComboBox(this), "cmbLeftToRight");
  btnClose = NamedControl(new QPushButton(this), "btnClose");
  for (QPushButton* b : {btnChangeColors, btnClose}) b->setAutoDefault(false);
  // The form's defaults, which the copy reads until the form is filled.
  txtThick->setText("0");
  txtShade->setText("0");
  txtFrameThick->setText("0");
}

void frmButtonSpecial::BuildLayout() {
  const UiTexts& t = Texts();
  auto label = [&](const char* name) {
    auto* l = NamedControl(new QLabel(this), name);
    l->setText(QTextOf(t, name));
    return l;
  };
  auto* fade = NamedControl(new QGroupBox(this), "frameFade");
  auto* fg = new QGridLayout(fade);
  fg->addWidget(cmbFadeStyle, 0, 0, 1, 5);
  fg->addWidget(label("lblBackColor"), 1, 0);
  fg->addWidget(picBackColor, 1, 1);
  fg->addWidget(btnChangeColors, 1, 2);
  fg->addWidget(label("lblFadeColor"), 1, 3);
  fg->addWidget(picFadeColor, 1, 4);

  auto* frame = NamedControl(new QGroupBox(this), "frameFrame");
  auto* rg = new QGridLayout(frame);
  rg->addWidget(label("lblFrameColor"), 0, 0);
  rg->addWidget(picFrameColor, 0, 1);
  rg->addWidget(label("lblFrameThick"), 1, 0);
  rg->addWidget(txtFrameThick, 1, 1);
  rg->addWidget(scrollFrameThick, 1, 2);
  rg->addWidget(lblFrameNote, 2, 0, 1, 3);

  auto* text = NamedControl(new QGroupBox(this), "frameTFrame");
  auto* tg = new QGridLayout(text);
  tg->addWidget(label("lblColor"), 0, 0);
  tg->addWidget(picColor, 0, 1);
  tg->addWidget(cmbLight, 0, 2);
  tg->addWidget(label("lblThick"), 1, 0);
  tg->addWidget(txtThick, 1, 1);
  tg->addWidget(scrollThick, 1, 2);
  tg->addWidget(label("lblShade"), 2, 0);
  tg->addWidget(txtShade, 2, 1);
  tg->addWidget(scrollShade, 2, 2);
  tg->addWidget(cmbLeftToRight, 3, 0, 1, 3);

  auto* close = new QHBoxLayout;
  close->addStretch();
  close->addWidget(btnClose);
  auto* box = new QVBoxLayout(this);
  box->addWidget(fade);
  box->addWidget(frame);
  box->addWidget(text);
  box->addLayout(close);
}

void frmButtonSpecial::ApplyTexts() {
  const UiTexts& t = Texts();
  SetItemTexts(cmbFadeStyle, t);
  for (const char* name : {"frameFade", "frameFrame", "frameTFrame"})
    findChild<QGroupBox*>(name)->setTitle(QTextOf(t, name));
  btnChangeColors->setText(QTextOf(t, "btnChangeColors"));
  btnChangeColors->setToolTip(QTextOf(t, "btnChangeColors.ToolTip"));
  lblFrameNote->setText(QTextOf(t, "lblFrameNote"));
  cmbLight->addItems({QTextOf(t, "cmbLight0"), QTextOf(t, "cmbLight1")});
  cmbLeftToRight->addItems({QTextOf(t, "cmbLeftToRight0"), QTextOf(t, "cmbLeftToRight1")});
  btnClose->setText(QTextOf(t, "btnClose"));
}

void frmButtonSpecial::Connect() {
  connect(cmbFadeStyle, &QComboBox::activated, this, [this] { cmbFadeStyle_Click(); });
  connect(cmbLight, &QComboBox::activated, this, [this] { cmbLight_Click(); });
  connect(cmbLeftToRight, &QComboBox::activated, this, [this] { cmbLeftToRight_Click(); });
  picBackColor->onClick = [this] { picBackColor_Click(); };
  picFadeColor->onClick = [this] { picFadeColor_Click(); };
  picFrameColor->onClick = [this] { picFrameColor_Click(); };
  picColor->onClick = [this] { picColor_Click(); };
  connect(btnChangeColors, &QPushButton::clicked, this, [this] { btnChangeColors_Click(); });
  connect(btnClose, &QPushButton::clicked, this, [this] { btnClose_Click(); });
  connect(txtFrameThick, &QLineEdit::textChanged, this, [this] { txtFrameThick_Change(); });
  connect(txtThick, &QLineEdit::textChanged, this, [this] { txtThick_Change(); });
  connect(txtShade, &QLineEdit::textChanged, this, [this] { txtShade_Change(); });
  connect(scrollFrameThick, &QScrollBar::valueChanged, this,
          [this] { ScrollChanged(scrollFrameThick, txtFrameThick); });
  connect(scrollThick, &QScrollBar::valueChanged, this,
          [this] { ScrollChanged(scrollThick, txtThick); });
  connect(scrollShade, &QScrollBar::valueChanged, this,
          [this] { ScrollChanged(scrollShade, txtShade); });
}

// --- Filling -------------------------------------------------------------------------

void frmButtonSpecial::ShowDialog() {
  setWindowTitle(panel_.btnTFrame->toolTip());
  Form_Activate();
  show();
  raise();
  activateWindow();
}

void frmButtonSpecial::Form_Activate() {
  const int s = GetStateIndex(p_);
  if (p_.iCurBtn < 1 || p_.iCurBtn > p_.ButtonCount || s == 0) return;
  mark_ = true;
  const tButton& b = p_.button(p_.iCurBtn);
  SelectIndex(cmbFadeStyle, b.FadeStyle[s]);
  picBackColor->setColour(b.BackColor[s]);
  picFadeColor->setColour(b.FadeColor[s]);
  picFrameColor->setColour(b.FrameColor[s]);
  txtFrameThick->setText(QString::number(b.FrameThick[s]));
  SyncScroll(scrollFrameThick, b.FrameThick[s]);
  picColor->setColour(b.TFrameColor[s]);
  txtThick->setText(QString::number(b.TFrameThick[s]));
  SyncScroll(scrollThick, b.TFrameThick[s]);
  txtShade->setText(QString::number(b.TFrameShade[s]));
  SyncScroll(scrollShade, b.TFrameShade[s]);
  cmbLight->setCurrentIndex(b.TFrameLight[s] ? 1 : 0);
  cmbLeftToRight->setCurrentIndex(b.TFrameLeftToRight[s] ? 1 : 0);
  mark_ = false;
}

SpecialControls frmButtonSpecial::ReadControls() const {
  SpecialControls c;
  c.picColor = picColor->colour();
  c.txtThick = FieldText(txtThick);
  c.txtShade = FieldText(txtShade);
  c.cmbLight = cmbLight->currentIndex();
  c.cmbLeftToRight = cmbLeftToRight->currentIndex();
  c.picFrameColor = picFrameColor->colour();
  c.txtFrameThick = FieldText(txtFrameThick);
  c.picBackColor = picBackColor->colour();
  c.picFadeColor = picFadeColor->colour();
  c.cmbFadeStyle = cmbFadeStyle->currentIndex();
  return c;
}

// --- The write path ----------------------------------------------------------------------

void frmButtonSpecial::Write(SpecialControl c, const std::string& value) {
  if (mark_) return;
  const WriteOutcome w = WriteSpecialValue(p_, panel_.SelectedButtons(), c, value);
  if (!w.ran) return;
  if (SpecialRedraws(c)) Redraw(w.written);
  panel_.SetLastChange(w.code);
}

void frmButtonSpecial::Redraw(const std::vector<int>& written) {
  for (int i : written) main_.Design()->RedrawButton(i, false, false, false, true);
}

bool frmButtonSpecial::PickColour(ColourBox* box) {
  const Colour chosen = ChooseColour(this, box->colour());
  if (chosen == -1) return false;
  box->setColour(chosen);
  return true;
}

void frmButtonSpecial::cmbFadeStyle_Click() {
  Write(SpecialControl::cmbFadeStyle, std::to_string(cmbFadeStyle->currentIndex()));
}

void frmButtonSpecial::picBackColor_Click() {
  if (PickColour(picBackColor))
    Write(SpecialControl::picBackColor, std::to_string(picBackColor->colour()));
}

void frmButtonSpecial::picFadeColor_Click() {
  if (PickColour(picFadeColor))
    Write(SpecialControl::picFadeColor, std::to_string(picFadeColor->colour()));
}

void frmButtonSpecial::btnChangeColors_Click() {
  const WriteOutcome w = SwapButtonColours(p_, panel_.SelectedButtons());
  if (!w.ran) return;
  Redraw(w.written);
  const Colour back = picBackColor->colour();
  picBackColor->setColour(picFadeColor->colour());
  picFadeColor->setColour(back);
  panel_.SetLastChange(w.code);
}

void frmButtonSpecial::picFrameColor_Click() {
  if (PickColour(picFrameColor))
    Write(SpecialControl::picFrameColor, std::to_string(picFrameColor->colour()));
}

void frmButtonSpecial::picColor_Click() {
  if (PickColour(picColor)) Write(SpecialControl::picColor, std::to_string(picColor->colour()));
}

void frmButtonSpecial::TextChanged(SpecialControl c, QLineEdit* field, QScrollBar* bar) {
  if (mark_) return;
  Write(c, FieldText(field));
  if (!scrollMark_) SyncScroll(bar, MakeCInt(FieldText(field), 0));
}

void frmButtonSpecial::txtFrameThick_Change() {
  TextChanged(SpecialControl::txtFrameThick, txtFrameThick, scrollFrameThick);
}

void frmButtonSpecial::txtThick_Change() {
  TextChanged(SpecialControl::txtThick, txtThick, scrollThick);
}

void frmButtonSpecial::txtShade_Change() {
  TextChanged(SpecialControl::txtShade, txtShade, scrollShade);
}

void frmButtonSpecial::cmbLight_Click() {
  Write(SpecialControl::cmbLight, std::to_string(cmbLight->currentIndex()));
}

void frmButtonSpecial::cmbLeftToRight_Click() {
  Write(SpecialControl::cmbLeftToRight, std::to_string(cmbLeftToRight->currentIndex()));
}

void frmButtonSpecial::btnClose_Click() { hide(); }

void frmButtonSpecial::ScrollChanged(QScrollBar* bar, QLineEdit* field) {
  if (mark_) return;
  scrollMark_ = true;
  field->setText(QString::number(bar->value()));
  scrollMark_ = false;
}

void frmButtonSpecial::SyncScroll(QScrollBar* bar, i16 value) {
  // A value beyond the bar is kept in the model; the bar stays.
  if (value < bar->minimum() || value > bar->maximum()) return;
  QSignalBlocker quiet(bar);
  bar->setValue(value);
}

// --- Events ----------------------------------------------------------------------------

bool frmButtonSpecial::event(QEvent* e) {
  if (e->type() == QEvent::WindowActivate) Form_Activate();
  return QDialog::event(e);
}

bool frmButtonSpecial::eventFilter(QObject* watched, QEvent* e) {
  if (e->type() != QEvent::KeyPress) return false;
  const int key = static_cast<QKeyEvent*>(e)->key();
  if (key != Qt::Key_Return && key != Qt::Key_Enter) return false;
  QLineEdit* next = watched == txtThick        ? txtShade
                    : watched == txtShade      ? txtFrameThick
                    : watched == txtFrameThick ? txtThick
                                               : nullptr;
  if (!next) return false;
  next->setFocus();
  next->selectAll();
  return true;
}

// --- frmDescent ----------------------------------------------------------------------------

UiTexts& frmDescent::Texts() {
  static UiTexts t = {
      {"frmDescent", "Button's Label Down State Descent"},
      {"lblNote", "Button down state labels will be lowered by these values:"},
      {"lblX", "left (x):"},
      {"lblY", "top (y):"},
      {"lblIgnored", "these values are ignored in case of manual positioning"},
      {"btnOK", "&OK"},
      {"btnCANCEL", "&Cancel"},
      {"btnRestoreDefaults", "Restore Defaults"},
  };
  return t;
}

frmDescent::frmDescent(QWidget* mainWindow, Project& p, Env& env, const LangSettings& lang)
    : QDialog(mainWindow), p_(p), env_(env) {
  setObjectName("frmDescent");
  setWindowModality(Qt::ApplicationModal);
  ApplyLanguageSection(env_, lang, Texts(), "[frmDescent]");
  const UiTexts& t = Texts();
  setWindowTitle(QTextOf(t, "frmDescent"));
  auto label = [&](const char* name) {
    auto* l = NamedControl(new QLabel(this), name);
    l->setText(QTextOf(t, name));
    return l;
  };
  txtX = NamedControl(new QLineEdit(this), "txtX");
  txtY = NamedControl(new QLineEdit(this), "txtY");
  for (QLineEdit* f : {txtX, txtY}) {
    f->setFixedWidth(56);
    f->installEventFilter(this);
  }
  btnOK = NamedControl(new QPushButton(QTextOf(t, "btnOK"), this), "btnOK");
  btnCANCEL = NamedControl(new QPushButton(QTextOf(t, "btnCANCEL"), this), "btnCANCEL");
  btnRestoreDefaults =
      NamedControl(new QPushButton(QTextOf(t, "btnRestoreDefaults"), this), "btnRestoreDefaults");
  for (QPushButton* b : {btnOK, btnCANCEL, btnRestoreDefaults}) b->setAutoDefault(false);
  auto* g = new QGridLayout;
  g->addWidget(label("lblX"), 0, 0);
  g->addWidget(txtX, 0, 1);
  g->addWidget(label("lblY"), 1, 0);
  g->addWidget(txtY, 1, 1);
  g->setColumnStretch(2, 1);
  auto* buttons = new QHBoxLayout;
  buttons->addWidget(btnRestoreDefaults);
  buttons->addStretch();
  buttons->addWidget(btnOK);
  buttons->addWidget(btnCANCEL);
  auto* box = new QVBoxLayout(this);
  box->addWidget(label("lblNote"));
  box->addLayout(g);
  box->addWidget(label("lblIgnored"));
  box->addLayout(buttons);
  connect(btnOK, &QPushButton::clicked, this, [this] { btnOK_Click(); });
  connect(btnCANCEL, &QPushButton::clicked, this, [this] { btnCANCEL_Click(); });
  connect(btnRestoreDefaults, &QPushButton::clicked, this, [this] { btnRestoreDefaults_Click(); });
}

void frmDescent::Form_Load() {
  txtX->setText(QString::number(p_.iDescentX));
  txtY->setText(QString::number(p_.iDescentY));
}

void frmDescent::ShowDialog() {
  Form_Load();
  show();
  raise();
  activateWindow();
  txtX->setFocus();
}

void frmDescent::btnOK_Click() {
  StoreDescent(p_, FieldText(txtX), FieldText(txtY));
  hide();
}

void frmDescent::btnCANCEL_Click() { hide(); }

void frmDescent::btnRestoreDefaults_Click() {
  txtX->setText("1");
  txtY->setText("1");
}

bool frmDescent::eventFilter(QObject* watched, QEvent* e) {
  if (e->type() != QEvent::KeyPress) return false;
  const int key = static_cast<QKeyEvent*>(e)->key();
  if (key != Qt::Key_Return && key != Qt::Key_Enter) return false;
  if (watched == txtX) {
    txtY->setFocus();
    txtY->selectAll();
    return true;
  }
  if (watched == txtY) {
    btnOK->click();
    return true;
  }
  return false;
}

}  // namespace kp
