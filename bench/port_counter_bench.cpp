// Registering ports in use, writing them, and collision checks.

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

}  // namespace

void bench::addAll() {
  addRegistering();
  addPrinting();
  addChecks();
  addMappingCheck();
}
