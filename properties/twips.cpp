#include "properties/twips.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>

namespace kp {

Geometry TwipsOf(const QWidget* w) {
  return {PixelsToTwips(w->x()), PixelsToTwips(w->y()), PixelsToTwips(w->width()),
          PixelsToTwips(w->height())};
}

void WriteSizesOf(Env& env, const QWidget* w, const std::string& formName) {
  WriteSizes(env, formName, TwipsOf(w));
}

void ReadSizesInto(Env& env, QWidget* w, const std::string& formName, bool positionOnly) {
  QScreen* screen = w->screen() ? w->screen() : QGuiApplication::primaryScreen();
  QRect avail = screen ? screen->availableGeometry() : QRect(0, 0, 1024, 768);
  const Geometry current = TwipsOf(w);
  Geometry g = ReadSizes(env, formName, current, PixelsToTwips(avail.width()),
                         PixelsToTwips(avail.height()));
  if (g == current) return;
  w->move(TwipsToPixels(g.left), TwipsToPixels(g.top));
  if (!positionOnly) w->resize(TwipsToPixels(g.width), TwipsToPixels(g.height));
}

}  // namespace kp
