// frmMain's controls, their texts and the view the model's routines drive.
#include <QAction>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QMouseEvent>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

#include <cstdlib>
#include <functional>

#include "design/accessible_names.h"
#include "design/frm_design.h"
#include "properties/button_panel.h"
#include "properties/frm_about.h"
#include "design/colour_box.h"
#include "properties/frm_main.h"
#include "properties/global_panel.h"

namespace kp {

namespace {

// Hands the list's mouse releases on, once the list has settled its own
// selection for them (a plain click inside a multiple selection narrows it
// only at the release).
class ReleaseWatcher : public QObject {
 public:
  ReleaseWatcher(QObject* parent, std::function<void(bool right, QPoint globalPos)> f)
      : QObject(parent), f_(std::move(f)) {}

 protected:
  bool eventFilter(QObject*, QEvent* e) override {
    if (e->type() == QEvent::MouseButtonRelease) {
      auto* m = static_cast<QMouseEvent*>(e);
      const bool right = m->button() == Qt::RightButton;
      const QPoint at = m->globalPosition().toPoint();
      QTimer::singleShot(0, this, [this, right, at] { f_(right, at); });
    }
    return false;
  }

 private:
  std::function<void(bool, QPoint)> f_;
};

}  // namespace

// The order is the order of the "[frmMain]" section of a language file.
UiTexts& frmMain::Texts() {
  static UiTexts t = {
      {"mnuFile", "&File"},
      {"mnuNew", "&New"},
      {"mnuOpen", "&Open..."},
      {"mnuSave", "&Save"},
      {"mnuSaveAs", "Save &As..."},
      {"mnuExport", "&Export..."},
      {"mnuExit", "E&xit"},
      {"mnuEdit", "&Edit"},
      {"mnuSettings", "&Settings"},
      {"mnuMakeDefaultBtn", "Make Current Button &Default"},
      {"mnuTools", "&Tools"},
      {"mnuHex2Color", "&Hex2Color..."},
      {"mnuHelp", "&Help"},
      {"frameButtons", " Buttons: "},
      {"frameBtnProp", "Properties for "},
      {"frmGeneral", " Global Properties: "},
      {"lblAppletWidth", "Width:"},
      {"lblAppletHeight", "Height:"},
      {"txtAppletWidth.ToolTip", "Enter should be pressed after changing this value manually."},
      {"lblGeneralBackGround", "Back Color:"},
      {"frameBackImg", "BackGround Image:"},
      {"btnMultiLine.ToolTip", "Multiline Editor"},
      {"sMOREOPTIONS", "More Options"},
      {"sLESSOPTIONS", "Less Options"},
      {"mnuBrowserSetup", "&Browsers..."},
      {"mnuWav2Au", "&Wav to Au Converter..."},
      {"mnuWav2Au_ReadMe", "Wav to Au Converter &ReadMe"},
      {"mnuMakeHTML", "Make &HTML..."},
      {"btnBuild", "&Build..."},
      {"mnuSurHTML", "&Surrounding HTML..."},
      {"mnuAppletPaths", "Applet &Paths..."},
  };
  return t;
}

// --- The view ------------------------------------------------------------------

class frmMain::MainView : public ProjectView {
 public:
  explicit MainView(frmMain& w) : w_(w) {}

  void SetMainParams(Project& p) override {
    w_.txtAppletWidth->setText(QString::number(p.AppletWidth));
    w_.txtAppletHeight->setText(QString::number(p.AppletHeight));
    w_.picGeneralBackGround->setColour(p.BackGround);
    w_.txtBackImg->setText(DisplayText(p.BackImg));
    w_.design_->SetMainParams();
    if (w_.general) w_.general->ShowMainParams();
  }

  void ClearButtons() override {
    w_.lstButtons->clear();
    w_.design_->ClearButtons();
  }

  void LoadButton(Project& p, int i) override {
    if (i < 1 || i > p.ButtonCount) return;
    const QString name = DisplayText(p.button(i).sBName);
    while (w_.lstButtons->count() < i - 1) w_.lstButtons->addItem(QString());
    if (w_.lstButtons->count() == i - 1)
      w_.lstButtons->addItem(name);
    else
      w_.lstButtons->item(i - 1)->setText(name);
    w_.design_->LoadButton(i);
  }

  void SelectButton(Project&, int i) override {
    if (i < 1 || i > w_.lstButtons->count()) return;
    w_.lstButtons->clearSelection();
    w_.lstButtons->setCurrentRow(i - 1, QItemSelectionModel::ClearAndSelect);
    w_.frameBtnProp->setTitle(QTextOf(Texts(), "frameBtnProp") + w_.lstButtons->item(i - 1)->text());
    w_.design_->MoveSizer(i);
    w_.design_->ShowSizers();
    w_.design_->MoveLabelPositioner(i);
    if (w_.panel) w_.panel->ShowProp(i);
  }

  void SetTitles(const std::string& main, const std::string& design) override {
    w_.setWindowTitle(DisplayText(main));
    w_.design_->setWindowTitle(DisplayText(design));
  }

  void RecentChanged() override { w_.GetRecent(); }

 private:
  frmMain& w_;
};

ProjectView& frmMain::View() { return *view_; }

frmMain::frmMain(Project& p, Env& env) : p_(p), env_(env) {
  setObjectName("frmMain");
  NameControlsOfEveryWindow();
  setAcceptDrops(true);
  CreateDesign();
  BuildMenus();
  BuildPanels();
  ApplyTexts();
  resize(640, 460);
  InstallButtonPanel(*this, p_, env_);
  general = InstallGlobalPanel(*this, p_, env_);
  InstallHistory();
  endProcess = [](int code) { std::_Exit(code); };
}

frmMain::~frmMain() {
  // The design window goes before the host it asks, whether it is a window
  // of its own or stands over this one.
  delete design_;
}

// --- Controls ------------------------------------------------------------------

void frmMain::BuildMenus() {
  mnuFile = menuBar()->addMenu(QString());
  mnuFile->setObjectName("mnuFile");
  mnuNew = mnuFile->addAction(QString(), [this] { mnuNew_Click(); });
  mnuNew->setShortcut(QKeySequence::New);
  mnuOpen = mnuFile->addAction(QString(), [this] { mnuOpen_Click(); });
  mnuOpen->setShortcut(QKeySequence::Open);
  mnuSave = mnuFile->addAction(QString(), [this] { mnuSave_Click(); });
  mnuSave->setShortcut(QKeySequence::Save);
  mnuSaveAs = mnuFile->addAction(QString(), [this] { mnuSaveAs_Click(); });
  mnuFile->addSeparator();
  mnuMakeHTML = mnuFile->addAction(QString(), [this] { mnuMakeHTML_Click(); });
  mnuMakeHTML->setObjectName("mnuMakeHTML");
  mnuFile->addSeparator();
  mnuExport = mnuFile->addAction(QString(), [this] { mnuExport_Click(); });
  mnuExport->setObjectName("mnuExport");
  mnuRecentSep = mnuFile->addSeparator();
  for (int k = 1; k <= 4; ++k) {
    mnuRecent[k - 1] = mnuFile->addAction(QString(), [this, k] { mnuRecent_Click(k); });
    mnuRecent[k - 1]->setObjectName(QString("mnuRecent%1").arg(k));
    mnuRecent[k - 1]->setVisible(false);
  }
  mnuFile->addSeparator();
  mnuExit = mnuFile->addAction(QString(), [this] { mnuExit_Click(); });

  // The Edit menu holds the design window's block, led by a separator; the
  // button list's operations go in above it when the panel is installed.
  mnuEdit = menuBar()->addMenu(QString());
  mnuEdit->setObjectName("mnuEdit");
  AddDesignMenuEntries(mnuEdit);
  mnuSettings = menuBar()->addMenu(QString());
  mnuSettings->setObjectName("mnuSettings");
  mnuMakeDefaultBtn = mnuSettings->addAction(QString());
  mnuMakeDefaultBtn->setEnabled(false);
  mnuMakeDefaultBtnSep = mnuSettings->addSeparator();
  mnuBrowserSetup = mnuSettings->addAction(QString(), [this] { mnuBrowserSetup_Click(); });
  mnuBrowserSetup->setObjectName("mnuBrowserSetup");
  mnuTools = menuBar()->addMenu(QString());
  mnuTools->setObjectName("mnuTools");
  mnuHex2Color = mnuTools->addAction(QString(), [this] { mnuHex2Color_Click(); });
  mnuTools->addSeparator();
  mnuWav2Au = mnuTools->addAction(QString(), [this] { mnuWav2Au_Click(); });
  mnuWav2Au->setObjectName("mnuWav2Au");
  mnuWav2Au_ReadMe = mnuTools->addAction(QString(), [this] { mnuWav2Au_ReadMe_Click(); });
  mnuWav2Au_ReadMe->setObjectName("mnuWav2Au_ReadMe");
  mnuHelp = menuBar()->addMenu(QString());
  mnuHelp->setObjectName("mnuHelp");
  InstallHelpMenu(*this, env_);
}

void frmMain::BuildPanels() {
  view_ = std::make_unique<MainView>(*this);
  auto* central = new QWidget(this);
  central->setObjectName("central");

  frameButtons = new QGroupBox(central);
  frameButtons->setObjectName("frameButtons");
  lstButtons = new QListWidget(frameButtons);
  lstButtons->setObjectName("lstButtons");
  lstButtons->setSelectionMode(QAbstractItemView::ExtendedSelection);
  // Rows of one font are of one height: the list is laid out without
  // measuring each row's text, which a list of a thousand rows would do at
  // every event run of a load.
  lstButtons->setUniformItemSizes(true);
  lstButtons->viewport()->installEventFilter(new ReleaseWatcher(
      lstButtons, [this](bool right, QPoint at) { lstButtons_MouseUp(right, at); }));
  auto* listBox = new QVBoxLayout(frameButtons);
  listBox->addWidget(lstButtons);

  // The button property panel goes here.
  frameBtnProp = new QGroupBox(central);
  frameBtnProp->setObjectName("frameBtnProp");
  frameBtnProp->setMinimumSize(300, 200);
  auto* propBox = new QVBoxLayout(frameBtnProp);
  propBox->addStretch();

  frmGeneral = new QGroupBox(central);
  frmGeneral->setObjectName("frmGeneral");
  txtAppletWidth = new QLineEdit(frmGeneral);
  txtAppletWidth->setObjectName("txtAppletWidth");
  txtAppletHeight = new QLineEdit(frmGeneral);
  txtAppletHeight->setObjectName("txtAppletHeight");
  picGeneralBackGround = new ColourBox(frmGeneral);
  picGeneralBackGround->setObjectName("picGeneralBackGround");
  picGeneralBackGround->setFixedSize(40, 20);
  txtBackImg = new QLineEdit(frmGeneral);
  txtBackImg->setObjectName("txtBackImg");
  // Editing the applet's options comes with the options panel; until then
  // the fields show the applet record.
  for (QLineEdit* f : {txtAppletWidth, txtAppletHeight, txtBackImg}) f->setReadOnly(true);
  for (QLineEdit* f : {txtAppletWidth, txtAppletHeight}) f->setFixedWidth(64);
  auto* grid = new QGridLayout(frmGeneral);
  auto label = [this](const char* name) {
    auto* l = new QLabel(frmGeneral);
    l->setObjectName(name);
    return l;
  };
  grid->addWidget(label("lblAppletWidth"), 0, 0);
  grid->addWidget(txtAppletWidth, 0, 1);
  grid->addWidget(label("lblAppletHeight"), 0, 2);
  grid->addWidget(txtAppletHeight, 0, 3);
  grid->addWidget(label("lblGeneralBackGround"), 0, 4);
  grid->addWidget(picGeneralBackGround, 0, 5);
  grid->addWidget(label("frameBackImg"), 1, 0, 1, 2);
  grid->addWidget(txtBackImg, 1, 2, 1, 4);
  grid->setColumnStretch(6, 1);

  auto* right = new QVBoxLayout;
  right->addWidget(frameBtnProp, 1);
  right->addWidget(frmGeneral);
  // The road to the page starts under the button list.
  btnBuild = new QPushButton(central);
  btnBuild->setObjectName("btnBuild");
  connect(btnBuild, &QPushButton::clicked, this, [this] { btnBuild_Click(); });
  auto* left = new QVBoxLayout;
  left->addWidget(frameButtons, 1);
  left->addWidget(btnBuild);

  auto* row = new QHBoxLayout(central);
  row->addLayout(left);
  row->addLayout(right, 1);
  setCentralWidget(central);
}

void frmMain::ApplyTexts() {
  const UiTexts& t = Texts();
  mnuFile->setTitle(QTextOf(t, "mnuFile"));
  mnuNew->setText(QTextOf(t, "mnuNew"));
  mnuOpen->setText(QTextOf(t, "mnuOpen"));
  mnuSave->setText(QTextOf(t, "mnuSave"));
  mnuSaveAs->setText(QTextOf(t, "mnuSaveAs"));
  mnuMakeHTML->setText(QTextOf(t, "mnuMakeHTML"));
  btnBuild->setText(QTextOf(t, "btnBuild"));
  mnuExport->setText(QTextOf(t, "mnuExport"));
  mnuExit->setText(QTextOf(t, "mnuExit"));
  mnuEdit->setTitle(QTextOf(t, "mnuEdit"));
  mnuSettings->setTitle(QTextOf(t, "mnuSettings"));
  mnuMakeDefaultBtn->setText(QTextOf(t, "mnuMakeDefaultBtn"));
  mnuTools->setTitle(QTextOf(t, "mnuTools"));
  mnuHex2Color->setText(QTextOf(t, "mnuHex2Color"));
  mnuBrowserSetup->setText(QTextOf(t, "mnuBrowserSetup"));
  mnuWav2Au->setText(QTextOf(t, "mnuWav2Au"));
  mnuWav2Au_ReadMe->setText(QTextOf(t, "mnuWav2Au_ReadMe"));
  mnuHelp->setTitle(QTextOf(t, "mnuHelp"));
  frameButtons->setTitle(QTextOf(t, "frameButtons"));
  frameBtnProp->setTitle(QTextOf(t, "frameBtnProp"));
  frmGeneral->setTitle(QTextOf(t, "frmGeneral"));
  for (const char* name : {"lblAppletWidth", "lblAppletHeight", "lblGeneralBackGround", "frameBackImg"})
    findChild<QLabel*>(name)->setText(QTextOf(t, name));
  txtAppletWidth->setToolTip(QTextOf(t, "txtAppletWidth.ToolTip"));
  txtAppletHeight->setToolTip(QTextOf(t, "txtAppletWidth.ToolTip"));
  sMOREOPTIONS = TextOf(t, "sMOREOPTIONS");
  sLESSOPTIONS = TextOf(t, "sLESSOPTIONS");
}

}  // namespace kp
