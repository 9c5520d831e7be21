#include "ports/port_bits.h"

#include <algorithm>

namespace orvane {

void PortBits::erase(Bounds range) {
  const std::size_t last = std::min(range.end, kMaxPort);
  for (std::size_t word = nextUsed(range.start / kBits); word <= last / kBits;
       word = nextUsed(word + 1)) {
    const std::uint64_t fromStart = word == range.start / kBits ? -bit(range.start) : ~0ULL;
    const std::uint64_t toLast = word == last / kBits ? (bit(last) << 1U) - 1 : ~0ULL;
    words_[word] &= ~(fromStart & toLast);
    // A word that was emptied is not walked again.
    if (words_[word] == 0) used_[word / kBits] &= ~bit(word);
  }
}

std::size_t PortBits::nextUsed(std::size_t word) const {
  if (word >= kWords) return kWords;
  std::size_t group = word / kBits;
  std::uint64_t used = used_[group] & -bit(word);
  while (used == 0) {
    if (++group == used_.size()) return kWords;
    used = used_[group];
  }
  return group * kBits + static_cast<std::size_t>(std::countr_zero(used));
}

}  // namespace orvane
