// Texts for people: escaped names, aligned tables, plain decimals.

#ifndef ORVANE_CLI_TEXT_H_
#define ORVANE_CLI_TEXT_H_

#include <charconv>
#include <concepts>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

#include "cli/terminal.h"
#include "orvane/application.h"

namespace orvane::cli {

inline constexpr std::string_view kHexDigits = "0123456789abcdef";

// Fits a text from outside for a terminal: control characters, those that reorder a line, bytes
// that are no UTF-8, and the backslash itself are escaped.
std::string escape(std::string_view text);

// The same for JSON, in its own way of escaping; only its line feeds stay.
std::string escapeInJson(std::string_view json);

// The escaped text in single quotes.
std::string quote(std::string_view text);

// The UPID, or "new" for an application that has none.
inline std::string upidText(const OrvaneApplication& application) {
  return application.getUpid() == kOrvaneNoUpid ? "new" : std::to_string(application.getUpid());
}

// An aligned table with one line per row, the first in bold face. Its last column holds lists; one
// that is too wide for the screen goes on in further lines after a comma.
class Table {
 public:
  using Row = std::vector<std::string>;

  void add(Row row) { rows_.push_back(std::move(row)); }

  std::string text(const Screen& screen) const;

 private:
  std::vector<Row> rows_;
};

// A text that is a decimal number within the type, and nothing else.
template <std::unsigned_integral Number>
std::optional<Number> parseDecimal(std::string_view text) {
  Number number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return number;
}

}  // namespace orvane::cli

#endif  // ORVANE_CLI_TEXT_H_
