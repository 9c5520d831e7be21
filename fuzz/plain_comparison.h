// The comparison of collections, worded step by step: what the library's has to give as well.

#ifndef ORVANE_FUZZ_PLAIN_COMPARISON_H_
#define ORVANE_FUZZ_PLAIN_COMPARISON_H_

#include <algorithm>
#include <map>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "orvane/comparison.h"
#include "tests/plain_collection.h"
#include "tests/shown_comparison.h"

namespace plain {

// What applications are put in order by.
inline auto contentOf(const OrvaneApplication& application) {
  std::vector<std::tuple<unsigned int, std::vector<unsigned short>, std::vector<unsigned int>>>
      items;
  for (const OrvanePortMapping& item : application.getItems()) {
    items.emplace_back(item.getIpAddress(),
                       std::vector(item.getPorts().begin(), item.getPorts().end()),
                       std::vector<unsigned int>());
    for (const OrvanePortRange& range : item.getRanges()) {
      std::get<2>(items.back()).push_back(range.getEnd());
    }
  }
  return std::tuple(application.getUpid(), std::string(application.getName()), items);
}

inline void sortByUpid(OrvaneAppMapping& mapping) {
  std::stable_sort(mapping.begin(), mapping.end(),
                   [](const auto& a, const auto& b) { return contentOf(a) < contentOf(b); });
}

// The two sides of whatever has one key, either of which may be missing.
template <typename T>
using Sides = std::pair<const T*, const T*>;

inline std::string factsOf(const Sides<OrvanePortMapping>& sides) {
  const auto [older, newer] = sides;
  const std::string none = "none";
  if (newer == nullptr) return factLine(older, "item", older->getPortsAsString(), none);
  if (older == nullptr) return factLine(newer, "item", none, newer->getPortsAsString());
  std::string text;
  const std::string removed = newer->getDiffAsString(*older);
  if (!removed.empty()) text += factLine(newer, "ports", removed, none);
  const std::string added = older->getDiffAsString(*newer);
  if (!added.empty()) text += factLine(newer, "ports", none, added);
  const auto compare = [&, item = newer](const std::string& name, const std::string& before,
                                         const std::string& after) {
    if (before != after) text += factLine(item, name, before, after);
  };
  for (const OrvanePortRange& range : older->getRanges()) {
    const auto sameEnd = newer->getRanges().find(range);
    if (sameEnd == newer->getRanges().end()) continue;
    const std::string before = range.getRange();
    compare("range", before, sameEnd->getRange());
  }
  compare("block number", std::to_string(older->getUniqueBlockNumber()),
          std::to_string(newer->getUniqueBlockNumber()));
  compare("selector info", std::to_string(older->getSelectorInfo()),
          std::to_string(newer->getSelectorInfo()));
  return text;
}

inline std::string factsOf(const Sides<OrvaneApplication>& sides) {
  std::string text;
  const auto [older, newer] = sides;
  if (older != nullptr && newer != nullptr) {
    const auto compare = [&](const std::string& name, const std::string& before,
                             const std::string& after) {
      if (before != after) text += factLine(nullptr, name, before, after);
    };
    compare("name", older->getName(), newer->getName());
    compare("type", std::to_string(older->getType()), std::to_string(newer->getType()));
    compare("category", std::to_string(older->getAppCategory()),
            std::to_string(newer->getAppCategory()));
    compare("action", std::to_string(older->getAction()), std::to_string(newer->getAction()));
  }
  std::map<unsigned int, Sides<OrvanePortMapping>> items;
  if (older != nullptr) {
    for (const auto& item : older->getItems()) items[item.getIpAddress()].first = &item;
  }
  if (newer != nullptr) {
    for (const auto& item : newer->getItems()) items[item.getIpAddress()].second = &item;
  }
  for (const auto& [address, both] : items) text += factsOf(both);
  return text;
}

// The applications that differ between two collections.
inline std::vector<Sides<OrvaneApplication>> differingIn(const OrvaneAppMapping& older,
                                                         const OrvaneAppMapping& newer) {
  using List = std::vector<const OrvaneApplication*>;
  std::map<std::pair<unsigned int, std::string>, std::pair<List, List>> byKey;
  const auto listOf = [&](const OrvaneApplication& application) -> auto& {
    const bool isNew = application.getUpid() == kOrvaneNoUpid;
    return byKey[{application.getUpid(), isNew ? application.getName() : ""}];
  };
  for (const OrvaneApplication& application : older) {
    listOf(application).first.push_back(&application);
  }
  for (const OrvaneApplication& application : newer) {
    listOf(application).second.push_back(&application);
  }
  std::vector<Sides<OrvaneApplication>> differing;
  for (auto& [key, lists] : byKey) {
    for (List* list : {&lists.first, &lists.second}) {
      std::stable_sort(list->begin(), list->end(),
                       [](const auto* a, const auto* b) { return contentOf(*a) < contentOf(*b); });
      list->resize(std::max(lists.first.size(), lists.second.size()));
    }
    for (std::size_t i = 0; i < lists.first.size(); ++i) {
      const Sides<OrvaneApplication> sides = {lists.first[i], lists.second[i]};
      if (sides.first == nullptr || sides.second == nullptr || !factsOf(sides).empty()) {
        differing.push_back(sides);
      }
    }
  }
  return differing;
}

// What a comparison has to show.
inline std::string comparison(const OrvaneAppMapping& older, const OrvaneAppMapping& newer) {
  std::string text;
  for (const auto& sides : differingIn(older, newer)) {
    text += header(sides.first, sides.second) + factsOf(sides);
  }
  return text;
}

// The updated section of what has UPIDs, and of each new application with its own partner.
inline std::string changeSections(const OrvaneAppMapping& older, const OrvaneAppMapping& newer,
                                  bool close) {
  std::string text;
  OrvaneAppMapping befores;
  OrvaneAppMapping afters;
  const auto flush = [&] {
    text += updatedSection(befores, afters, close);
    befores.clear();
    afters.clear();
  };
  for (const auto& [before, after] : differingIn(older, newer)) {
    if ((before != nullptr ? before : after)->getUpid() == kOrvaneNoUpid) flush();
    if (before != nullptr) befores.push_back(*before);
    if (after != nullptr) afters.push_back(*after);
  }
  flush();
  return text;
}

}  // namespace plain

#endif  // ORVANE_FUZZ_PLAIN_COMPARISON_H_
