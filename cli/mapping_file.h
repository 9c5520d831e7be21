// The mapping section texts that commands take.

#ifndef ORVANE_CLI_MAPPING_FILE_H_
#define ORVANE_CLI_MAPPING_FILE_H_

#include <CLI/CLI.hpp>
#include <string>

#include "orvane/app_mapping.h"

namespace orvane::cli {

// Gives a command the path of a mapping section text as its next argument.
void addSectionText(CLI::App& command, const std::string& name, std::string& path);

// Reads the applications of a mapping section text. What the library passes over is told on
// standard error. Throws Failure when the text cannot be read, or when it is not empty and yet no
// group in it is closed.
OrvaneAppMapping readApplications(const std::string& path);

}  // namespace orvane::cli

#endif  // ORVANE_CLI_MAPPING_FILE_H_
