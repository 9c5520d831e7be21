// Open files: reading and writing whatever interrupts it, and what the system says when it refuses.

#ifndef ORVANE_CLI_FILES_FILE_H_
#define ORVANE_CLI_FILES_FILE_H_

#include <sys/types.h>

#include <string>
#include <string_view>

namespace orvane::cli {

// Owns a file descriptor.
class File {
 public:
  explicit File(int descriptor) : descriptor_(descriptor) {}
  File(const File&) = delete;
  File& operator=(const File&) = delete;
  ~File() { close(); }

  bool isOpen() const { return descriptor_ >= 0; }
  int descriptor() const { return descriptor_; }

  // Whether all that was written is accepted, as some file systems tell only now.
  bool close();

 private:
  int descriptor_;
};

// Reads up to `size` bytes, and waits where a file would rather be asked again. Returns 0 at the
// end, and -1 when the system refuses.
ssize_t readSome(int descriptor, char* to, std::size_t size);

// Writes the whole text, however little the system takes at once. Returns false when it refuses.
bool writeAll(int descriptor, std::string_view text);

// Has the system store what was written, where it can.
bool sync(int descriptor);

// Throws the Failure "what: reason", with the reason that errno gives.
[[noreturn]] void failAsErrno(const std::string& what);

}  // namespace orvane::cli

#endif  // ORVANE_CLI_FILES_FILE_H_
