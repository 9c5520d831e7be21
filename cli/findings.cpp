#include "cli/findings.h"

#include <array>
#include <map>
#include <utility>

#include "cli/group_check.h"
#include "cli/text.h"
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
