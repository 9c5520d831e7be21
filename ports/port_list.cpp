#include "ports/port_list.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "ports/text.h"

namespace orvane {
namespace {

// What sortPorts() sorts a range by: its first number, read as signed.
std::int32_t leadingNumber(const OrvanePortRange& range) {
  return static_cast<std::int32_t>(range.getStart());
}

// Writes ports and ranges in one pass over both, each ascending by leading number; a port comes
// before a range that starts at it.
template <typename Iterator>
Pen writeMerged(Pen pen, const std::set<unsigned short>& ports, Iterator range,
                Iterator rangesEnd) {
  const char* const begin = pen.place();
  const auto writeNextRange = [&] {
    pen = writeRange(pen, *range++);
    pen.put(',');
  };
  for (const unsigned short port : ports) {
    while (range != rangesEnd && leadingNumber(*range) < port) writeNextRange();
    pen = writePort(pen, port);
  }
  while (range != rangesEnd) writeNextRange();
  pen.endList(begin);
  return pen;
}

bool isPort(std::uint32_t number) { return number >= 1 && number <= kMaxPort; }

// The sets of a mapping while a list is read into them.
class PortListSets {
 public:
  explicit PortListSets(tagPortMapping& mapping) : ports_(mapping.ports), ranges_(mapping.ranges) {
    ports_.clear();
    ranges_.clear();
  }

  // Adds an item, unless it belongs before one of them or meets one. Most lists are in order, and
  // need nothing else.
  bool append(const PortListItem& item) {
    if (item.range.isRange()) {
      const auto [start, end] = item.range.bounds();
      if (start <= lastPort_ || start <= lastEnd_ || start > end) return false;
      ranges_.emplace_hint(ranges_.end(), start, end);
      lastEnd_ = end;
    } else if (isPort(item.number)) {
      if (item.number <= lastPort_) return false;
      ports_.insert(ports_.end(), static_cast<unsigned short>(item.number));
      lastPort_ = item.number;
    }
    return true;
  }

  // Adds any item. False when they are so many that flat arrays are quicker.
  bool insert(const PortListItem& item) {
    constexpr std::size_t kFew = 16;
    if (ports_.size() + ranges_.size() > kFew) return false;
    if (item.range.isRange()) {
      const auto [start, end] = item.range.bounds();
      Bounds covered{};
      addRange(ranges_, {start, end}, covered);
      erasePorts(ports_, covered);
    } else if (isPort(item.number)) {
      ports_.insert(static_cast<unsigned short>(item.number));
    }
    lastPort_ = ports_.empty() ? 0 : *ports_.rbegin();
    lastEnd_ = ranges_.empty() ? 0 : ranges_.rbegin()->getEnd();
    return true;
  }

 private:
  std::set<unsigned short>& ports_;
  std::set<OrvanePortRange>& ranges_;
  std::uint32_t lastPort_ = 0;  // 0: none
  std::uint32_t lastEnd_ = 0;
};

void fill(tagPortMapping& mapping, const PortListContent& content) {
  mapping.ports.clear();
  mapping.ranges.clear();
  content.ports.forEach(
      [&](std::uint16_t port) { mapping.ports.insert(mapping.ports.end(), port); });
  content.ranges.forEach([&](std::uint32_t start, std::uint32_t end) {
    mapping.ranges.emplace_hint(mapping.ranges.end(), start, end);
  });
}

std::string& portListText() {
  static std::string text;
  return text;
}

std::string& sortedPortsText() {
  static std::string text;
  return text;
}

}  // namespace

PortListItem readAnyItem(std::string_view token) {
  return {readRangeText(token), readNumber(token)};
}

void setPort(const PortListItem& item, OrvanePort& port) {
  if (item.range.count > 0) {
    const auto [start, end] = item.range.bounds();
    port.setStart(start);
    port.setEnd(end);
  }
  if (!item.range.isRange() && isPort(item.number)) port.setPort(item.number);
}

void PortListContent::add(const PortListItem& item) {
  if (item.range.isRange()) {
    const auto [start, end] = item.range.bounds();
    ports.erase(ranges.add({start, end}));
  } else if (isPort(item.number)) {
    ports.add(static_cast<std::uint16_t>(item.number));
  }
}

void PortListContent::read(std::string_view text) {
  for (PortListItem item; nextItem(text, item);) add(item);
}

void readPortList(std::string_view text, tagPortMapping& mapping) {
  PortListSets sets(mapping);
  PortListItem item;
  while (nextItem(text, item)) {
    if (sets.append(item) || sets.insert(item)) continue;
    PortListContent content;
    for (const std::uint16_t port : mapping.ports) content.ports.add(port);
    for (const auto& range : mapping.ranges) {
      content.ranges.append({range.getStart(), range.getEnd()});
    }
    content.add(item);
    content.read(text);
    fill(mapping, content);
    return;
  }
}

std::size_t portListRoom(const tagPortMapping& mapping) {
  return mapping.ports.size() * kPortRoom + mapping.ranges.size() * kRangeRoom + 1;
}

Pen writePortList(Pen pen, const tagPortMapping& mapping) {
  const auto& ranges = mapping.ranges;
  if (std::ranges::is_sorted(ranges, {}, leadingNumber)) {
    return writeMerged(pen, mapping.ports, ranges.begin(), ranges.end());
  }
  std::vector<std::reference_wrapper<const OrvanePortRange>> sorted(ranges.begin(), ranges.end());
  std::ranges::stable_sort(sorted, {}, leadingNumber);
  return writeMerged(pen, mapping.ports, sorted.begin(), sorted.end());
}

void publishPortList(std::string_view text, const OrvanePortRange* lastRange) {
  portListText().assign(text);
  sortedPortsText().assign(text);
  if (lastRange != nullptr) lastRange->getRange();
}

}  // namespace orvane

std::string& OrvanePortMapping::getPortsAsString() const {
  std::string& text = orvane::portListText();
  orvane::TextBuilder out(text);
  out.putDown(orvane::writePortList(out.pen(orvane::portListRoom(*this)), *this));
  orvane::publishPortList(out.finish(), orvane::lastRangeOf(*this));
  return text;
}

char* OrvanePortMapping::sortPorts(const char* text) {
  std::vector<std::pair<std::int32_t, std::string_view>> items;
  const std::string_view all = orvane::viewOf(text);
  std::string_view rest = all;
  for (std::string_view token; orvane::nextToken(rest, ',', token);) {
    items.emplace_back(orvane::readSigned(token), token);
  }
  std::ranges::stable_sort(items, {}, [](const auto& item) { return item.first; });
  // `text` may be the result of an earlier call.
  std::string sorted;
  orvane::TextBuilder out(sorted);
  orvane::Pen pen = out.pen(all.size() + 1);
  const char* const begin = pen.place();
  for (const auto& [number, token] : items) {
    pen.put(token);
    pen.put(',');
  }
  pen.endList(begin);
  out.putDown(pen);
  orvane::sortedPortsText().swap(out.finish());
  return orvane::sortedPortsText().data();
}

std::string& OrvanePortMapping::PortArrayToString(const std::set<unsigned short>& set) {
  static std::string text;
  orvane::TextBuilder out(text);
  orvane::Pen pen = out.pen(set.size() * orvane::kPortRoom);
  const char* const begin = pen.place();
  for (const unsigned short port : set) pen = orvane::writePort(pen, port);
  pen.endList(begin);
  out.putDown(pen);
  return out.finish();
}

char* OrvanePortMapping::parse(tagParseType type, const char* text) {
  static std::string result;
  std::string parsed;  // `text` may be the result of an earlier call
  std::string_view rest = orvane::viewOf(text);
  for (std::string_view token; orvane::nextToken(rest, ',', token);) {
    const bool range = orvane::readRangeText(token).isRange();
    if (range && type == kOrvaneParseRanges) {
      parsed.append(token).push_back(',');
    } else if (!range && type == kOrvaneParsePorts && orvane::readSigned(token) >= 1) {
      parsed.append(std::to_string(orvane::readSigned(token))).push_back(',');
    }
  }
  if (!parsed.empty()) parsed.pop_back();
  result.swap(parsed);
  return result.data();
}
