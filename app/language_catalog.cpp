#include "app/language_catalog.h"

#include "app/frm_applet_paths.h"
#include "app/frm_ask_to_associate.h"
#include "app/frm_browser_setup.h"
#include "app/frm_html.h"
#include "app/frm_sur_html.h"
#include "core/language.h"
#include "design/design_texts.h"
#include "properties/frm_advanced.h"
#include "properties/frm_applet_dialogs.h"
#include "properties/frm_button_effects.h"
#include "properties/frm_create_recent.h"
#include "properties/frm_hex2color.h"
#include "properties/frm_main.h"
#include "properties/frm_pic_browser.h"
#include "properties/frm_publish_dialogs.h"
#include "properties/frm_set_action.h"
#include "properties/frm_applet_behaviour.h"

namespace kp {

namespace {

template <class Table>
CatalogSection Section(const char* heading, Table& table) {
  CatalogSection s{heading, {}, FixedSectionLines(heading)};
  for (auto& t : table) s.targets.push_back(&t.text);
  // A table longer than its fixed section keeps its last texts English.
  if (s.fixedLines && s.targets.size() > s.fixedLines) s.targets.resize(s.fixedLines);
  return s;
}

}  // namespace

std::vector<CatalogSection> LanguageCatalog() {
  std::vector<CatalogSection> out;
  out.push_back({"[frmMain]", frmMain::SectionTargets(), FixedSectionLines("[frmMain]")});
  out.push_back(Section("[frmDesign]", frmDesignTexts()));
  out.push_back(Section("[frmHTML]", frmHTML::Texts()));
  out.push_back(Section("[frmAdvanced]", frmAdvanced::Texts()));
  out.push_back(Section("[frmBrowserSetup]", frmBrowserSetup::Texts()));
  out.push_back(Section("[frmButtonSpecial]", frmButtonSpecial::Texts()));
  out.push_back(Section("[frmSetAction]", frmSetAction::Texts()));
  out.push_back(Section("[frmAutoRepHTML_MSG]", frmAutoRepHTML_MSG::Texts()));
  out.push_back(Section("[frmAutoRepHTML_2]", frmAutoRepHTML_2::Texts()));
  out.push_back(Section("[frmSpecial]", frmSpecial::Texts()));
  out.push_back(Section("[frmGrid]", frmGridTexts()));
  out.push_back(Section("[frmEditBrowser]", frmAddEditBrowser::Texts()));
  out.push_back(Section("[frmDescent]", frmDescent::Texts()));
  out.push_back(Section("[frmSetBgOffset]", frmSetBgOffset::Texts()));
  out.push_back(Section("[frmReadyForUpload]", frmReadyForUpload::Texts()));
  out.push_back(Section("[frm_Create_Recent]", frm_Create_Recent::Texts()));
  out.push_back(Section("[frmSomeFilesWarning]", frmSomeFilesWarning::Texts()));
  out.push_back(Section("[frmAppletPaths]", frmAppletPaths::Texts()));
  out.push_back(Section("[frmAskToAssociate]", frmAskToAssociate::Texts()));
  out.push_back(Section("[frmSurHTML]", frmSurHTML::Texts()));
  out.push_back(Section("[frmHex2Color]", frmHex2Color::Texts()));
  out.push_back(Section("[frmAppletBorder]", frmAppletBorder::Texts()));
  out.push_back(Section("[frmAppletFade]", frmAppletFade::Texts()));
  out.push_back(Section("[frmPicBroser]", frmPicBrowser::Texts()));
  return out;
}

std::string LanguageFileOfTables() {
  std::vector<LanguageSectionText> sections;
  for (const CatalogSection& c : LanguageCatalog()) {
    LanguageSectionText s{c.heading, {}};
    for (const std::string* t : c.targets) s.lines.push_back(MessageLineOf(*t));
    sections.push_back(std::move(s));
  }
  return LanguageFileText(sections);
}

}  // namespace kp
