// Ports in use and collision checks, by what others wrote.

#include <fmt/compile.h>

#include <algorithm>
#include <map>
#include <unordered_map>

#include "intervals.h"
#include "port_counter_data.h"

namespace {

struct Intervals {
  std::map<unsigned int, intervals::Set> sockets;
  intervals::Set all;
};

void addRegistering() {
  bench::add(data::kRegistered, "Boost.ICL", data::kSocketSizes, [](std::int64_t size) {
    return [texts = data::texts(size)] {
      Intervals used;
      for (std::size_t i = 0; i < texts.sockets.size(); ++i) {
        used.sockets.emplace(data::addressOf(i), intervals::read(texts.sockets[i]));
      }
      used.all = intervals::read(texts.all);
      return used;
    };
  });
}

// From plain numbers, the sockets' ports by address.
void addPrinting() {
  bench::add(data::kPrinted, "fmt", data::kSocketSizes, [](std::int64_t size) {
    using Numbers = std::vector<std::pair<unsigned int, unsigned int>>;
    const data::Texts texts = data::texts(size);
    Numbers sockets;
    for (std::size_t i = 0; i < texts.sockets.size(); ++i) {
      OrvanePortMapping list;
      list.setPorts(texts.sockets[i]);
      for (const unsigned int port : list.getPorts())
        sockets.emplace_back(data::addressOf(i), port);
    }
    OrvanePortMapping all;
    all.setPorts(texts.all);
    const std::vector<unsigned short> ports(all.getPorts().begin(), all.getPorts().end());
    Numbers ranges;
    for (const auto& range : all.getRanges()) ranges.emplace_back(range.getStart(), range.getEnd());
    return [=, text = fmt::memory_buffer()]() mutable {
      text.clear();
      const auto out = std::back_inserter(text);
      for (const auto& [address, port] : sockets) {
        fmt::format_to(out, FMT_COMPILE("{}.{}.{}.{}:{} ,"), address >> 24, address >> 16 & 0xFF,
                       address >> 8 & 0xFF, address & 0xFF, port);
      }
      for (const unsigned short port : ports) fmt::format_to(out, FMT_COMPILE("{},"), port);
      for (const auto& [start, end] : ranges)
        fmt::format_to(out, FMT_COMPILE("{}-{},"), start, end);
      return text.size();
    };
  });
}

intervals::Set setOf(const data::Ranges& ranges) {
  intervals::Set set;
  for (const OrvanePortRange& range : ranges) {
    set.add(intervals::of(range.getStart(), range.getEnd()));
  }
  return set;
}

bool collidesAny(const data::Ports& ports, const intervals::Set& used) {
  return std::ranges::any_of(ports,
                             [&](unsigned int port) { return boost::icl::contains(used, port); });
}

bool collidesAny(const data::Ranges& ranges, const intervals::Set& used) {
  return std::ranges::any_of(ranges, [&](const OrvanePortRange& range) {
    return boost::icl::intersects(used, intervals::of(range.getStart(), range.getEnd()));
  });
}

void addChecks() {
  bench::add(data::kCheckPorts, "Boost.ICL", data::kRangeSizes, [](std::int64_t size) {
    const data::PortCheck input(size);
    return [wanted = input.wanted, used = setOf(input.used)] { return collidesAny(wanted, used); };
  });
  bench::add(data::kCheckRanges, "Boost.ICL", data::kRangeSizes, [](std::int64_t size) {
    const data::RangeCheck input(size);
    return [wanted = input.wanted, used = setOf(input.used)] { return collidesAny(wanted, used); };
  });
  // The sockets' ports in one sorted vector, as the check asks on every address.
  bench::add(data::kCheckMixed, "sorted vector", data::kRangeSizes, [](std::int64_t size) {
    const data::MixedCheck input(size);
    std::vector<unsigned short> all;
    for (std::size_t i = 0; i < 1000; ++i) {
      all.insert(all.end(), input.socketPorts.begin(), input.socketPorts.end());
    }
    return [=, wanted = input.wanted, used = setOf(input.used)] {
      std::vector<unsigned short> sorted = all;
      std::ranges::sort(sorted);
      return collidesAny(wanted, used) ||
             std::ranges::any_of(wanted, [&](const OrvanePortRange& range) {
               const auto port = std::ranges::lower_bound(sorted, range.getStart());
               return port != sorted.end() && *port <= range.getEnd();
             });
    };
  });
}

void addChecksOfAll() {
  const auto add = [](intervals::Set& set, const data::Ports& ports) {
    for (const unsigned int port : ports) set.add(intervals::of(port, port));
  };
  bench::add(data::kCheckAllPorts, "Boost.ICL", data::kUsedSizes, [=](std::int64_t size) {
    const data::AllPortsCheck input(size);
    intervals::Set used = setOf(input.used);
    add(used, input.usedPorts);
    return [wanted = input.wanted, used] { return collidesAny(wanted, used); };
  });
  bench::add(data::kCheckAll, "Boost.ICL", data::kRangeSizes, [=](std::int64_t size) {
    const data::AllCheck input(size);
    intervals::Set used = setOf(input.used);
    add(used, input.usedPorts);
    add(used, input.socketPorts);
    return [wanted = input.wanted, used] { return collidesAny(wanted, used); };
  });
}

// Whether a port or a range meets one of a sorted list.
bool collides(const OrvanePortMapping& wanted, const std::vector<unsigned short>& used) {
  return std::ranges::any_of(
             wanted.getPorts(),
             [&](unsigned short port) { return std::ranges::binary_search(used, port); }) ||
         std::ranges::any_of(wanted.getRanges(), [&](const OrvanePortRange& range) {
           const auto port = std::ranges::lower_bound(used, range.getStart());
           return port != used.end() && *port <= range.getEnd();
         });
}

void addMappingCheck() {
  bench::add(data::kCheckMapping, "sorted vector", data::kSocketSizes, [](std::int64_t size) {
    const data::MappingCheck input(size);
    const std::vector<unsigned short> used(input.socketPorts.begin(), input.socketPorts.end());
    OrvanePortMapping wanted;
    wanted.setPorts(input.wantedPorts);
    wanted.setRanges(input.wantedRanges);
    return [=] { return collides(wanted, used); };
  });
  // A sorted vector for each address, found by a hash.
  bench::add(data::kCheckSmall, "std::unordered_map", data::kAddressSizes, [](std::int64_t size) {
    const data::SmallCheck input(size);
    std::unordered_map<unsigned int, std::vector<unsigned short>> used;
    for (std::size_t i = 0; i < input.socketPorts.size(); ++i) {
      used[data::addressOf(i)].assign(input.socketPorts[i].begin(), input.socketPorts[i].end());
    }
    return [=] {
      return std::ranges::count_if(input.addresses, [&](unsigned int address) {
        const auto ports = used.find(address);
        return ports != used.end() && collides(input.wanted, ports->second);
      });
    };
  });
}

}  // namespace

void bench::addPeers() {
  addRegistering();
  addPrinting();
  addChecks();
  addChecksOfAll();
  addMappingCheck();
}
