// The fields of an application and its item, as records, section groups and setters give them.

#ifndef ORVANE_APPS_APPLICATION_FIELDS_H_
#define ORVANE_APPS_APPLICATION_FIELDS_H_

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>
#include <string_view>
#include <utility>

#include "apps/item_list.h"
#include "orvane/application.h"
#include "ports/port_list.h"
#include "ports/record.h"
#include "ports/section_lines.h"
#include "ports/text.h"

namespace orvane {

// The order of the texts in a record, and of the keys in a group.
enum ApplicationField : std::size_t {
  kPortRange,
  kIPv4,
  kAction,
  kSelectorType,
  kUpid,
  kApplName,
  kUniqueBlockNumber,
  kSelectorTypeInfo,
  kGroupId,  // only in groups
};

using ApplicationRecord = Record<kSelectorTypeInfo + 1>;
using ApplicationGroup = SectionGroup<kGroupId + 1>;

inline constexpr std::array<std::string_view, kGroupId + 1> kApplicationKeys = {
    "PortRange",        "IPv4",   "Action", "SelectorType", "UPID", "ApplName", "UniqueBlockNumber",
    "SelectorTypeInfo", "GroupID"};

// The identifier of a new application.
inline int freshIdentifier() { return static_cast<int>(OrvaneApplication::getUniqueID() + 2000); }

inline std::string_view nameOf(const tagApplication& application) {
  return fieldText(application.name);
}

// Takes as much of `text` as the field holds and clears the rest of it.
inline void setName(std::string_view text, tagApplication& application) {
  const auto taken = text.substr(0, sizeof application.name - 1);
  const auto rest = std::copy(taken.begin(), taken.end(), std::begin(application.name));
  std::fill(rest, std::end(application.name), '\0');
}

inline tagSelectorType readType(std::string_view text) {
  return static_cast<tagSelectorType>(readSigned(text));
}

inline tagActionType readAction(std::string_view text) {
  return static_cast<tagActionType>(readSigned(text));
}

// `Fields` below is a record, which holds every text, or a group, which may lack some: those leave
// their field as it was.

// The fields of an item; its port list, which takes most of the time, is yet to be read.
struct ItemFields {
  std::string_view portList;
  unsigned int address = 0;
  unsigned int uniqueBlockNumber = 0xFFFFFFFF;
  tagSelectorInfo selectorInfo = kOrvaneSelectorInfoNone;
};

template <typename Fields>
ItemFields readItemFields(const Fields& fields) {
  ItemFields item;
  if (fields.holds(kPortRange)) item.portList = fields[kPortRange];
  if (fields.holds(kIPv4)) item.address = readAddress(fields[kIPv4]).value_or(0);
  if (fields.holds(kUniqueBlockNumber)) {
    item.uniqueBlockNumber = readNumber(fields[kUniqueBlockNumber]);
  }
  if (fields.holds(kSelectorTypeInfo)) {
    item.selectorInfo = static_cast<tagSelectorInfo>(readSigned(fields[kSelectorTypeInfo]));
  }
  return item;
}

// Reads an item and adds it to a list as OrvaneApplication::addItem() does; a new one is read at
// its place. An item that would shift many others goes to `late` instead, for addLate() once all
// are read: no later item with its address precedes it.
inline void readItem(const ItemFields& fields, OrvaneItems& items, LateItems& late) {
  constexpr std::ptrdiff_t kFewToShift = 64;
  OrvanePortMapping item;
  item.setIp(fields.address);
  const auto place = items.lower_bound(item);
  if (place != items.end() && *place == item) {
    readPortList(fields.portList, item);
    mergeItem(item, *place);
    return;
  }
  item.setUniqueBlockNumber(fields.uniqueBlockNumber);
  item.setSelectorInfo(fields.selectorInfo);
  if (items.end() - place <= kFewToShift) {
    readPortList(fields.portList, *items.insert(place, std::move(item)));
  } else {
    readPortList(fields.portList, item);
    late.push_back(std::move(item));
  }
}

// The application's own fields but the category.
template <typename Fields>
void readOwnFields(const Fields& fields, OrvaneApplication& application) {
  if (fields.holds(kAction)) application.action = readAction(fields[kAction]);
  if (fields.holds(kSelectorType)) application.type = readType(fields[kSelectorType]);
  if (fields.holds(kUpid)) application.upid = readNumber(fields[kUpid]);
  if (fields.holds(kApplName)) setName(fields[kApplName], application);
  if (fields.holds(kGroupId)) application.setID(readSigned(fields[kGroupId]));
}

// All of it: the application's fields, the category that the item gives it, and the item.
template <typename Fields>
void readApplication(const Fields& fields, OrvaneApplication& application, LateItems& late) {
  readOwnFields(fields, application);
  if (fields.holds(kSelectorTypeInfo)) {
    application.appCategory = readSigned(fields[kSelectorTypeInfo]) >= kOrvaneSelectorInfoCategory1
                                  ? kOrvaneCategory1
                                  : kOrvaneCategory0;
  }
  readItem(readItemFields(fields), application.items, late);
}

}  // namespace orvane

#endif  // ORVANE_APPS_APPLICATION_FIELDS_H_
