#include "orvane/collisions.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <set>
#include <span>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "ports/port_list.h"
#include "ports/range_list.h"
#include "ports/text_out.h"

namespace {

using orvane::Bounds;

// Who has ports: an item of an application, or a counter.
struct Holder {
  const OrvaneApplication* application;
  const OrvanePortMapping* item;
  std::uint32_t address;
  std::size_t party;  // those of one party do not collide
};

// A port on an address: the address stands above the port.
using Place = std::uint64_t;

constexpr Place placeOf(std::uint32_t address, std::uint32_t port) {
  return Place{address} << 32U | port;
}

constexpr std::uint32_t portOf(Place place) { return static_cast<std::uint32_t>(place); }

constexpr Place kLastOfEveryAddress = placeOf(0, std::numeric_limits<std::uint32_t>::max());

// Ports that a holder has. No two of one holder overlap or touch.
struct Held {
  Place first;
  Place last;
  std::size_t holder;
  const Held* next;  // in an ordered list, the first one behind it that another party has
};

// Ports that two holders share; the first one is that which was added first. No two of one pair
// overlap or touch either: else all ports of both would be one interval of each holder.
struct Shared {
  std::size_t first;
  std::size_t second;
  Bounds ports;
};

class Holders {
 public:
  // All applications are one party, or each of them is one.
  void add(const OrvaneAppMapping& applications, bool areParties = false) {
    for (const OrvaneApplication& application : applications) {
      for (const OrvanePortMapping& item : application.getItems()) {
        gather(item.getPorts(), item.getRanges());
        addHolder(&application, &item, item.getIpAddress());
      }
      if (areParties) ++party_;
    }
    ++party_;
  }

  void add(const OrvanePortCounter& used) {
    const std::set<OrvaneSock>& sockets = used.getSockets();
    const auto onOne =
        std::ranges::find_if(sockets, [](const OrvaneSock& socket) { return socket.address != 0; });
    for (auto socket = onOne; socket != sockets.end();) {
      const std::uint32_t address = socket->address;
      for (; socket != sockets.end() && socket->address == address; ++socket) gather(socket->port);
      addHolder(nullptr, nullptr, address);
    }
    std::for_each(sockets.begin(), onOne,
                  [this](const OrvaneSock& socket) { gather(socket.port); });
    gather(used.getPorts(), used.getRanges());
    addHolder(nullptr, nullptr, 0);
    ++party_;
  }

  const Holder& operator[](std::size_t holder) const { return holders_[holder]; }

  // All that two of them share, in no particular order.
  std::vector<Shared> takeShared();

 private:
  void gather(std::uint32_t start, std::uint32_t end) {
    if (start <= end) gathered_.push_back({start, end});
  }

  void gather(const std::set<unsigned short>& ports, const std::set<OrvanePortRange>& ranges) {
    for (const unsigned short port : ports) gather(port, port);
    for (const OrvanePortRange& range : ranges) gather(range.getStart(), range.getEnd());
  }

  void gather(const OrvanePort& port) {
    const std::uint32_t number = port.getPort();
    if (number != 0) {
      gather(number, number);
    } else {
      gather(port.getStart(), port.getEnd());
    }
  }

  // What was gathered is what the holder has.
  void addHolder(const OrvaneApplication* application, const OrvanePortMapping* item,
                 std::uint32_t address) {
    std::ranges::sort(gathered_, {}, &Bounds::start);
    const std::size_t begin = held_.size();
    for (const auto& [start, end] : gathered_) {
      const Place last = placeOf(address, end);
      if (held_.size() > begin && start <= std::uint64_t{portOf(held_.back().last)} + 1) {
        held_.back().last = std::max(held_.back().last, last);
      } else {
        held_.push_back({placeOf(address, start), last, holders_.size(), nullptr});
      }
    }
    gathered_.clear();
    holders_.push_back({application, item, address, party_});
  }

  std::size_t partyOf(const Held& held) const { return holders_[held.holder].party; }

  void order(std::span<Held> list) const {
    std::ranges::sort(list, {}, &Held::first);
    const Held* next = list.data() + list.size();
    for (std::size_t i = list.size(); i-- > 0;) {
      if (i + 1 < list.size() && partyOf(list[i]) != partyOf(list[i + 1])) next = &list[i + 1];
      list[i].next = next;
    }
  }

  // Calls take(held, other) for those of other parties in [from, end) that begin before it ends:
  // where they begin no earlier than it does, these are all that it shares ports with. After each
  // step over its own party comes one that is taken, or the last.
  template <typename Take>
  void meet(const Held& held, const Held* from, const Held* end, Take take) const {
    while (from != end && from->first <= held.last) {
      if (partyOf(*from) == partyOf(held)) {
        from = from->next;
      } else {
        take(held, *from++);
      }
    }
  }

  // Each one of a list with all of that list: the one that begins first looks for the other.
  template <typename Take>
  void meet(std::span<const Held> list, Take take) const {
    for (const Held& held : list) meet(held, &held + 1, list.data() + list.size(), take);
  }

  // Each one of a list with all of another list.
  template <typename Take>
  void meet(std::span<const Held> list, std::span<const Held> others, Take take) const {
    const Held* held = list.data();
    const Held* other = others.data();
    const Held* const end = held + list.size();
    const Held* const othersEnd = other + others.size();
    while (held != end && other != othersEnd) {
      if (held->first <= other->first) {
        meet(*held++, other, othersEnd, take);
      } else {
        meet(*other++, held, end, take);
      }
    }
  }

  std::vector<Holder> holders_;
  std::vector<Held> held_;
  std::vector<Bounds> gathered_;
  std::size_t party_ = 0;
};

std::vector<Shared> Holders::takeShared() {
  std::vector<Shared> shared;
  const auto take = [&shared](const Held& a, const Held& b) {
    const auto [first, second] = std::minmax(a.holder, b.holder);
    const Bounds ports = {portOf(std::max(a.first, b.first)), portOf(std::min(a.last, b.last))};
    shared.push_back({first, second, ports});
  };
  std::vector<Held> held = std::move(held_);
  const std::span<Held> all = held;
  order(all);
  meet(all, take);

  // What is on every address meets what is on one, whichever that is.
  const auto onOne = std::ranges::upper_bound(all, kLastOfEveryAddress, {}, &Held::first);
  const std::span<Held> everywhere(all.begin(), onOne);
  const std::span<Held> elsewhere(onOne, all.end());
  if (everywhere.empty() || elsewhere.empty()) return shared;
  for (Held& one : elsewhere) {
    one.first = portOf(one.first);
    one.last = portOf(one.last);
  }
  order(everywhere);
  order(elsewhere);
  meet(everywhere, elsewhere, take);
  return shared;
}

template <typename Others>
Holders holdersOf(const OrvaneAppMapping& applications, const Others& others) {
  Holders holders;
  holders.add(applications);
  holders.add(others);
  return holders;
}

bool isOtherPair(const Shared& a, const Shared& b) {
  return a.first != b.first || a.second != b.second;
}

void collect(Holders holders, std::vector<OrvaneCollision>& collisions) {
  std::vector<Shared> shared = holders.takeShared();
  std::ranges::sort(shared, {},
                    [](const Shared& s) { return std::tuple(s.first, s.second, s.ports.start); });
  std::size_t pairs = 0;
  for (std::size_t i = 0; i < shared.size(); ++i) {
    if (i == 0 || isOtherPair(shared[i - 1], shared[i])) ++pairs;
  }
  collisions.reserve(pairs);
  for (auto begin = shared.begin(); begin != shared.end();) {
    const auto end = std::find_if(begin, shared.end(),
                                  [&](const Shared& next) { return isOtherPair(*begin, next); });
    const Holder& holder = holders[begin->first];
    const Holder& other = holders[begin->second];
    OrvaneCollision& collision = collisions.emplace_back(OrvaneCollision{
        holder.application, holder.item, other.application, other.item, other.address, {}});
    collision.ports.reserve(static_cast<std::size_t>(end - begin));
    for (; begin != end; ++begin) {
      collision.ports.emplace_back(begin->ports.start, begin->ports.end);
    }
  }
}

void writeShared(orvane::TextOut& out, const std::vector<OrvanePortRange>& ports) {
  orvane::Pen pen = out.pen(ports.size() * orvane::kRangeRoom);
  const char* const begin = pen.place();
  for (const OrvanePortRange& range : ports) {
    if (range.getStart() == range.getEnd()) {
      pen.putNumber(range.getStart());
    } else {
      pen = orvane::writeRange(pen, range);
    }
    pen.put(',');
  }
  pen.endList(begin);
  out.putDown(pen);
}

}  // namespace

void OrvaneCollision::appendPorts(std::string& to) const { orvane::append(to, writeShared, ports); }

OrvaneCollisions::OrvaneCollisions(const OrvaneAppMapping& applications) {
  Holders holders;
  holders.add(applications, true);
  collect(std::move(holders), *this);
}

OrvaneCollisions::OrvaneCollisions(const OrvaneAppMapping& applications,
                                   const OrvaneAppMapping& others) {
  collect(holdersOf(applications, others), *this);
}

OrvaneCollisions::OrvaneCollisions(const OrvaneAppMapping& applications,
                                   const OrvanePortCounter& used) {
  collect(holdersOf(applications, used), *this);
}
