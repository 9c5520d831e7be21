// Reading the command line: which subcommand it calls, help, and what is wrong with it.

#ifndef ORVANE_CLI_COMMAND_LINE_H_
#define ORVANE_CLI_COMMAND_LINE_H_

#include <memory>
#include <span>

#include "cli/command.h"

namespace orvane::cli {

class CommandLine {
 public:
  explicit CommandLine(std::span<const Subcommand> subcommands);
  CommandLine(const CommandLine&) = delete;
  CommandLine& operator=(const CommandLine&) = delete;
  ~CommandLine();

  // Reads the command line and runs what it calls. Throws Failure for wrong usage, and what that
  // throws.
  ExitStatus run(int argc, char** argv);

 private:
  std::unique_ptr<CLI::App> parser_;
  Command::Runs runs_;
};

}  // namespace orvane::cli

#endif  // ORVANE_CLI_COMMAND_LINE_H_
