#include "orvane/findings.h"

#include <algorithm>
#include <utility>

bool OrvaneFindings::count(const char* kind, tagFindingSeverity severity) {
  const auto same = std::ranges::find_if(counts_, [&](const Count& count) {
    return count.severity == severity && std::string_view(count.kind) == kind;
  });
  if (same != counts_.end()) return ++same->found <= most_;
  counts_.push_back({kind, severity, 1});
  return most_ > 0;
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
