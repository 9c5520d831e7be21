#include "cli/port_argument.h"

#include "cli/files/failure.h"
#include "cli/files/output.h"
#include "cli/findings.h"
#include "cli/terminal/text.h"

namespace orvane::cli {

OrvanePortMapping readPortArgument(const std::string& command, const std::string& what,
                                   const std::string& text) {
  Findings findings;
  checkPortList(text, 0, findings);
  std::string messages;
  for (const Finding& finding : findings) {
    if (finding.isNote) continue;
    messages.append(command).append(": ").append(what).append(": ");
    messages.append(finding.message).append("\n");
  }
  writeError(messages);
  OrvanePortMapping mapping;
  mapping.setPorts(text);
  if (!text.empty() && mapping.getPortsAsString().empty()) {
    throw Failure(what + ": nothing in " + quote(text) + " is a port or range");
  }
  return mapping;
}

}  // namespace orvane::cli
