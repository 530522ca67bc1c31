#include "design/design_texts.h"

#include <QStringDecoder>

namespace kp {

// The order is the order of the "[frmDesign]" section of a language file.
DesignTexts& frmDesignTexts() {
  static DesignTexts t = {
      {"sDesignWindow", "Design Window"},
      {"sBUTTONSLOCKED", "***BUTTONS LOCKED***"},
      {"mnuNewButton", "&New Button"},
      {"mnuPaste", "&Paste"},
      {"mnuLOCKED", "&Lock Buttons"},
      {"mnuGrid", "&Grid..."},
      {"mnuRefresh", "&Refresh"},
      {"sPleaseWait", "Please Wait..."},
      {"sTilingBackground", "Tiling background ..."},
      {"mnuZoom", "&Zoom"},
      {"mnuZoom100", "&100 %"},
      {"mnuZoom200", "&200 %"},
      {"mnuZoom400", "&400 %"},
      {"mnuZoom800", "&800 %"},
      // The grid dialog's buttons: its own section has no lines left.
      {"frmGrid.btnApply", "&Apply"},
      {"frmGrid.btnOK", "&OK"},
      {"frmGrid.btnCANCEL", "&Cancel"},
      {"scrollH", "Scroll Sideways"},
      {"scrollV", "Scroll Up and Down"},
  };
  return t;
}

// The order is the order of the "[frmGrid]" section.
DesignTexts& frmGridTexts() {
  static DesignTexts t = {
      {"frmGrid", "Grid Options"},
      {"chkGrid", "Show Grid"},
      {"chkAlignXY", "Align Buttons to Grid"},
      {"chkAlignWH", "Resize Buttons to Grid"},
      {"optShowAsDots", "Show Grid as Dots"},
      {"optShowAsLines", "Show Grid as Lines"},
      {"lblGridX", "Grid x:"},
      {"lblGridY", "Grid y:"},
      {"lblGridColor", "Grid Color:"},
      {"btnAlignXY_NOW", "&Align Now"},
      {"btnAlignWH_NOW", "&Resize Now"},
      {"sUnlockButtons", "Unlock Buttons?"},
      {"sButtonsLocked", "Buttons locked!"},
  };
  return t;
}

DesignTexts& DesignMenuTexts() {
  static DesignTexts t = {
      {"mnuAlign", "A&lign"},
      {"mnuAlign_Left", "&Left"},
      {"mnuAlign_Right", "&Right"},
      {"mnuAlign_Top", "&Top"},
      {"mnuAlign_Bottom", "&Bottom"},
      {"mnuAlign_Horizontal_Row", "&Horizontal Row"},
      {"mnuAlign_Vertical_Column", "&Vertical Column"},
      {"mnuGrid", "&Grid..."},
      {"mnuLOCKED", "Loc&k Buttons"},
      {"mnuRefresh", "Re&fresh"},
  };
  return t;
}

const std::string& DesignTextOf(const DesignTexts& table, std::string_view control) {
  for (const DesignText& t : table)
    if (control == t.control) return t.text;
  static thread_local std::string missing;
  missing = std::string(control);
  return missing;
}

QString DesignQText(const DesignTexts& table, std::string_view control) {
  return BytesText(DesignTextOf(table, control));
}

void ReplaceDesignTexts(DesignTexts& table, const std::vector<std::string>& lines) {
  for (size_t i = 0; i < table.size() && i < lines.size(); ++i) table[i].text = lines[i];
}

QString BytesText(const std::string& bytes) {
  QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
  QString s = utf8(QByteArrayView(bytes.data(), static_cast<qsizetype>(bytes.size())));
  if (!utf8.hasError()) return s;
  return QString::fromLatin1(bytes.data(), static_cast<qsizetype>(bytes.size()));
}

}  // namespace kp
