// Comparisons as text.

#ifndef ORVANE_TESTS_SHOWN_COMPARISON_H_
#define ORVANE_TESTS_SHOWN_COMPARISON_H_

#include <cstdint>
#include <string>
#include <variant>

#include "orvane/comparison.h"

namespace plain {

// A fact as shown by its name, what it was and what it is.
inline std::string factLine(const OrvanePortMapping* item, const std::string& name,
                            const std::string& before, const std::string& after) {
  const std::string address = item == nullptr ? "" : std::to_string(item->getIpAddress()) + " ";
  return "  " + address + name + ": " + before + " -> " + after + "\n";
}

inline std::string header(const OrvaneApplication* older, const OrvaneApplication* newer) {
  return (older == nullptr   ? "added "
          : newer == nullptr ? "removed "
                             : "changed ") +
         std::to_string((older != nullptr ? older : newer)->getUpid()) + "\n";
}

inline std::string show(const OrvaneComparison& comparison) {
  struct {
    std::string operator()(std::monostate /*none*/) const { return "none"; }
    std::string operator()(std::int64_t number) const { return std::to_string(number); }
    std::string operator()(const std::string& text) const { return text; }
  } valueText;
  std::string text;
  for (const OrvaneDifference& difference : comparison) {
    text += header(difference.older, difference.newer);
    for (const OrvaneFact& fact : difference.getFacts()) {
      text += factLine(fact.item, fact.getName(), std::visit(valueText, fact.before),
                       std::visit(valueText, fact.after));
    }
  }
  return text;
}

}  // namespace plain

#endif  // ORVANE_TESTS_SHOWN_COMPARISON_H_
