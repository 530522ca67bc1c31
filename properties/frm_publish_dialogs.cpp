#include "properties/frm_publish_dialogs.h"

#include <QApplication>
#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStyle>
#include <QTimer>
#include <QVBoxLayout>

#include "core/model.h"
#include "publish/publish_texts.h"

namespace kp {

namespace {

QString Shown(const std::string& text) {
  QString s = DisplayText(text);
  s.replace(QLatin1String("\r\n"), QLatin1String("\n"));
  return s;
}

QLabel* WrappedLabel(QWidget* parent, const char* name) {
  auto* l = new QLabel(parent);
  l->setObjectName(name);
  l->setTextFormat(Qt::PlainText);
  l->setWordWrap(true);
  return l;
}

QPushButton* Button(QWidget* parent, const UiTexts& t, const char* name) {
  auto* b = new QPushButton(QTextOf(t, name), parent);
  b->setObjectName(name);
  return b;
}

QLabel* IconLabel(QWidget* parent, QStyle::StandardPixmap which) {
  auto* l = new QLabel(parent);
  const int size = parent->style()->pixelMetric(QStyle::PM_MessageBoxIconSize);
  l->setPixmap(parent->style()->standardIcon(which).pixmap(size, size));
  l->setAlignment(Qt::AlignTop);
  return l;
}

// The window's own caption followed by the program's title.
QString TitledCaption(const UiTexts& t) {
  return DisplayText(TextOf(t, "Caption") + Lang().TitleText);
}

}  // namespace

// --- What the windows share --------------------------------------------------------

PublishWindow::PublishWindow(QWidget* parent, const char* name) : QDialog(parent) {
  setObjectName(name);
  buttonRow = new QHBoxLayout;
}

void PublishWindow::reject() {
  if (escapeResult_ >= 0) done(escapeResult_);
}

DialogResult PublishWindow::Run(const Dialog& d) {
  // Only the buttons the command asks for are shown.
  const QList<QPushButton*> own = findChildren<QPushButton*>();
  for (QPushButton* b : own) b->hide();
  const UiTexts& defaults = Defaults();
  const UiTexts& current = Current();
  // The command's captions are the table's, translated or not; a command
  // that names the English caption finds its control too.
  auto isCaptionOf = [&](const UiText& t, const std::string& caption) {
    return t.text == caption || TextOf(current, t.control) == caption;
  };
  for (size_t i = 0; i < d.buttons.size(); ++i) {
    const DialogButton& want = d.buttons[i];
    QPushButton* b = nullptr;
    for (const UiText& t : defaults) {
      if (!isCaptionOf(t, want.caption)) continue;
      b = findChild<QPushButton*>(t.control);
      if (b) break;
    }
    if (!b) {
      b = new QPushButton(DisplayText(want.caption), this);
      b->setObjectName(QString("button%1").arg(i));
      buttonRow->addWidget(b);
    }
    b->show();
    const std::function<void()>& action = want.action;
    const int index = static_cast<int>(i);
    connect(b, &QPushButton::clicked, this, [this, &action, index] {
      if (action) action();
      else done(index);
    });
  }
  if (chkShowNextTime) {
    chkShowNextTime->setVisible(!d.checkCaption.empty());
    chkShowNextTime->setChecked(d.checked);
    bool known = false;
    for (const UiText& t : defaults)
      known = known ||
              (std::string_view(t.control) == "chkShowNextTime" && isCaptionOf(t, d.checkCaption));
    if (!known) chkShowNextTime->setText(DisplayText(d.checkCaption));
  }
  escapeResult_ = d.cancelButton;
  adjustSize();
  const int result = exec();
  return {result, chkShowNextTime && !d.checkCaption.empty() ? chkShowNextTime->isChecked()
                                                             : d.checked};
}

// --- frmSomeFilesWarning -----------------------------------------------------------


// The order is the order of the "[frmSomeFilesWarning]" section of a
// language file.
UiTexts& frmSomeFilesWarning::Texts() {
  return SomeFilesWarningTexts();
}

const UiTexts& frmSomeFilesWarning::DefaultTexts() {
  return DefaultSomeFilesWarningTexts();
}

frmSomeFilesWarning::frmSomeFilesWarning(QWidget* parent)
    : PublishWindow(parent, "frmSomeFilesWarning") {
  const UiTexts& t = Texts();
  setWindowTitle(TitledCaption(t));
  txtMessage = WrappedLabel(this, "txtMessage");
  txtMessage->setText(QTextOf(t, "txtMessage.1") + "\n" + QTextOf(t, "txtMessage.2") + "\n" +
                      QTextOf(t, "txtMessage.3"));
  btnYes = Button(this, t, "btnYes");
  btnYes->setDefault(true);
  btnNo = Button(this, t, "btnNo");
  chkShowNextTime = new QCheckBox(QTextOf(t, "chkShowNextTime"), this);
  chkShowNextTime->setObjectName("chkShowNextTime");

  auto* top = new QHBoxLayout;
  top->addWidget(IconLabel(this, QStyle::SP_MessageBoxWarning));
  top->addWidget(txtMessage, 1);
  buttonRow->addStretch();
  buttonRow->addWidget(btnYes);
  buttonRow->addWidget(btnNo);
  auto* box = new QVBoxLayout(this);
  box->addLayout(top);
  box->addSpacing(8);
  box->addWidget(chkShowNextTime, 0, Qt::AlignLeft);
  box->addLayout(buttonRow);
  setMinimumWidth(380);
}

void frmSomeFilesWarning::showEvent(QShowEvent* e) {
  PublishWindow::showEvent(e);
  ++beeps;
  QApplication::beep();
}

// --- frmReadyForUpload -------------------------------------------------------------


// The order is the order of the "[frmReadyForUpload]" section of a language
// file.
UiTexts& frmReadyForUpload::Texts() {
  return ReadyForUploadTexts();
}

const UiTexts& frmReadyForUpload::DefaultTexts() {
  return DefaultReadyForUploadTexts();
}

frmReadyForUpload::frmReadyForUpload(QWidget* parent) : PublishWindow(parent, "frmReadyForUpload") {
  const UiTexts& t = Texts();
  setWindowTitle(TitledCaption(t));
  lblMessage = WrappedLabel(this, "lblMessage");
  lblMessage->setText(QTextOf(t, "lblMessage"));
  QFont bold = lblMessage->font();
  bold.setBold(true);
  lblMessage->setFont(bold);
  lblCaseSensitive = WrappedLabel(this, "lblCaseSensitive");
  lblCaseSensitive->setText(QTextOf(t, "lblCaseSensitive"));
  btnExplore = Button(this, t, "btnExplore");
  btnExplore->setAutoDefault(false);
  btnOK = Button(this, t, "btnOK");
  btnOK->setDefault(true);
  chkShowNextTime = new QCheckBox(QTextOf(t, "chkShowNextTime"), this);
  chkShowNextTime->setObjectName("chkShowNextTime");

  auto* text = new QVBoxLayout;
  text->addWidget(lblMessage);
  text->addSpacing(6);
  text->addWidget(lblCaseSensitive);
  auto* top = new QHBoxLayout;
  top->addWidget(IconLabel(this, QStyle::SP_MessageBoxInformation));
  top->addLayout(text, 1);
  buttonRow->addWidget(btnExplore);
  buttonRow->addStretch();
  buttonRow->addWidget(btnOK);
  auto* box = new QVBoxLayout(this);
  box->addLayout(top);
  box->addSpacing(8);
  box->addWidget(chkShowNextTime, 0, Qt::AlignLeft);
  box->addLayout(buttonRow);
  setMinimumWidth(500);
}

// --- frmAutoRepHTML_MSG ------------------------------------------------------------


// The order is the order of the "[frmAutoRepHTML_MSG]" section of a
// language file.
UiTexts& frmAutoRepHTML_MSG::Texts() {
  return ReplaceReportTexts();
}

const UiTexts& frmAutoRepHTML_MSG::DefaultTexts() {
  return DefaultReplaceReportTexts();
}

frmAutoRepHTML_MSG::frmAutoRepHTML_MSG(QWidget* parent)
    : PublishWindow(parent, "frmAutoRepHTML_MSG") {
  const UiTexts& t = Texts();
  setWindowTitle(QTextOf(t, "Caption"));
  txtMessage = new QPlainTextEdit(this);
  txtMessage->setObjectName("txtMessage");
  txtMessage->setReadOnly(true);
  txtMessage->setMinimumSize(460, 150);
  // The report is read out under the title of its window.
  txtMessage->setAccessibleName(windowTitle());
  btnOK = Button(this, t, "btnOK");
  btnOK->setDefault(true);
  btnExplore = Button(this, t, "btnExplore");
  btnExplore->setAutoDefault(false);
  chkShowNextTime = new QCheckBox(QTextOf(t, "chkShowNextTime"), this);
  chkShowNextTime->setObjectName("chkShowNextTime");

  buttonRow->addWidget(btnExplore);
  buttonRow->addStretch();
  buttonRow->addWidget(btnOK);
  auto* box = new QVBoxLayout(this);
  box->addWidget(txtMessage, 1);
  box->addWidget(chkShowNextTime, 0, Qt::AlignLeft);
  box->addLayout(buttonRow);
}

// --- Any other window ---------------------------------------------------------------

GenericProgramWindow::GenericProgramWindow(QWidget* parent, const std::string& name)
    : PublishWindow(parent, "") {
  setObjectName(QString::fromStdString(name));
  txtMessage = WrappedLabel(this, "txtMessage");
  chkShowNextTime = new QCheckBox(this);
  chkShowNextTime->setObjectName("chkShowNextTime");
  buttonRow->addStretch();
  auto* box = new QVBoxLayout(this);
  box->addWidget(txtMessage, 1);
  box->addWidget(chkShowNextTime, 0, Qt::AlignLeft);
  box->addLayout(buttonRow);
  setMinimumWidth(340);
}

const UiTexts& GenericProgramWindow::Defaults() const {
  static const UiTexts none;
  return none;
}

// --- frmAutoRepHTML_2 --------------------------------------------------------------

// The order is the order of the "[frmAutoRepHTML_2]" section of a language
// file.
UiTexts& frmAutoRepHTML_2::Texts() { return ReplaceListTexts(); }

frmAutoRepHTML_2::frmAutoRepHTML_2(QWidget* parent) : QDialog(parent) {
  setObjectName("frmAutoRepHTML_2");
  const UiTexts& t = Texts();
  setWindowTitle(QTextOf(t, "Caption"));
  txtMSG = WrappedLabel(this, "txtMSG");
  QFont bold = txtMSG->font();
  bold.setBold(true);
  txtMSG->setFont(bold);
  lstApplets = new QListWidget(this);
  lstApplets->setObjectName("lstApplets");
  lstApplets->setMinimumSize(520, 160);
  lstApplets->setAccessibleName(windowTitle());
  btnSelectAll = Button(this, t, "btnSelectAll");
  btnDeselectAll = Button(this, t, "btnDeselectAll");
  btnReplace = Button(this, t, "btnReplace");
  btnCANCEL = Button(this, t, "btnCANCEL");
  for (QPushButton* b : {btnSelectAll, btnDeselectAll, btnCANCEL}) b->setAutoDefault(false);
  btnReplace->setDefault(true);
  connect(btnSelectAll, &QPushButton::clicked, this, [this] { btnSelectAll_Click(); });
  connect(btnDeselectAll, &QPushButton::clicked, this, [this] { btnDeselectAll_Click(); });
  connect(btnReplace, &QPushButton::clicked, this, [this] { btnReplace_Click(); });
  connect(btnCANCEL, &QPushButton::clicked, this, &QDialog::reject);

  auto* side = new QVBoxLayout;
  side->addWidget(btnSelectAll);
  side->addWidget(btnDeselectAll);
  side->addStretch();
  auto* middle = new QHBoxLayout;
  middle->addWidget(lstApplets, 1);
  middle->addLayout(side);
  auto* row = new QHBoxLayout;
  row->addStretch();
  row->addWidget(btnReplace);
  row->addWidget(btnCANCEL);
  auto* box = new QVBoxLayout(this);
  box->addWidget(txtMSG);
  box->addLayout(middle, 1);
  box->addLayout(row);
}

bool frmAutoRepHTML_2::Run(CheckList& list) {
  if (list.name != "frmAutoRepHTML_2") {
    // A check list of another window: its own name and captions.
    setObjectName(QString::fromStdString(list.name));
    setWindowTitle(DisplayText(list.caption));
    btnSelectAll->setText(DisplayText(list.selectAllCaption));
    btnDeselectAll->setText(DisplayText(list.clearAllCaption));
    btnReplace->setText(DisplayText(list.actionCaption));
    btnCANCEL->setText(DisplayText(list.cancelCaption));
    lstApplets->setAccessibleName(windowTitle());
  }
  txtMSG->setText(Shown(list.message));
  lstApplets->setAccessibleDescription(txtMSG->text());
  lstApplets->clear();
  for (size_t i = 0; i < list.rows.size(); ++i) {
    auto* item = new QListWidgetItem(DisplayText(list.rows[i]), lstApplets);
    item->setFlags(item->flags() | Qt::ItemIsUserCheckable);
    const bool on = i < list.ticked.size() && list.ticked[i];
    item->setCheckState(on ? Qt::Checked : Qt::Unchecked);
  }
  action_ = list.action;
  const bool replaced = exec() == QDialog::Accepted;
  action_ = nullptr;
  if (replaced) list.ticked = Ticks();
  return replaced;
}

std::vector<bool> frmAutoRepHTML_2::Ticks() const {
  std::vector<bool> ticks(static_cast<size_t>(lstApplets->count()), false);
  for (int i = 0; i < lstApplets->count(); ++i)
    ticks[static_cast<size_t>(i)] = lstApplets->item(i)->checkState() == Qt::Checked;
  return ticks;
}

void frmAutoRepHTML_2::btnSelectAll_Click() {
  for (int i = 0; i < lstApplets->count(); ++i) lstApplets->item(i)->setCheckState(Qt::Checked);
}

void frmAutoRepHTML_2::btnDeselectAll_Click() {
  for (int i = 0; i < lstApplets->count(); ++i) lstApplets->item(i)->setCheckState(Qt::Unchecked);
}

void frmAutoRepHTML_2::btnReplace_Click() {
  // The window stays up through the replacement's messages and its report,
  // and stays open when the replacement did not run.
  if (action_ && !action_(Ticks())) return;
  accept();
}

}  // namespace kp
