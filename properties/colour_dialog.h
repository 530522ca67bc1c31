// The colour dialog wrapper that every colour control uses, and the sixteen
// custom colours it shares. The custom colours are the 128 bytes of the
// settings (four a colour: red, green, blue, 0), read at start-up and stored
// at shutdown.
#pragma once

#include <QColor>

#include "core/model.h"
#include "core/settings.h"

class QWidget;

namespace kp {

// The program's one custom-colour table.
CustColors& SharedCustColors();

inline QColor ToQColor(Colour c) { return QColor(c & 0xFF, (c >> 8) & 0xFF, (c >> 16) & 0xFF); }
inline Colour FromQColor(const QColor& q) { return RGB(q.red(), q.green(), q.blue()); }

// The colour dialog over `owner`, starting from `start`, with the shared
// custom colours. Returns the chosen colour, or -1 when it was cancelled:
// then the caller stops and changes nothing, and the table is left as it
// was. On OK the custom colours the user edited go back into the table.
Colour ChooseColour(QWidget* owner, Colour start);

}  // namespace kp
