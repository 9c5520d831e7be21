#include "cli/port_argument.h"

#include "cli/files/failure.h"
#include "cli/files/output.h"
#include "cli/terminal/text.h"

namespace orvane::cli {

OrvanePortMapping readPortArgument(const std::string& command, const std::string& what,
                                   const std::string& text) {
  OrvaneFindings findings;
  OrvanePortMapping mapping;
  mapping.setPortsReported(text, findings);
  std::string messages;
  for (const OrvaneFinding& finding : findings) {
    if (finding.severity != kOrvaneFindingError) continue;
    messages.append(command).append(": ").append(what).append(": ");
    messages.append(escape(finding.message)).append("\n");
  }
  writeError(messages);
  if (!text.empty() && mapping.getPortsAsString().empty()) {
    throw Failure(what + ": nothing in " + quote(text) + " is a port or range");
  }
  return mapping;
}

}  // namespace orvane::cli
