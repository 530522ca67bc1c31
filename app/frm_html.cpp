#include "app/frm_html.h"
#include "properties/window_lang.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QCloseEvent>
#include <QComboBox>
#include <QFontDatabase>
#include <QFrame>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

#include "app/box_text.h"
#include "app/frm_browser_setup.h"
#include "core/conv.h"
#include "properties/frm_main.h"
#include "properties/twips.h"
#include "publish/browser_test.h"
#include "publish/browsers.h"
#include "publish/player.h"
#include "publish/replace.h"
#include "design/escape_key.h"

namespace kp {

// The order is the order of the "[frmHTML]" section of a language file.
UiTexts& frmHTML::Texts() {
  static UiTexts t = {
      {"frmHTML", "HTML Code"},
      {"mnuFile", "&File"},
      {"mnuBuild", "Build Applet..."},
      {"mnuSaveHTML_Only", "Save HTML Only..."},
      {"mnuCopy", "Copy To ClipBoard"},
      {"mnuOptions", "&Options"},
      {"mnuSurHTML", "&Surrounding HTML..."},
      {"mnuBrowsers", "&Browsers..."},
      {"btnReGenerate", "&Regenerate"},
      {"btnCopyToClb", "&Copy to Clipboard"},
      {"btnBuild", "&Save Applet..."},
      {"btnBuild.ToolTip", "Build Applet with All files"},
      {"btnAdvanced", "&Advanced"},
      {"btnPreview", "Test in &Browser"},
      {"btnClose", "&Close"},
      {"frmAutoHTMLReplace", " Auto replace Applet code in existing HTML file "},
      {"btnGetAutoReplaceHTML_filename", "..."},
      {"btnAutoReplaceHTML", "Replace"},
      {"chkUpdateRequired", "update image, sound, .cab, .jar, and .class files"},
      {"sDefault", "Default"},
      {"lblMessage", "Please Wait..."},
      // Loaded with the others and shown nowhere: language files keep
      // their line numbers.
      {"sGenerating", "Please wait. Generating HTML code..."},
      {"sCheckingAU", "Checking AU file(s)..."},
      // Added after the others: older language files keep their lines.
      {"lblPlayerNote", "The page shows the bar in today's browsers through KestrelPane.js."},
      {"txtAutoReplaceHTML_FileName.Name", "HTML file"},
  };
  return t;
}

namespace {

constexpr const char* kSection = "[frmHTML]";

bool IsEnter(int key) { return key == Qt::Key_Return || key == Qt::Key_Enter; }

}  // namespace

// What the generator and the publishing commands see of the window.
class frmHTML::View : public HtmlWindowView, public PublishView {
 public:
  explicit View(frmHTML& w) : w_(w) {}
  void SetGenerating(bool busy) override { w_.SetGenerating(busy); }
  void FillAppletPaths(const AppletPathsBoxes& boxes) override {
    if (w_.onFillAppletPaths) w_.onFillAppletPaths(boxes);
  }
  void SetAutoReplaceFileName(const std::string& path) override {
    w_.txtAutoReplaceHTML_FileName->setText(PathText(path));
  }
  void ShowOverlay(const std::string& text) override { w_.ShowOverlay(text); }
  void HideOverlay() override { w_.HideOverlay(); }

 private:
  frmHTML& w_;
};

frmHTML::frmHTML(Project& p, Env& env, GeneratorState& st, PublishState& publish, frmMain& main,
                 const LangSettings& lang)
    : QWidget(&main, Qt::Window),
      p_(p),
      env_(env),
      st_(st),
      publish_(publish),
      main_(main),
      view_(std::make_unique<View>(*this)) {
  setObjectName("frmHTML");
  BuildControls();
  BuildLayout();
  ChangeLang_frmHTML(lang);
  ApplyTexts();
  ShowPlayerNote();
  // The design-time text, until the first generation replaces it.
  code_.text = std::string("<html>") + sCRLF + "</html>";
  ShowCode();
  resize(900, 600);
  // Over the main window, unless the last session left a place.
  const QPoint at = main_.frameGeometry().center() - QPoint(width() / 2, height() / 2);
  move(std::max(at.x(), 0), std::max(at.y(), 0));
  ReadSizesInto(env_, this, "frmHTML");
}

frmHTML::~frmHTML() = default;

// --- Controls ---------------------------------------------------------------------

void frmHTML::BuildControls() {
  menuBar = new QMenuBar(this);
  mnuFile = menuBar->addMenu(QString());
  mnuBuild = mnuFile->addAction(QString(), [this] { mnuBuild_Click(); });
  mnuSaveHTML_Only = mnuFile->addAction(QString(), [this] { mnuSaveHTML_Only_Click(); });
  mnuFile->addSeparator();
  mnuCopy = mnuFile->addAction(QString(), [this] { mnuCopy_Click(); });
  mnuOptions = menuBar->addMenu(QString());
  mnuSurHTML = mnuOptions->addAction(QString(), [this] { mnuSurHTML_Click(); });
  mnuBrowsers = mnuOptions->addAction(QString(), [this] { mnuBrowsers_Click(); });
  mnuBuild->setObjectName("mnuBuild");
  mnuSaveHTML_Only->setObjectName("mnuSaveHTML_Only");
  mnuCopy->setObjectName("mnuCopy");
  mnuSurHTML->setObjectName("mnuSurHTML");
  mnuBrowsers->setObjectName("mnuBrowsers");

  txtHTML = new QPlainTextEdit(this);
  txtHTML->setObjectName("txtHTML");
  txtHTML->setLineWrapMode(QPlainTextEdit::NoWrap);
  txtHTML->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  connect(txtHTML, &QPlainTextEdit::textChanged, this, [this] {
    if (!showingCode_) edited_ = true;
  });

  auto button = [this](QPushButton*& b, const char* name, std::function<void()> click) {
    b = new QPushButton(this);
    b->setObjectName(name);
    connect(b, &QPushButton::clicked, this, [click] { click(); });
  };
  button(btnReGenerate, "btnReGenerate", [this] { btnReGenerate_Click(); });
  button(btnCopyToClb, "btnCopyToClb", [this] { btnCopyToClb_Click(); });
  button(btnBuild, "btnBuild", [this] { btnBuild_Click(); });
  button(btnAdvanced, "btnAdvanced", [this] { btnAdvanced_Click(); });
  button(btnPreview, "btnPreview", [this] { btnPreview_Click(); });
  button(btnClose, "btnClose", [this] { btnClose_Click(); });
  // Escape closes it as it closes a dialog.
  CloseOnEscape(this, [this] { btnClose_Click(); });

  lblPlayerNote = new QLabel(this);
  lblPlayerNote->setObjectName("lblPlayerNote");
  lblPlayerNote->setTextFormat(Qt::PlainText);

  cmbBrowser = new QComboBox(this);
  cmbBrowser->setObjectName("cmbBrowser");
  cmbBrowser->setSizeAdjustPolicy(QComboBox::AdjustToContents);
  cmbBrowser->setMinimumContentsLength(12);
  // Only the user's choice is stored, not the filling.
  connect(cmbBrowser, &QComboBox::activated, this, [this](int index) { cmbBrowser_Click(index); });

  frmAutoHTMLReplace = new QGroupBox(this);
  frmAutoHTMLReplace->setObjectName("frmAutoHTMLReplace");
  txtAutoReplaceHTML_FileName = new QLineEdit(frmAutoHTMLReplace);
  txtAutoReplaceHTML_FileName->setObjectName("txtAutoReplaceHTML_FileName");
  txtAutoReplaceHTML_FileName->installEventFilter(this);
  btnGetAutoReplaceHTML_filename = new QPushButton(frmAutoHTMLReplace);
  btnGetAutoReplaceHTML_filename->setObjectName("btnGetAutoReplaceHTML_filename");
  connect(btnGetAutoReplaceHTML_filename, &QPushButton::clicked, this,
          [this] { btnGetAutoReplaceHTML_filename_Click(); });
  btnAutoReplaceHTML = new QPushButton(frmAutoHTMLReplace);
  btnAutoReplaceHTML->setObjectName("btnAutoReplaceHTML");
  connect(btnAutoReplaceHTML, &QPushButton::clicked, this, [this] { btnAutoReplaceHTML_Click(); });
  chkUpdateRequired = new QCheckBox(frmAutoHTMLReplace);
  chkUpdateRequired->setObjectName("chkUpdateRequired");

  picUpLabel = new QFrame(this);
  picUpLabel->setObjectName("picUpLabel");
  picUpLabel->setFrameShape(QFrame::Box);
  picUpLabel->setLineWidth(2);
  picUpLabel->setAutoFillBackground(true);
  lblMessage = new QLabel(picUpLabel);
  lblMessage->setObjectName("lblMessage");
  lblMessage->setAlignment(Qt::AlignCenter);
  QFont big = lblMessage->font();
  big.setBold(true);
  big.setPointSizeF(big.pointSizeF() * 1.5);
  lblMessage->setFont(big);
  auto* overlayBox = new QVBoxLayout(picUpLabel);
  overlayBox->setContentsMargins(24, 16, 24, 16);
  overlayBox->addWidget(lblMessage);
  picUpLabel->hide();
}

void frmHTML::BuildLayout() {
  auto* root = new QVBoxLayout(this);
  root->setMenuBar(menuBar);
  root->addWidget(txtHTML, 1);

  auto* commands = new QHBoxLayout;
  commands->addWidget(btnReGenerate);
  commands->addWidget(btnCopyToClb);
  commands->addWidget(btnBuild);
  commands->addWidget(btnAdvanced);
  commands->addSpacing(16);
  commands->addWidget(cmbBrowser);
  commands->addWidget(btnPreview);
  commands->addStretch();
  commands->addWidget(btnClose);
  root->addLayout(commands);
  root->addWidget(lblPlayerNote);

  auto* replace = new QGridLayout(frmAutoHTMLReplace);
  replace->addWidget(txtAutoReplaceHTML_FileName, 0, 0);
  btnGetAutoReplaceHTML_filename->setFixedWidth(32);
  replace->addWidget(btnGetAutoReplaceHTML_filename, 0, 1);
  replace->addWidget(btnAutoReplaceHTML, 0, 2);
  replace->addWidget(chkUpdateRequired, 1, 0, 1, 3);
  replace->setColumnStretch(0, 1);
  root->addWidget(frmAutoHTMLReplace);
}

void frmHTML::ApplyTexts() {
  const UiTexts& t = Texts();
  setWindowTitle(QTextOf(t, "frmHTML"));
  mnuFile->setTitle(QTextOf(t, "mnuFile"));
  mnuBuild->setText(QTextOf(t, "mnuBuild"));
  mnuSaveHTML_Only->setText(QTextOf(t, "mnuSaveHTML_Only"));
  mnuCopy->setText(QTextOf(t, "mnuCopy"));
  mnuOptions->setTitle(QTextOf(t, "mnuOptions"));
  mnuSurHTML->setText(QTextOf(t, "mnuSurHTML"));
  mnuBrowsers->setText(QTextOf(t, "mnuBrowsers"));
  btnReGenerate->setText(QTextOf(t, "btnReGenerate"));
  btnCopyToClb->setText(QTextOf(t, "btnCopyToClb"));
  btnBuild->setText(QTextOf(t, "btnBuild"));
  btnBuild->setToolTip(QTextOf(t, "btnBuild.ToolTip"));
  btnAdvanced->setText(QTextOf(t, "btnAdvanced"));
  btnPreview->setText(QTextOf(t, "btnPreview"));
  btnClose->setText(QTextOf(t, "btnClose"));
  frmAutoHTMLReplace->setTitle(QTextOf(t, "frmAutoHTMLReplace"));
  btnGetAutoReplaceHTML_filename->setText(QTextOf(t, "btnGetAutoReplaceHTML_filename"));
  btnAutoReplaceHTML->setText(QTextOf(t, "btnAutoReplaceHTML"));
  chkUpdateRequired->setText(QTextOf(t, "chkUpdateRequired"));
  lblMessage->setText(QTextOf(t, "lblMessage"));
  lblPlayerNote->setText(QTextOf(t, "lblPlayerNote"));
  // Neither box has a label beside it; the frame's title is not the field's.
  txtHTML->setAccessibleName(QTextOf(t, "frmHTML"));
  txtAutoReplaceHTML_FileName->setAccessibleName(QTextOf(t, "txtAutoReplaceHTML_FileName.Name"));
  if (cmbBrowser->count() > 0) cmbBrowser->setItemText(0, QTextOf(t, "sDefault"));
}

void frmHTML::ChangeLang_frmHTML(const LangSettings& lang) {
  ApplyLanguageSection(env_, lang, Texts(), kSection);
}

// --- Activation and generation ---------------------------------------------------

bool frmHTML::event(QEvent* e) {
  const bool handled = QWidget::event(e);
  if (e->type() == QEvent::WindowActivate) Form_Activate();
  return handled;
}

void frmHTML::Form_Activate() {
  std::string caption = TextOf(Texts(), "frmHTML");
  if (!p_.sProjectFile.empty()) caption += " - " + FileNameOnly(p_.sProjectFile);
  setWindowTitle(DisplayText(caption));
  GetBrowsers();
  // The setting may have changed in the applet-paths window meanwhile.
  ShowPlayerNote();
  st_.bUseJSCaller = NeedsJSCaller(p_);
  if (st_.bHTMLStale && !st_.bGenerating) MakeHTML();
}

void frmHTML::ShowPlayerNote() { lblPlayerNote->setVisible(PlayerScriptSetting(env_)); }

void frmHTML::MakeHTML() {
  if (st_.bGenerating) return;
  ++generations_;
  kp::MakeHTML(p_, env_, st_, code_, view_.get());
  ShowCode();
}

void frmHTML::ShowCode() {
  showingCode_ = true;
  txtHTML->setPlainText(WithLineFeeds(DisplayText(code_.text)));
  showingCode_ = false;
  edited_ = false;
}

const CodeBox& frmHTML::Code() {
  // The box is the one copy: a hand edit there is what later steps read.
  if (edited_) {
    code_.text = WithCRLF(BoxBytes(txtHTML->toPlainText(), code_.text));
    edited_ = false;
  }
  return code_;
}

void frmHTML::SetGenerating(bool busy) {
  for (QWidget* w : std::initializer_list<QWidget*>{
           btnReGenerate, btnPreview, btnCopyToClb, btnBuild, txtHTML, frmAutoHTMLReplace,
           txtAutoReplaceHTML_FileName, btnGetAutoReplaceHTML_filename, btnAutoReplaceHTML,
           btnAdvanced})
    w->setEnabled(!busy);
  if (busy) {
    // The box fills again from empty; the block shows when it is whole. A
    // hand edit goes with the old block.
    showingCode_ = true;
    txtHTML->clear();
    showingCode_ = false;
    edited_ = false;
    ShowOverlay(TextOf(Texts(), "lblMessage"));
  } else {
    HideOverlay();
  }
}

void frmHTML::ShowOverlay(const std::string& text) {
  // The engine's own English texts, in this window's language.
  if (text == "Checking AU file(s)...") lblMessage->setText(QTextOf(Texts(), "sCheckingAU"));
  else lblMessage->setText(DisplayText(text));
  if (text.empty()) return;
  picUpLabel->adjustSize();
  PlaceOverlay();
  picUpLabel->show();
  picUpLabel->raise();
  picUpLabel->repaint();
}

void frmHTML::HideOverlay() {
  picUpLabel->hide();
  lblMessage->setText(QTextOf(Texts(), "lblMessage"));
}

void frmHTML::PlaceOverlay() {
  const QRect box = txtHTML->geometry();
  const QSize size = picUpLabel->sizeHint().expandedTo(QSize(260, 72));
  picUpLabel->setGeometry(QRect(box.center() - QPoint(size.width() / 2, size.height() / 2), size));
}

void frmHTML::resizeEvent(QResizeEvent* e) {
  QWidget::resizeEvent(e);
  if (picUpLabel->isVisible()) PlaceOverlay();
}

// --- Publishing ------------------------------------------------------------------

PublishContext frmHTML::Context() {
  (void)Code();
  win_.txtAutoReplaceHTML_FileName = PathBytes(txtAutoReplaceHTML_FileName->text());
  win_.chkUpdateRequired = chkUpdateRequired->isChecked();
  win_.browsers.listIndex = cmbBrowser->currentIndex() < 0 ? 0 : cmbBrowser->currentIndex();
  return PublishContext{p_, env_, st_, code_, win_, publish_, view_.get(), nullptr};
}

void frmHTML::TakeBack(const HtmlWindowState& win) {
  const QString box = PathText(win.txtAutoReplaceHTML_FileName);
  if (txtAutoReplaceHTML_FileName->text() != box) txtAutoReplaceHTML_FileName->setText(box);
}

void frmHTML::Build(bool bWithFiles) {
  PublishContext c = Context();
  BuildApplet(c, bWithFiles);
  TakeBack(c.win);
}

void frmHTML::btnBuild_Click() { Build(true); }
void frmHTML::mnuBuild_Click() { Build(true); }
void frmHTML::mnuSaveHTML_Only_Click() { Build(false); }

void frmHTML::btnReGenerate_Click() { MakeHTML(); }

void frmHTML::btnCopyToClb_Click() {
  QClipboard* clip = QGuiApplication::clipboard();
  clip->clear();
  clip->setText(DisplayText(Code().text));
}

void frmHTML::btnAdvanced_Click() {
  if (onAdvanced) onAdvanced();
}

void frmHTML::mnuSurHTML_Click() {
  if (onSurHTML) onSurHTML();
}

void frmHTML::mnuBrowsers_Click() {
  frmBrowserSetup::Run(this, env_);
  // The list is read again on the window's next activation; the window
  // may already be active again when the setup closes.
  GetBrowsers();
}

void frmHTML::GetBrowsers() {
  kp::GetBrowsers(env_, win_.browsers);
  fillingBrowsers_ = true;
  cmbBrowser->clear();
  for (size_t i = 0; i < win_.browsers.cmbBrowser.size(); ++i)
    cmbBrowser->addItem(i == 0 ? QTextOf(Texts(), "sDefault")
                               : DisplayText(win_.browsers.cmbBrowser[i]));
  cmbBrowser->setCurrentIndex(win_.browsers.listIndex);
  fillingBrowsers_ = false;
}

void frmHTML::cmbBrowser_Click(int index) {
  if (fillingBrowsers_ || index < 0) return;
  kp::cmbBrowser_Click(env_, win_.browsers, index);
}

void frmHTML::btnPreview_Click() {
  PublishContext c = Context();
  TestInBrowser(c);
  TakeBack(c.win);
}

void frmHTML::btnGetAutoReplaceHTML_filename_Click() {
  PublishContext c = Context();
  kp::btnGetAutoReplaceHTML_filename_Click(c);
  TakeBack(c.win);
}

void frmHTML::btnAutoReplaceHTML_Click() {
  PublishContext c = Context();
  kp::btnAutoReplaceHTML_Click(c);
  TakeBack(c.win);
}

void frmHTML::txtAutoReplaceHTML_FileName_KeyUp(int key) {
  PublishContext c = Context();
  kp::txtAutoReplaceHTML_FileName_KeyUp(c, c.win.txtAutoReplaceHTML_FileName);
  if (IsEnter(key)) btnAutoReplaceHTML_Click();
}

bool frmHTML::eventFilter(QObject* watched, QEvent* e) {
  if (watched == txtAutoReplaceHTML_FileName && e->type() == QEvent::KeyRelease) {
    auto* k = static_cast<QKeyEvent*>(e);
    if (!k->isAutoRepeat()) txtAutoReplaceHTML_FileName_KeyUp(k->key());
  }
  return QWidget::eventFilter(watched, e);
}

// --- Closing -----------------------------------------------------------------------

void frmHTML::btnClose_Click() {
  hide();
  main_.show();
  main_.raise();
  main_.activateWindow();
}

void frmHTML::closeEvent(QCloseEvent* e) {
  if (main_.bUnloading) WriteSizesOf(env_, this, "frmHTML");
  QWidget::closeEvent(e);
}

}  // namespace kp
