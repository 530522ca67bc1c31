#include "properties/pic_browser_model.h"

#include <gtest/gtest.h>

namespace kp {
namespace {

TEST(PicBrowserModel, OnlyJpegAndGifNamesAreTakenWhateverTheirCase) {
  EXPECT_TRUE(IsPictureName("a.jpg"));
  EXPECT_TRUE(IsPictureName("IMG_1.JPG"));
  EXPECT_TRUE(IsPictureName("x.Gif"));
  EXPECT_FALSE(IsPictureName("a.jpeg"));
  EXPECT_FALSE(IsPictureName("a.png"));
  EXPECT_FALSE(IsPictureName("jpg"));
  EXPECT_EQ(PictureNames({"b.gif", "notes.txt", "A.jpg", "a.jpg", "c.png"}),
            (std::vector<std::string>{"A.jpg", "a.jpg", "b.gif"}));
}

TEST(PicBrowserModel, PagesShowFourFilesFromTheScrollValue) {
  EXPECT_EQ(ScrollMax(0), 0);
  EXPECT_EQ(ScrollMax(3), 1);
  EXPECT_EQ(ScrollMax(1000), 998);
  EXPECT_EQ(FileOfCell(0, 3, 10), 3);
  EXPECT_EQ(FileOfCell(8, 1, 10), 9);
  EXPECT_EQ(FileOfCell(8, 2, 10), -1);
  EXPECT_EQ(FileOfCell(0, 0, 0), -1);
}

TEST(PicBrowserModel, ThumbnailKeepsItsAspectIsNotEnlargedAndIsCentred) {
  const CellRect box{10, 20, 100, 80};
  EXPECT_EQ(FitInBox(200, 100, box), (CellRect{10, 35, 100, 50}));  // wider: width fills
  EXPECT_EQ(FitInBox(100, 200, box), (CellRect{40, 20, 40, 80}));   // taller: height fills
  EXPECT_EQ(FitInBox(20, 10, box), (CellRect{50, 55, 20, 10}));     // small: as it is
  EXPECT_EQ(FitInBox(0, 10, box).width, 0);
}

TEST(PicBrowserModel, SelectionFrameShowsOnlyOnThePageHoldingTheSelection) {
  const std::vector<std::string> files{"a.gif", "b.gif", "c.gif", "d.gif", "e.gif", "f.gif"};
  EXPECT_EQ(JoinPicturePath("/p", "a.gif"), "/p/a.gif");
  EXPECT_EQ(JoinPicturePath("/", "a.gif"), "/a.gif");
  EXPECT_EQ(SelectedCell("/p/b.gif", "/p", files, 0), 1);
  EXPECT_EQ(SelectedCell("/p/b.gif", "/p", files, 2), -1);
  EXPECT_EQ(SelectedCell("/p/f.gif", "/p", files, 2), 3);
  EXPECT_EQ(SelectedCell("/q/b.gif", "/p", files, 0), -1);
  EXPECT_EQ(SelectedCell("", "/p", files, 0), -1);
}

}  // namespace
}  // namespace kp
