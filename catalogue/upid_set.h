// Which UPIDs there are, for operations on as many UPIDs.

#ifndef ORVANE_CATALOGUE_UPID_SET_H_
#define ORVANE_CATALOGUE_UPID_SET_H_

#include <bit>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "ports/salt.h"

namespace orvane {

// An open hash table of the numbers alone. At most a quarter of it is used: each number that is not
// at its hash is a branch that the processor guesses wrong, and half as many of them save up to a
// fifth of telling known UPIDs from unknown ones.
class UpidSet {
 public:
  // Makes room for `count` UPIDs in all.
  explicit UpidSet(std::size_t count) : slots_(std::bit_ceil(4 * count + 1)) {}

  void add(unsigned int upid) {
    slots_[place(upid)] = upid;
    hasZero_ = hasZero_ || upid == 0;
  }

  bool contains(unsigned int upid) const {
    return upid == 0 ? hasZero_ : slots_[place(upid)] == upid;
  }

 private:
  // Where the UPID is or belongs: at its hash, or in the first free slot after that.
  std::size_t place(unsigned int upid) const {
    const std::size_t mask = slots_.size() - 1;
    std::size_t i = static_cast<std::size_t>(spread(upid ^ salt_)) & mask;
    while (slots_[i] != upid && slots_[i] != 0) i = (i + 1) & mask;
    return i;
  }

  std::uint64_t salt_ = hashSalt();
  std::vector<unsigned int> slots_;  // a power of two of them, 0 in a free one
  bool hasZero_ = false;
};

}  // namespace orvane

#endif  // ORVANE_CATALOGUE_UPID_SET_H_
