#include <CLI/CLI.hpp>
#include <csignal>
#include <cstdio>
#include <exception>
#include <sstream>
#include <string>
#include <vector>

#include "cli/command.h"
#include "cli/output.h"
#include "cli/text.h"

namespace orvane::cli {
namespace {

// The command as the user called it so far: "orvane", "orvane diff", "orvane import services".
std::string calledName(const CLI::App& parser) {
  const auto called = parser.get_subcommands();
  return called.empty() ? parser.get_name() : parser.get_name() + " " + calledName(*called.front());
}

[[noreturn]] void rejectUsage(const CLI::App& parser, const std::string& reason) {
  throw Failure(escape(reason) + " (see " + calledName(parser) + " --help)");
}

// Help and version are successes; everything else that stops the parser is wrong usage.
void finishParsing(const CLI::App& parser, const CLI::ParseError& stop) {
  if (stop.get_exit_code() != 0) rejectUsage(parser, stop.what());
  std::ostringstream text;
  parser.exit(stop, text, text);
  writeOutput(text.str(), {}, {});
}

ExitStatus run(CLI::App& parser, int argc, char** argv) {
  parser.set_version_flag("--version", "orvane " ORVANE_VERSION);
  const std::vector<Command> commands = {
      makeApps(parser),  makeDiff(parser),   makePorts(parser),
      makeCheck(parser), makeUsed(parser),   makeCatalogue(parser),
      makeTree(parser),  makeImport(parser), makeLint(parser),
  };
  parser.footer(
      "Files are section texts; - reads standard input.\n"
      "Exit status: 0 done, 1 something was found, 2 unusable input or usage.\n"
      "Example: orvane diff running.txt wanted.txt > change.txt");
  try {
    parser.parse(argc, argv);
  } catch (const CLI::ParseError& stop) {
    finishParsing(parser, stop);
    return kSuccess;
  }
  for (const Command& command : commands) {
    if (command.parser->parsed()) return command.run();
  }
  rejectUsage(parser, "a subcommand is required");
}

}  // namespace
}  // namespace orvane::cli

int main(int argc, char** argv) {
  std::signal(SIGPIPE, SIG_IGN);  // a reader that went away is reported, like a full disk
  CLI::App parser("Describe network applications by their ports and addresses, and compare them.",
                  "orvane");
  try {
    return orvane::cli::run(parser, argc, argv);
  } catch (const std::exception& failure) {
    const std::string message = orvane::cli::calledName(parser) + ": " + failure.what() + "\n";
    std::fputs(message.c_str(), stderr);
    return orvane::cli::kUnusable;
  }
}
