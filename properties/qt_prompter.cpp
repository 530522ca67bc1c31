#include "properties/qt_prompter.h"

#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QLabel>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QTimer>

#include "core/model.h"
#include "properties/file_filter.h"
#include "properties/frm_message.h"
#include "properties/frm_my_msg_box.h"
#include "properties/frm_publish_dialogs.h"
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
  QMessageBox box(Parent());
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
  repaintPacer_ = EventPacer();
  Message()->ShowMessage(BoxTitle(""), BoxText(text), owner_, false);
}

void QtPrompter::ProgressSet(const std::string& text, int percent) {
  frmMessage* m = Message();
  // A repaint at once costs a flush of the window; per item of a long
  // loop that is most of the loop's time. The note is repainted at once
  // every ~30 ms, and with the loop's own event runs in between.
  const bool now = repaintPacer_.Due() || percent >= 100;
  m->SetMessage(BoxText(text), now);
  if (percent < lastPercent_) m->picGauge->Clear();
  m->SetGauge(lastPercent_ < 0 || percent < lastPercent_ ? 0 : lastPercent_, percent, now);
  lastPercent_ = percent;
}

bool QtPrompter::ProgressCancelled() { return message_ && message_->Cancelled(); }

void QtPrompter::ProgressHide() {
  if (message_) message_->hide();
  lastPercent_ = -1;
}

namespace {

// The file dialog of the program's questions. "Path must exist" is kept
// here: Qt's own save dialog takes a name in a folder that is not there.
class ProgramFileDialog : public QFileDialog {
 public:
  using QFileDialog::QFileDialog;
  bool pathMustExist = false;
  // A folder the caller makes on acceptance: missing, it still counts.
  QString madeOnAccept;

  void accept() override {
    const QStringList files = selectedFiles();
    if (pathMustExist && !files.isEmpty()) {
      const QFileInfo info(files.first());
      const bool promised =
          !madeOnAccept.isEmpty() && QDir::cleanPath(info.absolutePath()) == madeOnAccept;
      if (!info.isDir() && !info.absoluteDir().exists() && !promised) {
        QMessageBox::warning(this, windowTitle(),
                             QFileDialog::tr("%1\nDirectory not found.\nPlease verify the "
                                             "correct directory name was given.")
                                 .arg(info.absolutePath()));
        return;
      }
    }
    QFileDialog::accept();
  }
};

}  // namespace

QWidget* QtPrompter::Parent() const {
  // A question stands over the window it was asked from: a modal window
  // first, otherwise the active one (the HTML window's build, say).
  if (QWidget* w = QApplication::activeModalWidget(); w && w->isVisible()) return w;
  if (QWidget* w = QApplication::activeWindow(); w && w->isVisible()) return w;
  return owner_;
}

namespace {

// A proposed folder that is not there yet: the dialog starts in the
// nearest folder that is, with the missing part in front of the name.
void StartBelowMissingFolder(const QString& folder, QString& start, QString& name) {
  QString path = QDir::cleanPath(QDir(folder).absolutePath());
  QStringList missing;
  while (!QDir(path).exists() && path != "/") {
    missing.prepend(QFileInfo(path).fileName());
    path = QFileInfo(path).path();
  }
  start = path;
  if (!missing.isEmpty()) name = missing.join('/') + '/' + name;
}

}  // namespace

std::string QtPrompter::FileDialogImpl(const FileDialog& d, bool save) {
  std::vector<std::string> files = FilesDialogImpl(d, save, false);
  return files.empty() ? std::string() : files.front();
}

std::vector<std::string> QtPrompter::FilesDialogImpl(const FileDialog& d, bool save, bool many) {
  QString start = PathText(d.folder);
  QString name = PathText(d.fileName);
  QString madeOnAccept;
  if (save && d.folderMadeOnAccept && !d.folder.empty() && !QDir(start).exists()) {
    madeOnAccept = QDir::cleanPath(QDir(start).absolutePath());
    StartBelowMissingFolder(start, start, name);
  }
  ProgramFileDialog dlg(Parent(), DisplayText(d.title), start,
                        QString::fromStdString(QtFilter(d.filter)));
  dlg.madeOnAccept = madeOnAccept;
  dlg.setObjectName(save ? "SaveFileDialog" : "OpenFileDialog");
  dlg.setOption(QFileDialog::DontUseNativeDialog);
  dlg.setAcceptMode(save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
  dlg.setFileMode(many                       ? QFileDialog::ExistingFiles
                  : save || !d.fileMustExist ? QFileDialog::AnyFile
                                             : QFileDialog::ExistingFile);
  dlg.pathMustExist = d.pathMustExist;
  if (!d.overwritePrompt) dlg.setOption(QFileDialog::DontConfirmOverwrite);
  if (!d.defaultExt.empty()) dlg.setDefaultSuffix(QString::fromStdString(d.defaultExt));
  if (!name.isEmpty()) dlg.selectFile(name);
  // A box must not wait behind the busy pointer.
  const bool busy = QApplication::overrideCursor() != nullptr;
  if (busy) QApplication::setOverrideCursor(Qt::ArrowCursor);
  const int result = dlg.exec();
  if (busy) QApplication::restoreOverrideCursor();
  std::vector<std::string> chosen;
  if (result != QDialog::Accepted) return chosen;
  for (const QString& f : dlg.selectedFiles()) chosen.push_back(PathBytes(f));
  return chosen;
}

std::string QtPrompter::SaveFileDialog(const FileDialog& d) { return FileDialogImpl(d, true); }
std::string QtPrompter::OpenFileDialog(const FileDialog& d) { return FileDialogImpl(d, false); }
std::vector<std::string> QtPrompter::OpenFilesDialog(const FileDialog& d) {
  return FilesDialogImpl(d, false, true);
}

DialogResult QtPrompter::ShowDialog(const Dialog& d) {
  QWidget* parent = Parent();
  if (d.name == "frmSomeFilesWarning") {
    frmSomeFilesWarning form(parent);
    return form.Run(d);
  }
  if (d.name == "frmReadyForUpload") {
    frmReadyForUpload form(parent);
    return form.Run(d);
  }
  if (d.name == "frmAutoRepHTML_MSG") {
    frmAutoRepHTML_MSG form(parent);
    form.txtMessage->setPlainText(BoxText(d.text));
    return form.Run(d);
  }
  GenericProgramWindow form(parent, d.name);
  form.setWindowTitle(BoxTitle(d.caption));
  form.txtMessage->setText(BoxText(d.text));
  if (d.beep) QTimer::singleShot(0, &form, [] { QApplication::beep(); });
  return form.Run(d);
}

bool QtPrompter::ShowCheckList(CheckList& list) {
  frmAutoRepHTML_2 form(Parent());
  return form.Run(list);
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
