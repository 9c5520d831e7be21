#include <memory>
#include <string>
#include <vector>

#include "cli/command.h"
#include "cli/output.h"
#include "cli/port_argument.h"
#include "orvane/port_mapping.h"

namespace orvane::cli {
namespace {

struct Options {
  std::vector<std::string> lists;
  std::string output;
  bool diff = false;
};

ExitStatus normalise(const Options& options) {
  std::vector<OrvanePortMapping> mappings;
  for (const std::string& list : options.lists) {
    mappings.push_back(
        readPortArgument("orvane ports", "list " + std::to_string(mappings.size() + 1), list));
  }
  std::string text;
  if (!options.diff) {
    for (const OrvanePortMapping& mapping : mappings) text += mapping.getPortsAsString() + "\n";
    writeOutput(text, options.output, {});
    return kSuccess;
  }
  if (mappings.size() != 2) throw Failure("--diff needs two lists");
  text = mappings[0].getDiffAsString(mappings[1]);
  if (!text.empty()) text.push_back('\n');
  writeOutput(text, options.output, {});
  return text.empty() ? kSuccess : kFound;
}

}  // namespace

Command makePorts(CLI::App& orvane) {
  const auto options = std::make_shared<Options>();
  CLI::App* const parser =
      orvane.add_subcommand("ports", "Read port lists and write them sorted and merged");
  parser->add_option("TEXT", options->lists, "Port lists such as 80,443,1000-2000")
      ->type_name("")
      ->required();
  parser->add_flag("--diff", options->diff, "Write what the second list has and the first has not");
  addOutputOption(*parser, options->output);
  parser->footer(
      "With --diff a range counts as present when the first list has one with the same end.\n"
      "Exit status: 0 done, 1 --diff wrote something, 2 unusable.\n"
      "Example: orvane ports --diff 80,443 80,8080,1000-2000");
  return {parser, [options] { return normalise(*options); }};
}

}  // namespace orvane::cli
