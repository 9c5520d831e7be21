#include "ports/port_bits.h"

namespace orvane {

void PortBits::erase(Bounds range) {
  const std::size_t last = std::min(range.end, kMaxPort) / kBits;
  for (std::size_t word = nextUsed(range.start / kBits); word <= last; word = nextUsed(word + 1)) {
    words_[word] &= ~inside(word, range);
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
