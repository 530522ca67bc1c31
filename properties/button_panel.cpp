// The button panel: its wiring, the write path and filling from the model.
#include "properties/button_panel.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QEvent>
#include <QFrame>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>

#include "core/conv.h"
#include "design/frm_design.h"
#include "properties/button_list.h"
#include "design/colour_box.h"
#include "properties/colour_dialog.h"
#include "properties/frm_main.h"
#include "properties/frm_set_action.h"

namespace kp {

QString ShownText(const std::string& bytes) { return DisplayText(bytes); }

std::string ModelText(const QString& text) {
  QByteArray b = text.toUtf8();
  return std::string(b.constData(), static_cast<size_t>(b.size()));
}

ButtonPanel::ButtonPanel(frmMain& main, Project& p, Env& env, QWidget* parent)
    : QWidget(parent), main_(main), p_(p), env_(env) {
  setObjectName("ButtonPanel");
  BuildControls();
  BuildLayout();
  ApplyTexts();
  // The form's values before any project is shown.
  txtLabel->setText(QTextOf(Texts(), "txtLabel"));
  txtWidth->setText("100");
  txtHeight->setText("100");
  lsFont->setCurrentIndex(0);
  lsFontSize->setEditText("10");
  cmbImgStyle->setCurrentIndex(0);
  cmbBorderStyle->setCurrentIndex(0);
  cmbAction->setCurrentIndex(0);
  lsTarget->setCurrentIndex(0);
  chkCenterText->setChecked(true);
  btnUpState->setChecked(true);
  list_ = new ButtonList(main, *this, p, env);
  Connect();
  MakeEnterKeys();
}

ButtonPanel::~ButtonPanel() { delete list_; }

frmDesign* ButtonPanel::Design() { return main_.Design(); }

// --- Wiring ----------------------------------------------------------------------

void ButtonPanel::Connect() {
  using C = PanelControl;
  auto onText = [this](QLineEdit* f, C c) {
    connect(f, &QLineEdit::textChanged, this, [this, c] { Run(c); });
  };
  onText(txtLabel, C::txtLabel);
  onText(txtBorderWidth, C::txtBorderWidth);
  onText(txtBorderShade, C::txtBorderShade);
  onText(txtImage, C::txtImage);
  onText(txtSound, C::txtSound);
  onText(txtURL, C::txtURL);
  onText(txtStatus, C::txtStatus);
  onText(txtTip, C::txtTip);
  onText(txtX, C::txtX);
  onText(txtY, C::txtY);
  onText(txtWidth, C::txtWidth);
  onText(txtHeight, C::txtHeight);
  onText(txtLabelPosX, C::txtLabelPosX);
  onText(txtLabelPosY, C::txtLabelPosY);

  // Lists: a choice in the list, or Enter in its text (MakeEnterKeys).
  connect(lsFont, &QComboBox::activated, this, [this] { Run(C::lsFont); });
  connect(lsFontSize, &QComboBox::activated, this, [this] { Run(C::lsFontSize); });
  connect(lsTarget, &QComboBox::activated, this, [this] { Run(C::lsTarget); });
  // The style lists follow every change of their index, filling included;
  // the guards of the write path tell the two apart.
  connect(cmbBorderStyle, &QComboBox::currentIndexChanged, this,
          [this] { Run(C::cmbBorderStyle); });
  connect(cmbImgStyle, &QComboBox::currentIndexChanged, this, [this] { Run(C::cmbImgStyle); });

  auto onCheck = [this](QCheckBox* b, C c) {
    connect(b, &QCheckBox::clicked, this, [this, c] { Run(c); });
  };
  onCheck(chkTransparent, C::chkTransparent);
  onCheck(chkHidden, C::chkHidden);
  onCheck(chkShowHand, C::chkShowHand);
  onCheck(chkRadio, C::chkRadio);
  onCheck(chkSoundLoop, C::chkSoundLoop);
  onCheck(chkSoundStop, C::chkSoundStop);
  onCheck(chkBorderAutoColor, C::chkBorderAutoColor);
  connect(chkCenterText, &QCheckBox::clicked, this, [this] { chkCenterText_MouseUp(); });
  connect(chkPositionText, &QCheckBox::clicked, this, [this] { chkPositionText_MouseUp(); });
  connect(chkDOWNBtn, &QCheckBox::clicked, this, [this] { chkDOWNBtn_MouseUp(); });

  auto onColour = [this](ColourBox* box, C c) {
    box->onClick = [this, box, c] {
      const Colour chosen = ChooseColour(this, box->colour());
      // A cancel ends here: no write, and the last change stays.
      if (chosen == -1) return;
      box->setColour(chosen);
      Run(c);
    };
  };
  onColour(picFontColor, C::picFontColor);
  onColour(picBackColor, C::picBackColor);
  onColour(picBorderColor, C::picBorderColor);

  connect(scrollBorderWidth, &QScrollBar::valueChanged, this,
          [this] { ScrollChanged(scrollBorderWidth, txtBorderWidth); });
  connect(scrollBorderShade, &QScrollBar::valueChanged, this,
          [this] { ScrollChanged(scrollBorderShade, txtBorderShade); });

  imgBold->onMouseDown = [this] { imgBold_MouseDown(); };
  imgItalic->onMouseDown = [this] { imgItalic_MouseDown(); };
  // A screen reader's toggle sets the checked state directly.
  connect(imgBold, &QAbstractButton::toggled, this, [this](bool on) {
    if (on != bBold) imgBold_MouseDown();
  });
  connect(imgItalic, &QAbstractButton::toggled, this, [this](bool on) {
    if (on != bItalic) imgItalic_MouseDown();
  });
  imgBold->onMouseMove = [this] {
    if (!bBold) imgBold->ShowLook(PictureToggle::Hovered);
  };
  imgItalic->onMouseMove = [this] {
    if (!bItalic) imgItalic->ShowLook(PictureToggle::Hovered);
  };
  Frame1->installEventFilter(this);
  imgBold->installEventFilter(this);
  imgItalic->installEventFilter(this);

  // A tab switches when it turns on, whether by a click, a key or a screen
  // reader's toggle; the group keeps exactly one on. A click on the tab
  // that is already on runs the switch again, as it always did.
  auto* tabs = new QButtonGroup(this);
  tabs->setExclusive(true);
  const std::pair<QPushButton*, const char*> states[] = {
      {btnUpState, "UP"}, {btnOverState, "OVER"}, {btnDownState, "DOWN"}};
  for (auto [tab, state] : states) {
    tabs->addButton(tab);
    connect(tab, &QPushButton::pressed, this, [this] { stateAtPress_ = p_.sState; });
    connect(tab, &QPushButton::toggled, this, [this, state](bool on) {
      if (on && p_.sState != state) SwitchTab(state);
    });
    connect(tab, &QPushButton::clicked, this, [this, state] {
      if (p_.sState == state && stateAtPress_ == state) SwitchTab(state);
    });
  }
  connect(btnCopyToAll, &QToolButton::clicked, this, [this] { btnCopyToAll_Click(); });
  connect(btnAdvanced, &QPushButton::clicked, this, [this] { btnAdvanced_Click(); });
  connect(btnGetLink, &QPushButton::clicked, this, [this] { btnGetLink_Click(); });
  connect(btnGetBitmap, &QPushButton::clicked, this, [this] { btnGetBitmap_Click(); });
  connect(btnGetSound, &QPushButton::clicked, this, [this] { btnGetSound_Click(); });
  connect(btnMultiLine, &QPushButton::clicked, this, [this] { btnMultiLine_Click(); });
  connect(btnTFrame, &QPushButton::clicked, this, [this] { btnTFrame_Click(); });
  connect(btnAction, &QPushButton::clicked, this, [this] { btnAction_Click(); });
}

void ButtonPanel::MakeEnterKeys() {
  using C = PanelControl;
  enterRuns_ = {
      {txtLabel, C::txtLabel},          {lsFont->lineEdit(), C::lsFont},
      {lsFontSize->lineEdit(), C::lsFontSize}, {txtBorderWidth, C::txtBorderWidth},
      {txtBorderShade, C::txtBorderShade}, {txtImage, C::txtImage},
      {txtSound, C::txtSound},          {txtURL, C::txtURL},
      {lsTarget->lineEdit(), C::lsTarget}, {txtStatus, C::txtStatus},
      {txtTip, C::txtTip},              {txtX, C::txtX},
      {txtY, C::txtY},                  {txtWidth, C::txtWidth},
      {txtHeight, C::txtHeight},        {txtLabelPosX, C::txtLabelPosX},
      {txtLabelPosY, C::txtLabelPosY},
  };
  // An editable list takes the keys itself (its text field hands the focus
  // to it) and passes Enter to the field past any filter there; a typed
  // text that is no item of the list would then be dropped.
  enterRuns_.push_back({lsFont, C::lsFont});
  enterRuns_.push_back({lsFontSize, C::lsFontSize});
  enterRuns_.push_back({lsTarget, C::lsTarget});
  enterSwallows_ = {txtImgX, txtImgY, txt_btnName};
  for (auto& [w, c] : enterRuns_) w->installEventFilter(this);
  for (QObject* w : enterSwallows_) w->installEventFilter(this);
}

bool ButtonPanel::eventFilter(QObject* watched, QEvent* e) {
  const QEvent::Type type = e->type();
  if (type == QEvent::KeyPress || type == QEvent::KeyRelease) {
    auto* k = static_cast<QKeyEvent*>(e);
    const bool enter = k->key() == Qt::Key_Return || k->key() == Qt::Key_Enter;
    if (type == QEvent::KeyRelease) {
      if (watched == txtImgX) Run(PanelControl::txtImgX);
      else if (watched == txtImgY) Run(PanelControl::txtImgY);
      else if (watched == txt_btnName) list_->txt_btnName_KeyUp();
      return false;
    }
    if (!enter) return false;
    // Enter runs the field's handler once more and goes no further: no
    // line break, no default button.
    for (auto& [w, c] : enterRuns_)
      if (w == watched) {
        Run(c);
        return true;
      }
    for (QObject* w : enterSwallows_)
      if (w == watched) return true;
    return false;
  }
  if (type == QEvent::MouseMove && watched == Frame1) Frame1_MouseMove();
  if (type == QEvent::Leave && (watched == imgBold || watched == imgItalic)) Frame1_MouseMove();
  return false;
}

// --- The write path -----------------------------------------------------------------

std::vector<int> ButtonPanel::SelectedButtons() const {
  std::vector<int> out;
  QListWidget* list = main_.lstButtons;
  const int rows = list->count();
  for (int r = 0; r < rows; ++r)
    if (list->item(r)->isSelected()) out.push_back(r + 1);
  return out;
}

int ButtonPanel::SelectedRowCount() const {
  return static_cast<int>(main_.lstButtons->selectedItems().size());
}

std::string ButtonPanel::ValueOf(PanelControl c) const {
  using C = PanelControl;
  auto text = [](const QLineEdit* f) { return ModelText(f->text()); };
  auto check = [](const QCheckBox* b) { return std::string(b->isChecked() ? "1" : "0"); };
  auto colour = [](const ColourBox* b) { return std::to_string(b->colour()); };
  switch (c) {
    case C::txtLabel: return text(txtLabel);
    case C::lsFont: return ModelText(lsFont->currentText());
    case C::lsFontSize: return ModelText(lsFontSize->currentText());
    case C::imgBold:
    case C::imgItalic: return std::to_string(FontStyleOf(bBold, bItalic));
    case C::picFontColor: return colour(picFontColor);
    case C::picBackColor: return colour(picBackColor);
    case C::picBorderColor: return colour(picBorderColor);
    case C::cmbBorderStyle: return std::to_string(cmbBorderStyle->currentIndex());
    case C::txtBorderWidth: return text(txtBorderWidth);
    case C::txtBorderShade: return text(txtBorderShade);
    case C::chkBorderAutoColor: return check(chkBorderAutoColor);
    case C::chkTransparent: return check(chkTransparent);
    case C::cmbImgStyle: return std::to_string(cmbImgStyle->currentIndex());
    case C::txtImgX: return text(txtImgX);
    case C::txtImgY: return text(txtImgY);
    case C::txtImage: return text(txtImage);
    case C::txtSound: return text(txtSound);
    case C::txtURL: return text(txtURL);
    case C::lsTarget: return ModelText(lsTarget->currentText());
    case C::txtStatus: return text(txtStatus);
    case C::txtTip: return text(txtTip);
    case C::txtX: return text(txtX);
    case C::txtY: return text(txtY);
    case C::txtWidth: return text(txtWidth);
    case C::txtHeight: return text(txtHeight);
    case C::chkHidden: return check(chkHidden);
    case C::chkShowHand: return check(chkShowHand);
    case C::chkRadio: return check(chkRadio);
    // Both text-position boxes write the flag the manual box shows.
    case C::chkCenterText:
    case C::chkPositionText: return check(chkPositionText);
    case C::txtLabelPosX: return text(txtLabelPosX);
    case C::txtLabelPosY: return text(txtLabelPosY);
    case C::chkSoundLoop: return check(chkSoundLoop);
    case C::chkSoundStop: return check(chkSoundStop);
  }
  return "";
}

void ButtonPanel::Run(PanelControl c) {
  using C = PanelControl;
  // The offset frame follows the list whatever the guards say.
  if (c == C::cmbImgStyle) frameImgOffset->setVisible(cmbImgStyle->currentIndex() == 1);
  const std::string value = ValueOf(c);
  WriteOutcome w = WritePanelValue(p_, SelectedButtons(), c, value);
  if (!w.ran) return;
  RedrawWritten(c, w.written);
  const int s = GetStateIndex(p_);
  const bool current = p_.iCurBtn >= 1 && p_.iCurBtn <= p_.ButtonCount;
  switch (c) {
    case C::lsFontSize:
      if (current) Design()->RedrawButton(p_.iCurBtn, false, false, false, true);
      break;
    case C::txtBorderWidth:
      if (!bScrollMark) SyncScroll(scrollBorderWidth, BorderWidthOf(value));
      break;
    case C::txtBorderShade:
      if (!bScrollMark) SyncScroll(scrollBorderShade, BorderShadeOf(value));
      break;
    case C::chkBorderAutoColor:
      // The drawing derived the colour while auto is on.
      if (current && s != 0) picBorderColor->setColour(p_.button(p_.iCurBtn).BorderColor[s]);
      picBorderColor->setVisible(!chkBorderAutoColor->isChecked());
      break;
    case C::txtLabelPosX:
    case C::txtLabelPosY:
      if (current) Design()->MoveLabelPositioner(p_.iCurBtn);
      break;
    default: break;
  }
  CheckPanelName(env_, c, value);
  if (w.code != 0) SetLastChange(w.code);
}

void ButtonPanel::RedrawWritten(PanelControl c, const std::vector<int>& written) {
  frmDesign* d = Design();
  switch (RuleOf(c).redraw) {
    case PanelRedraw::None: return;
    case PanelRedraw::InPlace:
      for (int i : written) d->RedrawButton(i, false, false, false, true);
      return;
    case PanelRedraw::Move: {
      // With several rows selected the buttons move and the marks stay.
      const bool single = SelectedRowCount() <= 1;
      for (int i : written) d->RedrawButton(i, single, single, false, true);
      return;
    }
  }
}

void ButtonPanel::ScrollChanged(QScrollBar* bar, QLineEdit* field) {
  if (p_.bFillingPanel) return;
  bScrollMark = true;
  field->setText(QString::number(bar->value()));
  bScrollMark = false;
}

void ButtonPanel::SyncScroll(QScrollBar* bar, i16 value) {
  // A value beyond the bar stays in the model; the bar stays where it was.
  if (value < bar->minimum() || value > bar->maximum()) return;
  QSignalBlocker quiet(bar);
  bar->setValue(value);
}

void ButtonPanel::SetLastChange(int code) {
  p_.iLast_Change = static_cast<i16>(code);
  btnCopyToAll->setEnabled(code != 0);
}

// --- Filling --------------------------------------------------------------------------

void ButtonPanel::SetFontStyle(int style) {
  bBold = IsBoldStyle(style);
  bItalic = IsItalicStyle(style);
  imgBold->ShowLook(bBold ? PictureToggle::Pressed : PictureToggle::Up);
  imgItalic->ShowLook(bItalic ? PictureToggle::Pressed : PictureToggle::Up);
  for (auto [t, on] : {std::pair{imgBold, bBold}, std::pair{imgItalic, bItalic}}) {
    const QSignalBlocker quiet(t);
    t->setChecked(on);
  }
}

void ButtonPanel::ShowTextPosMode(bool manual) {
  chkPositionText->setChecked(manual);
  chkCenterText->setChecked(!manual);
  frameTextPos->setVisible(manual);
}

void ButtonPanel::ShowProp(int index) {
  if (p_.ButtonCount == 0) return;
  if (index < 1 || index > p_.ButtonCount) return;
  p_.bFillingPanel = true;
  const tButton& b = p_.button(index);
  list_->ShowDeleteCaption(b.sBName);
  main_.frameBtnProp->setTitle(QTextOf(frmMain::Texts(), "frameBtnProp") + ShownText(b.sBName));

  txtURL->setText(ShownText(UnescapeField(b.URL)));
  lsTarget->setEditText(ShownText(b.Target));
  txtStatus->setText(ShownText(b.Status));
  txtTip->setText(ShownText(b.Tip));
  txtX->setText(QString::number(b.x));
  txtY->setText(QString::number(b.y));
  txtWidth->setText(QString::number(b.Width));
  txtHeight->setText(QString::number(b.Height));
  chkHidden->setChecked(b.Hidden != 0);
  chkShowHand->setChecked(b.ShowHand);
  chkRadio->setChecked(b.Radio);
  txt_btnName->setText(ShownText(b.sBName));
  chkDOWNBtn->setChecked(p_.DOWNBtn == index);

  const int s = GetStateIndex(p_);
  if (s != 0) {
    chkSoundStop->setChecked(b.SoundStop[s]);
    chkSoundLoop->setChecked(b.SoundLoop[s]);
    chkTransparent->setChecked(b.noBackGround[s]);
    txtImgX->setText(QString::number(b.ImgX[s]));
    txtImgY->setText(QString::number(b.ImgY[s]));

    txtLabel->setText(ShownText(UnescapeField(b.Label[s])));
    lsFont->setEditText(ShownText(b.Font[s]));
    lsFontSize->setEditText(QString::number(b.FontSize[s]));
    picFontColor->setColour(b.FontColor[s]);
    picBackColor->setColour(b.BackColor[s]);
    txtImage->setText(ShownText(b.Image[s]));
    txtSound->setText(ShownText(b.Snd[s]));
    SetFontStyle(b.FontStyle[s]);
    cmbImgStyle->setCurrentIndex(b.ImgStyle[s] >= 0 && b.ImgStyle[s] < cmbImgStyle->count()
                                     ? b.ImgStyle[s]
                                     : -1);
    frameImgOffset->setVisible(cmbImgStyle->currentIndex() == 1);
    ShowTextPosMode(b.PositionText[s]);
    Design()->MoveLabelPositioner(index);
    txtLabelPosX->setText(QString::number(b.LabelPosX[s]));
    txtLabelPosY->setText(QString::number(b.LabelPosY[s]));
    cmbBorderStyle->setCurrentIndex(
        b.BorderStyle[s] >= 0 && b.BorderStyle[s] < cmbBorderStyle->count() ? b.BorderStyle[s]
                                                                            : -1);
    chkBorderAutoColor->setChecked(b.BorderAutoColor[s]);
    txtBorderWidth->setText(QString::number(b.BorderWidth[s]));
    SyncScroll(scrollBorderWidth, b.BorderWidth[s]);
    txtBorderShade->setText(QString::number(b.BorderShade[s]));
    SyncScroll(scrollBorderShade, b.BorderShade[s]);
    picBorderColor->setColour(b.BorderColor[s]);
    picBorderColor->setVisible(!b.BorderAutoColor[s]);
  }
  p_.bFillingPanel = false;
}

// --- Installing -------------------------------------------------------------------------

namespace {

// The panel scrolls inside its frame, so that the main window may be made
// smaller than the panel; its size hint is the whole panel's.
class PanelScroll : public QScrollArea {
 public:
  using QScrollArea::QScrollArea;
  QSize sizeHint() const override {
    auto* panel = dynamic_cast<ButtonPanel*>(widget());
    if (!panel) return QScrollArea::sizeHint();
    // Every mode fits: the panel's size with all its options shown.
    QSize s = panel->FullSizeHint();
    s.rwidth() += verticalScrollBar()->sizeHint().width();
    return s;
  }
  // A panel that grows (longer captions, another mode) tells the window.
  bool eventFilter(QObject* o, QEvent* e) override {
    if (o == widget() && e->type() == QEvent::LayoutRequest) updateGeometry();
    return QScrollArea::eventFilter(o, e);
  }
  // Never narrower than the panel, whatever the language makes of it.
  QSize minimumSizeHint() const override {
    auto* panel = dynamic_cast<ButtonPanel*>(widget());
    if (!panel) return QScrollArea::minimumSizeHint();
    const int width = panel->FullSizeHint(true).width() + verticalScrollBar()->sizeHint().width();
    return {width, QScrollArea::minimumSizeHint().height()};
  }
};

}  // namespace

ButtonPanel* InstallButtonPanel(frmMain& main, Project& p, Env& env) {
  auto* scroll = new PanelScroll(main.frameBtnProp);
  scroll->setObjectName("scrollBtnProp");
  scroll->setFrameShape(QFrame::NoFrame);
  scroll->setWidgetResizable(true);
  scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  auto* panel = new ButtonPanel(main, p, env, nullptr);
  scroll->setWidget(panel);
  panel->installEventFilter(scroll);
  if (auto* box = qobject_cast<QVBoxLayout*>(main.frameBtnProp->layout()))
    box->insertWidget(0, scroll, 1);
  // The frame's place-holder minimum gives way to what the panel needs.
  main.frameBtnProp->setMinimumSize(0, 0);
  main.panel = panel;
  panel->onSetAction = [&main, &p, &env, panel](const std::string& key) {
    const QString caption = panel->btnAction->text() + panel->cmbAction->currentText();
    StepScope step(main, Words().Action);
    frmSetAction::Of(main, p, env)->myShow(key, ModelText(caption));
  };
  // The first size shows the whole panel.
  const QSize want = main.sizeHint();
  main.resize(std::max(main.width(), want.width()), std::max(main.height(), want.height()));
  return panel;
}

}  // namespace kp
