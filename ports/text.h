// Text in and text out, shared by everything in the library that reads or writes a text.

#ifndef ORVANE_PORTS_TEXT_H_
#define ORVANE_PORTS_TEXT_H_

#include <array>
#include <charconv>
#include <concepts>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace orvane {

// A caller's text as a view, made once, at the door; a null text becomes the empty view.
inline std::string_view viewOf(const char* text) {
  return text != nullptr ? std::string_view(text) : std::string_view();
}

// Advances `rest` past the next token, a maximal run of other characters than `delimiter`, and
// stores it in `token`. False when there is none left.
inline bool nextToken(std::string_view& rest, char delimiter, std::string_view& token) {
  const char* const end = rest.data() + rest.size();
  const char* first = rest.data();
  while (first != end && *first == delimiter) ++first;
  const char* last = first;
  while (last != end && *last != delimiter) ++last;
  token = std::string_view(first, static_cast<std::size_t>(last - first));
  rest = std::string_view(last, static_cast<std::size_t>(end - last));
  return !token.empty();
}

// The one number reader: leading white space, an optional sign, digits modulo 2^32 up to the first
// other character. No digits give 0.
std::uint32_t readNumber(std::string_view text);

// The same, for fields that are signed.
inline std::int32_t readSigned(std::string_view text) {
  return static_cast<std::int32_t>(readNumber(text));
}

// What a range text says: how many numbers stand between its "-" (2 for two or more), and the first
// two of them.
struct RangeText {
  int count = 0;
  std::uint32_t first = 0;
  std::uint32_t second = 0;

  bool isRange() const { return count == 2 && first != 0 && second != 0; }

  // The bounds, in ascending order as signed numbers; a single number gives both.
  // REQUIRES: count > 0.
  std::pair<std::uint32_t, std::uint32_t> bounds() const {
    if (count == 1) return {first, first};
    const bool swapped = static_cast<std::int32_t>(first) > static_cast<std::int32_t>(second);
    return swapped ? std::pair(second, first) : std::pair(first, second);
  }
};

RangeText readRangeText(std::string_view text);

// An address text: a decimal number or four parts joined by "."; nothing for a dotted text of other
// than four parts.
std::optional<std::uint32_t> readAddress(std::string_view text);

// Appends a number in plain decimal.
template <std::integral Number>
void appendNumber(std::string& out, Number number) {
  std::array<char, 12> digits;  // "-2147483648" is the longest of 32 bits
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
  out.append(digits.data(), static_cast<std::size_t>(end - digits.data()));
}

// Appends ",", unless `out` is still as long as it was when the list began.
inline void appendSeparator(std::string& out, std::size_t listBegin) {
  if (out.size() != listBegin) out.push_back(',');
}

// Appends the dotted decimal form of an address.
void appendAddress(std::string& out, std::uint32_t address);

}  // namespace orvane

#endif  // ORVANE_PORTS_TEXT_H_
