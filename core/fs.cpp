#include "core/fs.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>

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

IoStatus DiskFileSystem::WriteFileAtomic(const std::string& path, std::string_view data) {
  std::string name = path.substr(FolderOf(path).size());
  if (name.empty()) return ErrnoFail(EISDIR, path);
  std::string temp = FolderOf(path) + "." + name + ".tmp-" + std::to_string(::getpid());

  int fd = ::open(temp.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
  if (fd < 0) return ErrnoFail(errno, path);
  // A replaced file keeps its permissions.
  struct stat old {};
  if (::stat(path.c_str(), &old) == 0 && S_ISREG(old.st_mode))
    (void)::fchmod(fd, old.st_mode & 07777);

  int err = 0;
  if (!WriteAll(fd, data.data(), data.size())) err = errno;
  if (err == 0 && ::fsync(fd) != 0) err = errno;
  if (::close(fd) != 0 && err == 0) err = errno;
  if (err == 0 && ::rename(temp.c_str(), path.c_str()) != 0) err = errno;
  if (err != 0) {
    ::unlink(temp.c_str());
    return ErrnoFail(err, path);
  }
  return {};
}

IoStatus DiskFileSystem::CopyFile(const std::string& from, const std::string& to) {
  struct stat src {};
  if (::stat(from.c_str(), &src) != 0) return ErrnoFail(errno, from);
  if (S_ISDIR(src.st_mode)) return ErrnoFail(EISDIR, from);
  struct stat dst {};
  if (from == to ||
      (::stat(to.c_str(), &dst) == 0 && dst.st_dev == src.st_dev && dst.st_ino == src.st_ino)) {
    return IoStatus::Fail("Cannot copy a file onto itself", true);
  }

  int in = ::open(from.c_str(), O_RDONLY | O_CLOEXEC);
  if (in < 0) return ErrnoFail(errno, from);
  int out = ::open(to.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
  if (out < 0) {
    int err = errno;
    ::close(in);
    return ErrnoFail(err, to);
  }
  char buf[65536];
  int err = 0;
  std::string failedPath = to;
  for (;;) {
    ssize_t n = ::read(in, buf, sizeof buf);
    if (n < 0) {
      if (errno == EINTR) continue;
      err = errno;
      failedPath = from;
      break;
    }
    if (n == 0) break;
    if (!WriteAll(out, buf, static_cast<size_t>(n))) {
      err = errno;
      break;
    }
  }
  ::close(in);
  if (::close(out) != 0 && err == 0) err = errno;
  if (err != 0) return ErrnoFail(err, failedPath);
  return {};
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
