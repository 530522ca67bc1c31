#include "properties/pic_browser_model.h"

#include <algorithm>
#include <cctype>

namespace kp {

namespace {

char Lower(char c) { return static_cast<char>(std::tolower(static_cast<unsigned char>(c))); }

bool EndsWithNoCase(std::string_view s, std::string_view tail) {
  if (s.size() < tail.size()) return false;
  const std::string_view end = s.substr(s.size() - tail.size());
  return std::equal(end.begin(), end.end(), tail.begin(),
                    [](char a, char b) { return Lower(a) == Lower(b); });
}

}  // namespace

bool IsPictureName(std::string_view name) {
  // "*.jpg" needs at least the dot and the extension; ".jpg" alone is a
  // hidden file with an empty stem, which the pattern still takes.
  return EndsWithNoCase(name, ".jpg") || EndsWithNoCase(name, ".gif");
}

std::vector<std::string> PictureNames(std::vector<std::string> names) {
  std::erase_if(names, [](const std::string& n) { return !IsPictureName(n); });
  std::sort(names.begin(), names.end(), [](const std::string& a, const std::string& b) {
    const bool less = std::lexicographical_compare(
        a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) { return Lower(x) < Lower(y); });
    const bool more = std::lexicographical_compare(
        b.begin(), b.end(), a.begin(), a.end(), [](char x, char y) { return Lower(x) < Lower(y); });
    return less || (!more && a < b);
  });
  return names;
}

int ScrollMax(int files) { return std::max(0, files - 2); }

int FileOfCell(int scroll, int cell, int files) {
  const int k = scroll + cell;
  return k >= 0 && k < files ? k : -1;
}

CellRect FitInBox(int w, int h, const CellRect& box) {
  if (w <= 0 || h <= 0 || box.width <= 0 || box.height <= 0) return {box.x, box.y, 0, 0};
  int fw = w, fh = h;
  if (w > box.width || h > box.height) {
    // Wider in proportion than the box: the width fills it.
    if (static_cast<long long>(w) * box.height > static_cast<long long>(h) * box.width) {
      fw = box.width;
      fh = std::max(1, static_cast<int>(static_cast<long long>(h) * box.width / w));
    } else {
      fh = box.height;
      fw = std::max(1, static_cast<int>(static_cast<long long>(w) * box.height / h));
    }
  }
  return {box.x + (box.width - fw) / 2, box.y + (box.height - fh) / 2, fw, fh};
}

std::string JoinPicturePath(const std::string& folder, const std::string& name) {
  if (!folder.empty() && folder.back() == '/') return folder + name;
  return folder + "/" + name;
}

int SelectedCell(const std::string& selection, const std::string& folder,
                 const std::vector<std::string>& files, int scroll) {
  if (selection.empty()) return -1;
  for (int cell = 0; cell < kPicCells; ++cell) {
    const int k = FileOfCell(scroll, cell, static_cast<int>(files.size()));
    if (k >= 0 && JoinPicturePath(folder, files[static_cast<size_t>(k)]) == selection) return cell;
  }
  return -1;
}

}  // namespace kp
