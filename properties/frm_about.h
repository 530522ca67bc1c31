// frmAbout: the Help menu's window with the program's name, version and a
// line on what it does; and the Help menu itself, whose two entries carry
// their texts in the same section of a language file.
#pragma once

#include <QDialog>
#include <string>

#include "core/env.h"
#include "properties/ui_text.h"

class QLabel;
class QPushButton;

namespace kp {

class frmMain;

class frmAbout : public QDialog {
 public:
  frmAbout(QWidget* parent, Env& env);
  // "[frmAbout]": the window's lines, then the Help menu's entries.
  static UiTexts& Texts();

  QLabel* lblProduct;
  QLabel* lblVersion;
  QLabel* lblDescription;
  QLabel* lblFolder;
  QPushButton* btnOK;
};

// The Help menu's entries (the guide, About), and the Tools menu's
// converter window, wired to the main window.
void InstallHelpMenu(frmMain& main, Env& env);
void ShowAbout(frmMain& main, Env& env);
void ShowWav2Au(frmMain& main, Env& env);

}  // namespace kp
