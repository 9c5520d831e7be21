#include "cli/files/section_file.h"

#include <cstddef>

#include "cli/files/failure.h"
#include "cli/files/input.h"
#include "cli/files/output.h"
#include "cli/terminal/text.h"

namespace orvane::cli {
namespace {

constexpr std::size_t kMostOfAKind = 100;

bool isEmpty(const OrvaneAppMapping& applications) { return applications.empty(); }
bool isEmpty(const OrvaneAppInfoArray& catalogue) { return catalogue.begin() == catalogue.end(); }

// Reads a text into an object. Each closed group gives an application or entry.
template <typename Object>
Object readText(const std::string& path, bool all) {
  const Input input = readInput(path);
  OrvaneFindings findings = findingsToReport(all);
  Object object;
  object.setSectionReported(input.text, findings);
  if (!input.text.empty() && isEmpty(object)) {
    throw Failure(input.name + ": no group is closed by a terminator line such as \";\"");
  }
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
    text += name + (finding.line == 0 ? "" : ":" + std::to_string(finding.line)) + ": " +
            escape(finding.message) + "\n";
  }
  for (const OrvaneFindings::Count& count : findings.getCounts()) {
    if (count.severity != kOrvaneFindingError || count.found == count.kept) continue;
    text += name + ": " + restOf(count) + "\n";
  }
  writeError(text);
}

std::string restOf(const OrvaneFindings::Count& count) {
  return std::string(count.severity == kOrvaneFindingNote ? "note: " : "") +
         std::to_string(count.found - count.kept) + " more of kind '" + count.kind +
         "' (--all shows them)";
}

OrvaneAppMapping readApplications(const std::string& path, bool all) {
  return readText<OrvaneAppMapping>(path, all);
}

OrvaneAppInfoArray readCatalogue(const std::string& path, bool all) {
  return readText<OrvaneAppInfoArray>(path, all);
}

}  // namespace orvane::cli
