#include "app/language_catalog.h"

#include <algorithm>

#include "app/frm_applet_paths.h"
#include "app/frm_ask_to_associate.h"
#include "app/frm_browser_setup.h"
#include "app/frm_html.h"
#include "app/frm_sur_html.h"
#include "core/language.h"
#include "design/design_texts.h"
#include "properties/frm_about.h"
#include "properties/frm_advanced.h"
#include "properties/frm_applet_dialogs.h"
#include "properties/frm_button_effects.h"
#include "properties/frm_create_recent.h"
#include "properties/frm_hex2color.h"
#include "properties/frm_main.h"
#include "properties/frm_pic_browser.h"
#include "properties/frm_publish_dialogs.h"
#include "properties/frm_set_action.h"
#include "properties/frm_wav2au.h"
#include "properties/frm_applet_behaviour.h"
#include "properties/window_lang.h"

namespace kp {

namespace {

size_t SectionLineCount(const CatalogSection& c) {
  return c.fixedLines ? c.fixedLines : c.targets.size();
}

// A table longer than the lines the format fixes for its heading goes on
// in the section of its further lines.
void AddTargets(std::vector<CatalogSection>& out, const char* heading,
                const std::vector<std::string*>& targets) {
  CatalogSection s{heading, {}, FixedSectionLines(heading)};
  CatalogSection more{MoreLinesHeading(heading), {}, 0};
  for (std::string* t : targets) {
    CatalogSection& into = s.fixedLines && s.targets.size() == s.fixedLines ? more : s;
    into.targets.push_back(t);
  }
  out.push_back(std::move(s));
  if (!more.targets.empty()) out.push_back(std::move(more));
}

template <class Table>
void AddSection(std::vector<CatalogSection>& out, const char* heading, Table& table) {
  std::vector<std::string*> targets;
  for (auto& t : table) targets.push_back(&t.text);
  AddTargets(out, heading, targets);
}

}  // namespace

std::vector<CatalogSection> LanguageCatalog() {
  std::vector<CatalogSection> out;
  AddTargets(out, "[frmMain]", frmMain::SectionTargets());
  AddSection(out, "[frmDesign]", frmDesignTexts());
  AddSection(out, "[frmHTML]", frmHTML::Texts());
  AddSection(out, "[frmAdvanced]", frmAdvanced::Texts());
  AddSection(out, "[frmBrowserSetup]", frmBrowserSetup::Texts());
  AddSection(out, "[frmButtonSpecial]", frmButtonSpecial::Texts());
  AddSection(out, "[frmSetAction]", frmSetAction::Texts());
  AddSection(out, "[frmAutoRepHTML_MSG]", frmAutoRepHTML_MSG::Texts());
  AddSection(out, "[frmAutoRepHTML_2]", frmAutoRepHTML_2::Texts());
  AddSection(out, "[frmSpecial]", frmSpecial::Texts());
  AddSection(out, "[frmGrid]", frmGridTexts());
  AddSection(out, "[frmEditBrowser]", frmAddEditBrowser::Texts());
  AddSection(out, "[frmDescent]", frmDescent::Texts());
  AddSection(out, "[frmSetBgOffset]", frmSetBgOffset::Texts());
  AddSection(out, "[frmReadyForUpload]", frmReadyForUpload::Texts());
  AddSection(out, "[frm_Create_Recent]", frm_Create_Recent::Texts());
  AddSection(out, "[frmSomeFilesWarning]", frmSomeFilesWarning::Texts());
  AddSection(out, "[frmAppletPaths]", frmAppletPaths::Texts());
  AddSection(out, "[frmAskToAssociate]", frmAskToAssociate::Texts());
  AddSection(out, "[frmSurHTML]", frmSurHTML::Texts());
  AddSection(out, "[frmHex2Color]", frmHex2Color::Texts());
  AddSection(out, "[frmAbout]", frmAbout::Texts());
  AddSection(out, "[frmWav2Au]", frmWav2Au::Texts());
  AddSection(out, "[frmAppletBorder]", frmAppletBorder::Texts());
  AddSection(out, "[frmAppletFade]", frmAppletFade::Texts());
  AddSection(out, "[frmPicBroser]", frmPicBrowser::Texts());
  out.push_back({"[EditHistory]", HistoryWordTargets(), 0});
  return out;
}

void ApplyPublishLanguage(Env& env, const LangSettings& lang) {
  // These windows are made afresh for each command, without the settings:
  // their texts are the publishing commands', put in force at start-up.
  static const char* const kHeadings[] = {"[frmSomeFilesWarning]", "[frmReadyForUpload]",
                                          "[frmAutoRepHTML_MSG]", "[frmAutoRepHTML_2]"};
  for (const CatalogSection& c : LanguageCatalog()) {
    if (std::find(std::begin(kHeadings), std::end(kHeadings), c.heading) == std::end(kHeadings))
      continue;
    auto lines = WindowLanguageLines(env, lang, c.heading, SectionLineCount(c));
    if (!lines) return;
    for (size_t k = 0; k < lines->size() && k < c.targets.size(); ++k)
      *c.targets[k] = MessageLineText((*lines)[k]);
  }
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
