#include "properties/frm_hex2color.h"
#include "properties/window_lang.h"

#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "core/text_tools.h"
#include "design/colour_box.h"
#include "properties/colour_dialog.h"
#include "design/escape_key.h"

namespace kp {

namespace {

std::string Bytes(const QString& s) { return s.toStdString(); }

// The field trimmed in place, keeping the caret at the end of the text.
std::string TrimInPlace(QLineEdit* field) {
  const QString trimmed = field->text().trimmed();
  if (trimmed != field->text()) field->setText(trimmed);
  return Bytes(trimmed);
}

}  // namespace

UiTexts& frmHex2Color::Texts() {
  static UiTexts t = {
      {"frmHex2Color", "Hex2Color"}, {"lblHEX", "HEX:"},    {"lblRED", "Red:"},
      {"lblGREEN", "Green:"},        {"lblBLUE", "Blue:"},  {"btnClose", "&Close"},
      {"picColor", "Click to choose a colour"},
  };
  return t;
}

frmHex2Color::frmHex2Color(QWidget* mainWindow, Env& env)
    : QWidget(mainWindow, Qt::Window), mainWindow_(mainWindow) {
  setObjectName("frmHex2Color");
  ApplyLanguageSection(env, Texts(), "[frmHex2Color]");
  setWindowTitle(QTextOf(Texts(), "frmHex2Color"));
  picColor = new ColourBox(this);
  picColor->setObjectName("picColor");
  picColor->setToolTip(QTextOf(Texts(), "picColor"));
  picColor->setMinimumSize(64, 64);
  picColor->onClick = [this] { picColor_Click(); };
  auto field = [this](const char* name) {
    auto* f = new QLineEdit(this);
    f->setObjectName(name);
    f->installEventFilter(this);
    return f;
  };
  txtHEX = field("txtHEX");
  txtRED = field("txtRED");
  txtGREEN = field("txtGREEN");
  txtBLUE = field("txtBLUE");
  btnClose = new QPushButton(QTextOf(Texts(), "btnClose"), this);
  btnClose->setObjectName("btnClose");
  connect(btnClose, &QPushButton::clicked, this, [this] { btnClose_Click(); });
  // Escape closes it as it closes a dialog.
  CloseOnEscape(this, [this] { btnClose_Click(); });

  auto* grid = new QGridLayout(this);
  grid->addWidget(picColor, 0, 0, 4, 1);
  const char* labels[] = {"lblHEX", "lblRED", "lblGREEN", "lblBLUE"};
  QLineEdit* fields[] = {txtHEX, txtRED, txtGREEN, txtBLUE};
  for (int r = 0; r < 4; ++r) {
    grid->addWidget(new QLabel(QTextOf(Texts(), labels[r]), this), r, 1);
    grid->addWidget(fields[r], r, 2);
  }
  grid->addWidget(btnClose, 4, 2);
  Form_Load();
}

void frmHex2Color::Form_Load() {
  if (mainWindow_) {
    QRect m = mainWindow_->frameGeometry();
    move(m.right() + 1, m.top());
  }
  FieldsFromColour();
}

void frmHex2Color::FieldsFromColour() {
  const std::string hex = ColourToHexText(picColor->colour());
  txtHEX->setText(QString::fromStdString(hex));
  // The decimal parts read back from the hexadecimal digits.
  std::optional<RgbParts> p = HexTextToParts(hex);
  txtRED->setText(QString::number(p->red));
  txtGREEN->setText(QString::number(p->green));
  txtBLUE->setText(QString::number(p->blue));
}

void frmHex2Color::picColor_Click() {
  Colour c = ChooseColour(this, picColor->colour());
  if (c == -1) return;
  picColor->setColour(c);
  FieldsFromColour();
}

void frmHex2Color::txtHEX_KeyUp() {
  std::optional<RgbParts> p = HexTextToParts(TrimInPlace(txtHEX));
  if (!p) {
    txtRED->clear();
    txtGREEN->clear();
    txtBLUE->clear();
    return;
  }
  picColor->setColour(ColourOfParts(*p));
  txtRED->setText(QString::number(p->red));
  txtGREEN->setText(QString::number(p->green));
  txtBLUE->setText(QString::number(p->blue));
}

void frmHex2Color::txtRGB_KeyUp(QLineEdit* field) {
  TrimInPlace(field);
  std::optional<RgbParts> p =
      DecimalFieldsToParts(Bytes(txtRED->text()), Bytes(txtGREEN->text()), Bytes(txtBLUE->text()));
  if (!p) {
    txtHEX->clear();
    return;
  }
  picColor->setColour(ColourOfParts(*p));
  txtHEX->setText(QString::fromStdString(ColourToHexText(picColor->colour())));
}

void frmHex2Color::btnClose_Click() {
  hide();
  if (mainWindow_) mainWindow_->activateWindow();
}

bool frmHex2Color::eventFilter(QObject* watched, QEvent* e) {
  QLineEdit* ring[] = {txtHEX, txtRED, txtGREEN, txtBLUE};
  for (int i = 0; i < 4; ++i) {
    if (watched != ring[i]) continue;
    auto* k = static_cast<QKeyEvent*>(e);
    if (e->type() == QEvent::KeyPress && (k->key() == Qt::Key_Return || k->key() == Qt::Key_Enter)) {
      ring[(i + 1) % 4]->setFocus();
      ring[(i + 1) % 4]->selectAll();
      return true;
    }
    if (e->type() == QEvent::KeyRelease && k->key() != Qt::Key_Return && k->key() != Qt::Key_Enter) {
      if (i == 0) txtHEX_KeyUp();
      else txtRGB_KeyUp(ring[i]);
    }
  }
  return QWidget::eventFilter(watched, e);
}

}  // namespace kp
