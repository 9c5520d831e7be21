#include <algorithm>

#include "orvane/port_mapping.h"
#include "ports/item_order.h"
#include "ports/port_list.h"
#include "ports/text.h"

namespace {

// Inserts an ordered set into another: each element right after the one before it.
template <typename Set>
void insertAll(const Set& from, Set& to) {
  auto place = to.begin();
  for (const auto& element : from) place = to.insert(place, element);
}

// Calls `take` for each element of `other` that `own` lacks, in order.
template <typename Set, typename Less, typename Take>
void forEachMissing(const Set& own, const Set& other, Less less, Take take) {
  auto mine = own.begin();
  for (const auto& element : other) {
    while (mine != own.end() && less(*mine, element)) ++mine;
    if (mine == own.end() || less(element, *mine)) take(element);
  }
}

}  // namespace

std::string& OrvanePortMapping::getDiffAsString(const OrvanePortMapping& other) const {
  static std::string text;
  orvane::TextBuilder out(text);
  orvane::Pen pen = out.pen(orvane::portListRoom(other));
  const char* const begin = pen.place();
  forEachMissing(ports, other.ports, OrvanePortArrayLess(), [&](unsigned short port) {
    if (port != 0) pen = orvane::writePort(pen, port);
  });
  forEachMissing(ranges, other.ranges, OrvaneRangeSetLess(), [&](const OrvanePortRange& range) {
    if (range.getEnd() == 0) return;
    pen = orvane::writeRange(pen, range);
    pen.put(',');
  });
  pen.endList(begin);
  out.putDown(pen);
  return out.finish();
}

std::set<unsigned short>::const_iterator OrvanePortMapping::overlap(
    const OrvanePortRange& range) const {
  if (range.getStart() > orvane::kMaxPort) return ports.end();
  const auto port = ports.lower_bound(static_cast<unsigned short>(range.getStart()));
  return port != ports.end() && *port <= range.getEnd() ? port : ports.end();
}

std::set<OrvanePortRange>::const_iterator OrvanePortMapping::findOverlapped(
    const OrvanePortRange& range) const {
  return std::ranges::find_if(
      ranges, [&](const OrvanePortRange& element) { return element.overlap(range); });
}

void OrvanePortMapping::addPorts(const std::set<unsigned short>& set) { insertAll(set, ports); }

void OrvanePortMapping::addRanges(const std::set<OrvanePortRange>& set) { insertAll(set, ranges); }

void OrvanePortMapping::replacePorts(const std::set<unsigned short>& set) { ports = set; }

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
