#include "properties/frm_applet_dialogs.h"

#include <QCheckBox>
#include <QComboBox>
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
#include "core/settings.h"
#include "design/colour_box.h"
#include "properties/applet_options.h"
#include "properties/colour_dialog.h"
#include "properties/window_lang.h"

namespace kp {

namespace {

QLabel* NewLabel(QWidget* parent, const UiTexts& t, const char* name) {
  auto* l = NamedControl(new QLabel(parent), name);
  l->setText(QTextOf(t, name));
  return l;
}

ColourBox* NewColourBox(QWidget* parent, const char* name) {
  auto* b = NamedControl(new ColourBox(parent), name);
  b->setFixedSize(40, 20);
  return b;
}

QScrollBar* NewBar(QWidget* parent, const char* name, int lo, int hi) {
  auto* s = NamedControl(new QScrollBar(Qt::Horizontal, parent), name);
  s->setRange(lo, hi);
  s->setMinimumWidth(120);
  return s;
}

QLineEdit* NewField(QWidget* parent, const char* name) {
  auto* f = NamedControl(new QLineEdit(parent), name);
  f->setFixedWidth(56);
  return f;
}

std::string FieldText(const QLineEdit* f) { return PathBytes(f->text()); }

}  // namespace

// --- frmAppletBorder -----------------------------------------------------------------

UiTexts& frmAppletBorder::Texts() {
  static UiTexts t = {
      {"frmAppletBorder", "Applet Border"},
      {"frameBorder", " Applet Border: "},
      {"lblBorderWidth", "width:"},
      {"lblBorderShade", "shade:"},
      {"lblBorderColor", "color:"},
      {"chkAutoFullRepaint", "Auto"},
      {"btnRepainBackGround_and_border", "Repaint BackGround and Border"},
      {"cmbBorderStyle.0", "None"},
      {"cmbBorderStyle.1", "Raised"},
      {"cmbBorderStyle.2", "Lowered"},
      {"cmbBorderStyle.3", "Light"},
      {"cmbBorderStyle.4", "Dark"},
  };
  return t;
}

frmAppletBorder::frmAppletBorder(QWidget* mainWindow, Project& p, Env& env,
                                 const LangSettings& lang, RepaintBackGround repaint)
    : QDialog(mainWindow), p_(p), env_(env), repaint_(std::move(repaint)) {
  setObjectName("frmAppletBorder");
  ApplyLanguageSection(env_, lang, Texts(), "[frmAppletBorder]");
  const UiTexts& t = Texts();
  auto* frame = NamedControl(new QGroupBox(this), "frameBorder");
  cmbBorderStyle = NamedControl(new QComboBox(frame), "cmbBorderStyle");
  cmbBorderStyle->addItems({"None", "Raised", "Lowered", "Light", "Dark"});
  txtBorderWidth = NewField(frame, "txtBorderWidth");
  scrollBorderWidth = NewBar(frame, "scrollBorderWidth", 0, 999);
  txtBorderShade = NewField(frame, "txtBorderShade");
  scrollBorderShade = NewBar(frame, "scrollBorderShade", 0, 999);
  picBorderColor = NewColourBox(frame, "picBorderColor");
  chkAutoFullRepaint = NamedControl(new QCheckBox(frame), "chkAutoFullRepaint");
  btnRepainBackGround_and_border =
      NamedControl(new QPushButton(frame), "btnRepainBackGround_and_border");
  btnRepainBackGround_and_border->setAutoDefault(false);

  auto* g = new QGridLayout(frame);
  g->addWidget(cmbBorderStyle, 0, 0, 1, 2);
  g->addWidget(NewLabel(frame, t, "lblBorderColor"), 0, 2);
  g->addWidget(picBorderColor, 0, 3);
  g->addWidget(NewLabel(frame, t, "lblBorderWidth"), 1, 0);
  g->addWidget(txtBorderWidth, 1, 1);
  g->addWidget(scrollBorderWidth, 1, 2, 1, 2);
  g->addWidget(NewLabel(frame, t, "lblBorderShade"), 2, 0);
  g->addWidget(txtBorderShade, 2, 1);
  g->addWidget(scrollBorderShade, 2, 2, 1, 2);
  g->addWidget(chkAutoFullRepaint, 3, 0);
  g->addWidget(btnRepainBackGround_and_border, 3, 1, 1, 3);
  auto* box = new QVBoxLayout(this);
  box->addWidget(frame);

  connect(cmbBorderStyle, &QComboBox::activated, this, [this] { cmbBorderStyle_Click(); });
  connect(txtBorderWidth, &QLineEdit::textChanged, this, [this] { txtBorderWidth_Change(); });
  connect(txtBorderShade, &QLineEdit::textChanged, this, [this] { txtBorderShade_Change(); });
  connect(scrollBorderWidth, &QScrollBar::valueChanged, this,
          [this] { ScrollChanged(scrollBorderWidth, txtBorderWidth); });
  connect(scrollBorderShade, &QScrollBar::valueChanged, this,
          [this] { ScrollChanged(scrollBorderShade, txtBorderShade); });
  picBorderColor->onClick = [this] { picBorderColor_Click(); };
  connect(chkAutoFullRepaint, &QCheckBox::clicked, this, [this] { chkAutoFullRepaint_Click(); });
  connect(btnRepainBackGround_and_border, &QPushButton::clicked, this,
          [this] { btnRepainBackGround_and_border_Click(); });
  ApplyTexts();
  Form_Load();
}

void frmAppletBorder::ApplyTexts() {
  const UiTexts& t = Texts();
  setWindowTitle(QTextOf(t, "frmAppletBorder"));
  SetItemTexts(cmbBorderStyle, t);
  findChild<QGroupBox*>("frameBorder")->setTitle(QTextOf(t, "frameBorder"));
  chkAutoFullRepaint->setText(QTextOf(t, "chkAutoFullRepaint"));
  btnRepainBackGround_and_border->setText(QTextOf(t, "btnRepainBackGround_and_border"));
}

void frmAppletBorder::Form_Load() {
  filling_ = true;
  const int style = p_.iABorderStyle;
  cmbBorderStyle->setCurrentIndex(style >= 0 && style < cmbBorderStyle->count() ? style : -1);
  txtBorderWidth->setText(QString::number(p_.iABorderWidth));
  SyncScroll(scrollBorderWidth, p_.iABorderWidth);
  txtBorderShade->setText(QString::number(p_.iABorderShade));
  SyncScroll(scrollBorderShade, p_.iABorderShade);
  picBorderColor->setColour(p_.cABorderColor);
  const bool autoRepaint = GetParam(env_, "ABorder_AutoFullRepaint") != "0";
  chkAutoFullRepaint->setChecked(autoRepaint);
  btnRepainBackGround_and_border->setEnabled(!autoRepaint);
  filling_ = false;
}

void frmAppletBorder::ShowDialog() {
  Form_Load();
  show();
  raise();
  activateWindow();
}

void frmAppletBorder::Edited() {
  p_.bProjectSaved = false;
  if (chkAutoFullRepaint->isChecked() && repaint_) repaint_();
}

void frmAppletBorder::cmbBorderStyle_Click() {
  if (filling_) return;
  p_.iABorderStyle = static_cast<i16>(cmbBorderStyle->currentIndex());
  Edited();
}

void frmAppletBorder::txtBorderWidth_Change() {
  if (filling_) return;
  p_.iABorderWidth = MakeCInt(FieldText(txtBorderWidth), 0);
  if (!scrollMark_) SyncScroll(scrollBorderWidth, p_.iABorderWidth);
  Edited();
}

void frmAppletBorder::txtBorderShade_Change() {
  if (filling_) return;
  p_.iABorderShade = MakeCInt(FieldText(txtBorderShade), 0);
  if (!scrollMark_) SyncScroll(scrollBorderShade, p_.iABorderShade);
  Edited();
}

void frmAppletBorder::picBorderColor_Click() {
  const Colour chosen = ChooseColour(this, picBorderColor->colour());
  if (chosen == -1) return;
  picBorderColor->setColour(chosen);
  p_.cABorderColor = chosen;
  Edited();
}

void frmAppletBorder::chkAutoFullRepaint_Click() {
  const bool on = chkAutoFullRepaint->isChecked();
  SetParam(env_, "ABorder_AutoFullRepaint", on ? "1" : "0");
  btnRepainBackGround_and_border->setEnabled(!on);
}

void frmAppletBorder::btnRepainBackGround_and_border_Click() {
  if (repaint_) repaint_();
}

void frmAppletBorder::ScrollChanged(QScrollBar* bar, QLineEdit* field) {
  if (filling_) return;
  scrollMark_ = true;
  field->setText(QString::number(bar->value()));
  scrollMark_ = false;
}

void frmAppletBorder::SyncScroll(QScrollBar* bar, i16 value) {
  // A value beyond the bar stays in the model; the bar stays where it was.
  if (value < bar->minimum() || value > bar->maximum()) return;
  QSignalBlocker quiet(bar);
  bar->setValue(value);
}

// --- frmAppletFade -------------------------------------------------------------------

UiTexts& frmAppletFade::Texts() {
  static UiTexts t = {
      {"frmAppletFade", "Background Fade"},
      {"frameFade", " Applet Background Fade "},
      {"lblGeneralBackGround", "Back Color:"},
      {"lblFadeColor", "Fade Color:"},
      {"btnChangeColors", "<->"},
      {"btnChangeColors.ToolTip", "Swap Colors"},
      {"cmbFadeStyle.0", "Mono Color"},
      {"cmbFadeStyle.1", "Right <-> Left"},
      {"cmbFadeStyle.2", "Top <->  Bottom"},
      {"cmbFadeStyle.3", "Left <- Center -> Right"},
      {"cmbFadeStyle.4", "Top <- Center -> Bottom"},
  };
  return t;
}

frmAppletFade::frmAppletFade(QWidget* mainWindow, Project& p, Env& env, const LangSettings& lang,
                             RepaintBackGround repaint)
    : QDialog(mainWindow), p_(p), env_(env), repaint_(std::move(repaint)) {
  setObjectName("frmAppletFade");
  ApplyLanguageSection(env_, lang, Texts(), "[frmAppletFade]");
  const UiTexts& t = Texts();
  auto* frame = NamedControl(new QGroupBox(this), "frameFade");
  picGeneralBackGround = NewColourBox(frame, "picGeneralBackGround");
  picFadeColor = NewColourBox(frame, "picFadeColor");
  btnChangeColors = NamedControl(new QPushButton(frame), "btnChangeColors");
  btnChangeColors->setAutoDefault(false);
  cmbFadeStyle = NamedControl(new QComboBox(frame), "cmbFadeStyle");
  cmbFadeStyle->addItems({"Mono Color", "Right <-> Left", "Top <->  Bottom",
                          "Left <- Center -> Right", "Top <- Center -> Bottom"});
  auto* g = new QGridLayout(frame);
  g->addWidget(NewLabel(frame, t, "lblGeneralBackGround"), 0, 0);
  g->addWidget(picGeneralBackGround, 0, 1);
  g->addWidget(btnChangeColors, 0, 2);
  g->addWidget(NewLabel(frame, t, "lblFadeColor"), 0, 3);
  g->addWidget(picFadeColor, 0, 4);
  g->addWidget(cmbFadeStyle, 1, 0, 1, 5);
  auto* box = new QVBoxLayout(this);
  box->addWidget(frame);

  connect(cmbFadeStyle, &QComboBox::activated, this, [this] { cmbFadeStyle_Click(); });
  picGeneralBackGround->onClick = [this] { picGeneralBackGround_Click(); };
  picFadeColor->onClick = [this] { picFadeColor_Click(); };
  connect(btnChangeColors, &QPushButton::clicked, this, [this] { btnChangeColors_Click(); });
  ApplyTexts();
  Form_Load();
}

void frmAppletFade::ApplyTexts() {
  const UiTexts& t = Texts();
  setWindowTitle(QTextOf(t, "frmAppletFade"));
  SetItemTexts(cmbFadeStyle, t);
  findChild<QGroupBox*>("frameFade")->setTitle(QTextOf(t, "frameFade"));
  btnChangeColors->setText(QTextOf(t, "btnChangeColors"));
  btnChangeColors->setToolTip(QTextOf(t, "btnChangeColors.ToolTip"));
}

void frmAppletFade::Form_Load() {
  filling_ = true;
  picGeneralBackGround->setColour(p_.BackGround);
  picFadeColor->setColour(p_.cFadeColor);
  const int style = p_.iFadeStyle;
  cmbFadeStyle->setCurrentIndex(style >= 0 && style < cmbFadeStyle->count() ? style : -1);
  filling_ = false;
}

void frmAppletFade::ShowDialog() {
  Form_Load();
  show();
  raise();
  activateWindow();
}

void frmAppletFade::cmbFadeStyle_Click() {
  if (filling_) return;
  p_.iFadeStyle = static_cast<i16>(cmbFadeStyle->currentIndex());
  p_.bProjectSaved = false;
  if (repaint_) repaint_();
}

void frmAppletFade::picGeneralBackGround_Click() {
  const Colour chosen = ChooseColour(this, picGeneralBackGround->colour());
  if (chosen == -1) return;
  picGeneralBackGround->setColour(chosen);
  p_.BackGround = chosen;
  p_.bProjectSaved = false;
  if (onBackGround) onBackGround(chosen);
  if (repaint_) repaint_();
}

void frmAppletFade::picFadeColor_Click() {
  const Colour chosen = ChooseColour(this, picFadeColor->colour());
  if (chosen == -1) return;
  picFadeColor->setColour(chosen);
  p_.cFadeColor = chosen;
  p_.bProjectSaved = false;
  if (repaint_) repaint_();
}

void frmAppletFade::btnChangeColors_Click() {
  SwapAppletColours(p_);
  picGeneralBackGround->setColour(p_.BackGround);
  picFadeColor->setColour(p_.cFadeColor);
  if (onBackGround) onBackGround(p_.BackGround);
  if (repaint_) repaint_();
}

// --- frmSetBgOffset ------------------------------------------------------------------

UiTexts& frmSetBgOffset::Texts() {
  static UiTexts t = {
      {"frmSetBgOffset", "Background Offset"},
      {"lblX", "X:"},
      {"lblY", "Y:"},
      {"btnApply", "&Apply"},
      {"btnOK", "&OK"},
      {"btnCANCEL", "&Cancel"},
  };
  return t;
}

frmSetBgOffset::frmSetBgOffset(QWidget* mainWindow, Project& p, Env& env,
                               const LangSettings& lang, RepaintBackGround repaint)
    : QDialog(mainWindow), p_(p), env_(env), repaint_(std::move(repaint)) {
  setObjectName("frmSetBgOffset");
  setWindowModality(Qt::ApplicationModal);
  ApplyLanguageSection(env_, lang, Texts(), "[frmSetBgOffset]");
  const UiTexts& t = Texts();
  txtX = NewField(this, "txtX");
  scrollX = NewBar(this, "scrollX", -32767, 32767);
  txtY = NewField(this, "txtY");
  scrollY = NewBar(this, "scrollY", -32767, 32767);
  btnApply = NamedControl(new QPushButton(this), "btnApply");
  btnOK = NamedControl(new QPushButton(this), "btnOK");
  btnCANCEL = NamedControl(new QPushButton(this), "btnCANCEL");
  for (QPushButton* b : {btnApply, btnOK, btnCANCEL}) b->setAutoDefault(false);
  auto* g = new QGridLayout;
  g->addWidget(NewLabel(this, t, "lblX"), 0, 0);
  g->addWidget(txtX, 0, 1);
  g->addWidget(scrollX, 0, 2);
  g->addWidget(NewLabel(this, t, "lblY"), 1, 0);
  g->addWidget(txtY, 1, 1);
  g->addWidget(scrollY, 1, 2);
  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  buttons->addWidget(btnApply);
  buttons->addWidget(btnOK);
  buttons->addWidget(btnCANCEL);
  auto* box = new QVBoxLayout(this);
  box->addLayout(g);
  box->addLayout(buttons);

  auto barWrites = [this](QScrollBar* bar, QLineEdit* field) {
    connect(bar, &QScrollBar::valueChanged, this, [this, field](int v) {
      if (scrollMark_) return;
      field->setText(QString::number(v));
    });
  };
  barWrites(scrollX, txtX);
  barWrites(scrollY, txtY);
  for (QLineEdit* f : {txtX, txtY}) f->installEventFilter(this);
  connect(btnApply, &QPushButton::clicked, this, [this] { btnApply_Click(); });
  connect(btnOK, &QPushButton::clicked, this, [this] { btnOK_Click(); });
  connect(btnCANCEL, &QPushButton::clicked, this, [this] { btnCANCEL_Click(); });
  ApplyTexts();
}

void frmSetBgOffset::ApplyTexts() {
  const UiTexts& t = Texts();
  setWindowTitle(QTextOf(t, "frmSetBgOffset"));
  btnApply->setText(QTextOf(t, "btnApply"));
  btnOK->setText(QTextOf(t, "btnOK"));
  btnCANCEL->setText(QTextOf(t, "btnCANCEL"));
}

void frmSetBgOffset::Form_Activate() {
  scrollMark_ = true;
  txtX->setText(QString::number(p_.iBgOffsetX));
  txtY->setText(QString::number(p_.iBgOffsetY));
  scrollX->setValue(p_.iBgOffsetX);
  scrollY->setValue(p_.iBgOffsetY);
  scrollMark_ = false;
}

void frmSetBgOffset::ShowDialog(QWidget* anchor) {
  Form_Activate();
  adjustSize();
  if (anchor) move(anchor->mapToGlobal(QPoint(anchor->width() + 4, 0)));
  show();
  raise();
  activateWindow();
  txtX->setFocus();
}

void frmSetBgOffset::btnApply_Click() {
  p_.iBgOffsetX = MakeCInt(FieldText(txtX), 0);
  p_.iBgOffsetY = MakeCInt(FieldText(txtY), 0);
  p_.bProjectSaved = false;
  if (repaint_) repaint_();
}

void frmSetBgOffset::btnOK_Click() {
  btnApply_Click();
  hide();
}

void frmSetBgOffset::btnCANCEL_Click() { hide(); }

bool frmSetBgOffset::eventFilter(QObject* watched, QEvent* e) {
  if (e->type() == QEvent::KeyRelease) {
    // The typed number moves its bar; one outside the bar stays in the text.
    QScrollBar* bar = watched == txtX ? scrollX : watched == txtY ? scrollY : nullptr;
    i16 v = 0;
    if (bar && ParseInt16(Trim(FieldText(static_cast<QLineEdit*>(watched))), v) &&
        v >= bar->minimum()) {
      scrollMark_ = true;
      bar->setValue(v);
      scrollMark_ = false;
    }
    return false;
  }
  if (e->type() == QEvent::KeyPress && watched == txtX) {
    const int key = static_cast<QKeyEvent*>(e)->key();
    if (key == Qt::Key_Return || key == Qt::Key_Enter) {
      txtY->setFocus();
      txtY->selectAll();
      return true;
    }
  }
  return false;
}

}  // namespace kp
