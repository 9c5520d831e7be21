// An open file, and what the system says when it refuses something.

#ifndef ORVANE_CLI_FILES_FILE_H_
#define ORVANE_CLI_FILES_FILE_H_

#include <unistd.h>

#include <cerrno>
#include <string>
#include <system_error>

#include "cli/files/failure.h"

namespace orvane::cli {

// Owns a file descriptor.
class File {
 public:
  explicit File(int descriptor) : descriptor_(descriptor) {}
  File(const File&) = delete;
  File& operator=(const File&) = delete;
  ~File() {
    if (isOpen()) ::close(descriptor_);
  }

  bool isOpen() const { return descriptor_ >= 0; }
  int descriptor() const { return descriptor_; }

 private:
  int descriptor_;
};

// Throws the Failure "what: reason", with the reason that errno gives.
[[noreturn]] inline void failAsErrno(const std::string& what) {
  throw Failure(what + ": " + std::generic_category().message(errno));
}

}  // namespace orvane::cli

#endif  // ORVANE_CLI_FILES_FILE_H_
