// What the parts of the hostile benchmark share.

#ifndef ORVANE_BENCH_HOSTILE_H_
#define ORVANE_BENCH_HOSTILE_H_

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace bench {

using Clock = std::chrono::steady_clock;

inline double since(Clock::time_point start) {
  return std::chrono::duration<double>(Clock::now() - start).count();
}

// What is timed; what it returns is destroyed after the clock has stopped.
using Run = std::function<std::shared_ptr<void>()>;

// One way to put the same number of items; `twin` is the friendly variant to compare with, if any.
struct Variant {
  std::string name;
  std::string twin;
  std::function<Run(std::size_t count)> prepare;
};

struct Operation {
  std::string name;
  std::size_t itemSize;  // in bytes, about
  std::vector<Variant> variants;
};

std::vector<Operation> operations();

// Measures hostile input beside friendly input with as many items and bytes; a table of the
// operations whose name contains `only`.
void compareTwins(const std::string& only);

// What a group costs that names no application, in collections of more and more of them; the
// largest needs some gigabytes.
void measureNameless(bool large);

}  // namespace bench

#endif  // ORVANE_BENCH_HOSTILE_H_
