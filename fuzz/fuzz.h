// What every fuzz target uses.

#ifndef ORVANE_FUZZ_FUZZ_H_
#define ORVANE_FUZZ_FUZZ_H_

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace fuzz {

// The input as a text in memory of its own, so that a read past its NUL is seen.
inline std::string textOf(const std::uint8_t* data, std::size_t size) {
  return {reinterpret_cast<const char*>(data), size};
}

// Stops the fuzzer when a property does not hold.
inline void require(bool holds) {
  if (!holds) std::abort();
}

}  // namespace fuzz

#endif  // ORVANE_FUZZ_FUZZ_H_
