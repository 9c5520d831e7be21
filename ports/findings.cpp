#include "orvane/findings.h"

#include <algorithm>
#include <utility>

bool OrvaneFindings::count(const char* kind, tagFindingSeverity severity) {
  auto same = std::ranges::find_if(counts_, [&](const Count& count) {
    return count.severity == severity && std::string_view(count.kind) == kind;
  });
  if (same == counts_.end()) same = counts_.insert(same, {kind, severity, 0, 0});
  if (same->found++ >= most_) return false;
  ++same->kept;
  return true;
}

void OrvaneFindings::add(OrvaneFinding finding) {
  if (count(finding.kind, finding.severity)) push_back(std::move(finding));
}

std::size_t OrvaneFindings::getFound(tagFindingSeverity severity) const {
  std::size_t found = 0;
  for (const Count& count : counts_) {
    if (count.severity == severity) found += count.found;
  }
  return found;
}
