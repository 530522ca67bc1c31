// The picture browser's decisions, without its window: which files of a
// folder are pictures, the pages of four, where a thumbnail stands in its
// cell, and when the selection frame shows.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kp {

inline constexpr int kPicCells = 4;
// The hidden file list's pattern.
inline constexpr const char* kPicPattern = "*.jpg;*.gif";

// True for a name that the pattern takes. Letter case does not matter: a
// camera's "IMG_1.JPG" is as much a picture as "a.jpg".
bool IsPictureName(std::string_view name);
// The picture names among `names`, in the order a file list shows them
// (case-insensitive, then byte order).
std::vector<std::string> PictureNames(std::vector<std::string> names);

// The scroll bar's maximum for `files` files: files minus 2, never below 0.
int ScrollMax(int files);
// The file shown in `cell` (0..3) of the page starting at `scroll`, or -1
// past the last file.
int FileOfCell(int scroll, int cell, int files);

struct CellRect {
  int x = 0, y = 0, width = 0, height = 0;
  bool operator==(const CellRect&) const = default;
};
// A picture of that size in the box: the aspect ratio kept, the side that
// is wider in proportion filling the box, never enlarged, centred.
CellRect FitInBox(int pictureWidth, int pictureHeight, const CellRect& box);

// Folder and file name joined with one separator.
std::string JoinPicturePath(const std::string& folder, const std::string& name);

// The cell (0..3) of the page that shows `selection`, -1 when the page does
// not show it (the selection frame is hidden then).
int SelectedCell(const std::string& selection, const std::string& folder,
                 const std::vector<std::string>& files, int scroll);

}  // namespace kp
