// A file that takes the place of another one as a whole, or disappears.

#ifndef ORVANE_CLI_FILES_REPLACEMENT_H_
#define ORVANE_CLI_FILES_REPLACEMENT_H_

#include <sys/stat.h>

#include <filesystem>
#include <string>

#include "cli/files/file.h"

namespace orvane::cli {

// Lies beside `target` until it is committed. No more than one at a time. Every operation returns
// false, and leaves the reason in errno, when the system refuses; then nothing is to follow.
class Replacement {
 public:
  explicit Replacement(const std::filesystem::path& target);
  Replacement(const Replacement&) = delete;
  Replacement& operator=(const Replacement&) = delete;
  ~Replacement();

  // Whether it could be made.
  bool isOpen() const { return file_.isOpen(); }

  // Takes the owner and the permissions of the file that it replaces. What lets a program run as
  // its owner is not taken: that was given to other contents.
  bool takeAttributes(const struct stat& replaced) const;

  // Takes the permissions of any other new file.
  bool takeDefaultAttributes() const;

  bool write(std::string_view text) const { return writeAll(file_.descriptor(), text); }

  // Puts it in its place. What was there before is gone only when this one is stored.
  bool commit();

 private:
  std::string target_;
  std::string path_;
  File directory_;
  File file_;
};

// Removes the file that has not taken its place, if there is one. May run in a signal handler.
void removeUnfinished();

}  // namespace orvane::cli

#endif  // ORVANE_CLI_FILES_REPLACEMENT_H_
