#include "cli/files/output.h"

#include <fcntl.h>
#include <linux/magic.h>
#include <sys/stat.h>
#include <sys/vfs.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>
#include <optional>
#include <system_error>

#include "cli/files/failure.h"
#include "cli/files/file.h"
#include "cli/files/replacement.h"
#include "cli/terminal/progress.h"
#include "cli/terminal/text.h"

namespace orvane::cli {
namespace {

namespace fs = std::filesystem;

constexpr int kMostLinks = 40;
constexpr std::array kOwnDescriptors = {"/proc/self/fd", "/proc/thread-self/fd"};
constexpr mode_t kAnyWrite = S_IWUSR | S_IWGRP | S_IWOTH;
constexpr const char* kIsInput = "it is the input";

bool isReported = false;

using Status = struct stat;

// Nothing for a file that is not there. What cannot be told may be the very file to keep.
std::optional<Status> statusOf(const fs::path& path) {
  Status status{};
  const int refused = path == "-" ? ::fstat(STDIN_FILENO, &status) : ::stat(path.c_str(), &status);
  if (refused == 0) return status;
  if (errno != ENOENT && errno != ENOTDIR) failAsErrno("cannot look at " + escape(path.native()));
  return std::nullopt;
}

bool sameFile(const Status& a, const Status& b) {
  return a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

// Where an output goes: into what is open already, or in the place of a file.
struct Target {
  fs::path path;
  std::optional<int> descriptor;
};

// Which descriptor an entry of a directory such as /proc/self/fd is. Throws Failure for those of
// another process, whose files would be replaced under its hands.
std::optional<int> descriptorOf(const fs::path& entry, const fs::path& directory) {
  struct statfs system {};
  const auto number = parseDecimal<unsigned int>(entry.filename().native());
  const std::optional<Status> around = statusOf(directory);
  if (!number || !around) return std::nullopt;
  if (::statfs(directory.c_str(), &system) != 0) {
    failAsErrno("cannot look at " + escape(directory.native()));
  }
  if (system.f_type != PROC_SUPER_MAGIC) return std::nullopt;
  const bool isOwn = std::ranges::any_of(kOwnDescriptors, [&](const char* own) {
    const std::optional<Status> status = statusOf(own);
    return status && sameFile(*around, *status);
  });
  if (!isOwn) throw Failure("cannot write " + escape(entry.native()) + ": it is not open here");
  return static_cast<int>(*number);
}

// Follows links one by one, since the last may lead to a file that is yet to be made, and since one
// of them may name an open file rather than a path: what is open can hold more than is written now.
Target follow(fs::path path) {
  std::error_code error;
  for (int links = 0; links < kMostLinks; ++links) {
    const fs::path directory = path.has_parent_path() ? path.parent_path() : ".";
    const std::optional<int> descriptor = descriptorOf(path, directory);
    if (descriptor) return {path, descriptor};
    const fs::file_type type = fs::symlink_status(path, error).type();
    if (type != fs::file_type::none && type != fs::file_type::symlink) return {path, std::nullopt};
    const fs::path next = fs::read_symlink(path, error);
    if (error) throw Failure("cannot look at " + escape(path.native()) + ": " + error.message());
    path = directory / next;
  }
  errno = ELOOP;
  failAsErrno("cannot look at " + escape(path.native()));
}

bool isAmong(const std::vector<std::string>& inputs, const Status& output) {
  return std::ranges::any_of(inputs, [&](const std::string& input) {
    const std::optional<Status> status = statusOf(input);
    return status && sameFile(*status, output);
  });
}

// Why a file is not to be replaced; "" when it is.
std::string objectionTo(const fs::path& path, const Status& existing,
                        const std::vector<std::string>& inputs) {
  if (!S_ISREG(existing.st_mode)) return "it is no regular file";
  if (isAmong(inputs, existing)) return kIsInput;
  if (existing.st_nlink > 1) return "it has other hard links";
  if (::getxattr(path.c_str(), "system.posix_acl_access", nullptr, 0) > 0) {
    return "it has an access control list";
  }
  if ((existing.st_mode & kAnyWrite) == 0) return "it is read-only";
  const bool mayWrite = ::faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) == 0;
  return mayWrite ? "" : std::generic_category().message(errno);
}

bool isStandard(const std::string& path) { return path.empty() || path == "-"; }

// Closing a second descriptor tells as much as closing the one that others may still use.
bool isAccepted(int descriptor) {
  File second(::dup(descriptor));
  return second.isOpen() && second.close();
}

}  // namespace

Output::Output(const std::string& path, const std::vector<std::string>& inputs)
    : name_(isStandard(path) ? "to standard output" : escape(path)) {
  endProgress();
  if (isStandard(path)) {
    descriptor_ = STDOUT_FILENO;
    return;
  }
  const Target target = follow(path);
  if (target.descriptor) {
    descriptor_ = *target.descriptor;
    Status open{};
    const bool isFile = ::fstat(descriptor_, &open) == 0 && S_ISREG(open.st_mode);
    if (isFile && isAmong(inputs, open)) throw Failure("cannot write " + name_ + ": " + kIsInput);
  } else {
    replace(target.path, inputs);
  }
}

Output::~Output() = default;

void Output::replace(const fs::path& target, const std::vector<std::string>& inputs) {
  const std::optional<Status> existing = statusOf(target);
  if (existing) {
    const std::string objection = objectionTo(target, *existing, inputs);
    if (!objection.empty()) throw Failure("cannot write " + name_ + ": " + objection);
  }
  replacement_ = std::make_unique<Replacement>(target);
  if (!replacement_->isOpen()) failAsErrno("cannot write " + name_);
  const bool taken =
      existing ? replacement_->takeAttributes(*existing) : replacement_->takeDefaultAttributes();
  if (!taken) failAsErrno("cannot write " + name_ + " with its owner and permissions");
}

void Output::write(std::string_view text) {
  if (text.size() < kPiece) {
    next().append(text);
    return;
  }
  writeWaiting();
  writeNow(text);
}

void Output::finish() {
  writeWaiting();
  if (!(replacement_ ? replacement_->commit() : isAccepted(descriptor_))) {
    failAsErrno("cannot write " + name_);
  }
}

void Output::writeWaiting() {
  writeNow(waiting_);
  waiting_.clear();
}

void Output::writeNow(std::string_view text) {
  const bool done = replacement_ ? replacement_->write(text) : writeAll(descriptor_, text);
  if (!done) failAsErrno("cannot write " + name_);
}

void writeOutput(std::string_view text, const std::string& path,
                 const std::vector<std::string>& inputs) {
  Output output(path, inputs);
  output.write(text);
  output.finish();
}

void writeError(const std::string& message) {
  if (message.empty()) return;
  isReported = true;
  endProgress();
  // Where even this cannot be written, the exit status has to do.
  static_cast<void>(writeAll(STDERR_FILENO, message));
}

bool hasReported() { return isReported; }

}  // namespace orvane::cli
