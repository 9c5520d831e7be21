#include "ports/port_numbers.h"

#include <algorithm>

namespace orvane {

void PortNumbers::addOutOfOrder(std::uint16_t port) {
  if (++inserted_ <= kFewInserted) {
    const auto place = std::ranges::lower_bound(ascending_, port);
    if (*place != port) ascending_.insert(place, port);
    return;
  }
  bits_.resize((kMaxPort + 1) / kBits);
  for (const std::uint16_t held : ascending_) wordOf(held) |= bitOf(held);
  ascending_.clear();
  wordOf(port) |= bitOf(port);
}

void PortNumbers::eraseAny(Bounds range) {
  const std::uint32_t last = std::min(range.end, kMaxPort);
  if (range.start > last) return;
  const auto below = [](std::uint16_t port, std::uint32_t bound) { return port < bound; };
  const auto first = std::lower_bound(ascending_.begin(), ascending_.end(), range.start, below);
  ascending_.erase(first, std::lower_bound(first, ascending_.end(), last + 1, below));
  if (bits_.empty()) return;
  // Whole words lie between the first and the last one; those two lose their upper and lower bits.
  const std::size_t firstWord = range.start / kBits;
  const std::size_t lastWord = last / kBits;
  const std::uint64_t keptBelow = bitOf(range.start) - 1;
  const std::uint64_t keptAbove = ~(bitOf(last) - 1) << 1;
  if (firstWord == lastWord) {
    bits_[firstWord] &= keptBelow | keptAbove;
    return;
  }
  bits_[firstWord] &= keptBelow;
  std::fill_n(bits_.data() + firstWord + 1, lastWord - firstWord - 1, 0);
  bits_[lastWord] &= keptAbove;
}

}  // namespace orvane
