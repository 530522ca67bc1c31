// frmSetAction's controls, texts and places.
#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QToolButton>
#include <QVBoxLayout>

#include "properties/frm_set_action.h"

namespace kp {

namespace {

template <class T>
T* Named(T* w, const char* name) {
  w->setObjectName(QString::fromLatin1(name));
  return w;
}

QComboBox* HundredsList(QWidget* parent, const char* name) {
  auto* c = Named(new QComboBox(parent), name);
  c->setEditable(true);
  c->setInsertPolicy(QComboBox::NoInsert);
  for (int ms = 100; ms <= 1000; ms += 100) c->addItem(QString::number(ms));
  return c;
}

}  // namespace

UiTexts& frmSetAction::Texts() {
  static UiTexts t = {
      {"frmSetAction", "Set Action"},
      {"cmbAction.0", "Show"},
      {"cmbAction.1", "Hide"},
      {"cmbAction.2", "Move"},
      {"cmbAction.3", "Set Label"},
      {"cmbAction.4", "Set Color"},
      {"cmbAction.5", "Wait"},
      {"cmbAction.6", "Call JavaScript"},
      {"cmbAction.7", "Set State"},
      {"cmbAction.8", "Border Color"},
      {"cmbAction.9", "Blink"},
      {"lblX", "x:"},
      {"lblY", "y:"},
      {"lblWidth", "width:"},
      {"lblHeight", "height:"},
      {"lblFrames", "frames:"},
      {"lblFrameDelay", "frame-delay:"},
      {"btnGetHexColor", "..."},
      {"btnGetHexColor.ToolTip", "Select Color"},
      {"lblMiliseconds", "Time in miliseconds:"},
      {"lblBlinkCount", "times to blink:"},
      {"lblBlinkDelay", "delay in miliseconds:"},
      {"btnAdd", "&Add"},
      {"btnReplace", "Replace"},
      {"btnRemove", "Remove"},
      {"btnUP.ToolTip", "Move Command Up"},
      {"btnCopyProg", "Copy Prog"},
      {"btnCopyProg.ToolTip", "Copy Whole Program to Buffer"},
      {"btnPasteProg", "Paste"},
      {"btnPasteProg.ToolTip", "Append Program from Buffer to Current Program"},
      {"btnOK", "&Ok"},
      {"btnCANCEL", "&Cancel"},
      {"sSorryIDont", "Sorry, I don't understand you..."},
      {"sNoActionSelected", "No action selected."},
      {"sWrongReturn", "Wrong Return Parameters"},
      {"sNoButtons", "No Buttons on the Applet"},
      {"sErrorOnAdd", "Error on btnAdd"},
      // Added after the others: older language files keep their lines.
      {"lstActions.Name", "Commands"},
      {"cmbButtonNumber.Name", "Button"},
      {"txtLabel.Name", "Label or color"},
      {"cmbStateSelector.Name", "State"},
      {"txtJavaScript.Name", "JavaScript"},
      {"btnDown.Name", "Move Command Down"},
  };
  return t;
}

void frmSetAction::BuildControls() {
  lstActions = Named(new QListWidget(this), "lstActions");
  lstActions->setMinimumSize(440, 150);
  lstActionsCode = Named(new QListWidget(this), "lstActionsCode");
  lstActionsCode->hide();
  cmbAction = Named(new QComboBox(this), "cmbAction");
  cmbButtonNumber = Named(new QComboBox(this), "cmbButtonNumber");
  cmbButtonNumber->setEditable(true);
  cmbButtonNumber->setInsertPolicy(QComboBox::NoInsert);
  cmbButtonNumber->setMinimumWidth(160);

  picActionMove = Named(new QWidget(this), "picActionMove");
  auto field = [this](QWidget* parent, const char* name) {
    auto* f = Named(new QLineEdit(parent), name);
    f->installEventFilter(this);
    return f;
  };
  txtX = field(picActionMove, "txtX");
  txtY = field(picActionMove, "txtY");
  txtWidth = field(picActionMove, "txtWidth");
  txtHeight = field(picActionMove, "txtHeight");
  txtFrames = field(picActionMove, "txtFrames");
  txtFrameDelay = field(picActionMove, "txtFrameDelay");
  lblWidth = Named(new QLabel(picActionMove), "lblWidth");
  lblHeight = Named(new QLabel(picActionMove), "lblHeight");

  picSetLabel = Named(new QWidget(this), "picSetLabel");
  txtLabel = field(picSetLabel, "txtLabel");
  cmbStateSelector = Named(new QComboBox(picSetLabel), "cmbStateSelector");
  btnGetHexColor = Named(new QPushButton(picSetLabel), "btnGetHexColor");
  btnGetHexColor->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);

  picSetTimer = Named(new QWidget(this), "picSetTimer");
  lsMiliseconds = HundredsList(picSetTimer, "lsMiliseconds");

  picBlink = Named(new QWidget(this), "picBlink");
  txtBlinkCount = field(picBlink, "txtBlinkCount");
  cmbBlinkDelay = HundredsList(picBlink, "cmbBlinkDelay");

  txtJavaScript = field(this, "txtJavaScript");

  btnAdd = Named(new QPushButton(this), "btnAdd");
  btnReplace = Named(new QPushButton(this), "btnReplace");
  btnRemove = Named(new QPushButton(this), "btnRemove");
  btnUP = Named(new QToolButton(this), "btnUP");
  btnUP->setArrowType(Qt::UpArrow);
  btnDown = Named(new QToolButton(this), "btnDown");
  btnDown->setArrowType(Qt::DownArrow);
  btnCopyProg = Named(new QPushButton(this), "btnCopyProg");
  btnPasteProg = Named(new QPushButton(this), "btnPasteProg");
  btnOK = Named(new QPushButton(this), "btnOK");
  btnCANCEL = Named(new QPushButton(this), "btnCANCEL");
  // Enter belongs to the fields (it adds or moves on), never to a button.
  for (QPushButton* b : findChildren<QPushButton*>()) {
    b->setAutoDefault(false);
    b->setDefault(false);
  }
  for (QComboBox* c : {cmbButtonNumber, lsMiliseconds, cmbBlinkDelay}) {
    c->installEventFilter(this);
    c->lineEdit()->installEventFilter(this);
  }
  for (int i = 0; i < 10; ++i) cmbAction->addItem(QString());
}

void frmSetAction::BuildLayout() {
  auto label = [](QWidget* parent, const char* name) { return Named(new QLabel(parent), name); };

  auto* move = new QGridLayout(picActionMove);
  move->setContentsMargins(0, 0, 0, 0);
  QLabel* moveLabels[] = {label(picActionMove, "lblX"), label(picActionMove, "lblY"), lblWidth,
                          lblHeight, label(picActionMove, "lblFrames"),
                          label(picActionMove, "lblFrameDelay")};
  QLineEdit* moveFields[] = {txtX, txtY, txtWidth, txtHeight, txtFrames, txtFrameDelay};
  for (int k = 0; k < 6; ++k) {
    move->addWidget(moveLabels[k], k / 3, (k % 3) * 2, Qt::AlignRight);
    move->addWidget(moveFields[k], k / 3, (k % 3) * 2 + 1);
  }

  auto* setLabel = new QHBoxLayout(picSetLabel);
  setLabel->setContentsMargins(0, 0, 0, 0);
  setLabel->addWidget(txtLabel, 1);
  setLabel->addWidget(btnGetHexColor);
  setLabel->addWidget(cmbStateSelector);

  auto* timer = new QHBoxLayout(picSetTimer);
  timer->setContentsMargins(0, 0, 0, 0);
  timer->addWidget(label(picSetTimer, "lblMiliseconds"));
  timer->addWidget(lsMiliseconds);
  timer->addStretch(1);

  auto* blink = new QHBoxLayout(picBlink);
  blink->setContentsMargins(0, 0, 0, 0);
  blink->addWidget(label(picBlink, "lblBlinkCount"));
  blink->addWidget(txtBlinkCount);
  blink->addWidget(label(picBlink, "lblBlinkDelay"));
  blink->addWidget(cmbBlinkDelay);

  auto* root = new QVBoxLayout(this);
  auto* top = new QHBoxLayout;
  top->addWidget(lstActions, 1);
  auto* order = new QVBoxLayout;
  order->addWidget(btnUP);
  order->addWidget(btnDown);
  order->addStretch(1);
  top->addLayout(order);
  root->addLayout(top, 1);

  auto* command = new QHBoxLayout;
  command->addWidget(cmbAction);
  command->addWidget(cmbButtonNumber, 1);
  root->addLayout(command);

  // The fields of every command share one place, as tall as the tallest,
  // so that the window keeps its size while the command changes.
  auto* fields = new QWidget(this);
  auto* stack = new QVBoxLayout(fields);
  stack->setContentsMargins(0, 0, 0, 0);
  for (QWidget* w : {picActionMove, picSetLabel, picSetTimer, picBlink,
                     static_cast<QWidget*>(txtJavaScript)})
    stack->addWidget(w);
  stack->addStretch(1);
  fields->setMinimumHeight(picActionMove->sizeHint().height());
  root->addWidget(fields);

  auto* edit = new QHBoxLayout;
  edit->addWidget(btnAdd);
  edit->addWidget(btnReplace);
  edit->addWidget(btnRemove);
  edit->addStretch(1);
  edit->addWidget(btnCopyProg);
  edit->addWidget(btnPasteProg);
  root->addLayout(edit);

  auto* close = new QHBoxLayout;
  close->addStretch(1);
  close->addWidget(btnOK);
  close->addWidget(btnCANCEL);
  root->addLayout(close);
}

void frmSetAction::ApplyTexts() {
  const UiTexts& t = Texts();
  for (QLabel* l : findChildren<QLabel*>()) {
    const std::string name = l->objectName().toStdString();
    if (!name.empty()) l->setText(QTextOf(t, name));
  }
  for (QPushButton* b : findChildren<QPushButton*>()) {
    const std::string name = b->objectName().toStdString();
    if (!name.empty()) b->setText(QTextOf(t, name));
  }
  for (int i = 0; i < 10; ++i)
    cmbAction->setItemText(i, QTextOf(t, "cmbAction." + std::to_string(i)));
  btnGetHexColor->setToolTip(QTextOf(t, "btnGetHexColor.ToolTip"));
  btnUP->setToolTip(QTextOf(t, "btnUP.ToolTip"));
  btnCopyProg->setToolTip(QTextOf(t, "btnCopyProg.ToolTip"));
  btnPasteProg->setToolTip(QTextOf(t, "btnPasteProg.ToolTip"));
  // These have no caption or label of their own to be read out.
  for (QWidget* w : std::initializer_list<QWidget*>{lstActions, cmbButtonNumber, txtLabel,
                                                    cmbStateSelector, txtJavaScript, btnDown})
    w->setAccessibleName(QTextOf(t, w->objectName().toStdString() + ".Name"));
}

}  // namespace kp
