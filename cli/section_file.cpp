#include "cli/section_file.h"

#include "cli/files/failure.h"
#include "cli/files/output.h"
#include "cli/section_reader.h"

namespace orvane::cli {

Input readClosedGroups(const std::string& path, Findings (*findingsOf)(std::string_view)) {
  Input input = readInput(path);
  GroupLines group;
  if (!input.text.empty() && !SectionReader(input.text).next(group)) {
    throw Failure(input.name + ": no group is closed by a terminator line such as \";\"");
  }
  for (const Finding& finding : findingsOf(input.text)) {
    if (!finding.isNote) writeError(lineLabel(input, finding.line) + finding.message + "\n");
  }
  return input;
}

OrvaneAppMapping readApplications(const std::string& path) {
  OrvaneAppMapping applications;
  applications.setSection(readClosedGroups(path, findingsOf).text.c_str());
  return applications;
}

}  // namespace orvane::cli
