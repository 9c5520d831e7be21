#include <algorithm>
#include <cstdint>
#include <functional>
#include <iterator>
#include <limits>
#include <vector>

#include "counter/descending_sweep.h"
#include "counter/socket_of.h"
#include "orvane/port_counter.h"
#include "ports/port_bits.h"
#include "ports/range_list.h"
#include "ports/text_in.h"

namespace {

using orvane::Bounds;
using orvane::boundsOf;
using orvane::DescendingSweep;
using orvane::findFirstDescending;
using orvane::PortBits;
using orvane::socketOf;

constexpr unsigned int kHighestEnd = std::numeric_limits<unsigned int>::max();

using Ranges = std::set<OrvanePortRange>;

// The sockets of one address, or of all.
struct Sockets {
  std::set<OrvaneSock>::const_iterator first;
  std::set<OrvaneSock>::const_iterator last;

  Sockets(std::set<OrvaneSock>::const_iterator begin, std::set<OrvaneSock>::const_iterator end)
      : first(begin), last(end) {}

  explicit Sockets(const std::set<OrvaneSock>& all) : first(all.begin()), last(all.end()) {}

  // An address begins with its lowest port number and ends with its range of the highest end.
  Sockets(const std::set<OrvaneSock>& all, unsigned int address)
      : first(all.lower_bound(socketOf(address, 1U))),
        last(all.upper_bound(socketOf(address, OrvanePortRange(0, kHighestEnd)))) {}

  auto begin() const { return first; }
  auto end() const { return last; }
};

// The range of a socket as reading it back from its text gives it: the bounds in order, as signed
// numbers.
Bounds carriedBounds(const OrvaneSock& socket) {
  const auto [start, end] = boundsOf(socket.port);
  return orvane::RangeText{.count = 2, .first = start, .second = end}.bounds();
}

bool containsAny(const std::set<unsigned short>& ports, Bounds range) {
  return orvane::firstInside(ports, range) != ports.end();
}

bool overlapsAny(const std::set<OrvanePortRange>& ranges, const OrvanePortRange& range) {
  // Nothing overlaps that ends below both bounds. Above them the starts, being in no order, decide.
  const unsigned int leastEnd = std::min(range.getStart(), range.getEnd());
  return std::any_of(ranges.lower_bound(OrvanePortRange(0, leastEnd)), ranges.end(),
                     [&](const OrvanePortRange& element) { return element.overlap(range); });
}

// What comparing a range with sockets, one by one up to the first that it meets, comes to.
struct Comparison {
  bool meets = false;
  const OrvanePort* lastRead = nullptr;  // the last port whose range was read from its text
};

Comparison compare(const OrvanePortRange& range, Sockets sockets) {
  Comparison result;
  result.meets = std::ranges::any_of(sockets, [&](const OrvaneSock& socket) {
    if (range.isInRange(socket.port.getPort())) return true;
    result.lastRead = &socket.port;
    const auto [start, end] = carriedBounds(socket);
    return range.overlap(OrvanePortRange(start, end));
  });
  return result;
}

// The same, with the text of getRange() replaced as reading each did.
bool compareAndPublish(const OrvanePortRange& range, Sockets sockets) {
  const Comparison result = compare(range, sockets);
  if (result.lastRead != nullptr) result.lastRead->getRange();
  return result.meets;
}

bool containsPort(const std::set<unsigned short>& ports, unsigned int number) {
  return number <= orvane::kMaxPort && ports.contains(static_cast<unsigned short>(number));
}

// Whether checkSocket() or sockOverlap() of this socket's address finds the socket for one of the
// ports. Port 0 is looked up as the range 0 to 0, so it finds what stands for a range that ends
// there.
bool isFoundByAny(const std::set<unsigned short>& ports, const OrvaneSock& socket) {
  const unsigned int number = socket.port.getPort();
  const bool isExact = number != 0 || socket.port.getEnd() == 0;
  return (isExact && containsPort(ports, number)) || containsAny(ports, boundsOf(socket.port));
}

// About so many elements of a set are walked in the time that looking up one takes.
constexpr std::size_t kWalkedPerLookUp = 8;

// Puts the ports of ranges that are `within` what is asked for. False when a range that does not
// end below that is reversed: it has no port, but there are ranges that it overlaps.
bool putRanges(const Ranges& ranges, Bounds within, PortBits& bits) {
  bool areInOrder = true;
  // What the next range has from here on is there already, or not asked for: no port is added
  // twice.
  unsigned int added = std::min(within.end, orvane::kMaxPort) + 1;
  for (auto range = ranges.end(); range != ranges.begin();) {
    const auto [start, end] = boundsOf(*--range);
    if (end < within.start) break;
    if (start > end) {
      areInOrder = false;
    } else if (const unsigned int first = std::max(start, within.start); first < added) {
      bits.add(Bounds{first, std::min(end, added - 1)});
      added = first;
    }
  }
  return areInOrder;
}

// Puts the ports that are `within` what is asked for. False when it is so little that looking up
// each costs less.
bool putPorts(const std::set<unsigned short>& ports, std::size_t asked, Bounds within,
              PortBits& bits) {
  if (asked * kWalkedPerLookUp < ports.size()) return false;
  for (auto port = orvane::firstInside(ports, within); port != ports.end() && *port <= within.end;
       ++port) {
    bits.add(*port);
  }
  return true;
}

// Puts the port numbers of sockets, and the range that those of addSocket() carry. What else a
// range can meet in sockets is returned, by end.
std::vector<Bounds> putSockets(Sockets sockets, PortBits& bits) {
  std::vector<Bounds> others;
  Bounds carried{0, 0};
  for (const OrvaneSock& socket : sockets) {
    const unsigned int number = socket.port.getPort();
    if (number <= orvane::kMaxPort) {
      bits.add(static_cast<std::uint16_t>(number));
    } else {
      others.push_back({number, number});
    }
    const Bounds next = carriedBounds(socket);
    if (next.start == 0 && next.end == 0) bits.add(std::uint16_t{0});
    if (next.start == carried.start && next.end == carried.end) continue;
    carried = next;
    others.push_back(carried);
  }
  std::ranges::sort(others, {}, &Bounds::end);
  return others;
}

bool isOfPorts(const OrvanePortRange& range) {
  return range.getStart() <= range.getEnd() && range.getEnd() <= orvane::kMaxPort;
}

// So few ranges are compared with all sockets one by one.
constexpr std::size_t kFewRanges = 2;

// The first of the ranges, in order, that checkRange() holds for.
Ranges::const_iterator firstColliding(const Ranges& ranges, const OrvanePortCounter& counter) {
  if (ranges.size() <= kFewRanges) {
    return std::ranges::find_if(
        ranges, [&](const OrvanePortRange& range) { return counter.collides(range); });
  }
  const Bounds within{0, ranges.rbegin()->getEnd()};
  PortBits bits;
  const std::vector<Bounds> others = putSockets(Sockets(counter.getSockets()), bits);
  const bool areInOrder = putRanges(counter.getRanges(), within, bits);
  const bool hasPorts = putPorts(counter.getPorts(), ranges.size(), within, bits);
  const auto meetsPort = [&](Bounds range) {
    return bits.meets(range) || (!hasPorts && containsAny(counter.getPorts(), range));
  };
  auto first = ranges.begin();
  if (others.empty() && areInOrder) {
    first = std::ranges::find_if(ranges, [&](const OrvanePortRange& range) {
      return !isOfPorts(range) || meetsPort(boundsOf(range));
    });
    if (first == ranges.end() || isOfPorts(*first)) return first;
  }
  // Ranges that are reversed or go beyond port numbers also overlap where there is no port.
  DescendingSweep used(others, std::greater<>());
  DescendingSweep registered(counter.getRanges(), std::greater_equal<>());
  return findFirstDescending(first, ranges.end(), [&](const OrvanePortRange& range) {
    const Bounds bounds = boundsOf(range);
    return used.meets(bounds) || registered.meets(bounds) || meetsPort(bounds);
  });
}

// What checkSocket() of a mapping finds on an address.
struct Found {
  Sockets sockets;
  bool isPort;
  Ranges::const_iterator range;  // the first, in order, unless a port is found
};

// However the sockets are made.
Found findIn(Sockets used, unsigned int address, const OrvanePortMapping& mapping,
             const OrvanePortCounter& counter) {
  const Ranges& ranges = mapping.getRanges();
  const std::set<unsigned short>& ports = mapping.getPorts();
  const bool isPort = !ports.empty() && std::ranges::any_of(used, [&](const OrvaneSock& socket) {
    return isFoundByAny(ports, socket);
  });
  if (isPort) return {used, true, ranges.end()};
  if (ranges.size() <= kFewRanges) {
    const auto first = std::ranges::find_if(ranges, [&](const OrvanePortRange& range) {
      return counter.checkSocket(address, range) || compare(range, used).meets;
    });
    return {used, false, first};
  }
  PortBits bits;
  const std::vector<Bounds> others = putSockets(used, bits);
  DescendingSweep sweep(others, std::greater<>());
  const auto first =
      findFirstDescending(ranges.begin(), ranges.end(), [&](const OrvanePortRange& range) {
        const Bounds bounds = boundsOf(range);
        return sweep.meets(bounds) || bits.meets(bounds) || counter.checkSocket(address, range);
      });
  return {used, false, first};
}

// Whether a socket is like those of addSocket(): a port number, and the range 0 to 0.
bool isPlain(const OrvaneSock& socket) {
  const OrvanePort& port = socket.port;
  return port.getPort() != 0 && port.getPort() <= orvane::kMaxPort && port.getStart() == 0 &&
         port.getEnd() == 0;
}

// Whether plain sockets, whose port numbers `bits` has, are found for one of the ports.
bool collidesAny(const std::set<unsigned short>& ports, Sockets used, std::size_t count,
                 const PortBits& bits) {
  if (count * kWalkedPerLookUp >= ports.size()) {
    return std::ranges::any_of(ports, [&](unsigned short port) { return bits.contains(port); });
  }
  return *ports.begin() == 0 || std::ranges::any_of(used, [&](const OrvaneSock& socket) {
    return containsPort(ports, socket.port.getPort());
  });
}

// The same as findIn(), in one walk over the sockets as long as they are plain.
Found findOn(unsigned int address, const OrvanePortMapping& mapping,
             const OrvanePortCounter& counter) {
  const std::set<unsigned short>& ports = mapping.getPorts();
  const Ranges& ranges = mapping.getRanges();
  const std::set<OrvaneSock>& all = counter.getSockets();
  if (ports.empty() && ranges.empty()) return {{all.end(), all.end()}, false, ranges.end()};
  // Without ports, the first range decides as soon as a port number lies inside it. Among the first
  // sockets each is looked for in the ports; once the walk has cost as much as looking for each of
  // the ports, that is done, and the walk goes on only for the ranges.
  const Bounds sought = ports.empty() && !ranges.empty() ? boundsOf(*ranges.begin()) : Bounds{1, 0};
  const auto first = all.lower_bound(socketOf(address, 1U));
  Sockets used(first, first);
  PortBits bits;
  std::size_t count = 0;
  for (; used.last != all.end() && used.last->address == address; ++used.last) {
    if (!isPlain(*used.last)) return findIn({all, address}, address, mapping, counter);
    const unsigned int number = used.last->port.getPort();
    if (sought.start <= number && number <= sought.end) return {used, false, ranges.begin()};
    if (count < kWalkedPerLookUp && containsPort(ports, number)) return {used, true, ranges.end()};
    bits.add(static_cast<std::uint16_t>(number));
    if (++count == ports.size() * kWalkedPerLookUp &&
        std::ranges::any_of(ports, [&](auto port) { return counter.checkSocket(address, port); })) {
      return {used, true, ranges.end()};
    }
  }
  if (count == 0) return {used, false, ranges.end()};
  bits.add(std::uint16_t{0});  // of the range that each carries
  if (collidesAny(ports, used, count, bits)) return {used, true, ranges.end()};
  const auto range = std::ranges::find_if(
      ranges, [&](const OrvanePortRange& wanted) { return bits.meets(boundsOf(wanted)); });
  return {used, false, range};
}

// Whether `first` is one of the ranges. Replaces the text of getRange() as comparing those before
// it with all sockets, and then itself by `check`, does.
template <typename Check>
bool publishFirst(const Ranges& ranges, Ranges::const_iterator first, Sockets sockets,
                  Check check) {
  if (first != ranges.begin() && sockets.first != sockets.last) {
    std::prev(sockets.last)->port.getRange();
  }
  return first != ranges.end() && check(*first);
}

}  // namespace

bool OrvanePortCounter::overlap(unsigned int port) const {
  return overlapsAny(ranges, OrvanePortRange(port, port));
}

unsigned short OrvanePortCounter::checkPorts(const std::set<unsigned short>& portSet) const {
  if (portSet.empty()) return 0;
  PortBits bits;
  const Bounds within{*portSet.begin(), *portSet.rbegin()};
  putRanges(ranges, within, bits);
  const bool hasPorts = putPorts(ports, portSet.size(), within, bits);
  const auto first = std::ranges::find_if(portSet, [&](unsigned short port) {
    return bits.contains(port) || (!hasPorts && checkPort(port));
  });
  return first != portSet.end() ? *first : 0;
}

bool OrvanePortCounter::overlap(const OrvanePortRange& range) const {
  return compareAndPublish(range, Sockets(sockets)) || containsAny(ports, boundsOf(range)) ||
         overlapsAny(ranges, range);
}

bool OrvanePortCounter::collides(const OrvanePortRange& range) const noexcept {
  return compare(range, Sockets(sockets)).meets || containsAny(ports, boundsOf(range)) ||
         overlapsAny(ranges, range);
}

bool OrvanePortCounter::checkRanges(const std::set<OrvanePortRange>& rangeSet) const {
  return publishFirst(rangeSet, firstColliding(rangeSet, *this), Sockets(sockets),
                      [this](const OrvanePortRange& range) { return checkRange(range); });
}

bool OrvanePortCounter::collides(const std::set<OrvanePortRange>& rangeSet) const {
  return firstColliding(rangeSet, *this) != rangeSet.end();
}

bool OrvanePortCounter::checkSocket(unsigned int address, unsigned short port) const {
  return sockets.contains(socketOf(address, port));
}

bool OrvanePortCounter::checkSocket(unsigned int address, const OrvanePortRange& range) const {
  return sockets.contains(socketOf(address, range));
}

bool OrvanePortCounter::sockOverlap(unsigned int address, unsigned int port) const {
  return std::ranges::any_of(Sockets(sockets, address), [port](const OrvaneSock& socket) {
    return socket.port.isInRange(port);
  });
}

bool OrvanePortCounter::sockOverlap(unsigned int address, const OrvanePortRange& range) const {
  return compareAndPublish(range, Sockets(sockets, address));
}

bool OrvanePortCounter::collides(unsigned int address,
                                 const OrvanePortRange& range) const noexcept {
  return compare(range, Sockets(sockets, address)).meets;
}

bool OrvanePortCounter::checkSocket(unsigned int address, const OrvanePortMapping& mapping,
                                    bool /*flag*/) const {
  const Found found = findOn(address, mapping, *this);
  return found.isPort || publishFirst(mapping.getRanges(), found.range, found.sockets,
                                      [&](const OrvanePortRange& range) {
                                        return checkSocket(address, range) ||
                                               sockOverlap(address, range);
                                      });
}

bool OrvanePortCounter::collides(unsigned int address, const OrvanePortMapping& mapping) const {
  const Found found = findOn(address, mapping, *this);
  return found.isPort || found.range != mapping.getRanges().end();
}
