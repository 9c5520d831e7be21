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
  void add(std::uint16_t port) { addBits(port / kBits, bit(port)); }

  // Adds the ports inside a range, whose bounds are in order and port numbers.
  void add(Bounds range) {
    std::size_t word = range.start / kBits;
    const std::size_t last = range.end / kBits;
    std::uint64_t bits = -bit(range.start);
    for (; word != last; ++word, bits = ~0ULL) addBits(word, bits);
    addBits(last, bits & upTo(range.end));
  }

  bool contains(std::uint16_t port) const {
    const std::size_t word = port / kBits;
    return isUsed(word) && (words_[word] & bit(port)) != 0;
  }

  // Whether one of the ports is inside a range.
  bool meets(Bounds range) const {
    const std::size_t end = std::min(range.end, kMaxPort);
    if (range.start > end) return false;
    const std::size_t first = range.start / kBits;
    const std::size_t last = end / kBits;
    const std::uint64_t bits = isUsed(first) ? words_[first] & -bit(range.start) : 0;
    if (first == last) return (bits & upTo(end)) != 0;
    if (bits != 0) return true;
    // No used word is empty.
    const std::size_t next = nextUsed(first + 1);
    return next < last || (next == last && (words_[last] & upTo(end)) != 0);
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

  bool isUsed(std::size_t word) const { return (used_[word / kBits] & bit(word)) != 0; }

  void addBits(std::size_t word, std::uint64_t bits) {
    if (!isUsed(word)) {
      used_[word / kBits] |= bit(word);
      words_[word] = 0;
    }
    words_[word] |= bits;
  }

  // The bits of a word up to that of a place.
  static constexpr std::uint64_t upTo(std::size_t place) { return (bit(place) << 1U) - 1; }

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
    const std::uint64_t toLast = word == last / kBits ? upTo(last) : ~0ULL;
    return fromStart & toLast;
  }

  // The first word from `word` on that is used; kWords when there is none.
  std::size_t nextUsed(std::size_t word) const;

  std::array<std::uint64_t, kWords> words_;
  std::array<std::uint64_t, kWords / kBits> used_{};  // a bit for each word
};

}  // namespace orvane

#endif  // ORVANE_PORTS_PORT_BITS_H_
