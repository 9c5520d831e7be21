#include "ports/port_list.h"

#include <algorithm>
#include <functional>
#include <limits>
#include <utility>
#include <vector>

namespace orvane {
namespace {

// The sets of a list while its items go straight into them, as long as they come in order or are
// few. Without this, short lists take a quarter more, and long ones in order twice as long.
template <typename Watcher>
class OneByOne {
 public:
  OneByOne(tagPortMapping& mapping, Watcher& watcher)
      : ports_(mapping.ports), ranges_(mapping.ranges), watcher_(watcher) {}

  // Adds an item. False, and nothing is added, for one out of order when there are more than a few:
  // each of those would take a search, or the steps of one.
  bool add(const PortListItem& item) {
    if (item.range.isRange()) {
      const auto [start, end] = item.range.bounds();
      if (start > lastPort_ && start > lastEnd_ && start <= end) {
        ranges_.emplace_hint(ranges_.end(), start, end);
        lastEnd_ = end;
        return true;
      }
      if (!isShort()) return false;
      Bounds covered{};
      addRange(ranges_, {start, end}, covered, watcher_);
      watcher_.swallows(ports_, covered);
      erasePorts(ports_, covered);
      lastEnd_ = ranges_.rbegin()->getEnd();
      lastPort_ = ports_.empty() ? 0 : *ports_.rbegin();
    } else if (item.isPort()) {
      if (item.number <= lastPort_ && !isShort()) return false;
      ports_.insert(ports_.end(), static_cast<unsigned short>(item.number));
      lastPort_ = std::max(lastPort_, item.number);
    }
    return true;
  }

 private:
  bool isShort() const {
    constexpr std::size_t kFew = 16;
    return ports_.size() + ranges_.size() <= kFew;
  }

  std::set<unsigned short>& ports_;
  std::set<OrvanePortRange>& ranges_;
  Watcher& watcher_;
  std::uint32_t lastPort_ = 0;  // 0: none
  std::uint32_t lastEnd_ = 0;
};

// Reads the rest of a list, whose beginning is in the sets of a mapping, and of which `item` is
// next.
template <typename Watcher>
void readOutOfOrder(const PortListItem& item, std::string_view rest, tagPortMapping& mapping,
                    Watcher& watcher) {
  FlatPortList list;
  for (const unsigned short port : mapping.ports) list.ports.add(port);
  for (const OrvanePortRange& range : mapping.ranges) {
    list.ranges.append({range.getStart(), range.getEnd()});
  }
  list.add(item, watcher);
  list.read(rest, watcher);
  mapping.ports.clear();
  mapping.ranges.clear();
  list.ports.forEach([&](std::uint16_t port) { mapping.ports.insert(mapping.ports.end(), port); });
  list.ranges.forEach([&](std::uint32_t start, std::uint32_t end) {
    mapping.ranges.emplace_hint(mapping.ranges.end(), start, end);
  });
}

template <typename Watcher>
void readList(std::string_view text, tagPortMapping& mapping, Watcher& watcher) {
  watcher.portList(text);
  OneByOne sets(mapping, watcher);
  for (PortListItem item; nextItem(text, item, watcher);) {
    if (sets.add(item)) continue;
    readOutOfOrder(item, text, mapping, watcher);
    return;
  }
}

void setBounds(const RangeText& text, OrvanePortRange& range) {
  if (text.count == 0) return;
  const auto [start, end] = text.bounds();
  range.setStart(start);
  range.setEnd(end);
}

// What sortPorts() sorts a range by: its first number, read as signed.
std::int32_t leadingNumber(const OrvanePortRange& range) {
  return static_cast<std::int32_t>(range.getStart());
}

// Writes ports and ranges, as long as both ascend by leading number, in one pass over both; a port
// comes before a range that starts at it. False when they do not.
template <typename Iterator>
bool writeMerged(TextOut& out, Pen& pen, const tagPortMapping& mapping, Iterator range,
                 Iterator rangesEnd) {
  const OrvanePortRange* const last = mapping.ranges.empty() ? nullptr : &*mapping.ranges.rbegin();
  std::int32_t previous = std::numeric_limits<std::int32_t>::min();
  const auto writeRangesBefore = [&](std::int64_t number) {
    for (; range != rangesEnd && leadingNumber(*range) < number; ++range) {
      const OrvanePortRange& next = *range;
      if (leadingNumber(next) < previous) return false;
      previous = leadingNumber(next);
      const char* const text = pen.place();
      pen = writeRange(pen, next);
      if (&next == last) out.note(Result::kRange, text, pen.place());
      pen.put(',');
    }
    return true;
  };
  for (const unsigned short port : mapping.ports) {
    if (!writeRangesBefore(port)) return false;
    pen = writePort(pen, port);
  }
  return writeRangesBefore(std::numeric_limits<std::int64_t>::max());
}

}  // namespace

PortListItem readAnyItem(std::string_view token) {
  return {readRangeText(token), readNumber(token)};
}

template <typename Watcher>
void FlatPortList::add(const PortListItem& item, Watcher& watcher) {
  if (item.range.isRange()) {
    const Bounds covered = ranges.add(item.range.bounds(), watcher);
    watcher.swallows(ports, covered);
    ports.erase(covered);
  } else if (item.isPort()) {
    ports.add(static_cast<std::uint16_t>(item.number));
  }
}

template <typename Watcher>
void FlatPortList::read(std::string_view text, Watcher& watcher) {
  for (PortListItem item; nextItem(text, item, watcher);) add(item, watcher);
}

template void FlatPortList::read(std::string_view, Unwatched&);
template void FlatPortList::read(std::string_view, Reporter&);

void setBounds(std::string_view text, OrvanePortRange& range) {
  setBounds(readRangeText(text), range);
}

void setPort(const PortListItem& item, OrvanePort& port) {
  setBounds(item.range, port);
  if (item.isPort()) port.setPort(item.number);
}

void readPortList(std::string_view text, tagPortMapping& mapping, Unwatched& watcher) {
  readList(text, mapping, watcher);
}

void readPortList(std::string_view text, tagPortMapping& mapping, Reporter& watcher) {
  readList(text, mapping, watcher);
}

Pen writePortList(TextOut& out, Pen pen, const tagPortMapping& mapping) {
  const auto& ranges = mapping.ranges;
  char* const begin = pen.place();
  // Ranges are mostly in order. Nobody asks first, which would walk them twice.
  if (!writeMerged(out, pen, mapping, ranges.begin(), ranges.end())) {
    std::vector<std::reference_wrapper<const OrvanePortRange>> sorted(ranges.begin(), ranges.end());
    std::ranges::stable_sort(sorted, {}, leadingNumber);
    pen = Pen(begin);
    writeMerged(out, pen, mapping, sorted.begin(), sorted.end());
  }
  pen.endList(begin);
  out.note(Result::kPorts, begin, pen.place());
  out.note(Result::kSortedPorts, begin, pen.place());
  return pen;
}

}  // namespace orvane
