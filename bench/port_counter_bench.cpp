// Registering ports in use, writing them, collision checks, and lists of collisions.

#include <algorithm>
#include <bitset>
#include <memory>

#include "plain.h"
#include "port_counter_data.h"

namespace {

// With the protected members, which a derived class may fill as it likes.
struct OpenCounter : OrvanePortCounter {
  OpenCounter() = default;
  explicit OpenCounter(const OrvanePortCounter& counter) : OrvanePortCounter(counter) {}
  using OrvanePortCounter::ports;
  using OrvanePortCounter::ranges;
  using OrvanePortCounter::sockets;
};

using OpenCounterPtr = std::shared_ptr<const OpenCounter>;

OrvaneSock socketOf(unsigned int address, unsigned int port) {
  OrvaneSock socket;
  socket.address = address;
  socket.port.setPort(port);
  return socket;
}

OpenCounterPtr socketsIn(const data::Ports& ports, data::Ranges ranges) {
  const auto counter = std::make_shared<OpenCounter>();
  for (std::size_t i = 0; i < 1000; ++i) {
    for (const unsigned short port : ports) {
      counter->sockets.insert(counter->sockets.end(), socketOf(data::addressOf(i), port));
    }
  }
  counter->ranges = std::move(ranges);
  return counter;
}

void addRegistering() {
  bench::add(data::kRegistered, bench::kLibrary, data::kSocketSizes, [](std::int64_t size) {
    return [texts = data::texts(size)] { return data::counter(texts); };
  });
  bench::add(data::kRegistered, bench::kFloor, data::kSocketSizes, [](std::int64_t size) {
    const data::Texts texts = data::texts(size);
    const OpenCounter used(data::counter(texts));
    using Socket = std::pair<unsigned int, unsigned int>;
    std::vector<Socket> sockets;
    for (const OrvaneSock& s : used.sockets) sockets.emplace_back(s.address, s.port.getPort());
    OrvanePortMapping list;
    list.setPorts(used.ports);
    list.setRanges(used.ranges);
    return [=, parsed = plain::itemOf(list)] {
      for (const std::string& text : texts.sockets) {
        benchmark::DoNotOptimize(plain::touch(text));
      }
      benchmark::DoNotOptimize(plain::touch(texts.all));
      std::set<OrvaneSock> held;
      for (const auto& [address, port] : sockets) held.insert(held.end(), socketOf(address, port));
      tagPortMapping all;
      plain::fill(parsed, all);
      return std::make_pair(std::move(held), std::move(all));
    };
  });
}

std::size_t writeByHand(const OpenCounter& used, std::string& text) {
  const std::size_t room =
      used.sockets.size() * 24 + used.ports.size() * 6 + used.ranges.size() * 22;
  if (text.size() < room) text.resize(room);
  plain::Pen pen(text.data());
  for (const OrvaneSock& socket : used.sockets) {
    for (const int shift : {24, 16, 8, 0}) {
      pen.number(socket.address >> shift & 0xFF);
      pen.character(shift != 0 ? '.' : ':');
    }
    pen.number(socket.port.getPort());
    pen.text(" ,");
  }
  for (const unsigned short port : used.ports) {
    pen.number(port);
    pen.character(',');
  }
  for (const OrvanePortRange& range : used.ranges) {
    pen.number(range.getStart());
    pen.character('-');
    pen.number(range.getEnd());
    pen.character(',');
  }
  return static_cast<std::size_t>(pen.next() - text.data());
}

void addPrinting() {
  const auto add = [](const std::string& way, auto print) {
    bench::add(data::kPrinted, way, data::kSocketSizes, [=](std::int64_t size) {
      const OpenCounter filled(data::counter(data::texts(size)));
      return [=, used = std::make_shared<const OpenCounter>(filled),
              text = std::string()]() mutable { return print(*used, text); };
    });
  };
  add(bench::kLibrary,
      [](const OpenCounter& used, std::string&) { return used.toString().size(); });
  add(bench::kFloor, writeByHand);
}

// Whether one of two lists in order meets the other: both walked once.
template <typename Wanted, typename FirstOf, typename LastOf>
bool meets(const Wanted& wanted, const data::Ranges& used, FirstOf firstOf, LastOf lastOf) {
  auto range = used.begin();
  return std::ranges::any_of(wanted, [&](const auto& element) {
    while (range != used.end() && range->getEnd() < firstOf(element)) ++range;
    return range != used.end() && range->getStart() <= lastOf(element);
  });
}

bool meets(const data::Ranges& wanted, const data::Ranges& used) {
  return meets(
      wanted, used, [](const OrvanePortRange& r) { return r.getStart(); },
      [](const OrvanePortRange& r) { return r.getEnd(); });
}

using Bits = std::bitset<65536>;

Bits bitsOf(const data::Ranges& ranges) {
  Bits bits;
  for (const OrvanePortRange& range : ranges) {
    for (unsigned int i = range.getStart(); i <= range.getEnd(); ++i) bits.set(i);
  }
  return bits;
}

bool meets(const std::set<OrvaneSock>& sockets, const Bits& bits) {
  return std::ranges::any_of(
      sockets, [&](const OrvaneSock& socket) { return bits.test(socket.port.getPort()); });
}

// One check, done against a counter in both ways.
template <typename Data, typename MakeCounter, typename Check, typename ByHand>
void addCheck(const std::string& operation, const bench::Sizes& sizes, MakeCounter makeCounter,
              Check check, ByHand byHand) {
  const auto add = [&](const std::string& way, auto run) {
    bench::add(operation, way, sizes, [=](std::int64_t size) {
      const Data input(size);
      return [=, used = makeCounter(input)] { return run(*used, input); };
    });
  };
  add(bench::kLibrary, check);
  add(bench::kFloor, byHand);
}

void addChecks() {
  const auto rangesOf = [](const auto& input) { return socketsIn({}, input.used); };
  addCheck<data::PortCheck>(
      data::kCheckPorts, data::kRangeSizes, rangesOf,
      [](const OpenCounter& used, const auto& input) { return used.checkPorts(input.wanted); },
      [](const OpenCounter& used, const auto& input) {
        const auto self = [](unsigned short port) -> unsigned int { return port; };
        return meets(input.wanted, used.ranges, self, self);
      });
  addCheck<data::RangeCheck>(
      data::kCheckRanges, data::kRangeSizes, rangesOf,
      [](const OpenCounter& used, const auto& input) { return used.checkRanges(input.wanted); },
      [](const OpenCounter& used, const auto& input) { return meets(input.wanted, used.ranges); });
  addCheck<data::MixedCheck>(
      data::kCheckMixed, data::kRangeSizes,
      [](const auto& input) { return socketsIn(input.socketPorts, input.used); },
      [](const OpenCounter& used, const auto& input) { return used.checkRanges(input.wanted); },
      [](const OpenCounter& used, const auto& input) {
        return meets(used.sockets, bitsOf(input.wanted)) || meets(input.wanted, used.ranges);
      });
}

void addMappingCheck() {
  const auto wantedOf = [](const data::MappingCheck& input) {
    OrvanePortMapping wanted;
    wanted.setPorts(input.wantedPorts);
    wanted.setRanges(input.wantedRanges);
    return wanted;
  };
  const unsigned int address = data::addressOf(500);
  const auto add = [&](const std::string& way, auto run) {
    bench::add(data::kCheckMapping, way, data::kSocketSizes, [=](std::int64_t size) {
      const data::MappingCheck input(size);
      return [=, wanted = wantedOf(input), used = socketsIn(input.socketPorts, {})] {
        return run(*used, wanted);
      };
    });
  };
  add(bench::kLibrary, [=](const OpenCounter& used, const OrvanePortMapping& wanted) {
    return used.checkSocket(address, wanted, false);
  });
  // What is wanted and the sockets of the address, all in order: walked once.
  add(bench::kFloor, [=](const OpenCounter& used, const OrvanePortMapping& wanted) {
    const auto last = used.sockets.lower_bound(socketOf(address + 1, 1));
    auto socket = used.sockets.lower_bound(socketOf(address, 1));
    for (const unsigned short port : wanted.getPorts()) {
      while (socket != last && socket->port.getPort() < port) ++socket;
      if (socket != last && socket->port.getPort() == port) return true;
    }
    socket = used.sockets.lower_bound(socketOf(address, 1));
    for (const OrvanePortRange& range : wanted.getRanges()) {
      while (socket != last && socket->port.getPort() < range.getStart()) ++socket;
      if (socket != last && socket->port.getPort() <= range.getEnd()) return true;
    }
    return false;
  });
}

// What an item has, by address and first port.
struct Held {
  std::uint64_t first;
  std::uint64_t last;
  const OrvaneApplication* application;
  const OrvanePortMapping* item;
};

std::vector<Held> heldBy(const OrvaneAppMapping& mapping) {
  std::vector<Held> held;
  for (const OrvaneApplication& application : mapping) {
    for (const OrvanePortMapping& item : application.getItems()) {
      const std::uint64_t address = std::uint64_t{item.getIpAddress()} << 32U;
      const auto add = [&](unsigned int first, unsigned int last) {
        held.push_back({address | first, address | last, &application, &item});
      };
      const OrvanePortRange& range = *item.getRanges().begin();
      for (const unsigned short port : item.getPorts()) {
        if (!range.isInRange(port)) add(port, port);
      }
      add(range.getStart(), range.getEnd());
    }
  }
  std::ranges::sort(held, {}, &Held::first);
  return held;
}

// Every port touched once, and what was put in order before walked once.
std::vector<OrvaneCollision> listByHand(const OrvaneAppMapping& mapping,
                                        const std::vector<Held>& held) {
  unsigned int sum = 0;
  for (const OrvaneApplication& application : mapping) {
    for (const OrvanePortMapping& item : application.getItems()) {
      for (const unsigned short port : item.getPorts()) sum += port;
      for (const OrvanePortRange& range : item.getRanges()) sum += range.getEnd();
    }
  }
  benchmark::DoNotOptimize(sum);
  std::vector<OrvaneCollision> collisions;
  for (auto one = held.begin(); one != held.end(); ++one) {
    for (auto other = one + 1; other != held.end() && other->first <= one->last; ++other) {
      const auto first = static_cast<unsigned int>(other->first);
      const auto last = static_cast<unsigned int>(std::min(one->last, other->last));
      collisions.push_back({one->application,
                            one->item,
                            other->application,
                            other->item,
                            other->item->getIpAddress(),
                            {OrvanePortRange(first, last)}});
    }
  }
  return collisions;
}

void addCollisions() {
  for (const bool withAllPorts : {false, true}) {
    const auto add = [=](const std::string& way, auto run) {
      const std::string& name = withAllPorts ? data::kCollisionsWide : data::kCollisions;
      bench::add(name, way, data::kItemSizes, [=](std::int64_t size) {
        const auto mapping =
            std::make_shared<const OrvaneAppMapping>(data::applications(size, withAllPorts));
        return [=, held = heldBy(*mapping)] { return run(*mapping, held); };
      });
    };
    add(bench::kLibrary, [](const OrvaneAppMapping& mapping, const std::vector<Held>& /*held*/) {
      return OrvaneCollisions(mapping);
    });
    add(bench::kFloor, listByHand);
  }
}

}  // namespace

void bench::addAll() {
  addRegistering();
  addPrinting();
  addChecks();
  addMappingCheck();
  addCollisions();
}
