// The section texts that commands take.

#ifndef ORVANE_CLI_FILES_SECTION_FILE_H_
#define ORVANE_CLI_FILES_SECTION_FILE_H_

#include <string>

#include "orvane/app_info_array.h"
#include "orvane/app_mapping.h"
#include "orvane/findings.h"

namespace orvane::cli {

// Room for what is to be reported of one input: all of it, or the first 100 of each kind.
OrvaneFindings findingsToReport(bool all);

// Tells on standard error what was found in the input of that name, notes left out; what the list
// has no room for is counted.
void reportFindings(const std::string& name, const OrvaneFindings& findings);

// How many of one kind a list has no room for, in words.
std::string restOf(const OrvaneFindings::Count& count);

// The applications of a mapping section text. What is passed over is reported as above. Throws
// Failure when the text cannot be read, or when it is not empty and yet no group in it is closed.
OrvaneAppMapping readApplications(const std::string& path, bool all);

// The same for the entries of a catalogue text.
OrvaneAppInfoArray readCatalogue(const std::string& path, bool all);

}  // namespace orvane::cli

#endif  // ORVANE_CLI_FILES_SECTION_FILE_H_
