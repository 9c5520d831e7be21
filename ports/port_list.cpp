#include "ports/port_list.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <iterator>
#include <utility>
#include <vector>

#include "ports/range_list.h"
#include "ports/text.h"

namespace orvane {
namespace {

// What sortPorts() sorts a range by: its first number, read as signed.
std::int32_t leadingNumber(const OrvanePortRange& range) {
  return static_cast<std::int32_t>(range.getStart());
}

// Appends ports and ranges in one pass over both, each ascending by leading number; a port comes
// before a range that starts at it.
template <typename Iterator>
void appendMerged(std::string& out, const std::set<unsigned short>& ports, Iterator range,
                  Iterator rangesEnd) {
  const std::size_t begin = out.size();
  const auto appendNextRange = [&] {
    appendSeparator(out, begin);
    appendRange(out, *range++);
  };
  for (const unsigned short port : ports) {
    while (range != rangesEnd && leadingNumber(*range) < port) appendNextRange();
    appendSeparator(out, begin);
    appendNumber(out, port);
  }
  while (range != rangesEnd) appendNextRange();
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

void readPortList(std::string_view text, tagPortMapping& mapping) {
  mapping.ports.clear();
  mapping.ranges.clear();
  RangeList ranges;
  std::string_view token;
  while (nextToken(text, ',', token)) {
    const RangeText range = readRangeText(token);
    if (range.isRange()) {
      const auto [start, end] = range.bounds();
      erasePorts(mapping.ports, ranges.add({start, end}));
    } else if (const std::uint32_t port = readNumber(token); port >= 1 && port <= 65535) {
      mapping.ports.insert(mapping.ports.end(), static_cast<unsigned short>(port));
    }
  }
  ranges.copyTo(mapping.ranges);
}

void appendPortList(std::string& out, const tagPortMapping& mapping) {
  const auto& ranges = mapping.ranges;
  if (std::ranges::is_sorted(ranges, {}, leadingNumber)) {
    appendMerged(out, mapping.ports, ranges.begin(), ranges.end());
    return;
  }
  std::vector<std::reference_wrapper<const OrvanePortRange>> sorted(ranges.begin(), ranges.end());
  std::ranges::stable_sort(sorted, {}, leadingNumber);
  appendMerged(out, mapping.ports, sorted.begin(), sorted.end());
}

void appendRange(std::string& out, const OrvanePortRange& range) {
  appendNumber(out, range.getStart());
  out.push_back('-');
  appendNumber(out, range.getEnd());
}

void publishPortList(std::string_view text, const OrvanePortRange* lastRange) {
  portListText().assign(text);
  sortedPortsText().assign(text);
  if (lastRange != nullptr) lastRange->getRange();
}

}  // namespace orvane

std::string& OrvanePortMapping::getPortsAsString() const {
  std::string& text = orvane::portListText();
  text.clear();
  orvane::appendPortList(text, *this);
  orvane::publishPortList(text, orvane::lastRangeOf(*this));
  return text;
}

char* OrvanePortMapping::sortPorts(const char* text) {
  std::vector<std::pair<std::int32_t, std::string_view>> items;
  std::string_view rest = orvane::viewOf(text);
  for (std::string_view token; orvane::nextToken(rest, ',', token);) {
    items.emplace_back(orvane::readSigned(token), token);
  }
  std::ranges::stable_sort(items, {}, [](const auto& item) { return item.first; });
  // `text` may be the result of an earlier call.
  std::string sorted;
  for (const auto& [number, token] : items) {
    orvane::appendSeparator(sorted, 0);
    sorted.append(token);
  }
  orvane::sortedPortsText().swap(sorted);
  return orvane::sortedPortsText().data();
}

std::string& OrvanePortMapping::PortArrayToString(const std::set<unsigned short>& set) {
  static std::string text;
  text.clear();
  for (const unsigned short port : set) {
    orvane::appendSeparator(text, 0);
    orvane::appendNumber(text, port);
  }
  return text;
}

char* OrvanePortMapping::parse(tagParseType type, const char* text) {
  static std::string result;
  std::string parsed;  // `text` may be the result of an earlier call
  std::string_view rest = orvane::viewOf(text);
  for (std::string_view token; orvane::nextToken(rest, ',', token);) {
    const bool range = orvane::readRangeText(token).isRange();
    if (range && type == kOrvaneParseRanges) {
      orvane::appendSeparator(parsed, 0);
      parsed.append(token);
    } else if (!range && type == kOrvaneParsePorts && orvane::readSigned(token) >= 1) {
      orvane::appendSeparator(parsed, 0);
      orvane::appendNumber(parsed, orvane::readSigned(token));
    }
  }
  result.swap(parsed);
  return result.data();
}
