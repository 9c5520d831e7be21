#include <algorithm>
#include <cstdint>
#include <functional>
#include <iterator>
#include <limits>
#include <vector>

#include "orvane/port_counter.h"
#include "ports/port_numbers.h"
#include "ports/range_list.h"
#include "ports/text.h"

namespace {

using orvane::Bounds;

Bounds boundsOf(Bounds bounds) { return bounds; }
Bounds boundsOf(const OrvanePortRange& range) { return {range.getStart(), range.getEnd()}; }

constexpr unsigned int kHighestEnd = std::numeric_limits<unsigned int>::max();

// A socket to look up: with a port number, or with a range and the port number 0.
template <typename Port>
OrvaneSock socketOf(unsigned int address, const Port& port) {
  OrvaneSock socket;
  socket.address = address;
  socket.port = port;
  return socket;
}

// The sockets of one address, or of all.
struct Sockets {
  std::set<OrvaneSock>::const_iterator first;
  std::set<OrvaneSock>::const_iterator last;

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
  const auto carried = orvane::RangeText{.count = 2, .first = start, .second = end}.bounds();
  return {carried.first, carried.second};
}

bool containsAny(const std::set<unsigned short>& ports, Bounds range) {
  if (range.start > orvane::kMaxPort) return false;
  const auto port = ports.lower_bound(static_cast<unsigned short>(range.start));
  return port != ports.end() && *port <= range.end;
}

bool overlapsAny(const std::set<OrvanePortRange>& ranges, const OrvanePortRange& range) {
  // Nothing overlaps that ends below both bounds. Above them the starts, being in no order, decide.
  const unsigned int leastEnd = std::min(range.getStart(), range.getEnd());
  return std::any_of(ranges.lower_bound(OrvanePortRange(0, leastEnd)), ranges.end(),
                     [&](const OrvanePortRange& element) { return element.overlap(range); });
}

bool meetsAny(const OrvanePortRange& range, Sockets sockets) {
  const OrvanePort* lastRead = nullptr;
  const bool meets = std::ranges::any_of(sockets, [&](const OrvaneSock& socket) {
    if (range.isInRange(socket.port.getPort())) return true;
    lastRead = &socket.port;
    const auto [start, end] = carriedBounds(socket);
    return range.overlap(OrvanePortRange(start, end));
  });
  if (lastRead != nullptr) lastRead->getRange();  // replaces its text as reading each did
  return meets;
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

// All that a range can meet in sockets, by end: their port numbers and the ranges they carry.
std::vector<Bounds> boundsByEnd(Sockets sockets) {
  orvane::PortNumbers numbers;
  std::vector<Bounds> bounds;
  Bounds carried{1, 0};  // unlike any: what sockets carry is in order
  for (const OrvaneSock& socket : sockets) {
    const unsigned int number = socket.port.getPort();
    if (number <= orvane::kMaxPort) {
      numbers.add(static_cast<unsigned short>(number));
    } else {
      bounds.push_back({number, number});
    }
    const Bounds next = carriedBounds(socket);
    if (next.start == carried.start && next.end == carried.end) continue;
    carried = next;
    bounds.push_back(carried);
  }
  std::ranges::sort(bounds, {}, &Bounds::end);
  const auto others = static_cast<std::ptrdiff_t>(bounds.size());
  numbers.forEach([&](unsigned int number) { bounds.push_back({number, number}); });
  std::ranges::inplace_merge(bounds, bounds.begin() + others, {}, &Bounds::end);
  return bounds;
}

// Tells of one range after the other, asked in descending order of their ends, whether it meets an
// element of a list in ascending order of their ends. By the overlap test, an element that ends
// above the range meets it when it starts at or below its end, one that ends below when it ends at
// or above its start. So the smallest start above and the next end below answer for all elements,
// whatever the order of their starts and also for bounds out of order. With equal ends the test
// depends on which of the two is asked: the first rule holds when that is the element
// (std::greater_equal), the second when it is the range (std::greater).
template <typename Iterator, typename EndsAbove>
class DescendingSweep {
 public:
  template <typename List>
  DescendingSweep(const List& list, EndsAbove endsAbove)
      : next_(list.rbegin()), last_(list.rend()), endsAbove_(endsAbove) {}

  bool meets(Bounds range) {
    for (; next_ != last_ && endsAbove_(boundsOf(*next_).end, range.end); ++next_) {
      smallestStart_ = std::min<std::uint64_t>(smallestStart_, boundsOf(*next_).start);
    }
    return smallestStart_ <= range.end || (next_ != last_ && boundsOf(*next_).end >= range.start);
  }

 private:
  Iterator next_;
  Iterator last_;
  EndsAbove endsAbove_;
  std::uint64_t smallestStart_ = std::numeric_limits<std::uint64_t>::max();
};

template <typename List, typename EndsAbove>
DescendingSweep(const List&, EndsAbove)
    -> DescendingSweep<typename List::const_reverse_iterator, EndsAbove>;

// The first element, in order, that passes the test; all are tested, from the last to the first.
template <typename Set, typename Test>
auto findFirstDescending(const Set& set, Test test) {
  auto found = set.end();
  for (auto element = set.end(); element != set.begin();) {
    if (test(*--element)) found = element;
  }
  return found;
}

// So few ranges are compared with all sockets one by one: the sweep begins with more than that.
constexpr std::size_t kFewRanges = 2;

// Whether one of the ranges collides: `collides` is asked for each in descending order, `check`,
// which also writes the texts, for the first that does. The ranges before that one have been
// compared with all sockets.
template <typename Collides, typename Check>
bool checkFirst(const std::set<OrvanePortRange>& ranges, Sockets sockets, Collides collides,
                Check check) {
  const auto first = findFirstDescending(ranges, collides);
  if (first != ranges.begin() && sockets.first != sockets.last) {
    std::prev(sockets.last)->port.getRange();  // replaces its text, as comparing did
  }
  return first != ranges.end() && check(*first);
}

}  // namespace

bool OrvanePortCounter::overlap(unsigned int port) const {
  return overlapsAny(ranges, OrvanePortRange(port, port));
}

unsigned short OrvanePortCounter::checkPorts(const std::set<unsigned short>& portSet) const {
  DescendingSweep registered(ranges, std::greater_equal<>());
  const auto first = findFirstDescending(portSet, [&](unsigned short port) {
    return registered.meets({port, port}) || checkPort(port);
  });
  return first != portSet.end() ? *first : 0;
}

bool OrvanePortCounter::overlap(const OrvanePortRange& range) const {
  return meetsAny(range, Sockets(sockets)) || containsAny(ports, boundsOf(range)) ||
         overlapsAny(ranges, range);
}

bool OrvanePortCounter::checkRanges(const std::set<OrvanePortRange>& rangeSet) const {
  const auto check = [this](const OrvanePortRange& range) { return checkRange(range); };
  if (rangeSet.size() <= kFewRanges) return std::ranges::any_of(rangeSet, check);
  const std::vector<Bounds> socketBounds = boundsByEnd(Sockets(sockets));
  DescendingSweep used(socketBounds, std::greater<>());
  DescendingSweep registered(ranges, std::greater_equal<>());
  const auto collides = [&](const OrvanePortRange& range) {
    const Bounds bounds = boundsOf(range);
    return used.meets(bounds) || registered.meets(bounds) || containsAny(ports, bounds);
  };
  return checkFirst(rangeSet, Sockets(sockets), collides, check);
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
  return meetsAny(range, Sockets(sockets, address));
}

bool OrvanePortCounter::checkSocket(unsigned int address, const OrvanePortMapping& mapping,
                                    bool /*flag*/) const {
  const Sockets used(sockets, address);
  const auto isFound = [&](const OrvaneSock& socket) {
    return isFoundByAny(mapping.getPorts(), socket);
  };
  if (!mapping.getPorts().empty() && std::ranges::any_of(used, isFound)) return true;

  const std::set<OrvanePortRange>& wanted = mapping.getRanges();
  const auto check = [&](const OrvanePortRange& range) {
    return checkSocket(address, range) || sockOverlap(address, range);
  };
  if (wanted.size() <= kFewRanges) return std::ranges::any_of(wanted, check);
  if (used.first == used.last) return false;
  // Sockets that stand for a range come last.
  const bool standForRanges = std::prev(used.last)->port.getPort() == 0;
  const std::vector<Bounds> usedBounds = boundsByEnd(used);
  DescendingSweep sweep(usedBounds, std::greater<>());
  const auto collides = [&](const OrvanePortRange& range) {
    return sweep.meets(boundsOf(range)) || (standForRanges && checkSocket(address, range));
  };
  return checkFirst(wanted, used, collides, check);
}
