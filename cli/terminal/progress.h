// A line on a terminal's standard error while something large is read and looked at: after one
// second, renewed every second. Never when standard error is no terminal, and not on one that is
// "dumb" or too narrow.

#ifndef ORVANE_CLI_TERMINAL_PROGRESS_H_
#define ORVANE_CLI_TERMINAL_PROGRESS_H_

#include <cstddef>
#include <string>

namespace orvane::cli {

// Begins with the input of that name, as messages show it.
void startProgress(const std::string& name);

// Counts bytes that were read.
void addProgress(std::size_t bytes);

// Takes the line away. To be called before anything is written.
void endProgress();

}  // namespace orvane::cli

#endif  // ORVANE_CLI_TERMINAL_PROGRESS_H_
