// Reading files and standard input whole.

#ifndef ORVANE_CLI_INPUT_H_
#define ORVANE_CLI_INPUT_H_

#include <string>

namespace orvane::cli {

struct Input {
  std::string name;  // as messages show it
  std::string text;
};

// Reads a file, or standard input for "-". Throws Failure when it cannot be read, or when it holds
// a NUL, which no text of the library can.
Input readInput(const std::string& path);

// "name:line: ", the start of every message about a line.
std::string lineLabel(const Input& input, std::size_t line);

}  // namespace orvane::cli

#endif  // ORVANE_CLI_INPUT_H_
