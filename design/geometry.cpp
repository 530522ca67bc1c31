#include "design/geometry.h"

#include <algorithm>
#include <cmath>

namespace kp {

namespace {

bool FitsI16(long long v) { return v >= -32768 && v <= 32767; }

}  // namespace

int RoundHalfEven(double v) { return static_cast<int>(std::nearbyint(v)); }

// --- Sizing handles ------------------------------------------------------------

PointD SizerPos(int k, const Box& b, int sizerW, int sizerH) {
  const double L = b.left, T = b.top, W = b.width, H = b.height;
  switch (k) {
    case 0: return {W / 2 + L - sizerW / 2.0, H + T + 2};
    case 1: return {W + L + 2, H / 2 + T - sizerH / 2.0};
    case 2: return {W / 2 + L - sizerW / 2.0, T - sizerH - 2};
    case 3: return {L - sizerW - 2, H / 2 + T - sizerH / 2.0};
    default: return {};
  }
}

double SizerCoordinate(int k, const PointD& handle) {
  return (k == 0 || k == 2) ? handle.y : handle.x;
}

int SizerTarget(double S, double mouse, double press) { return RoundHalfEven(S + mouse - press); }

Box SizerDrag(int k, const Box& b, double S, int N, int sizerW, int sizerH) {
  Box r = b;
  switch (k) {
    case 0:
      r.height = std::max(N - (b.top - 2), 5);
      break;
    case 1:
      r.width = std::max(N - (b.left - 2), 5);
      break;
    case 2: {
      const int h = RoundHalfEven(S - N + b.height);
      if (h >= 5) {
        r.height = h;
        r.top = N + sizerH + 2;
      }
      break;
    }
    case 3: {
      const int w = RoundHalfEven(S - N + b.width);
      if (w >= 5 && N > 0) {
        r.width = w;
        r.left = std::max(N + sizerW + 2, 5);
      }
      break;
    }
    default: break;
  }
  return r;
}

// --- Snapping --------------------------------------------------------------------

std::optional<i16> SnapPos(i16 v, i16 step) {
  if (step == 0) return std::nullopt;
  // The remainder takes the sign of v: a negative position moves up to 0.
  return static_cast<i16>(v - v % step);
}

std::optional<i16> SnapSize(i16 v, i16 step, bool roundUp) {
  if (step == 0) return std::nullopt;
  const int r = v % step;
  long long w = v;
  if (roundUp) {
    if (r > 0.1) w = w + (step - r);
  } else {
    w = w - r;
  }
  if (w < step) w = step;
  if (!FitsI16(w)) return std::nullopt;
  return static_cast<i16>(w);
}

// --- Lining up --------------------------------------------------------------------

std::vector<int> AlignEdges(Project& p, Edge e, int cur, const Selection& sel) {
  std::vector<int> done;
  if (cur < 1 || cur > p.ButtonCount) return done;
  for (int j = 1; j <= p.ButtonCount; ++j) {
    if (!sel.Takes(j)) continue;
    const tButton& c = p.button(cur);
    tButton& b = p.button(j);
    long long v = 0;
    switch (e) {
      case Edge::Left: v = c.x; break;
      case Edge::Top: v = c.y; break;
      case Edge::Right: v = static_cast<long long>(c.x) + c.Width - b.Width; break;
      case Edge::Bottom: v = static_cast<long long>(c.y) + c.Height - b.Height; break;
    }
    if (!FitsI16(v)) break;
    if (e == Edge::Left || e == Edge::Right) b.x = static_cast<i16>(v);
    else b.y = static_cast<i16>(v);
    done.push_back(j);
  }
  return done;
}

// --- Packing ------------------------------------------------------------------------

namespace {

int NextByKey(const Project& p, const std::vector<bool>& processed, const Selection& sel,
              bool byX) {
  int best = -1;
  int limit = 32000;
  for (int j = 1; j <= p.ButtonCount; ++j) {
    if (!sel.Takes(j)) continue;
    if (static_cast<size_t>(j) < processed.size() && processed[static_cast<size_t>(j)]) continue;
    const int v = byX ? p.button(j).x : p.button(j).y;
    // Strictly smaller: a tie keeps the lower number.
    if (v < limit) {
      limit = v;
      best = j;
    }
  }
  return best;
}

// The row and the column are one algorithm with the axes exchanged: "main"
// is the axis the buttons are laid along, "cross" the one a new line
// advances on.
struct Axis {
  bool row;
  i16& Main(tButton& b) const { return row ? b.x : b.y; }
  i16& Cross(tButton& b) const { return row ? b.y : b.x; }
  i16 MainSize(const tButton& b) const { return row ? b.Width : b.Height; }
  i16 CrossSize(const tButton& b) const { return row ? b.Height : b.Width; }
};

PackResult Pack(Project& p, int cur, const Selection& sel, const PackParams& pp, bool row) {
  PackResult res;
  const Axis ax{row};
  const long iMaxWinW = static_cast<long>(pp.twipsX) * pp.screenClientW;
  const long iMaxWinH = static_cast<long>(pp.twipsY) * pp.screenClientH;
  const long maxMain = row ? iMaxWinW : iMaxWinH;
  const long maxCross = row ? iMaxWinH : iMaxWinW;
  std::vector<bool> processed(static_cast<size_t>(p.ButtonCount) + 1, false);
  const int gapX = pp.bAlignXY ? pp.iGridX : 2;
  const int gapY = pp.bAlignXY ? pp.iGridY : 2;
  const int gapMain = row ? gapX : gapY;
  const int gapCross = row ? gapY : gapX;
  const bool one = sel.count == 1;
  auto next = [&] { return row ? GetLEFTest(p, processed, sel) : GetToppest(p, processed, sel); };

  // The largest cross size so far; never reset at a new line.
  int largest = 0;
  // The longest line so far, for the column's window height.
  long longest = 0;
  long curCross = 0;
  if (!one && cur >= 1 && cur <= p.ButtonCount) curCross = ax.Cross(p.button(cur));
  long curMain = 0;
  int n = next();
  if (n != -1) curMain = one ? 0 : ax.Main(p.button(n));
  while (n != -1) {
    tButton& b = p.button(n);
    const long appletMain = row ? p.AppletWidth : p.AppletHeight;
    if (ax.MainSize(b) + curMain > appletMain) {
      const int client = static_cast<int>(ax.MainSize(b) + curMain);
      const long needed = row ? OuterTwips(client, pp.frameW, pp.twipsX)
                              : OuterTwips(client, pp.frameH, pp.twipsY);
      if (needed > maxMain) {
        longest = std::max(longest, curMain);
        curMain = 0;
        curCross = curCross + largest + gapCross;
        // A pixel sum held against a limit in twips: so it has always been.
        if (ax.CrossSize(b) + curCross > maxCross) {
          res.stopped = true;
          break;
        }
      } else {
        const auto& grow = row ? pp.setClientWidth : pp.setClientHeight;
        if (grow) grow(client);
      }
    }
    if (!FitsI16(curMain) || !FitsI16(curCross)) break;
    ax.Main(b) = static_cast<i16>(curMain);
    ax.Cross(b) = static_cast<i16>(curCross);
    processed[static_cast<size_t>(n)] = true;
    curMain = curMain + ax.MainSize(b) + gapMain;
    if (pp.placed) pp.placed(n);
    largest = std::max<int>(largest, ax.CrossSize(b));
    n = next();
  }
  if (one) {
    res.resizeWindow = true;
    int right = 0, bottom = 0;
    for (int j = 1; j <= p.ButtonCount; ++j) {
      const tButton& b = p.button(j);
      right = std::max(right, b.x + b.Width);
      bottom = std::max(bottom, b.y + b.Height);
    }
    res.clientW = right;
    // The column takes its height from its own run, not from the buttons.
    res.clientH = row ? bottom : static_cast<int>(std::max(curMain, longest));
  }
  return res;
}

}  // namespace

int GetLEFTest(const Project& p, const std::vector<bool>& processed, const Selection& sel) {
  return NextByKey(p, processed, sel, true);
}

int GetToppest(const Project& p, const std::vector<bool>& processed, const Selection& sel) {
  return NextByKey(p, processed, sel, false);
}

long OuterTwips(int client, int frame, int twips) {
  return static_cast<long>(client + frame) * twips;
}

PackResult Align_Horizontal_Row(Project& p, int cur, const Selection& sel, const PackParams& pp) {
  return Pack(p, cur, sel, pp, true);
}

PackResult Align_Vertical_Column(Project& p, int cur, const Selection& sel, const PackParams& pp) {
  return Pack(p, cur, sel, pp, false);
}

// --- Dragging and nudging -------------------------------------------------------------

int DragTo(int old, double X, double start) { return RoundHalfEven(old + X - start); }

std::vector<int> NudgeSelected(Project& p, const Selection& sel, int dx, int dy) {
  std::vector<int> moved;
  for (int j = 1; j <= p.ButtonCount; ++j) {
    if (!sel.Has(j)) continue;
    tButton& b = p.button(j);
    const long long x = static_cast<long long>(b.x) + dx, y = static_cast<long long>(b.y) + dy;
    if (!FitsI16(x) || !FitsI16(y)) continue;
    b.x = static_cast<i16>(x);
    b.y = static_cast<i16>(y);
    moved.push_back(j);
  }
  return moved;
}

// --- Label marker ----------------------------------------------------------------------

PointD MarkerPos(int x, int y, int posX, int posY) {
  return {static_cast<double>(x) + posX - 1, static_cast<double>(y) + posY + 1};
}

std::pair<int, int> LabelPosFromMarker(double left, double top, int x, int y) {
  return {RoundHalfEven(left - x + 1), RoundHalfEven(top - y - 1)};
}

// --- Zoom ---------------------------------------------------------------------------------

int ZoomIn(int zoom) {
  for (int z : kZoomSteps)
    if (z > zoom) return z;
  return zoom;
}

int ZoomOut(int zoom) {
  int lower = zoom;
  for (int z : kZoomSteps)
    if (z < zoom) lower = z;
  return lower;
}

double ToApplet(double windowCoord, int zoom) {
  if (zoom <= 1) return windowCoord;
  return std::floor(windowCoord / zoom);
}

int AppletSpan(int windowPixels, int zoom) {
  if (zoom <= 1) return windowPixels;
  // Whole applet pixels only: a window a few pixels wider shows no more.
  return std::max(0, windowPixels) / zoom;
}

// --- A zoomed applet larger than the screen ----------------------------------------------

ScrollLayout LayoutScroll(int clientW, int clientH, int contentW, int contentH, int barW,
                          int barH) {
  ScrollLayout l;
  l.barH = contentW > clientW;
  l.barV = contentH > clientH;
  // Twice: the second bar may come only from the room the first one took.
  for (int pass = 0; pass < 2; ++pass) {
    l.barH = l.barH || contentW > clientW - (l.barV ? barW : 0);
    l.barV = l.barV || contentH > clientH - (l.barH ? barH : 0);
  }
  l.viewW = std::max(0, clientW - (l.barV ? barW : 0));
  l.viewH = std::max(0, clientH - (l.barH ? barH : 0));
  return l;
}

std::pair<int, int> CappedClientSize(int contentW, int contentH, int maxW, int maxH, int barW,
                                     int barH) {
  if (contentW <= maxW && contentH <= maxH) return {contentW, contentH};
  const ScrollLayout l = LayoutScroll(maxW, maxH, contentW, contentH, barW, barH);
  return {std::min(maxW, contentW + (l.barV ? barW : 0)),
          std::min(maxH, contentH + (l.barH ? barH : 0))};
}

int ClampScroll(int offset, int content, int view) {
  return std::clamp(offset, 0, std::max(0, content - view));
}

int ScrollForAnchor(int anchorBefore, int scrollBefore, int zoomBefore, int anchorAfter,
                    int zoomAfter) {
  const double applet =
      static_cast<double>(anchorBefore + scrollBefore) / std::max(1, zoomBefore);
  return static_cast<int>(std::lround(applet * zoomAfter)) - anchorAfter;
}

// --- The window on the screen ------------------------------------------------------------

bool FitsOnScreen(int right, int bottom, int screenClientW, int screenClientH) {
  return right <= screenClientW && bottom <= screenClientH;
}

std::pair<int, int> CentredPos(int outerW, int outerH, int screenClientW, int screenClientH) {
  return {(screenClientW - outerW) / 2, (screenClientH - outerH) / 2};
}

}  // namespace kp
