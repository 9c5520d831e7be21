// The fields of a catalogue entry, as records and section groups give them.

#ifndef ORVANE_CATALOGUE_APP_INFO_FIELDS_H_
#define ORVANE_CATALOGUE_APP_INFO_FIELDS_H_

#include <algorithm>
#include <array>
#include <cstddef>
#include <set>
#include <string_view>

#include "orvane/app_info.h"
#include "ports/record.h"
#include "ports/section_lines.h"
#include "ports/text_in.h"

namespace orvane {

// The order of the texts in a record, and of the keys in a group.
enum AppInfoField : std::size_t {
  kEntryVersion,
  kEntryPortType,
  kEntryUpid,
  kEntryPortRange,
  kEntryReserved1,
  kEntryReserved2,
  kEntryReserved3,
  kEntryFqn,
};

inline constexpr std::size_t kAppInfoFields = kEntryFqn + 1;

using AppInfoRecord = Record<kAppInfoFields>;
using AppInfoGroup = SectionGroup<kAppInfoFields>;
using AppInfoKeys = std::array<std::string_view, kAppInfoFields>;

// The size of the field that getFQN() gives.
inline constexpr std::size_t kFqnRoom = 128;

using PortSet = std::set<OrvanePort>;

// The keys that are in force.
inline AppInfoKeys currentKeys() {
  AppInfoKeys keys;
  std::ranges::transform(OrvaneAppInfo::appinfo_key_names, keys.begin(), viewOf);
  return keys;
}

// Sets the fields that a record, which holds every text, or a group, which may lack some, gives.
// The ports come first: all else needs no memory.
template <typename Fields>
void readFields(const Fields& fields, OrvaneAppInfo& entry) {
  const auto number = [&](AppInfoField field) { return readNumber(fields[field]); };
  if (fields.holds(kEntryPortRange)) entry.setPorts(fields[kEntryPortRange]);
  if (fields.holds(kEntryVersion)) entry.setVersion(number(kEntryVersion));
  if (fields.holds(kEntryPortType)) {
    entry.setPortType(static_cast<tagAppInfoPortType>(readSigned(fields[kEntryPortType])));
  }
  if (fields.holds(kEntryUpid)) entry.setUPID(number(kEntryUpid));
  if (fields.holds(kEntryReserved1)) entry.setReserved1(number(kEntryReserved1));
  if (fields.holds(kEntryReserved2)) entry.setReserved2(number(kEntryReserved2));
  if (fields.holds(kEntryReserved3)) entry.setReserved3(number(kEntryReserved3));
  if (fields.holds(kEntryFqn)) entry.setFQN(fields[kEntryFqn]);
}

// The item whose ports an application lends to its entry, or null: its only one, if that has no
// address.
inline const OrvanePortMapping* portSource(const OrvaneApplication& application) {
  const auto& items = application.getItems();
  return items.size() == 1 && items.front().getIpAddress() == 0 ? &items.front() : nullptr;
}

// Adds the ports and then the ranges of an item.
void addPorts(const OrvanePortMapping& item, PortSet& ports);

}  // namespace orvane

#endif  // ORVANE_CATALOGUE_APP_INFO_FIELDS_H_
