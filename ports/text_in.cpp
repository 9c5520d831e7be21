#include "ports/text_in.h"

namespace orvane {
namespace {

bool isSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

}  // namespace

std::uint32_t readNumber(std::string_view text) {
  const char* next = text.data();
  const char* const end = next + text.size();
  while (next != end && isSpace(*next)) ++next;
  const bool negative = next != end && *next == '-';
  if (next != end && (*next == '-' || *next == '+')) ++next;
  const std::uint32_t number = readDigits(next, end);
  return negative ? 0U - number : number;
}

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
