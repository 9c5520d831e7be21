#include "cli/terminal/terminal.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <cstdlib>
#include <string_view>

namespace orvane::cli {
namespace {

std::string_view environment(const char* name) {
  const char* const value = std::getenv(name);
  return value == nullptr ? std::string_view() : value;
}

bool takesEscapes() { return environment("TERM") != "dumb"; }

// 0 when it is no terminal, or one that does not know its width.
std::size_t columnsOf(int descriptor) {
  winsize size{};
  return ::ioctl(descriptor, TIOCGWINSZ, &size) == 0 ? size.ws_col : 0;
}

}  // namespace

Screen screenFor(const std::string& color, const std::string& output) {
  const bool isTerminal = output.empty() && ::isatty(STDOUT_FILENO) != 0;
  Screen screen;
  screen.colour = color == "always" || (color == "auto" && isTerminal &&
                                        environment("NO_COLOR").empty() && takesEscapes());
  const std::size_t width = isTerminal ? columnsOf(STDOUT_FILENO) : 0;
  if (width != 0) screen.width = width;
  return screen;
}

bool takesLine(int descriptor, std::size_t width) {
  return takesEscapes() && columnsOf(descriptor) >= width;
}

std::string paint(const std::string& text, const char* how, const Screen& screen) {
  return screen.colour ? std::string("\033[").append(how).append("m") + text + "\033[0m" : text;
}

}  // namespace orvane::cli
