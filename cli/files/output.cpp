#include "cli/files/output.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

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
constexpr mode_t kAnyWrite = S_IWUSR | S_IWGRP | S_IWOTH;

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

// Follows links one by one, since the last may lead to a file that is yet to be made, and since one
// of them may name an open file rather than a path: what is open can hold more than is written now.
Target follow(fs::path path) {
  std::error_code error;
  const std::optional<Status> openFiles = statusOf("/proc/self/fd");
  for (int links = 0; links < kMostLinks; ++links) {
    const fs::path directory = path.has_parent_path() ? path.parent_path() : ".";
    const std::optional<Status> around = statusOf(directory);
    if (around && openFiles && sameFile(*around, *openFiles)) {
      const auto number = parseDecimal<unsigned int>(path.filename().native());
      if (number) return {path, static_cast<int>(*number)};
    }
    const fs::file_type type = fs::symlink_status(path, error).type();
    if (type != fs::file_type::none && type != fs::file_type::symlink) return {path, std::nullopt};
    const fs::path next = fs::read_symlink(path, error);
    if (error) throw Failure("cannot look at " + escape(path.native()) + ": " + error.message());
    path = directory / next;
  }
  errno = ELOOP;
  failAsErrno("cannot look at " + escape(path.native()));
}

// Why a file is not to be replaced; "" when it is.
std::string objectionTo(const fs::path& path, const Status& existing,
                        const std::vector<std::string>& inputs) {
  if (!S_ISREG(existing.st_mode)) return "it is no regular file";
  for (const std::string& input : inputs) {
    const std::optional<Status> status = statusOf(input);
    if (status && sameFile(*status, existing)) return "it is the input";
  }
  if (existing.st_nlink > 1) return "it has other hard links";
  const bool mayWrite = ::faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) == 0;
  return mayWrite && (existing.st_mode & kAnyWrite) != 0 ? "" : "it is read-only";
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
