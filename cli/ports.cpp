#include <string>
#include <vector>

#include "cli/files/failure.h"
#include "cli/files/output.h"
#include "cli/port_argument.h"
#include "cli/subcommands.h"
#include "orvane/port_mapping.h"

namespace orvane::cli {

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

}  // namespace orvane::cli
