#include "properties/frm_about.h"

#include <QAction>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QVBoxLayout>

#include "core/help.h"
#include "core/model.h"
#include "properties/frm_main.h"
#include "properties/frm_wav2au.h"
#include "properties/window_lang.h"

namespace kp {

// The order is the order of the "[frmAbout]" section of a language file.
UiTexts& frmAbout::Texts() {
  static UiTexts t = {
      {"frmAbout", "About "},
      {"lblProduct", "Kestrel Pane"},
      {"lblVersion", "Version "},
      {"lblDescription",
       "Designs button bars for web pages: buttons with a look for each of their three states, "
       "links, sounds and small action programs, published as a page ready for upload."},
      {"lblFolder", "Program folder: "},
      {"btnOK", "&OK"},
      {"mnuHelpContents", "&Contents..."},
      {"mnuAbout", "&About Kestrel Pane..."},
  };
  return t;
}

frmAbout::frmAbout(QWidget* parent, Env& env) : QDialog(parent) {
  setObjectName("frmAbout");
  ApplyLanguageSection(env, Texts(), "[frmAbout]");
  const UiTexts& t = Texts();
  setWindowTitle(QTextOf(t, "frmAbout") + DisplayText(Lang().TitleText));
  lblProduct = NamedControl(new QLabel(QTextOf(t, "lblProduct"), this), "lblProduct");
  QFont big = lblProduct->font();
  big.setPointSize(big.pointSize() + 6);
  big.setBold(true);
  lblProduct->setFont(big);
  lblVersion = NamedControl(new QLabel(QTextOf(t, "lblVersion") + sPRJ_FILE_VERSION, this),
                            "lblVersion");
  lblDescription =
      NamedControl(new QLabel(QTextOf(t, "lblDescription"), this), "lblDescription");
  lblDescription->setWordWrap(true);
  lblFolder = NamedControl(
      new QLabel(QTextOf(t, "lblFolder") + PathText(env.programFolder), this), "lblFolder");
  lblFolder->setTextInteractionFlags(Qt::TextSelectableByMouse);
  btnOK = NamedControl(new QPushButton(QTextOf(t, "btnOK"), this), "btnOK");
  btnOK->setDefault(true);
  connect(btnOK, &QPushButton::clicked, this, &QDialog::accept);

  auto* box = new QVBoxLayout(this);
  box->addWidget(lblProduct);
  box->addWidget(lblVersion);
  box->addSpacing(8);
  box->addWidget(lblDescription);
  box->addWidget(lblFolder);
  auto* row = new QHBoxLayout;
  row->addStretch();
  row->addWidget(btnOK);
  box->addLayout(row);
  setMinimumWidth(420);
}

void ShowAbout(frmMain& main, Env& env) {
  frmAbout about(&main, env);
  about.exec();
}

void ShowWav2Au(frmMain& main, Env& env) {
  // Made on first use, kept until shutdown with the main window.
  auto* w = main.findChild<frmWav2Au*>("frmWav2Au", Qt::FindDirectChildrenOnly);
  if (!w) w = new frmWav2Au(&main, env);
  w->show();
  w->raise();
  w->activateWindow();
}

void InstallHelpMenu(frmMain& main, Env& env) {
  ApplyLanguageSection(env, frmAbout::Texts(), "[frmAbout]");
  const UiTexts& t = frmAbout::Texts();
  QAction* contents = main.mnuHelp->addAction(QTextOf(t, "mnuHelpContents"), &main, [&env] {
    mnuHelpContents_Click(env, LangInForce());
  });
  contents->setObjectName("mnuHelpContents");
  contents->setShortcut(QKeySequence::HelpContents);
  main.mnuHelp->addSeparator();
  QAction* about =
      main.mnuHelp->addAction(QTextOf(t, "mnuAbout"), &main, [&main, &env] { ShowAbout(main, env); });
  about->setObjectName("mnuAbout");
}

}  // namespace kp
