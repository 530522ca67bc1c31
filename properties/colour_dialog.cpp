#include "properties/colour_dialog.h"

#include <QColorDialog>

namespace kp {

CustColors& SharedCustColors() {
  static CustColors table{};
  return table;
}

Colour ChooseColour(QWidget* owner, Colour start) {
  CustColors& table = SharedCustColors();
  for (int i = 0; i < 16; ++i)
    QColorDialog::setCustomColor(i, QColor(table[4 * i], table[4 * i + 1], table[4 * i + 2]));
  QColorDialog dlg(ToQColor(start), owner);
  dlg.setObjectName("ChooseColor");
  dlg.setOption(QColorDialog::DontUseNativeDialog);
  if (dlg.exec() != QDialog::Accepted) return -1;
  for (int i = 0; i < 16; ++i) {
    QColor c = QColorDialog::customColor(i);
    table[4 * i] = static_cast<std::uint8_t>(c.red());
    table[4 * i + 1] = static_cast<std::uint8_t>(c.green());
    table[4 * i + 2] = static_cast<std::uint8_t>(c.blue());
    table[4 * i + 3] = 0;
  }
  return FromQColor(dlg.selectedColor());
}

}  // namespace kp
