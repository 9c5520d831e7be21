// Options that several subcommands take, so that they are called and mean the same everywhere.

#ifndef ORVANE_CLI_SHARED_OPTIONS_H_
#define ORVANE_CLI_SHARED_OPTIONS_H_

#include <string>

#include "cli/command.h"

namespace orvane::cli {

// The argument that is a section text.
void addSectionText(const Command& command, const std::string& name, std::string& path);

// --output FILE
void addOutput(const Command& command, std::string& path);

// --color WHEN
void addColor(const Command& command, std::string& color);

// --all: report every finding of a text rather than the first of each kind
void addAll(const Command& command, bool& all);

// --strict: write nothing once anything is reported
void addStrict(const Command& command, bool& strict);

// Throws Failure when that option is given and a message has gone to standard error. To be called
// after all that may be reported, and before anything is written.
void requireNothingReported(bool strict);

}  // namespace orvane::cli

#endif  // ORVANE_CLI_SHARED_OPTIONS_H_
