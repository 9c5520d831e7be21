// Pieces of texts: lines, plain decimals, and counts and quotes for messages.

#ifndef ORVANE_EXCHANGE_TEXT_H_
#define ORVANE_EXCHANGE_TEXT_H_

#include <algorithm>
#include <charconv>
#include <concepts>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

namespace orvane::exchange {

// Takes the next line off a text, and gives it without its line feed.
inline std::string_view takeLine(std::string_view& text) {
  const std::string_view line = text.substr(0, text.find('\n'));
  text.remove_prefix(std::min(line.size() + 1, text.size()));
  return line;
}

// A text that is a decimal number within the type, and nothing else.
template <std::unsigned_integral Number>
std::optional<Number> parseDecimal(std::string_view text) {
  Number number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return number;
}

// A number of things: "1 cell", "2 cells".
inline std::string counted(std::size_t count, const std::string& thing) {
  return std::to_string(count) + " " + thing + (count == 1 ? "" : "s");
}

// The text in single quotes, as far as a message shows one.
inline std::string inQuotes(std::string_view text) {
  constexpr std::size_t kMost = 80;
  if (text.size() <= kMost) return std::string("'").append(text).append("'");
  // A character is not cut into pieces.
  std::size_t end = kMost;
  while (end > kMost - 3 && (static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80) --end;
  return std::string("'").append(text.substr(0, end)).append("...'");
}

}  // namespace orvane::exchange

#endif  // ORVANE_EXCHANGE_TEXT_H_
