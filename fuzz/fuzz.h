// What every fuzz target uses.

#ifndef ORVANE_FUZZ_FUZZ_H_
#define ORVANE_FUZZ_FUZZ_H_

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace fuzz {

// The input as a text in memory of its own, so that a read past its NUL is seen.
inline std::string textOf(const std::uint8_t* data, std::size_t size) {
  return {reinterpret_cast<const char*>(data), size};
}

// The same up to its NUL, where it lies: nothing follows it, so that a read past its end is seen.
inline std::string_view viewOf(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  return text.substr(0, text.find('\0'));
}

// The parts of an input that holds several texts, which a byte of 0xFF separates; as many as asked
// for, the last ones empty when the input has fewer.
inline std::vector<std::string> textsOf(const std::uint8_t* data, std::size_t size,
                                        std::size_t count) {
  std::vector<std::string> texts;
  std::string rest = textOf(data, size);
  while (texts.size() + 1 < count) {
    const std::size_t end = rest.find('\xFF');
    texts.push_back(rest.substr(0, end));
    rest = end == std::string::npos ? "" : rest.substr(end + 1);
  }
  texts.push_back(rest);
  return texts;
}

// Stops the fuzzer when a property does not hold.
inline void require(bool holds) {
  if (!holds) std::abort();
}

}  // namespace fuzz

#endif  // ORVANE_FUZZ_FUZZ_H_
