#include "ports/section_lines.h"

#include <algorithm>

namespace orvane {

SectionLine SectionLines::next() {
  while (!rest_.empty()) {
    const std::size_t lineEnd = std::min(rest_.find('\n'), rest_.size());
    const std::string_view line = rest_.substr(0, lineEnd);
    rest_.remove_prefix(std::min(lineEnd + 1, rest_.size()));
    if (line.empty()) continue;
    const std::size_t equals = line.find('=');
    if (equals == std::string_view::npos) return SectionLine::kTerminator;
    key_ = line.substr(0, equals);
    value_ = line.substr(equals + 1);
    return SectionLine::kPair;
  }
  return SectionLine::kEnd;
}

}  // namespace orvane
