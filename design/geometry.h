// The arithmetic of the design window, apart from any window: where the
// sizing handles stand and what dragging them does, snapping to the grid,
// lining buttons up, packing them into rows and columns, nudging, and the
// label marker's place. The window calls these and repaints; the tests
// call them directly.
#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "core/model.h"

namespace kp {

// Nearest integer, a tie going to the even neighbour, as every fractional
// pixel coordinate of the program is rounded.
int RoundHalfEven(double v);

// --- Sizing handles ------------------------------------------------------------

// The handles' size in pixels; the arithmetic takes it as a parameter.
inline constexpr int kSizerW = 6;
inline constexpr int kSizerH = 6;

struct PointD {
  double x = 0;
  double y = 0;
};

// A button surface's place and size.
struct Box {
  int left = 0;
  int top = 0;
  int width = 0;
  int height = 0;
  bool operator==(const Box&) const = default;
};

// Top-left corner of handle k around a surface: 0 bottom middle, 1 right
// middle, 2 top middle, 3 left middle.
PointD SizerPos(int k, const Box& b, int sizerW = kSizerW, int sizerH = kSizerH);

// The handle's coordinate that its drag works on: the top of the bottom
// and top handles, the left of the right and left handles.
double SizerCoordinate(int k, const PointD& handle);

// The new handle coordinate N of a drag: the handle's coordinate S plus
// the mouse's coordinate on the handle minus the press's, rounded.
int SizerTarget(double S, double mouse, double press);

// The surface after handle k was dragged to N. The bottom and right
// handles take the +2 of the handle's gap twice, so the first move makes
// the button 4 pixels larger; a drag of the top or left handle that would
// leave less than 5 pixels is ignored, as is one of the left handle to a
// coordinate of 0 or less.
// S is the handle's present coordinate.
Box SizerDrag(int k, const Box& b, double S, int N, int sizerW = kSizerW, int sizerH = kSizerH);

// --- Snapping --------------------------------------------------------------------

// Down to the grid line at the left or above; the remainder of a signed
// division, so a negative value moves toward 0. Nothing for a step of 0.
std::optional<i16> SnapPos(i16 v, i16 step);
// A size to the grid: up to the next line or down to the last, never
// below one step. Nothing for a step of 0 or a result beyond 16 bits.
std::optional<i16> SnapSize(i16 v, i16 step, bool roundUp);

// --- Which buttons a command takes ----------------------------------------------

// The selection as the list holds it. A command that works on "the
// selected buttons" takes every button when exactly one row is selected.
struct Selection {
  int count = 0;
  std::function<bool(int)> isSelected;
  bool Takes(int j) const { return count == 1 || (isSelected && isSelected(j)); }
  bool Has(int j) const { return isSelected && isSelected(j); }
};

// --- Lining up --------------------------------------------------------------------

enum class Edge { Left, Right, Top, Bottom };

// Align_Left, Align_Right, Align_Top, Align_Bottom against button `cur`.
// Returns the buttons written, in order; a result beyond 16 bits ends the
// command there.
std::vector<int> AlignEdges(Project& p, Edge e, int cur, const Selection& sel);

// --- Packing ------------------------------------------------------------------------

// The next button to pack: among those the command takes and that are not
// processed, the one with the smallest x (y), the first on a tie; -1 when
// none is left. `processed` is indexed by button number.
int GetLEFTest(const Project& p, const std::vector<bool>& processed, const Selection& sel);
int GetToppest(const Project& p, const std::vector<bool>& processed, const Selection& sel);

struct PackParams {
  bool bAlignXY = false;
  i16 iGridX = 10;
  i16 iGridY = 10;
  // The full-screen client size in pixels and the twips of a pixel.
  int screenClientW = 1024;
  int screenClientH = 768;
  int twipsX = 15;
  int twipsY = 15;
  // Outer size of the design window minus its client size, in pixels.
  int frameW = 0;
  int frameH = 0;
  // The design window grows to a client width (height); its resize path
  // makes that the applet's width (height).
  std::function<void(int)> setClientWidth;
  std::function<void(int)> setClientHeight;
  // Button n has its new place.
  std::function<void(int)> placed;
};

struct PackResult {
  // With exactly one row selected the window takes this client size.
  bool resizeWindow = false;
  int clientW = 0;
  int clientH = 0;
  // The loop stopped at the screen's limit; the rest stayed where it was.
  bool stopped = false;
};

// The outer size, in twips, of a window with this client size.
long OuterTwips(int client, int frame, int twips);

PackResult Align_Horizontal_Row(Project& p, int cur, const Selection& sel, const PackParams& pp);
PackResult Align_Vertical_Column(Project& p, int cur, const Selection& sel, const PackParams& pp);

// --- Dragging and nudging -------------------------------------------------------------

// A surface's new left (top) when the mouse is at X on it after a press at
// start: old + X - start, rounded.
int DragTo(int old, double X, double start);

// Moves every selected button by (dx, dy). Returns those moved, ascending;
// a result beyond 16 bits leaves that button where it was.
std::vector<int> NudgeSelected(Project& p, const Selection& sel, int dx, int dy);

// --- Label marker ----------------------------------------------------------------------

// The marker's top-left corner for a label placed at (posX, posY) on a
// button at (x, y), and the label place for a marker at (left, top): the
// two cancel.
PointD MarkerPos(int x, int y, int posX, int posY);
std::pair<int, int> LabelPosFromMarker(double left, double top, int x, int y);

// --- Zoom ---------------------------------------------------------------------------------

// The design window shows the applet at 1, 2, 4 or 8 screen pixels an
// applet pixel; the surfaces stay at 1:1 and only the view is scaled.
inline constexpr int kZoomSteps[] = {1, 2, 4, 8};

// The next step up (down) from `zoom`; the same at either end.
int ZoomIn(int zoom);
int ZoomOut(int zoom);
// The applet pixel under a window coordinate: at 1:1 the coordinate as it
// is, zoomed the pixel it falls in, so that the pixel grabbed stays under
// the mouse.
double ToApplet(double windowCoord, int zoom);
// The applet's extent that a window extent of `windowPixels` shows.
int AppletSpan(int windowPixels, int zoom);

// --- A zoomed applet larger than the screen ----------------------------------------------

// Which scroll bars a view of `clientW` x `clientH` window pixels needs for
// a zoomed applet of `contentW` x `contentH`, and what is left to show it:
// a bar along one edge takes room that may then call for the other.
struct ScrollLayout {
  bool barH = false;
  bool barV = false;
  int viewW = 0;
  int viewH = 0;
};
ScrollLayout LayoutScroll(int clientW, int clientH, int contentW, int contentH, int barW,
                          int barH);

// The client size of a window that shows the zoomed applet whole when it
// fits within maxW x maxH, and otherwise the largest part of it the area
// holds, with its scroll bars.
std::pair<int, int> CappedClientSize(int contentW, int contentH, int maxW, int maxH, int barW,
                                     int barH);

// A scroll offset kept within 0 and the part of the content the view
// cannot show.
int ClampScroll(int offset, int content, int view);

// The offset after a zoom step that puts the applet point which lay at
// view position `anchorBefore` (offset `scrollBefore`, zoom `zoomBefore`)
// at `anchorAfter`. Not clamped.
int ScrollForAnchor(int anchorBefore, int scrollBefore, int zoomBefore, int anchorAfter,
                    int zoomAfter);

// --- The window on the screen ------------------------------------------------------------

// CHECK_POS_frmDesign: the window's right and bottom edges lie within the
// screen's full client size.
bool FitsOnScreen(int right, int bottom, int screenClientW, int screenClientH);
// Center_frmDesign: the top-left corner that centres a window of the
// given outer size.
std::pair<int, int> CentredPos(int outerW, int outerH, int screenClientW, int screenClientH);

}  // namespace kp
