#include "design/frm_grid.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QVBoxLayout>

#include "core/conv.h"
#include "core/settings.h"
#include "core/startup.h"
#include "design/design_texts.h"
#include "design/frm_design.h"
#include "render/scene.h"

namespace kp {

// --- frmGrid ---------------------------------------------------------------------------

frmGrid::frmGrid(frmDesign& design, Project& p, Env& env, DesignHost& host, QWidget* parent)
    : QDialog(parent), design_(design), p_(p), env_(env), host_(host) {
  setObjectName("frmGrid");
  chkGrid = new QCheckBox(this);
  chkGrid->setObjectName("chkGrid");
  chkAlignXY = new QCheckBox(this);
  chkAlignXY->setObjectName("chkAlignXY");
  chkAlignWH = new QCheckBox(this);
  chkAlignWH->setObjectName("chkAlignWH");
  optShowAsDots = new QRadioButton(this);
  optShowAsDots->setObjectName("optShowAsDots");
  optShowAsLines = new QRadioButton(this);
  optShowAsLines->setObjectName("optShowAsLines");
  lblGridX = new QLabel(this);
  txtX = new QLineEdit(this);
  txtX->setObjectName("txtX");
  scrollX = new QScrollBar(Qt::Horizontal, this);
  scrollX->setObjectName("scrollX");
  lblGridY = new QLabel(this);
  txtY = new QLineEdit(this);
  txtY->setObjectName("txtY");
  scrollY = new QScrollBar(Qt::Horizontal, this);
  scrollY->setObjectName("scrollY");
  lblGridColor = new QLabel(this);
  picGridColor = new ColourBox(this);
  picGridColor->setObjectName("picGridColor");
  picGridColor->setFixedSize(40, 20);
  btnApply = new QPushButton(this);
  btnApply->setObjectName("btnApply");
  btnOK = new QPushButton(this);
  btnOK->setObjectName("btnOK");
  btnCANCEL = new QPushButton(this);
  btnCANCEL->setObjectName("btnCANCEL");
  btnAlignXY_NOW = new QPushButton(this);
  btnAlignXY_NOW->setObjectName("btnAlignXY_NOW");
  btnAlignWH_NOW = new QPushButton(this);
  btnAlignWH_NOW->setObjectName("btnAlignWH_NOW");
  for (QPushButton* b : {btnApply, btnOK, btnCANCEL, btnAlignXY_NOW, btnAlignWH_NOW})
    b->setAutoDefault(false);

  for (QScrollBar* s : {scrollX, scrollY}) {
    s->setRange(2, 999);
    s->setMinimumWidth(120);
  }
  for (QLineEdit* t : {txtX, txtY}) {
    t->setFixedWidth(48);
    t->installEventFilter(this);
  }

  auto* grid = new QGridLayout;
  grid->addWidget(lblGridX, 0, 0);
  grid->addWidget(txtX, 0, 1);
  grid->addWidget(scrollX, 0, 2);
  grid->addWidget(btnAlignXY_NOW, 0, 3);
  grid->addWidget(lblGridY, 1, 0);
  grid->addWidget(txtY, 1, 1);
  grid->addWidget(scrollY, 1, 2);
  grid->addWidget(btnAlignWH_NOW, 1, 3);
  grid->addWidget(lblGridColor, 2, 0);
  grid->addWidget(picGridColor, 2, 1);
  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  buttons->addWidget(btnOK);
  buttons->addWidget(btnCANCEL);
  buttons->addWidget(btnApply);
  auto* box = new QVBoxLayout(this);
  box->addWidget(chkGrid);
  box->addWidget(optShowAsLines);
  box->addWidget(optShowAsDots);
  box->addWidget(chkAlignXY);
  box->addWidget(chkAlignWH);
  box->addLayout(grid);
  box->addLayout(buttons);

  for (QCheckBox* c : {chkGrid, chkAlignXY, chkAlignWH})
    connect(c, &QCheckBox::toggled, this, [this] { Changed(); });
  for (QRadioButton* o : {optShowAsDots, optShowAsLines})
    connect(o, &QRadioButton::toggled, this, [this] { Changed(); });
  for (QLineEdit* t : {txtX, txtY})
    connect(t, &QLineEdit::textChanged, this, [this] { Changed(); });
  // The scroll bars write their value back to the text boxes, unless the
  // value came from the text box itself.
  connect(scrollX, &QScrollBar::valueChanged, this, [this](int v) {
    if (!syncingScroll_) txtX->setText(QString::number(v));
    Changed();
  });
  connect(scrollY, &QScrollBar::valueChanged, this, [this](int v) {
    if (!syncingScroll_) txtY->setText(QString::number(v));
    Changed();
  });
  picGridColor->onClick = [this] { picGridColor_Click(); };
  connect(btnApply, &QPushButton::clicked, this, [this] { btnApply_Click(); });
  connect(btnOK, &QPushButton::clicked, this, [this] { btnOK_Click(); });
  connect(btnCANCEL, &QPushButton::clicked, this, [this] { btnCANCEL_Click(); });
  connect(btnAlignXY_NOW, &QPushButton::clicked, this, [this] { btnAlignXY_NOW_Click(); });
  connect(btnAlignWH_NOW, &QPushButton::clicked, this, [this] { btnAlignWH_NOW_Click(); });

  const LangSettings& lang = design_.Language();
  if (auto lines = WindowLanguageLines(env_, lang, kGridSection, kGridSectionLines))
    ReplaceDesignTexts(frmGridTexts(), *lines);
  ApplyTexts();
  Form_Load();
}

void frmGrid::ApplyTexts() {
  const DesignTexts& t = frmGridTexts();
  setWindowTitle(DesignQText(t, "frmGrid"));
  chkGrid->setText(DesignQText(t, "chkGrid"));
  chkAlignXY->setText(DesignQText(t, "chkAlignXY"));
  chkAlignWH->setText(DesignQText(t, "chkAlignWH"));
  optShowAsDots->setText(DesignQText(t, "optShowAsDots"));
  optShowAsLines->setText(DesignQText(t, "optShowAsLines"));
  lblGridX->setText(DesignQText(t, "lblGridX"));
  lblGridY->setText(DesignQText(t, "lblGridY"));
  lblGridColor->setText(DesignQText(t, "lblGridColor"));
  btnAlignXY_NOW->setText(DesignQText(t, "btnAlignXY_NOW"));
  btnAlignWH_NOW->setText(DesignQText(t, "btnAlignWH_NOW"));
  const DesignTexts& d = frmDesignTexts();
  btnApply->setText(DesignQText(d, "frmGrid.btnApply"));
  btnOK->setText(DesignQText(d, "frmGrid.btnOK"));
  btnCANCEL->setText(DesignQText(d, "frmGrid.btnCANCEL"));
}

void frmGrid::Form_Load() {
  const SessionVars& s = Session();
  filling_ = true;
  chkGrid->setChecked(s.bShowGrid);
  chkAlignXY->setChecked(s.bAlignXY);
  chkAlignWH->setChecked(s.bAlignWH);
  optShowAsDots->setChecked(s.bShowGridAsDots);
  optShowAsLines->setChecked(!s.bShowGridAsDots);
  syncingScroll_ = true;
  scrollX->setValue(s.iGridX);
  scrollY->setValue(s.iGridY);
  syncingScroll_ = false;
  txtX->setText(QString::number(s.iGridX));
  txtY->setText(QString::number(s.iGridY));
  picGridColor->setColour(s.lGridColor);
  filling_ = false;
  bApplied = false;
}

void frmGrid::ShowDialog() {
  Form_Load();
  show();
  raise();
  activateWindow();
}

void frmGrid::Changed() {
  if (!filling_) bApplied = false;
}

i16 frmGrid::StepX() const { return MakeCInt(checkIn(txtX->text().toStdString(), 2, 999, 10), 10); }
i16 frmGrid::StepY() const { return MakeCInt(checkIn(txtY->text().toStdString(), 2, 999, 10), 10); }

void frmGrid::txtX_KeyUp() {
  syncingScroll_ = true;
  scrollX->setValue(StepX());
  syncingScroll_ = false;
}

void frmGrid::txtY_KeyUp() {
  syncingScroll_ = true;
  scrollY->setValue(StepY());
  syncingScroll_ = false;
}

bool frmGrid::eventFilter(QObject* watched, QEvent* e) {
  if (watched == txtX || watched == txtY) {
    if (e->type() == QEvent::KeyPress) {
      auto* k = static_cast<QKeyEvent*>(e);
      // Enter goes on to the next field instead of closing the dialog.
      if (k->key() == Qt::Key_Return || k->key() == Qt::Key_Enter) {
        focusNextChild();
        return true;
      }
    } else if (e->type() == QEvent::KeyRelease) {
      if (watched == txtX) txtX_KeyUp();
      else txtY_KeyUp();
    }
  }
  return QDialog::eventFilter(watched, e);
}

void frmGrid::picGridColor_Click() {
  const Colour c = host_.ChooseColour(picGridColor->colour());
  if (c == -1) return;
  picGridColor->setColour(c);
  Changed();
}

void frmGrid::btnApply_Click() {
  if (bApplied) return;
  SessionVars& s = Session();
  s.bShowGrid = chkGrid->isChecked();
  s.bAlignXY = chkAlignXY->isChecked();
  s.bAlignWH = chkAlignWH->isChecked();
  s.bShowGridAsDots = optShowAsDots->isChecked();
  s.iGridX = StepX();
  s.iGridY = StepY();
  s.lGridColor = picGridColor->colour();
  SetParam(env_, "bShowGrid", BoolToText(s.bShowGrid));
  SetParam(env_, "bAlignXY", BoolToText(s.bAlignXY));
  SetParam(env_, "bAlignWH", BoolToText(s.bAlignWH));
  SetParam(env_, "bShowGridAsDots", BoolToText(s.bShowGridAsDots));
  SetParam(env_, "iGridX", std::to_string(s.iGridX));
  SetParam(env_, "iGridY", std::to_string(s.iGridY));
  SetParam(env_, "lGridColor", std::to_string(s.lGridColor));
  // The grid is part of the design surface: switching it off needs the
  // surface painted again.
  design_.SyncGrid();
  design_.scene().DrawBackGround(true, false);
  design_.scene().DrawAppletBorder();
  design_.UpdateTransparentBtns(0);
  bApplied = true;
}

void frmGrid::btnOK_Click() {
  btnApply_Click();
  close();
}

void frmGrid::btnCANCEL_Click() { close(); }

bool frmGrid::UnlockForAlign() {
  if (!design_.bLocked) return true;
  const DesignTexts& t = frmGridTexts();
  if (env_.prompter.MsgBox(DesignTextOf(t, "sUnlockButtons"), Buttons::YesNo,
                           DesignTextOf(t, "sButtonsLocked"), Icon::Question) != Answer::Yes)
    return false;
  design_.bLocked = false;
  design_.mnuLOCKED->setChecked(false);
  host_.SetLockedMark(false);
  return true;
}

void frmGrid::btnAlignXY_NOW_Click() {
  if (!UnlockForAlign()) return;
  Session().iGridX = StepX();
  Session().iGridY = StepY();
  for (int i = 1; i <= p_.ButtonCount; ++i) {
    design_.AlignX(i, false);
    design_.AlignY(i, false);
  }
  design_.MoveSizer(p_.iCurBtn);
}

void frmGrid::btnAlignWH_NOW_Click() {
  if (!UnlockForAlign()) return;
  Session().iGridX = StepX();
  Session().iGridY = StepY();
  for (int i = 1; i <= p_.ButtonCount; ++i) {
    design_.AlignW(i, false, false);
    design_.AlignH(i, false, false);
  }
  design_.MoveSizer(p_.iCurBtn);
}

}  // namespace kp
