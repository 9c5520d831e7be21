#include "ports/text_in.h"

namespace orvane {
RangeText readRangeText(std::string_view text) {
  RangeText range;
  std::string_view token;
  if (!nextToken(text, '-', token)) return range;
  range.count = 1;
  range.first = readNumber(token);
  if (!nextToken(text, '-', token)) return range;
  range.count = 2;
  range.second = readNumber(token);
  return range;
}

std::optional<std::uint32_t> readAddress(std::string_view text) {
  if (text.find('.') == std::string_view::npos) return readNumber(text);
  std::uint32_t address = 0;
  for (int part = 1;; ++part) {
    const std::size_t dot = text.find('.');
    address = address << 8 | (readNumber(text.substr(0, dot)) & 0xFF);
    const bool last = dot == std::string_view::npos;
    if (last && part == 4) return address;
    if (last || part == 4) return std::nullopt;
    text.remove_prefix(dot + 1);
  }
}

}  // namespace orvane
