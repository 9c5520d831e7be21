// Values by size, and how they grow.

#ifndef ORVANE_BENCH_GROWTH_H_
#define ORVANE_BENCH_GROWTH_H_

#include <cmath>
#include <cstdint>
#include <map>
#include <sstream>
#include <string>

namespace bench {

using BySize = std::map<std::int64_t, double>;

inline std::string rounded(double number, int digits) {
  std::ostringstream text;
  text.precision(digits);
  text << std::fixed << number;
  return text.str();
}

// The values at each size, joined by " / ".
inline std::string joined(const BySize& values, int digits) {
  std::string text;
  for (const auto& [size, value] : values) {
    text += (text.empty() ? "" : " / ") + rounded(value, digits);
  }
  return text;
}

// At the sizes that both have.
inline BySize ratiosOf(const BySize& values, const BySize& others) {
  BySize ratios;
  for (const auto& [size, value] : values) {
    if (others.contains(size)) ratios[size] = value / others.at(size);
  }
  return ratios;
}

// n^x with the exponent x that fits the values best; "" for fewer than two.
inline std::string growthOf(const BySize& values) {
  double n = 0;
  double sumX = 0;
  double sumY = 0;
  double sumXX = 0;
  double sumXY = 0;
  for (const auto& [size, value] : values) {
    const double x = std::log(static_cast<double>(size));
    const double y = std::log(value);
    n += 1;
    sumX += x;
    sumY += y;
    sumXX += x * x;
    sumXY += x * y;
  }
  if (n < 2) return "";
  return "n^" + rounded((n * sumXY - sumX * sumY) / (n * sumXX - sumX * sumX), 2);
}

}  // namespace bench

#endif  // ORVANE_BENCH_GROWTH_H_
