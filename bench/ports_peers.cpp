// Port list texts, by what others wrote.

#include <fmt/format.h>

#include "intervals.h"
#include "plain.h"
#include "ports_data.h"

namespace {

// An interval set merges what overlaps, as a port list does, and also what touches.
void addReading(const data::Kind& kind) {
  bench::add(data::kRead + kind.name, "Boost.ICL", kind.sizes, [=](std::int64_t size) {
    return [lists = kind.make(size)] {
      std::vector<intervals::Set> sets;
      sets.reserve(lists.size());
      for (const std::string& list : lists) sets.push_back(intervals::read(list));
      return sets;
    };
  });
}

void addWriting(const data::Kind& kind) {
  bench::add(data::kWritten + kind.name, "fmt", kind.sizes, [=](std::int64_t size) {
    std::vector<plain::Item> items;
    for (const auto& mapping : data::read(kind.make(size))) items.push_back(plain::itemOf(mapping));
    return [=, text = fmt::memory_buffer()]() mutable {
      std::size_t length = 0;
      for (const plain::Item& item : items) {
        text.clear();
        fmt::format_to(std::back_inserter(text), "{}", fmt::join(item.ports, ","));
        for (const plain::Range& range : item.ranges) {
          fmt::format_to(std::back_inserter(text), ",{}-{}", range.start, range.end);
        }
        length += text.size();
      }
      return length;
    };
  });
}

void addDifference() {
  bench::add(data::kDifference, "Boost.ICL", data::kLongSizes, [](std::int64_t size) {
    const data::Difference lists = data::difference(size);
    return [older = intervals::read(lists.older.getPortsAsString()),
            newer = intervals::read(lists.newer.getPortsAsString())] {
      fmt::memory_buffer text;
      for (const auto& interval : newer - older) {
        fmt::format_to(std::back_inserter(text), "{}-{},", boost::icl::first(interval),
                       boost::icl::last(interval));
      }
      return text.size();
    };
  });
}

}  // namespace

void bench::addPeers() {
  for (const data::Kind& kind : {data::kShort, data::kOrdered, data::kRandom}) addReading(kind);
  for (const data::Kind& kind : {data::kShort, data::kOrdered}) addWriting(kind);
  addDifference();
}
