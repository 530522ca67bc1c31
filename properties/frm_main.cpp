#include "properties/frm_main.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMimeData>
#include <QScreen>
#include <QTimer>

#include <cstdlib>

#include "core/conv.h"
#include "core/folders.h"
#include "core/messages.h"
#include "core/session.h"
#include "core/settings.h"
#include "design/design_texts.h"
#include "design/frm_design.h"
#include "project/new_project.h"
#include "design/colour_box.h"
#include "properties/colour_dialog.h"
#include "properties/frm_create_recent.h"
#include "properties/frm_about.h"
#include "properties/frm_hex2color.h"
#include "properties/button_list.h"
#include "properties/button_panel.h"
#include "properties/frm_message.h"
#include "properties/frm_multi_line_editor.h"
#include "properties/frm_my_msg_box.h"
#include "properties/global_panel.h"
#include "properties/twips.h"
#include "properties/window_lang.h"
#include "publish/export.h"
#include "publish/sound.h"

namespace kp {

namespace {

QStringList DroppedFiles(const QMimeData* data) {
  QStringList files;
  if (!data || !data->hasUrls()) return files;
  for (const QUrl& u : data->urls())
    if (u.isLocalFile()) files << u.toLocalFile();
  return files;
}

// The narrowest the main window may be.
constexpr long kMinMainWidthTwips = 7020;

}  // namespace

// --- Loading -------------------------------------------------------------------

bool frmMain::Form_Load() {
  sMOREOPTIONS = TextOf(Texts(), "sMOREOPTIONS");
  sLESSOPTIONS = TextOf(Texts(), "sLESSOPTIONS");
  if (PixelsToTwips(width()) < kMinMainWidthTwips)
    resize(TwipsToPixels(kMinMainWidthTwips), height());
  p_.sMainTitle = Lang().TitleText;
  setWindowTitle(DisplayText(Lang().TitleText));
  GetRecent();
  if (LanguageApplies(env_, lang_)) ChangeLang_frmMain();
  const QSize before = size();
  ReadSizesInto(env_, this, "frmMain");
  // Without a stored size, the first size shows every control of the
  // panels, in every mode and in the language now in force. The layouts
  // know their sizes once the window has been through its first events.
  if (size() == before)
    QTimer::singleShot(0, this, [this] {
      for (QWidget* w : findChildren<QWidget*>()) w->updateGeometry();
      QSize want = sizeHint().expandedTo(size());
      if (QScreen* s = screen()) want = want.boundedTo(s->availableGeometry().size());
      resize(want);
    });

  // A fresh start shows the default button, unlike New.
  if (!FreshStart(p_, env_)) return false;
  View().SelectButton(p_, p_.iCurBtn);
  p_.AppletWidth = MakeCInt(PathBytes(txtAppletWidth->text()), 120);
  p_.AppletHeight = MakeCInt(PathBytes(txtAppletHeight->text()), 120);
  p_.BackGround = picGeneralBackGround->colour();
  design_->SetBackColor(p_.BackGround);

  bAutoTile = GetParam(env_, "AutoTile") != "0";
  design_->SetAutoTile(bAutoTile);
  design_->Form_Load(lang_, windowIcon());
  p_.bProjectSaved = true;
  const bool makeDefault = GetParam(env_, "mnuMakeDefaultBtn") != "0";
  mnuMakeDefaultBtn->setVisible(makeDefault);
  mnuMakeDefaultBtnSep->setVisible(makeDefault);
  ResetHistory();
  return true;
}

bool frmMain::ShowMain() {
  if (!Form_Load()) return false;
  show();
  ShowDesign();
  return true;
}

std::vector<std::string*> frmMain::SectionTargets() {
  std::vector<std::string*> out;
  auto add = [&out](auto& table) {
    for (auto& t : table) out.push_back(&t.text);
  };
  add(Texts());
  add(ButtonList::Texts());
  add(ButtonPanel::Texts());
  add(GlobalPanel::Texts());
  add(DesignMenuTexts());
  add(frmMultiLineEditor::Texts());
  add(frmMyMsgBox::Texts());
  add(frmMessage::Texts());
  LangTexts& m = Lang();
  for (std::string* s : {&m.TitleText, &m.ButtonWord, &m.TooManyButtons}) out.push_back(s);
  add(SharedMessages());
  add(GlobalPanel::ItemTexts());
  return out;
}

void frmMain::ChangeLang_frmMain() {
  auto lines = WindowLanguageLines(env_, lang_, "[frmMain]", FixedSectionLines("[frmMain]"));
  if (!lines) return;
  std::vector<std::string*> targets = SectionTargets();
  const size_t fixed = FixedSectionLines("[frmMain]");
  if (targets.size() > fixed) {
    auto more = WindowLanguageLines(env_, lang_, MoreLinesHeading("[frmMain]"),
                                    targets.size() - fixed);
    if (more) lines->insert(lines->end(), more->begin(), more->end());
  }
  // Message texts of several lines are written with "\n" in the file.
  for (size_t k = 0; k < lines->size() && k < targets.size(); ++k)
    *targets[k] = MessageLineText((*lines)[k]);
  ApplyTexts();
  if (auto* bp = dynamic_cast<ButtonPanel*>(panel)) {
    bp->ApplyTexts();
    bp->List().ApplyTexts();
  }
  if (general) general->ApplyTexts();
  const DesignTexts& d = DesignMenuTexts();
  const std::pair<QAction*, const char*> entries[] = {
      {mnuAlign ? mnuAlign->menuAction() : nullptr, "mnuAlign"},
      {mnuAlign_Left, "mnuAlign_Left"},
      {mnuAlign_Right, "mnuAlign_Right"},
      {mnuAlign_Top, "mnuAlign_Top"},
      {mnuAlign_Bottom, "mnuAlign_Bottom"},
      {mnuAlign_Horizontal_Row, "mnuAlign_Horizontal_Row"},
      {mnuAlign_Vertical_Column, "mnuAlign_Vertical_Column"},
      {mnuGrid, "mnuGrid"},
      {mnuLOCKED, "mnuLOCKED"},
      {mnuRefresh, "mnuRefresh"}};
  for (const auto& [action, name] : entries)
    if (action) action->setText(DesignQText(d, name));
  // Entries that other windows' levels add to this window's menus.
  for (const char* name : {"mnuSurHTML", "mnuAppletPaths"})
    if (auto* a = findChild<QAction*>(name)) a->setText(QTextOf(Texts(), name));
  p_.sMainTitle = Lang().TitleText;
  setWindowTitle(DisplayText(Lang().TitleText));
  ApplyHistoryTexts();
  ShowSavedMark();
}

void frmMain::ShowDesign() {
  if (!designPlaced_ && isVisible()) {
    designPlaced_ = true;
    QRect m = frameGeometry();
    design_->move(m.right() + 12, m.top());
    ReadSizesInto(env_, design_, "frmDesign", true);
  }
  design_->ShowOver(this, GetParam(env_, "frmDesignOnTop") != "0");
}

// --- File menu -----------------------------------------------------------------

std::string frmMain::AskToSaveChanges() {
  return kp::AskToSaveChanges(p_, env_, [this] { mnuSave_Click(); });
}

void frmMain::mnuNew_Click() {
  if (AskToSaveChanges() == "CANCEL") return;
  NewProject(p_, env_);
  txtBackImg->clear();
  UnloadMultiLineEditor();
  ShowDesign();
  p_.bProjectSaved = true;
  ShowOnlyNewProject();
  ResetHistory();
}

std::string frmMain::ProjectsFolder() {
  std::string folder = GetParam(env_, "sProjectsPath");
  return folder.empty() ? WriteFolder(env_) + "/Projects" : folder;
}

void frmMain::mnuOpen_Click() {
  if (AskToSaveChanges() == "CANCEL") return;
  FileDialog d;
  d.filter = kOpenProjectFilter;
  d.folder = ProjectsFolder();
  d.fileMustExist = true;
  d.pathMustExist = true;
  const std::string path = env_.prompter.OpenFileDialog(d);
  if (path.empty()) return;
  std::string folder = GetFolder(path);
  if (folder.size() > 1 && IsSep(folder.back())) folder.pop_back();
  SettingsBatch batch(env_.store);
  SetParam(env_, "sProjectsPath", folder);
  OpenProjectFile(path);
}

LoadResult frmMain::OpenProjectFile(const std::string& path) {
  // The load lets events run; its settings still go out in one write.
  SettingsBatch batch(env_.store);
  LoadResult r = LoadProject2(p_, env_, path);
  if (r == LoadResult::ProcessEnds) {
    EndProcess(3);
    return r;
  }
  ResetHistory();
  ShowDesign();
  return r;
}

void frmMain::mnuSave_Click() {
  if (p_.sProjectFile.empty()) {
    mnuSaveAs_Click();
    return;
  }
  SaveAs(p_.sProjectFile);
}

void frmMain::mnuSaveAs_Click() {
  FileDialog d;
  d.filter = kSaveProjectFilter;
  d.folder = ProjectsFolder();
  d.fileName = p_.sProjectName + ".kpn";
  d.defaultExt = "kpn";
  d.overwritePrompt = true;
  d.pathMustExist = true;
  const std::string path = env_.prompter.SaveFileDialog(d);
  if (path.empty()) return;
  std::string folder = GetFolder(path);
  if (folder.size() > 1 && IsSep(folder.back())) folder.pop_back();
  SetParam(env_, "sProjectsPath", folder);
  SaveAs(path);
}

void frmMain::SaveAs(const std::string& path) {
  if (!SaveProject(p_, env_, path, false, false)) return;
  p_.sProjectFile = path;
  p_.sMainTitle = ProjectTitle(p_);
  View().SetTitles(p_.sMainTitle, DesignTitle(p_.sMainTitle));
  history_.MarkSaved(p_);
  UpdateUndoEntries();
  ShowSavedMark();
}

void frmMain::GetRecent() {
  std::vector<RecentEntry> entries = kp::GetRecent(env_);
  for (QAction* a : mnuRecent) a->setVisible(false);
  for (const RecentEntry& e : entries) {
    QAction* a = mnuRecent[static_cast<size_t>(e.k - 1)];
    a->setText(DisplayText(e.text).replace("&", "&&"));
    a->setData(QByteArray::fromStdString(e.path));
    a->setVisible(true);
  }
  mnuRecentSep->setVisible(!entries.empty());
}

void frmMain::mnuRecent_Click(int k) {
  if (AskToSaveChanges() == "CANCEL") return;
  QByteArray path = mnuRecent[static_cast<size_t>(k - 1)]->data().toByteArray();
  OpenProjectFile(path.toStdString());
}

void frmMain::mnuExit_Click() { close(); }

void frmMain::btnBuild_Click() {
  if (onBuild) onBuild();
}

void frmMain::mnuExport_Click() {
  // The file menu is off while the export's dialogs and copies run.
  class FileMenuView : public PublishView {
   public:
    explicit FileMenuView(QMenu* menu) : menu_(menu) {}
    void SetFileMenuEnabled(bool enabled) override { menu_->menuAction()->setEnabled(enabled); }

   private:
    QMenu* menu_;
  };
  FileMenuView view(mnuFile);
  GeneratorState st;
  CodeBox box;
  HtmlWindowState win;
  PublishContext c{p_, env_, st, box, win, publishState ? *publishState : ownPublishState_, &view};
  kp::mnuExport_Click(c);
}

void frmMain::GET_OLEDragDrop(const QStringList& files) {
  if (files.isEmpty()) return;
  if (AskToSaveChanges() == "CANCEL") return;
  // A shell that passes several files: the first one is opened.
  OpenProjectFile(PathBytes(files.first()));
}

// --- The design window ------------------------------------------------------------

// What the design window asks of this window: the selection, the panel,
// the Edit menu.
class frmMain::DesignLink : public DesignHost {
 public:
  explicit DesignLink(frmMain& w) : w_(w) {}
  int SelectedCount() override { return w_.SelectedCount(); }
  bool IsSelected(int i) override { return w_.IsSelected(i); }
  void SelectItem_lstButtons(int i) override { w_.SelectItem_lstButtons(i); }
  void AddSelectItem_lstButtons(int i) override { w_.AddSelectItem_lstButtons(i); }
  void DeSelectItem_lstButtons(int i) override { w_.DeSelectItem_lstButtons(i); }
  void RenewList() override {
    for (int r = 0; r < w_.lstButtons->count() && r < w_.p_.ButtonCount; ++r)
      w_.lstButtons->item(r)->setText(DisplayText(w_.p_.button(r + 1).sBName));
  }
  void ShowProp(int i) override {
    if (w_.panel) w_.panel->ShowProp(i);
  }
  void SetLastChange(int code) override {
    if (w_.panel) w_.panel->SetLastChange(code);
    else w_.p_.iLast_Change = static_cast<i16>(code);
  }
  void ShowAppletSize(int width, int height) override {
    const bool was = w_.p_.bFillingPanel;
    w_.p_.bFillingPanel = true;
    w_.txtAppletWidth->setText(QString::number(width));
    w_.txtAppletHeight->setText(QString::number(height));
    w_.p_.bFillingPanel = was;
  }
  void PopupEditMenu(const QPoint& globalPos) override { w_.mnuEdit->popup(globalPos); }
  void SetLockedMark(bool locked) override {
    if (w_.mnuLOCKED) w_.mnuLOCKED->setChecked(locked);
  }
  void pub_mnuRefresh_Click() override { w_.pub_mnuRefresh_Click(); }
  void FilesDropped(const QStringList& files) override { w_.GET_OLEDragDrop(files); }
  void ActivateMain() override { w_.activateWindow(); }
  Colour ChooseColour(Colour start) override { return kp::ChooseColour(w_.design_, start); }

 private:
  frmMain& w_;
};

void frmMain::CreateDesign() {
  designHost_ = std::make_unique<DesignLink>(*this);
  design_ = new frmDesign(p_, env_, *designHost_, nullptr);
}

bool frmMain::IsSelected(int i) const {
  QListWidgetItem* it = lstButtons->item(i - 1);
  return i >= 1 && it && it->isSelected();
}

int frmMain::SelectedCount() const {
  return static_cast<int>(lstButtons->selectedItems().size());
}

void frmMain::SelectItem_lstButtons(int index) {
  // The marks of a multiple selection go with it: every button that was
  // marked, and every one whose row changes, is painted again.
  const bool wasMultiple = SelectedCount() >= 2;
  std::vector<int> repaint;
  for (int r = 0; r < lstButtons->count(); ++r) {
    QListWidgetItem* it = lstButtons->item(r);
    const bool want = r == index - 1;
    const bool was = it->isSelected();
    if (was != want) it->setSelected(want);
    if (was != want || (was && wasMultiple)) repaint.push_back(r + 1);
  }
  if (QListWidgetItem* it = lstButtons->item(index - 1); it && index >= 1)
    lstButtons->setCurrentItem(it, QItemSelectionModel::NoUpdate);
  for (int j : repaint)
    if (j <= p_.ButtonCount) design_->RedrawButton(j, false, false, true, false);
  // A single selection again: the handles stand around it.
  if (index >= 1 && index <= p_.ButtonCount) design_->ShowSizers();
}

void frmMain::AddSelectItem_lstButtons(int index) {
  if (QListWidgetItem* it = lstButtons->item(index - 1); it && index >= 1) it->setSelected(true);
}

void frmMain::DeSelectItem_lstButtons(int index) {
  if (QListWidgetItem* it = lstButtons->item(index - 1); it && index >= 1) it->setSelected(false);
}

void frmMain::lstButtons_MouseUp(bool right, const QPoint& globalPos) {
  if (p_.ButtonCount <= 0) return;
  const int row = lstButtons->currentRow();
  if (row < 0 || row >= p_.ButtonCount) return;
  p_.iCurBtn = static_cast<i16>(row + 1);
  designHost_->ShowProp(p_.iCurBtn);
  if (SelectedCount() <= 1) {
    SelectItem_lstButtons(p_.iCurBtn);
    design_->MoveSizer(p_.iCurBtn);
  }
  // All buttons again, so that the marks agree with the list.
  design_->RedrawAllButtons();
  designHost_->SetLastChange(0);
  if (right) mnuEdit->popup(globalPos);
}

void frmMain::AddDesignMenuEntries(QMenu* menu) {
  // The design window's block: alignment, grid, lock and refresh.
  const DesignTexts& t = DesignMenuTexts();
  menu->addSeparator();
  mnuAlign = menu->addMenu(DesignQText(t, "mnuAlign"));
  mnuAlign->setObjectName("mnuAlign");
  // Each alignment is one step, named after its entry.
  auto align = [this, &t](const char* name, void (frmDesign::*run)()) {
    return mnuAlign->addAction(DesignQText(t, name), [this, name, run] {
      const std::string entry = ModelText(DesignQText(DesignMenuTexts(), name).remove('&'));
      StepScope step(*this, Words().Align + " " + entry);
      (design_->*run)();
    });
  };
  mnuAlign_Left = align("mnuAlign_Left", &frmDesign::Align_Left);
  mnuAlign_Right = align("mnuAlign_Right", &frmDesign::Align_Right);
  mnuAlign_Top = align("mnuAlign_Top", &frmDesign::Align_Top);
  mnuAlign_Bottom = align("mnuAlign_Bottom", &frmDesign::Align_Bottom);
  mnuAlign->addSeparator();
  mnuAlign_Horizontal_Row = align("mnuAlign_Horizontal_Row", &frmDesign::Align_Horizontal_Row);
  mnuAlign_Vertical_Column = align("mnuAlign_Vertical_Column", &frmDesign::Align_Vertical_Column);
  mnuGrid = menu->addAction(DesignQText(t, "mnuGrid"), [this] { design_->mnuGrid_Click(); });
  mnuGrid->setObjectName("mnuGrid");
  mnuLOCKED = menu->addAction(DesignQText(t, "mnuLOCKED"), [this] { design_->mnuLOCKED_Click(); });
  mnuLOCKED->setObjectName("mnuLOCKED");
  mnuLOCKED->setCheckable(true);
  mnuRefresh = menu->addAction(DesignQText(t, "mnuRefresh"), [this] { pub_mnuRefresh_Click(); });
  mnuRefresh->setObjectName("mnuRefresh");
  mnuRefresh->setShortcut(Qt::Key_F5);
  connect(menu, &QMenu::aboutToShow, this, [this] {
    mnuAlign->setEnabled(p_.ButtonCount > 1);
    mnuLOCKED->setChecked(design_->bLocked);
  });
}

void frmMain::pub_mnuRefresh_Click() { design_->Refresh(); }

// --- Start dialog --------------------------------------------------------------

frm_Create_Recent* frmMain::CreateRecent() {
  if (!createRecent_) {
    createRecent_ = new frm_Create_Recent(p_, env_, this);
    createRecent_->onOpenFromDisk = [this] { mnuOpen_Click(); };
    createRecent_->onOpenRecent = [this](const std::string& path) {
      if (AskToSaveChanges() == "CANCEL") return;
      OpenProjectFile(path);
    };
  }
  return createRecent_;
}

void frmMain::Show_frm_Create_Recent() { CreateRecent()->ShowStart(); }

void frmMain::ShowOnlyNewProject() { CreateRecent()->ShowOnlyNewProject(); }

// --- Tools ----------------------------------------------------------------------

frmHex2Color* frmMain::Hex2Color() {
  if (!hex2color_) hex2color_ = new frmHex2Color(this, env_);
  return hex2color_;
}

void frmMain::mnuHex2Color_Click() {
  Hex2Color()->show();
  Hex2Color()->raise();
}

void frmMain::mnuWav2Au_Click() { ShowWav2Au(*this, env_); }

void frmMain::mnuWav2Au_ReadMe_Click() { kp::mnuWav2Au_ReadMe_Click(env_); }

// --- Settings ---------------------------------------------------------------------

void frmMain::mnuBrowserSetup_Click() {
  if (onBrowserSetup) onBrowserSetup();
}

frmMultiLineEditor* frmMain::MultiLineEditor(QLineEdit* txtLabel) {
  if (!multiLine_)
    multiLine_ = new frmMultiLineEditor(this, txtLabel, QTextOf(Texts(), "btnMultiLine.ToolTip"));
  return multiLine_;
}

void frmMain::UnloadMultiLineEditor() {
  if (multiLine_) delete multiLine_.data();
}

// --- Closing --------------------------------------------------------------------

void frmMain::EndProcess(int code) {
  if (endProcess) endProcess(code);
}

bool frmMain::Form_QueryUnload() {
  if (!p_.bReady) {
    // A load is under way: end here, saving nothing.
    EndProcess(0);
    return true;
  }
  const std::string answer = AskToSaveChanges();
  if (answer == "NO" || p_.bProjectSaved) {
    MyExit();
    return true;
  }
  return false;
}

void frmMain::MyExit() {
  SaveCustColors(env_, SharedCustColors());
  WriteSizesOf(env_, design_, "frmDesign");
  // frmHTML stores its own as the loop below closes it.
  WriteSizesOf(env_, this, "frmMain");
  bUnloading = true;
  design_->bUnloading = true;
  // The forms in their fixed order, then the program's other windows.
  QList<QWidget*> forms = {design_, createRecent_.data(), hex2color_.data(), multiLine_.data()};
  for (QWidget* w : findChildren<QWidget*>())
    if (w->isWindow() && !forms.contains(w)) forms << w;
  for (QWidget* w : forms)
    if (w) w->close();
}

void frmMain::closeEvent(QCloseEvent* e) {
  if (bUnloading || Form_QueryUnload()) {
    e->accept();
    return;
  }
  e->ignore();
}

void frmMain::dragEnterEvent(QDragEnterEvent* e) {
  if (!DroppedFiles(e->mimeData()).isEmpty()) e->acceptProposedAction();
}

void frmMain::dropEvent(QDropEvent* e) {
  QStringList files = DroppedFiles(e->mimeData());
  if (files.isEmpty()) return;
  e->acceptProposedAction();
  GET_OLEDragDrop(files);
}

}  // namespace kp
