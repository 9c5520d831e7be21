#include <memory>
#include <string>
#include <vector>

#include "cli/command.h"
#include "cli/files/failure.h"
#include "cli/files/output.h"
#include "cli/port_argument.h"
#include "cli/shared_options.h"
#include "orvane/port_mapping.h"

namespace orvane::cli {
namespace {

struct PortsOptions {
  std::vector<std::string> lists;
  std::string output;
  bool diff = false;
};

ExitStatus normalisePorts(const PortsOptions& options) {
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

void describePorts(const Command& command) {
  const auto options = std::make_shared<PortsOptions>();
  command.arguments("TEXT", options->lists, "Port lists such as 80,443,1000-2000").isRequired();
  command.flag("--diff", options->diff, "Write what the second list has and the first has not");
  addOutput(command, options->output);
  command.close(
      "With --diff a range counts as present when the first list has one with the same end.\n"
      "Exit status: 0 done, 1 --diff wrote something, 2 unusable.\n"
      "Example: orvane ports --diff 80,443 80,8080,1000-2000");
  command.runs([options] { return normalisePorts(*options); });
}

}  // namespace orvane::cli
