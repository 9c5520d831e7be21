#include "cli/comparison.h"

#include <algorithm>
#include <compare>
#include <cstdint>
#include <functional>
#include <string_view>
#include <utility>

namespace orvane::cli {
namespace {

std::strong_ordering orderItems(const OrvanePortMapping& a, const OrvanePortMapping& b) {
  if (a.getIpAddress() != b.getIpAddress()) return a.getIpAddress() <=> b.getIpAddress();
  if (a.getPorts() != b.getPorts()) return a.getPorts() <=> b.getPorts();
  const auto byEnd = [](const OrvanePortRange& x, const OrvanePortRange& y) {
    return x.getEnd() <=> y.getEnd();
  };
  return std::lexicographical_compare_three_way(a.getRanges().begin(), a.getRanges().end(),
                                                b.getRanges().begin(), b.getRanges().end(), byEnd);
}

bool comesBefore(const OrvaneApplication& a, const OrvaneApplication& b) {
  if (a.getUpid() != b.getUpid()) return a.getUpid() < b.getUpid();
  const std::string_view name = a.getName();
  if (name != b.getName()) return name < b.getName();
  return std::is_lt(std::lexicographical_compare_three_way(a.getItems().begin(), a.getItems().end(),
                                                           b.getItems().begin(), b.getItems().end(),
                                                           orderItems));
}

// By what the applications of two collections are matched.
std::pair<unsigned int, std::string_view> keyOf(const OrvaneApplication& application) {
  const bool isNew = application.getUpid() == kOrvaneNoUpid;
  return {application.getUpid(), isNew ? application.getName() : std::string_view()};
}

// Walks two ordered sequences: an element whose key the other one lacks is removed or added.
template <typename Sequence, typename Key, typename Removed, typename Added, typename Matched>
void walkBoth(const Sequence& older, const Sequence& newer, Key key, Removed removed, Added added,
              Matched matched) {
  auto x = older.begin();
  auto y = newer.begin();
  while (x != older.end() && y != newer.end()) {
    if (key(*x) < key(*y)) {
      removed(*x++);
    } else if (key(*y) < key(*x)) {
      added(*y++);
    } else {
      matched(*x++, *y++);
    }
  }
  std::for_each(x, older.end(), removed);
  std::for_each(y, newer.end(), added);
}

// Collects the facts of one application.
class Facts {
 public:
  void removeItem(const OrvanePortMapping& item) {
    facts_.push_back({&item, "item", item.getPortsAsString(), Json(), true});
  }

  void addItem(const OrvanePortMapping& item) {
    facts_.push_back({&item, "item", Json(), item.getPortsAsString(), true});
  }

  void compareApplications(const OrvaneApplication& older, const OrvaneApplication& newer) {
    const std::string name = older.getName();
    if (name != newer.getName()) {
      facts_.push_back({nullptr, "name", name, newer.getName(), true, true});
    }
    compareNumbers(nullptr, "type", older.getType(), newer.getType());
    compareNumbers(nullptr, "category", older.getAppCategory(), newer.getAppCategory());
    compareNumbers(nullptr, "action", older.getAction(), newer.getAction());
    walkBoth(
        older.getItems(), newer.getItems(), std::mem_fn(&OrvanePortMapping::getIpAddress),
        [this](const auto& item) { removeItem(item); }, [this](const auto& item) { addItem(item); },
        [this](const auto& before, const auto& after) { compareItems(before, after); });
  }

  bool empty() const { return facts_.empty(); }
  std::vector<Fact> take() { return std::move(facts_); }

 private:
  void compareItems(const OrvanePortMapping& older, const OrvanePortMapping& newer) {
    const std::string removed = newer.getDiffAsString(older);
    if (!removed.empty()) facts_.push_back({&newer, "ports", removed, Json(), true});
    const std::string added = older.getDiffAsString(newer);
    if (!added.empty()) facts_.push_back({&newer, "ports", Json(), added, true});
    compareStarts(older, newer);
    compareNumbers(&newer, "block number", older.getUniqueBlockNumber(),
                   newer.getUniqueBlockNumber());
    compareNumbers(&newer, "selector info", older.getSelectorInfo(), newer.getSelectorInfo());
  }

  void compareStarts(const OrvanePortMapping& older, const OrvanePortMapping& newer) {
    for (const OrvanePortRange& range : older.getRanges()) {
      const auto sameEnd = newer.getRanges().find(range);
      if (sameEnd == newer.getRanges().end() || *sameEnd == range) continue;
      const std::string before = range.getRange();
      facts_.push_back({&newer, "range", before, sameEnd->getRange(), false});
    }
  }

  void compareNumbers(const OrvanePortMapping* item, const char* name, std::int64_t before,
                      std::int64_t after) {
    if (before != after) facts_.push_back({item, name, before, after, false});
  }

  std::vector<Fact> facts_;
};

}  // namespace

bool Difference::inSections() const {
  return older == nullptr || newer == nullptr ||
         std::ranges::any_of(facts, [](const Fact& fact) { return fact.inSections; });
}

bool Difference::writesOlder() const {
  return older != nullptr && older->getAction() != kOrvaneActionNone;
}

bool Difference::writesNewer() const {
  return newer != nullptr && (writesOlder() || newer->getAction() == kOrvaneActionAdd);
}

void order(OrvaneAppMapping& applications) { std::ranges::stable_sort(applications, comesBefore); }

std::vector<Difference> compare(const OrvaneAppMapping& older, const OrvaneAppMapping& newer) {
  std::vector<Difference> differences;
  walkBoth(
      older, newer, keyOf,
      [&](const OrvaneApplication& removed) {
        Facts facts;
        for (const OrvanePortMapping& item : removed.getItems()) facts.removeItem(item);
        differences.push_back({&removed, nullptr, facts.take()});
      },
      [&](const OrvaneApplication& added) {
        Facts facts;
        for (const OrvanePortMapping& item : added.getItems()) facts.addItem(item);
        differences.push_back({nullptr, &added, facts.take()});
      },
      [&](const OrvaneApplication& before, const OrvaneApplication& after) {
        Facts facts;
        facts.compareApplications(before, after);
        if (!facts.empty()) differences.push_back({&before, &after, facts.take()});
      });
  return differences;
}

std::string changeSections(const std::vector<Difference>& differences) {
  // The library tells new applications apart by nothing: given several, it would pair any two of
  // them. So each goes with its own partner.
  std::string text;
  OrvaneAppMapping older;
  OrvaneAppMapping newer;
  for (std::size_t i = 0; i <= differences.size(); ++i) {
    if (i == differences.size() || differences[i].isNew()) {
      text += older.getUpdatedSection(newer, true);
      older.clear();
      newer.clear();
    }
    if (i == differences.size()) break;
    if (differences[i].older != nullptr) older.push_back(*differences[i].older);
    if (differences[i].newer != nullptr) newer.push_back(*differences[i].newer);
  }
  return text;
}

}  // namespace orvane::cli
