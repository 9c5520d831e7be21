#include "cli/section_reader.h"

#include <algorithm>

namespace orvane::cli {

bool SectionReader::next(GroupLines& group) {
  group.text = rest_;
  group.pairs.clear();
  while (!rest_.empty()) {
    ++line_;
    const std::size_t end = std::min(rest_.find('\n'), rest_.size());
    const std::string_view line = rest_.substr(0, end);
    rest_.remove_prefix(std::min(end + 1, rest_.size()));
    if (line.empty()) continue;
    const std::size_t equals = line.find('=');
    if (equals == std::string_view::npos) {
      group.text.remove_suffix(rest_.size());
      group.terminatorLine = line_;
      group.terminator = line;
      return true;
    }
    group.pairs.push_back({line_, line.substr(0, equals), line.substr(equals + 1)});
  }
  return false;
}

}  // namespace orvane::cli
