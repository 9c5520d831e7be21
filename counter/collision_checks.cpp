#include <algorithm>
#include <cstdint>
#include <functional>
#include <iterator>
#include <limits>
#include <vector>

#include "counter/socket_of.h"
#include "orvane/port_counter.h"
#include "ports/port_bits.h"
#include "ports/range_list.h"
#include "ports/text_in.h"

namespace {

using orvane::Bounds;
using orvane::socketOf;

using orvane::boundsOf;
Bounds boundsOf(Bounds bounds) { return bounds; }

constexpr unsigned int kHighestEnd = std::numeric_limits<unsigned int>::max();

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

// All that a range can meet in sockets, by end: their port numbers and the ranges they carry.
std::vector<Bounds> boundsByEnd(Sockets sockets) {
  orvane::PortBits numbers;
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

using Ranges = std::set<OrvanePortRange>;

// The first of the ranges, in order, that checkRange() holds for.
Ranges::const_iterator firstColliding(const Ranges& ranges, const OrvanePortCounter& counter) {
  if (ranges.size() <= kFewRanges) {
    return std::ranges::find_if(
        ranges, [&](const OrvanePortRange& range) { return counter.collides(range); });
  }
  const std::vector<Bounds> socketBounds = boundsByEnd(Sockets(counter.getSockets()));
  DescendingSweep used(socketBounds, std::greater<>());
  DescendingSweep registered(counter.getRanges(), std::greater_equal<>());
  return findFirstDescending(ranges, [&](const OrvanePortRange& range) {
    const Bounds bounds = boundsOf(range);
    return used.meets(bounds) || registered.meets(bounds) ||
           containsAny(counter.getPorts(), bounds);
  });
}

// The first of the ranges, in order, that checkSocket() or sockOverlap() holds for.
Ranges::const_iterator firstColliding(const Ranges& ranges, const OrvanePortCounter& counter,
                                      unsigned int address, Sockets used) {
  if (used.first == used.last) return ranges.end();
  if (ranges.size() <= kFewRanges) {
    return std::ranges::find_if(ranges, [&](const OrvanePortRange& range) {
      return counter.checkSocket(address, range) || compare(range, used).meets;
    });
  }
  // Sockets that stand for a range come last.
  const bool standForRanges = std::prev(used.last)->port.getPort() == 0;
  const std::vector<Bounds> usedBounds = boundsByEnd(used);
  DescendingSweep sweep(usedBounds, std::greater<>());
  return findFirstDescending(ranges, [&](const OrvanePortRange& range) {
    return sweep.meets(boundsOf(range)) || (standForRanges && counter.checkSocket(address, range));
  });
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

// Whether checkSocket() or sockOverlap() holds for one of the ports.
bool collidesAny(const std::set<unsigned short>& ports, Sockets used) {
  return !ports.empty() && std::ranges::any_of(used, [&](const OrvaneSock& socket) {
    return isFoundByAny(ports, socket);
  });
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
  const Sockets used(sockets, address);
  const std::set<OrvanePortRange>& wanted = mapping.getRanges();
  return collidesAny(mapping.getPorts(), used) ||
         publishFirst(wanted, firstColliding(wanted, *this, address, used), used,
                      [&](const OrvanePortRange& range) {
                        return checkSocket(address, range) || sockOverlap(address, range);
                      });
}

bool OrvanePortCounter::collides(unsigned int address, const OrvanePortMapping& mapping) const {
  const Sockets used(sockets, address);
  const std::set<OrvanePortRange>& wanted = mapping.getRanges();
  return collidesAny(mapping.getPorts(), used) ||
         firstColliding(wanted, *this, address, used) != wanted.end();
}
