#include "cli/command_line.h"

#include <CLI/CLI.hpp>
#include <sstream>
#include <vector>

#include "cli/files/failure.h"
#include "cli/files/output.h"
#include "cli/memory.h"
#include "cli/terminal/help.h"
#include "cli/terminal/text.h"

namespace orvane::cli {
namespace {

std::string nameOf(const CLI::App& parser) {
  const auto called = parser.get_subcommands();
  return called.empty() ? parser.get_name() : parser.get_name() + " " + nameOf(*called.front());
}

const CLI::App& calledCommand(const CLI::App& parser) {
  const auto called = parser.get_subcommands();
  return called.empty() ? parser : calledCommand(*called.front());
}

[[noreturn]] void rejectUsage(const CLI::App& parser, const std::string& reason) {
  throw Failure(escape(reason) + " (see " + nameOf(parser) + " --help)");
}

// What was meant by the first word that resembles one which the called command knows: one that is
// left over, or one that was taken for an argument beside a subcommand.
std::string suggestion(const CLI::App& parser) {
  const CLI::App& command = calledCommand(parser);
  std::vector<std::string> words = parser.remaining(true);
  if (!command.get_subcommands({}).empty()) {
    for (const CLI::Option* const option : command.get_options()) {
      if (!option->get_positional()) continue;
      words.insert(words.end(), option->results().begin(), option->results().end());
    }
  }
  for (const std::string& word : words) {
    const std::string nearest = nearestWord(command, word.substr(0, word.find('=')));
    if (!nearest.empty()) return "; did you mean " + nearest + "?";
  }
  return {};
}

// Help and version are successes; everything else that stops the parser is wrong usage.
void finishParsing(const CLI::App& parser, const CLI::ParseError& stop) {
  const bool isUnknown = dynamic_cast<const CLI::ExtrasError*>(&stop) != nullptr;
  if (stop.get_exit_code() != 0) {
    rejectUsage(parser, stop.what() + (isUnknown ? suggestion(parser) : ""));
  }
  std::ostringstream text;
  parser.exit(stop, text, text);
  writeOutput(text.str(), {}, {});
}

}  // namespace

CommandLine::CommandLine(std::span<const Subcommand> subcommands)
    : parser_(std::make_unique<CLI::App>(
          "Describe network applications by their ports and addresses, and compare them.",
          "orvane")) {
  parser_->formatter(std::make_shared<HelpFormatter>());
  parser_->set_version_flag("--version", "orvane " ORVANE_VERSION);
  const Command orvane(parser_.get(), &runs_);
  for (const Subcommand& subcommand : subcommands) {
    subcommand.describe(orvane.subcommand(subcommand.name, subcommand.meaning));
  }
  orvane.close(
      "Files are section texts; - reads standard input.\n"
      "Exit status: 0 done, 1 something was found, 2 unusable input or usage.\n"
      "Example: orvane diff running.txt wanted.txt > change.txt");
}

CommandLine::~CommandLine() = default;

ExitStatus CommandLine::run(int argc, char** argv) {
  try {
    parser_->parse(argc, argv);
  } catch (const CLI::ParseError& stop) {
    rememberName(nameOf(*parser_));
    finishParsing(*parser_, stop);
    return kSuccess;
  }
  rememberName(nameOf(*parser_));
  const auto called = runs_.find(&calledCommand(*parser_));
  if (called == runs_.end()) rejectUsage(*parser_, "a subcommand is required");
  return called->second();
}

}  // namespace orvane::cli
