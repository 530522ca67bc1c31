#include "properties/global_panel.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QPushButton>
#include <QSignalBlocker>
#include <QStyle>
#include <QVBoxLayout>

#include "core/conv.h"
#include "core/settings.h"
#include "design/colour_box.h"
#include "design/frm_design.h"
#include "properties/button_panel.h"
#include "properties/colour_dialog.h"
#include "properties/frm_advanced.h"
#include "properties/frm_applet_dialogs.h"
#include "properties/frm_button_effects.h"
#include "properties/frm_main.h"
#include "properties/frm_pic_browser.h"
#include "properties/frm_set_action.h"
#include "properties/frm_applet_behaviour.h"
#include "properties/window_lang.h"
#include "render/scene.h"

namespace kp {

void ClickLabel::mouseReleaseEvent(QMouseEvent* e) {
  if (e->button() == Qt::LeftButton && rect().contains(e->position().toPoint()) && onClick)
    onClick();
}

UiTexts& GlobalPanel::ItemTexts() {
  static UiTexts t = {
      {"cmbBackImgStyle.0", "Manual"},
      {"cmbBackImgStyle.1", "Center"},
      {"cmbBackImgStyle.2", "Tile"},
      {"cmbBackImgStyle.3", "Stretch"},
  };
  return t;
}

// The texts of the panel's own controls and of the applet's menu entries.
UiTexts& GlobalPanel::Texts() {
  static UiTexts t = {
      {"lblUpdateDesignSize", "Update Window"},
      {"picUpdateDesignSize.ToolTip", "Click here to update the size of Design Window (or press ENTER)"},
      {"btnGetBackImg", "..."},
      {"picBgOffset.ToolTip", "Background Offset"},
      {"btnAppletBorder", "Applet Border"},
      {"btnAppletFade", "Applet Fade Effect"},
      {"btnAppletSpecial", "Special"},
      {"btnAppletSpecial.ToolTip", "Applet's Special Options"},
      {"frmAppletAction", " Applet Actions: "},
      {"btnAppletProgramStart", "Start"},
      {"btnAppletProgramStart.ToolTip", "On Applet Start"},
      {"btnAppletProgramOVER", "Over"},
      {"btnAppletProgramOVER.ToolTip", "On Mouse Over Applet"},
      {"btnAppletProgramDOWN", "Down"},
      {"btnAppletProgramDOWN.ToolTip", "On Mouse Down on Applet"},
      {"btnAppletProgramOUT", "Out"},
      {"btnAppletProgramOUT.ToolTip", "On Mouse Out of Applet"},
      {"mnuSpecial", "Applet's &Special Options..."},
      {"mnuDescent", "Button's Label &Descent..."},
      {"mnuAdvanced", "&Program Settings..."},
  };
  return t;
}

namespace {

const char* const kProgramKeys[] = {"AppletProgramStart", "AppletProgramOVER", "AppletProgramDOWN",
                                    "AppletProgramOUT"};

// The offset control: a small target of crossed lines.
QPixmap OffsetPicture() {
  QPixmap pm(18, 18);
  pm.fill(Qt::white);
  QPainter g(&pm);
  g.setPen(QColor(0, 0, 128));
  g.drawRect(0, 0, 17, 17);
  g.drawLine(9, 3, 9, 15);
  g.drawLine(3, 9, 15, 9);
  g.drawLine(9, 3, 6, 6);
  g.drawLine(9, 3, 12, 6);
  g.drawLine(15, 9, 12, 6);
  g.drawLine(15, 9, 12, 12);
  return pm;
}

}  // namespace

GlobalPanel::GlobalPanel(frmMain& main, Project& p, Env& env)
    : QObject(&main), main_(main), p_(p), env_(env) {
  BuildControls();
  BuildLayout();
  BuildMenu();
  ApplyTexts();
  Connect();
  ShowUpdateHint(false);
  ShowMainParams();
}

GlobalPanel::~GlobalPanel() = default;

void GlobalPanel::BuildControls() {
  QGroupBox* f = main_.frmGeneral;
  for (QLineEdit* e : {main_.txtAppletWidth, main_.txtAppletHeight, main_.txtBackImg})
    e->setReadOnly(false);
  picUpdateDesignSize = NamedControl(new ClickLabel(f), "picUpdateDesignSize");
  picUpdateDesignSize->setPixmap(f->style()->standardPixmap(QStyle::SP_BrowserReload));
  picUpdateDesignSize->setFixedSize(18, 18);
  picUpdateDesignSize->setScaledContents(true);
  lblUpdateDesignSize = NamedControl(new ClickLabel(f), "lblUpdateDesignSize");
  for (ClickLabel* l : {picUpdateDesignSize, lblUpdateDesignSize}) l->setCursor(Qt::PointingHandCursor);
  btnGetBackImg = NamedControl(new QPushButton(f), "btnGetBackImg");
  cmbBackImgStyle = NamedControl(new QComboBox(f), "cmbBackImgStyle");
  cmbBackImgStyle->addItems({"Manual", "Center", "Tile", "Stretch"});
  cmbBackImgStyle->setCurrentIndex(-1);
  cmbBackImgStyle->setEnabled(false);
  picBgOffset = NamedControl(new ClickLabel(f), "picBgOffset");
  picBgOffset->setPixmap(OffsetPicture());
  picBgOffset->setFixedSize(18, 18);
  picBgOffset->setCursor(Qt::PointingHandCursor);
  btnAppletBorder = NamedControl(new QPushButton(f), "btnAppletBorder");
  btnAppletFade = NamedControl(new QPushButton(f), "btnAppletFade");
  btnAppletSpecial = NamedControl(new QPushButton(f), "btnAppletSpecial");
  frmAppletAction = NamedControl(new QGroupBox(f), "frmAppletAction");
  const char* const names[] = {"btnAppletProgramStart", "btnAppletProgramOVER",
                               "btnAppletProgramDOWN", "btnAppletProgramOUT"};
  for (int k = 0; k < 4; ++k)
    btnAppletProgram[k] = NamedControl(new QPushButton(frmAppletAction), names[k]);
}

void GlobalPanel::BuildLayout() {
  QGroupBox* f = main_.frmGeneral;
  // The main window's first layout of the frame gives way to the full one.
  delete f->layout();
  auto* size = new QHBoxLayout;
  size->addWidget(f->findChild<QLabel*>("lblAppletWidth"));
  size->addWidget(main_.txtAppletWidth);
  size->addWidget(f->findChild<QLabel*>("lblAppletHeight"));
  size->addWidget(main_.txtAppletHeight);
  size->addWidget(picUpdateDesignSize);
  size->addWidget(lblUpdateDesignSize);
  size->addStretch();
  size->addWidget(f->findChild<QLabel*>("lblGeneralBackGround"));
  size->addWidget(main_.picGeneralBackGround);
  auto* image = new QHBoxLayout;
  image->addWidget(f->findChild<QLabel*>("frameBackImg"));
  image->addWidget(main_.txtBackImg, 1);
  image->addWidget(btnGetBackImg);
  image->addWidget(cmbBackImgStyle);
  image->addWidget(picBgOffset);
  auto* options = new QHBoxLayout;
  options->addWidget(btnAppletBorder);
  options->addWidget(btnAppletFade);
  options->addWidget(btnAppletSpecial);
  options->addStretch();
  auto* actions = new QHBoxLayout(frmAppletAction);
  actions->setContentsMargins(6, 2, 6, 4);
  for (QPushButton* b : btnAppletProgram) actions->addWidget(b);
  auto* box = new QVBoxLayout(f);
  box->addLayout(size);
  box->addLayout(image);
  box->addLayout(options);
  box->addWidget(frmAppletAction);
}

void GlobalPanel::BuildMenu() {
  QMenu* m = main_.mnuSettings;
  m->addSeparator();
  mnuSpecial = m->addAction(QString(), [this] { btnAppletSpecial_Click(); });
  mnuSpecial->setObjectName("mnuSpecial");
  mnuDescent = m->addAction(QString(), [this] { mnuDescent_Click(); });
  mnuDescent->setObjectName("mnuDescent");
  mnuAdvanced = m->addAction(QString(), [this] { mnuAdvanced_Click(); });
  mnuAdvanced->setObjectName("mnuAdvanced");
}

void GlobalPanel::ApplyTexts() {
  const UiTexts& t = Texts();
  SetItemTexts(cmbBackImgStyle, ItemTexts());
  lblUpdateDesignSize->setText(QTextOf(t, "lblUpdateDesignSize"));
  for (ClickLabel* l : {picUpdateDesignSize, lblUpdateDesignSize})
    l->setToolTip(QTextOf(t, "picUpdateDesignSize.ToolTip"));
  btnGetBackImg->setText(QTextOf(t, "btnGetBackImg"));
  picBgOffset->setToolTip(QTextOf(t, "picBgOffset.ToolTip"));
  btnAppletBorder->setText(QTextOf(t, "btnAppletBorder"));
  btnAppletFade->setText(QTextOf(t, "btnAppletFade"));
  btnAppletSpecial->setText(QTextOf(t, "btnAppletSpecial"));
  btnAppletSpecial->setToolTip(QTextOf(t, "btnAppletSpecial.ToolTip"));
  frmAppletAction->setTitle(QTextOf(t, "frmAppletAction"));
  for (QPushButton* b : btnAppletProgram) {
    const std::string name = b->objectName().toStdString();
    b->setText(QTextOf(t, name));
    b->setToolTip(QTextOf(t, name + ".ToolTip"));
  }
  mnuSpecial->setText(QTextOf(t, "mnuSpecial"));
  mnuDescent->setText(QTextOf(t, "mnuDescent"));
  mnuAdvanced->setText(QTextOf(t, "mnuAdvanced"));
}

void GlobalPanel::Connect() {
  for (QLineEdit* e : {main_.txtAppletWidth, main_.txtAppletHeight}) {
    connect(e, &QLineEdit::textChanged, this, [this] { txtAppletSize_Change(); });
    e->installEventFilter(this);
  }
  connect(main_.txtBackImg, &QLineEdit::textChanged, this, [this] { txtBackImg_Change(); });
  main_.txtBackImg->installEventFilter(this);
  picUpdateDesignSize->onClick = [this] { picUpdateDesignSize_Click(); };
  lblUpdateDesignSize->onClick = [this] { picUpdateDesignSize_Click(); };
  picBgOffset->onClick = [this] { picBgOffset_Click(); };
  main_.picGeneralBackGround->onClick = [this] { picGeneralBackGround_Click(); };
  connect(btnGetBackImg, &QPushButton::clicked, this, [this] { btnGetBackImg_Click(); });
  connect(cmbBackImgStyle, &QComboBox::currentIndexChanged, this, [this] {
    if (!selecting_) cmbBackImgStyle_Click();
  });
  connect(btnAppletBorder, &QPushButton::clicked, this, [this] { btnAppletBorder_Click(); });
  connect(btnAppletFade, &QPushButton::clicked, this, [this] { btnAppletFade_Click(); });
  connect(btnAppletSpecial, &QPushButton::clicked, this, [this] { btnAppletSpecial_Click(); });
  for (int k = 0; k < 4; ++k)
    connect(btnAppletProgram[k], &QPushButton::clicked, this, [this, k] { btnAppletProgram_Click(k); });
}

// --- Showing the record --------------------------------------------------------------

void GlobalPanel::ShowMainParams() {
  const bool was = p_.bFillingPanel;
  p_.bFillingPanel = true;
  const bool image = !p_.BackImg.empty();
  const int index = image && p_.BackImgStyle >= 1 && p_.BackImgStyle <= 4 ? p_.BackImgStyle - 1 : -1;
  SelectBackImgStyle(index);
  cmbBackImgStyle->setEnabled(image);
  ShowBgOffsetFor(index);
  ShowUpdateHint(false);
  if (fade_) fade_->Form_Load();
  if (border_) border_->Form_Load();
  p_.bFillingPanel = was;
}

void GlobalPanel::RepaintBackGround() { main_.Design()->Refresh(); }

void GlobalPanel::ShowUpdateHint(bool on) {
  picUpdateDesignSize->setVisible(on);
  lblUpdateDesignSize->setVisible(on);
}

void GlobalPanel::ShowBgOffsetFor(int index) { picBgOffset->setVisible(BgOffsetVisible(index)); }

void GlobalPanel::SelectBackImgStyle(int index) {
  selecting_ = true;
  cmbBackImgStyle->setCurrentIndex(index);
  selecting_ = false;
}

// --- Size of the applet ----------------------------------------------------------------

void GlobalPanel::txtAppletSize_Change() {
  if (!p_.bFillingPanel) ShowUpdateHint(true);
}

void GlobalPanel::txtAppletWidth_KeyUp() {
  p_.AppletWidth = AppletSizeOf(PathBytes(main_.txtAppletWidth->text()), p_.AppletWidth);
  p_.bProjectSaved = false;
}

void GlobalPanel::txtAppletHeight_KeyUp() {
  p_.AppletHeight = AppletSizeOf(PathBytes(main_.txtAppletHeight->text()), p_.AppletHeight);
  p_.bProjectSaved = false;
}

void GlobalPanel::UpdateDesignSize() {
  frmDesign* d = main_.Design();
  // The size comes from these fields: the design window leaves them alone.
  d->bSizeFromPanel = true;
  d->SetAppletSize(p_.AppletWidth, p_.AppletHeight);
  d->Form_Resize(p_.AppletWidth, p_.AppletHeight);
  d->bSizeFromPanel = false;
  ShowUpdateHint(false);
  const bool was = p_.bFillingPanel;
  p_.bFillingPanel = true;
  main_.txtAppletWidth->setText(QString::number(p_.AppletWidth));
  main_.txtAppletHeight->setText(QString::number(p_.AppletHeight));
  p_.bFillingPanel = was;
}

void GlobalPanel::picUpdateDesignSize_Click() {
  txtAppletWidth_KeyUp();
  txtAppletHeight_KeyUp();
  UpdateDesignSize();
}

// --- Background picture ------------------------------------------------------------------

void GlobalPanel::txtBackImg_Change() {
  const std::string text = PathBytes(main_.txtBackImg->text());
  const BackImgList list = BackImgTextChanged(text, cmbBackImgStyle->currentIndex());
  SelectBackImgStyle(list.index);
  cmbBackImgStyle->setEnabled(list.enabled);
  ShowBgOffsetFor(list.index);
  // Filling shows the record; only an edit changes it.
  if (p_.bFillingPanel) return;
  p_.BackImg = Trim(text);
  p_.BackImgStyle = list.style;
  p_.bProjectSaved = false;
  RepaintBackGround();
}

void GlobalPanel::txtBackImg_KeyUp() {
  const std::string text = Trim(PathBytes(main_.txtBackImg->text()));
  p_.BackImg = text;
  CheckPanelName(env_, PanelControl::txtImage, text);
  p_.bProjectSaved = false;
}

void GlobalPanel::btnGetBackImg_Click() {
  const std::string name = ChooseImageFile(&main_, env_, p_.sSearchImagesFolder);
  if (name.empty()) return;
  // The field's own handler writes the record and repaints.
  main_.txtBackImg->setText(DisplayText(name));
  txtBackImg_KeyUp();
  p_.sSearchImagesFolder = GetFolder(name);
  SetParam(env_, "sSearchImagesFolder", p_.sSearchImagesFolder);
}

void GlobalPanel::cmbBackImgStyle_Click() {
  const int index = cmbBackImgStyle->currentIndex();
  ShowBgOffsetFor(index);
  if (!p_.bReady || p_.bFillingPanel) return;
  p_.BackImgStyle = static_cast<i16>(index + 1);
  RepaintBackGround();
  p_.bProjectSaved = false;
}

void GlobalPanel::picGeneralBackGround_Click() {
  const Colour chosen = ChooseColour(&main_, main_.picGeneralBackGround->colour());
  if (chosen == -1) return;
  main_.picGeneralBackGround->setColour(chosen);
  p_.BackGround = chosen;
  main_.Design()->scene().Design().backColor = chosen;
  RepaintBackGround();
  if (fade_) fade_->Form_Load();
  p_.bProjectSaved = false;
}

// --- The option windows ------------------------------------------------------------------

void GlobalPanel::picBgOffset_Click() { SetBgOffset()->ShowDialog(picBgOffset); }
void GlobalPanel::btnAppletBorder_Click() { AppletBorder()->ShowDialog(); }
void GlobalPanel::btnAppletFade_Click() { AppletFade()->ShowDialog(); }
void GlobalPanel::btnAppletSpecial_Click() { Special()->ShowDialog(); }
void GlobalPanel::mnuAdvanced_Click() { Advanced()->ShowDialog(); }
void GlobalPanel::mnuDescent_Click() { Descent()->ShowDialog(); }

void GlobalPanel::btnAppletProgram_Click(int k) {
  const QString caption = frmAppletAction->title() + btnAppletProgram[k]->toolTip();
  StepScope step(main_, Words().AppletPrograms);
  frmSetAction::Of(main_, p_, env_)->myShow(kProgramKeys[k], PathBytes(caption));
}

frmSpecial* GlobalPanel::Special() {
  if (!special_) special_ = new frmSpecial(&main_, p_, env_, main_.Design()->Language());
  return special_;
}

frmAdvanced* GlobalPanel::Advanced() {
  if (!advanced_) advanced_ = new frmAdvanced(main_, env_, main_.Design()->Language());
  return advanced_;
}

frmAppletBorder* GlobalPanel::AppletBorder() {
  if (!border_)
    border_ = new frmAppletBorder(&main_, p_, env_, main_.Design()->Language(),
                                  [this] { RepaintBackGround(); });
  return border_;
}

frmAppletFade* GlobalPanel::AppletFade() {
  if (!fade_) {
    fade_ = new frmAppletFade(&main_, p_, env_, main_.Design()->Language(),
                              [this] { RepaintBackGround(); });
    fade_->onBackGround = [this](Colour c) {
      main_.picGeneralBackGround->setColour(c);
      main_.Design()->scene().Design().backColor = c;
    };
  }
  return fade_;
}

frmSetBgOffset* GlobalPanel::SetBgOffset() {
  if (!offset_)
    offset_ = new frmSetBgOffset(&main_, p_, env_, main_.Design()->Language(),
                                 [this] { RepaintBackGround(); });
  return offset_;
}

frmButtonSpecial* GlobalPanel::ButtonSpecial() {
  if (!buttonSpecial_) {
    auto* panel = static_cast<ButtonPanel*>(main_.panel);
    buttonSpecial_ = new frmButtonSpecial(main_, *panel, p_, env_, main_.Design()->Language());
  }
  return buttonSpecial_;
}

frmDescent* GlobalPanel::Descent() {
  if (!descent_) descent_ = new frmDescent(&main_, p_, env_, main_.Design()->Language());
  return descent_;
}

// --- Keys ---------------------------------------------------------------------------------

bool GlobalPanel::eventFilter(QObject* watched, QEvent* e) {
  const QEvent::Type type = e->type();
  if (type != QEvent::KeyPress && type != QEvent::KeyRelease) return false;
  const int key = static_cast<QKeyEvent*>(e)->key();
  const bool enter = key == Qt::Key_Return || key == Qt::Key_Enter;
  if (type == QEvent::KeyRelease) {
    if (watched == main_.txtAppletWidth) txtAppletWidth_KeyUp();
    else if (watched == main_.txtAppletHeight) txtAppletHeight_KeyUp();
    else if (watched == main_.txtBackImg && !enter) txtBackImg_KeyUp();
    return false;
  }
  if (!enter) return false;
  if (watched == main_.txtAppletWidth || watched == main_.txtAppletHeight) {
    UpdateDesignSize();
    return true;
  }
  if (watched == main_.txtBackImg) {
    txtBackImg_KeyUp();
    RepaintBackGround();
    return true;
  }
  return false;
}

// --- Installing ----------------------------------------------------------------------------

GlobalPanel* InstallGlobalPanel(frmMain& main, Project& p, Env& env) {
  auto* g = new GlobalPanel(main, p, env);
  if (auto* panel = static_cast<ButtonPanel*>(main.panel)) {
    panel->onSpecial = [g] { g->ButtonSpecial()->ShowDialog(); };
    // Until the dialog exists its form defaults stand.
    panel->specialControls = [g] { return g->ButtonSpecial()->ReadControls(); };
  }
  return g;
}

}  // namespace kp
