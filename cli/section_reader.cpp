#include "cli/section_reader.h"

#include <algorithm>

#include "cli/command.h"
#include "cli/findings.h"
#include "cli/output.h"

namespace orvane::cli {

bool SectionReader::next(SectionGroup& group) {
  group.text = rest_;
  group.pairs.clear();
  while (!rest_.empty()) {
    ++line_;
    const std::size_t end = std::min(rest_.find('\n'), rest_.size());
    const std::string_view line = rest_.substr(0, end);
    rest_.remove_prefix(std::min(end + 1, rest_.size()));
    if (line.empty()) continue;
    const std::size_t equals = line.find('=');
    if (equals == std::string_view::npos) {
      group.text.remove_suffix(rest_.size());
      group.terminatorLine = line_;
      group.terminator = line;
      return true;
    }
    group.pairs.push_back({line_, line.substr(0, equals), line.substr(equals + 1)});
  }
  return false;
}

void addSectionText(CLI::App& command, const std::string& name, std::string& path) {
  command.add_option(name, path, "Mapping section text, or -")
      ->type_name("")
      ->required()
      ->check(kNotEmpty);
}

Input readSectionText(const std::string& path) {
  Input input = readInput(path);
  SectionGroup group;
  if (!input.text.empty() && !SectionReader(input.text).next(group)) {
    throw Failure(input.name + ": no group is closed by a terminator line such as \";\"");
  }
  return input;
}

OrvaneAppMapping readApplications(const std::string& path) {
  const Input input = readSectionText(path);
  for (const Finding& finding : findingsOf(input.text)) {
    if (!finding.isNote) writeError(lineLabel(input, finding.line) + finding.message + "\n");
  }
  OrvaneAppMapping applications;
  applications.setSection(input.text.c_str());
  return applications;
}

}  // namespace orvane::cli
