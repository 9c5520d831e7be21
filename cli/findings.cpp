#include "cli/findings.h"

#include <array>
#include <cstdint>
#include <map>
#include <memory>
#include <utility>

#include "cli/group_check.h"
#include "cli/terminal/text.h"
#include "orvane/application.h"

namespace orvane::cli {
namespace {

constexpr std::size_t kNameRoom = sizeof tagApplication::name - 1;

void checkPorts(std::string_view /*key*/, std::string_view text, std::size_t line,
                Findings& findings) {
  checkPortList(text, line, findings);
}

void checkName(std::string_view key, std::string_view text, std::size_t line, Findings& findings) {
  checkNameRoom(key, text, kNameRoom, line, findings);
}

constexpr std::array<KnownKey, 9> kApplicationKeys = {{
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

// The applications read so far, to see what a further group of one cannot add to it.
class HeldApplications {
 public:
  void add(const GroupLines& group, const TakenPairs& pairs, Findings& findings) {
    OrvaneApplication read;
    read.setSection(std::string(group.text).c_str());
    const bool isNew = read.getUpid() == kOrvaneNoUpid;
    const SectionPair* const groupId = pairs.find("GroupID");
    if (isNew && groupId == nullptr) return;  // an application of its own
    const OrvanePortMapping& item = read.getItems().front();
    const auto upidKey = std::pair(Key::kUpid, read.getUpid());
    const auto idKey = std::pair(Key::kGroupId, static_cast<unsigned int>(read.getID()));
    const auto found = byKey_.find(isNew ? idKey : upidKey);
    if (found == byKey_.end()) {
      const std::string id = groupId == nullptr ? "a fresh one" : std::to_string(read.getID());
      const auto held = std::make_shared<Held>(Held{read, id, {{item.getIpAddress(), item}}});
      if (!isNew) byKey_.emplace(upidKey, held);
      if (groupId != nullptr) byKey_.try_emplace(idKey, held);
      return;
    }
    Held& held = *found->second;
    if (isNew && held.application.getUpid() != kOrvaneNoUpid) {
      addError(findings, groupId->line, "conflict",
               "GroupID " + held.id + " is that of UPID " + upidText(held.application) +
                   ": this group without UPID becomes part of that application");
    }
    compareFields(held, read, pairs, findings);
    const auto [same, added] = held.items.try_emplace(item.getIpAddress(), item);
    if (added) {
      compareCategories(held.application, read, pairs, findings);
      return;
    }
    compareItems(same->second, item, pairs, findings);
    same->second.addPorts(item.getPorts());
    same->second.addRanges(item.getRanges());
  }

 private:
  // A group with a UPID is looked up by it, one without by its GroupID, also among those with a
  // UPID.
  enum class Key : std::uint8_t { kUpid, kGroupId };

  struct Held {
    OrvaneApplication application;  // as its first group says it, like the identifier
    std::string id;
    std::map<unsigned int, OrvanePortMapping> items;  // of all its groups, by address
  };

  // All fields are those of the first group; its items alone grow.
  static void compareFields(const Held& held, const OrvaneApplication& read,
                            const TakenPairs& pairs, Findings& findings) {
    const auto compare = [&](std::string_view key, const std::string& first,
                             const std::string& second) {
      const SectionPair* const pair = pairs.find(key);
      if (pair == nullptr || first == second) return;
      addError(findings, pair->line, "conflict",
               std::string(key) + " " + second +
                   " is ignored: the first group of the application makes it " + first);
    };
    const OrvaneApplication& first = held.application;
    compare("ApplName", quote(first.getName()), quote(read.getName()));
    compare("SelectorType", std::to_string(first.getType()), std::to_string(read.getType()));
    compare("Action", std::to_string(first.getAction()), std::to_string(read.getAction()));
    compare("GroupID", held.id, std::to_string(read.getID()));
  }

  // A group for an address that the application holds adds its ports and ranges, nothing else.
  static void compareItems(const OrvanePortMapping& held, const OrvanePortMapping& item,
                           const TakenPairs& pairs, Findings& findings) {
    const auto compare = [&](std::string_view key, auto first, auto second) {
      const SectionPair* const pair = pairs.find(key);
      if (pair == nullptr || first == second) return;
      addError(findings, pair->line, "conflict",
               std::string(key) + " " + std::to_string(second) +
                   " is ignored: the first group of the address makes it " + std::to_string(first));
    };
    compare("UniqueBlockNumber", held.getUniqueBlockNumber(), item.getUniqueBlockNumber());
    compare("SelectorTypeInfo", held.getSelectorInfo(), item.getSelectorInfo());
    for (const OrvanePortRange& range : item.getRanges()) {
      const auto rival = held.getRanges().find(range);
      if (rival == held.getRanges().end() || *rival == range) continue;
      const std::string ignored = range.getRange();
      addError(findings, pairs.find("PortRange")->line, "conflict",
               "range " + ignored + " is ignored: an earlier group of the address has " +
                   rival->getRange());
    }
  }

  // A new item keeps its selector info, but that no longer sets the category.
  static void compareCategories(const OrvaneApplication& held, const OrvaneApplication& read,
                                const TakenPairs& pairs, Findings& findings) {
    if (read.getAppCategory() == kOrvaneCategory0 || held.getAppCategory() != kOrvaneCategory0) {
      return;
    }
    addError(findings, pairs.find("SelectorTypeInfo")->line, "conflict",
             "SelectorTypeInfo " + std::to_string(read.getItems().front().getSelectorInfo()) +
                 " leaves the category at 0: the first group of the application decides it");
  }

  std::map<std::pair<Key, unsigned int>, std::shared_ptr<Held>> byKey_;
};

}  // namespace

bool isMappingKey(std::string_view key) { return findKey(kApplicationKeys, key) != nullptr; }

Findings findingsOf(std::string_view sectionText) {
  HeldApplications applications;
  return checkGroups(sectionText, kApplicationKeys, "a nameless application without ports",
                     [&](const GroupLines& group, const TakenPairs& pairs, Findings& findings) {
                       applications.add(group, pairs, findings);
                     });
}

}  // namespace orvane::cli
