// The button panel's controls, their texts and their places.
#include <QCheckBox>
#include <QComboBox>
#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QIntValidator>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPainter>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>

#include "properties/button_panel.h"
#include "design/colour_box.h"
#include "properties/frm_main.h"

namespace kp {

// The order is the order of the panel's lines in a language file; list
// items follow their list, one line each.
UiTexts& ButtonPanel::Texts() {
  static UiTexts t = {
      {"lblName", "Name:"},
      {"btnUpState", "Up State"},
      {"btnOverState", "Mouse-Over"},
      {"btnDownState", "Down State"},
      {"btnCopyToAll.ToolTip", "Copy last change to other button states"},
      {"lblLabel", "Label:"},
      {"txtLabel", "My Button"},
      {"btnMultiLine", "..."},
      {"lblFont", "Font:"},
      {"lsFont.0", "Arial"},
      {"lsFont.1", "Courier"},
      {"lsFont.2", "Times"},
      {"lsFont.3", "Dialog"},
      {"imgBold.ToolTip", "Bold"},
      {"imgItalic.ToolTip", "Italic"},
      {"lblFontColor", "Text Color:"},
      {"lblBackColor", "Button Color:"},
      {"chkTransparent", "Transparent"},
      {"chkTransparent.ToolTip", "Button Will be Transparent"},
      {"chkCenterText", "Center Text"},
      {"chkPositionText", "Manual Text Position"},
      {"lblLabelPosX", "x:"},
      {"lblLabelPosY", "y:"},
      {"lblImage", "Image:"},
      {"btnGetBitmap", "..."},
      {"cmbImgStyle.0", "Center"},
      {"cmbImgStyle.1", "Manual"},
      {"cmbImgStyle.2", "Stretch"},
      {"lblImgX", "x:"},
      {"lblImgY", "y:"},
      {"lblSound", "Sound:"},
      {"btnGetSound", "..."},
      {"chkSoundLoop", "Loop sound"},
      {"chkSoundStop", "Stop playing sound when state changes"},
      {"lblBorder", "Border:"},
      {"cmbBorderStyle.0", "None"},
      {"cmbBorderStyle.1", "Raised"},
      {"cmbBorderStyle.2", "Lowered"},
      {"cmbBorderStyle.3", "Light"},
      {"cmbBorderStyle.4", "Dark"},
      {"lblBorderWidth", "width:"},
      {"lblBorderShade", "shade:"},
      {"chkBorderAutoColor", "Auto Color"},
      {"btnTFrame", "Special"},
      {"btnTFrame.ToolTip", "Button Special Options"},
      {"lblURL", "Link:"},
      {"btnGetLink", "..."},
      {"lblTarget", "Target:"},
      {"lblStatus", "Status:"},
      {"lblTip", "Tip:"},
      {"lblX", "X:"},
      {"lblY", "Y:"},
      {"lblWidth", "Width:"},
      {"lblHeight", "Height:"},
      {"btnAdvanced", "More Options"},
      {"chkHidden", "Hidden"},
      {"chkHidden.ToolTip", "Initially Hidden, Useful for making visible on RunTime."},
      {"chkShowHand", "Show Hand"},
      {"chkShowHand.ToolTip", "Show Hand Cursor"},
      {"chkRadio", "Act as Radio Button"},
      {"chkRadio.ToolTip", "Makes button to act as a Radio button"},
      {"chkDOWNBtn", "Initially Pressed "},
      {"chkDOWNBtn.ToolTip", "Initially Pressed (only one button can have this option)"},
      {"btnAction", "Set Action -->"},
      {"cmbAction.0", " On Mouse Up"},
      {"cmbAction.1", " On Entering Button"},
      {"cmbAction.2", " On Leaving Button"},
      {"cmbAction.3", " On Mouse Down"},
      {"cmbAction.4", " On Check"},
      {"cmbAction.5", " On Uncheck"},
  };
  return t;
}

// --- Picture toggles -----------------------------------------------------------

namespace {

QPixmap TogglePicture(const QString& letter, bool italic, PictureToggle::Look look,
                      const QPalette& pal) {
  const int w = 22, h = 22;
  QPixmap pm(w, h);
  const QColor face = pal.color(QPalette::Button);
  pm.fill(look == PictureToggle::Pressed ? face.darker(115) : face);
  QPainter g(&pm);
  if (look != PictureToggle::Up) {
    // Raised when hovered, sunken when pressed.
    const QColor light = face.lighter(160);
    const QColor dark = face.darker(170);
    const bool raised = look == PictureToggle::Hovered;
    g.setPen(raised ? light : dark);
    g.drawLine(0, 0, w - 1, 0);
    g.drawLine(0, 0, 0, h - 1);
    g.setPen(raised ? dark : light);
    g.drawLine(0, h - 1, w - 1, h - 1);
    g.drawLine(w - 1, 0, w - 1, h - 1);
  }
  QFont f("Times");
  f.setPixelSize(15);
  f.setBold(!italic);
  f.setItalic(italic);
  g.setFont(f);
  g.setPen(pal.color(QPalette::ButtonText));
  const int shift = look == PictureToggle::Pressed ? 1 : 0;
  g.drawText(QRect(shift, shift, w, h), Qt::AlignCenter, letter);
  return pm;
}

QLabel* Caption(QWidget* parent, const char* name) {
  auto* l = new QLabel(parent);
  l->setObjectName(name);
  return l;
}

template <class T>
T* Named(T* w, const char* name) {
  w->setObjectName(name);
  return w;
}

QLineEdit* NumberField(QWidget* parent, const char* name, int width = 40) {
  auto* f = Named(new QLineEdit(parent), name);
  f->setFixedWidth(width);
  return f;
}

// Long enough for a thumb that can travel between the two arrows.
QScrollBar* SmallScroll(QWidget* parent, const char* name) {
  auto* s = Named(new QScrollBar(Qt::Horizontal, parent), name);
  s->setRange(0, 999);
  s->setMinimumWidth(72);
  s->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  return s;
}

// Shown or hidden, the widget keeps its place, so that its neighbours do
// not move and the panel does not grow when it appears.
void KeepPlace(QWidget* w) {
  QSizePolicy sp = w->sizePolicy();
  sp.setRetainSizeWhenHidden(true);
  w->setSizePolicy(sp);
}

}  // namespace

PictureToggle::PictureToggle(const QString& letter, bool italic, QWidget* parent)
    : QAbstractButton(parent) {
  for (int k = 0; k < 3; ++k)
    pictures_[static_cast<size_t>(k)] = TogglePicture(letter, italic, static_cast<Look>(k), palette());
  setCheckable(true);
  setFocusPolicy(Qt::StrongFocus);
  setFixedSize(22, 22);
  setMouseTracking(true);
  ShowLook(Up);
}

void PictureToggle::ShowLook(Look look) {
  look_ = look;
  update();
}

void PictureToggle::paintEvent(QPaintEvent*) {
  QPainter g(this);
  g.drawPixmap(0, 0, pictures_[static_cast<size_t>(look_)]);
  if (hasFocus()) {
    g.setPen(QPen(palette().color(QPalette::Highlight), 1, Qt::DotLine));
    g.drawRect(rect().adjusted(2, 2, -3, -3));
  }
}

// The press itself flips the toggle, as the pictures always did; the
// release does nothing more.
void PictureToggle::mousePressEvent(QMouseEvent* e) {
  if (e->button() == Qt::LeftButton && onMouseDown) onMouseDown();
}

void PictureToggle::mouseReleaseEvent(QMouseEvent*) {}

void PictureToggle::mouseMoveEvent(QMouseEvent*) {
  if (onMouseMove) onMouseMove();
}

void PictureToggle::enterEvent(QEnterEvent*) {
  if (onMouseMove) onMouseMove();
}

// Space: the panel's handler flips the flag and sets the checked state.
void PictureToggle::nextCheckState() {
  if (onMouseDown) onMouseDown();
}

// --- Controls ------------------------------------------------------------------

void ButtonPanel::BuildControls() {
  txt_btnName = Named(new QLineEdit(this), "txt_btnName");
  btnUpState = Named(new QPushButton(this), "btnUpState");
  btnOverState = Named(new QPushButton(this), "btnOverState");
  btnDownState = Named(new QPushButton(this), "btnDownState");
  for (QPushButton* tab : {btnUpState, btnOverState, btnDownState}) {
    tab->setCheckable(true);
    tab->setAutoDefault(false);
  }
  btnCopyToAll = Named(new QToolButton(this), "btnCopyToAll");
  btnCopyToAll->setText(QString::fromUtf8("\u21c9"));
  btnCopyToAll->setEnabled(false);

  Frame1 = Named(new QFrame(this), "Frame1");
  Frame1->setFrameStyle(QFrame::StyledPanel | QFrame::Raised);
  Frame1->setMouseTracking(true);
  txtLabel = Named(new QLineEdit(Frame1), "txtLabel");
  btnMultiLine = Named(new QPushButton(Frame1), "btnMultiLine");
  btnMultiLine->setFixedWidth(28);
  lsFont = Named(new QComboBox(Frame1), "lsFont");
  lsFont->setEditable(true);
  lsFont->setInsertPolicy(QComboBox::NoInsert);
  lsFontSize = Named(new QComboBox(Frame1), "lsFontSize");
  lsFontSize->setEditable(true);
  lsFontSize->setInsertPolicy(QComboBox::NoInsert);
  for (int size : {8, 9, 10, 11, 12, 14, 16, 18, 20, 22, 24, 26, 28, 36, 48, 72})
    lsFontSize->addItem(QString::number(size));
  lsFontSize->setFixedWidth(56);
  // A typed size stands as typed: "2" must not become "20" on Enter.
  lsFontSize->setCompleter(nullptr);
  imgBold = Named(new PictureToggle("B", false, Frame1), "imgBold");
  imgItalic = Named(new PictureToggle("I", true, Frame1), "imgItalic");
  picFontColor = Named(new ColourBox(Frame1), "picFontColor");
  picBackColor = Named(new ColourBox(Frame1), "picBackColor");
  for (ColourBox* c : {picFontColor, picBackColor}) c->setFixedSize(36, 20);
  chkTransparent = Named(new QCheckBox(Frame1), "chkTransparent");
  chkCenterText = Named(new QCheckBox(Frame1), "chkCenterText");
  chkPositionText = Named(new QCheckBox(Frame1), "chkPositionText");
  frameTextPos = Named(new QFrame(Frame1), "frameTextPos");
  txtLabelPosX = NumberField(frameTextPos, "txtLabelPosX");
  txtLabelPosY = NumberField(frameTextPos, "txtLabelPosY");
  txtImage = Named(new QLineEdit(Frame1), "txtImage");
  btnGetBitmap = Named(new QPushButton(Frame1), "btnGetBitmap");
  cmbImgStyle = Named(new QComboBox(Frame1), "cmbImgStyle");
  frameImgOffset = Named(new QFrame(Frame1), "frameImgOffset");
  txtImgX = NumberField(frameImgOffset, "txtImgX");
  txtImgY = NumberField(frameImgOffset, "txtImgY");
  txtSound = Named(new QLineEdit(Frame1), "txtSound");
  btnGetSound = Named(new QPushButton(Frame1), "btnGetSound");
  chkSoundLoop = Named(new QCheckBox(Frame1), "chkSoundLoop");
  chkSoundStop = Named(new QCheckBox(Frame1), "chkSoundStop");
  cmbBorderStyle = Named(new QComboBox(Frame1), "cmbBorderStyle");
  txtBorderWidth = NumberField(Frame1, "txtBorderWidth", 36);
  scrollBorderWidth = SmallScroll(Frame1, "scrollBorderWidth");
  txtBorderShade = NumberField(Frame1, "txtBorderShade", 36);
  scrollBorderShade = SmallScroll(Frame1, "scrollBorderShade");
  picBorderColor = Named(new ColourBox(Frame1), "picBorderColor");
  picBorderColor->setFixedSize(36, 20);
  chkBorderAutoColor = Named(new QCheckBox(Frame1), "chkBorderAutoColor");
  btnTFrame = Named(new QPushButton(Frame1), "btnTFrame");
  for (QPushButton* b : {btnGetBitmap, btnGetSound}) b->setFixedWidth(28);

  txtURL = Named(new QLineEdit(this), "txtURL");
  btnGetLink = Named(new QPushButton(this), "btnGetLink");
  btnGetLink->setFixedWidth(28);
  lsTarget = Named(new QComboBox(this), "lsTarget");
  lsTarget->setEditable(true);
  lsTarget->setInsertPolicy(QComboBox::NoInsert);
  for (const char* t : {"_self", "_parent", "_top", "_blank"}) lsTarget->addItem(t);
  txtStatus = Named(new QLineEdit(this), "txtStatus");
  txtTip = Named(new QLineEdit(this), "txtTip");
  txtX = NumberField(this, "txtX", 48);
  txtY = NumberField(this, "txtY", 48);
  txtWidth = NumberField(this, "txtWidth", 48);
  txtHeight = NumberField(this, "txtHeight", 48);
  btnAdvanced = Named(new QPushButton(this), "btnAdvanced");
  chkHidden = Named(new QCheckBox(this), "chkHidden");
  chkShowHand = Named(new QCheckBox(this), "chkShowHand");
  chkRadio = Named(new QCheckBox(this), "chkRadio");
  chkDOWNBtn = Named(new QCheckBox(this), "chkDOWNBtn");
  // The four options wait behind "More Options".
  for (QCheckBox* c : {chkShowHand, chkDOWNBtn, chkRadio, chkHidden}) c->hide();
  btnAction = Named(new QPushButton(this), "btnAction");
  cmbAction = Named(new QComboBox(this), "cmbAction");

  // A translated item widens its list rather than being cut.
  for (QComboBox* c : {cmbImgStyle, cmbBorderStyle})
    c->setSizeAdjustPolicy(QComboBox::AdjustToContents);
  for (QPushButton* b : findChildren<QPushButton*>()) b->setAutoDefault(false);
  frameImgOffset->hide();
  frameTextPos->hide();
}

void ButtonPanel::BuildLayout() {
  auto* top = new QHBoxLayout;
  top->addWidget(Caption(this, "lblName"));
  top->addWidget(txt_btnName, 1);
  top->addWidget(btnAdvanced);

  auto* tabs = new QHBoxLayout;
  tabs->setSpacing(0);
  tabs->addWidget(btnUpState);
  tabs->addWidget(btnOverState);
  tabs->addWidget(btnDownState);
  tabs->addStretch();
  tabs->addWidget(btnCopyToAll);

  auto* g = new QGridLayout(Frame1);
  g->setVerticalSpacing(3);
  int r = 0;
  g->addWidget(Caption(Frame1, "lblLabel"), r, 0);
  {
    auto* row = new QHBoxLayout;
    row->addWidget(txtLabel, 1);
    row->addWidget(btnMultiLine);
    g->addLayout(row, r, 1);
  }
  ++r;
  g->addWidget(Caption(Frame1, "lblFont"), r, 0);
  {
    auto* row = new QHBoxLayout;
    row->addWidget(lsFont, 1);
    row->addWidget(lsFontSize);
    row->addWidget(imgBold);
    row->addWidget(imgItalic);
    g->addLayout(row, r, 1);
  }
  ++r;
  {
    // A caption, a gap, its swatch; a wider gap to the next pair.
    auto* row = new QHBoxLayout;
    row->setSpacing(6);
    row->addWidget(Caption(Frame1, "lblFontColor"));
    row->addWidget(picFontColor);
    row->addSpacing(12);
    row->addWidget(Caption(Frame1, "lblBackColor"));
    row->addWidget(picBackColor);
    row->addSpacing(12);
    row->addWidget(chkTransparent);
    row->addStretch();
    g->addLayout(row, r, 0, 1, 2);
  }
  ++r;
  {
    auto* pos = new QHBoxLayout(frameTextPos);
    pos->setContentsMargins(0, 0, 0, 0);
    pos->addWidget(Caption(frameTextPos, "lblLabelPosX"));
    pos->addWidget(txtLabelPosX);
    pos->addWidget(Caption(frameTextPos, "lblLabelPosY"));
    pos->addWidget(txtLabelPosY);
    KeepPlace(frameTextPos);
    auto* row = new QHBoxLayout;
    row->addWidget(chkCenterText);
    row->addWidget(chkPositionText);
    row->addWidget(frameTextPos);
    row->addStretch();
    g->addLayout(row, r, 0, 1, 2);
  }
  ++r;
  g->addWidget(Caption(Frame1, "lblImage"), r, 0);
  {
    auto* off = new QHBoxLayout(frameImgOffset);
    off->setContentsMargins(0, 0, 0, 0);
    off->addWidget(Caption(frameImgOffset, "lblImgX"));
    off->addWidget(txtImgX);
    off->addWidget(Caption(frameImgOffset, "lblImgY"));
    off->addWidget(txtImgY);
    KeepPlace(frameImgOffset);
    auto* row = new QHBoxLayout;
    row->addWidget(txtImage, 1);
    row->addWidget(btnGetBitmap);
    row->addWidget(cmbImgStyle);
    row->addWidget(frameImgOffset);
    g->addLayout(row, r, 1);
  }
  ++r;
  g->addWidget(Caption(Frame1, "lblSound"), r, 0);
  {
    auto* row = new QHBoxLayout;
    row->addWidget(txtSound, 1);
    row->addWidget(btnGetSound);
    row->addWidget(chkSoundLoop);
    g->addLayout(row, r, 1);
  }
  ++r;
  g->addWidget(chkSoundStop, r, 1);
  ++r;
  g->addWidget(Caption(Frame1, "lblBorder"), r, 0);
  {
    KeepPlace(picBorderColor);
    auto* row = new QHBoxLayout;
    row->addWidget(cmbBorderStyle);
    row->addWidget(picBorderColor);
    row->addWidget(chkBorderAutoColor);
    row->addStretch();
    row->addWidget(btnTFrame);
    g->addLayout(row, r, 1);
  }
  ++r;
  {
    auto* row = new QHBoxLayout;
    row->addWidget(Caption(Frame1, "lblBorderWidth"));
    row->addWidget(txtBorderWidth);
    row->addWidget(scrollBorderWidth, 1);
    row->addSpacing(8);
    row->addWidget(Caption(Frame1, "lblBorderShade"));
    row->addWidget(txtBorderShade);
    row->addWidget(scrollBorderShade, 1);
    g->addLayout(row, r, 1);
  }
  g->setColumnStretch(1, 1);

  auto* common = new QGridLayout;
  common->setVerticalSpacing(3);
  common->addWidget(Caption(this, "lblURL"), 0, 0);
  {
    auto* row = new QHBoxLayout;
    row->addWidget(txtURL, 1);
    row->addWidget(btnGetLink);
    row->addWidget(Caption(this, "lblTarget"));
    row->addWidget(lsTarget);
    common->addLayout(row, 0, 1);
  }
  common->addWidget(Caption(this, "lblStatus"), 1, 0);
  common->addWidget(txtStatus, 1, 1);
  common->addWidget(Caption(this, "lblTip"), 2, 0);
  common->addWidget(txtTip, 2, 1);
  {
    auto* row = new QHBoxLayout;
    row->addWidget(Caption(this, "lblX"));
    row->addWidget(txtX);
    row->addWidget(Caption(this, "lblY"));
    row->addWidget(txtY);
    row->addSpacing(8);
    row->addWidget(Caption(this, "lblWidth"));
    row->addWidget(txtWidth);
    row->addWidget(Caption(this, "lblHeight"));
    row->addWidget(txtHeight);
    row->addStretch();
    common->addLayout(row, 3, 0, 1, 2);
  }
  {
    // Two by two, so that the options never make the panel wider.
    auto* opts = optionsGrid_ = new QGridLayout;
    opts->setVerticalSpacing(3);
    opts->addWidget(chkShowHand, 0, 0);
    opts->addWidget(chkDOWNBtn, 0, 1);
    opts->addWidget(chkRadio, 1, 0);
    opts->addWidget(chkHidden, 1, 1);
    opts->setColumnStretch(2, 1);
    common->addLayout(opts, 4, 0, 1, 2);
  }
  {
    auto* row = new QHBoxLayout;
    row->addWidget(btnAction);
    row->addWidget(cmbAction, 1);
    common->addLayout(row, 5, 0, 1, 2);
  }
  common->setColumnStretch(1, 1);

  auto* box = new QVBoxLayout(this);
  box->setContentsMargins(0, 0, 0, 0);
  box->setSpacing(3);
  box->addLayout(top);
  box->addLayout(tabs);
  box->addWidget(Frame1);
  box->addLayout(common);
  // Room left over goes below the panel, not between its rows.
  box->addStretch(1);
}

QSize ButtonPanel::FullSizeHint(bool minimum) const {
  QSize s = minimum ? minimumSizeHint() : sizeHint();
  if (!chkShowHand->isHidden()) return s;
  // The hidden options' two rows, measured without showing them.
  auto hint = [](const QWidget* w) { return w->sizeHint(); };
  const int rowHeight = std::max({hint(chkShowHand).height(), hint(chkDOWNBtn).height(),
                                  hint(chkRadio).height(), hint(chkHidden).height()});
  const int gap = std::max(0, optionsGrid_->horizontalSpacing());
  const int width = std::max(hint(chkShowHand).width(), hint(chkRadio).width()) + gap +
                    std::max(hint(chkDOWNBtn).width(), hint(chkHidden).width());
  s.rheight() += 2 * rowHeight + optionsGrid_->verticalSpacing() + 3;
  s.setWidth(std::max(s.width(), width));
  return s;
}

void ButtonPanel::ApplyTexts() {
  const UiTexts& t = Texts();
  for (QLabel* l : findChildren<QLabel*>())
    if (l->objectName().startsWith("lbl")) l->setText(QTextOf(t, l->objectName().toStdString()));
  auto caption = [&](QWidget* w) {
    const std::string name = w->objectName().toStdString();
    if (auto* b = qobject_cast<QAbstractButton*>(w)) b->setText(QTextOf(t, name));
  };
  for (QWidget* w : std::initializer_list<QWidget*>{
           btnUpState, btnOverState, btnDownState, btnMultiLine, chkTransparent, chkCenterText,
           chkPositionText, btnGetBitmap, btnGetSound, chkSoundLoop, chkSoundStop,
           chkBorderAutoColor, btnTFrame, btnGetLink, chkHidden, chkShowHand, chkRadio,
           chkDOWNBtn, btnAction})
    caption(w);
  // Until its first click the options button shows the form's caption;
  // it keeps that width, so that it stays under the pointer.
  if (chkShowHand->isHidden() && btnAdvanced->toolTip().isEmpty()) {
    btnAdvanced->setText(QTextOf(t, "btnAdvanced"));
    btnAdvanced->setMinimumWidth(0);
    btnAdvanced->setMinimumWidth(btnAdvanced->sizeHint().width());
  }
  auto items = [&](QComboBox* c, int n) {
    const int keep = c->currentIndex();
    const bool wasFilling = p_.bFillingPanel;
    p_.bFillingPanel = true;
    const QString text = c->isEditable() ? c->currentText() : QString();
    c->clear();
    for (int k = 0; k < n; ++k)
      c->addItem(QTextOf(t, c->objectName().toStdString() + "." + std::to_string(k)));
    if (c->isEditable()) c->setEditText(text);
    else c->setCurrentIndex(keep < 0 ? 0 : keep);
    p_.bFillingPanel = wasFilling;
  };
  items(lsFont, 4);
  items(cmbImgStyle, 3);
  items(cmbBorderStyle, 5);
  items(cmbAction, 6);
  btnCopyToAll->setToolTip(QTextOf(t, "btnCopyToAll.ToolTip"));
  btnMultiLine->setToolTip(QTextOf(frmMain::Texts(), "btnMultiLine.ToolTip"));
  btnTFrame->setToolTip(QTextOf(t, "btnTFrame.ToolTip"));
  imgBold->setToolTip(QTextOf(t, "imgBold.ToolTip"));
  imgItalic->setToolTip(QTextOf(t, "imgItalic.ToolTip"));
  for (QCheckBox* c : {chkTransparent, chkHidden, chkShowHand, chkRadio, chkDOWNBtn})
    c->setToolTip(QTextOf(t, c->objectName().toStdString() + ".ToolTip"));
  // The border's swatch has no caption of its own beside it.
  picBorderColor->setAccessibleName(
      QTextOf(t, "lblBorder").remove('&').remove(':').trimmed());
  // The small "..." buttons grow with a longer caption.
  for (QPushButton* b : {btnMultiLine, btnGetBitmap, btnGetSound, btnGetLink})
    b->setFixedWidth(std::max(28, b->fontMetrics().horizontalAdvance(b->text()) + 14));
  // The scroll area around the panel asks again how wide the texts made it.
  for (QWidget* w = parentWidget(); w; w = w->parentWidget())
    if (qobject_cast<QScrollArea*>(w)) {
      w->updateGeometry();
      break;
    }
}

}  // namespace kp
