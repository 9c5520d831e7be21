// The single ports of a port list while it is being read.

#ifndef ORVANE_PORTS_PORT_NUMBERS_H_
#define ORVANE_PORTS_PORT_NUMBERS_H_

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <memory_resource>
#include <vector>

#include "ports/range_list.h"

namespace orvane {

// A set of port numbers without a node for each: an ascending array, which stays on the stack when
// it is short, or, when many come out of order, a bit for every port number there is.
class PortNumbers {
 public:
  PortNumbers() { ascending_.reserve(kShort); }
  PortNumbers(const PortNumbers&) = delete;
  PortNumbers& operator=(const PortNumbers&) = delete;

  void add(std::uint16_t port) {
    if (!bits_.empty()) {
      wordOf(port) |= bitOf(port);
    } else if (ascending_.empty() || ascending_.back() < port) {
      ascending_.push_back(port);
    } else {
      addOutOfOrder(port);
    }
  }

  // Removes the ports inside a range.
  void erase(Bounds range) {
    if (!bits_.empty() || (!ascending_.empty() && range.start <= ascending_.back())) {
      eraseAny(range);
    }
  }

  // Calls `take` for each port, in ascending order.
  template <typename Take>
  void forEach(Take take) const {
    for (const std::uint16_t port : ascending_) take(port);
    for (std::size_t word = 0; word < bits_.size(); ++word) {
      for (std::uint64_t bits = bits_[word]; bits != 0; bits &= bits - 1) {
        take(static_cast<std::uint16_t>(word * kBits +
                                        static_cast<unsigned>(std::countr_zero(bits))));
      }
    }
  }

 private:
  static constexpr std::size_t kShort = 256;
  static constexpr std::size_t kFewInserted = 128;  // which cost less than a bit for every port
  static constexpr std::size_t kBits = 64;

  static constexpr std::uint64_t bitOf(std::uint32_t port) {
    return std::uint64_t{1} << port % kBits;
  }

  // REQUIRES: there are no bits yet.
  void addOutOfOrder(std::uint16_t port);
  void eraseAny(Bounds range);
  std::uint64_t& wordOf(std::uint16_t port) { return bits_[port / kBits]; }

  alignas(std::uint16_t) std::array<std::byte, kShort * sizeof(std::uint16_t)> room_;
  std::pmr::monotonic_buffer_resource memory_{room_.data(), room_.size()};
  std::pmr::vector<std::uint16_t> ascending_{&memory_};
  std::size_t inserted_ = 0;         // how many came out of order
  std::vector<std::uint64_t> bits_;  // when it is not empty, all ports are in it
};

}  // namespace orvane

#endif  // ORVANE_PORTS_PORT_NUMBERS_H_
