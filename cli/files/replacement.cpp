#include "cli/files/replacement.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>

namespace orvane::cli {
namespace {

constexpr mode_t kReadWrite = S_IRUSR | S_IWUSR | S_IRGRP | S_IWGRP | S_IROTH | S_IWOTH;
constexpr mode_t kPermissions = S_IRWXU | S_IRWXG | S_IRWXO;

// The path of the file that is to take a place but has not yet.
std::atomic<const char*> unfinished = nullptr;

// The signals that do not end a process, and so leave nothing behind.
constexpr std::array kHarmless = {SIGCHLD, SIGCONT, SIGSTOP, SIGTSTP,
                                  SIGTTIN, SIGTTOU, SIGURG,  SIGWINCH};

void endBy(int signal) {
  removeUnfinished();
  ::raise(signal);  // waits until this returns, and then does what it does without a handler
}

// A signal that ends the process takes the unfinished file along.
void watchSignals() {
  struct sigaction action {};
  for (int signal = 1; signal <= SIGRTMAX; ++signal) {
    if (std::ranges::find(kHarmless, signal) != kHarmless.end()) continue;
    if (::sigaction(signal, nullptr, &action) != 0 || action.sa_handler != SIG_DFL) continue;
    action.sa_handler = endBy;
    action.sa_flags = static_cast<int>(SA_RESETHAND);
    ::sigaction(signal, &action, nullptr);
  }
}

// Lets no signal come between the making of a file and the note of its path.
class SignalsHeld {
 public:
  SignalsHeld() {
    sigset_t all;
    ::sigfillset(&all);
    ::sigprocmask(SIG_SETMASK, &all, &before_);
  }
  SignalsHeld(const SignalsHeld&) = delete;
  SignalsHeld& operator=(const SignalsHeld&) = delete;
  ~SignalsHeld() { ::sigprocmask(SIG_SETMASK, &before_, nullptr); }

 private:
  sigset_t before_{};
};

std::filesystem::path directoryOf(const std::filesystem::path& target) {
  return target.has_parent_path() ? target.parent_path() : ".";
}

// Hidden, so that no one who reads a whole directory takes it for a finished one, and short, since
// the name of the target may be as long as names can be.
constexpr const char* kPattern = ".orvane-XXXXXX";

int makeUnique(std::string& path) {
  const SignalsHeld held;
  watchSignals();
  const int descriptor = ::mkostemp(path.data(), O_CLOEXEC);
  if (descriptor >= 0) unfinished = path.c_str();
  return descriptor;
}

}  // namespace

Replacement::Replacement(const std::filesystem::path& target)
    : target_(target),
      path_(directoryOf(target) / kPattern),
      directory_(::open(directoryOf(target).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)),
      file_(directory_.isOpen() || errno == EACCES ? makeUnique(path_) : -1) {}

Replacement::~Replacement() { removeUnfinished(); }

bool Replacement::takeAttributes(const struct stat& replaced) const {
  struct stat own {};
  if (::fstat(file_.descriptor(), &own) != 0) return false;
  const bool isSame = own.st_uid == replaced.st_uid && own.st_gid == replaced.st_gid;
  return (isSame || ::fchown(file_.descriptor(), replaced.st_uid, replaced.st_gid) == 0) &&
         ::fchmod(file_.descriptor(), replaced.st_mode & kPermissions) == 0;
}

bool Replacement::takeDefaultAttributes() const {
  const mode_t mask = ::umask(0);
  ::umask(mask);
  return ::fchmod(file_.descriptor(), kReadWrite & ~mask) == 0;
}

bool Replacement::commit() {
  if (!sync(file_.descriptor()) || !file_.close()) return false;
  if (std::rename(path_.c_str(), target_.c_str()) != 0) return false;
  unfinished = nullptr;
  // A directory that may be written but not read cannot be synced.
  return !directory_.isOpen() || sync(directory_.descriptor());
}

void removeUnfinished() {
  const int error = errno;
  const char* const path = unfinished;
  if (path != nullptr) ::unlink(path);
  unfinished = nullptr;
  errno = error;
}

}  // namespace orvane::cli
