// Section texts with their line numbers, which the library does not keep.

#ifndef ORVANE_CLI_SECTION_READER_H_
#define ORVANE_CLI_SECTION_READER_H_

#include <cstddef>
#include <string_view>
#include <vector>

namespace orvane::cli {

struct SectionPair {
  std::size_t line;
  std::string_view key;
  std::string_view value;
};

// The pairs since the last terminator line, and the line that closes them.
struct GroupLines {
  std::string_view text;  // all of it, the terminator line included
  std::vector<SectionPair> pairs;
  std::size_t terminatorLine = 0;
  std::string_view terminator;
};

// Walks a section text by the library's line rules.
class SectionReader {
 public:
  explicit SectionReader(std::string_view text) : rest_(text) {}

  // Reads the next group; false at the end of the text, when `group` holds the pairs that no
  // terminator line closes.
  bool next(GroupLines& group);

 private:
  std::string_view rest_;
  std::size_t line_ = 0;
};

}  // namespace orvane::cli

#endif  // ORVANE_CLI_SECTION_READER_H_
