// The button panel's handlers beyond the plain write path: state tabs,
// text position, bold and italic, the options button, the pickers
// and the buttons that open other windows.
#include <QCheckBox>
#include <QComboBox>
#include <QFrame>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSignalBlocker>
#include <QToolButton>

#include "core/conv.h"
#include "core/settings.h"
#include "design/frm_design.h"
#include "properties/button_list.h"
#include "properties/button_panel.h"
#include "design/colour_box.h"
#include "properties/frm_main.h"
#include "properties/frm_multi_line_editor.h"
#include "properties/frm_pic_browser.h"
#include "publish/sound.h"

namespace kp {

// --- State tabs ------------------------------------------------------------------

void ButtonPanel::ShowTabLook() {
  btnUpState->setChecked(p_.sState == "UP");
  btnOverState->setChecked(p_.sState == "OVER");
  btnDownState->setChecked(p_.sState == "DOWN");
  Frame1->setProperty("state", QString::fromStdString(p_.sState));
}

void ButtonPanel::SwitchState(const char* state) {
  env_.prompter.Busy(true);
  p_.sState = state;
  ShowTabLook();
  ShowProp(p_.iCurBtn);
  env_.prompter.ProcessEvents();
  // Every button in the chosen state; the handles and the label marker
  // follow the current button.
  Design()->RedrawAllButtons();
  // The editor window has no meta-object of its own: find it by its type.
  for (QObject* child : main_.children())
    if (auto* editor = dynamic_cast<frmMultiLineEditor*>(child); editor && editor->isVisible())
      editor->Form_Activate();
  SetLastChange(0);
  env_.prompter.Busy(false);
  txtLabel->setFocus();
}

void ButtonPanel::btnUpState_Click() { SwitchState("UP"); }
void ButtonPanel::btnOverState_Click() { SwitchState("OVER"); }
void ButtonPanel::btnDownState_Click() { SwitchState("DOWN"); }

void ButtonPanel::SwitchTab(const std::string& state) {
  if (state == "UP") btnUpState_Click();
  else if (state == "OVER") btnOverState_Click();
  else btnDownState_Click();
}

// --- Copy to the other states ----------------------------------------------------------

PanelControls ButtonPanel::ReadControls() const {
  PanelControls c;
  c.txtLabel = ModelText(txtLabel->text());
  c.chkPositionText = chkPositionText->isChecked();
  c.txtLabelPosX = ModelText(txtLabelPosX->text());
  c.txtLabelPosY = ModelText(txtLabelPosY->text());
  c.lsFont = ModelText(lsFont->currentText());
  c.lsFontSize = ModelText(lsFontSize->currentText());
  c.fontStyle = FontStyleOf(bBold, bItalic);
  c.txtImage = ModelText(txtImage->text());
  c.cmbImgStyle = cmbImgStyle->currentIndex();
  c.txtSound = ModelText(txtSound->text());
  c.picBackColor = picBackColor->colour();
  c.picFontColor = picFontColor->colour();
  c.cmbBorderStyle = cmbBorderStyle->currentIndex();
  c.chkBorderAutoColor = chkBorderAutoColor->isChecked();
  c.txtBorderWidth = ModelText(txtBorderWidth->text());
  c.txtBorderShade = ModelText(txtBorderShade->text());
  c.picBorderColor = picBorderColor->colour();
  c.chkSoundStop = chkSoundStop->isChecked();
  c.chkSoundLoop = chkSoundLoop->isChecked();
  c.chkTransparent = chkTransparent->isChecked();
  c.txtImgX = ModelText(txtImgX->text());
  c.txtImgY = ModelText(txtImgY->text());
  if (specialControls) c.special = specialControls();
  return c;
}

void ButtonPanel::btnCopyToAll_Click() {
  if (p_.iLast_Change == 0) return;
  // Nothing is redrawn: the states written are not the one on show.
  if (!CopyLastChangeToStates(p_, SelectedButtons(), ReadControls())) return;
  // The code stays; only the next edit enables the button again.
  btnCopyToAll->setEnabled(false);
}

// --- Options -----------------------------------------------------------------------------

void ButtonPanel::btnAdvanced_Click() {
  const bool wereVisible = !chkShowHand->isHidden();
  for (QCheckBox* c : {chkShowHand, chkDOWNBtn, chkRadio, chkHidden}) c->setVisible(!wereVisible);
  if (wereVisible) {
    btnAdvanced->setText("<<");
    btnAdvanced->setToolTip(DisplayText(main_.sMOREOPTIONS));
  } else {
    btnAdvanced->setText(">>");
    btnAdvanced->setToolTip(DisplayText(main_.sLESSOPTIONS));
  }
  // "<<" and ">>" say nothing to a screen reader; the tool tip does.
  btnAdvanced->setAccessibleName(btnAdvanced->toolTip());
}

void ButtonPanel::chkDOWNBtn_MouseUp() {
  SetDOWNBtn(p_, chkDOWNBtn->isChecked());
  main_.lstButtons->setFocus();
}

// --- Text position -------------------------------------------------------------------------

void ButtonPanel::chkCenterText_MouseUp() {
  if (chkCenterText->isChecked()) {
    chkPositionText->setChecked(false);
    frameTextPos->hide();
  }
  Run(PanelControl::chkCenterText);
  // The marker goes with the manual position.
  if (p_.iCurBtn >= 1 && p_.iCurBtn <= p_.ButtonCount) Design()->MoveLabelPositioner(p_.iCurBtn);
  // The two boxes are one flag: a click cannot clear both.
  if (!chkPositionText->isChecked()) chkCenterText->setChecked(true);
}

void ButtonPanel::chkPositionText_MouseUp() {
  const bool current = p_.iCurBtn >= 1 && p_.iCurBtn <= p_.ButtonCount;
  if (chkPositionText->isChecked()) {
    chkCenterText->setChecked(false);
    frameTextPos->show();
    const int s = GetStateIndex(p_);
    if (current && s != 0) {
      const bool wasFilling = p_.bFillingPanel;
      p_.bFillingPanel = true;
      txtLabelPosX->setText(QString::number(p_.button(p_.iCurBtn).LabelPosX[s]));
      txtLabelPosY->setText(QString::number(p_.button(p_.iCurBtn).LabelPosY[s]));
      p_.bFillingPanel = wasFilling;
    }
  }
  Run(PanelControl::chkPositionText);
  if (current && !p_.bFillingPanel) {
    Design()->RedrawButton(p_.iCurBtn, false, false, false, true);
    Design()->MoveLabelPositioner(p_.iCurBtn);
  }
  if (!chkCenterText->isChecked()) chkPositionText->setChecked(true);
}

// --- Bold and italic ------------------------------------------------------------------------

void ButtonPanel::ToggleLook(PictureToggle* t, bool on) {
  t->ShowLook(on ? PictureToggle::Pressed : PictureToggle::Hovered);
  const QSignalBlocker quiet(t);
  t->setChecked(on);
}

void ButtonPanel::imgBold_MouseDown() {
  bBold = !bBold;
  ToggleLook(imgBold, bBold);
  Run(PanelControl::imgBold);
}

void ButtonPanel::imgItalic_MouseDown() {
  bItalic = !bItalic;
  ToggleLook(imgItalic, bItalic);
  Run(PanelControl::imgItalic);
}

void ButtonPanel::Frame1_MouseMove() {
  if (!bBold) imgBold->ShowLook(PictureToggle::Up);
  if (!bItalic) imgItalic->ShowLook(PictureToggle::Up);
}

// --- Pickers ---------------------------------------------------------------------------------

void ButtonPanel::btnGetLink_Click() {
  FileDialog d;
  d.filter = "HTML (*.htm;*.html)|*.htm;*.html|All Files (*.*)|*.*";
  d.folder = p_.sSearchLinkFolder;
  const std::string name = env_.prompter.OpenFileDialog(d);
  if (name.empty()) return;
  txtURL->setText(ShownText(name));
  p_.sSearchLinkFolder = GetFolder(name);
  p_.bProjectSaved = false;
}

void ButtonPanel::btnGetBitmap_Click() {
  const std::string name = ChooseImageFile(this, env_, p_.sSearchImagesFolder);
  if (name.empty()) return;
  // txtImage's own handler writes the model.
  txtImage->setText(ShownText(name));
  p_.sSearchImagesFolder = GetFolder(name);
  SetParam(env_, "sSearchImagesFolder", p_.sSearchImagesFolder);
}

void ButtonPanel::btnGetSound_Click() {
  // The sound picker needs none of the publishing state but the project
  // and the outside world.
  GeneratorState st;
  CodeBox box;
  HtmlWindowState win;
  PublishState state;
  PublishContext c{p_, env_, st, box, win, state};
  const std::string name = kp::btnGetSound_Click(c);
  if (!name.empty()) txtSound->setText(ShownText(name));
}

// --- Other windows -----------------------------------------------------------------------------

void ButtonPanel::btnMultiLine_Click() {
  frmMultiLineEditor* editor = main_.MultiLineEditor(txtLabel);
  editor->show();
  editor->raise();
  editor->activateWindow();
}

void ButtonPanel::btnTFrame_Click() {
  // The button special options dialog plugs in here.
  if (onSpecial) onSpecial();
}

void ButtonPanel::btnAction_Click() {
  // The action editor plugs in here, for the event chosen in cmbAction.
  static const char* const kKeys[] = {"ProgramUP",   "ProgramOVER",  "ProgramLEAVE",
                                      "ProgramDOWN", "ProgramCHECK", "ProgramUNCHECK"};
  const int k = cmbAction->currentIndex();
  if (onSetAction && k >= 0 && k < 6) onSetAction(kKeys[k]);
}

}  // namespace kp
