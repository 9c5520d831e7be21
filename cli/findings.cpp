#include "cli/findings.h"

#include <algorithm>
#include <array>
#include <map>
#include <utility>

#include "cli/section_reader.h"
#include "cli/text.h"
#include "orvane/application.h"
#include "orvane/ini.h"

namespace orvane::cli {
namespace {

constexpr std::size_t kNameRoom = sizeof tagApplication::name - 1;

void checkPorts(std::string_view /*key*/, std::string_view text, std::size_t line,
                Findings& findings) {
  checkPortList(text, line, findings);
}

void checkName(std::string_view key, std::string_view text, std::size_t line, Findings& findings) {
  if (text.size() <= kNameRoom) return;
  addError(findings, line, "name",
           std::string(key) + " " + quote(text) +
               " is cut to 31 characters: " + quote(text.substr(0, kNameRoom)));
}

struct KnownKey {
  std::string_view name;
  void (*check)(std::string_view key, std::string_view text, std::size_t line, Findings& findings);
};

constexpr std::array<KnownKey, 9> kKnownKeys = {{
    {"PortRange", checkPorts},
    {"IPv4", checkAddress},
    {"Action", checkSigned},
    {"SelectorType", checkSigned},
    {"UPID", checkUnsigned},
    {"ApplName", checkName},
    {"UniqueBlockNumber", checkUnsigned},
    {"SelectorTypeInfo", checkSigned},
    {"GroupID", checkSigned},
}};

bool sameKey(std::string_view a, std::string_view b) {
  const IniKeyLess less;
  return !less(a, b) && !less(b, a);
}

// The pairs of a group that the library takes: the first of each known key.
class TakenPairs {
 public:
  TakenPairs(const SectionGroup& group, Findings& findings) {
    for (const SectionPair& pair : group.pairs) take(pair, findings);
  }

  const SectionPair* find(std::string_view key) const {
    const auto found = pairs_.find(key);
    return found == pairs_.end() ? nullptr : found->second;
  }

  bool empty() const { return pairs_.empty(); }

 private:
  void take(const SectionPair& pair, Findings& findings) {
    const auto known = std::ranges::find_if(
        kKnownKeys, [&](const KnownKey& key) { return sameKey(key.name, pair.key); });
    if (known == kKnownKeys.end()) {
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

  std::map<std::string_view, const SectionPair*> pairs_;
};

// The applications read so far, to see what a further group of one cannot add to it.
class HeldApplications {
 public:
  void add(const SectionGroup& group, const TakenPairs& pairs, Findings& findings) {
    OrvaneApplication application;
    application.setSection(std::string(group.text).c_str());
    const bool isNew = application.getUpid() == kOrvaneNoUpid;
    if (isNew && pairs.find("GroupID") == nullptr) return;  // an application of its own
    const std::pair key(application.getUpid(), isNew ? application.getID() : 0);
    const auto held = held_.find(key);
    if (held == held_.end()) {
      held_.emplace(key, std::move(application));
      return;
    }
    compareFields(held->second, application, pairs, findings);
    compareItems(held->second, application, pairs, findings);
    held->second.update(application);
  }

 private:
  static void compareFields(const OrvaneApplication& held, const OrvaneApplication& read,
                            const TakenPairs& pairs, Findings& findings) {
    const auto compare = [&](std::string_view key, const std::string& first,
                             const std::string& second) {
      const SectionPair* const pair = pairs.find(key);
      if (pair == nullptr || first == second) return;
      addError(findings, pair->line, "conflict",
               std::string(key) + " " + second +
                   " is ignored: an earlier group of the application" + " says " + first);
    };
    compare("ApplName", quote(held.getName()), quote(read.getName()));
    compare("SelectorType", std::to_string(held.getType()), std::to_string(read.getType()));
    compare("Action", std::to_string(held.getAction()), std::to_string(read.getAction()));
  }

  // A group for an address that the application holds adds its ports and ranges, nothing else.
  static void compareItems(const OrvaneApplication& held, const OrvaneApplication& read,
                           const TakenPairs& pairs, Findings& findings) {
    const OrvanePortMapping& item = read.getItems().front();
    const auto same = held.getItems().find(item);
    if (same == held.getItems().end()) return;
    const auto compare = [&](std::string_view key, auto first, auto second) {
      const SectionPair* const pair = pairs.find(key);
      if (pair == nullptr || first == second) return;
      addError(findings, pair->line, "conflict",
               std::string(key) + " " + std::to_string(second) +
                   " is ignored: an earlier group of the address says " + std::to_string(first));
    };
    compare("UniqueBlockNumber", same->getUniqueBlockNumber(), item.getUniqueBlockNumber());
    compare("SelectorTypeInfo", same->getSelectorInfo(), item.getSelectorInfo());
    for (const OrvanePortRange& range : item.getRanges()) {
      const auto rival = same->getRanges().find(range);
      if (rival == same->getRanges().end() || *rival == range) continue;
      const std::string ignored = range.getRange();
      addError(findings, pairs.find("PortRange")->line, "conflict",
               "range " + ignored + " is ignored: an earlier group of the address has " +
                   rival->getRange());
    }
  }

  std::map<std::pair<unsigned int, int>, OrvaneApplication> held_;
};

void checkTerminator(const SectionGroup& group, const TakenPairs& pairs, Findings& findings) {
  const std::size_t line = group.terminatorLine;
  if (group.terminator != ";" && group.terminator != ";\r") {
    addNote(findings, line, "terminator",
            quote(group.terminator) + " has no \"=\" and so closes the group");
  }
  if (pairs.empty()) {
    addError(findings, line, "empty-group",
             "the group closed here has no known key: it is read as a nameless application" +
                 std::string(" without ports"));
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

Findings findingsOf(std::string_view sectionText) {
  Findings findings;
  checkCarriageReturns(sectionText, findings);
  SectionReader reader(sectionText);
  HeldApplications applications;
  SectionGroup group;
  while (reader.next(group)) {
    const TakenPairs pairs(group, findings);
    checkTerminator(group, pairs, findings);
    applications.add(group, pairs, findings);
  }
  if (!group.pairs.empty()) {
    addError(findings, group.pairs.front().line, "dropped",
             "no terminator line follows: the text from here on is dropped");
  }
  std::ranges::stable_sort(findings, {}, &Finding::line);
  return findings;
}

}  // namespace orvane::cli
