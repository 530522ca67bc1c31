#include "app/frm_browser_setup.h"
#include "properties/window_lang.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace kp {

// --- frmAddEditBrowser -------------------------------------------------------------

// The order is the order of the "[frmEditBrowser]" section of a language file.
UiTexts& frmAddEditBrowser::Texts() {
  static UiTexts t = {
      {"Caption", "Browser's location and name"},
      {"lblName", "Name:"},
      {"lblPath", "Path:"},
      {"btnBrowse", "..."},
      {"btnOK", "&Ok"},
      {"btnCANCEL", "&Cancel"},
  };
  return t;
}

frmAddEditBrowser::frmAddEditBrowser(Env& env, QWidget* parent) : QDialog(parent), env_(env) {
  setObjectName("frmAddEditBrowser");
  ApplyLanguageSection(env_, Texts(), "[frmEditBrowser]");
  const UiTexts& t = Texts();
  setWindowTitle(QTextOf(t, "Caption"));
  lblName = new QLabel(QTextOf(t, "lblName"), this);
  lblName->setObjectName("lblName");
  txtName = new QLineEdit(this);
  txtName->setObjectName("txtName");
  lblPath = new QLabel(QTextOf(t, "lblPath"), this);
  lblPath->setObjectName("lblPath");
  txtPath = new QLineEdit(this);
  txtPath->setObjectName("txtPath");
  txtPath->setMinimumWidth(320);
  btnBrowse = new QPushButton(QTextOf(t, "btnBrowse"), this);
  btnBrowse->setObjectName("btnBrowse");
  btnBrowse->setAutoDefault(false);
  btnOK = new QPushButton(QTextOf(t, "btnOK"), this);
  btnOK->setObjectName("btnOK");
  btnOK->setAutoDefault(false);
  btnCANCEL = new QPushButton(QTextOf(t, "btnCANCEL"), this);
  btnCANCEL->setObjectName("btnCANCEL");
  btnCANCEL->setAutoDefault(false);
  lblName->setBuddy(txtName);
  lblPath->setBuddy(txtPath);

  connect(btnBrowse, &QPushButton::clicked, this, [this] { btnBrowse_Click(); });
  connect(btnOK, &QPushButton::clicked, this, [this] { btnOK_Click(); });
  connect(btnCANCEL, &QPushButton::clicked, this, &QDialog::reject);
  // Enter in the path moves on to the name; Enter in the name is Ok.
  connect(txtPath, &QLineEdit::returnPressed, this, [this] {
    txtName->setFocus();
    txtName->selectAll();
  });
  connect(txtName, &QLineEdit::returnPressed, this, [this] { btnOK_Click(); });

  auto* grid = new QGridLayout;
  grid->addWidget(lblPath, 0, 0);
  grid->addWidget(txtPath, 0, 1);
  grid->addWidget(btnBrowse, 0, 2);
  grid->addWidget(lblName, 1, 0);
  grid->addWidget(txtName, 1, 1, 1, 2);
  btnBrowse->setFixedWidth(btnBrowse->sizeHint().height() + 8);
  auto* row = new QHBoxLayout;
  row->addStretch();
  row->addWidget(btnOK);
  row->addWidget(btnCANCEL);
  auto* box = new QVBoxLayout(this);
  box->addLayout(grid);
  box->addLayout(row);
}

bool frmAddEditBrowser::ShowAdd(BrowserSetup& setup) { return Show(setup, false); }
bool frmAddEditBrowser::ShowEdit(BrowserSetup& setup) { return Show(setup, true); }

bool frmAddEditBrowser::Show(BrowserSetup& setup, bool edit) {
  setup_ = &setup;
  edit_ = edit;
  const int row = setup.selected;
  const bool hasRow = edit && row >= 0 && static_cast<size_t>(row) < setup.ListNames.size() &&
                      static_cast<size_t>(row) < setup.ListPaths.size();
  txtName->setText(hasRow ? DisplayText(setup.ListNames[static_cast<size_t>(row)]) : QString());
  txtPath->setText(hasRow ? PathText(setup.ListPaths[static_cast<size_t>(row)]) : QString());
  txtPath->setFocus();
  const bool ok = exec() == QDialog::Accepted;
  setup_ = nullptr;
  return ok;
}

void frmAddEditBrowser::btnBrowse_Click() {
  AddEditBrowser box{PathBytes(txtPath->text()), PathBytes(txtName->text())};
  AddEditBrowser_Browse(env_, box);
  txtPath->setText(PathText(box.txtPath));
  txtName->setText(DisplayText(box.txtName));
}

void frmAddEditBrowser::btnOK_Click() {
  if (setup_) {
    AddEditBrowser box{PathBytes(txtPath->text()), PathBytes(txtName->text())};
    if (edit_) AddEditBrowser_OKEdit(*setup_, box);
    else AddEditBrowser_OKAdd(*setup_, box);
  }
  accept();
}

void frmAddEditBrowser::keyPressEvent(QKeyEvent* e) {
  // Enter does what the fields say (returnPressed), never the dialog's
  // default button.
  if (e->key() == Qt::Key_Return || e->key() == Qt::Key_Enter) {
    e->accept();
    return;
  }
  QDialog::keyPressEvent(e);
}

// --- frmBrowserSetup -------------------------------------------------------------

// The order is the order of the "[frmBrowserSetup]" section of a language file.
UiTexts& frmBrowserSetup::Texts() {
  static UiTexts t = {
      {"Caption", "Browsers"},
      {"lblNames", "Browser name:"},
      {"lblPaths", "Browser location:"},
      {"btnAddBrowser", "&Add..."},
      {"btnEdit", "&Edit"},
      {"btnRemoveBrowser", "&Remove"},
      {"btnOK", "&Ok"},
      {"btnCANCEL", "&Cancel"},
      {"sSpecifyName", "Please Specify Browser Name:"},
      {"sNameOfBrowser", "Name of the Browser"},
  };
  return t;
}

frmBrowserSetup::frmBrowserSetup(Env& env, QWidget* parent) : QDialog(parent), env_(env) {
  setObjectName("frmBrowserSetup");
  ApplyLanguageSection(env_, Texts(), "[frmBrowserSetup]");
  const UiTexts& t = Texts();
  setWindowTitle(QTextOf(t, "Caption"));
  sSpecifyName = TextOf(t, "sSpecifyName");
  sNameOfBrowser = TextOf(t, "sNameOfBrowser");

  lblNames = new QLabel(QTextOf(t, "lblNames"), this);
  lblNames->setObjectName("lblNames");
  lblPaths = new QLabel(QTextOf(t, "lblPaths"), this);
  lblPaths->setObjectName("lblPaths");
  ListNames = new QListWidget(this);
  ListNames->setObjectName("ListNames");
  ListPaths = new QListWidget(this);
  ListPaths->setObjectName("ListPaths");
  for (QListWidget* l : {ListNames, ListPaths}) l->setSelectionMode(QAbstractItemView::SingleSelection);
  ListNames->setMinimumWidth(150);
  ListPaths->setMinimumWidth(300);
  // Each list is read out under the caption above it; a list does not ask
  // its label for a name, so it is given the label's text.
  lblNames->setBuddy(ListNames);
  lblPaths->setBuddy(ListPaths);
  ListNames->setAccessibleName(lblNames->text().remove('&'));
  ListPaths->setAccessibleName(lblPaths->text().remove('&'));
  btnAddBrowser = new QPushButton(QTextOf(t, "btnAddBrowser"), this);
  btnAddBrowser->setObjectName("btnAddBrowser");
  btnEdit = new QPushButton(QTextOf(t, "btnEdit"), this);
  btnEdit->setObjectName("btnEdit");
  btnRemoveBrowser = new QPushButton(QTextOf(t, "btnRemoveBrowser"), this);
  btnRemoveBrowser->setObjectName("btnRemoveBrowser");
  btnOK = new QPushButton(QTextOf(t, "btnOK"), this);
  btnOK->setObjectName("btnOK");
  btnCANCEL = new QPushButton(QTextOf(t, "btnCANCEL"), this);
  btnCANCEL->setObjectName("btnCANCEL");
  for (QPushButton* b : {btnAddBrowser, btnEdit, btnRemoveBrowser, btnOK, btnCANCEL})
    b->setAutoDefault(false);
  btnOK->setDefault(true);

  // A row chosen in one list is chosen in the other. Only a selected row
  // counts: the focus alone marks a row current without choosing it.
  for (QListWidget* l : {ListNames, ListPaths})
    connect(l, &QListWidget::itemSelectionChanged, this, [this, l] {
      if (syncing_) return;
      const QList<QListWidgetItem*> chosen = l->selectedItems();
      SelectRow(chosen.isEmpty() ? -1 : l->row(chosen.first()));
    });
  connect(btnAddBrowser, &QPushButton::clicked, this, [this] { btnAddBrowser_Click(); });
  connect(btnEdit, &QPushButton::clicked, this, [this] { btnEdit_Click(); });
  connect(btnRemoveBrowser, &QPushButton::clicked, this, [this] { btnRemoveBrowser_Click(); });
  connect(btnOK, &QPushButton::clicked, this, [this] { btnOK_Click(); });
  connect(btnCANCEL, &QPushButton::clicked, this, [this] { btnCANCEL_Click(); });

  auto* lists = new QGridLayout;
  lists->addWidget(lblNames, 0, 0);
  lists->addWidget(lblPaths, 0, 1);
  lists->addWidget(ListNames, 1, 0);
  lists->addWidget(ListPaths, 1, 1);
  lists->setColumnStretch(1, 2);
  lists->setColumnStretch(0, 1);
  auto* side = new QVBoxLayout;
  side->addWidget(btnAddBrowser);
  side->addWidget(btnEdit);
  side->addWidget(btnRemoveBrowser);
  side->addStretch();
  auto* top = new QHBoxLayout;
  top->addLayout(lists, 1);
  top->addLayout(side);
  auto* row = new QHBoxLayout;
  row->addStretch();
  row->addWidget(btnOK);
  row->addWidget(btnCANCEL);
  auto* box = new QVBoxLayout(this);
  box->addLayout(top, 1);
  box->addLayout(row);
  resize(620, 260);

  setup_ = BrowserSetup_Load(env_);
  FillLists(-1);
}

bool frmBrowserSetup::Run(QWidget* parent, Env& env) {
  frmBrowserSetup form(env, parent);
  return form.exec() == QDialog::Accepted;
}

frmAddEditBrowser* frmBrowserSetup::AddEdit() {
  if (!addEdit_) addEdit_ = new frmAddEditBrowser(env_, this);
  return addEdit_;
}

void frmBrowserSetup::FillLists(int row) {
  syncing_ = true;
  ListNames->clear();
  ListPaths->clear();
  for (const std::string& n : setup_.ListNames) ListNames->addItem(DisplayText(n));
  for (const std::string& p : setup_.ListPaths) ListPaths->addItem(PathText(p));
  syncing_ = false;
  SelectRow(row);
}

void frmBrowserSetup::SelectRow(int row) {
  syncing_ = true;
  if (row >= 0 && row < ListNames->count()) {
    ListNames->setCurrentRow(row, QItemSelectionModel::ClearAndSelect);
    if (row < ListPaths->count()) ListPaths->setCurrentRow(row, QItemSelectionModel::ClearAndSelect);
    setup_.selected = row;
  } else {
    ListNames->setCurrentRow(-1);
    ListPaths->setCurrentRow(-1);
    ListNames->clearSelection();
    ListPaths->clearSelection();
    setup_.selected = -1;
  }
  syncing_ = false;
}

void frmBrowserSetup::btnAddBrowser_Click() {
  if (AddEdit()->ShowAdd(setup_)) FillLists(static_cast<int>(setup_.ListNames.size()) - 1);
}

void frmBrowserSetup::btnEdit_Click() {
  const int row = setup_.selected;
  if (row < 0) return;
  if (AddEdit()->ShowEdit(setup_)) FillLists(row);
}

void frmBrowserSetup::btnRemoveBrowser_Click() {
  if (setup_.selected < 0) return;
  BrowserSetup_Remove(setup_);
  FillLists(-1);
}

void frmBrowserSetup::btnOK_Click() {
  BrowserSetup_OK(env_, setup_);
  accept();
}

void frmBrowserSetup::btnCANCEL_Click() { reject(); }

}  // namespace kp
