// Text in: views of callers' texts, tokens, and the one number reader.

#ifndef ORVANE_PORTS_TEXT_IN_H_
#define ORVANE_PORTS_TEXT_IN_H_

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <optional>
#include <string_view>

namespace orvane {

// A caller's text as a view, made once, at the door; a null text becomes the empty view.
inline std::string_view viewOf(const char* text) {
  return text != nullptr ? std::string_view(text) : std::string_view();
}

// The text in a field of characters, up to its NUL; a caller may have filled the whole field.
inline std::string_view fieldText(const char* field, std::size_t size) {
  const void* const nul = std::memchr(field, 0, size);
  return {field, nul != nullptr ? static_cast<const char*>(nul) : field + size};
}

// Puts as much of `text` as it holds beside a NUL into a field, which `text` may lie in; returns
// how much that is.
template <std::size_t kSize>
std::size_t copyToField(std::string_view text, char (&field)[kSize]) {
  const std::string_view taken = text.substr(0, kSize - 1);
  std::char_traits<char>::move(field, taken.data(), taken.size());
  field[taken.size()] = '\0';
  return taken.size();
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

// Advances `next` past digits; their number modulo 2^32.
inline std::uint32_t readDigits(const char*& next, const char* end) {
  std::uint32_t number = 0;
  for (; next != end; ++next) {
    const auto digit = static_cast<unsigned>(static_cast<unsigned char>(*next)) - '0';
    if (digit > 9) break;
    number = number * 10 + digit;
  }
  return number;
}

inline bool isSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

// A number as it is written. No digits give 0.
struct NumberText {
  std::uint32_t value = 0;
  bool isNegative = false;
  std::string_view digits;
  std::string_view rest;  // what follows them
};

// The one number reader: leading white space, an optional sign, digits modulo 2^32 up to the first
// other character.
inline NumberText readNumberText(std::string_view text) {
  const char* next = text.data();
  const char* const end = next + text.size();
  while (next != end && isSpace(*next)) ++next;
  const bool isNegative = next != end && *next == '-';
  if (next != end && (*next == '-' || *next == '+')) ++next;
  const char* const digits = next;
  const std::uint32_t number = readDigits(next, end);
  return {isNegative ? 0U - number : number, isNegative, {digits, next}, {next, end}};
}

inline std::uint32_t readNumber(std::string_view text) { return readNumberText(text).value; }

// The same, for fields that are signed.
inline std::int32_t readSigned(std::string_view text) {
  return static_cast<std::int32_t>(readNumber(text));
}

inline constexpr std::uint32_t kMaxPort = std::numeric_limits<std::uint16_t>::max();

// The bounds of a range, as plain data.
struct Bounds {
  std::uint32_t start;
  std::uint32_t end;
};

// What a range text says: how many numbers stand between its "-" (2 for two or more), and the first
// two of them.
struct RangeText {
  int count = 0;
  std::uint32_t first = 0;
  std::uint32_t second = 0;

  bool isRange() const { return count == 2 && first != 0 && second != 0; }

  // The bounds, in ascending order as signed numbers; a single number gives both.
  // REQUIRES: count > 0.
  Bounds bounds() const {
    if (count == 1) return {first, first};
    const bool swapped = static_cast<std::int32_t>(first) > static_cast<std::int32_t>(second);
    return swapped ? Bounds{second, first} : Bounds{first, second};
  }
};

RangeText readRangeText(std::string_view text);

// One item of a port list: what it says as a range text, and as a number.
struct PortListItem {
  RangeText range;
  std::uint32_t number = 0;

  bool isPort() const { return !range.isRange() && number >= 1 && number <= kMaxPort; }
};

// An address text: a decimal number or four parts joined by "."; nothing for a dotted text of other
// than four parts.
std::optional<std::uint32_t> readAddress(std::string_view text);

}  // namespace orvane

#endif  // ORVANE_PORTS_TEXT_IN_H_
