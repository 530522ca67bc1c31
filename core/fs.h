// All file-system access of the plain layers. Paths are byte strings; on
// this platform a path is absolute when it starts with "/". Errors are
// returned as values carrying the system's own text.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kp {

struct IoStatus {
  bool ok = true;
  std::string message;  // the failure's text when !ok
  // Failures that the program treats like "permission denied" or "copy onto
  // itself" (silenced in copy loops).
  bool permissionLike = false;
  // The copy's source and target are one file: it is already where it
  // should be, which is no failure of the copy loops.
  bool sameFile = false;
  explicit operator bool() const { return ok; }
  static IoStatus Fail(std::string m, bool perm = false) { return {false, std::move(m), perm}; }
};

// The most a file read whole may hold. No project, page or settings file
// comes near it; anything larger is refused before a byte is read.
inline constexpr long long kMaxReadBytes = 256LL * 1024 * 1024;

// What a path names, as far as reading it whole is concerned.
enum class PathKind {
  Missing,  // nothing there, or nothing the caller may look at
  File,     // a regular file
  Folder,
  Other,    // a device, a pipe, a socket: reading may never end
};
struct PathInfo {
  PathKind kind = PathKind::Missing;
  long long size = 0;  // bytes, for a regular file
  // A regular file whose owner took every write permission away: it is not
  // replaced, whoever asks.
  bool writeProtected = false;
};

class FileSystem {
 public:
  virtual ~FileSystem() = default;
  // Reads a regular file of at most kMaxReadBytes; a folder, a device, a
  // pipe or a larger file fails at once, without reading.
  virtual IoStatus ReadFile(const std::string& path, std::string& out) = 0;
  // What the path names, found without opening it (opening a pipe waits
  // for its writer).
  virtual PathInfo Inspect(const std::string& path) = 0;
  // Writes the whole content to a temporary file beside `path` and renames
  // it over `path` only when complete: on failure the old file is untouched
  // and no temporary file is left. A write-protected file is not replaced;
  // a symbolic link is written through to its target.
  virtual IoStatus WriteFileAtomic(const std::string& path, std::string_view data) = 0;
  // The same for a copy: an interrupted or failed copy leaves the previous
  // `to` as it was.
  virtual IoStatus CopyFile(const std::string& from, const std::string& to) = 0;
  virtual IoStatus RemoveFile(const std::string& path) = 0;
  virtual IoStatus MakeDir(const std::string& path) = 0;
  // True when a regular file can be opened for its length.
  virtual bool FileExists(const std::string& path) = 0;
  virtual bool DirExists(const std::string& path) = 0;
  // Names (not paths) of the regular files in a folder.
  virtual std::vector<std::string> ListFiles(const std::string& dir) = 0;
  virtual IoStatus ChangeDir(const std::string& path) = 0;
};

// The steps of a write or copy on the real disk, each of which can fail
// (a full disk, a lost medium): the temporary file made, one block written,
// the data flushed, the temporary file renamed over the target.
enum class DiskStep { Create, Write, Flush, Rename };

// The real disk.
class DiskFileSystem : public FileSystem {
 public:
  IoStatus ReadFile(const std::string& path, std::string& out) override;
  PathInfo Inspect(const std::string& path) override;
  IoStatus WriteFileAtomic(const std::string& path, std::string_view data) override;
  IoStatus CopyFile(const std::string& from, const std::string& to) override;
  IoStatus RemoveFile(const std::string& path) override;
  IoStatus MakeDir(const std::string& path) override;
  bool FileExists(const std::string& path) override;
  bool DirExists(const std::string& path) override;
  std::vector<std::string> ListFiles(const std::string& dir) override;
  IoStatus ChangeDir(const std::string& path) override;

  // Called before each step; a failure is handled as the system's own
  // would be. Tests override it to fail any step in turn.
  virtual IoStatus BeforeStep(DiskStep /*step*/, const std::string& /*path*/) { return {}; }
};

// Our temporary files carry the writing process's id: "." + name + ".tmp-" +
// pid. Removes those in `folder` whose process is gone (a kill or a crash
// left them); the number removed.
int RemoveStaleTemps(const std::string& folder);
// The temporary name a write of `path` uses in this process.
std::string TempPathFor(const std::string& path);

// Fails with a message that says what the path is when it names something
// that cannot be read whole: a folder, a device or pipe, a file larger than
// kMaxReadBytes. A missing path passes: the read says so in the system's
// own words.
IoStatus CheckReadable(FileSystem& fs, const std::string& path);

}  // namespace kp
