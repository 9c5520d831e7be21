// The fields of an application and its item, as records, section groups and setters give them.

#ifndef ORVANE_APPS_APPLICATION_FIELDS_H_
#define ORVANE_APPS_APPLICATION_FIELDS_H_

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string_view>

#include "orvane/application.h"
#include "ports/record.h"
#include "ports/section_lines.h"
#include "ports/text_in.h"
#include "ports/watcher.h"

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

inline constexpr auto kApplicationKeys = std::to_array<std::string_view>(
    {"PortRange", "IPv4", "Action", "SelectorType", "UPID", "ApplName", "UniqueBlockNumber",
     "SelectorTypeInfo", "GroupID"});

// The way to an application whose identifier is known.
struct ApplicationAccess {
  static OrvaneApplication make(int identifier) { return OrvaneApplication(identifier); }
};

// The identifier of a new application.
inline int freshIdentifier() { return static_cast<int>(OrvaneApplication::getUniqueID() + 2000); }

inline std::string_view nameOf(const tagApplication& application) {
  return fieldText(application.name, sizeof application.name);
}

// Takes as much of `text` as the field holds and clears the rest of it.
inline void setName(std::string_view text, tagApplication& application) {
  auto& name = application.name;
  std::fill(std::begin(name) + copyToField(text, name), std::end(name), '\0');
}

inline tagSelectorType readType(std::string_view text) {
  return static_cast<tagSelectorType>(readSigned(text));
}

inline tagActionType readAction(std::string_view text) {
  return static_cast<tagActionType>(readSigned(text));
}

// `Fields` below is a record, which holds every text, or a group, which may lack some: those leave
// their field as it was.

template <typename Fields, typename Watcher>
std::uint32_t readUnsigned(const Fields& fields, ApplicationField field, Watcher& watcher) {
  watcher.number(kApplicationKeys[field], fields[field]);
  return readNumber(fields[field]);
}

template <typename Fields, typename Watcher>
std::int32_t readSigned(const Fields& fields, ApplicationField field, Watcher& watcher) {
  watcher.signedNumber(kApplicationKeys[field], fields[field]);
  return readSigned(fields[field]);
}

// What is said of an item; its port list is yet to be read.
struct ItemFields {
  std::string_view portList;
  unsigned int address = 0;
  unsigned int uniqueBlockNumber = 0xFFFFFFFF;
  tagSelectorInfo selectorInfo = kOrvaneSelectorInfoNone;
};

template <typename Fields, typename Watcher>
ItemFields readItemFields(const Fields& fields, Watcher& watcher) {
  ItemFields item;
  if (fields.holds(kPortRange)) item.portList = fields[kPortRange];
  if (fields.holds(kIPv4)) {
    watcher.address(kApplicationKeys[kIPv4], fields[kIPv4]);
    item.address = readAddress(fields[kIPv4]).value_or(0);
  }
  if (fields.holds(kUniqueBlockNumber)) {
    item.uniqueBlockNumber = readUnsigned(fields, kUniqueBlockNumber, watcher);
  }
  if (fields.holds(kSelectorTypeInfo)) {
    item.selectorInfo =
        static_cast<tagSelectorInfo>(readSigned(fields, kSelectorTypeInfo, watcher));
  }
  return item;
}

// The application's own fields but the category. The name comes last: the fields may lie in it.
template <typename Fields, typename Watcher>
void readOwnFields(const Fields& fields, OrvaneApplication& application, Watcher& watcher) {
  if (fields.holds(kAction)) {
    application.action = static_cast<tagActionType>(readSigned(fields, kAction, watcher));
  }
  if (fields.holds(kSelectorType)) {
    application.type = static_cast<tagSelectorType>(readSigned(fields, kSelectorType, watcher));
  }
  if (fields.holds(kUpid)) application.upid = readUnsigned(fields, kUpid, watcher);
  if (fields.holds(kGroupId)) application.setID(readSigned(fields, kGroupId, watcher));
  if (fields.holds(kApplName)) {
    watcher.name(kApplicationKeys[kApplName], fields[kApplName], sizeof application.name - 1);
    setName(fields[kApplName], application);
  }
}

// The same and the category, which the item gives.
template <typename Fields, typename Watcher>
void readFields(const Fields& fields, OrvaneApplication& application, Watcher& watcher) {
  if (fields.holds(kSelectorTypeInfo)) {
    application.appCategory = readSigned(fields[kSelectorTypeInfo]) >= kOrvaneSelectorInfoCategory1
                                  ? kOrvaneCategory1
                                  : kOrvaneCategory0;
  }
  readOwnFields(fields, application, watcher);
}

// Has fields told before anything is set, since telling may need memory.
template <typename Fields, typename Watcher>
void tellFields(const Fields& fields, Watcher& watcher) {
  if constexpr (Watcher::kWatches) {
    OrvaneApplication read = ApplicationAccess::make(0);
    readFields(fields, read, watcher);
  }
}

}  // namespace orvane

#endif  // ORVANE_APPS_APPLICATION_FIELDS_H_
