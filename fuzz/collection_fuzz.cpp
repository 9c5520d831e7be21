// Operations on two collections against their wording, application by application.

#include <orvane/orvane.h>

#include <algorithm>
#include <vector>

#include "fuzz.h"
#include "plain_comparison.h"

namespace {

OrvaneAppMapping read(const std::string& text) {
  OrvaneAppMapping mapping;
  mapping.setSection(text.c_str());
  // Identifiers that were drawn differ from run to run; and reading unites what has one UPID, while
  // a collection may hold it several times.
  int id = 0;
  for (OrvaneApplication& application : mapping) {
    if (application.getUpid() != kOrvaneNoUpid) application.setUpid(application.getUpid() / 2);
    if (application.getID() < 0 || application.getID() > 1'000'000) application.setID(--id);
  }
  return mapping;
}

std::string shown(const OrvaneAppMapping& mapping) { return mapping.getSection(true); }

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::vector<std::string> texts = fuzz::textsOf(data, size, 2);
  const OrvaneAppMapping older = read(texts[0]);
  const OrvaneAppMapping newer = read(texts[1]);
  fuzz::require(older.getUpdatedSection(newer, true) == plain::updatedSection(older, newer, true));
  fuzz::require(std::string(older.getUpdatedSection(older, false)).empty());

  const OrvaneComparison comparison(older, newer);
  std::string changes;
  comparison.appendChangeSections(changes, true);
  fuzz::require(plain::show(comparison) == plain::comparison(older, newer));
  fuzz::require(changes == plain::changeSections(older, newer, true));
  fuzz::require(OrvaneComparison(newer, newer).empty());
  fuzz::require(OrvaneComparison(newer, older).size() == comparison.size());

  OrvaneAppMapping first = older;
  OrvaneAppMapping second = newer;
  OrvaneAppMapping plainFirst = older;
  OrvaneAppMapping plainSecond = newer;
  first.updateNew(second);
  plain::updateNew(plainFirst, plainSecond);
  fuzz::require(shown(second) == shown(plainSecond));
  first.removeNew(second);
  plain::removeNew(plainFirst, plainSecond);
  fuzz::require(shown(first) == shown(plainFirst) && shown(second) == shown(plainSecond));

  OrvaneAppMapping sorted = older;
  OrvaneAppMapping plainSorted = older;
  sorted.sortByUpid();
  plain::sortByUpid(plainSorted);
  fuzz::require(shown(sorted) == shown(plainSorted));
  fuzz::require(OrvaneComparison(sorted, older).empty());
  first.sortByName();
  const auto byName = [](const OrvaneApplication& a, const OrvaneApplication& b) {
    return std::string(a.getName()) < b.getName();
  };
  fuzz::require(std::ranges::is_sorted(first, byName) && first.size() == plainFirst.size());
  return 0;
}
