#include "cli/group_check.h"

#include <algorithm>

#include "cli/terminal/text.h"
#include "orvane/ini.h"

namespace orvane::cli {
namespace {

void checkTerminator(const GroupLines& group, const TakenPairs& pairs,
                     const std::string& emptyGroup, Findings& findings) {
  const std::size_t line = group.terminatorLine;
  if (group.terminator != ";" && group.terminator != ";\r") {
    addNote(findings, line, "terminator",
            quote(group.terminator) + " has no \"=\" and so closes the group");
  }
  if (pairs.empty()) {
    addError(findings, line, "empty-group",
             "the group closed here has no known key: it is read as " + emptyGroup);
  }
}

// Line ends of another system: one finding for the whole text.
void checkCarriageReturns(std::string_view text, Findings& findings) {
  std::size_t line = 0;
  std::size_t count = 0;
  std::size_t first = 0;
  while (!text.empty()) {
    ++line;
    const std::size_t end = std::min(text.find('\n'), text.size());
    if (end > 0 && text[end - 1] == '\r' && count++ == 0) first = line;
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  if (count == 0) return;
  addError(findings, first, "carriage-return",
           "carriage return at the end of " + std::to_string(count) +
               (count == 1 ? " line" : " lines, this one first") +
               ": it counts as part of the line");
}

}  // namespace

const KnownKey* findKey(std::span<const KnownKey> keys, std::string_view name) {
  const IniKeyLess less;
  const auto found = std::ranges::find_if(
      keys, [&](const KnownKey& key) { return !less(key.name, name) && !less(name, key.name); });
  return found == keys.end() ? nullptr : &*found;
}

TakenPairs::TakenPairs(std::span<const KnownKey> keys, const GroupLines& group,
                       Findings& findings) {
  for (const SectionPair& pair : group.pairs) {
    const KnownKey* const known = findKey(keys, pair.key);
    if (known == nullptr) {
      addError(findings, pair.line, "unknown-key",
               "unknown key " + quote(pair.key) + " is ignored");
    } else if (const auto [held, taken] = pairs_.try_emplace(known->name, &pair); !taken) {
      addError(findings, pair.line, "repeated-key",
               std::string(known->name) + " is ignored: the group has it at line " +
                   std::to_string(held->second->line));
    } else {
      known->check(known->name, pair.value, pair.line, findings);
    }
  }
}

const SectionPair* TakenPairs::find(std::string_view key) const {
  const auto found = pairs_.find(key);
  return found == pairs_.end() ? nullptr : found->second;
}

Findings checkGroups(std::string_view text, std::span<const KnownKey> keys,
                     const std::string& emptyGroup, const GroupCheck& check) {
  Findings findings;
  checkCarriageReturns(text, findings);
  SectionReader reader(text);
  GroupLines group;
  while (reader.next(group)) {
    const TakenPairs pairs(keys, group, findings);
    checkTerminator(group, pairs, emptyGroup, findings);
    check(group, pairs, findings);
  }
  if (!group.pairs.empty()) {
    addError(findings, group.pairs.front().line, "dropped",
             "no terminator line follows: the text from here on is dropped");
  }
  std::ranges::stable_sort(findings, {}, &Finding::line);
  return findings;
}

void checkNameRoom(std::string_view key, std::string_view text, std::size_t room, std::size_t line,
                   Findings& findings) {
  if (text.size() <= room) return;
  addError(findings, line, "name",
           std::string(key) + " " + quote(text) + " is cut to " + std::to_string(room) +
               " characters: " + quote(text.substr(0, room)));
}

}  // namespace orvane::cli
