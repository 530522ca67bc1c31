// kp_textmetrics: the designer's text advances, for the player.
//
//   kp_textmetrics table OUT.js   writes the advance table joined into the player
//   kp_textmetrics widths         prints the designer's widths of sample lines (JSON)
//   kp_textmetrics check          fails when the table's fonts measure otherwise
//                                 than the designer's QtTextMeasure
//
// A browser lays text out with unhinted advances; the designer's hinted,
// unantialiased fonts give every character a whole-pixel advance that is
// often one or more pixels off the rounded design advance. The table holds
// each face's design advances and, per pixel size, only the characters
// whose hinted advance differs from the rounded design one, so the player
// can place every glyph where the designer does.

#include <QFont>
#include <QFontInfo>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <QRawFont>
#include <QString>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <string>
#include <vector>

#include "render/text.h"

namespace {

// Windows-1252 0x80-0x9F; 0 where the code page leaves a byte undefined.
constexpr char16_t kCp1252High[32] = {
    0x20AC, 0, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0,      0x017D, 0,      0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

// The characters a project's text can hold, in table order: printable
// ASCII, printable Latin-1, then the code page's own characters.
std::vector<char16_t> TableCodes() {
  std::vector<char16_t> codes;
  for (char16_t c = 32; c <= 126; ++c) codes.push_back(c);
  for (char16_t c = 160; c <= 255; ++c) codes.push_back(c);
  for (char16_t c : kCp1252High)
    if (c) codes.push_back(c);
  return codes;
}

// The byte of a project text that shows code point c.
std::string Cp1252Of(char16_t c) {
  if (c < 0x80 || (c >= 0xA0 && c <= 0xFF)) return std::string(1, static_cast<char>(c));
  for (int k = 0; k < 32; ++k)
    if (kCp1252High[k] == c) return std::string(1, static_cast<char>(0x80 + k));
  return {};
}

struct Face {
  const char* family;
  int style;  // 1 bold, 2 italic
};

const char* const kFamilies[] = {"Arial", "Courier New", "Times New Roman"};
// Pixel sizes with listed advances; larger sizes use the rounded design
// advances.
constexpr int kMaxPixelSize = 255;
constexpr int kSoftHyphen = 0xAD;

// The designer's font (render/text.cpp) at a pixel size; `check` holds the
// two to the same measurements.
QFont DesignerFont(const char* family, int style, int pixelSize) {
  QFont f{QString::fromLatin1(family)};
  f.setPixelSize(pixelSize);
  f.setBold(style & 1);
  f.setItalic(style & 2);
  f.setKerning(false);
  f.setStyleStrategy(QFont::NoAntialias);
  f.setHintingPreference(QFont::PreferFullHinting);
  return f;
}

struct FaceMetrics {
  int upem = 0;
  std::vector<int> units;  // design advance a code
};

FaceMetrics DesignMetrics(const char* family, int style, const std::vector<char16_t>& codes) {
  QFont f = DesignerFont(family, style, 64);
  f.setHintingPreference(QFont::PreferNoHinting);
  QRawFont raw = QRawFont::fromFont(f);
  FaceMetrics m;
  m.upem = static_cast<int>(std::lround(raw.unitsPerEm()));
  raw.setPixelSize(m.upem);
  for (char16_t c : codes) {
    const QList<quint32> glyphs = raw.glyphIndexesForString(QString(QChar(c)));
    double a = 0;
    if (!glyphs.isEmpty()) {
      const QList<QPointF> adv = raw.advancesForGlyphIndexes(glyphs, QRawFont::UseDesignMetrics);
      a = adv.isEmpty() ? 0 : adv[0].x();
    }
    m.units.push_back(static_cast<int>(std::lround(a)));
  }
  return m;
}

int RoundedDesign(int units, int px, int upem) {
  return static_cast<int>(std::floor(static_cast<double>(units) * px / upem + 0.5));
}

// The hinted advance of one character alone. A soft hyphen takes no room
// inside a line (the player knows), so its listed advance is the rounded
// design one.
int HintedAdvance(const QFontMetricsF& fm, char16_t c, int units, int px, int upem) {
  if (c == kSoftHyphen) return RoundedDesign(units, px, upem);
  return static_cast<int>(std::lround(fm.horizontalAdvance(QChar(c))));
}

// Printable ASCII without the quote and the backslash: 91 digits.
char Digit(int v) {
  const char c = static_cast<char>(0x23 + v);
  return c >= '\\' ? static_cast<char>(c + 1) : c;
}

// One pixel size's differences: each is the gap to the code before it and
// the difference itself. Gaps below 32 with a difference of one either way
// take one digit; others a digit for the difference (64 + 0..15) and one
// for the gap, after as many skip digits (80, 91 codes each) as needed.
bool EncodeDeviations(const std::vector<int>& dev, std::string& out) {
  int last = -1;
  for (int i = 0; i < static_cast<int>(dev.size()); ++i) {
    const int d = dev[static_cast<size_t>(i)];
    if (!d) continue;
    int gap = i - last - 1;
    last = i;
    if (gap < 32 && (d == 1 || d == -1)) {
      out += Digit(gap * 2 + (d > 0 ? 1 : 0));
      continue;
    }
    if (d < -8 || d > 8) return false;
    while (gap >= 91) {
      out += Digit(80);
      gap -= 91;
    }
    out += Digit(64 + (d < 0 ? -d - 1 : d + 7));
    out += Digit(gap);
  }
  return true;
}

std::string JsString(const std::string& s) { return '"' + s + '"'; }

int WriteTable(const char* path) {
  const std::vector<char16_t> codes = TableCodes();
  std::string js;
  js += "\n// The designer's advances (generated by kp_textmetrics from the fonts it\n"
        "// measured with): per face the design advances of KP.QtAdvances.codes and,\n"
        "// per pixel size up to `max`, the hinted advances that differ from the\n"
        "// rounded design ones.\n";
  js += "KP.QtAdvances = {\n  max: " + std::to_string(kMaxPixelSize) + ",\n  codes: [";
  for (size_t i = 0; i < codes.size(); ++i) js += (i ? "," : "") + std::to_string(codes[i]);
  js += "],\n  faces: {\n";
  size_t entries = 0;
  for (const char* family : kFamilies) {
    for (int style = 0; style < 4; ++style) {
      const FaceMetrics m = DesignMetrics(family, style, codes);
      if (m.upem <= 0) {
        std::fprintf(stderr, "kp_textmetrics: no outline font for %s\n", family);
        return 1;
      }
      std::string units;
      for (int u : m.units) {
        if (u < 0 || u >= 91 * 91) {
          std::fprintf(stderr, "kp_textmetrics: advance %d out of range in %s\n", u, family);
          return 1;
        }
        units += Digit(u / 91);
        units += Digit(u % 91);
      }
      std::string devs;
      for (int px = 1; px <= kMaxPixelSize; ++px) {
        const QFontMetricsF fm(DesignerFont(family, style, px));
        std::vector<int> dev(codes.size());
        for (size_t i = 0; i < codes.size(); ++i) {
          dev[i] = HintedAdvance(fm, codes[i], m.units[i], px, m.upem) -
                   RoundedDesign(m.units[i], px, m.upem);
          if (dev[i]) ++entries;
        }
        if (px > 1) devs += '!';
        if (!EncodeDeviations(dev, devs)) {
          std::fprintf(stderr, "kp_textmetrics: hinted advance far off in %s at %d px\n", family, px);
          return 1;
        }
      }
      const QString actual = QFontInfo(DesignerFont(family, style, 13)).family();
      js += "    " + JsString(std::string(family) + "/" + std::to_string(style)) + ": { upem: " +
            std::to_string(m.upem) + ", family: " + JsString(actual.toStdString()) +
            ",\n      units: " + JsString(units) + ",\n      dev: " + JsString(devs) + " },\n";
    }
  }
  js += "  },\n};\n";
  std::ofstream out(path, std::ios::binary);
  out << js;
  out.close();
  if (!out) {
    std::fprintf(stderr, "kp_textmetrics: cannot write %s\n", path);
    return 1;
  }
  std::printf("kp_textmetrics: %zu differing advances, %zu bytes\n", entries, js.size());
  return 0;
}

// Sample lines: words, sentences, every table character in one line, and
// soft hyphens inside and at the end of a line.
std::vector<std::string> SampleLines() {
  std::vector<std::string> lines = {
      "Search", "Home Page", "WAVE Ta", "Kontakt & Impressum", "quilt jig 1234567890",
      "The quick brown fox jumps over the lazy dog.", "fi fl ffi AV To LT", "x\xADy\xAD",
      "\xAD", "  lead and trail  ", "R\xE9sum\xE9 \xC0 la fa\xE7on \xDF\xFF",
      "\x80 \x84\x85\x89 \x8C\x9C \x93quoted\x94 \x96 \x97 \x99", "|||iii...,,,"};
  std::string ascii, latin;
  for (int c = 32; c <= 126; ++c) ascii += static_cast<char>(c);
  for (int c = 160; c <= 255; ++c) latin += static_cast<char>(c);
  lines.push_back(ascii);
  lines.push_back(latin);
  return lines;
}

std::string JsonText(const std::string& bytes) {
  std::string out = "\"";
  char buf[8];
  for (unsigned char b : bytes) {
    char16_t c = b;
    if (b >= 0x80 && b < 0xA0) c = kCp1252High[b - 0x80] ? kCp1252High[b - 0x80] : b;
    if (c >= 0x20 && c < 0x7F && c != '"' && c != '\\') {
      out += static_cast<char>(c);
    } else {
      std::snprintf(buf, sizeof buf, "\\u%04x", static_cast<unsigned>(c));
      out += buf;
    }
  }
  return out + '"';
}

std::string Number(double v) {
  char buf[32];
  std::snprintf(buf, sizeof buf, "%.9g", v);
  return buf;
}

// The designer's own measure over every point size up to 72 px.
int PrintWidths() {
  kp::QtTextMeasure measure;
  const std::vector<std::string> lines = SampleLines();
  std::printf("[\n");
  bool first = true;
  for (const char* family : kFamilies) {
    for (int style = 0; style < 4; ++style) {
      for (kp::i16 pt = 1; kp::PixelSizeOf(pt) <= 72; ++pt) {
        const kp::FontSpec font{family, pt, (style & 1) != 0, (style & 2) != 0};
        for (const std::string& line : lines) {
          // The pen position before each character is the width of the
          // characters before it.
          std::string pens;
          for (size_t k = 1; k < line.size(); ++k)
            pens += (k > 1 ? "," : "") + Number(measure.TextWidth(font, line.substr(0, k)));
          std::printf("%s{\"name\":\"%s\",\"size\":%d,\"bold\":%s,\"italic\":%s,\"text\":%s,"
                      "\"width\":%s,\"pens\":[0%s%s]}",
                      first ? "" : ",\n", family, kp::PixelSizeOf(pt), font.bold ? "true" : "false",
                      font.italic ? "true" : "false", JsonText(line).c_str(),
                      Number(measure.TextWidth(font, line)).c_str(), pens.empty() ? "" : ",",
                      pens.c_str());
          first = false;
        }
      }
    }
  }
  std::printf("\n]\n");
  return 0;
}

// The table's fonts measure every character as the designer's measure does
// at every size a project can reach, and whole lines add up.
int Check() {
  kp::QtTextMeasure measure;
  const std::vector<char16_t> codes = TableCodes();
  int failures = 0;
  for (const char* family : kFamilies) {
    for (int style = 0; style < 4; ++style) {
      const FaceMetrics m = DesignMetrics(family, style, codes);
      for (kp::i16 pt = 1; kp::PixelSizeOf(pt) <= kMaxPixelSize; ++pt) {
        const int px = kp::PixelSizeOf(pt);
        const kp::FontSpec font{family, pt, (style & 1) != 0, (style & 2) != 0};
        const QFontMetricsF fm(DesignerFont(family, style, px));
        std::string all;
        double sum = 0;
        for (size_t i = 0; i < codes.size(); ++i) {
          const std::string byte = Cp1252Of(codes[i]);
          const int mine =
              codes[i] == kSoftHyphen ? 0 : HintedAdvance(fm, codes[i], m.units[i], px, m.upem);
          const double theirs = measure.TextWidth(font, byte);
          if (theirs != mine && failures++ < 20)
            std::fprintf(stderr, "%s/%d %d px U+%04X: table %d, designer %g\n", family, style, px,
                         static_cast<unsigned>(codes[i]), mine, theirs);
          sum += mine;
          all += byte;
        }
        const double line = measure.TextWidth(font, all);
        if (line != sum && failures++ < 20)
          std::fprintf(stderr, "%s/%d %d px: line of all characters %g, table %g\n", family, style, px,
                       line, sum);
      }
    }
  }
  if (failures) {
    std::fprintf(stderr, "kp_textmetrics: %d differences\n", failures);
    return 1;
  }
  std::printf("kp_textmetrics: the table's fonts measure as the designer's\n");
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  QGuiApplication app(argc, argv);
  const std::string mode = argc > 1 ? argv[1] : "";
  if (mode == "table" && argc == 3) return WriteTable(argv[2]);
  if (mode == "widths" && argc == 2) return PrintWidths();
  if (mode == "check" && argc == 2) return Check();
  std::fprintf(stderr, "usage: kp_textmetrics table OUT.js | widths | check\n");
  return 2;
}
