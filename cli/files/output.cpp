#include "cli/files/output.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <optional>

#include "cli/files/failure.h"
#include "cli/files/file.h"
#include "cli/terminal/progress.h"
#include "cli/terminal/text.h"

namespace orvane::cli {
namespace {

bool writeAll(int descriptor, std::string_view text) {
  while (!text.empty()) {
    const ssize_t count = ::write(descriptor, text.data(), text.size());
    if (count >= 0) {
      text.remove_prefix(static_cast<std::size_t>(count));
    } else if (errno != EINTR) {
      return false;
    }
  }
  return true;
}

using Status = struct stat;

std::optional<Status> statusOf(const std::string& path) {
  Status status{};
  if (::stat(path.c_str(), &status) != 0) return std::nullopt;
  return status;
}

std::optional<Status> statusOfInput(const std::string& path) {
  if (path != "-") return statusOf(path);
  Status status{};
  if (::fstat(STDIN_FILENO, &status) != 0) return std::nullopt;
  return status;
}

bool sameFile(const Status& a, const Status& b) {
  return a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

mode_t modeOfNewFile() {
  const mode_t mask = ::umask(0);
  ::umask(mask);
  return 0666 & ~mask;
}

// A file beside `target` that disappears unless it takes its place.
class Replacement {
 public:
  explicit Replacement(const std::string& target)
      : target_(target), path_(target + ".XXXXXX"), file_(::mkstemp(path_.data())) {}
  Replacement(const Replacement&) = delete;
  Replacement& operator=(const Replacement&) = delete;
  ~Replacement() {
    if (file_.isOpen() && !committed_) ::unlink(path_.c_str());
  }

  bool write(std::string_view text, mode_t mode) const {
    return file_.isOpen() && ::fchmod(file_.descriptor(), mode) == 0 &&
           writeAll(file_.descriptor(), text) && ::fsync(file_.descriptor()) == 0;
  }

  bool commit() {
    committed_ = ::rename(path_.c_str(), target_.c_str()) == 0;
    return committed_;
  }

 private:
  std::string target_;
  std::string path_;
  File file_;
  bool committed_ = false;
};

// A link stays a link: the file that it leads to is replaced.
std::string resolved(const std::string& path) {
  const std::unique_ptr<char, decltype(&std::free)> real(::realpath(path.c_str(), nullptr),
                                                         &std::free);
  return real ? real.get() : path;
}

void replaceFile(std::string_view text, const std::string& path,
                 const std::vector<std::string>& inputs) {
  const std::string name = escape(path);
  const std::optional<Status> existing = statusOf(path);
  if (existing) {
    if (!S_ISREG(existing->st_mode)) {
      throw Failure("cannot write " + name + ": it is no regular file");
    }
    for (const std::string& input : inputs) {
      const std::optional<Status> status = statusOfInput(input);
      if (status && sameFile(*status, *existing)) {
        throw Failure("cannot write " + name + ": it is the input");
      }
    }
  }
  Replacement replacement(existing ? resolved(path) : path);
  const mode_t mode = existing ? existing->st_mode & 07777 : modeOfNewFile();
  if (!replacement.write(text, mode) || !replacement.commit()) {
    failAsErrno("cannot write " + name);
  }
}

}  // namespace

void writeOutput(std::string_view text, const std::string& path,
                 const std::vector<std::string>& inputs) {
  endProgress();
  if (!path.empty()) {
    replaceFile(text, path, inputs);
  } else if (!writeAll(STDOUT_FILENO, text)) {
    failAsErrno("cannot write to standard output");
  }
}

void writeError(const std::string& message) {
  endProgress();
  std::fputs(message.c_str(), stderr);
}

}  // namespace orvane::cli
