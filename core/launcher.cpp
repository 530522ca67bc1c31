#include "core/launcher.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/types.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace kp {

namespace {

// Reads the child's exec failure (an errno) from the pipe; 0 when the pipe
// closed without a word, which means the exec succeeded.
int ReadExecError(int fd) {
  int err = 0;
  ssize_t got = 0;
  char* dst = reinterpret_cast<char*>(&err);
  while (got < static_cast<ssize_t>(sizeof err)) {
    ssize_t n = ::read(fd, dst + got, sizeof err - static_cast<size_t>(got));
    if (n < 0 && errno == EINTR) continue;
    if (n <= 0) break;
    got += n;
  }
  return got == static_cast<ssize_t>(sizeof err) ? err : 0;
}

[[noreturn]] void ExecOrReport(const std::string& program, const std::vector<std::string>& args,
                               const std::string& workDir, int errFd) {
  std::vector<char*> argv;
  argv.push_back(const_cast<char*>(program.c_str()));
  for (const std::string& a : args) argv.push_back(const_cast<char*>(a.c_str()));
  argv.push_back(nullptr);
  int err = 0;
  if (!workDir.empty() && ::chdir(workDir.c_str()) != 0) err = errno;
  if (err == 0) {
    ::execvp(program.c_str(), argv.data());
    err = errno;
  }
  ssize_t ignored = ::write(errFd, &err, sizeof err);
  (void)ignored;
  ::_exit(127);
}

}  // namespace

IoStatus PosixLauncher::Open(const std::string& path) { return Run(opener, {path}, true); }

IoStatus PosixLauncher::Explore(const std::string& folder) { return Run(opener, {folder}, true); }

IoStatus PosixLauncher::Run(const std::string& program, const std::vector<std::string>& args,
                            bool detached, const std::string& workDir) {
  if (program.empty()) return IoStatus::Fail(std::strerror(ENOENT));
  int fds[2];
  if (::pipe2(fds, O_CLOEXEC) != 0) return IoStatus::Fail(std::strerror(errno));

  pid_t pid = ::fork();
  if (pid < 0) {
    int err = errno;
    ::close(fds[0]);
    ::close(fds[1]);
    return IoStatus::Fail(std::strerror(err));
  }
  if (pid == 0) {
    ::close(fds[0]);
    if (detached) {
      // A new session, and a grandchild that init adopts: nothing of ours
      // waits for it and it outlives us.
      ::setsid();
      ::signal(SIGHUP, SIG_IGN);
      pid_t grand = ::fork();
      if (grand < 0) {
        int err = errno;
        ssize_t ignored = ::write(fds[1], &err, sizeof err);
        (void)ignored;
        ::_exit(127);
      }
      if (grand > 0) ::_exit(0);
      int null = ::open("/dev/null", O_RDWR);
      if (null >= 0) {
        ::dup2(null, 0);
        ::dup2(null, 1);
        ::dup2(null, 2);
        if (null > 2) ::close(null);
      }
    }
    ExecOrReport(program, args, workDir, fds[1]);
  }

  ::close(fds[1]);
  // The pipe closes when the exec succeeded (close-on-exec) or after the
  // failure was written.
  int execErr = ReadExecError(fds[0]);
  ::close(fds[0]);
  int status = 0;
  while (::waitpid(pid, &status, 0) < 0 && errno == EINTR) {
  }
  if (execErr != 0) return IoStatus::Fail(std::strerror(execErr));
  if (detached) return {};
  if (WIFEXITED(status) && WEXITSTATUS(status) == 0) return {};
  if (WIFEXITED(status))
    return IoStatus::Fail(program + " ended with exit code " + std::to_string(WEXITSTATUS(status)));
  return IoStatus::Fail(program + " was ended by a signal");
}

IoStatus PosixLauncher::RunForErrors(const std::string& program,
                                     const std::vector<std::string>& args, std::string& errors) {
  errors.clear();
  if (program.empty()) return IoStatus::Fail(std::strerror(ENOENT));
  int execFds[2];
  int errFds[2];
  if (::pipe2(execFds, O_CLOEXEC) != 0) return IoStatus::Fail(std::strerror(errno));
  if (::pipe2(errFds, O_CLOEXEC) != 0) {
    int err = errno;
    ::close(execFds[0]);
    ::close(execFds[1]);
    return IoStatus::Fail(std::strerror(err));
  }
  pid_t pid = ::fork();
  if (pid < 0) {
    int err = errno;
    for (int fd : {execFds[0], execFds[1], errFds[0], errFds[1]}) ::close(fd);
    return IoStatus::Fail(std::strerror(err));
  }
  if (pid == 0) {
    ::close(execFds[0]);
    ::close(errFds[0]);
    ::dup2(errFds[1], 2);  // dup2 clears close-on-exec on the copy
    ExecOrReport(program, args, "", execFds[1]);
  }
  ::close(execFds[1]);
  ::close(errFds[1]);
  int execErr = ReadExecError(execFds[0]);
  ::close(execFds[0]);
  char buf[4096];
  for (;;) {
    ssize_t n = ::read(errFds[0], buf, sizeof buf);
    if (n < 0 && errno == EINTR) continue;
    if (n <= 0) break;
    // A tool that talks on and on: its first words are the reason.
    if (errors.size() < 64 * 1024) errors.append(buf, static_cast<size_t>(n));
  }
  ::close(errFds[0]);
  int status = 0;
  while (::waitpid(pid, &status, 0) < 0 && errno == EINTR) {
  }
  if (execErr != 0) return IoStatus::Fail(std::strerror(execErr));
  if (WIFEXITED(status) && WEXITSTATUS(status) == 0) return {};
  if (WIFEXITED(status))
    return IoStatus::Fail(program + " ended with exit code " + std::to_string(WEXITSTATUS(status)));
  return IoStatus::Fail(program + " was ended by a signal");
}

}  // namespace kp
