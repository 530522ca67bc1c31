#include "core/fs.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <mutex>
#include <set>
#include <signal.h>

namespace kp {

namespace {

// The system's own text, as a message box would show it.
IoStatus ErrnoFail(int err, const std::string& /*path*/) {
  bool perm = err == EACCES || err == EPERM || err == EROFS;
  return IoStatus::Fail(std::strerror(err), perm);
}

// Writes all of data, retrying short writes and interrupted calls.
bool WriteAll(int fd, const char* data, size_t size) {
  while (size > 0) {
    ssize_t n = ::write(fd, data, size);
    if (n < 0) {
      if (errno == EINTR) continue;
      return false;
    }
    data += n;
    size -= static_cast<size_t>(n);
  }
  return true;
}

std::string FolderOf(const std::string& path) {
  size_t cut = path.rfind('/');
  if (cut == std::string::npos) return "";
  return path.substr(0, cut + 1);
}

}  // namespace

namespace {

PathInfo InfoOf(const struct stat& st) {
  PathInfo info;
  if (S_ISREG(st.st_mode)) {
    info.kind = PathKind::File;
    info.size = static_cast<long long>(st.st_size);
    info.writeProtected = (st.st_mode & 0222) == 0;
  } else if (S_ISDIR(st.st_mode)) {
    info.kind = PathKind::Folder;
  } else {
    info.kind = PathKind::Other;
  }
  return info;
}

// Whole megabytes, rounded up, so a file just over the limit never reads
// as the limit itself.
std::string Megabytes(long long bytes) {
  return std::to_string((bytes + 1024 * 1024 - 1) / (1024 * 1024)) + " MB";
}

// Why a path cannot be read whole; ok for a regular file within the limit
// and for a missing path.
IoStatus Refusal(const std::string& path, const PathInfo& info) {
  switch (info.kind) {
    case PathKind::Folder: return IoStatus::Fail(path + " is a folder, not a file");
    case PathKind::Other:
      return IoStatus::Fail(path + " is not a regular file (a device, a pipe or a socket)");
    case PathKind::File:
      if (info.size > kMaxReadBytes)
        return IoStatus::Fail(path + " is " + Megabytes(info.size) + ": files over " +
                              Megabytes(kMaxReadBytes) + " are not opened");
      return {};
    case PathKind::Missing: return {};
  }
  return {};
}

}  // namespace

IoStatus CheckReadable(FileSystem& fs, const std::string& path) {
  return Refusal(path, fs.Inspect(path));
}

PathInfo DiskFileSystem::Inspect(const std::string& path) {
  struct stat st {};
  if (path.empty() || ::stat(path.c_str(), &st) != 0) return {};
  return InfoOf(st);
}

IoStatus DiskFileSystem::ReadFile(const std::string& path, std::string& out) {
  out.clear();
  // Without O_NONBLOCK, opening a pipe would wait for a writer.
  int fd = ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
  if (fd < 0) return ErrnoFail(errno, path);
  struct stat st {};
  if (::fstat(fd, &st) != 0) {
    int err = errno;
    ::close(fd);
    return ErrnoFail(err, path);
  }
  if (IoStatus refused = Refusal(path, InfoOf(st)); !refused) {
    ::close(fd);
    return refused;
  }
  // A file that grows while it is read is held to the same limit.
  out.reserve(static_cast<size_t>(st.st_size));
  char buf[65536];
  for (;;) {
    ssize_t n = ::read(fd, buf, sizeof buf);
    if (n < 0) {
      if (errno == EINTR) continue;
      int err = errno;
      ::close(fd);
      out.clear();
      return ErrnoFail(err, path);
    }
    if (n == 0) break;
    out.append(buf, static_cast<size_t>(n));
    if (static_cast<long long>(out.size()) > kMaxReadBytes) {
      ::close(fd);
      out.clear();
      return IoStatus::Fail(path + " grew past " + Megabytes(kMaxReadBytes) +
                            " while it was read: files over that are not opened");
    }
  }
  ::close(fd);
  return {};
}

namespace {

// The file a write of `path` lands in: a symbolic link is followed to its
// target, so that the link stays a link and the target gets the new text.
std::string WriteTarget(const std::string& path) {
  std::string target = path;
  for (int depth = 0; depth < 40; ++depth) {
    struct stat st {};
    if (::lstat(target.c_str(), &st) != 0 || !S_ISLNK(st.st_mode)) return target;
    char buf[4096];
    ssize_t n = ::readlink(target.c_str(), buf, sizeof buf - 1);
    if (n < 0) return target;
    std::string link(buf, static_cast<size_t>(n));
    target = !link.empty() && link[0] == '/' ? link : FolderOf(target) + link;
  }
  return target;
}

// A file whose owner took every write permission away is not replaced,
// also not by a user (root) whom the system would let.
IoStatus CheckNotProtected(const std::string& path, const std::string& shown) {
  struct stat st {};
  if (::stat(path.c_str(), &st) == 0 && S_ISREG(st.st_mode) && (st.st_mode & 0222) == 0)
    return IoStatus::Fail(shown + " is write-protected (read-only): it was not overwritten");
  return {};
}

bool IsOurTempName(const std::string& name, long& pid) {
  if (name.size() < 8 || name[0] != '.') return false;
  size_t mark = name.rfind(".tmp-");
  if (mark == std::string::npos || mark + 5 >= name.size()) return false;
  const std::string digits = name.substr(mark + 5);
  if (digits.size() > 9 || digits.find_first_not_of("0123456789") != std::string::npos)
    return false;
  pid = std::stol(digits);
  return pid > 0;
}

// Each folder is swept once per process: the first save into it clears what
// killed runs left there.
void SweepOnce(const std::string& folder) {
  static std::mutex mutex;
  static std::set<std::string> swept;
  {
    std::lock_guard<std::mutex> lock(mutex);
    if (!swept.insert(folder).second) return;
  }
  (void)RemoveStaleTemps(folder.empty() ? "." : folder);
}

// Writes blocks into a fresh temporary file beside `target` and renames it
// over `target` when all went well; any failure removes the temporary file.
class AtomicWriter {
 public:
  AtomicWriter(DiskFileSystem& fs, std::string target)
      : fs_(fs), target_(std::move(target)), temp_(TempPathFor(target_)) {}
  ~AtomicWriter() {
    if (fd_ >= 0) ::close(fd_);
    if (created_) ::unlink(temp_.c_str());
  }

  IoStatus Create(const std::string& shown) {
    if (IoStatus s = fs_.BeforeStep(DiskStep::Create, target_); !s) return s;
    fd_ = ::open(temp_.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    if (fd_ < 0) return ErrnoFail(errno, shown);
    created_ = true;
    // A replaced file keeps its permissions.
    struct stat old {};
    if (::stat(target_.c_str(), &old) == 0 && S_ISREG(old.st_mode))
      (void)::fchmod(fd_, old.st_mode & 07777);
    return {};
  }
  IoStatus Write(const char* data, size_t size, const std::string& shown) {
    if (IoStatus s = fs_.BeforeStep(DiskStep::Write, target_); !s) return s;
    if (!WriteAll(fd_, data, size)) return ErrnoFail(errno, shown);
    return {};
  }
  IoStatus Commit(const std::string& shown) {
    if (IoStatus s = fs_.BeforeStep(DiskStep::Flush, target_); !s) return s;
    if (::fsync(fd_) != 0) return ErrnoFail(errno, shown);
    int fd = fd_;
    fd_ = -1;
    if (::close(fd) != 0) return ErrnoFail(errno, shown);
    if (IoStatus s = fs_.BeforeStep(DiskStep::Rename, target_); !s) return s;
    if (::rename(temp_.c_str(), target_.c_str()) != 0) return ErrnoFail(errno, shown);
    created_ = false;
    return {};
  }

 private:
  DiskFileSystem& fs_;
  std::string target_;
  std::string temp_;
  int fd_ = -1;
  bool created_ = false;
};

}  // namespace

std::string TempPathFor(const std::string& path) {
  const std::string folder = FolderOf(path);
  return folder + "." + path.substr(folder.size()) + ".tmp-" + std::to_string(::getpid());
}

int RemoveStaleTemps(const std::string& folder) {
  int removed = 0;
  const long self = static_cast<long>(::getpid());
  std::error_code ec;
  std::filesystem::directory_iterator it(folder, ec), end;
  for (; !ec && it != end; it.increment(ec)) {
    const std::string name = it->path().filename().string();
    long pid = 0;
    if (!IsOurTempName(name, pid) || pid == self) continue;
    std::error_code ec2;
    if (!it->is_regular_file(ec2)) continue;
    // A process that still runs may be writing it; only a gone one's file
    // is a leftover.
    if (::kill(static_cast<pid_t>(pid), 0) == 0 || errno != ESRCH) continue;
    if (::unlink(it->path().c_str()) == 0) ++removed;
  }
  return removed;
}

IoStatus DiskFileSystem::WriteFileAtomic(const std::string& path, std::string_view data) {
  std::string name = path.substr(FolderOf(path).size());
  if (name.empty()) return ErrnoFail(EISDIR, path);
  const std::string target = WriteTarget(path);
  if (IoStatus s = CheckNotProtected(target, path); !s) return s;
  SweepOnce(FolderOf(target));

  AtomicWriter w(*this, target);
  if (IoStatus s = w.Create(path); !s) return s;
  if (IoStatus s = w.Write(data.data(), data.size(), path); !s) return s;
  return w.Commit(path);
}

IoStatus DiskFileSystem::CopyFile(const std::string& from, const std::string& to) {
  struct stat src {};
  if (::stat(from.c_str(), &src) != 0) return ErrnoFail(errno, from);
  if (S_ISDIR(src.st_mode)) return ErrnoFail(EISDIR, from);
  struct stat dst {};
  if (from == to ||
      (::stat(to.c_str(), &dst) == 0 && dst.st_dev == src.st_dev && dst.st_ino == src.st_ino)) {
    IoStatus same = IoStatus::Fail("Cannot copy a file onto itself", true);
    same.sameFile = true;
    return same;
  }
  if (to.empty() || to.back() == '/') return ErrnoFail(EISDIR, to);
  const std::string target = WriteTarget(to);
  if (IoStatus s = CheckNotProtected(target, to); !s) return s;

  int in = ::open(from.c_str(), O_RDONLY | O_CLOEXEC);
  if (in < 0) return ErrnoFail(errno, from);
  SweepOnce(FolderOf(target));
  AtomicWriter w(*this, target);
  IoStatus result = w.Create(to);
  char buf[65536];
  while (result) {
    ssize_t n = ::read(in, buf, sizeof buf);
    if (n < 0) {
      if (errno == EINTR) continue;
      result = ErrnoFail(errno, from);
      break;
    }
    if (n == 0) break;
    result = w.Write(buf, static_cast<size_t>(n), to);
  }
  ::close(in);
  if (!result) return result;
  return w.Commit(to);
}

IoStatus DiskFileSystem::RemoveFile(const std::string& path) {
  if (::unlink(path.c_str()) != 0) return ErrnoFail(errno, path);
  return {};
}

IoStatus DiskFileSystem::MakeDir(const std::string& path) {
  if (::mkdir(path.c_str(), 0777) != 0) return ErrnoFail(errno, path);
  return {};
}

bool DiskFileSystem::FileExists(const std::string& path) {
  if (path.empty()) return false;
  struct stat st {};
  if (::stat(path.c_str(), &st) != 0 || !S_ISREG(st.st_mode)) return false;
  int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (fd < 0) return false;
  ::close(fd);
  return true;
}

bool DiskFileSystem::DirExists(const std::string& path) {
  if (path.empty()) return false;
  struct stat st {};
  return ::stat(path.c_str(), &st) == 0 && S_ISDIR(st.st_mode);
}

std::vector<std::string> DiskFileSystem::ListFiles(const std::string& dir) {
  std::vector<std::string> names;
  std::error_code ec;
  std::filesystem::directory_iterator it(dir, ec), end;
  for (; !ec && it != end; it.increment(ec)) {
    std::error_code ec2;
    if (it->is_regular_file(ec2)) names.push_back(it->path().filename().string());
  }
  std::sort(names.begin(), names.end());
  return names;
}

IoStatus DiskFileSystem::ChangeDir(const std::string& path) {
  if (::chdir(path.c_str()) != 0) return ErrnoFail(errno, path);
  return {};
}

}  // namespace kp
