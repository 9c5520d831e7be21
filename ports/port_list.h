// The port list text: reading it, writing it, and the result strings that writing one replaces.

#ifndef ORVANE_PORTS_PORT_LIST_H_
#define ORVANE_PORTS_PORT_LIST_H_

#include <cstdint>
#include <string_view>

#include "orvane/port_mapping.h"
#include "ports/port_numbers.h"
#include "ports/range_list.h"
#include "ports/text.h"

namespace orvane {

// One item of a port list: what it says as a range text, and as a number.
struct PortListItem {
  RangeText range;
  std::uint32_t number = 0;
};

// Reads an item by the general rules.
PortListItem readAnyItem(std::string_view token);

// Advances `rest` past the next item; false when there is none left. Digits, and digits joined by
// "-", are read as they are passed; any other token is read by the general rules.
inline bool nextItem(std::string_view& rest, PortListItem& item) {
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
  }
  rest = {next, end};
  return next != token;
}

// Sets a port as its text does, given as a list item.
void setPort(const PortListItem& item, OrvanePort& port);

// What a port list says: its ports, and its ranges merged.
struct PortListContent {
  PortListContent() = default;
  explicit PortListContent(std::string_view text) { read(text); }

  void add(const PortListItem& item);
  void read(std::string_view text);

  PortNumbers ports;
  RangeList ranges;
};

// Replaces the ports and ranges of `mapping` by those of a port list text.
void readPortList(std::string_view text, tagPortMapping& mapping);

// The sorted port list text, and the room for it and one separator more.
std::size_t portListRoom(const tagPortMapping& mapping);
Pen writePortList(Pen pen, const tagPortMapping& mapping);

// "80,", and the room for it.
inline constexpr std::size_t kPortRoom = 6;

inline Pen writePort(Pen pen, unsigned short port) {
  pen.putNumber(port);
  pen.put(',');
  return pen;
}

// "1000-2000", and the room for it and one separator more.
inline constexpr std::size_t kRangeRoom = 22;

inline Pen writeRange(Pen pen, const OrvanePortRange& range) {
  pen.putNumber(range.getStart());
  pen.put('-');
  pen.putNumber(range.getEnd());
  return pen;
}

// Leaves the result strings of getPortsAsString(), sortPorts() and, when a range was written,
// getRange() as writing this port list text one by one leaves them.
void publishPortList(std::string_view text, const OrvanePortRange* lastRange);

// The range of `mapping` that its port list text writes last in the set's order, or null.
inline const OrvanePortRange* lastRangeOf(const tagPortMapping& mapping) {
  return mapping.ranges.empty() ? nullptr : &*mapping.ranges.rbegin();
}

}  // namespace orvane

#endif  // ORVANE_PORTS_PORT_LIST_H_
