// The design window's arithmetic: handles, snapping, lining up, packing,
// nudging and the label marker.
#include <gtest/gtest.h>

#include <set>

#include "design/geometry.h"

namespace kp {
namespace {

Project WithButtons(std::initializer_list<Box> boxes) {
  Project p;
  p.AppletWidth = 420;
  p.AppletHeight = 180;
  int i = 0;
  for (const Box& b : boxes) {
    ++i;
    p.button(i).x = static_cast<i16>(b.left);
    p.button(i).y = static_cast<i16>(b.top);
    p.button(i).Width = static_cast<i16>(b.width);
    p.button(i).Height = static_cast<i16>(b.height);
  }
  p.ButtonCount = static_cast<i16>(i);
  return p;
}

Selection Rows(std::set<int> rows) {
  const int n = static_cast<int>(rows.size());
  return Selection{n, [rows](int j) { return rows.count(j) > 0; }};
}

// --- Handles ---------------------------------------------------------------------

TEST(SizerPos, FourHandlesStandAroundTheSurfaceAsTheTableSays) {
  const Box b{20, 30, 100, 40};
  EXPECT_DOUBLE_EQ(SizerPos(0, b, 6, 6).x, 100 / 2 + 20 - 3);
  EXPECT_DOUBLE_EQ(SizerPos(0, b, 6, 6).y, 40 + 30 + 2);
  EXPECT_DOUBLE_EQ(SizerPos(1, b, 6, 6).x, 100 + 20 + 2);
  EXPECT_DOUBLE_EQ(SizerPos(1, b, 6, 6).y, 40 / 2 + 30 - 3);
  EXPECT_DOUBLE_EQ(SizerPos(2, b, 6, 6).x, 67);
  EXPECT_DOUBLE_EQ(SizerPos(2, b, 6, 6).y, 30 - 6 - 2);
  EXPECT_DOUBLE_EQ(SizerPos(3, b, 6, 6).x, 20 - 6 - 2);
  EXPECT_DOUBLE_EQ(SizerPos(3, b, 6, 6).y, 47);
}

TEST(SizerPos, AnOddWidthPutsTheMiddleHandlesOnAHalfPixel) {
  EXPECT_DOUBLE_EQ(SizerPos(0, Box{0, 0, 101, 10}, 6, 6).x, 47.5);
}

TEST(SizerDrag, BottomHandleJumpsFourPixelsOnTheFirstMove) {
  const Box b{20, 30, 100, 40};
  const double S = SizerPos(0, b).y;
  const int N = SizerTarget(S, 3, 3);  // the mouse has not moved on the handle
  EXPECT_EQ(SizerDrag(0, b, S, N).height, 44);
  EXPECT_EQ(SizerDrag(0, b, S, N).top, 30);
}

TEST(SizerDrag, RightHandleJumpsFourPixelsOnTheFirstMove) {
  const Box b{20, 30, 100, 40};
  const double S = SizerPos(1, b).x;
  EXPECT_EQ(SizerDrag(1, b, S, SizerTarget(S, 2, 2)).width, 104);
}

TEST(SizerDrag, TopAndLeftHandlesDoNotJump) {
  const Box b{20, 30, 100, 40};
  const double St = SizerPos(2, b).y, Sl = SizerPos(3, b).x;
  EXPECT_EQ(SizerDrag(2, b, St, SizerTarget(St, 1, 1)), b);
  EXPECT_EQ(SizerDrag(3, b, Sl, SizerTarget(Sl, 1, 1)), b);
}

TEST(SizerDrag, TopHandleUpTenPixelsGrowsTheButtonUpward) {
  const Box b{20, 30, 100, 40};
  const double S = SizerPos(2, b).y;
  const Box r = SizerDrag(2, b, S, SizerTarget(S, -10, 0));
  EXPECT_EQ(r.height, 50);
  EXPECT_EQ(r.top, 20);
  EXPECT_EQ(r.top + r.height, b.top + b.height);
}

TEST(SizerDrag, BottomHandleBelowFiveStopsAtFive) {
  const Box b{20, 30, 100, 40};
  const double S = SizerPos(0, b).y;
  EXPECT_EQ(SizerDrag(0, b, S, SizerTarget(S, -60, 0)).height, 5);
  EXPECT_EQ(SizerDrag(0, b, S, SizerTarget(S, -500, 0)).height, 5);
}

TEST(SizerDrag, TopHandleIsIgnoredWhileTheHeightWouldBeBelowFive) {
  const Box b{20, 30, 100, 40};
  const double S = SizerPos(2, b).y;
  EXPECT_EQ(SizerDrag(2, b, S, SizerTarget(S, 36, 0)), b);  // would leave 4
  const Box five = SizerDrag(2, b, S, SizerTarget(S, 35, 0));
  EXPECT_EQ(five.height, 5);
  EXPECT_EQ(five.top, 65);
}

TEST(SizerDrag, RightHandleBelowFiveStopsAtFive) {
  const Box b{20, 30, 100, 40};
  const double S = SizerPos(1, b).x;
  EXPECT_EQ(SizerDrag(1, b, S, SizerTarget(S, -300, 0)).width, 5);
}

TEST(SizerDrag, LeftHandleNeedsACoordinateAboveZero) {
  const Box b{20, 30, 100, 40};
  const double S = SizerPos(3, b).x;  // 12
  EXPECT_EQ(SizerDrag(3, b, S, 0), b);
  EXPECT_EQ(SizerDrag(3, b, S, -7), b);
  const Box r = SizerDrag(3, b, S, 1);
  EXPECT_EQ(r.width, 111);
  EXPECT_EQ(r.left, 1 + 6 + 2);
}

TEST(SizerDrag, LeftHandleKeepsTheLeftEdgeFivePixelsFromTheWindowEdge) {
  // With handles narrower than the gap the clamp is what holds the edge.
  const Box b{20, 30, 100, 40};
  const double S = SizerPos(3, b, 1, 1).x;
  const Box r = SizerDrag(3, b, S, 1, 1, 1);
  EXPECT_EQ(r.left, 5);
  for (int N = 1; N < 40; ++N) EXPECT_GE(SizerDrag(3, b, SizerPos(3, b).x, N).left, 5);
}

TEST(SizerTarget, RoundsHalfToEven) {
  EXPECT_EQ(SizerTarget(10, 0.5, 0), 10);
  EXPECT_EQ(SizerTarget(11, 0.5, 0), 12);
}

// --- Snapping ----------------------------------------------------------------------

TEST(SnapPos, AlignXWith37OnAGridOf10Gives30) { EXPECT_EQ(SnapPos(37, 10), i16(30)); }

TEST(SnapPos, GoesDownNotToTheNearestLine) { EXPECT_EQ(SnapPos(39, 10), i16(30)); }

TEST(SnapPos, ANegativePositionMovesTowardZero) { EXPECT_EQ(SnapPos(-37, 10), i16(-30)); }

TEST(SnapPos, AStepOfZeroDoesNothing) { EXPECT_FALSE(SnapPos(37, 0).has_value()); }

TEST(SnapSize, AlignWWith37Gives40RoundingUpAnd30RoundingDown) {
  EXPECT_EQ(SnapSize(37, 10, true), i16(40));
  EXPECT_EQ(SnapSize(37, 10, false), i16(30));
}

TEST(SnapSize, AWidthOnTheGridStaysBothWays) {
  EXPECT_EQ(SnapSize(40, 10, true), i16(40));
  EXPECT_EQ(SnapSize(40, 10, false), i16(40));
}

TEST(SnapSize, AlignWWithWidth4OnAGridOf10RoundingDownGives10) {
  EXPECT_EQ(SnapSize(4, 10, false), i16(10));
}

TEST(SnapSize, AResultBeyondSixteenBitsIsNoResult) {
  EXPECT_FALSE(SnapSize(32765, 10, true).has_value());
}

// --- Lining up ------------------------------------------------------------------------

TEST(AlignEdges, WithExactlyOneItemSelectedAlignLeftMovesEveryButton) {
  Project p = WithButtons({{5, 5, 50, 20}, {40, 50, 60, 20}, {70, 90, 30, 20}});
  const std::vector<int> done = AlignEdges(p, Edge::Left, 2, Rows({2}));
  EXPECT_EQ(done, (std::vector<int>{1, 2, 3}));
  for (int j = 1; j <= 3; ++j) EXPECT_EQ(p.button(j).x, 40) << j;
}

TEST(AlignEdges, WithSeveralSelectedOnlyThoseMove) {
  Project p = WithButtons({{5, 5, 50, 20}, {40, 50, 60, 20}, {70, 90, 30, 20}});
  AlignEdges(p, Edge::Top, 3, Rows({1, 3}));
  EXPECT_EQ(p.button(1).y, 90);
  EXPECT_EQ(p.button(2).y, 50);
  EXPECT_EQ(p.button(3).y, 90);
}

TEST(AlignEdges, RightAndBottomLineUpTheFarEdges) {
  Project p = WithButtons({{5, 5, 50, 20}, {40, 50, 60, 30}});
  AlignEdges(p, Edge::Right, 2, Rows({1, 2}));
  EXPECT_EQ(p.button(1).x + p.button(1).Width, 100);
  AlignEdges(p, Edge::Bottom, 2, Rows({1, 2}));
  EXPECT_EQ(p.button(1).y + p.button(1).Height, 80);
}

TEST(AlignEdges, NoSelectionMovesNothing) {
  Project p = WithButtons({{5, 5, 50, 20}, {40, 50, 60, 30}});
  EXPECT_TRUE(AlignEdges(p, Edge::Left, 2, Rows({})).empty());
  EXPECT_EQ(p.button(1).x, 5);
}

// --- Packing ---------------------------------------------------------------------------

TEST(GetLEFTest, TiesGoToTheLowerIndex) {
  Project p = WithButtons({{30, 0, 10, 10}, {10, 0, 10, 10}, {10, 50, 10, 10}});
  std::vector<bool> processed(4, false);
  EXPECT_EQ(GetLEFTest(p, processed, Rows({1})), 2);
  processed[2] = true;
  EXPECT_EQ(GetLEFTest(p, processed, Rows({1})), 3);
}

TEST(GetToppest, TiesGoToTheLowerIndex) {
  Project p = WithButtons({{0, 30, 10, 10}, {0, 10, 10, 10}, {50, 10, 10, 10}});
  std::vector<bool> processed(4, false);
  EXPECT_EQ(GetToppest(p, processed, Rows({1})), 2);
}

TEST(GetLEFTest, GivesMinusOneWhenNoneIsLeft) {
  Project p = WithButtons({{30, 0, 10, 10}});
  std::vector<bool> processed(2, true);
  EXPECT_EQ(GetLEFTest(p, processed, Rows({1})), -1);
  std::vector<bool> none(2, false);
  EXPECT_EQ(GetLEFTest(p, none, Rows({})), -1);
}

TEST(GetLEFTest, TakesOnlySelectedButtonsWhenSeveralAreSelected) {
  Project p = WithButtons({{30, 0, 10, 10}, {10, 0, 10, 10}, {20, 0, 10, 10}});
  std::vector<bool> processed(4, false);
  EXPECT_EQ(GetLEFTest(p, processed, Rows({1, 3})), 3);
}

PackParams Params(Project& p) {
  PackParams pp;
  pp.screenClientW = 1000;
  pp.screenClientH = 700;
  pp.setClientWidth = [&p](int w) { p.AppletWidth = static_cast<i16>(w); };
  pp.setClientHeight = [&p](int h) { p.AppletHeight = static_cast<i16>(h); };
  return pp;
}

TEST(AlignHorizontalRow, OneSelectedPacksAllFromTheLeftWithGapsOfTwo) {
  Project p = WithButtons({{200, 40, 50, 20}, {10, 90, 60, 30}, {100, 5, 40, 25}});
  std::vector<int> order;
  PackParams pp = Params(p);
  pp.placed = [&order](int n) { order.push_back(n); };
  const PackResult r = Align_Horizontal_Row(p, 1, Rows({1}), pp);
  EXPECT_EQ(order, (std::vector<int>{2, 3, 1}));
  EXPECT_EQ(p.button(2).x, 0);
  EXPECT_EQ(p.button(3).x, 62);
  EXPECT_EQ(p.button(1).x, 104);
  for (int j = 1; j <= 3; ++j) EXPECT_EQ(p.button(j).y, 0);
  EXPECT_TRUE(r.resizeWindow);
  EXPECT_EQ(r.clientW, 154);
  EXPECT_EQ(r.clientH, 30);
}

TEST(AlignHorizontalRow, GridGapsWhenButtonsSnap) {
  Project p = WithButtons({{0, 0, 50, 20}, {80, 0, 50, 20}});
  PackParams pp = Params(p);
  pp.bAlignXY = true;
  pp.iGridX = 8;
  Align_Horizontal_Row(p, 1, Rows({1}), pp);
  EXPECT_EQ(p.button(2).x, 58);
}

TEST(AlignHorizontalRow, SeveralSelectedStartAtTheFirstButtonAndTheCurrentButtonsY) {
  Project p = WithButtons({{200, 40, 50, 20}, {30, 90, 60, 30}, {100, 5, 40, 25}});
  const PackResult r = Align_Horizontal_Row(p, 3, Rows({1, 2}), Params(p));
  EXPECT_EQ(p.button(2).x, 30);
  EXPECT_EQ(p.button(1).x, 92);
  EXPECT_EQ(p.button(2).y, 5);
  EXPECT_EQ(p.button(1).y, 5);
  EXPECT_EQ(p.button(3).x, 100);  // not selected: not moved
  EXPECT_FALSE(r.resizeWindow);
}

TEST(AlignHorizontalRow, AButtonBeyondTheAppletWidensTheWindowWhileTheScreenAllows) {
  Project p = WithButtons({{0, 0, 300, 20}, {10, 0, 300, 20}});
  std::vector<int> widths;
  PackParams pp = Params(p);
  pp.setClientWidth = [&](int w) {
    widths.push_back(w);
    p.AppletWidth = static_cast<i16>(w);
  };
  Align_Horizontal_Row(p, 1, Rows({1}), pp);
  EXPECT_EQ(widths, (std::vector<int>{602}));
  EXPECT_EQ(p.button(2).x, 302);
  EXPECT_EQ(p.button(2).y, 0);
}

TEST(AlignHorizontalRow, ANewRowAdvancesByTheTallestButtonSoFarNeverReset) {
  // Screen and applet 1000 px wide: two 400-px buttons to a row.
  Project p = WithButtons(
      {{0, 0, 400, 50}, {1, 0, 400, 10}, {2, 0, 400, 10}, {3, 0, 400, 10}, {4, 0, 400, 10}});
  p.AppletWidth = 1000;
  PackParams pp = Params(p);
  Align_Horizontal_Row(p, 1, Rows({1}), pp);
  EXPECT_EQ(p.button(1).y, 0);
  EXPECT_EQ(p.button(2).y, 0);
  EXPECT_EQ(p.button(3).y, 52);
  EXPECT_EQ(p.button(3).x, 0);
  EXPECT_EQ(p.button(4).y, 52);
  EXPECT_EQ(p.button(4).x, 402);
  // The second row's buttons are 10 high, but the tallest so far is 50.
  EXPECT_EQ(p.button(5).x, 0);
  EXPECT_EQ(p.button(5).y, 104);
}

TEST(AlignHorizontalRow, TheFrameCountsInTheNeededWidth) {
  // 602 px of client need (602 + 400) * 15 twips: more than 1000 px of
  // screen, so the second button opens a new row instead of widening.
  Project p = WithButtons({{0, 0, 300, 20}, {10, 0, 300, 20}});
  PackParams pp = Params(p);
  pp.frameW = 400;
  Align_Horizontal_Row(p, 1, Rows({1}), pp);
  EXPECT_EQ(p.button(2).x, 0);
  EXPECT_EQ(p.button(2).y, 22);
}

TEST(AlignHorizontalRow, TheStopTestHoldsPixelsAgainstTwips) {
  // A button 800 px high fits under 700 px of screen only because the
  // limit is 700 * 15 twips: the quirk lets it through.
  Project p = WithButtons({{0, 0, 900, 20}, {1, 0, 900, 800}});
  p.AppletWidth = 950;
  const PackResult r = Align_Horizontal_Row(p, 1, Rows({1}), Params(p));
  EXPECT_FALSE(r.stopped);
  EXPECT_EQ(p.button(2).y, 22);
}

TEST(AlignHorizontalRow, StopsWhenTheNextRowLiesBeyondTheLimitAndLeavesTheRest) {
  Project p = WithButtons({{0, 0, 900, 10500}, {1, 0, 900, 20}, {2, 0, 900, 20}});
  p.AppletWidth = 950;
  const PackResult r = Align_Horizontal_Row(p, 1, Rows({1}), Params(p));
  EXPECT_TRUE(r.stopped);
  EXPECT_EQ(p.button(2).x, 1);
  EXPECT_EQ(p.button(3).x, 2);
}

TEST(AlignVerticalColumn, OneSelectedPacksAllFromTheTop) {
  Project p = WithButtons({{200, 40, 50, 20}, {10, 90, 60, 30}, {100, 5, 40, 25}});
  const PackResult r = Align_Vertical_Column(p, 1, Rows({1}), Params(p));
  EXPECT_EQ(p.button(3).y, 0);
  EXPECT_EQ(p.button(1).y, 27);
  EXPECT_EQ(p.button(2).y, 49);
  for (int j = 1; j <= 3; ++j) EXPECT_EQ(p.button(j).x, 0);
  EXPECT_TRUE(r.resizeWindow);
  EXPECT_EQ(r.clientW, 60);
  // The height is the column's run, gap after the last button included.
  EXPECT_EQ(r.clientH, 81);
}

TEST(AlignVerticalColumn, SeveralSelectedStartAtTheFirstButtonAndTheCurrentButtonsX) {
  Project p = WithButtons({{200, 40, 50, 20}, {30, 90, 60, 30}, {100, 5, 40, 25}});
  Align_Vertical_Column(p, 3, Rows({1, 2}), Params(p));
  EXPECT_EQ(p.button(1).y, 40);
  EXPECT_EQ(p.button(2).y, 62);
  EXPECT_EQ(p.button(1).x, 100);
  EXPECT_EQ(p.button(2).x, 100);
}

TEST(AlignVerticalColumn, ANewColumnAdvancesByTheWidestSoFarAndTheHeightIsTheLongestColumn) {
  Project p = WithButtons({{0, 0, 80, 300}, {0, 1, 20, 300}, {0, 2, 20, 300}});
  p.AppletHeight = 700;
  const PackResult r = Align_Vertical_Column(p, 1, Rows({1}), Params(p));
  EXPECT_EQ(p.button(3).x, 82);
  EXPECT_EQ(p.button(3).y, 0);
  EXPECT_EQ(r.clientH, 604);
  EXPECT_EQ(r.clientW, 102);
}

// --- Dragging, nudging, marker ------------------------------------------------------------

TEST(DragTo, AddsTheMouseDistanceRoundedHalfToEven) {
  EXPECT_EQ(DragTo(10, 25, 5), 30);
  EXPECT_EQ(DragTo(10, 5.5, 5), 10);
  EXPECT_EQ(DragTo(10, 6.5, 5), 12);
}

TEST(NudgeSelected, MovesOnlyTheSelectedButtons) {
  Project p = WithButtons({{10, 10, 5, 5}, {20, 20, 5, 5}, {30, 30, 5, 5}});
  const std::vector<int> moved = NudgeSelected(p, Rows({1, 3}), 1, -1);
  EXPECT_EQ(moved, (std::vector<int>{1, 3}));
  EXPECT_EQ(p.button(1).x, 11);
  EXPECT_EQ(p.button(1).y, 9);
  EXPECT_EQ(p.button(2).x, 20);
  EXPECT_EQ(p.button(3).y, 29);
}

TEST(NudgeSelected, WithOneSelectedMovesOnlyThatOne) {
  Project p = WithButtons({{10, 10, 5, 5}, {20, 20, 5, 5}});
  NudgeSelected(p, Rows({2}), -1, 0);
  EXPECT_EQ(p.button(1).x, 10);
  EXPECT_EQ(p.button(2).x, 19);
}

TEST(MarkerPos, TheMarkerAndTheLabelPlaceCancel) {
  for (int posX : {-5, 0, 7, 40})
    for (int posY : {-3, 0, 12}) {
      const PointD m = MarkerPos(25, 60, posX, posY);
      EXPECT_EQ(LabelPosFromMarker(m.x, m.y, 25, 60), std::make_pair(posX, posY));
    }
  EXPECT_DOUBLE_EQ(MarkerPos(25, 60, 10, 10).x, 34);
  EXPECT_DOUBLE_EQ(MarkerPos(25, 60, 10, 10).y, 71);
}

TEST(FitsOnScreen, RightAndBottomEdgesWithinTheScreen) {
  EXPECT_TRUE(FitsOnScreen(800, 600, 800, 600));
  EXPECT_FALSE(FitsOnScreen(801, 600, 800, 600));
  EXPECT_FALSE(FitsOnScreen(10, 601, 800, 600));
  EXPECT_EQ(CentredPos(200, 100, 800, 600), std::make_pair(300, 250));
}

TEST(Zoom, StepsGoThroughOneTwoFourEightAndStopAtTheEnds) {
  EXPECT_EQ(ZoomIn(1), 2);
  EXPECT_EQ(ZoomIn(2), 4);
  EXPECT_EQ(ZoomIn(4), 8);
  EXPECT_EQ(ZoomIn(8), 8);
  EXPECT_EQ(ZoomOut(8), 4);
  EXPECT_EQ(ZoomOut(4), 2);
  EXPECT_EQ(ZoomOut(2), 1);
  EXPECT_EQ(ZoomOut(1), 1);
}

TEST(Zoom, AWindowCoordinateFallsInTheAppletPixelUnderIt) {
  EXPECT_DOUBLE_EQ(ToApplet(41.0, 1), 41.0);
  EXPECT_DOUBLE_EQ(ToApplet(40.5, 1), 40.5);
  EXPECT_DOUBLE_EQ(ToApplet(40.0, 4), 10.0);
  EXPECT_DOUBLE_EQ(ToApplet(43.0, 4), 10.0);
  EXPECT_DOUBLE_EQ(ToApplet(44.0, 4), 11.0);
  EXPECT_DOUBLE_EQ(ToApplet(-1.0, 8), -1.0);
  EXPECT_DOUBLE_EQ(ToApplet(15.0, 8), 1.0);
}

TEST(Zoom, TheWindowShowsWholeAppletPixelsOnly) {
  EXPECT_EQ(AppletSpan(403, 1), 403);
  EXPECT_EQ(AppletSpan(400, 4), 100);
  EXPECT_EQ(AppletSpan(403, 4), 100);
  EXPECT_EQ(AppletSpan(807, 8), 100);
  EXPECT_EQ(AppletSpan(-5, 2), 0);
}

TEST(ZoomScroll, AViewThatHoldsTheAppletNeedsNoBar) {
  const ScrollLayout l = LayoutScroll(400, 300, 400, 300, 16, 16);
  EXPECT_FALSE(l.barH);
  EXPECT_FALSE(l.barV);
  EXPECT_EQ(l.viewW, 400);
  EXPECT_EQ(l.viewH, 300);
}

TEST(ZoomScroll, TheRoomOfOneBarCanCallForTheOther) {
  // Wider than the view: the bottom bar, whose room leaves 294 pixels for
  // 300, so the right bar follows.
  ScrollLayout l = LayoutScroll(500, 310, 1000, 300, 16, 16);
  EXPECT_TRUE(l.barH);
  EXPECT_TRUE(l.barV);
  EXPECT_EQ(l.viewW, 484);
  EXPECT_EQ(l.viewH, 294);
  l = LayoutScroll(500, 316, 1000, 300, 16, 16);
  EXPECT_TRUE(l.barH);
  EXPECT_FALSE(l.barV);
  EXPECT_EQ(l.viewH, 300);
  // Only the right bar, and the width it takes calls for the bottom one.
  l = LayoutScroll(510, 300, 500, 900, 16, 16);
  EXPECT_TRUE(l.barV);
  EXPECT_TRUE(l.barH);
}

TEST(ZoomScroll, TheWindowIsCappedToTheAreaOnlyWhereTheAppletDoesNotFit) {
  EXPECT_EQ(CappedClientSize(920, 400, 1280, 1000, 16, 16), std::make_pair(920, 400));
  // Demo at 400 %: as wide as the area, as high as the applet and its bar.
  EXPECT_EQ(CappedClientSize(1840, 800, 1280, 1000, 16, 16), std::make_pair(1280, 816));
  EXPECT_EQ(CappedClientSize(3680, 1600, 1280, 1000, 16, 16), std::make_pair(1280, 1000));
  // Exactly the area, with its bar, is no larger than the area.
  EXPECT_EQ(CappedClientSize(1840, 990, 1280, 1000, 16, 16), std::make_pair(1280, 1000));
  // The view a capped window leaves is never larger than the applet.
  for (int h : {100, 500, 984, 985, 990, 1000, 1200}) {
    const auto [w, hh] = CappedClientSize(2000, h, 1280, 1000, 16, 16);
    const ScrollLayout l = LayoutScroll(w, hh, 2000, h, 16, 16);
    EXPECT_LE(l.viewH, h) << h;
    EXPECT_TRUE(l.barH) << h;
    EXPECT_EQ(l.barV, h > hh - 16) << h;
  }
}

TEST(ZoomScroll, AnOffsetStaysWithinWhatTheViewCannotShow) {
  EXPECT_EQ(ClampScroll(-5, 1000, 400), 0);
  EXPECT_EQ(ClampScroll(250, 1000, 400), 250);
  EXPECT_EQ(ClampScroll(601, 1000, 400), 600);
  EXPECT_EQ(ClampScroll(50, 300, 400), 0);
}

TEST(ZoomScroll, AZoomStepKeepsTheAnchoredAppletPointInPlace) {
  // Applet pixel 60 under window x 100 at 400 % (offset 140), then 800 %.
  EXPECT_EQ(ScrollForAnchor(100, 140, 4, 100, 8), 380);
  EXPECT_EQ((100 + 380) / 8, 60);
  // The view's centre moves from 200 to 640 as the window grows.
  EXPECT_EQ(ScrollForAnchor(200, 0, 2, 640, 4), -240);
  EXPECT_EQ(ScrollForAnchor(0, 0, 1, 0, 8), 0);
}

}  // namespace
}  // namespace kp
