// Look-ups by key for operations on whole collections.

#ifndef ORVANE_PORTS_FIRST_BY_KEY_H_
#define ORVANE_PORTS_FIRST_BY_KEY_H_

#include <bit>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "ports/salt.h"

namespace orvane {

// Which value came first with each 32-bit key: an open hash table without a node for each entry.
template <typename Value>
class FirstByKey {
 public:
  // Makes room for `count` keys in all.
  void reserve(std::size_t count) {
    if (2 * count > slots_.size()) rehash(std::bit_ceil(2 * count));
  }

  // Keeps the value that the key has, if any; returns the one it has now.
  Value& tryEmplace(std::uint32_t key, Value value) {
    if (2 * (size_ + 1) > slots_.size()) rehash(slots_.empty() ? 16 : 2 * slots_.size());
    Slot& slot = slots_[place(key)];
    if (!slot.used) {
      slot = {key, true, value};
      ++size_;
    }
    return slot.value;
  }

  // Null when there is none.
  Value* find(std::uint32_t key) {
    if (slots_.empty()) return nullptr;
    Slot& slot = slots_[place(key)];
    return slot.used ? &slot.value : nullptr;
  }

 private:
  struct Slot {
    std::uint32_t key;
    bool used;
    Value value;
  };

  // Where the key is or belongs: at its hash, or in the first free slot after that.
  std::size_t place(std::uint32_t key) const {
    const std::size_t mask = slots_.size() - 1;
    std::size_t i = static_cast<std::size_t>(spread(key ^ salt_)) & mask;
    while (slots_[i].used && slots_[i].key != key) i = (i + 1) & mask;
    return i;
  }

  void rehash(std::size_t slotCount) {
    std::vector<Slot> old(slotCount);
    old.swap(slots_);
    for (const Slot& slot : old) {
      if (slot.used) slots_[place(slot.key)] = slot;
    }
  }

  std::uint64_t salt_ = hashSalt();
  std::vector<Slot> slots_;  // a power of two of them, at most half of them used
  std::size_t size_ = 0;
};

}  // namespace orvane

#endif  // ORVANE_PORTS_FIRST_BY_KEY_H_
