// How a part of the command gives up.

#ifndef ORVANE_CLI_FILES_FAILURE_H_
#define ORVANE_CLI_FILES_FAILURE_H_

#include <stdexcept>

namespace orvane::cli {

// Ends the command with kUnusable; the message becomes one line on standard error.
class Failure : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace orvane::cli

#endif  // ORVANE_CLI_FILES_FAILURE_H_
