// The browser list windows: frmBrowserSetup lists the browsers the HTML
// window can preview with, frmAddEditBrowser edits one entry. The list is
// edited in memory; only Ok stores it.
#pragma once

#include <QDialog>

#include "core/env.h"
#include "properties/ui_text.h"
#include "publish/browsers.h"

class QKeyEvent;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;
class QWidget;

namespace kp {

class frmAddEditBrowser : public QDialog {
 public:
  frmAddEditBrowser(Env& env, QWidget* parent);
  static UiTexts& Texts();

  // Modal. Add appends a row to both lists of setup, Edit changes its
  // selected row with the fields filled from it. True on Ok.
  bool ShowAdd(BrowserSetup& setup);
  bool ShowEdit(BrowserSetup& setup);

  void btnBrowse_Click();
  void btnOK_Click();

  QLabel* lblName;
  QLineEdit* txtName;
  QLabel* lblPath;
  QLineEdit* txtPath;
  QPushButton* btnBrowse;
  QPushButton* btnOK;
  QPushButton* btnCANCEL;

 protected:
  void keyPressEvent(QKeyEvent* e) override;

 private:
  bool Show(BrowserSetup& setup, bool edit);

  Env& env_;
  BrowserSetup* setup_ = nullptr;
  bool edit_ = false;
};

class frmBrowserSetup : public QDialog {
 public:
  frmBrowserSetup(Env& env, QWidget* parent);
  static UiTexts& Texts();

  // Shows the browser list modally over parent. Returns true when the user
  // left with Ok (the list was saved and the choice reset to "Default"),
  // false on Cancel.
  static bool Run(QWidget* parent, Env& env);

  void btnAddBrowser_Click();
  void btnEdit_Click();
  void btnRemoveBrowser_Click();
  void btnOK_Click();
  void btnCANCEL_Click();

  // The list as edited so far.
  const BrowserSetup& Setup() const { return setup_; }
  // The add and edit window, created on first use.
  frmAddEditBrowser* AddEdit();

  QLabel* lblNames;
  QLabel* lblPaths;
  QListWidget* ListNames;
  QListWidget* ListPaths;
  QPushButton* btnAddBrowser;
  QPushButton* btnEdit;
  QPushButton* btnRemoveBrowser;
  QPushButton* btnOK;
  QPushButton* btnCANCEL;
  // Prompts kept with the window's texts.
  std::string sSpecifyName;
  std::string sNameOfBrowser;

 private:
  // Both lists from setup_, with `row` selected in each (-1: none).
  void FillLists(int row);
  void SelectRow(int row);

  Env& env_;
  BrowserSetup setup_;
  frmAddEditBrowser* addEdit_ = nullptr;
  bool syncing_ = false;
};

}  // namespace kp
