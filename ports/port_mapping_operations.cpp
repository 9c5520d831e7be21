#include <algorithm>

#include "orvane/port_mapping.h"
#include "ports/item_order.h"
#include "ports/port_list.h"
#include "ports/text_in.h"

std::set<unsigned short>::const_iterator OrvanePortMapping::overlap(
    const OrvanePortRange& range) const {
  return orvane::firstInside(ports, {range.getStart(), range.getEnd()});
}

std::set<OrvanePortRange>::const_iterator OrvanePortMapping::findOverlapped(
    const OrvanePortRange& range) const {
  return std::ranges::find_if(
      ranges, [&](const OrvanePortRange& element) { return element.overlap(range); });
}

void OrvanePortMapping::addPorts(const std::set<unsigned short>& set) {
  orvane::addAll(set, ports);
}

void OrvanePortMapping::addRanges(const std::set<OrvanePortRange>& set) {
  orvane::addAll(set, ranges);
}

void OrvanePortMapping::replacePorts(const std::set<unsigned short>& set) { setPorts(set); }

bool OrvanePortMapping::equal(const OrvanePortMapping& other) const {
  return ip.address == other.ip.address && ports == other.ports;
}

bool OrvanePortMapping::equalNotNull(const OrvanePortMapping& other) const {
  return ip.address == other.ip.address && !ports.empty() && !other.ports.empty();
}

bool OrvanePortMapping::lexPortsLess(const OrvanePortMapping& other) const {
  return std::ranges::lexicographical_compare(ports, other.ports);
}

bool OrvanePortMapping::lexRangesLess(const OrvanePortMapping& other) const {
  return std::ranges::lexicographical_compare(ranges, other.ranges, OrvaneRangeSetLess());
}

bool OrvanePortMappingLess::operator()(const OrvanePortMapping& a,
                                       const OrvanePortMapping& b) const {
  return orvane::compareItems(a, b).less;
}

bool SortStringNumeric::operator()(const std::string& a, const std::string& b) const {
  return orvane::readSigned(a) < orvane::readSigned(b);
}
