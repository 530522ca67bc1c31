#include "properties/frm_pic_browser.h"
#include "properties/window_lang.h"

#include <QComboBox>
#include <QDir>
#include <QFrame>
#include <QHBoxLayout>
#include <QImageReader>
#include <QKeyEvent>
#include <QLabel>
#include <QListWidget>
#include <QMouseEvent>
#include <QPointer>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QStorageInfo>
#include <QVBoxLayout>
#include <filesystem>
#include <system_error>

#include "core/settings.h"

namespace kp {

namespace {

constexpr int kBox = 124;       // a thumbnail's box, square
constexpr int kPitch = 132;     // from one cell to the next
constexpr int kNameHeight = 18;

template <class T>
T* Named(T* w, const QString& name) {
  w->setObjectName(name);
  return w;
}

// A folder chain entry or subfolder of Dir1, indented by its depth.
QListWidgetItem* DirItem(const QString& name, const QString& path, int depth) {
  auto* item = new QListWidgetItem(QString(depth * 2, QLatin1Char(' ')) + name);
  item->setData(Qt::UserRole, path);
  return item;
}

// Decodes a picture at the size its cell shows it; a null image when the
// file cannot be read as a picture.
QImage DecodeThumbnail(const QString& path, const CellRect& box) {
  QImageReader reader(path);
  const QSize size = reader.size();
  if (size.isValid()) {
    const CellRect fit = FitInBox(size.width(), size.height(), box);
    if (fit.width > 0 && fit.height > 0) reader.setScaledSize(QSize(fit.width, fit.height));
  }
  QImage image = reader.read();
  if (image.isNull()) return image;
  const CellRect fit = FitInBox(image.width(), image.height(), box);
  if (image.width() != fit.width || image.height() != fit.height)
    image = image.scaled(fit.width, fit.height, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
  return image;
}

}  // namespace

std::vector<PicPlace> DesktopPlaces() {
  std::vector<PicPlace> out;
  out.push_back({"Home", QDir::homePath().toStdString()});
  for (const QStorageInfo& v : QStorageInfo::mountedVolumes()) {
    const std::string path = v.rootPath().toStdString();
    if (path == "/" || v.fileSystemType() == "tmpfs" || v.fileSystemType() == "overlay") continue;
    const QString name = v.displayName().isEmpty() ? v.rootPath() : v.displayName();
    out.push_back({name.toStdString(), path});
  }
  out.push_back({"/", "/"});
  return out;
}

UiTexts& frmPicBrowser::Texts() {
  static UiTexts t = {
      {"frmPicBrowser", "Picture Browser"},
      {"lblLookIn", "Look in:"},
      {"btnOK", "&Ok"},
      {"btnCANCEL", "&Cancel"},
      // Added after the others: older language files keep their lines.
      {"Dir1.Name", "Folders"},
      {"Scroll.Name", "Pictures"},
  };
  return t;
}

frmPicBrowser::frmPicBrowser(QWidget* owner, Env& env) : QDialog(owner), env_(env) {
  setObjectName("frmPicBrowser");
  // The heading is spelled so in every language file.
  ApplyLanguageSection(env_, Texts(), "[frmPicBroser]");
  setModal(true);
  pool_.setMaxThreadCount(std::max(2, QThread::idealThreadCount()));
  BuildControls();
  BuildLayout();
  ApplyTexts();
}

frmPicBrowser::~frmPicBrowser() {
  ++generation_;
  pool_.clear();
  pool_.waitForDone();
}

frmPicBrowser* frmPicBrowser::Of(QWidget* owner, Env& env) {
  QWidget* top = owner ? owner->window() : nullptr;
  if (top) {
    if (auto* w = top->findChild<frmPicBrowser*>("frmPicBrowser", Qt::FindDirectChildrenOnly))
      return w;
  }
  return new frmPicBrowser(top, env);
}

void frmPicBrowser::BuildControls() {
  lblLookIn = Named(new QLabel(this), "lblLookIn");
  Drive1 = Named(new QComboBox(this), "Drive1");
  Dir1 = Named(new QListWidget(this), "Dir1");
  Dir1->setMinimumWidth(200);
  File1 = Named(new QListWidget(this), "File1");
  File1->hide();
  picCells = Named(new QWidget(this), "picCells");
  picCells->setFixedSize(kPitch * kPicCells + 8, 8 + kBox + 4 + kNameHeight + 8);
  picCells->installEventFilter(this);
  for (int i = 0; i < kPicCells; ++i) {
    boxes_[static_cast<size_t>(i)] = {8 + i * kPitch, 8, kBox, kBox};
    imgP[static_cast<size_t>(i)] = Named(new QLabel(picCells), QString("imgP%1").arg(i));
    lblFileName[static_cast<size_t>(i)] = Named(new QLabel(picCells), QString("lblFileName%1").arg(i));
    QLabel* name = lblFileName[static_cast<size_t>(i)];
    name->setGeometry(8 + i * kPitch, 8 + kBox + 4, kBox, kNameHeight);
    name->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
    imgP[static_cast<size_t>(i)]->installEventFilter(this);
    name->installEventFilter(this);
  }
  lblSelector = Named(new QFrame(picCells), "lblSelector");
  lblSelector->setFrameShape(QFrame::Box);
  lblSelector->setLineWidth(2);
  lblSelector->setStyleSheet("QFrame#lblSelector { border: 2px solid palette(highlight); }");
  lblSelector->installEventFilter(this);
  lblSelector->hide();
  Scroll = Named(new QScrollBar(Qt::Horizontal, this), "Scroll");
  Scroll->setPageStep(kPicCells);
  btnOK = Named(new QPushButton(this), "btnOK");
  btnCANCEL = Named(new QPushButton(this), "btnCANCEL");

  connect(Drive1, &QComboBox::currentIndexChanged, this, [this] { Drive1_Change(); });
  // The list is filled anew by the change, so the change waits until the
  // list's own event is over.
  Dir1->installEventFilter(this);
  Dir1->viewport()->installEventFilter(this);
  connect(Scroll, &QScrollBar::valueChanged, this, [this] { Scroll_Change(); });
  connect(btnOK, &QPushButton::clicked, this, [this] { btnOK_Click(); });
  connect(btnCANCEL, &QPushButton::clicked, this, [this] { btnCANCEL_Click(); });
}

void frmPicBrowser::BuildLayout() {
  auto* root = new QHBoxLayout(this);
  auto* left = new QVBoxLayout;
  left->addWidget(lblLookIn);
  left->addWidget(Drive1);
  left->addWidget(Dir1, 1);
  root->addLayout(left);
  auto* right = new QVBoxLayout;
  right->addWidget(picCells);
  right->addWidget(Scroll);
  right->addStretch(1);
  auto* buttons = new QHBoxLayout;
  buttons->addStretch(1);
  buttons->addWidget(btnOK);
  buttons->addWidget(btnCANCEL);
  right->addLayout(buttons);
  root->addLayout(right);
}

// --- Opening ------------------------------------------------------------------------------

std::string frmPicBrowser::Choose(const std::string& folder) {
  result.clear();
  std::error_code ec;
  folder_ = std::filesystem::is_directory(folder, ec) ? folder : QDir::homePath().toStdString();
  Form_Load();
  exec();
  return result;
}

void frmPicBrowser::ApplyTexts() {
  const UiTexts& t = Texts();
  setWindowTitle(QTextOf(t, "frmPicBrowser"));
  lblLookIn->setText(QTextOf(t, "lblLookIn"));
  lblLookIn->setBuddy(Drive1);
  Dir1->setAccessibleName(QTextOf(t, "Dir1.Name"));
  Scroll->setAccessibleName(QTextOf(t, "Scroll.Name"));
  btnOK->setText(QTextOf(t, "btnOK"));
  btnCANCEL->setText(QTextOf(t, "btnCANCEL"));
}

void frmPicBrowser::Form_Load() {
  ApplyTexts();
  selection.clear();
  FillDrives();
  Dir1_Change(folder_);
}

void frmPicBrowser::FillDrives() {
  const QSignalBlocker block(Drive1);
  Drive1->clear();
  driveIndex_ = -1;
  size_t best = 0;
  for (const PicPlace& place : places()) {
    Drive1->addItem(QString::fromStdString(place.name), QString::fromStdString(place.path));
    // The place that holds the folder, the deepest when several do.
    const std::string& p = place.path;
    const bool holds = folder_.compare(0, p.size(), p) == 0 &&
                       (folder_.size() == p.size() || p.back() == '/' || folder_[p.size()] == '/');
    if (holds && p.size() >= best) {
      best = p.size();
      driveIndex_ = Drive1->count() - 1;
    }
  }
  Drive1->setCurrentIndex(driveIndex_);
}

void frmPicBrowser::Drive1_Change() {
  const std::string path = Drive1->currentData().toString().toStdString();
  std::error_code ec;
  std::filesystem::directory_iterator probe(path, ec);
  if (ec) {
    // Not ready: one message, and everything stays as it was.
    env_.prompter.MsgBox(ec.message());
    const QSignalBlocker block(Drive1);
    Drive1->setCurrentIndex(driveIndex_);
    return;
  }
  driveIndex_ = Drive1->currentIndex();
  Dir1_Change(path);
}

void frmPicBrowser::FillDirs() {
  Dir1->clear();
  const QDir here(QString::fromStdString(folder_));
  // The chain from the root down to the folder, then its subfolders.
  QStringList chain;
  for (QDir d = here;; ) {
    chain.prepend(d.absolutePath());
    if (d.isRoot() || !d.cdUp()) break;
  }
  for (int depth = 0; depth < chain.size(); ++depth) {
    const QString name = depth == 0 ? chain[0] : QDir(chain[depth]).dirName();
    QListWidgetItem* item = DirItem(name, chain[depth], depth);
    Dir1->addItem(item);
    if (depth == chain.size() - 1) {
      QFont f = item->font();
      f.setBold(true);
      item->setFont(f);
      Dir1->setCurrentItem(item);
    }
  }
  const QStringList subs = here.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name | QDir::IgnoreCase);
  for (const QString& s : subs)
    Dir1->addItem(DirItem(s, here.absoluteFilePath(s), static_cast<int>(chain.size())));
}

void frmPicBrowser::FillFiles() {
  std::vector<std::string> names;
  const QDir here(QString::fromStdString(folder_));
  for (const QString& n : here.entryList(QDir::Files | QDir::Readable)) names.push_back(n.toStdString());
  files_ = PictureNames(std::move(names));
  File1->clear();
  for (const std::string& n : files_) File1->addItem(QString::fromStdString(n));
}

void frmPicBrowser::Dir1_Change(const std::string& folder) {
  folder_ = QDir(QString::fromStdString(folder)).absolutePath().toStdString();
  ++generation_;
  pool_.clear();
  thumbs_.clear();
  requested_.clear();
  FillDirs();
  FillFiles();
  {
    const QSignalBlocker block(Scroll);
    Scroll->setRange(0, ScrollMax(static_cast<int>(files_.size())));
    Scroll->setValue(0);
  }
  ShowPage();
}

void frmPicBrowser::Refresh() {
  FillDrives();
  FillDirs();
  ++generation_;
  pool_.clear();
  thumbs_.clear();
  requested_.clear();
  FillFiles();
  {
    const QSignalBlocker block(Scroll);
    Scroll->setRange(0, ScrollMax(static_cast<int>(files_.size())));
  }
  ShowPage();
}

// --- Pages ---------------------------------------------------------------------------------

void frmPicBrowser::Scroll_Change() { ShowPage(); }

void frmPicBrowser::ShowPage() {
  for (int cell = 0; cell < kPicCells; ++cell) ShowCell(cell);
  // The neighbours load behind the page, so that a turn finds them ready.
  const int n = static_cast<int>(files_.size());
  for (int k = 1; k <= kPicCells; ++k) {
    if (Scroll->value() + kPicCells - 1 + k < n)
      Request(Scroll->value() + kPicCells - 1 + k, QThread::LowPriority);
    if (Scroll->value() - k >= 0) Request(Scroll->value() - k, QThread::LowestPriority);
  }
  PlaceSelector();
  UpdateBusy();
}

void frmPicBrowser::ShowCell(int cell) {
  QLabel* img = imgP[static_cast<size_t>(cell)];
  QLabel* name = lblFileName[static_cast<size_t>(cell)];
  const int k = FileOfCell(Scroll->value(), cell, static_cast<int>(files_.size()));
  if (k < 0) {
    img->hide();
    name->hide();
    return;
  }
  const QString file = QString::fromStdString(files_[static_cast<size_t>(k)]);
  name->setText(name->fontMetrics().elidedText(file, Qt::ElideMiddle, kBox));
  name->setToolTip(file);
  name->show();
  const QString path = QString::fromStdString(JoinPicturePath(folder_, file.toStdString()));
  auto it = thumbs_.constFind(path);
  if (it == thumbs_.constEnd()) {
    img->clear();
    img->hide();
    Request(k, QThread::NormalPriority);
    return;
  }
  const CellRect& box = boxes_[static_cast<size_t>(cell)];
  const CellRect fit = FitInBox(it->width(), it->height(), box);
  img->setPixmap(QPixmap::fromImage(*it));
  img->setGeometry(fit.x, fit.y, fit.width, fit.height);
  // A damaged picture leaves an empty cell with its name.
  img->setVisible(!it->isNull());
}

void frmPicBrowser::Request(int file, QThread::Priority priority) {
  const QString path =
      QString::fromStdString(JoinPicturePath(folder_, files_[static_cast<size_t>(file)]));
  if (requested_.contains(path)) return;
  requested_.insert(path, true);
  const int generation = generation_;
  const CellRect box{0, 0, kBox, kBox};
  QPointer<frmPicBrowser> self(this);
  pool_.start(
      [self, generation, path, box] {
        QImage image = DecodeThumbnail(path, box);
        if (!self) return;
        QMetaObject::invokeMethod(
            self.data(),
            [self, generation, path, image] {
              if (self) self->Loaded(generation, path, image);
            },
            Qt::QueuedConnection);
      },
      priority);
}

void frmPicBrowser::Loaded(int generation, const QString& path, const QImage& image) {
  if (generation != generation_) return;
  thumbs_.insert(path, image);
  for (int cell = 0; cell < kPicCells; ++cell) {
    const int k = FileOfCell(Scroll->value(), cell, static_cast<int>(files_.size()));
    if (k >= 0 && QString::fromStdString(JoinPicturePath(folder_, files_[static_cast<size_t>(k)])) == path)
      ShowCell(cell);
  }
  UpdateBusy();
}

int frmPicBrowser::PendingOnPage() const {
  int pending = 0;
  for (int cell = 0; cell < kPicCells; ++cell) {
    const int k = FileOfCell(Scroll->value(), cell, static_cast<int>(files_.size()));
    if (k >= 0 &&
        !thumbs_.contains(QString::fromStdString(JoinPicturePath(folder_, files_[static_cast<size_t>(k)]))))
      ++pending;
  }
  return pending;
}

void frmPicBrowser::UpdateBusy() {
  // The wait cursor over the cells while their pictures come, and only there.
  if (PendingOnPage() > 0) picCells->setCursor(Qt::BusyCursor);
  else picCells->unsetCursor();
}

// --- Selection -----------------------------------------------------------------------------

void frmPicBrowser::PlaceSelector() {
  const int cell = SelectedCell(selection, folder_, files_, Scroll->value());
  if (cell < 0) {
    lblSelector->hide();
    return;
  }
  const CellRect& b = boxes_[static_cast<size_t>(cell)];
  lblSelector->setGeometry(b.x - 4, b.y - 4, b.width + 8, b.height + 8 + kNameHeight + 4);
  lblSelector->show();
  lblSelector->raise();
}

void frmPicBrowser::SelectCell(int cell) {
  const int k = FileOfCell(Scroll->value(), cell, static_cast<int>(files_.size()));
  if (k < 0) return;
  selection = JoinPicturePath(folder_, files_[static_cast<size_t>(k)]);
  PlaceSelector();
}

int frmPicBrowser::CellAt(const QPoint& p) const {
  for (int cell = 0; cell < kPicCells; ++cell) {
    const CellRect& b = boxes_[static_cast<size_t>(cell)];
    if (QRect(b.x, b.y, b.width, b.height + 4 + kNameHeight).contains(p)) return cell;
  }
  return -1;
}

void frmPicBrowser::btnOK_Click() {
  result = selection;
  accept();
}

void frmPicBrowser::btnCANCEL_Click() { reject(); }

void frmPicBrowser::reject() {
  // Closing the window, Escape and Cancel alike choose nothing.
  result.clear();
  QDialog::reject();
}

bool frmPicBrowser::eventFilter(QObject* watched, QEvent* e) {
  if (watched == Dir1 && e->type() == QEvent::KeyPress && Dir1->currentItem()) {
    const int key = static_cast<QKeyEvent*>(e)->key();
    if (key == Qt::Key_Return || key == Qt::Key_Enter) {
      Dir1_Change(Dir1->currentItem()->data(Qt::UserRole).toString().toStdString());
      return true;
    }
  }
  if (watched == Dir1->viewport() && e->type() == QEvent::MouseButtonDblClick) {
    QListWidgetItem* item = Dir1->itemAt(static_cast<QMouseEvent*>(e)->position().toPoint());
    if (!item) return true;
    const std::string path = item->data(Qt::UserRole).toString().toStdString();
    QMetaObject::invokeMethod(this, [this, path] { Dir1_Change(path); }, Qt::QueuedConnection);
    return true;
  }
  const bool press = e->type() == QEvent::MouseButtonPress;
  const bool twice = e->type() == QEvent::MouseButtonDblClick;
  auto* w = qobject_cast<QWidget*>(watched);
  if ((press || twice) && w && (w == picCells || w->parentWidget() == picCells)) {
    auto* m = static_cast<QMouseEvent*>(e);
    const QPoint at = w == picCells ? m->position().toPoint() : w->mapToParent(m->position().toPoint());
    const int cell = CellAt(at);
    if (cell >= 0) SelectCell(cell);
    // A double click on a picture, a name or the frame chooses it.
    if (twice && w != picCells && cell >= 0 && !selection.empty()) btnOK_Click();
    return true;
  }
  return QDialog::eventFilter(watched, e);
}

void frmPicBrowser::keyPressEvent(QKeyEvent* e) {
  if (e->key() == Qt::Key_F5) {
    Refresh();
    return;
  }
  QDialog::keyPressEvent(e);
}

// --- Callers -------------------------------------------------------------------------------

std::string ChooseImageFile(QWidget* owner, Env& env, const std::string& folder) {
  if (GetParam(env, "chk_RegPixDlgBox") == "0") return frmPicBrowser::Of(owner, env)->Choose(folder);
  FileDialog d;
  d.filter = "GIF , JPG (*.gif;*.jpg)|*.gif;*.jpg| All Files (*.*)|*.*";
  d.folder = folder;
  return env.prompter.OpenFileDialog(d);
}

}  // namespace kp
