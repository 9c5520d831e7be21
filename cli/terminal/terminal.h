// What a terminal that shows the result can do.

#ifndef ORVANE_CLI_TERMINAL_TERMINAL_H_
#define ORVANE_CLI_TERMINAL_TERMINAL_H_

#include <cstddef>
#include <limits>
#include <string>

namespace orvane::cli {

struct Screen {
  std::size_t width = std::numeric_limits<std::size_t>::max();  // columns of a line
  bool colour = false;
};

// The screen for a result that goes to the file `output`, or to standard output when that is empty.
// `color` is "always", "never" or "auto", which means on a terminal, unless the environment
// variable NO_COLOR is set and not empty or TERM is "dumb".
Screen screenFor(const std::string& color, const std::string& output);

// Whether a terminal is open there that can show, and erase, a line of that width.
bool takesLine(int descriptor, std::size_t width);

inline constexpr const char* kBold = "1";
inline constexpr const char* kRed = "31";
inline constexpr const char* kGreen = "32";

// The text in one of these where the screen shows colours, else as it is.
std::string paint(const std::string& text, const char* how, const Screen& screen);

}  // namespace orvane::cli

#endif  // ORVANE_CLI_TERMINAL_TERMINAL_H_
