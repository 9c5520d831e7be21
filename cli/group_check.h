// Walking the groups of a section text to see what reading them passes over, whatever their keys.

#ifndef ORVANE_CLI_GROUP_CHECK_H_
#define ORVANE_CLI_GROUP_CHECK_H_

#include <functional>
#include <map>
#include <span>
#include <string>
#include <string_view>

#include "cli/findings.h"
#include "cli/section_reader.h"

namespace orvane::cli {

// A key, and the check of its value.
struct KnownKey {
  std::string_view name;
  void (*check)(std::string_view key, std::string_view text, std::size_t line, Findings& findings);
};

// The key of that name, in whatever letter case; null when it is none of them.
const KnownKey* findKey(std::span<const KnownKey> keys, std::string_view name);

// The pairs of a group that the library takes: the first of each known key.
class TakenPairs {
 public:
  TakenPairs(std::span<const KnownKey> keys, const GroupLines& group, Findings& findings);

  const SectionPair* find(std::string_view key) const;
  bool empty() const { return pairs_.empty(); }

 private:
  std::map<std::string_view, const SectionPair*> pairs_;
};

// Sees a closed group.
using GroupCheck =
    std::function<void(const GroupLines& group, const TakenPairs& pairs, Findings& findings)>;

// The findings of a whole text, by line. `emptyGroup` says what a group without a known key is read
// as.
Findings checkGroups(std::string_view text, std::span<const KnownKey> keys,
                     const std::string& emptyGroup, const GroupCheck& check);

// Adds a finding when a name is longer than `room`.
void checkNameRoom(std::string_view key, std::string_view text, std::size_t room, std::size_t line,
                   Findings& findings);

}  // namespace orvane::cli

#endif  // ORVANE_CLI_GROUP_CHECK_H_
