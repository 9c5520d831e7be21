// Loaded before the command, this makes its calls to the system go wrong. ORVANE_FAULT says how, in
// the form "CALL FIRST COUNT HOW NUMBER": as many of these calls, or of "any", from the first on
//   fail    with errno NUMBER
//   short   after one byte
//   before  beginning with signal NUMBER, "after" ending with it
//   resize  after the file "large" has got NUMBER bytes
// Each call is told on descriptor 9, and "!" where it goes wrong. Messages are left alone, and what
// the loader and the C library do by themselves is not seen.

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/vfs.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <sstream>
#include <string>
#include <utility>

namespace {

struct Plan {
  Plan() {
    std::istringstream(std::getenv("ORVANE_FAULT")) >> call >> first >> count >> how >> number;
  }

  // Counts a call. Tells whether it is to go wrong.
  bool isMetBy(const std::string& name) {
    const bool isMeant = call == name || call == "any";
    isMet = isMeant && ++calls >= first && calls - first < count;
    const std::string line = name + (isMet ? "\n!\n" : "\n");
    ::syscall(SYS_write, 9, line.data(), line.size());
    return isMet;
  }

  std::string call, how;
  unsigned int first = 0, count = 0, calls = 0;
  int number = 0;
  bool isMet = false;
};

Plan& plan() {
  static Plan plan;
  return plan;
}

// Does a call, or what is to happen in its place. A descriptor is closed all the same.
template <typename Call>
auto meet(const std::string& name, Call call) -> decltype(call()) {
  Plan& plan = ::plan();
  if (!plan.isMetBy(name)) return call();
  if (plan.how == "before") ::raise(plan.number);
  if (plan.how == "resize") ::syscall(SYS_truncate, "large", plan.number);
  const bool fails = plan.how == "fail";
  const auto result = fails && name != "close" ? -1 : call();
  const int error = fails ? plan.number : errno;
  if (plan.how == "after") ::raise(plan.number);
  errno = error;
  return fails ? -1 : result;
}

std::size_t piece(std::size_t size) {
  return plan().isMet && plan().how == "short" ? std::min<std::size_t>(size, 1) : size;
}

}  // namespace

#define CALL(name, parameters, arguments, ...)                                               \
  auto name parameters __VA_ARGS__->decltype(::name arguments) {                             \
    static const auto next = reinterpret_cast<decltype(&::name)>(::dlsym(RTLD_NEXT, #name)); \
    return meet(#name, [&] { return next arguments; });                                      \
  }

// NOLINTBEGIN(*-parameter-name,*-reserved-identifier): the C library chose the names.
extern "C" {

CALL(mkostemp, (char* path, int flags), (path, flags))
CALL(fsync, (int file), (file))
CALL(rename, (const char* from, const char* to), (from, to), noexcept)
CALL(close, (int file), (file))
CALL(fchmod, (int file, mode_t mode), (file, mode), noexcept)
CALL(fchown, (int file, uid_t user, gid_t group), (file, user, group), noexcept)
CALL(unlink, (const char* path), (path), noexcept)
CALL(stat, (const char* path, struct stat* status), (path, status), noexcept)
CALL(lstat, (const char* path, struct stat* status), (path, status), noexcept)
CALL(statfs, (const char* path, struct statfs* system), (path, system), noexcept)
CALL(fstat, (int file, struct stat* status), (file, status), noexcept)
CALL(faccessat, (int at, const char* path, int mode, int flags), (at, path, mode, flags), noexcept)
CALL(readlink, (const char* path, char* to, std::size_t size), (path, to, size), noexcept)
CALL(dup, (int file), (file), noexcept)
CALL(open, (const char* path, int flags, ...), (path, flags))
CALL(read, (int file, void* to, std::size_t size), (file, to, piece(size)))

// Only where it is asked for by name: it is called too often, and by what counts it as well.
extern void* __libc_malloc(std::size_t size);
void* malloc(std::size_t size) {
  static bool isCounting = false;
  if (std::exchange(isCounting, true)) return __libc_malloc(size);
  const bool fails = plan().call == "malloc" && plan().isMetBy("malloc");
  isCounting = false;
  if (fails) errno = plan().number;
  return fails ? nullptr : __libc_malloc(size);
}

ssize_t write(int file, const void* from, std::size_t size) {
  const auto next = [&] { return ::syscall(SYS_write, file, from, piece(size)); };
  return file == STDERR_FILENO ? next() : meet("write", next);
}

}  // extern "C"
// NOLINTEND(*-parameter-name,*-reserved-identifier)
