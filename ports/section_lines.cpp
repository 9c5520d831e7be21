#include "ports/section_lines.h"

namespace orvane {

SectionLine SectionLines::next() {
  const char* line = rest_.data();
  const char* const end = line + rest_.size();
  while (line != end && *line == '\n') ++line;
  const char* keyEnd = line;
  while (keyEnd != end && *keyEnd != '=' && *keyEnd != '\n') ++keyEnd;
  const std::size_t valueSize = std::string_view(keyEnd, end).find('\n');
  const char* const lineEnd = valueSize != std::string_view::npos ? keyEnd + valueSize : end;
  rest_ = std::string_view(lineEnd, end);
  if (line == end) return SectionLine::kEnd;
  if (keyEnd == lineEnd) {
    value_ = std::string_view(line, lineEnd);
    return SectionLine::kTerminator;
  }
  key_ = std::string_view(line, keyEnd);
  value_ = std::string_view(keyEnd + 1, lineEnd);
  return SectionLine::kPair;
}

}  // namespace orvane
