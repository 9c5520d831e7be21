// The findings in section texts: they come in the order of the lines, and a text without any is
// read whole.

#include <orvane/orvane.h>

#include <algorithm>

#include "cli/findings.h"
#include "fuzz.h"

namespace {

void checkOrder(const std::string& text, const orvane::cli::Findings& findings) {
  const auto lines = static_cast<std::size_t>(std::ranges::count(text, '\n')) + 1;
  fuzz::require(std::ranges::is_sorted(findings, {}, &orvane::cli::Finding::line));
  for (const auto& finding : findings) {
    fuzz::require(finding.line >= 1 && finding.line <= lines && !finding.message.empty());
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text = fuzz::untilNulOf(data, size);
  const auto findings = orvane::cli::findingsOf(text);
  checkOrder(text, findings);
  checkOrder(text, orvane::cli::catalogueFindingsOf(text));
  orvane::cli::isCatalogue(text);

  // Text without a finding is read whole: what is written of it is read the same.
  if (!findings.empty()) return 0;
  OrvaneAppMapping mapping;
  mapping.setSection(text.c_str());
  const std::string written = mapping.getSection(true);
  OrvaneAppMapping again;
  again.setSection(written.c_str());
  fuzz::require(again.getSection(true) == written && again.size() == mapping.size());
  return 0;
}
