#include "ports/salt.h"

#include <ctime>

namespace orvane {

std::uint64_t hashSalt() {
  // Where the system has placed the library and the stack, and when.
  static const std::uint64_t salt = [] {
    const int onStack = 0;
    const auto library = reinterpret_cast<std::uintptr_t>(&hashSalt);
    const auto stack = reinterpret_cast<std::uintptr_t>(&onStack);
    return spread(spread(library + static_cast<std::uint64_t>(std::time(nullptr))) + stack);
  }();
  return salt;
}

}  // namespace orvane
