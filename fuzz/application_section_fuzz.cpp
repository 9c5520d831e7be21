// The section text of one application: what was read, written and read again is the same.

#include <orvane/orvane.h>

#include <algorithm>

#include "fuzz.h"

namespace {

// Whether sorting, which reads signed numbers, and merging agree on the order of all ranges.
bool ordinary(const OrvaneApplication& application) {
  return std::ranges::all_of(application.getItems(), [](const OrvanePortMapping& item) {
    return std::ranges::all_of(item.getRanges(), [](const OrvanePortRange& range) {
      return range.getStart() <= range.getEnd() && range.getEnd() <= 0x7FFFFFFF;
    });
  });
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  OrvaneApplication application;
  application.setSection(fuzz::textOf(data, size).c_str());
  const std::string written = application.getSection(true);
  OrvaneApplication again;
  again.setSection(written.c_str());
  const std::string settled = again.getSection(true);
  OrvaneApplication third;
  third.setSection(settled.c_str());
  fuzz::require(!ordinary(application) || settled == third.getSection(true));
  fuzz::require(application.getItems().size() == again.getItems().size());
  application.getInitialSection();
  application.getAddNewSection(true);
  application.getDeleteSection(false);
  application.getUpdatedSection(again, true);
  return 0;
}
