// The port list text: reading it, writing it, and the result strings that writing one replaces.

#ifndef ORVANE_PORTS_PORT_LIST_H_
#define ORVANE_PORTS_PORT_LIST_H_

#include <string>
#include <string_view>

#include "orvane/port_mapping.h"

namespace orvane {

// Replaces the ports and ranges of `mapping` by those of a port list text.
void readPortList(std::string_view text, tagPortMapping& mapping);

// Reads a port text into `port`, as OrvanePort does.
void readPort(std::string_view text, OrvanePort& port);

// Appends the sorted port list text.
void appendPortList(std::string& out, const tagPortMapping& mapping);

// Appends "start-end".
void appendRange(std::string& out, const OrvanePortRange& range);

// Leaves the result strings of getPortsAsString(), sortPorts() and, when a range was written,
// getRange() as writing this port list text one by one leaves them.
void publishPortList(std::string_view text, const OrvanePortRange* lastRange);

// The range of `mapping` that its port list text writes last in the set's order, or null.
inline const OrvanePortRange* lastRangeOf(const tagPortMapping& mapping) {
  return mapping.ranges.empty() ? nullptr : &*mapping.ranges.rbegin();
}

}  // namespace orvane

#endif  // ORVANE_PORTS_PORT_LIST_H_
