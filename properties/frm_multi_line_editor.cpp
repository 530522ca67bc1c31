#include "properties/frm_multi_line_editor.h"

#include <QEvent>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>

#include "core/text_tools.h"
#include "design/escape_key.h"

namespace kp {

namespace {

// The encoding works on ASCII marks only, so any text survives the trip
// through UTF-8.
std::string Utf8(const QString& s) {
  QByteArray b = s.toUtf8();
  return std::string(b.constData(), static_cast<size_t>(b.size()));
}

QString FromUtf8(const std::string& s) {
  return QString::fromUtf8(s.data(), static_cast<qsizetype>(s.size()));
}

}  // namespace

UiTexts& frmMultiLineEditor::Texts() {
  static UiTexts t = {{"btnClose", std::string("&") + "Close"}};
  return t;
}

frmMultiLineEditor::frmMultiLineEditor(QWidget* mainWindow, QLineEdit* txtLabel,
                                       const QString& caption)
    : QWidget(mainWindow, Qt::Window), mainWindow_(mainWindow), txtLabel_(txtLabel) {
  setObjectName("frmMultiLineEditor");
  setWindowTitle(caption);
  txtEditor = new QPlainTextEdit(this);
  txtEditor->setObjectName("txtEditor");
  txtEditor->setAccessibleName(caption);
  txtEditor->setLineWrapMode(QPlainTextEdit::NoWrap);
  txtEditor->installEventFilter(this);
  btnClose = new QPushButton(QTextOf(Texts(), "btnClose"), this);
  btnClose->setObjectName("btnClose");
  connect(txtEditor, &QPlainTextEdit::textChanged, this, [this] { txtEditor_Change(); });
  connect(btnClose, &QPushButton::clicked, this, [this] { btnClose_Click(); });

  auto* row = new QHBoxLayout;
  row->addStretch();
  row->addWidget(btnClose);
  auto* box = new QVBoxLayout(this);
  box->addWidget(txtEditor);
  box->addLayout(row);
  // Escape closes it as it closes a dialog.
  CloseOnEscape(this, [this] { btnClose_Click(); });
  resize(300, 180);
  Form_Load();
}

void frmMultiLineEditor::Form_Load() {
  if (!mainWindow_) return;
  QRect m = mainWindow_->frameGeometry();
  QPoint beside(m.right() + 1, m.top());
  QScreen* screen = mainWindow_->screen() ? mainWindow_->screen() : QGuiApplication::primaryScreen();
  if (screen && beside.x() + width() <= screen->availableGeometry().right()) move(beside);
}

void frmMultiLineEditor::Form_Activate() {
  if (!txtLabel_) return;
  bFilling_ = true;
  txtEditor->setPlainText(FromUtf8(DecodeMultiLine(Utf8(txtLabel_->text()))));
  bFilling_ = false;
}

void frmMultiLineEditor::txtEditor_Change() {
  if (bFilling_ || !txtLabel_) return;
  txtLabel_->setText(FromUtf8(EncodeMultiLine(Utf8(txtEditor->toPlainText()))));
}

void frmMultiLineEditor::btnClose_Click() {
  hide();
  if (mainWindow_) mainWindow_->activateWindow();
}

void frmMultiLineEditor::showEvent(QShowEvent* e) {
  QWidget::showEvent(e);
  Form_Activate();
}

void frmMultiLineEditor::changeEvent(QEvent* e) {
  QWidget::changeEvent(e);
  if (e->type() == QEvent::ActivationChange && isActiveWindow()) Form_Activate();
}

bool frmMultiLineEditor::eventFilter(QObject* watched, QEvent* e) {
  if (watched == txtEditor && e->type() == QEvent::KeyRelease) {
    auto* k = static_cast<QKeyEvent*>(e);
    if (k->key() == Qt::Key_A && (k->modifiers() & Qt::ControlModifier)) txtEditor->selectAll();
  }
  return QWidget::eventFilter(watched, e);
}

}  // namespace kp
