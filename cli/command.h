// What every subcommand is made of. A new one is one file with its make function, a declaration
// here and a line in main.cpp.

#ifndef ORVANE_CLI_COMMAND_H_
#define ORVANE_CLI_COMMAND_H_

#include <CLI/CLI.hpp>
#include <functional>
#include <stdexcept>
#include <string>

namespace orvane::cli {

enum ExitStatus : int {
  kSuccess = 0,
  kFound = 1,     // a difference or a finding
  kUnusable = 2,  // input, output or usage that the command can do nothing with
};

// Ends the command with kUnusable; the message becomes one line on standard error.
class Failure : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

struct Command {
  CLI::App* parser;  // parsed() tells whether this is the command to run
  std::function<ExitStatus()> run;
};

Command makeApps(CLI::App& orvane);
Command makeCatalogue(CLI::App& orvane);
Command makeCheck(CLI::App& orvane);
Command makeDiff(CLI::App& orvane);
Command makeImport(CLI::App& orvane);
Command makeLint(CLI::App& orvane);
Command makePorts(CLI::App& orvane);
Command makeTree(CLI::App& orvane);
Command makeUsed(CLI::App& orvane);

// Refuses "", which a script passes for a variable that it forgot to set.
inline const CLI::Validator kNotEmpty(
    [](const std::string& text) { return text.empty() ? "the argument is empty" : ""; }, "");

}  // namespace orvane::cli

#endif  // ORVANE_CLI_COMMAND_H_
