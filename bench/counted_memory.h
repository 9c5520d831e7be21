// How much memory something takes. Programs with counted_memory.cpp count every block.

#ifndef ORVANE_BENCH_COUNTED_MEMORY_H_
#define ORVANE_BENCH_COUNTED_MEMORY_H_

#include <cstddef>

namespace bench {

extern std::size_t held;  // now, in bytes
extern std::size_t peak;  // the most that was held since it was last set to `held`

struct Use {
  std::size_t held;
  std::size_t peak;
};

// What `make` takes while what it returns is kept.
template <typename Make>
Use measure(Make make) {
  const std::size_t before = held;
  peak = held;
  [[maybe_unused]] const auto made = make();
  return {held - before, peak - before};
}

}  // namespace bench

#endif  // ORVANE_BENCH_COUNTED_MEMORY_H_
