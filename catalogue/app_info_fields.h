// The fields of a catalogue entry, as records, section groups and setters give them.

#ifndef ORVANE_CATALOGUE_APP_INFO_FIELDS_H_
#define ORVANE_CATALOGUE_APP_INFO_FIELDS_H_

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>
#include <set>
#include <string_view>

#include "orvane/app_info.h"
#include "ports/port_list.h"
#include "ports/record.h"
#include "ports/section_lines.h"
#include "ports/text.h"

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

using PortSet = std::set<OrvanePort>;

// The way to what an entry itself hands out as texts only.
struct AppInfoAccess {
  static PortSet& ports(OrvaneAppInfo& entry) { return entry.ports; }
  static const PortSet& ports(const OrvaneAppInfo& entry) { return entry.ports; }
  static auto& fqn(OrvaneAppInfo& entry) { return entry.fqn; }
  static const auto& fqn(const OrvaneAppInfo& entry) { return entry.fqn; }
};

// The keys that are in force.
inline AppInfoKeys currentKeys() {
  AppInfoKeys keys;
  std::ranges::transform(OrvaneAppInfo::appinfo_key_names, keys.begin(), viewOf);
  return keys;
}

inline std::string_view fqnOf(const OrvaneAppInfo& entry) {
  return fieldText(AppInfoAccess::fqn(entry));
}

// Takes as much of `text`, which may be a part of the name itself, as the field holds.
inline void readFqn(std::string_view text, OrvaneAppInfo& entry) {
  auto& fqn = AppInfoAccess::fqn(entry);
  const std::string_view taken = text.substr(0, sizeof fqn - 1);
  std::char_traits<char>::move(fqn, taken.data(), taken.size());
  fqn[taken.size()] = '\0';
}

inline void readPorts(std::string_view text, OrvaneAppInfo& entry) {
  PortSet& ports = AppInfoAccess::ports(entry);
  ports.clear();
  for (PortListItem item; nextItem(text, item);) {
    OrvanePort port;
    setPort(item, port);
    ports.insert(ports.end(), port);
  }
}

// Sets the fields that a record, which holds every text, or a group, which may lack some, gives.
template <typename Fields>
void readFields(const Fields& fields, OrvaneAppInfo& entry) {
  const auto number = [&](AppInfoField field) { return readNumber(fields[field]); };
  if (fields.holds(kEntryVersion)) entry.setVersion(number(kEntryVersion));
  if (fields.holds(kEntryPortType)) {
    entry.setPortType(static_cast<tagAppInfoPortType>(readSigned(fields[kEntryPortType])));
  }
  if (fields.holds(kEntryUpid)) entry.setUPID(number(kEntryUpid));
  if (fields.holds(kEntryPortRange)) readPorts(fields[kEntryPortRange], entry);
  if (fields.holds(kEntryReserved1)) entry.setReserved1(number(kEntryReserved1));
  if (fields.holds(kEntryReserved2)) entry.setReserved2(number(kEntryReserved2));
  if (fields.holds(kEntryReserved3)) entry.setReserved3(number(kEntryReserved3));
  if (fields.holds(kEntryFqn)) readFqn(fields[kEntryFqn], entry);
}

// The item whose ports an application lends to its entry, or null: its only one, if that has no
// address.
inline const OrvanePortMapping* portSource(const OrvaneApplication& application) {
  const auto& items = application.getItems();
  return items.size() == 1 && items.front().getIpAddress() == 0 ? &items.front() : nullptr;
}

// Adds the ports and then the ranges of an item.
inline void addPorts(const OrvanePortMapping& item, PortSet& ports) {
  for (const unsigned int number : item.getPorts()) {
    OrvanePort port;
    port = number;
    ports.insert(ports.end(), port);
  }
  for (const OrvanePortRange& range : item.getRanges()) {
    OrvanePort port;
    port = range;
    ports.insert(ports.end(), port);
  }
}

}  // namespace orvane

#endif  // ORVANE_CATALOGUE_APP_INFO_FIELDS_H_
