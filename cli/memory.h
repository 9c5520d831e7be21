// What the command says when memory runs out.

#ifndef ORVANE_CLI_MEMORY_H_
#define ORVANE_CLI_MEMORY_H_

#include <string>

namespace orvane::cli {

// The command as the user called it, which the message names; "orvane" until this is called.
void rememberCommand(std::string name);

}  // namespace orvane::cli

#endif  // ORVANE_CLI_MEMORY_H_
