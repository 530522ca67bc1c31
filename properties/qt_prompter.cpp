#include "properties/qt_prompter.h"

#include <QApplication>
#include <QCheckBox>
#include <QDialog>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

#include "core/model.h"
#include "properties/file_filter.h"
#include "properties/frm_message.h"
#include "properties/frm_my_msg_box.h"
#include "properties/ui_text.h"

namespace kp {

QString BoxTitle(const std::string& title) {
  return DisplayText(title.empty() ? Lang().TitleText : title);
}

QString BoxText(const std::string& text) {
  QString s = DisplayText(text);
  s.replace(QLatin1String("\r\n"), QLatin1String("\n"));
  return s;
}

QtPrompter::~QtPrompter() {
  // Windows without an owner are ours to delete; the others go with it.
  if (message_ && !message_->parent()) delete message_.data();
  if (myMsgBox_ && !myMsgBox_->parent()) delete myMsgBox_.data();
  while (busyDepth_ > 0) Busy(false);
}

void QtPrompter::SetOwner(QWidget* owner) { owner_ = owner; }

frmMessage* QtPrompter::Message() {
  if (!message_) message_ = new frmMessage(owner_);
  return message_;
}

frmMyMsgBox* QtPrompter::MyMsgBox() {
  if (!myMsgBox_) myMsgBox_ = new frmMyMsgBox(owner_);
  return myMsgBox_;
}

Answer QtPrompter::MsgBox(const std::string& text, Buttons buttons, const std::string& title,
                          Icon icon) {
  QMessageBox box(owner_);
  box.setWindowTitle(BoxTitle(title));
  box.setTextFormat(Qt::PlainText);
  box.setText(BoxText(text));
  switch (icon) {
    case Icon::None: box.setIcon(QMessageBox::NoIcon); break;
    case Icon::Information: box.setIcon(QMessageBox::Information); break;
    case Icon::Exclamation: box.setIcon(QMessageBox::Warning); break;
    case Icon::Critical: box.setIcon(QMessageBox::Critical); break;
    case Icon::Question: box.setIcon(QMessageBox::Question); break;
  }
  switch (buttons) {
    case Buttons::OK:
      box.setStandardButtons(QMessageBox::Ok);
      break;
    case Buttons::OKCancel:
      box.setStandardButtons(QMessageBox::Ok | QMessageBox::Cancel);
      box.setDefaultButton(QMessageBox::Ok);
      break;
    case Buttons::OKCancelDefaultCancel:
      box.setStandardButtons(QMessageBox::Ok | QMessageBox::Cancel);
      box.setDefaultButton(QMessageBox::Cancel);
      break;
    case Buttons::YesNo:
      box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
      box.setDefaultButton(QMessageBox::Yes);
      box.setEscapeButton(QMessageBox::No);
      break;
    case Buttons::YesNoCancel:
      box.setStandardButtons(QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
      box.setDefaultButton(QMessageBox::Yes);
      break;
  }
  // A box must not wait behind the busy pointer.
  const bool busy = QApplication::overrideCursor() != nullptr;
  if (busy) QApplication::setOverrideCursor(Qt::ArrowCursor);
  box.exec();
  if (busy) QApplication::restoreOverrideCursor();
  switch (box.standardButton(box.clickedButton())) {
    case QMessageBox::Ok: return Answer::OK;
    case QMessageBox::Yes: return Answer::Yes;
    case QMessageBox::No: return Answer::No;
    case QMessageBox::Cancel: return Answer::Cancel;
    default: break;
  }
  if (buttons == Buttons::OK) return Answer::OK;
  return buttons == Buttons::YesNo ? Answer::No : Answer::Cancel;
}

bool QtPrompter::Notice(const std::string& title, const std::string& text,
                        const std::string& checkCaption, bool checked) {
  return MyMsgBox()->ShowNotice(BoxTitle(title), BoxText(text), DisplayText(checkCaption), checked);
}

void QtPrompter::ProgressShow(const std::string& text) {
  lastPercent_ = -1;
  Message()->ShowMessage(BoxTitle(""), BoxText(text), owner_, false);
}

void QtPrompter::ProgressSet(const std::string& text, int percent) {
  frmMessage* m = Message();
  m->SetMessage(BoxText(text));
  if (percent < lastPercent_) m->picGauge->Clear();
  m->SetGauge(lastPercent_ < 0 || percent < lastPercent_ ? 0 : lastPercent_, percent);
  lastPercent_ = percent;
}

bool QtPrompter::ProgressCancelled() { return message_ && message_->Cancelled(); }

void QtPrompter::ProgressHide() {
  if (message_) message_->hide();
  lastPercent_ = -1;
}

std::string QtPrompter::FileDialogImpl(const FileDialog& d, bool save) {
  QFileDialog dlg(owner_, DisplayText(d.title), PathText(d.folder), QString::fromStdString(QtFilter(d.filter)));
  dlg.setObjectName(save ? "SaveFileDialog" : "OpenFileDialog");
  dlg.setOption(QFileDialog::DontUseNativeDialog);
  dlg.setAcceptMode(save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
  dlg.setFileMode(save || !d.fileMustExist ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
  if (!d.overwritePrompt) dlg.setOption(QFileDialog::DontConfirmOverwrite);
  if (!d.defaultExt.empty()) dlg.setDefaultSuffix(QString::fromStdString(d.defaultExt));
  if (!d.fileName.empty()) dlg.selectFile(PathText(d.fileName));
  if (dlg.exec() != QDialog::Accepted || dlg.selectedFiles().isEmpty()) return "";
  return PathBytes(dlg.selectedFiles().first());
}

std::string QtPrompter::SaveFileDialog(const FileDialog& d) { return FileDialogImpl(d, true); }
std::string QtPrompter::OpenFileDialog(const FileDialog& d) { return FileDialogImpl(d, false); }

namespace {

// A modal window whose Escape and close box press one chosen button, or do
// nothing when it has none.
class ButtonDialog : public QDialog {
 public:
  using QDialog::QDialog;
  int escapeResult = -1;
  void reject() override {
    if (escapeResult >= 0) done(escapeResult);
  }
};

}  // namespace

DialogResult QtPrompter::ShowDialog(const Dialog& d) {
  ButtonDialog dlg(owner_);
  dlg.setObjectName(QString::fromStdString(d.name));
  dlg.setWindowTitle(BoxTitle(d.caption));
  auto* label = new QLabel(BoxText(d.text), &dlg);
  label->setTextFormat(Qt::PlainText);
  label->setWordWrap(true);
  QCheckBox* check = nullptr;
  if (!d.checkCaption.empty()) {
    check = new QCheckBox(DisplayText(d.checkCaption), &dlg);
    check->setChecked(d.checked);
  }
  auto* row = new QHBoxLayout;
  row->addStretch();
  for (size_t i = 0; i < d.buttons.size(); ++i) {
    auto* b = new QPushButton(DisplayText(d.buttons[i].caption), &dlg);
    b->setObjectName(QString("button%1").arg(i));
    const std::function<void()>& action = d.buttons[i].action;
    QObject::connect(b, &QPushButton::clicked, &dlg, [&dlg, &action, i] {
      if (action) action();
      else dlg.done(static_cast<int>(i));
    });
    row->addWidget(b);
  }
  dlg.escapeResult = d.cancelButton;
  auto* box = new QVBoxLayout(&dlg);
  box->addWidget(label);
  if (check) box->addWidget(check);
  box->addLayout(row);
  if (d.beep) QTimer::singleShot(0, &dlg, [] { QApplication::beep(); });
  int result = dlg.exec();
  return {result, check ? check->isChecked() : d.checked};
}

bool QtPrompter::ShowCheckList(CheckList& list) {
  QDialog dlg(owner_);
  dlg.setObjectName(QString::fromStdString(list.name));
  dlg.setWindowTitle(BoxTitle(list.caption));
  auto* label = new QLabel(BoxText(list.message), &dlg);
  label->setTextFormat(Qt::PlainText);
  label->setWordWrap(true);
  auto* rows = new QListWidget(&dlg);
  rows->setObjectName("lstRows");
  for (size_t i = 0; i < list.rows.size(); ++i) {
    auto* item = new QListWidgetItem(DisplayText(list.rows[i]), rows);
    item->setFlags(item->flags() | Qt::ItemIsUserCheckable);
    bool on = i < list.ticked.size() && list.ticked[i];
    item->setCheckState(on ? Qt::Checked : Qt::Unchecked);
  }
  auto tickAll = [rows](Qt::CheckState s) {
    for (int i = 0; i < rows->count(); ++i) rows->item(i)->setCheckState(s);
  };
  auto* selectAll = new QPushButton(DisplayText(list.selectAllCaption), &dlg);
  auto* clearAll = new QPushButton(DisplayText(list.clearAllCaption), &dlg);
  auto* action = new QPushButton(DisplayText(list.actionCaption), &dlg);
  auto* cancel = new QPushButton(DisplayText(list.cancelCaption), &dlg);
  action->setObjectName("btnAction");
  cancel->setObjectName("btnCancel");
  QObject::connect(selectAll, &QPushButton::clicked, &dlg, [&] { tickAll(Qt::Checked); });
  QObject::connect(clearAll, &QPushButton::clicked, &dlg, [&] { tickAll(Qt::Unchecked); });
  QObject::connect(action, &QPushButton::clicked, &dlg, &QDialog::accept);
  QObject::connect(cancel, &QPushButton::clicked, &dlg, &QDialog::reject);
  auto* row = new QHBoxLayout;
  row->addWidget(selectAll);
  row->addWidget(clearAll);
  row->addStretch();
  row->addWidget(action);
  row->addWidget(cancel);
  auto* box = new QVBoxLayout(&dlg);
  box->addWidget(label);
  box->addWidget(rows);
  box->addLayout(row);
  if (dlg.exec() != QDialog::Accepted) return false;
  list.ticked.assign(list.rows.size(), false);
  for (int i = 0; i < rows->count(); ++i)
    list.ticked[static_cast<size_t>(i)] = rows->item(i)->checkState() == Qt::Checked;
  return true;
}

void QtPrompter::Busy(bool on) {
  if (on) {
    QApplication::setOverrideCursor(Qt::WaitCursor);
    ++busyDepth_;
  } else if (busyDepth_ > 0) {
    QApplication::restoreOverrideCursor();
    --busyDepth_;
  }
}

void QtPrompter::ProcessEvents() { QCoreApplication::processEvents(); }

}  // namespace kp
