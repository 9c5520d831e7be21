// Writing results: to standard output, or to a file that is replaced as a whole.

#ifndef ORVANE_CLI_FILES_OUTPUT_H_
#define ORVANE_CLI_FILES_OUTPUT_H_

#include <cstddef>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace orvane::cli {

class Replacement;

// Where a result goes as it is made, in large pieces: an open file such as standard output, or a
// file beside the one that it replaces, whose place it takes at the end, so that there is either
// the old one or the new one whole. To be made when all inputs have been read. Every operation
// throws Failure when something cannot be written.
class Output {
 public:
  // To the file `path`, which may be none of `inputs`, or, when it is empty or "-", to standard
  // output. A path such as /dev/stdout, which names what is open, is written through.
  Output(const std::string& path, const std::vector<std::string>& inputs);
  Output(const Output&) = delete;
  Output& operator=(const Output&) = delete;
  ~Output();

  // Where the next element is to be appended.
  std::string& next() {
    if (waiting_.size() >= kPiece) writeWaiting();
    return waiting_;
  }

  // Writes a text that is there already, without a copy of what is large.
  void write(std::string_view text);

  // Writes what is left, and puts the file in its place. Without it the old one stays.
  void finish();

 private:
  static constexpr std::size_t kPiece = std::size_t{1} << 20U;

  void replace(const std::filesystem::path& target, const std::vector<std::string>& inputs);
  void writeWaiting();
  void writeNow(std::string_view text);

  std::string waiting_;
  std::string name_;  // as messages show it
  std::unique_ptr<Replacement> replacement_;
  int descriptor_ = -1;  // of what is written through
};

// Writes a result that is one text.
void writeOutput(std::string_view text, const std::string& path,
                 const std::vector<std::string>& inputs);

// Writes a message to standard error, unless it is "".
void writeError(const std::string& message);

// Whether it has written any.
bool hasReported();

}  // namespace orvane::cli

#endif  // ORVANE_CLI_FILES_OUTPUT_H_
