// What the command says when memory runs out.

#ifndef ORVANE_CLI_MEMORY_H_
#define ORVANE_CLI_MEMORY_H_

#include <string>

namespace orvane::cli {

// The command as the user called it, which messages begin with: "orvane diff", "orvane import
// services"; "orvane" until it is known.
const std::string& calledName();
void rememberName(std::string called);

}  // namespace orvane::cli

#endif  // ORVANE_CLI_MEMORY_H_
