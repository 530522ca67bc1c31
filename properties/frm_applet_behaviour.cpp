#include "properties/frm_applet_behaviour.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QVBoxLayout>

#include "core/conv.h"
#include "design/colour_box.h"
#include "properties/colour_dialog.h"
#include "properties/window_lang.h"

namespace kp {

// The order is the order of the "[frmSpecial]" section of a language file.
UiTexts& frmSpecial::Texts() {
  static UiTexts t = {
      {"frmSpecial", "Applet's Special Options"},
      {"lblWarning", " Warning: These settings dramatically result on applet's behaviour "},
      {"frameLoading", " Loading Message "},
      {"lbl_cLoadingFont", "Text Color:"},
      {"lbl_cLoadingBack", "Back Color:"},
      {"chk_Bold_LoadingFont", "Bold"},
      {"chk_Italic_LoadingFont", "Italic"},
      {"chkClip", "Clip large images and labels"},
      {"frameTips", " Tool Tips "},
      {"lblTipBorderWidth", "Border Width:"},
      {"chkTipBold", "Bold"},
      {"chkTipItalic", "Italic"},
      {"lblTipBackColor", "Back Color:"},
      {"lblTipTextColor", "Text Color:"},
      {"lblTipBorderColor", "Border Color:"},
      {"lblTipDelay", "Show after:"},
      {"lblTipHideAfter", "Hide after:"},
      {"framePaint", " Paint Mode"},
      {"optNormalRepaint", "Normal"},
      {"optUnusualRepaint", "Unusual (Fast)"},
      {"frameScroll", " Scrolling "},
      {"chkDoScroll", "Scroll Buttons"},
      {"lbliScDelay", "Delay:"},
      {"lbliScStep", "Step:"},
      {"chkPreLoad", "Preload images"},
      {"btnRestoreDefaults", "Restore Defaults"},
      {"txtTipDelay.ToolTip", "Enter should be pressed after changing this value manually."},
      {"btnOK", "&OK"},
      {"btnCANCEL", "&Cancel"},
      {"optDirections0", "Left -> Right"},
      {"optDirections1", "Right -> Left"},
      {"optDirections2", "Up -> Down"},
      {"optDirections3", "Down -> Up"},
      // Added after the others: older language files keep their lines.
      {"txt_sLoading.Name", "Message text"},
  };
  return t;
}

namespace {

const char* const kDirections[] = {"Left -> Right", "Right -> Left", "Up -> Down", "Down -> Up"};

void SetText(QLineEdit* f, const std::string& bytes) { f->setText(DisplayText(bytes)); }
std::string TextOfField(const QLineEdit* f) { return PathBytes(f->text()); }

void SelectIndex(QComboBox* c, int index) {
  c->setCurrentIndex(index >= 0 && index < c->count() ? index : -1);
}

}  // namespace

frmSpecial::frmSpecial(QWidget* mainWindow, Project& p, Env& env, const LangSettings& lang)
    : QDialog(mainWindow), p_(p), env_(env) {
  setObjectName("frmSpecial");
  setWindowModality(Qt::ApplicationModal);
  BuildControls();
  BuildLayout();
  Connect();
  ApplyLanguageSection(env_, lang, Texts(), "[frmSpecial]");
  ApplyTexts();
}

QLabel* frmSpecial::Label(const char* name) { return NamedControl(new QLabel(this), name); }

void frmSpecial::BuildControls() {
  auto line = [this](const char* name, int width) {
    auto* f = NamedControl(new QLineEdit(this), name);
    if (width > 0) f->setFixedWidth(width);
    f->installEventFilter(this);
    return f;
  };
  auto colour = [this](const char* name) {
    auto* b = NamedControl(new ColourBox(this), name);
    b->setFixedSize(40, 20);
    b->onClick = [this, b] { pic_Click(b); };
    return b;
  };
  auto check = [this](const char* name) { return NamedControl(new QCheckBox(this), name); };
  auto bar = [this](const char* name, int lo, int hi) {
    auto* s = NamedControl(new QScrollBar(Qt::Horizontal, this), name);
    s->setRange(lo, hi);
    s->setMinimumWidth(90);
    return s;
  };
  lblWarning = Label("lblWarning");
  lblWarning->setStyleSheet("color: #c00000;");
  txt_sLoading = line("txt_sLoading", 0);
  pic_cLoadingFont = colour("pic_cLoadingFont");
  pic_cLoadingBack = colour("pic_cLoadingBack");
  cmb_iLoadingFont_Name = NamedControl(new QComboBox(this), "cmb_iLoadingFont_Name");
  cmb_iLoadingFont_Name->addItems({"Arial", "Courier", "Times", "Dialog"});
  cmb_iLoadingFont_Size = NamedControl(new QComboBox(this), "cmb_iLoadingFont_Size");
  cmb_iLoadingFont_Size->setEditable(true);
  chk_Bold_LoadingFont = check("chk_Bold_LoadingFont");
  chk_Italic_LoadingFont = check("chk_Italic_LoadingFont");
  chkClip = check("chkClip");
  txtTipBorderWidth = line("txtTipBorderWidth", 48);
  lsTipFont = NamedControl(new QComboBox(this), "lsTipFont");
  lsTipFont->addItems({"Arial", "Courier", "Times"});
  lsTipFontSize = NamedControl(new QComboBox(this), "lsTipFontSize");
  lsTipFontSize->setEditable(true);
  for (int size = 6; size <= 36; size += (size < 12 ? 1 : 2)) {
    cmb_iLoadingFont_Size->addItem(QString::number(size));
    lsTipFontSize->addItem(QString::number(size));
  }
  chkTipBold = check("chkTipBold");
  chkTipItalic = check("chkTipItalic");
  picTipBackColor = colour("picTipBackColor");
  picTipTextColor = colour("picTipTextColor");
  picTipBorderColor = colour("picTipBorderColor");
  txtTipDelay = line("txtTipDelay", 56);
  txtTipHideAfter = line("txtTipHideAfter", 56);
  optNormalRepaint = NamedControl(new QRadioButton(this), "optNormalRepaint");
  optUnusualRepaint = NamedControl(new QRadioButton(this), "optUnusualRepaint");
  chkDoScroll = check("chkDoScroll");
  for (int k = 0; k < 4; ++k) {
    optDirections[k] = new QRadioButton(QString::fromLatin1(kDirections[k]), this);
    optDirections[k]->setObjectName(QString("optDirections%1").arg(k));
  }
  txtiScDelay = line("txtiScDelay", 48);
  scrolliScDelay = bar("scrolliScDelay", 0, 100);
  txtiScStep = line("txtiScStep", 48);
  scrolliScStep = bar("scrolliScStep", 1, 100);
  chkPreLoad = check("chkPreLoad");
  btnOK = NamedControl(new QPushButton(this), "btnOK");
  btnCANCEL = NamedControl(new QPushButton(this), "btnCANCEL");
  btnRestoreDefaults = NamedControl(new QPushButton(this), "btnRestoreDefaults");
  for (QPushButton* b : {btnOK, btnCANCEL, btnRestoreDefaults}) b->setAutoDefault(false);
}

void frmSpecial::BuildLayout() {
  auto* loading = NamedControl(new QGroupBox(this), "frameLoading");
  auto* lg = new QGridLayout(loading);
  lg->addWidget(txt_sLoading, 0, 0, 1, 6);
  lg->addWidget(Label("lbl_cLoadingFont"), 1, 0);
  lg->addWidget(pic_cLoadingFont, 1, 1);
  lg->addWidget(Label("lbl_cLoadingBack"), 1, 2);
  lg->addWidget(pic_cLoadingBack, 1, 3);
  lg->addWidget(cmb_iLoadingFont_Name, 2, 0, 1, 2);
  lg->addWidget(cmb_iLoadingFont_Size, 2, 2);
  lg->addWidget(chk_Bold_LoadingFont, 2, 3);
  lg->addWidget(chk_Italic_LoadingFont, 2, 4);
  lg->setColumnStretch(5, 1);

  auto* tips = NamedControl(new QGroupBox(this), "frameTips");
  auto* tg = new QGridLayout(tips);
  tg->addWidget(Label("lblTipBorderWidth"), 0, 0);
  tg->addWidget(txtTipBorderWidth, 0, 1);
  tg->addWidget(lsTipFont, 0, 2);
  tg->addWidget(lsTipFontSize, 0, 3);
  tg->addWidget(chkTipBold, 0, 4);
  tg->addWidget(chkTipItalic, 0, 5);
  tg->addWidget(Label("lblTipBackColor"), 1, 0);
  tg->addWidget(picTipBackColor, 1, 1);
  tg->addWidget(Label("lblTipTextColor"), 1, 2);
  tg->addWidget(picTipTextColor, 1, 3);
  tg->addWidget(Label("lblTipBorderColor"), 1, 4);
  tg->addWidget(picTipBorderColor, 1, 5);
  tg->addWidget(Label("lblTipDelay"), 2, 0);
  tg->addWidget(txtTipDelay, 2, 1);
  tg->addWidget(Label("lblTipHideAfter"), 2, 2);
  tg->addWidget(txtTipHideAfter, 2, 3);
  tg->setColumnStretch(6, 1);

  auto* paint = NamedControl(new QGroupBox(this), "framePaint");
  auto* pg = new QVBoxLayout(paint);
  pg->addWidget(optNormalRepaint);
  pg->addWidget(optUnusualRepaint);
  pg->addStretch();

  auto* scroll = NamedControl(new QGroupBox(this), "frameScroll");
  auto* sg = new QGridLayout(scroll);
  sg->addWidget(chkDoScroll, 0, 0, 1, 2);
  for (int k = 0; k < 4; ++k) sg->addWidget(optDirections[k], 1 + k / 2, k % 2);
  sg->addWidget(Label("lbliScDelay"), 3, 0);
  auto* delay = new QHBoxLayout;
  delay->addWidget(txtiScDelay);
  delay->addWidget(scrolliScDelay, 1);
  sg->addLayout(delay, 3, 1);
  sg->addWidget(Label("lbliScStep"), 4, 0);
  auto* step = new QHBoxLayout;
  step->addWidget(txtiScStep);
  step->addWidget(scrolliScStep, 1);
  sg->addLayout(step, 4, 1);

  auto* modes = new QHBoxLayout;
  modes->addWidget(paint);
  modes->addWidget(scroll, 1);
  auto* buttons = new QHBoxLayout;
  buttons->addWidget(btnRestoreDefaults);
  buttons->addStretch();
  buttons->addWidget(btnOK);
  buttons->addWidget(btnCANCEL);
  auto* box = new QVBoxLayout(this);
  box->addWidget(lblWarning);
  box->addWidget(loading);
  box->addWidget(chkClip);
  box->addWidget(tips);
  box->addLayout(modes);
  box->addWidget(chkPreLoad);
  box->addLayout(buttons);
}

void frmSpecial::Connect() {
  connect(btnOK, &QPushButton::clicked, this, [this] { btnOK_Click(); });
  connect(btnCANCEL, &QPushButton::clicked, this, [this] { btnCANCEL_Click(); });
  connect(btnRestoreDefaults, &QPushButton::clicked, this, [this] { btnRestoreDefaults_Click(); });
  connect(chkDoScroll, &QCheckBox::toggled, this, [this] { chkDoScroll_Click(); });
  auto barWrites = [this](QScrollBar* bar, QLineEdit* field) {
    connect(bar, &QScrollBar::valueChanged, this, [this, field](int v) {
      scrollMark_ = true;
      field->setText(QString::number(v));
      scrollMark_ = false;
    });
  };
  barWrites(scrolliScDelay, txtiScDelay);
  barWrites(scrolliScStep, txtiScStep);
}

void frmSpecial::ApplyTexts() {
  const UiTexts& t = Texts();
  for (QWidget* w : findChildren<QWidget*>()) {
    const std::string name = w->objectName().toStdString();
    auto it = std::find_if(t.begin(), t.end(), [&](const UiText& x) { return name == x.control; });
    if (it == t.end()) continue;
    if (auto* l = qobject_cast<QLabel*>(w)) l->setText(DisplayText(it->text));
    else if (auto* b = qobject_cast<QAbstractButton*>(w)) b->setText(DisplayText(it->text));
    else if (auto* g = qobject_cast<QGroupBox*>(w)) g->setTitle(DisplayText(it->text));
  }
  for (QLineEdit* f : {txtTipBorderWidth, txtTipDelay, txtTipHideAfter})
    f->setToolTip(QTextOf(t, "txtTipDelay.ToolTip"));
  // No label stands beside it; the box's title is not its name.
  txt_sLoading->setAccessibleName(QTextOf(t, "txt_sLoading.Name"));
  Caption();
}

void frmSpecial::Caption() {
  QString caption = QTextOf(Texts(), "frmSpecial");
  if (!p_.sProjectFile.empty()) caption += " - " + DisplayText(FileNameOnly(p_.sProjectFile));
  setWindowTitle(caption);
}

// --- Filling and reading --------------------------------------------------------------

void frmSpecial::ShowOptions(const SpecialOptions& o) {
  SetText(txt_sLoading, o.txt_sLoading);
  pic_cLoadingFont->setColour(o.pic_cLoadingFont);
  pic_cLoadingBack->setColour(o.pic_cLoadingBack);
  SelectIndex(cmb_iLoadingFont_Name, o.cmb_iLoadingFont_Name);
  cmb_iLoadingFont_Size->setEditText(DisplayText(o.cmb_iLoadingFont_Size));
  chk_Bold_LoadingFont->setChecked(o.chk_Bold_LoadingFont);
  chk_Italic_LoadingFont->setChecked(o.chk_Italic_LoadingFont);
  chkClip->setChecked(o.chkClip);
  SetText(txtTipBorderWidth, o.txtTipBorderWidth);
  SelectIndex(lsTipFont, o.lsTipFont);
  lsTipFontSize->setEditText(DisplayText(o.lsTipFontSize));
  chkTipBold->setChecked(o.chkTipBold);
  chkTipItalic->setChecked(o.chkTipItalic);
  picTipBackColor->setColour(o.picTipBackColor);
  picTipTextColor->setColour(o.picTipTextColor);
  picTipBorderColor->setColour(o.picTipBorderColor);
  SetText(txtTipDelay, o.txtTipDelay);
  SetText(txtTipHideAfter, o.txtTipHideAfter);
  optUnusualRepaint->setChecked(o.optUnusualRepaint);
  optNormalRepaint->setChecked(!o.optUnusualRepaint);
  chkDoScroll->setChecked(o.chkDoScroll);
  if (o.optDirections >= 0 && o.optDirections < 4) optDirections[o.optDirections]->setChecked(true);
  SetText(txtiScDelay, o.txtiScDelay);
  SetText(txtiScStep, o.txtiScStep);
  for (auto [field, bar] : {std::pair{txtiScDelay, scrolliScDelay}, {txtiScStep, scrolliScStep}}) {
    const i16 v = MakeCInt(TextOfField(field), bar->minimum());
    if (v >= bar->minimum() && v <= bar->maximum()) bar->setValue(v);
  }
  chkPreLoad->setChecked(o.chkPreLoad);
  chkDoScroll_Click();
}

SpecialOptions frmSpecial::ReadControls() const {
  SpecialOptions o;
  o.txt_sLoading = TextOfField(txt_sLoading);
  o.pic_cLoadingFont = pic_cLoadingFont->colour();
  o.pic_cLoadingBack = pic_cLoadingBack->colour();
  o.cmb_iLoadingFont_Name = cmb_iLoadingFont_Name->currentIndex();
  o.cmb_iLoadingFont_Size = PathBytes(cmb_iLoadingFont_Size->currentText());
  o.chk_Bold_LoadingFont = chk_Bold_LoadingFont->isChecked();
  o.chk_Italic_LoadingFont = chk_Italic_LoadingFont->isChecked();
  o.chkClip = chkClip->isChecked();
  o.txtTipBorderWidth = TextOfField(txtTipBorderWidth);
  o.lsTipFont = lsTipFont->currentIndex();
  o.lsTipFontSize = PathBytes(lsTipFontSize->currentText());
  o.chkTipBold = chkTipBold->isChecked();
  o.chkTipItalic = chkTipItalic->isChecked();
  o.picTipBackColor = picTipBackColor->colour();
  o.picTipTextColor = picTipTextColor->colour();
  o.picTipBorderColor = picTipBorderColor->colour();
  o.txtTipDelay = TextOfField(txtTipDelay);
  o.txtTipHideAfter = TextOfField(txtTipHideAfter);
  o.optUnusualRepaint = optUnusualRepaint->isChecked();
  o.chkDoScroll = chkDoScroll->isChecked();
  for (int k = 0; k < 4; ++k)
    if (optDirections[k]->isChecked()) o.optDirections = k;
  o.txtiScDelay = TextOfField(txtiScDelay);
  o.txtiScStep = TextOfField(txtiScStep);
  o.chkPreLoad = chkPreLoad->isChecked();
  return o;
}

// --- Handlers ----------------------------------------------------------------------------

void frmSpecial::Form_Load() {
  Caption();
  ShowOptions(SpecialOptionsOf(p_));
}

void frmSpecial::ShowDialog() {
  Form_Load();
  show();
  raise();
  activateWindow();
  txt_sLoading->setFocus();
}

void frmSpecial::btnOK_Click() {
  // Each bad number is told, and the fields after it are still read.
  for (const std::string& why : StoreSpecialOptions(p_, ReadControls())) env_.prompter.MsgBox(why);
  hide();
}

void frmSpecial::btnCANCEL_Click() { hide(); }

void frmSpecial::btnRestoreDefaults_Click() { ShowOptions(SpecialDefaults()); }

void frmSpecial::chkDoScroll_Click() {
  const bool on = chkDoScroll->isChecked();
  for (QWidget* w : {static_cast<QWidget*>(txtiScStep), static_cast<QWidget*>(scrolliScStep),
                     static_cast<QWidget*>(txtiScDelay), static_cast<QWidget*>(scrolliScDelay)})
    w->setEnabled(on);
  for (QRadioButton* o : optDirections) o->setEnabled(on);
}

void frmSpecial::pic_Click(ColourBox* box) {
  const Colour chosen = ChooseColour(this, box->colour());
  if (chosen != -1) box->setColour(chosen);
}

bool frmSpecial::eventFilter(QObject* watched, QEvent* e) {
  if (e->type() == QEvent::KeyRelease) {
    // The typed value moves the bar; a value beyond it stays in the text.
    auto sync = [this](QLineEdit* field, QScrollBar* bar) {
      if (scrollMark_) return;
      i16 v = 0;
      if (ParseInt16(Trim(TextOfField(field)), v) && v >= bar->minimum() && v <= bar->maximum()) {
        scrollMark_ = true;
        bar->setValue(v);
        scrollMark_ = false;
      }
    };
    if (watched == txtiScDelay) sync(txtiScDelay, scrolliScDelay);
    if (watched == txtiScStep) sync(txtiScStep, scrolliScStep);
    return false;
  }
  if (e->type() != QEvent::KeyPress) return false;
  const int key = static_cast<QKeyEvent*>(e)->key();
  if (key != Qt::Key_Return && key != Qt::Key_Enter) return false;
  if (watched == txt_sLoading) {
    btnOK->click();
    return true;
  }
  const std::pair<QObject*, QLineEdit*> moves[] = {{txtiScStep, txtiScDelay},
                                                   {txtTipBorderWidth, txtTipDelay},
                                                   {txtTipDelay, txtTipHideAfter},
                                                   {txtTipHideAfter, txt_sLoading}};
  for (auto [from, to] : moves)
    if (watched == from) {
      to->setFocus();
      to->selectAll();
      return true;
    }
  return false;
}

}  // namespace kp
