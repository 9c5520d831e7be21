// What a catalogue tells of a list of UPIDs, worded step by step: what the library's ways have to
// give as well.

#ifndef ORVANE_TESTS_PLAIN_CATALOGUE_H_
#define ORVANE_TESTS_PLAIN_CATALOGUE_H_

#include <string>
#include <vector>

#include "orvane/app_info_array.h"

namespace plain {

struct UpidViews {
  std::vector<unsigned int> known;
  std::vector<unsigned int> unknown;
  std::string sections;
  std::string merged;
  std::string whole;  // with the applications of the mapping added
};

inline UpidViews viewsOf(const OrvaneAppInfoArray& catalogue, const OrvaneAppMapping& mapping,
                         const std::vector<unsigned int>& upids, bool terminate) {
  UpidViews views;
  views.whole = catalogue.getSection(terminate);
  for (const unsigned int upid : upids) {
    const OrvaneAppInfo* const entry = catalogue.find(upid);
    const OrvaneApplication* const application = mapping.find(upid);
    if (application != mapping.end()) {
      OrvaneAppInfo added;
      added = *application;
      added.setReserved1(kOrvaneReservedAdded);
      views.whole += added.getSection(terminate);
    }
    (entry == catalogue.end() ? views.unknown : views.known).push_back(upid);
    if (entry == catalogue.end()) continue;
    views.sections += entry->getSection(terminate);
    OrvaneAppInfo copy(*entry);
    if (application != mapping.end()) {
      copy.addPorts(*application);
      copy.setReserved1(kOrvaneReservedMerged);
    }
    views.merged += copy.getSection(terminate);
  }
  return views;
}

}  // namespace plain

#endif  // ORVANE_TESTS_PLAIN_CATALOGUE_H_
