// What differs between two collections of applications.

#ifndef ORVANE_CLI_COMPARISON_H_
#define ORVANE_CLI_COMPARISON_H_

#include <string>
#include <vector>

#include "cli/terminal/json.h"
#include "orvane/app_mapping.h"

namespace orvane::cli {

// One fact that differs: a number, a port list text or another text. Something added has null
// before, something removed null after.
struct Fact {
  const OrvanePortMapping* item;  // null for a fact of the application itself
  const char* name;
  Json before;
  Json after;
  bool inSections;        // whether change sections look at it
  bool isQuoted = false;  // a text that is no port list
};

// One application that differs: removed when it has no newer side, added when it has no older one.
struct Difference {
  const OrvaneApplication* older;
  const OrvaneApplication* newer;
  std::vector<Fact> facts;

  const OrvaneApplication& either() const { return older != nullptr ? *older : *newer; }
  bool isNew() const { return either().getUpid() == kOrvaneNoUpid; }

  // Whether anything of it is of the kind that change sections look at.
  bool inSections() const;

  // Whether the action codes let change sections write its sides.
  bool writesOlder() const;
  bool writesNewer() const;
};

// Orders applications by UPID, then name, then items: a strict weak ordering, which
// OrvaneApplication::lexItemsLess() is not.
void order(OrvaneAppMapping& applications);

// Matches applications by UPID, new ones by name, the n-th of several with the n-th, and lists
// those that differ, in order. The result points into both collections.
// REQUIRES: both are ordered.
std::vector<Difference> compare(const OrvaneAppMapping& older, const OrvaneAppMapping& newer);

// The change sections of these differences.
std::string changeSections(const std::vector<Difference>& differences);

}  // namespace orvane::cli

#endif  // ORVANE_CLI_COMPARISON_H_
