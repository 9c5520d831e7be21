// Texts for people: escaped names, their width, plain decimals.

#ifndef ORVANE_CLI_TERMINAL_TEXT_H_
#define ORVANE_CLI_TERMINAL_TEXT_H_

#include <cstddef>
#include <string>
#include <string_view>

#include "exchange/text.h"
#include "orvane/application.h"

namespace orvane::cli {

// Fits a text from outside for a terminal: control characters, those that reorder a line, bytes
// that are no UTF-8, and the backslash itself are escaped.
std::string escape(std::string_view text);

// Appends a text as JSON has it between its quotes: bytes that are no UTF-8 are replaced by U+FFFD,
// one for each character that was begun, and what the terminal is kept from is escaped there too.
void appendJsonText(std::string& to, std::string_view text);

// The escaped text in single quotes.
std::string quote(std::string_view text);

// The columns that an escaped text takes, by the locale that main() sets.
std::size_t width(std::string_view escaped);

// The UPID, or "new" for an application that has none.
inline std::string upidText(const OrvaneApplication& application) {
  return application.getUpid() == kOrvaneNoUpid ? "new" : std::to_string(application.getUpid());
}

using exchange::parseDecimal;

}  // namespace orvane::cli

#endif  // ORVANE_CLI_TERMINAL_TEXT_H_
