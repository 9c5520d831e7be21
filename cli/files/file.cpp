#include "cli/files/file.h"

#include <poll.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>
#include <utility>

#include "cli/files/failure.h"

namespace orvane::cli {
namespace {

// After a call that the system did not carry out: whether it is to be made again. Another program
// can have set a pipe or terminal that both use to refuse rather than to wait.
bool isToRepeat(int descriptor, short event) {
  if (errno == EINTR) return true;
  if (errno != EAGAIN) return false;
  pollfd waiting{descriptor, event, 0};
  return ::poll(&waiting, 1, -1) >= 0 || errno == EINTR;
}

}  // namespace

bool File::close() {
  // A descriptor is gone even when closing it is interrupted.
  const int descriptor = std::exchange(descriptor_, -1);
  return descriptor < 0 || ::close(descriptor) == 0 || errno == EINTR;
}

ssize_t readSome(int descriptor, char* to, std::size_t size) {
  ssize_t count = -1;
  do {
    count = ::read(descriptor, to, size);
  } while (count < 0 && isToRepeat(descriptor, POLLIN));
  return count;
}

bool writeAll(int descriptor, std::string_view text) {
  while (!text.empty()) {
    const ssize_t count = ::write(descriptor, text.data(), text.size());
    if (count >= 0) {
      text.remove_prefix(static_cast<std::size_t>(count));
    } else if (!isToRepeat(descriptor, POLLOUT)) {
      return false;
    }
  }
  return true;
}

bool sync(int descriptor) {
  while (::fsync(descriptor) != 0) {
    const bool cannot = errno == EINVAL || errno == ENOTSUP || errno == EROFS;
    if (errno != EINTR) return cannot;
  }
  return true;
}

void failAsErrno(const std::string& what) {
  throw Failure(what + ": " + std::generic_category().message(errno));
}

}  // namespace orvane::cli
