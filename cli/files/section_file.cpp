#include "cli/files/section_file.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

#include "cli/files/failure.h"
#include "cli/files/input.h"
#include "cli/files/output.h"
#include "cli/findings.h"
#include "cli/section_reader.h"
#include "cli/terminal/text.h"

namespace orvane::cli {
namespace {

constexpr std::size_t kMostOfAKind = 100;

// A message before it was escaped.
std::string raw(std::string_view escaped) {
  std::string text;
  while (!escaped.empty()) {
    std::size_t length = 1;
    char c = escaped.front();
    if (escaped.starts_with("\\x")) {
      length = 4;
      c = static_cast<char>(kHexDigits.find(escaped[2]) << 4U | kHexDigits.find(escaped[3]));
    } else if (c == '\\') {
      length = 2;
    }
    text.push_back(c);
    escaped.remove_prefix(length);
  }
  return text;
}

// Reads a text into `object`.
template <typename Object>
Object readText(const std::string& path, bool all, Findings (*findingsOf)(std::string_view)) {
  const Input input = readInput(path);
  GroupLines group;
  if (!input.text.empty() && !SectionReader(input.text).next(group)) {
    throw Failure(input.name + ": no group is closed by a terminator line such as \";\"");
  }
  OrvaneFindings findings = findingsToReport(all);
  for (const Finding& finding : findingsOf(input.text)) {
    findings.add({finding.line, finding.isNote ? kOrvaneFindingNote : kOrvaneFindingError,
                  finding.kind, "", raw(finding.message)});
  }
  Object object;
  object.setSection(std::string_view(input.text));
  reportFindings(input.name, findings);
  return object;
}

}  // namespace

OrvaneFindings findingsToReport(bool all) {
  return all ? OrvaneFindings() : OrvaneFindings(kMostOfAKind);
}

void reportFindings(const std::string& name, const OrvaneFindings& findings) {
  std::string text;
  for (const OrvaneFinding& finding : findings) {
    if (finding.severity != kOrvaneFindingError) continue;
    text += name + ":" + std::to_string(finding.line) + ": " + escape(finding.message) + "\n";
  }
  for (const OrvaneFindings::Count& count : findings.getCounts()) {
    if (count.severity != kOrvaneFindingError) continue;
    const auto shown =
        static_cast<std::size_t>(std::ranges::count_if(findings, [&](const OrvaneFinding& finding) {
          return finding.severity == count.severity && std::string_view(finding.kind) == count.kind;
        }));
    if (shown == count.found) continue;
    text += name + ": " + std::to_string(count.found - shown) + " more of kind '" + count.kind +
            "' (--all shows them)\n";
  }
  writeError(text);
}

OrvaneAppMapping readApplications(const std::string& path, bool all) {
  return readText<OrvaneAppMapping>(path, all, findingsOf);
}

OrvaneAppInfoArray readCatalogue(const std::string& path, bool all) {
  return readText<OrvaneAppInfoArray>(path, all, catalogueFindingsOf);
}

}  // namespace orvane::cli
