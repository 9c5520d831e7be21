// The mapping section texts that commands take.

#ifndef ORVANE_CLI_MAPPING_FILE_H_
#define ORVANE_CLI_MAPPING_FILE_H_

#include <CLI/CLI.hpp>
#include <string>

#include "cli/input.h"
#include "orvane/app_mapping.h"

namespace orvane::cli {

// Gives a command the path of a mapping section text as its next argument.
void addSectionText(CLI::App& command, const std::string& name, std::string& path);

// Reads a mapping section text. Throws Failure when it cannot be read, or when it is not empty and
// yet no group in it is closed.
Input readSectionText(const std::string& path);

// The same, and its applications. What the library passes over is told on standard error.
OrvaneAppMapping readApplications(const std::string& path);

}  // namespace orvane::cli

#endif  // ORVANE_CLI_MAPPING_FILE_H_
