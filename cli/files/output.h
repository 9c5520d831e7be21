// Writing results: to standard output, or to a file that is replaced as a whole.

#ifndef ORVANE_CLI_FILES_OUTPUT_H_
#define ORVANE_CLI_FILES_OUTPUT_H_

#include <string>
#include <string_view>
#include <vector>

namespace orvane::cli {

// Writes `text` to standard output, or, when `path` is not empty, to that file: beside it first,
// then in its place, so that it is either the old one or the new one whole. Throws Failure when
// anything goes wrong, and when the file is one of `inputs`.
void writeOutput(std::string_view text, const std::string& path,
                 const std::vector<std::string>& inputs);

// Writes a message to standard error.
void writeError(const std::string& message);

}  // namespace orvane::cli

#endif  // ORVANE_CLI_FILES_OUTPUT_H_
