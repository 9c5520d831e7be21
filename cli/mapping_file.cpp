#include "cli/mapping_file.h"

#include "cli/command.h"
#include "cli/findings.h"
#include "cli/input.h"
#include "cli/output.h"
#include "cli/section_reader.h"

namespace orvane::cli {

void addSectionText(CLI::App& command, const std::string& name, std::string& path) {
  command.add_option(name, path, "Mapping section text, or -")
      ->type_name("")
      ->required()
      ->check(kNotEmpty);
}

OrvaneAppMapping readApplications(const std::string& path) {
  const Input input = readInput(path);
  SectionGroup group;
  if (!input.text.empty() && !SectionReader(input.text).next(group)) {
    throw Failure(input.name + ": no group is closed by a terminator line such as \";\"");
  }
  for (const Finding& finding : findingsOf(input.text)) {
    if (!finding.isNote) writeError(lineLabel(input, finding.line) + finding.message + "\n");
  }
  OrvaneAppMapping applications;
  applications.setSection(input.text.c_str());
  return applications;
}

}  // namespace orvane::cli
