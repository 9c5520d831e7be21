// The section text of a collection: read at once against group by group, and its differences.

#include <orvane/orvane.h>

#include <algorithm>
#include <sstream>

#include "fuzz.h"

namespace {

int drawn = 0;

}  // namespace

// Instead of the C library's, which draws an identifier twice now and then: inputs repeat, and a
// new application is never taken for another one by chance.
extern "C" int rand() { return drawn++; }

namespace {

// Reads each closed group into an application of its own and adds that.
void addGroupByGroup(const std::string& text, OrvaneAppMapping& mapping) {
  std::istringstream lines(text.c_str());
  std::string group;
  for (std::string line; std::getline(lines, line);) {
    if (line.empty()) continue;
    group += line + "\n";
    if (line.find('=') != std::string::npos) continue;
    OrvaneApplication application;
    application.setSection(group.c_str());
    mapping.add(application);
    group.clear();
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text = fuzz::textOf(data, size);
  drawn = 0;
  OrvaneAppMapping atOnce;
  atOnce.setSection(text.c_str());
  OrvaneAppMapping oneByOne;
  addGroupByGroup(text, oneByOne);
  // Identifiers drawn by chance may differ, and with them which new applications are united.
  if (text.find("GroupID") == std::string::npos) {
    for (auto* mapping : {&atOnce, &oneByOne}) {
      std::erase_if(*mapping, [](const auto& a) { return a.getUpid() == kOrvaneNoUpid; });
    }
  }
  for (auto* mapping : {&atOnce, &oneByOne}) {
    for (OrvaneApplication& application : *mapping) application.setID(0);
  }
  if (atOnce.size() == oneByOne.size()) {
    fuzz::require(std::string(atOnce.getSection(true)) == std::string(oneByOne.getSection(true)));
  } else {
    fuzz::require(std::ranges::count(atOnce, kOrvaneNoUpid, &OrvaneApplication::getUpid) > 0);
  }
  fuzz::require(std::string(atOnce.getUpdatedSection(atOnce, true)).empty());

  OrvaneAppMapping half(atOnce);
  half.resize(half.size() / 2);
  atOnce.getUpdatedSection(half, true);
  half.getUpdatedSection(atOnce, false);
  atOnce.updateNew(half);
  half.removeNew(atOnce);
  half.sortByName();
  return 0;
}
