// The picture browser: pages of four thumbnails of a folder's pictures,
// chosen by a click and OK or by a double click, with the drive and folder
// lists, paging by the scroll bar and F5; opened from the panel's picture
// button unless the setting asks for the plain file dialog.
#include <QComboBox>
#include <QFrame>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QScrollBar>
#include <QtTest>

#include <filesystem>
#include <fstream>

#include "core/settings.h"
#include "properties/button_panel.h"
#include "properties/frm_main.h"
#include "properties/frm_pic_browser.h"
#include "tests/app/app_fixture.h"

using namespace kp;
using namespace kp::apptest;

namespace {

ButtonPanel* Panel(App& a) { return static_cast<ButtonPanel*>(a.main()->panel); }
frmPicBrowser* Browser(App& a) { return frmPicBrowser::Of(a.main(), a.env()); }

void Picture(const std::string& path, int w, int h, QColor c = QColor(40, 120, 200)) {
  QImage img(w, h, QImage::Format_RGB32);
  img.fill(c);
  QVERIFY(img.save(QString::fromStdString(path), "JPEG"));
}

// A folder of `count` pictures named p00.jpg, p01.jpg ..., 200 by 100.
std::string PictureFolder(test::TempDir& dir, int count) {
  const std::string folder = dir.path() + "/pics";
  std::filesystem::create_directories(folder);
  for (int i = 0; i < count; ++i) {
    char name[32];
    std::snprintf(name, sizeof name, "/p%02d.jpg", i);
    Picture(folder + name, 200, 100);
  }
  return folder;
}

// Opens the browser from the panel's picture button on `folder` and runs
// `act` in it; `act` closes it.
bool BrowseFromPanel(App& a, const std::string& folder, std::function<void(frmPicBrowser*)> act) {
  a.p().sSearchImagesFolder = folder;
  auto ran = WhenWindow("frmPicBrowser", [act](QWidget* w) { act(static_cast<frmPicBrowser*>(w)); });
  QTest::mouseClick(Panel(a)->btnGetBitmap, Qt::LeftButton);
  return *ran;
}

QPoint CellCentre(int cell) { return QPoint(8 + cell * 132 + 62, 8 + 62); }

void PressCell(frmPicBrowser* b, int cell) {
  QTest::mouseClick(b->picCells, Qt::LeftButton, Qt::NoModifier, CellCentre(cell));
}

bool NoCellShows(frmPicBrowser* b) {
  for (int i = 0; i < kPicCells; ++i)
    if (b->imgP[static_cast<size_t>(i)]->isVisible() || b->lblFileName[static_cast<size_t>(i)]->isVisible())
      return false;
  return true;
}

// The cell the selection frame stands around.
int SelectorCell(frmPicBrowser* b) { return (b->lblSelector->x() + 4 - 8) / 132; }

void ChooseDrive(frmPicBrowser* b, int index) {
  b->Drive1->setFocus();
  QTest::keyClick(b->Drive1, Qt::Key_Home);
  for (int i = 0; i < index; ++i) QTest::keyClick(b->Drive1, Qt::Key_Down);
}

}  // namespace

class PicBrowserTest : public WatchedTest {
  Q_OBJECT

 private slots:
  void aFolderWithoutPicturesShowsFourEmptyCellsAndOkYieldsNothing() {
    App a;
    QCOMPARE(a.program->Main(""), -1);
    test::TempDir dir;
    std::ofstream(dir.file("notes.txt")) << "no picture";
    const std::string before = a.p().button(1).Image[1];
    std::string folderShown;
    QVERIFY(BrowseFromPanel(a, dir.path(), [&](frmPicBrowser* b) {
      folderShown = b->Folder();
      QCOMPARE(b->windowTitle(), QString("Picture Browser"));
      QCOMPARE(b->File1->count(), 0);
      QVERIFY(NoCellShows(b));
      PressCell(b, 0);
      QVERIFY(!b->lblSelector->isVisible());
      Click(b, "btnOK");
    }));
    QCOMPARE(folderShown, dir.path());
    QCOMPARE(a.p().button(1).Image[1], before);
    QVERIFY(a.prompter.boxes.empty());
    QVERIFY(a.prompter.openDialogs.empty());
  }

  void aSelectionSurvivesPaging() {
    App a;
    QCOMPARE(a.program->Main(""), -1);
    test::TempDir dir;
    const std::string folder = PictureFolder(dir, 10);
    QVERIFY(BrowseFromPanel(a, folder, [&](frmPicBrowser* b) {
      QCOMPARE(b->Scroll->maximum(), 8);
      PressCell(b, 1);
      QCOMPARE(b->selection, folder + "/p01.jpg");
      QVERIFY(b->lblSelector->isVisible());
      QCOMPARE(SelectorCell(b), 1);
      b->Scroll->setFocus();
      QTest::keyClick(b->Scroll, Qt::Key_PageDown);
      QCOMPARE(b->Scroll->value(), 4);
      QCOMPARE(b->lblFileName[0]->text(), QString("p04.jpg"));
      QVERIFY(!b->lblSelector->isVisible());
      QTest::keyClick(b->Scroll, Qt::Key_PageUp);
      QCOMPARE(b->Scroll->value(), 0);
      QVERIFY(b->lblSelector->isVisible());
      QCOMPARE(SelectorCell(b), 1);
      // One step: the selected file moves to the first cell, the frame too.
      QTest::mouseClick(b->Scroll, Qt::LeftButton, Qt::NoModifier,
                        QPoint(b->Scroll->width() - 4, b->Scroll->height() / 2));
      QCOMPARE(b->Scroll->value(), 1);
      QCOMPARE(SelectorCell(b), 0);
      Click(b, "btnOK");
    }));
    QCOMPARE(a.p().button(1).Image[1], folder + "/p01.jpg");
    QCOMPARE(a.p().sSearchImagesFolder, folder + "/");
  }

  void aDriveWithoutADiskRaisesOneMessageAndKeepsTheOldFolder() {
    App a;
    QCOMPARE(a.program->Main(""), -1);
    test::TempDir dir;
    const std::string folder = PictureFolder(dir, 3);
    Browser(a)->places = [&] {
      return std::vector<PicPlace>{{"Pictures", dir.path()}, {"Card reader", dir.path() + "/no-card"}};
    };
    QVERIFY(BrowseFromPanel(a, folder, [&](frmPicBrowser* b) {
      QCOMPARE(b->Drive1->count(), 2);
      QCOMPARE(b->Drive1->currentIndex(), 0);
      ChooseDrive(b, 1);
      QCOMPARE(b->Folder(), folder);
      QCOMPARE(b->Drive1->currentIndex(), 0);
      QCOMPARE(b->File1->count(), 3);
      Click(b, "btnCANCEL");
    }));
    QCOMPARE(a.prompter.boxes.size(), size_t{1});
    QVERIFY(!a.prompter.boxes[0].text.empty());
  }

  void thumbnailsKeepTheirShapeAndADamagedPictureShowsOnlyItsName() {
    App a;
    QCOMPARE(a.program->Main(""), -1);
    test::TempDir dir;
    Picture(dir.file("a_wide.jpg"), 400, 100);
    Picture(dir.file("b_tall.jpg"), 50, 300);
    Picture(dir.file("c_small.jpg"), 20, 10);
    std::ofstream(dir.file("d_broken.gif")) << "GIF89a but nothing after it";
    QVERIFY(BrowseFromPanel(a, dir.path(), [&](frmPicBrowser* b) {
      QTRY_COMPARE(b->PendingOnPage(), 0);
      QCOMPARE(b->imgP[0]->geometry(), QRect(8, 8 + 46, 124, 31));
      QCOMPARE(b->imgP[1]->geometry(), QRect(132 + 8 + 52, 8, 20, 124));
      QCOMPARE(b->imgP[2]->geometry(), QRect(264 + 8 + 52, 8 + 57, 20, 10));
      QVERIFY(b->imgP[0]->isVisible());
      QVERIFY(!b->imgP[3]->isVisible());
      QVERIFY(b->lblFileName[3]->isVisible());
      QCOMPARE(b->lblFileName[3]->text(), QString("d_broken.gif"));
      const QImage shown = b->imgP[0]->pixmap().toImage();
      QCOMPARE(shown.size(), QSize(124, 31));
      Click(b, "btnCANCEL");
    }));
    QVERIFY(a.prompter.boxes.empty());
  }

  void aDoubleClickOnAPictureChoosesIt() {
    App a;
    QCOMPARE(a.program->Main(""), -1);
    test::TempDir dir;
    const std::string folder = PictureFolder(dir, 6);
    QVERIFY(BrowseFromPanel(a, folder, [&](frmPicBrowser* b) {
      QTRY_COMPARE(b->PendingOnPage(), 0);
      QLabel* img = b->imgP[2];
      QTest::mouseDClick(img, Qt::LeftButton, Qt::NoModifier, img->rect().center());
    }));
    QCOMPARE(a.p().button(1).Image[1], folder + "/p02.jpg");
    QCOMPARE(Panel(a)->txtImage->text(), QString::fromStdString(folder + "/p02.jpg"));
  }

  void theFolderListOpensASubfolderAndF5ReadsTheFilesAgain() {
    App a;
    QCOMPARE(a.program->Main(""), -1);
    test::TempDir dir;
    const std::string folder = PictureFolder(dir, 2);
    std::filesystem::create_directories(folder + "/more");
    Picture(folder + "/more/x.jpg", 30, 30);
    QVERIFY(BrowseFromPanel(a, folder, [&](frmPicBrowser* b) {
      QListWidgetItem* sub = nullptr;
      for (int i = 0; i < b->Dir1->count(); ++i)
        if (b->Dir1->item(i)->text().trimmed() == "more") sub = b->Dir1->item(i);
      QVERIFY(sub);
      QTest::mouseDClick(b->Dir1->viewport(), Qt::LeftButton, Qt::NoModifier,
                         b->Dir1->visualItemRect(sub).center());
      QTRY_COMPARE(b->Folder(), folder + "/more");
      QCOMPARE(b->File1->count(), 1);
      Picture(folder + "/more/y.jpg", 30, 30);
      QCOMPARE(b->File1->count(), 1);
      QTest::keyClick(b, Qt::Key_F5);
      QCOMPARE(b->File1->count(), 2);
      QVERIFY(b->lblFileName[1]->isVisible());
      QCOMPARE(b->lblFileName[1]->text(), QString("y.jpg"));
      PressCell(b, 1);
      QTest::keyClick(b, Qt::Key_Escape);
    }));
    QCOMPARE(a.p().button(1).Image[1], std::string());
  }

  void theRegularDialogServesWhenTheSettingAsks() {
    App a;
    QCOMPARE(a.program->Main(""), -1);
    a.store.Set(kSecParams, "chk_RegPixDlgBox", "1");
    auto browser = WhenWindow("frmPicBrowser", [](QWidget* w) { w->close(); }, nullptr, 300);
    QTest::mouseClick(Panel(a)->btnGetBitmap, Qt::LeftButton);
    QTest::qWait(350);
    QVERIFY(!*browser);
    QCOMPARE(a.prompter.openDialogs.size(), size_t{1});
  }

  void theDesktopPlacesAreHomeTheVolumesAndTheRoot() {
    const std::vector<PicPlace> places = DesktopPlaces();
    QVERIFY(places.size() >= 2);
    QCOMPARE(places.front().path, QDir::homePath().toStdString());
    QCOMPARE(places.back().path, std::string("/"));
  }

  void theWindowShowsItsCellsAndALongFolderList() {
    App a;
    QCOMPARE(a.program->Main(""), -1);
    test::TempDir dir;
    const std::string folder = PictureFolder(dir, 7);
    for (int i = 0; i < 40; ++i)
      std::filesystem::create_directories(folder + "/album with a long name number " + std::to_string(i));
    QVERIFY(BrowseFromPanel(a, folder, [&](frmPicBrowser* b) {
      QTRY_COMPARE(b->PendingOnPage(), 0);
      PressCell(b, 2);
      QVERIFY(b->Dir1->count() > 40);
      for (QWidget* w : {static_cast<QWidget*>(b->picCells), static_cast<QWidget*>(b->Dir1),
                         static_cast<QWidget*>(b->btnOK), static_cast<QWidget*>(b->btnCANCEL),
                         static_cast<QWidget*>(b->Scroll), static_cast<QWidget*>(b->Drive1)}) {
        const QRect r(w->mapTo(b, QPoint(0, 0)), w->size());
        QVERIFY2(b->rect().contains(r), qPrintable(w->objectName()));
      }
      QVERIFY(!b->picCells->geometry().intersects(b->Dir1->geometry()));
      if (!qEnvironmentVariableIsEmpty("KP_SHOT_DIR"))
        b->grab().save(qEnvironmentVariable("KP_SHOT_DIR") + "/frmPicBrowser.png");
      Click(b, "btnCANCEL");
    }));
  }
};

QTEST_MAIN(PicBrowserTest)
#include "test_pic_browser.moc"
