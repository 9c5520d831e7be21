#include "orvane/comparison.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>
#include <string_view>
#include <utility>

#include "apps/application_fields.h"
#include "apps/change_writer.h"
#include "apps/ordering.h"
#include "ports/differences.h"
#include "ports/text_out.h"

namespace orvane {
namespace {

struct FactKind {
  const char* name;
  bool inSections;
};

constexpr std::array kFactKinds = {
    FactKind{"name", true},    FactKind{"type", false},         FactKind{"category", false},
    FactKind{"action", false}, FactKind{"item", true},          FactKind{"ports", true},
    FactKind{"range", false},  FactKind{"block number", false}, FactKind{"selector info", false}};

const FactKind& kindOf(tagFact fact) { return kFactKinds[static_cast<std::size_t>(fact)]; }

// By what the applications of two collections are matched.
std::pair<unsigned int, std::string_view> matchKey(const IndexedApplication& indexed) {
  const bool isNew = indexed.upid == kOrvaneNoUpid;
  return {indexed.upid, isNew ? nameOf(*indexed.application) : std::string_view()};
}

// Whether OrvanePortMapping::getDiffAsString() names anything that `one` has and `other` lacks.
bool hasMore(const OrvanePortMapping& one, const OrvanePortMapping& other) {
  const auto port = one.ports.upper_bound(0);
  const auto range = one.ranges.upper_bound(OrvanePortRange(0, 0));
  return !std::includes(other.ports.begin(), other.ports.end(), port, one.ports.end()) ||
         !std::includes(other.ranges.begin(), other.ranges.end(), range, one.ranges.end());
}

OrvaneFactValue noValue() { return {}; }

// The text that write(to) appends.
template <typename Write>
OrvaneFactValue textValue(Write write) {
  std::string text;
  write(text);
  return text;
}

// Walks the facts that differ and calls take(fact, item, before, after) for each, where before()
// and after() make the values: who only wants to know whether there are any pays for none. Stops
// when a call gives false; each step tells whether none did.
template <typename Take>
class FactWalk {
 public:
  explicit FactWalk(Take take) : take_(take) {}

  bool walk(const OrvaneApplication* older, const OrvaneApplication* newer) {
    const OrvaneItems none;
    return (older == nullptr || newer == nullptr || walkFields(*older, *newer)) &&
           forEachPair(
               older != nullptr ? older->items : none, newer != nullptr ? newer->items : none,
               [](const OrvanePortMapping& item) { return item.ip.address; },
               [this](const auto* before, const auto* after) {
                 return before != nullptr && after != nullptr ? walkItems(*before, *after)
                                                              : takeItem(before, after);
               });
  }

 private:
  bool walkFields(const OrvaneApplication& older, const OrvaneApplication& newer) {
    return takeName(nameOf(older), nameOf(newer)) &&
           takeNumber(kOrvaneFactType, nullptr, older.type, newer.type) &&
           takeNumber(kOrvaneFactCategory, nullptr, older.appCategory, newer.appCategory) &&
           takeNumber(kOrvaneFactAction, nullptr, older.action, newer.action);
  }

  bool walkItems(const OrvanePortMapping& older, const OrvanePortMapping& newer) {
    return ((older.ports == newer.ports && older.ranges == newer.ranges) ||
            (takePorts(older, newer) && walkStarts(older, newer))) &&
           takeNumber(kOrvaneFactBlockNumber, &newer, older.uniqueBlockNumber,
                      newer.uniqueBlockNumber) &&
           takeNumber(kOrvaneFactSelectorInfo, &newer, older.selectorInfo, newer.selectorInfo);
  }

  bool walkStarts(const OrvanePortMapping& older, const OrvanePortMapping& newer) {
    const auto value = [](const OrvanePortRange& range) {
      return [&] { return textValue([&](std::string& to) { range.appendRange(to); }); };
    };
    return forEachPair(older.ranges, newer.ranges, std::mem_fn(&OrvanePortRange::getEnd),
                       [&](const auto* before, const auto* after) {
                         return before == nullptr || after == nullptr || *before == *after ||
                                take_(kOrvaneFactRange, &newer, value(*before), value(*after));
                       });
  }

  bool takeName(std::string_view before, std::string_view after) {
    const auto value = [](std::string_view name) {
      return [=] { return OrvaneFactValue(std::string(name)); };
    };
    return before == after || take_(kOrvaneFactName, nullptr, value(before), value(after));
  }

  bool takeNumber(tagFact fact, const OrvanePortMapping* item, std::int64_t before,
                  std::int64_t after) {
    const auto value = [](std::int64_t number) { return [=] { return OrvaneFactValue(number); }; };
    return before == after || take_(fact, item, value(before), value(after));
  }

  // An item that one side lacks.
  bool takeItem(const OrvanePortMapping* before, const OrvanePortMapping* after) {
    const auto value = [](const OrvanePortMapping* item) {
      return [=] {
        return item == nullptr ? noValue()
                               : textValue([=](std::string& to) { item->appendPorts(to); });
      };
    };
    return take_(kOrvaneFactItem, after != nullptr ? after : before, value(before), value(after));
  }

  bool takePorts(const OrvanePortMapping& older, const OrvanePortMapping& newer) {
    const auto value = [](const OrvanePortMapping& one, const OrvanePortMapping& other) {
      return [&] { return textValue([&](std::string& to) { other.appendDiff(to, one); }); };
    };
    return (!hasMore(older, newer) ||
            take_(kOrvaneFactPorts, &newer, value(older, newer), noValue)) &&
           (!hasMore(newer, older) ||
            take_(kOrvaneFactPorts, &newer, noValue, value(newer, older)));
  }

  Take take_;
};

// How many ports and ranges of an item its port list text gives.
std::pair<std::size_t, std::size_t> countsOf(const OrvanePortMapping& item) {
  return {item.ports.size() - item.ports.count(0),
          item.ranges.size() - item.ranges.count(OrvanePortRange(0, 0))};
}

// False when the addresses or counts tell that the items differ.
bool mayBeSame(const OrvanePortMapping& a, const OrvanePortMapping& b) {
  return sameSizes(a, b) || (a.ip.address == b.ip.address && countsOf(a) == countsOf(b));
}

// What differs between two applications, of which one may be missing.
struct Seen {
  bool any = false;
  bool inSections = false;
};

Seen look(const OrvaneApplication* older, const OrvaneApplication* newer) {
  if (older == nullptr || newer == nullptr) return {true, true};
  // As in equivalent(), all items come before any walk.
  if (!std::ranges::equal(older->items, newer->items, mayBeSame)) return {true, true};
  Seen seen;
  FactWalk([&seen](tagFact fact, const auto&...) {
    seen.any = true;
    seen.inSections = kindOf(fact).inSections;
    return !seen.inSections;
  }).walk(older, newer);
  return seen;
}

// One side of some differences.
std::vector<const OrvaneApplication*> sideOf(std::span<const OrvaneDifference> differences,
                                             const OrvaneApplication* OrvaneDifference::*side) {
  std::vector<const OrvaneApplication*> applications;
  applications.reserve(differences.size());
  for (const OrvaneDifference& difference : differences) {
    if (difference.*side != nullptr) applications.push_back(difference.*side);
  }
  return applications;
}

// Updated sections tell new applications apart by nothing: given several, they would pair any two
// of them. So each begins a part of its own.
void writeChangeSections(TextOut& out, std::span<const OrvaneDifference> differences,
                         bool closeGroups) {
  while (!differences.empty()) {
    const auto end = std::ranges::find_if(differences.subspan(1), &OrvaneDifference::isNew);
    const auto part = differences.first(static_cast<std::size_t>(end - differences.begin()));
    differences = differences.subspan(part.size());
    writeChanges(out, sideOf(part, &OrvaneDifference::older),
                 sideOf(part, &OrvaneDifference::newer), closeGroups);
  }
}

}  // namespace
}  // namespace orvane

const char* OrvaneFact::getName() const { return orvane::kindOf(fact).name; }

bool OrvaneFact::isInSections() const { return orvane::kindOf(fact).inSections; }

bool OrvaneDifference::writesOlder() const {
  return older != nullptr && older->action != kOrvaneActionNone;
}

bool OrvaneDifference::writesNewer() const {
  return newer != nullptr && (writesOlder() || newer->action == kOrvaneActionAdd);
}

void OrvaneDifference::forEachFact(const std::function<void(const OrvaneFact&)>& take) const {
  orvane::FactWalk([&take](tagFact fact, const OrvanePortMapping* item, auto before, auto after) {
    take({fact, item, before(), after()});
    return true;
  }).walk(older, newer);
}

std::vector<OrvaneFact> OrvaneDifference::getFacts() const {
  std::vector<OrvaneFact> facts;
  forEachFact([&facts](const OrvaneFact& fact) { facts.push_back(fact); });
  return facts;
}

OrvaneComparison::OrvaneComparison(const OrvaneAppMapping& older, const OrvaneAppMapping& newer) {
  orvane::forEachPair(orvane::orderedIndex(older), orvane::orderedIndex(newer), orvane::matchKey,
                      [this](const auto* before, const auto* after) {
                        OrvaneDifference difference;
                        if (before != nullptr) difference.older = before->application;
                        if (after != nullptr) difference.newer = after->application;
                        const auto seen = orvane::look(difference.older, difference.newer);
                        difference.inSections = seen.inSections;
                        if (seen.any) push_back(difference);
                        return true;
                      });
}

void OrvaneComparison::appendChangeSections(std::string& to, bool closeGroups) const {
  orvane::append(to, orvane::writeChangeSections, std::span<const OrvaneDifference>(*this),
                 closeGroups);
}
