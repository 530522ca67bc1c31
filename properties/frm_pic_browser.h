// frmPicBrowser: the program's own picker of pictures. It shows the
// pictures of a folder as pages of four thumbnails. Thumbnails are decoded
// on worker threads at their shown size, so the window answers while they
// come; a picture that cannot be decoded leaves its cell empty, with its
// name. The decisions live in pic_browser_model.h.
#pragma once

#include <QDialog>
#include <QHash>
#include <QImage>
#include <QThreadPool>
#include <array>
#include <functional>
#include <string>
#include <vector>

#include "core/env.h"
#include "properties/pic_browser_model.h"
#include "properties/ui_text.h"

class QComboBox;
class QFrame;
class QLabel;
class QListWidget;
class QPushButton;
class QScrollBar;

namespace kp {

// A place the drive list offers, as a file dialog offers them.
struct PicPlace {
  std::string name;
  std::string path;
};
// The home folder, the mounted volumes and the root.
std::vector<PicPlace> DesktopPlaces();

class frmPicBrowser : public QDialog {
 public:
  explicit frmPicBrowser(QWidget* owner, Env& env);
  ~frmPicBrowser() override;
  static UiTexts& Texts();
  // The browser of that window, created on first use and kept.
  static frmPicBrowser* Of(QWidget* owner, Env& env);

  // Runs modally from `folder`. The chosen path, "" when cancelled.
  std::string Choose(const std::string& folder);

  void Form_Load();
  void Drive1_Change();
  void Dir1_Change(const std::string& folder);
  void Scroll_Change();
  // The cell pressed (0..3); a cell without a file takes no selection.
  void SelectCell(int cell);
  void btnOK_Click();
  void btnCANCEL_Click();
  // F5: the drive and folder lists read again, then the files.
  void Refresh();

  const std::string& Folder() const { return folder_; }
  // Visible cells whose thumbnail has not come yet.
  int PendingOnPage() const;

  // Where the drive list comes from; tests put in places of their own.
  std::function<std::vector<PicPlace>()> places = DesktopPlaces;
  // The selection: the full path of the chosen file, "" for none.
  std::string selection;
  // The result the caller reads: the selection after OK, else "".
  std::string result;

  QLabel* lblLookIn;
  QComboBox* Drive1;
  QListWidget* Dir1;
  QListWidget* File1;
  QWidget* picCells;
  std::array<QLabel*, kPicCells> imgP{};
  std::array<QLabel*, kPicCells> lblFileName{};
  QFrame* lblSelector;
  QScrollBar* Scroll;
  QPushButton* btnOK;
  QPushButton* btnCANCEL;

 protected:
  bool eventFilter(QObject* watched, QEvent* e) override;
  void keyPressEvent(QKeyEvent* e) override;
  void reject() override;

 private:
  void BuildControls();
  void BuildLayout();
  void ApplyTexts();
  void FillDrives();
  void FillDirs();
  void FillFiles();
  void ShowPage();
  void ShowCell(int cell);
  void PlaceSelector();
  void Request(int file, QThread::Priority priority);
  void Loaded(int generation, const QString& path, const QImage& image);
  void UpdateBusy();
  // The cell whose box holds a point of picCells, -1 for none.
  int CellAt(const QPoint& p) const;

  Env& env_;
  std::string folder_;
  std::vector<std::string> files_;
  std::array<CellRect, kPicCells> boxes_{};
  int driveIndex_ = -1;
  int generation_ = 0;
  QHash<QString, QImage> thumbs_;
  QHash<QString, bool> requested_;
  QThreadPool pool_;
};

// The picture picker of btnGetBitmap and the background picture: the
// browser, or the plain file dialog when "chk_RegPixDlgBox" asks for it.
// The chosen path, "" when cancelled.
std::string ChooseImageFile(QWidget* owner, Env& env, const std::string& folder);

}  // namespace kp
