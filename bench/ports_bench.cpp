// Port list texts, per item of the list.

#include "plain.h"
#include "ports_data.h"

namespace {

void addReading(const data::Kind& kind) {
  bench::add(data::kRead + kind.name, bench::kLibrary, kind.sizes, [=](std::int64_t size) {
    return [lists = kind.make(size)] {
      std::vector<OrvanePortMapping> mappings(lists.size());
      for (std::size_t i = 0; i < lists.size(); ++i) mappings[i].setPorts(lists[i].c_str());
      return mappings;
    };
  });
  bench::add(data::kRead + kind.name, bench::kFloor, kind.sizes, [=](std::int64_t size) {
    const data::Lists lists = kind.make(size);
    std::vector<plain::Item> parsed;
    for (const auto& mapping : data::read(lists)) parsed.push_back(plain::itemOf(mapping));
    return [=] {
      std::vector<OrvanePortMapping> mappings(lists.size());
      for (std::size_t i = 0; i < lists.size(); ++i) {
        benchmark::DoNotOptimize(plain::touch(lists[i]));
        plain::fill(parsed[i], mappings[i]);
      }
      return mappings;
    };
  });
}

void addWriting(const data::Kind& kind) {
  bench::add(data::kWritten + kind.name, bench::kLibrary, kind.sizes, [=](std::int64_t size) {
    return [mappings = data::read(kind.make(size))] {
      std::size_t length = 0;
      for (const OrvanePortMapping& mapping : mappings) {
        length += mapping.getPortsAsString().size();
      }
      return length;
    };
  });
  bench::add(data::kWritten + kind.name, bench::kFloor, kind.sizes, [=](std::int64_t size) {
    return [mappings = data::read(kind.make(size)), text = std::string()]() mutable {
      std::size_t length = 0;
      for (const OrvanePortMapping& mapping : mappings) {
        if (text.size() < plain::roomFor(mapping)) text.resize(plain::roomFor(mapping));
        plain::Pen pen(text.data());
        plain::writeList(pen, mapping);
        length += static_cast<std::size_t>(pen.next() - text.data());
        benchmark::DoNotOptimize(text.data());
      }
      return length;
    };
  });
}

// Both sides in order, walked once.
std::size_t differenceByHand(const data::Difference& lists, std::string& text) {
  if (text.size() < plain::roomFor(lists.newer)) text.resize(plain::roomFor(lists.newer));
  plain::Pen pen(text.data());
  auto olderPort = lists.older.getPorts().begin();
  for (const unsigned short port : lists.newer.getPorts()) {
    if (olderPort != lists.older.getPorts().end() && *olderPort == port) {
      ++olderPort;
      continue;
    }
    pen.number(port);
    pen.character(',');
  }
  auto olderRange = lists.older.getRanges().begin();
  for (const OrvanePortRange& range : lists.newer.getRanges()) {
    if (olderRange != lists.older.getRanges().end() && olderRange->getEnd() == range.getEnd()) {
      ++olderRange;
      continue;
    }
    pen.number(range.getStart());
    pen.character('-');
    pen.number(range.getEnd());
    pen.character(',');
  }
  return static_cast<std::size_t>(pen.next() - text.data());
}

void addDifference(const data::Kind& kind) {
  const std::string operation = data::kDifference + kind.name;
  bench::add(operation, bench::kLibrary, kind.sizes, [=](std::int64_t size) {
    return [lists = data::difference(kind, size)] {
      return lists.older.getDiffAsString(lists.newer).size();
    };
  });
  bench::add(operation, bench::kFloor, kind.sizes, [=](std::int64_t size) {
    return [lists = data::difference(kind, size), text = std::string()]() mutable {
      return differenceByHand(lists, text);
    };
  });
}

}  // namespace

void bench::addAll() {
  for (const data::Kind& kind : {data::kShort, data::kOrdered, data::kRandom}) addReading(kind);
  for (const data::Kind& kind : {data::kShort, data::kFew, data::kOrdered, data::kMixed}) {
    addWriting(kind);
  }
  for (const data::Kind& kind : {data::kOrdered, data::kMixed}) addDifference(kind);
}
