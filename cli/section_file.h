// The section texts that commands take.

#ifndef ORVANE_CLI_SECTION_FILE_H_
#define ORVANE_CLI_SECTION_FILE_H_

#include <string>
#include <string_view>

#include "cli/files/input.h"
#include "cli/findings.h"
#include "orvane/app_mapping.h"

namespace orvane::cli {

// Reads a section text. What the library passes over, by `findingsOf`, is told on standard error.
// Throws Failure when the text cannot be read, or when it is not empty and yet no group in it is
// closed.
Input readClosedGroups(const std::string& path, Findings (*findingsOf)(std::string_view));

// The applications of a mapping section text, read so.
OrvaneAppMapping readApplications(const std::string& path);

}  // namespace orvane::cli

#endif  // ORVANE_CLI_SECTION_FILE_H_
