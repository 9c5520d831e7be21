#include "cli/port_argument.h"

#include "cli/command.h"
#include "cli/findings.h"
#include "cli/output.h"
#include "cli/text.h"

namespace orvane::cli {

OrvanePortMapping readPortArgument(const std::string& command, const std::string& what,
                                   const std::string& text) {
  Findings findings;
  checkPortList(text, 0, findings);
  for (const Finding& finding : findings) {
    if (!finding.isNote) writeError(command + ": " + what + ": " + finding.message + "\n");
  }
  OrvanePortMapping mapping;
  mapping.setPorts(text);
  if (!text.empty() && mapping.getPortsAsString().empty()) {
    throw Failure(what + ": nothing in " + quote(text) + " is a port or range");
  }
  return mapping;
}

}  // namespace orvane::cli
