#include "app/html_windows.h"

#include <QAction>
#include <QEvent>
#include <QMenu>

#include <algorithm>

#include "app/frm_applet_paths.h"
#include "app/frm_html.h"
#include "app/frm_sur_html.h"
#include "design/frm_design.h"
#include "properties/frm_main.h"

namespace kp {

// The entries are the main window's, in its language section.
UiTexts& HtmlWindows::MainMenuTexts() { return frmMain::Texts(); }

// Marks the code stale when a watched window gains activation.
class HtmlWindows::Watcher : public QObject {
 public:
  explicit Watcher(GeneratorState& st) : st_(st) {}

 protected:
  bool eventFilter(QObject*, QEvent* e) override {
    if (e->type() == QEvent::WindowActivate) MarkHTMLStale(st_);
    return false;
  }

 private:
  GeneratorState& st_;
};

HtmlWindows::HtmlWindows(Project& p, Env& env, frmMain& main, const LangSettings& lang)
    : p_(p), env_(env), main_(main), lang_(lang), watcher_(std::make_unique<Watcher>(st)) {
  st.bAddJAR = ReadAddJAR(env_);
  main_.installEventFilter(watcher_.get());
  if (main_.Design()) main_.Design()->installEventFilter(watcher_.get());

  const UiTexts& t = MainMenuTexts();
  main_.mnuSettings->addSeparator();
  mnuSurHTML = main_.mnuSettings->addAction(QTextOf(t, "mnuSurHTML"), [this] { ShowSurHTML(); });
  mnuSurHTML->setObjectName("mnuSurHTML");
  mnuAppletPaths =
      main_.mnuSettings->addAction(QTextOf(t, "mnuAppletPaths"), [this] { ShowAppletPaths(); });
  mnuAppletPaths->setObjectName("mnuAppletPaths");
}

HtmlWindows::~HtmlWindows() {
  // The windows point at the state held here: they go first.
  delete paths_.data();
  delete sur_.data();
  delete html_.data();
}

frmHTML* HtmlWindows::ExistingHTML() const { return html_; }
frmSurHTML* HtmlWindows::ExistingSurHTML() const { return sur_; }
frmAppletPaths* HtmlWindows::ExistingAppletPaths() const { return paths_; }

frmHTML* HtmlWindows::HTML() {
  if (!html_) {
    html_ = new frmHTML(p_, env_, st, publish, main_, lang_);
    html_->onAdvanced = [this] { ShowAppletPaths(); };
    html_->onSurHTML = [this] { ShowSurHTML(); };
    html_->onFillAppletPaths = [this](const AppletPathsBoxes& boxes) {
      if (paths_) paths_->Fill(boxes);
    };
  }
  return html_;
}

frmSurHTML* HtmlWindows::SurHTML() {
  if (!sur_) sur_ = new frmSurHTML(p_, env_, st, lang_, &main_);
  return sur_;
}

frmAppletPaths* HtmlWindows::AppletPaths() {
  if (!paths_) {
    paths_ = new frmAppletPaths(p_, env_, st, lang_, &main_);
    paths_->onClose = [this] { BackFromAppletPaths(); };
  }
  return paths_;
}

namespace {

// A window opened for the first time stands over the one it was opened
// from.
void PlaceOver(QWidget* w, QWidget* over) {
  if (!over || !over->isVisible()) return;
  const QPoint at = over->frameGeometry().center() - QPoint(w->width() / 2, w->height() / 2);
  w->move(std::max(at.x(), 0), std::max(at.y(), 0));
}

QWidget* Opener(QWidget* html, QWidget* main) {
  return html && html->isVisible() ? html : main;
}

}  // namespace

void HtmlWindows::btnBuild_Click() {
  frmHTML* w = HTML();
  if (w->isMinimized()) w->showNormal();
  else w->show();
  w->raise();
  w->activateWindow();
}

void HtmlWindows::ShowSurHTML() {
  if (!sur_) PlaceOver(SurHTML(), Opener(html_, &main_));
  frmSurHTML* w = SurHTML();
  // A closed editor opens afresh from the project.
  if (!w->isVisible()) w->Form_Load();
  w->show();
  w->raise();
  w->activateWindow();
}

void HtmlWindows::ShowAppletPaths() {
  if (!paths_) PlaceOver(AppletPaths(), Opener(html_, &main_));
  frmAppletPaths* w = AppletPaths();
  if (!w->isVisible()) w->FillFromProject();
  w->show();
  w->raise();
  w->activateWindow();
}

void HtmlWindows::BackFromAppletPaths() {
  if (main_.bUnloading) return;
  QWidget* back = Opener(html_, &main_);
  back->raise();
  back->activateWindow();
}

void HtmlWindows::HideHTMLWindow() {
  if (html_) html_->hide();
}

}  // namespace kp
