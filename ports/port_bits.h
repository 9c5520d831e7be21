// A set of port numbers without a node for each.

#ifndef ORVANE_PORTS_PORT_BITS_H_
#define ORVANE_PORTS_PORT_BITS_H_

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>

#include "ports/range_list.h"

namespace orvane {

// A bit for each port number, in words that are cleared when they are first used: a set of few
// ports costs no more than they do.
class PortBits {
 public:
  void add(std::uint16_t port) {
    const std::size_t word = port / kBits;
    if ((used_[word / kBits] & bit(word)) == 0) {
      used_[word / kBits] |= bit(word);
      words_[word] = 0;
    }
    words_[word] |= bit(port);
  }

  // Removes the ports inside a range.
  void erase(Bounds range);

  // Calls `take` for each port, in ascending order.
  template <typename Take>
  void forEach(Take take) const {
    for (std::size_t word = nextUsed(0); word < kWords; word = nextUsed(word + 1)) {
      for (std::uint64_t bits = words_[word]; bits != 0; bits &= bits - 1) {
        take(static_cast<std::uint16_t>(word * kBits +
                                        static_cast<std::size_t>(std::countr_zero(bits))));
      }
    }
  }

 private:
  static constexpr std::size_t kBits = 64;
  static constexpr std::size_t kWords = (kMaxPort + 1) / kBits;

  static constexpr std::uint64_t bit(std::size_t place) {
    return std::uint64_t{1} << place % kBits;
  }

  // The first word from `word` on that is used; kWords when there is none.
  std::size_t nextUsed(std::size_t word) const;

  std::array<std::uint64_t, kWords> words_;
  std::array<std::uint64_t, kWords / kBits> used_{};  // a bit for each word
};

}  // namespace orvane

#endif  // ORVANE_PORTS_PORT_BITS_H_
