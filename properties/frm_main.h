// frmMain: the main window. Its File menu, the button list and the place of
// the property panels, and the start, new, open, save and close commands.
// The model is the program's one Project; the window keeps no copy of it.
#pragma once

#include <QMainWindow>
#include <QPoint>
#include <QPointer>
#include <QStringList>
#include <array>
#include <functional>
#include <memory>
#include <string>

#include "core/edit_history.h"
#include "core/env.h"
#include "core/language.h"
#include "core/model.h"
#include "design/design_host.h"
#include "project/project_file.h"
#include "publish/context.h"
#include "properties/panel_hooks.h"
#include "properties/ui_text.h"

class QAction;
class QGroupBox;
class QLineEdit;
class QListWidget;
class QMenu;
class QPushButton;

namespace kp {

class ColourBox;
class frmDesign;
class GlobalPanel;
class frmHex2Color;
class frmMultiLineEditor;
class frm_Create_Recent;

// The open dialog's filter: this program's projects and its two siblings'.
inline constexpr const char* kOpenProjectFilter =
    "Kestrel Pane Projects (*.kpn)|*.kpn|Quail Stone Projects (*.qst)|*.qst|LinnetPlum Projects "
    "(*.lpm)|*.lpm|All Files (*.*)|*.*";
inline constexpr const char* kSaveProjectFilter =
    "Kestrel Pane Projects (*.kpn)|*.kpn|All Files (*.*)|*.*";

class frmMain : public QMainWindow {
 public:
  frmMain(Project& p, Env& env);
  ~frmMain() override;
  static UiTexts& Texts();
  // Line k of the "[frmMain]" section is the text *SectionTargets()[k-1]:
  // the window's table, then the button list's, the button panel's, the
  // Global Properties panel's, the design window's Edit menu entries, the
  // small shared windows', the model's language texts and the shared
  // messages of the levels below.
  static std::vector<std::string*> SectionTargets();

  // What the model's routines tell the windows.
  ProjectView& View();

  // The language settings in force (for the language file's name).
  void SetLanguage(const LangSettings& lang) { lang_ = lang; }

  // Form_Load, then the window and the design window shown. False when
  // the process must end (the default button record was damaged).
  bool Form_Load();
  bool ShowMain();
  void ChangeLang_frmMain();

  // --- File menu ---
  void mnuNew_Click();
  void mnuOpen_Click();
  void Public_mnuOpen_Click() { mnuOpen_Click(); }
  void mnuSave_Click();
  void mnuSaveAs_Click();
  void mnuRecent_Click(int k);
  void mnuExit_Click();
  // The project and its media into one folder (the "Export..." entry).
  void mnuExport_Click();
  // --- Settings menu ---
  void mnuBrowserSetup_Click();
  // --- Tools menu ---
  void mnuHex2Color_Click();
  // The interactive WAV to AU converter and its read-me.
  void mnuWav2Au_Click();
  void mnuWav2Au_ReadMe_Click();
  // Files dropped on the main or the design window.
  void GET_OLEDragDrop(const QStringList& files);
  // The HTML window shown; mnuMakeHTML only calls btnBuild_Click.
  void btnBuild_Click();
  void mnuMakeHTML_Click() { btnBuild_Click(); }

  // "SAVED", "YES", "NO" or "CANCEL"; Yes saves through mnuSave_Click.
  std::string AskToSaveChanges();
  // The recent-file entries of the File menu, from the settings.
  void GetRecent();
  // The start dialog: both frames, or the new-project frame alone (New).
  void Show_frm_Create_Recent();
  void ShowOnlyNewProject();
  // Loads a project as every open command does.
  LoadResult OpenProjectFile(const std::string& path);
  // The design window over the main window or not, as "frmDesignOnTop" says.
  void ShowDesign();

  // --- The selection: the rows selected in lstButtons (row n is button
  // n+1). The design window and the list commands change it only here.
  // Makes index the only selected row; the buttons whose marks change are
  // repainted.
  void SelectItem_lstButtons(int index);
  void AddSelectItem_lstButtons(int index);
  void DeSelectItem_lstButtons(int index);
  bool IsSelected(int i) const;
  int SelectedCount() const;
  // A click on the list (Shift and Ctrl extend the selection): the clicked
  // row becomes the current button, the panel shows it, the design
  // window's marks follow; the right button opens the Edit menu.
  void lstButtons_MouseUp(bool right, const QPoint& globalPos);

  // --- The design window's commands on the main window ---
  // The alignment, grid, lock and refresh entries, as one block of `menu`.
  void AddDesignMenuEntries(QMenu* menu);
  // The refresh routine: everything under the buttons painted again.
  void pub_mnuRefresh_Click();

  // --- Undo and redo ---
  EditHistory& History() { return history_; }
  // A user operation ended: what it changed becomes one step, named
  // `name` or, when that is empty, after what changed.
  void RecordStep(const std::string& name = {});
  // Load, New, a fresh start: no steps, and this state is the saved one.
  void ResetHistory();
  void mnuUndo_Click();
  void mnuRedo_Click();
  // Ctrl+A, Ctrl+D and Delete: every button selected, the selected
  // buttons duplicated or removed (one step each).
  void SelectAllButtons();
  void DuplicateSelection();
  void DeleteSelection();
  std::vector<int> SelectedButtons() const;
  // The title with "*" in front while the project has unsaved changes.
  void ShowSavedMark();
  void ApplyHistoryTexts();

  // Form_QueryUnload: true when the close goes on.
  bool Form_QueryUnload();
  // Stores the custom colours and the window sizes and unloads every form.
  void MyExit();

  // The other windows, created on first use and kept until shutdown.
  frmDesign* Design() { return design_; }
  frm_Create_Recent* CreateRecent();
  frmHex2Color* Hex2Color();
  frmMultiLineEditor* MultiLineEditor(QLineEdit* txtLabel);
  void UnloadMultiLineEditor();

  // The button property panel, once it exists; the design window and the
  // list commands fill it and record edits through it.
  PanelHooks* panel = nullptr;
  // The Global Properties panel with the applet's option windows.
  GlobalPanel* general = nullptr;

  // Ends the process at once with the code, without saving: a close while
  // a project loads, or a damaged default record.
  std::function<void(int)> endProcess;

  // The browser list window; it lives with the HTML window's level.
  std::function<void()> onBrowserSetup;
  // The HTML window; it lives with the publishing level too.
  std::function<void()> onBuild;
  // The publishing commands' program-wide state (a Cancel in a copy error
  // box silences copy errors until the program ends). Points to the one
  // the HTML window shares when set; otherwise the window's own.
  PublishState* publishState = nullptr;

  // Set once MyExit ran: the windows may close.
  bool bUnloading = false;
  // The language-dependent captions of the panel's options button.
  std::string sMOREOPTIONS, sLESSOPTIONS;
  // "AutoTile" for the program settings window.
  bool bAutoTile = true;

  // File menu.
  QMenu* mnuFile;
  QAction* mnuNew;
  QAction* mnuOpen;
  QAction* mnuSave;
  QAction* mnuSaveAs;
  QAction* mnuExport;
  QAction* mnuMakeHTML;
  QAction* mnuRecentSep;
  std::array<QAction*, 4> mnuRecent{};
  QAction* mnuExit;
  // Menus that other commands fill.
  QMenu* mnuEdit;
  QMenu* mnuSettings;
  QAction* mnuMakeDefaultBtn;
  QAction* mnuMakeDefaultBtnSep;
  QAction* mnuBrowserSetup;
  QMenu* mnuTools;
  QAction* mnuHex2Color;
  QAction* mnuWav2Au;
  QAction* mnuWav2Au_ReadMe;
  QMenu* mnuHelp;
  // The design window's block of the Edit menu.
  QMenu* mnuAlign = nullptr;
  QAction* mnuAlign_Left = nullptr;
  QAction* mnuAlign_Right = nullptr;
  QAction* mnuAlign_Top = nullptr;
  QAction* mnuAlign_Bottom = nullptr;
  QAction* mnuAlign_Horizontal_Row = nullptr;
  QAction* mnuAlign_Vertical_Column = nullptr;
  QAction* mnuGrid = nullptr;
  QAction* mnuLOCKED = nullptr;
  QAction* mnuRefresh = nullptr;
  // The history entries of the Edit menu and the selection's keys.
  QAction* mnuUndo = nullptr;
  QAction* mnuRedo = nullptr;
  QAction* mnuSelectAll = nullptr;
  QAction* mnuDuplicateSelection = nullptr;
  QAction* mnuDeleteSelection = nullptr;

  // The button list, the selection of the whole program: row n is button n+1.
  QGroupBox* frameButtons;
  QListWidget* lstButtons;
  QPushButton* btnBuild;
  // The button property panel's place.
  QGroupBox* frameBtnProp;
  // Global Properties.
  QGroupBox* frmGeneral;
  QLineEdit* txtAppletWidth;
  QLineEdit* txtAppletHeight;
  ColourBox* picGeneralBackGround;
  QLineEdit* txtBackImg;

 protected:
  void closeEvent(QCloseEvent* e) override;
  void dragEnterEvent(QDragEnterEvent* e) override;
  void dropEvent(QDropEvent* e) override;

 private:
  class MainView;
  class DesignLink;
  // The design window with the host it asks for the selection.
  void CreateDesign();
  void BuildMenus();
  void BuildPanels();
  void ApplyTexts();
  void SaveAs(const std::string& path);
  void InstallHistory();
  void UpdateUndoEntries();
  void ShowHistoryChange(const HistoryChange& c);
  void ShowSelection(const std::vector<int>& selection);
  void EndProcess(int code);
  std::string ProjectsFolder();

  Project& p_;
  Env& env_;
  LangSettings lang_;
  std::unique_ptr<MainView> view_;
  std::unique_ptr<DesignHost> designHost_;
  frmDesign* design_;
  QPointer<frm_Create_Recent> createRecent_;
  QPointer<frmHex2Color> hex2color_;
  QPointer<frmMultiLineEditor> multiLine_;
  bool designPlaced_ = false;
  PublishState ownPublishState_;
  EditHistory history_;
  // Off until the first project stands (a fresh start, New or a load).
  bool historyOn_ = false;
  // Open StepScopes: steps wait for the outermost one.
  int stepHold_ = 0;
  friend class StepScope;
};

// One user operation as one step: what was pending before it becomes a
// step of its own, and everything until the scope ends is the step `name`
// (empty: named after what changed). Scopes nest; the outermost records.
class StepScope {
 public:
  StepScope(frmMain& main, std::string name);
  ~StepScope();
  StepScope(const StepScope&) = delete;
  StepScope& operator=(const StepScope&) = delete;

 private:
  frmMain& main_;
  std::string name_;
};

// The "[EditHistory]" section of a language file: the history's words.
std::vector<std::string*> HistoryWordTargets();

}  // namespace kp
