#include "apps/application_watcher.h"

namespace orvane {

void ApplicationReporter::made(const ApplicationGroup& group) {
  hasId_.push_back(group.holds(kGroupId));
  leavesCategory_ = false;
}

// All fields of an application are those of its first group; its items alone grow.
void ApplicationReporter::joined(const ApplicationGroup& group, std::size_t place,
                                 const OrvaneApplication& held) {
  OrvaneApplication read = ApplicationAccess::make(0);
  readFields(group, read, *this);
  const auto heldId = [&] { return hasId_[place] ? std::to_string(held.getID()) : "a fresh one"; };
  if (read.getUpid() == kOrvaneNoUpid && held.getUpid() != kOrvaneNoUpid) {
    error("conflict", kApplicationKeys[kGroupId], group[kGroupId].data(), [&] {
      return "GroupID " + heldId() + " is that of UPID " + std::to_string(held.getUpid()) +
             ": this group without UPID becomes part of that application";
    });
  }
  compareFields(group, read, held);
  if (group.holds(kGroupId) && !(hasId_[place] && read.getID() == held.getID())) {
    ignored(group, kGroupId, std::to_string(read.getID()), heldId());
  }
  leavesCategory_ =
      read.getAppCategory() != kOrvaneCategory0 && held.getAppCategory() == kOrvaneCategory0;
}

void ApplicationReporter::fieldsIgnored(const ApplicationRecord& record,
                                        const OrvaneApplication& held) {
  OrvaneApplication read = ApplicationAccess::make(0);
  readOwnFields(record, read, *this);
  compareFields(record, read, held);
}

template <typename Fields>
void ApplicationReporter::compareFields(const Fields& fields, const OrvaneApplication& read,
                                        const OrvaneApplication& held) {
  if (fields.holds(kApplName) && nameOf(read) != nameOf(held)) {
    ignored(fields, kApplName, quoted(nameOf(read)), quoted(nameOf(held)));
  }
  if (fields.holds(kSelectorType) && read.getType() != held.getType()) {
    ignored(fields, kSelectorType, std::to_string(read.getType()), std::to_string(held.getType()));
  }
  if (fields.holds(kAction) && read.getAction() != held.getAction()) {
    ignored(fields, kAction, std::to_string(read.getAction()), std::to_string(held.getAction()));
  }
}

template <typename Fields>
void ApplicationReporter::ignored(const Fields& fields, ApplicationField field,
                                  const std::string& value, const std::string& first) {
  error("conflict", kApplicationKeys[field], fields[field].data(), [&] {
    return std::string(kApplicationKeys[field]) + " " + value +
           " is ignored: the first group of the application makes it " + first;
  });
}

void ApplicationReporter::replaced(const ApplicationGroup& group, const ApplicationGroup& before) {
  for (const ApplicationField field : {kAction, kSelectorType, kUpid, kApplName, kGroupId}) {
    if (!group.holds(field) || !before.holds(field)) continue;
    Reporter::replaced(kApplicationKeys[field], group[field], before[field]);
  }
}

// A new item keeps its selector info, but that no longer sets the category.
void ApplicationReporter::newItem(const ItemFields& item, const ItemPlaces& places) {
  if (!places.leavesCategory) return;
  error("conflict", kApplicationKeys[kSelectorTypeInfo], places.selectorInfo, [&] {
    return "SelectorTypeInfo " + std::to_string(item.selectorInfo) +
           " leaves the category at 0: the first group of the application decides it";
  });
}

// A group for an address that the application holds adds its ports and ranges, nothing else.
void ApplicationReporter::sameItem(const ItemPlaces& places, const OrvanePortMapping& item,
                                   const OrvanePortMapping& held) {
  const auto compare = [&](ApplicationField field, const char* place, auto first, auto second) {
    if (place == nullptr || first == second) return;
    error("conflict", kApplicationKeys[field], place, [&] {
      return std::string(kApplicationKeys[field]) + " " + std::to_string(second) +
             " is ignored: the first group of the address makes it " + std::to_string(first);
    });
  };
  compare(kUniqueBlockNumber, places.blockNumber, held.getUniqueBlockNumber(),
          item.getUniqueBlockNumber());
  compare(kSelectorTypeInfo, places.selectorInfo, held.getSelectorInfo(), item.getSelectorInfo());
  for (const OrvanePortRange& range : item.getRanges()) {
    const auto rival = held.getRanges().find(range);
    if (rival == held.getRanges().end() || *rival == range) continue;
    error("conflict", kApplicationKeys[kPortRange], places.portList, [&] {
      return "range " + textOf({range.getStart(), range.getEnd()}) +
             " is ignored: an earlier group of the address has " +
             textOf({rival->getStart(), rival->getEnd()});
    });
  }
}

}  // namespace orvane
