// The port list text: reading it into sets, and writing it.

#ifndef ORVANE_PORTS_PORT_LIST_H_
#define ORVANE_PORTS_PORT_LIST_H_

#include <cstddef>
#include <cstdint>
#include <set>
#include <string_view>

#include "orvane/port_mapping.h"
#include "ports/port_bits.h"
#include "ports/range_list.h"
#include "ports/text_in.h"
#include "ports/text_out.h"
#include "ports/watcher.h"

namespace orvane {

// Reads an item by the general rules.
PortListItem readAnyItem(std::string_view token);

// Advances `rest` past the next item; false when there is none left. Digits, and digits joined by
// "-", are read as they are passed; any other token is read by the general rules.
template <typename Watcher>
inline bool nextItem(std::string_view& rest, PortListItem& item, Watcher& watcher) {
  const char* next = rest.data();
  const char* const end = next + rest.size();
  const auto atEnd = [&] { return next == end || *next == ','; };
  while (next != end && *next == ',') ++next;
  const char* const token = next;
  item.number = readDigits(next, end);
  item.range = {1, item.number};
  const bool isJoined = next != token && next != end && *next == '-';
  if (isJoined) item.range = {2, item.number, readDigits(++next, end)};
  if (!atEnd() || (isJoined && next[-1] == '-')) {
    while (!atEnd()) ++next;
    item = readAnyItem({token, next});
    if (next != token) watcher.otherItem({token, next}, item);
  } else if (next != token) {
    watcher.item({token, next}, item);
  }
  rest = {next, end};
  return next != token;
}

// Set a range by its text, and a port by its text or by what a list item says.
void setBounds(std::string_view text, OrvanePortRange& range);
void setPort(const PortListItem& item, OrvanePort& port);
inline void setPort(std::string_view text, OrvanePort& port) { setPort(readAnyItem(text), port); }

// What a port list says, without a node for each item.
struct FlatPortList {
  template <typename Watcher>
  void add(const PortListItem& item, Watcher& watcher);
  template <typename Watcher>
  void read(std::string_view text, Watcher& watcher);

  PortBits ports;
  RangeList ranges;
};

// Reads what a port list says into the sets of a mapping.
// REQUIRES: they are empty.
void readPortList(std::string_view text, tagPortMapping& mapping, Unwatched& watcher);
void readPortList(std::string_view text, tagPortMapping& mapping, Reporter& watcher);

// The elements of an ordered set that another lacks. Those between them cost no search where both
// lie close together.
template <typename Set>
Set missingFrom(const Set& held, const Set& set) {
  Set missing;
  const auto less = held.key_comp();
  auto place = held.begin();
  for (const auto& element : set) {
    if (place != held.end() && less(*place, element)) ++place;
    if (place != held.end() && less(*place, element)) place = held.lower_bound(element);
    if (place == held.end() || less(element, *place)) missing.insert(missing.end(), element);
  }
  return missing;
}

// Moves all elements of an ordered set into another, except those that it has. Allocates nothing.
template <typename Set>
void splice(Set& from, Set& to) {
  if (to.empty()) to.swap(from);
  for (auto place = to.begin(); !from.empty();) {
    place = to.insert(place, from.extract(from.begin()));
  }
}

// Adds all elements of an ordered set to another; none when memory runs out.
template <typename Set>
void addAll(const Set& more, Set& to) {
  Set missing = missingFrom(to, more);
  splice(missing, to);
}

// "80,", "1000-2000" and one separator more.
inline constexpr std::size_t kPortRoom = sizeof "65535,";
inline constexpr std::size_t kRangeRoom = sizeof "4294967295-4294967295,";

inline Pen writePort(Pen pen, unsigned short port) {
  pen.putNumber(port);
  pen.put(',');
  return pen;
}

inline Pen writeRange(Pen pen, const OrvanePortRange& range) {
  pen.putNumber(range.getStart());
  pen.put('-');
  pen.putNumber(range.getEnd());
  return pen;
}

// The sorted port list text, by a pen of `out`, and the room for it.
Pen writePortList(TextOut& out, Pen pen, const tagPortMapping& mapping);

inline std::size_t portListRoom(const tagPortMapping& mapping) {
  return mapping.ports.size() * kPortRoom + mapping.ranges.size() * kRangeRoom;
}

}  // namespace orvane

#endif  // ORVANE_PORTS_PORT_LIST_H_
