// Port list texts, by what others wrote.

#include <fmt/compile.h>

#include <algorithm>

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

// Ports and ranges, both in order, merged; the formats are compiled in.
void write(const plain::Item& item, fmt::memory_buffer& text) {
  const auto out = std::back_inserter(text);
  auto range = item.ranges.begin();
  const auto writeRange = [&] {
    fmt::format_to(out, FMT_COMPILE("{}-{},"), range->start, range->end);
    ++range;
  };
  text.clear();
  for (const unsigned short port : item.ports) {
    while (range != item.ranges.end() && range->start < port) writeRange();
    fmt::format_to(out, FMT_COMPILE("{},"), port);
  }
  while (range != item.ranges.end()) writeRange();
}

void addWriting(const data::Kind& kind) {
  bench::add(data::kWritten + kind.name, "structs, fmt", kind.sizes, [=](std::int64_t size) {
    std::vector<plain::Item> items;
    for (const auto& mapping : data::read(kind.make(size))) items.push_back(plain::itemOf(mapping));
    return [=, text = fmt::memory_buffer()]() mutable {
      std::size_t length = 0;
      for (const plain::Item& item : items) {
        write(item, text);
        length += text.size();
      }
      return length;
    };
  });
}

void addDifference(const data::Kind& kind) {
  const std::string operation = data::kDifference + kind.name;
  bench::add(operation, "Boost.ICL", kind.sizes, [=](std::int64_t size) {
    const data::Difference lists = data::difference(kind, size);
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
  bench::add(operation, "set_difference, fmt", kind.sizes, [=](std::int64_t size) {
    const data::Difference lists = data::difference(kind, size);
    return [older = plain::itemOf(lists.older), newer = plain::itemOf(lists.newer),
            text = fmt::memory_buffer()]() mutable {
      plain::Item missing;
      std::ranges::set_difference(newer.ports, older.ports, std::back_inserter(missing.ports));
      std::ranges::set_difference(newer.ranges, older.ranges, std::back_inserter(missing.ranges),
                                  {}, &plain::Range::end, &plain::Range::end);
      write(missing, text);
      return text.size();
    };
  });
}

}  // namespace

void bench::addPeers() {
  for (const data::Kind& kind : {data::kShort, data::kOrdered, data::kRandom}) addReading(kind);
  for (const data::Kind& kind : {data::kShort, data::kFew, data::kOrdered, data::kMixed}) {
    addWriting(kind);
  }
  for (const data::Kind& kind : {data::kOrdered, data::kMixed}) addDifference(kind);
}
