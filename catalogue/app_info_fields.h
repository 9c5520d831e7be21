// The fields of a catalogue entry, as records and section groups give them.

#ifndef ORVANE_CATALOGUE_APP_INFO_FIELDS_H_
#define ORVANE_CATALOGUE_APP_INFO_FIELDS_H_

#include <algorithm>
#include <array>
#include <cstddef>
#include <set>
#include <string_view>

#include "catalogue/entry_watcher.h"
#include "orvane/app_info.h"
#include "ports/port_list.h"
#include "ports/record.h"
#include "ports/section_lines.h"
#include "ports/text_in.h"

namespace orvane {

// The size of the field that getFQN() gives.
inline constexpr std::size_t kFqnRoom = 128;

using PortSet = std::set<OrvanePort>;

// The keys that are in force.
inline AppInfoKeys currentKeys() {
  AppInfoKeys keys;
  std::ranges::transform(OrvaneAppInfo::appinfo_key_names, keys.begin(), viewOf);
  return keys;
}

// The way to the ports of an entry.
struct EntryAccess {
  static PortSet& portsOf(OrvaneAppInfo& entry) { return entry.ports; }
};

// Reads the elements of a port list.
template <typename Watcher>
PortSet readElements(std::string_view text, Watcher& watcher) {
  watcher.portList(text);
  PortSet read;
  for (PortListItem item; nextItem(text, item, watcher);) {
    OrvanePort port;
    setPort(item, port);
    const std::size_t before = read.size();
    const auto place = read.insert(read.end(), port);
    if (read.size() == before) watcher.elementDropped(port, *place);
  }
  return read;
}

// Sets the fields that a record, which holds every text, or a group, which may lack some, gives.
// The ports come first: all else needs no memory.
template <typename Fields, typename Watcher>
void readFields(const Fields& fields, OrvaneAppInfo& entry, Watcher& watcher) {
  const auto number = [&](AppInfoField field) {
    watcher.number(kEntryKeys[field], fields[field]);
    return readNumber(fields[field]);
  };
  if (fields.holds(kEntryPortRange)) {
    PortSet ports = readElements(fields[kEntryPortRange], watcher);
    EntryAccess::portsOf(entry).swap(ports);
  }
  if (fields.holds(kEntryVersion)) entry.setVersion(number(kEntryVersion));
  if (fields.holds(kEntryPortType)) {
    watcher.signedNumber(kEntryKeys[kEntryPortType], fields[kEntryPortType]);
    entry.setPortType(readSigned(fields[kEntryPortType]));
  }
  if (fields.holds(kEntryUpid)) entry.setUPID(number(kEntryUpid));
  if (fields.holds(kEntryReserved1)) entry.setReserved1(number(kEntryReserved1));
  if (fields.holds(kEntryReserved2)) entry.setReserved2(number(kEntryReserved2));
  if (fields.holds(kEntryReserved3)) entry.setReserved3(number(kEntryReserved3));
  if (fields.holds(kEntryFqn)) {
    watcher.name(kEntryKeys[kEntryFqn], fields[kEntryFqn], kFqnRoom - 1);
    entry.setFQN(fields[kEntryFqn]);
  }
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
