#include <algorithm>
#include <cstdint>
#include <iterator>
#include <limits>
#include <set>
#include <utility>

#include "cli/findings.h"
#include "cli/terminal/text.h"
#include "cli/written_values.h"
#include "orvane/port_mapping.h"

namespace orvane::cli {
namespace {

constexpr std::string_view kWhiteSpace = " \t\n\v\f\r";
constexpr std::uint32_t kMaxPort = std::numeric_limits<std::uint16_t>::max();

std::string_view trimmed(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(kWhiteSpace), text.size()));
  return text.substr(0, text.find_last_not_of(kWhiteSpace) + 1);
}

template <typename Value>
void checkNumber(std::string_view key, std::string_view text, std::size_t line,
                 Findings& findings) {
  const WrittenNumber number = readWritten(text);
  const auto value = static_cast<Value>(number.value);
  const std::string subject = std::string(key) + " " + quote(text);
  const std::string reading = "read as " + std::to_string(value);
  if (trimmed(text).empty()) {
    addError(findings, line, "number", std::string(key) + " is empty: " + reading);
  } else if (number.digits == 0) {
    addError(findings, line, "number", subject + " has no digits: " + reading);
  } else if (!number.fits) {
    addError(findings, line, "number", subject + " is beyond 32 bits: " + reading);
  } else if (!number.rest.empty()) {
    addError(findings, line, "number", subject + " is no plain number: " + reading);
  } else if (number.negative != std::cmp_less(value, 0) && value != 0) {
    addNote(findings, line, "number", subject + " is " + reading);
  }
}

std::string textOf(const OrvanePortRange& range) { return range.getRange(); }

// The bounds of a range. Plain data: inserting into an array of them shifts bytes.
struct RangeBounds {
  unsigned int start;
  unsigned int end;

  bool overlaps(RangeBounds other) const {
    return OrvanePortRange(start, end).overlap(OrvanePortRange(other.start, other.end));
  }
};

// Follows a port list while it is read, to see what its ranges do to what came before them.
class PortListReading {
 public:
  PortListReading(std::size_t line, Findings& findings) : line_(line), findings_(findings) {}

  void addPort(unsigned short port) { ports_.insert(port); }

  // Does what OrvanePortMapping::addRange() does to a set, where each probe by rank would step.
  void addRange(const OrvanePortRange& range) {
    const RangeBounds added = {range.getStart(), range.getEnd()};
    const auto found = findOverlap(added);
    if (found != ranges_.end()) {
      const OrvanePortRange widened = widen(found, added);
      addNote(findings_, line_, "merged",
              "range " + textOf(range) + " is merged with an earlier one into " + textOf(widened));
      swallow(widened);
      return;
    }
    const auto place = std::ranges::lower_bound(ranges_, added.end, {}, &RangeBounds::end);
    if (place == ranges_.end() || place->end != added.end) {
      ranges_.insert(place, added);
    } else {
      addError(findings_, line_, "range",
               "range " + textOf(range) + " is skipped: another range ends at its last port");
    }
    swallow(range);
  }

 private:
  // A binary search that probes the middle first, and so can miss an overlap.
  std::vector<RangeBounds>::iterator findOverlap(RangeBounds range) {
    auto first = ranges_.begin();
    for (auto count = std::ssize(ranges_); count > 0;) {
      const auto half = count / 2;
      if (first[half].overlaps(range)) {
        count = half;
      } else {
        first += half + 1;
        count -= half + 1;
      }
    }
    return first;
  }

  // Widens a range and moves it to where its new end belongs; one that ends there takes it in.
  OrvanePortRange widen(std::vector<RangeBounds>::iterator held, RangeBounds by) {
    RangeBounds widened = {std::min(held->start, by.start), std::max(held->end, by.end)};
    const auto next =
        std::ranges::lower_bound(held + 1, ranges_.end(), widened.end, {}, &RangeBounds::end);
    if (next == ranges_.end() || next->end != widened.end) {
      *std::move(held + 1, next, held) = widened;
    } else {
      next->start = widened.start = std::min(next->start, widened.start);
      ranges_.erase(held);
    }
    return {widened.start, widened.end};
  }

  void swallow(const OrvanePortRange& range) {
    if (range.getStart() > kMaxPort) return;
    const auto first = ports_.lower_bound(static_cast<unsigned short>(range.getStart()));
    const auto last = std::find_if(first, ports_.end(),
                                   [&](unsigned short port) { return port > range.getEnd(); });
    if (first == last) return;
    addNote(findings_, line_, "swallowed",
            "single ports before range " + textOf(range) +
                " are swallowed by it: " + OrvanePortMapping::PortArrayToString({first, last}));
    ports_.erase(first, last);
  }

  std::size_t line_;
  Findings& findings_;
  std::set<unsigned short> ports_;
  std::vector<RangeBounds> ranges_;  // ascending by end
};

}  // namespace

WrittenNumber readWritten(std::string_view text) {
  WrittenNumber number;
  text = trimmed(text);
  number.negative = text.starts_with('-');
  if (number.negative || text.starts_with('+')) text.remove_prefix(1);
  number.digits = std::min(text.find_first_not_of("0123456789"), text.size());
  number.rest = text.substr(number.digits);
  constexpr std::uint64_t kMax = std::numeric_limits<std::uint32_t>::max();
  std::uint64_t magnitude = 0;
  for (const char digit : text.substr(0, number.digits)) {
    magnitude = magnitude * 10 + static_cast<std::uint64_t>(digit - '0');
    if (magnitude > kMax) number.fits = false;
    magnitude &= kMax;
  }
  if (number.negative && magnitude > kMax / 2 + 1) number.fits = false;
  number.value = static_cast<std::uint32_t>(magnitude);
  if (number.negative) number.value = 0U - number.value;
  return number;
}

std::vector<std::string_view> split(std::string_view text, char separator) {
  std::vector<std::string_view> parts;
  for (;;) {
    const std::size_t end = text.find(separator);
    parts.push_back(text.substr(0, end));
    if (end == std::string_view::npos) return parts;
    text.remove_prefix(end + 1);
  }
}

void checkRange(std::string_view token, const OrvanePortRange& range, std::size_t line,
                Findings& findings) {
  const auto parts = split(token, '-');
  const bool clean = parts.size() == 2 && std::ranges::all_of(parts, [](std::string_view part) {
                       return readWritten(part).isClean();
                     });
  if (!clean) {
    addError(findings, line, "range", quote(token) + " is read as " + textOf(range));
  } else if (readWritten(parts[0]).value > readWritten(parts[1]).value) {
    addNote(findings, line, "range", quote(token) + " is read as " + textOf(range));
  }
  if (std::max(range.getStart(), range.getEnd()) > kMaxPort) {
    addError(findings, line, "range", "range " + textOf(range) + " goes beyond port 65535");
  }
}

void checkPortList(std::string_view text, std::size_t line, Findings& findings) {
  PortListReading reading(line, findings);
  for (const std::string_view token : split(text, ',')) {
    if (token.empty()) continue;
    const std::string tokenText(token);
    if (OrvanePortRange::isRange(tokenText.c_str())) {
      const OrvanePortRange range(tokenText.c_str());
      checkRange(token, range, line, findings);
      reading.addRange(range);
      continue;
    }
    const WrittenNumber number = readWritten(token);
    if (number.value >= 1 && number.value <= kMaxPort) {
      reading.addPort(static_cast<unsigned short>(number.value));
      if (!number.isClean()) {
        addError(findings, line, "port",
                 quote(token) + " is read as port " + std::to_string(number.value));
      }
    } else if (number.digits > 0 && number.rest.empty()) {
      addError(findings, line, "port",
               "port " + quote(token) + " is skipped: it is outside 1 to 65535");
    } else {
      addError(findings, line, "token", quote(token) + " is skipped: it is no port or range");
    }
  }
}

void checkAddress(std::string_view key, std::string_view text, std::size_t line,
                  Findings& findings) {
  if (text.empty()) return;  // no address
  const auto parts = split(text, '.');
  if (parts.size() == 1) {
    checkUnsigned(key, text, line, findings);
    return;
  }
  if (parts.size() != 4) {
    addError(findings, line, "address",
             std::string(key) + " " + quote(text) + " is ignored: it has " +
                 std::to_string(parts.size()) + " parts instead of 4");
    return;
  }
  for (const std::string_view part : parts) {
    const WrittenNumber number = readWritten(part);
    if (number.isClean() && number.value <= 0xFF) continue;
    addError(findings, line, "address",
             std::string(key) + " " + quote(text) + ": part " + quote(part) + " is read as " +
                 std::to_string(number.value & 0xFFU));
  }
}

void checkUnsigned(std::string_view key, std::string_view text, std::size_t line,
                   Findings& findings) {
  checkNumber<std::uint32_t>(key, text, line, findings);
}

void checkSigned(std::string_view key, std::string_view text, std::size_t line,
                 Findings& findings) {
  checkNumber<std::int32_t>(key, text, line, findings);
}

}  // namespace orvane::cli
