// The collision checks, worded step by step: what the library's ways have to give as well.

#ifndef ORVANE_TESTS_PLAIN_COUNTER_H_
#define ORVANE_TESTS_PLAIN_COUNTER_H_

#include <algorithm>
#include <set>

#include "orvane/port_counter.h"

namespace plain {

inline constexpr unsigned int kAddress = 0x0A000001;  // 10.0.0.1

inline bool meets(const OrvaneSock& socket, const OrvanePortRange& range) {
  return range.isInRange(socket.port.getPort()) ||
         range.overlap(OrvanePortRange(socket.port.getRange()));
}

inline bool meets(const OrvaneSock& socket, unsigned int port) {
  return socket.port.isInRange(port);
}

// Walks everything for each question; holds what only a derived class can register.
struct Walk : OrvanePortCounter {
  using OrvanePortCounter::ports;
  using OrvanePortCounter::ranges;
  using OrvanePortCounter::sockets;

  template <typename Port>
  bool socket(const Port& port) const {
    OrvaneSock wanted;
    wanted.address = kAddress;
    wanted.port = port;
    return std::ranges::any_of(sockets,
                               [&](const auto& s) { return !(s < wanted) && !(wanted < s); });
  }

  template <typename Port>
  bool onAddress(const Port& port) const {
    return std::ranges::any_of(
        sockets, [&](const auto& s) { return s.address == kAddress && meets(s, port); });
  }

  bool mapping(const OrvanePortMapping& mapping) const {
    const auto collides = [this](const auto& p) { return this->socket(p) || this->onAddress(p); };
    return std::ranges::any_of(mapping.getPorts(), collides) ||
           std::ranges::any_of(mapping.getRanges(), collides);
  }

  bool port(unsigned int port) const {
    return std::ranges::any_of(ranges, [&](const auto& used) { return used.isInRange(port); });
  }

  bool range(const OrvanePortRange& range) const {
    return std::ranges::any_of(sockets, [&](const auto& used) { return meets(used, range); }) ||
           std::ranges::any_of(ports, [&](unsigned short used) { return range.isInRange(used); }) ||
           std::ranges::any_of(ranges, [&](const auto& used) { return used.overlap(range); });
  }

  unsigned short firstPort(const std::set<unsigned short>& set) const {
    const auto collides = [&](unsigned short p) { return ports.contains(p) || port(p); };
    const auto first = std::ranges::find_if(set, collides);
    return first != set.end() ? *first : 0;
  }
};

}  // namespace plain

#endif  // ORVANE_TESTS_PLAIN_COUNTER_H_
