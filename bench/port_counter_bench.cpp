// Registering ports in use, writing them, collision checks, and lists of collisions.

#include <algorithm>
#include <array>
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

using OpenCounterPtr = std::shared_ptr<OpenCounter>;

OrvaneSock socketOf(unsigned int address, unsigned int port) {
  OrvaneSock socket;
  socket.address = address;
  socket.port.setPort(port);
  return socket;
}

OpenCounterPtr counterOf(const data::Ports& ports, const data::Ranges& ranges) {
  auto counter = std::make_shared<OpenCounter>();
  counter->ports = ports;
  counter->ranges = ranges;
  return counter;
}

OpenCounterPtr socketsIn(const data::Ports& ports, const data::Ranges& ranges) {
  OpenCounterPtr counter = counterOf({}, ranges);
  for (std::size_t i = 0; i < 1000; ++i) counter->addSocket(data::addressOf(i), ports);
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

// A bit for each port.
class Bits {
 public:
  void add(unsigned int port) { words_[port / 64] |= bit(port); }

  void add(const data::Ranges& ranges) {
    for (const OrvanePortRange& range : ranges) {
      const unsigned int start = range.getStart();
      const unsigned int end = range.getEnd();
      if (start / 64 == end / 64) {
        words_[start / 64] |= (bit(end) << 1U) - bit(start);
        continue;
      }
      words_[start / 64] |= -bit(start);
      std::fill(&words_[start / 64 + 1], &words_[end / 64], ~std::uint64_t{0});
      words_[end / 64] |= (bit(end) << 1U) - 1;
    }
  }

  bool contains(unsigned int port) const { return (words_[port / 64] & bit(port)) != 0; }

  bool meets(const OrvanePortRange& range) const {
    const unsigned int start = range.getStart();
    const unsigned int end = range.getEnd();
    if (start / 64 == end / 64) {
      return (words_[start / 64] & ((bit(end) << 1U) - bit(start))) != 0;
    }
    return (words_[start / 64] & -bit(start)) != 0 ||
           (words_[end / 64] & ((bit(end) << 1U) - 1)) != 0 ||
           std::any_of(&words_[start / 64 + 1], &words_[end / 64],
                       [](std::uint64_t word) { return word != 0; });
  }

 private:
  static std::uint64_t bit(unsigned int port) { return std::uint64_t{1} << port % 64; }

  std::array<std::uint64_t, 1024> words_{};
};

// All that is in use on any address.
Bits bitsOf(const OpenCounter& used) {
  Bits bits;
  bits.add(used.ranges);
  for (const unsigned short port : used.ports) bits.add(port);
  for (const OrvaneSock& socket : used.sockets) bits.add(socket.port.getPort());
  return bits;
}

bool meets(const std::set<OrvaneSock>& sockets, const data::Ranges& wanted) {
  Bits bits;
  bits.add(wanted);
  return std::ranges::any_of(
      sockets, [&](const OrvaneSock& socket) { return bits.contains(socket.port.getPort()); });
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
        return meets(used.sockets, input.wanted) || meets(input.wanted, used.ranges);
      });
  addCheck<data::AllPortsCheck>(
      data::kCheckAllPorts, data::kUsedSizes,
      [](const auto& input) { return counterOf(input.usedPorts, input.used); },
      [](const OpenCounter& used, const auto& input) { return used.checkPorts(input.wanted); },
      [](const OpenCounter& used, const auto& input) {
        const Bits bits = bitsOf(used);
        return std::ranges::any_of(input.wanted,
                                   [&](unsigned int port) { return bits.contains(port); });
      });
  addCheck<data::AllCheck>(
      data::kCheckAll, data::kRangeSizes,
      [](const auto& input) {
        OpenCounterPtr used = counterOf(input.usedPorts, input.used);
        for (std::size_t i = 0; const unsigned short port : input.socketPorts) {
          used->sockets.insert(socketOf(data::addressOf(i++ % 256), port));
        }
        return used;
      },
      [](const OpenCounter& used, const auto& input) { return used.checkRanges(input.wanted); },
      [](const OpenCounter& used, const auto& input) {
        const Bits bits = bitsOf(used);
        return std::ranges::any_of(input.wanted,
                                   [&](const OrvanePortRange& range) { return bits.meets(range); });
      });
}

// What is wanted and the sockets of the address, all in order: walked once.
bool meets(const OpenCounter& used, unsigned int address, const OrvanePortMapping& wanted) {
  const auto first = used.sockets.lower_bound(socketOf(address, 1));
  const auto isHere = [&](auto socket) {
    return socket != used.sockets.end() && socket->address == address;
  };
  auto socket = first;
  for (const unsigned short port : wanted.getPorts()) {
    while (isHere(socket) && socket->port.getPort() < port) ++socket;
    if (isHere(socket) && socket->port.getPort() == port) return true;
  }
  socket = first;
  for (const OrvanePortRange& range : wanted.getRanges()) {
    while (isHere(socket) && socket->port.getPort() < range.getStart()) ++socket;
    if (isHere(socket) && socket->port.getPort() <= range.getEnd()) return true;
  }
  return false;
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
  add(bench::kFloor, [=](const OpenCounter& used, const OrvanePortMapping& wanted) {
    return meets(used, address, wanted);
  });
}

// One mapping, asked for on every address; the number of those on which it collides.
void addSmallMappingCheck() {
  const auto add = [](const std::string& way, auto collides) {
    bench::add(data::kCheckSmall, way, data::kAddressSizes, [=](std::int64_t size) {
      const data::SmallCheck input(size);
      const OpenCounterPtr used = counterOf({}, {});
      for (std::size_t i = 0; i < input.socketPorts.size(); ++i) {
        used->addSocket(data::addressOf(i), input.socketPorts[i]);
      }
      return [=] {
        return std::ranges::count_if(input.addresses, [&](unsigned int address) {
          return collides(*used, address, input.wanted);
        });
      };
    });
  };
  add(bench::kLibrary,
      [](const OpenCounter& used, unsigned int address, const OrvanePortMapping& wanted) {
        return used.checkSocket(address, wanted, false);
      });
  add(bench::kFloor, [](const OpenCounter& used, unsigned int address,
                        const OrvanePortMapping& wanted) { return meets(used, address, wanted); });
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
  addSmallMappingCheck();
  addCollisions();
}
