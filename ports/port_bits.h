// A set of port numbers without a node for each.

#ifndef ORVANE_PORTS_PORT_BITS_H_
#define ORVANE_PORTS_PORT_BITS_H_

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>

#include "ports/text_in.h"

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

  // Calls `take` for each port inside a range, in ascending order.
  template <typename Take>
  void forEachInside(Bounds range, Take take) const {
    const std::size_t last = std::min(range.end, kMaxPort) / kBits;
    for (std::size_t word = nextUsed(range.start / kBits); word <= last;
         word = nextUsed(word + 1)) {
      forEachBit(word, words_[word] & inside(word, range), take);
    }
  }

  // Calls `take` for each port, in ascending order.
  template <typename Take>
  void forEach(Take take) const {
    for (std::size_t word = nextUsed(0); word < kWords; word = nextUsed(word + 1)) {
      forEachBit(word, words_[word], take);
    }
  }

 private:
  static constexpr std::size_t kBits = 64;
  static constexpr std::size_t kWords = (kMaxPort + 1) / kBits;

  static constexpr std::uint64_t bit(std::size_t place) {
    return std::uint64_t{1} << place % kBits;
  }

  template <typename Take>
  static void forEachBit(std::size_t word, std::uint64_t bits, Take take) {
    for (; bits != 0; bits &= bits - 1) {
      const auto place = static_cast<std::size_t>(std::countr_zero(bits));
      take(static_cast<std::uint16_t>(word * kBits + place));
    }
  }

  // The bits of a word that stand for ports inside a range, which reaches into it.
  static std::uint64_t inside(std::size_t word, Bounds range) {
    const std::size_t last = std::min(range.end, kMaxPort);
    const std::uint64_t fromStart = word == range.start / kBits ? -bit(range.start) : ~0ULL;
    const std::uint64_t toLast = word == last / kBits ? (bit(last) << 1U) - 1 : ~0ULL;
    return fromStart & toLast;
  }

  // The first word from `word` on that is used; kWords when there is none.
  std::size_t nextUsed(std::size_t word) const;

  std::array<std::uint64_t, kWords> words_;
  std::array<std::uint64_t, kWords / kBits> used_{};  // a bit for each word
};

}  // namespace orvane

#endif  // ORVANE_PORTS_PORT_BITS_H_
