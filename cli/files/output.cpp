#include "cli/files/output.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <utility>

#include "cli/files/failure.h"
#include "cli/files/file.h"
#include "cli/terminal/progress.h"
#include "cli/terminal/text.h"

namespace orvane::cli {
namespace {

bool isReported = false;

// The path of the file that is to take a place but has not yet. A signal that ends the process
// takes that file along; no more than one is written at a time.
std::atomic<const char*> unfinished = nullptr;

void removeUnfinished(int signal) {
  const char* const path = unfinished;
  if (path != nullptr) ::unlink(path);
  std::signal(signal, SIG_DFL);
  std::raise(signal);
}

void watchSignals() {
  for (const int signal : {SIGHUP, SIGINT, SIGTERM}) {
    if (std::signal(signal, &removeUnfinished) == SIG_IGN) std::signal(signal, SIG_IGN);
  }
}

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

// A link stays a link: the file that it leads to is replaced.
std::string resolved(const std::string& path) {
  const std::unique_ptr<char, decltype(&std::free)> real(::realpath(path.c_str(), nullptr),
                                                         &std::free);
  return real ? real.get() : path;
}

// Throws Failure unless `path` names a regular file that is none of the inputs.
void requireReplaceable(const std::string& name, const Status& existing,
                        const std::vector<std::string>& inputs) {
  if (!S_ISREG(existing.st_mode)) {
    throw Failure("cannot write " + name + ": it is no regular file");
  }
  for (const std::string& input : inputs) {
    const std::optional<Status> status = statusOfInput(input);
    if (status && sameFile(*status, existing)) {
      throw Failure("cannot write " + name + ": it is the input");
    }
  }
}

}  // namespace

// A file beside `target` that disappears unless it takes its place.
class Replacement {
 public:
  explicit Replacement(std::string target)
      : target_(std::move(target)), path_(target_ + ".XXXXXX"), file_(::mkstemp(path_.data())) {
    if (!file_.isOpen()) return;
    unfinished = path_.c_str();
    watchSignals();
  }
  Replacement(const Replacement&) = delete;
  Replacement& operator=(const Replacement&) = delete;
  ~Replacement() {
    if (file_.isOpen() && !committed_) ::unlink(path_.c_str());
    unfinished = nullptr;
  }

  bool isOpenWith(mode_t mode) const {
    return file_.isOpen() && ::fchmod(file_.descriptor(), mode) == 0;
  }

  bool write(std::string_view text) const { return writeAll(file_.descriptor(), text); }

  bool commit() {
    committed_ = ::fsync(file_.descriptor()) == 0 && ::rename(path_.c_str(), target_.c_str()) == 0;
    return committed_;
  }

 private:
  std::string target_;
  std::string path_;
  File file_;
  bool committed_ = false;
};

Output::Output(const std::string& path, const std::vector<std::string>& inputs)
    : name_(path.empty() ? "to standard output" : escape(path)) {
  endProgress();
  if (path.empty()) return;
  const std::optional<Status> existing = statusOf(path);
  if (existing) requireReplaceable(name_, *existing, inputs);
  replacement_ = std::make_unique<Replacement>(existing ? resolved(path) : path);
  const mode_t mode = existing ? existing->st_mode & 07777 : modeOfNewFile();
  if (!replacement_->isOpenWith(mode)) failAsErrno("cannot write " + name_);
}

Output::~Output() = default;

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
  if (replacement_ && !replacement_->commit()) failAsErrno("cannot write " + name_);
}

void Output::writeWaiting() {
  writeNow(waiting_);
  waiting_.clear();
}

void Output::writeNow(std::string_view text) {
  const bool done = replacement_ ? replacement_->write(text) : writeAll(STDOUT_FILENO, text);
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
  std::fputs(message.c_str(), stderr);
}

bool hasReported() { return isReported; }

}  // namespace orvane::cli
