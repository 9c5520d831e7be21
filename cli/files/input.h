// Reading files and standard input whole.

#ifndef ORVANE_CLI_FILES_INPUT_H_
#define ORVANE_CLI_FILES_INPUT_H_

#include <string>

namespace orvane::cli {

struct Input {
  std::string name;  // as messages show it
  std::string text;
};

// A path as messages show it; "-" is standard input.
std::string inputName(const std::string& path);

// Reads a file, or standard input for "-". Throws Failure when it cannot be read.
Input readBytes(const std::string& path);

// The same for a text, which cannot hold a NUL byte: Failure is thrown at the first one, with the
// rest unread.
Input readInput(const std::string& path);

// The name of the input that was opened last; "" when none was. It tells where memory ran out.
const std::string& lastInputName();

// "name:line: ", the start of every message about a line.
std::string lineLabel(const Input& input, std::size_t line);

}  // namespace orvane::cli

#endif  // ORVANE_CLI_FILES_INPUT_H_
