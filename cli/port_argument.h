// Port lists given on the command line.

#ifndef ORVANE_CLI_PORT_ARGUMENT_H_
#define ORVANE_CLI_PORT_ARGUMENT_H_

#include <string>

#include "orvane/port_mapping.h"

namespace orvane::cli {

// Reads the port list that `what` ("list 2", "--ports") gives to the command ("orvane ports"). What
// is skipped is told on standard error. Throws Failure when there is text but nothing in it is
// usable.
OrvanePortMapping readPortArgument(const std::string& command, const std::string& what,
                                   const std::string& text);

}  // namespace orvane::cli

#endif  // ORVANE_CLI_PORT_ARGUMENT_H_
