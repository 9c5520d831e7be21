// Which ports of which items collide with what is in use.

#ifndef ORVANE_CLI_COLLISIONS_H_
#define ORVANE_CLI_COLLISIONS_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

#include "cli/in_use.h"

namespace orvane::cli {

// Ports from first to last.
struct Interval {
  std::uint32_t first;
  std::uint32_t last;
};

// The ports and ranges of an item, in no particular order.
std::vector<Interval> intervalsOf(const OrvanePortMapping& item);

// The intervals as a port list, sorted and joined where they overlap or touch.
std::string portListOf(std::vector<Interval> intervals);

// What an item and a use have in common.
struct Collision {
  std::size_t use;  // position among the uses
  std::vector<Interval> ports;
};

// Finds the uses that an item collides with. An item or a use without address is on every address.
class UseIndex {
 public:
  explicit UseIndex(const std::vector<Use>& uses);

  // In the order of the uses.
  std::vector<Collision> collisionsOf(const OrvanePortMapping& item) const;

 private:
  struct Entry {
    Interval ports;
    std::size_t use;
    std::uint32_t highestLast;  // of this entry and all before it
  };
  using List = std::vector<Entry>;  // by first port

  static void order(List& list);
  static void collect(const List& list, Interval ports,
                      std::unordered_map<std::size_t, std::vector<Interval>>& found);

  List all_;
  List onEveryAddress_;
  std::unordered_map<std::uint32_t, List> onAddress_;
};

}  // namespace orvane::cli

#endif  // ORVANE_CLI_COLLISIONS_H_
