// What is to be said of the values in a text: numbers, addresses, names, items of port lists.

#include <algorithm>
#include <cstdint>
#include <limits>
#include <string>

#include "ports/watcher.h"

namespace orvane {

bool fits(const NumberText& number) {
  constexpr std::uint64_t kMost = std::numeric_limits<std::uint32_t>::max();
  constexpr std::size_t kMostDigits = std::numeric_limits<std::uint32_t>::digits10 + 1;
  std::string_view digits = number.digits;
  digits.remove_prefix(std::min(digits.find_first_not_of('0'), digits.size()));
  if (digits.size() > kMostDigits) return false;
  std::uint64_t magnitude = 0;
  for (const char digit : digits) magnitude = magnitude * 10 + static_cast<unsigned>(digit - '0');
  return magnitude <= (number.isNegative ? kMost / 2 + 1 : kMost);
}

bool endsThere(const NumberText& number) { return std::ranges::all_of(number.rest, isSpace); }

bool isClean(const NumberText& number) {
  return !number.digits.empty() && endsThere(number) && fits(number);
}

void Reporter::checkNumber(std::string_view key, std::string_view text, bool isSigned) {
  const NumberText number = readNumberText(text);
  const bool isBelowZero = isSigned && static_cast<std::int32_t>(number.value) < 0;
  const auto says = [&](const std::string& what) {
    const std::string reading = isBelowZero
                                    ? std::to_string(static_cast<std::int32_t>(number.value))
                                    : std::to_string(number.value);
    return [message = std::string(key) + what + reading] { return message; };
  };
  const std::string subject = " " + quoted(text);
  if (std::ranges::all_of(text, isSpace)) {
    error("number", key, text.data(), says(" is empty: read as "));
  } else if (number.digits.empty()) {
    error("number", key, text.data(), says(subject + " has no digits: read as "));
  } else if (!fits(number)) {
    error("number", key, text.data(), says(subject + " is beyond 32 bits: read as "));
  } else if (!endsThere(number)) {
    error("number", key, text.data(), says(subject + " is no plain number: read as "));
  } else if (number.isNegative != isBelowZero && number.value != 0) {
    note("number", key, text.data(), says(subject + " is read as "));
  }
}

void Reporter::address(std::string_view key, std::string_view text) {
  if (text.empty()) return;  // no address
  const auto dots = std::ranges::count(text, '.');
  if (dots == 0) {
    number(key, text);
    return;
  }
  if (dots != 3) {
    error("address", key, text.data(), [=] {
      return std::string(key) + " " + quoted(text) + " is ignored: it has " +
             std::to_string(dots + 1) + " parts instead of 4";
    });
    return;
  }
  for (std::string_view rest = text;;) {
    const std::size_t dot = rest.find('.');
    const std::string_view part = rest.substr(0, dot);
    const NumberText number = readNumberText(part);
    if (number.value > 0xFF || !isClean(number)) {
      error("address", key, text.data(), [=] {
        return std::string(key) + " " + quoted(text) + ": part " + quoted(part) + " is read as " +
               std::to_string(number.value & 0xFF);
      });
    }
    if (dot == std::string_view::npos) return;
    rest.remove_prefix(dot + 1);
  }
}

void Reporter::name(std::string_view key, std::string_view text, std::size_t room) {
  if (text.size() <= room) return;
  error("name", key, text.data(), [=] {
    return std::string(key) + " " + quoted(text) + " is cut to " + std::to_string(room) +
           " characters: " + quoted(text.substr(0, room));
  });
}

void Reporter::otherItem(std::string_view token, const PortListItem& item) {
  if (item.range.isRange()) {
    checkRange(token, item);
    return;
  }
  const NumberText number = readNumberText(token);
  if (item.isPort()) {
    if (isClean(number)) return;
    error("port", "PortRange", list_,
          [=] { return quoted(token) + " is read as port " + std::to_string(number.value); });
  } else if (!number.digits.empty() && endsThere(number)) {
    error("port", "PortRange", list_,
          [=] { return "port " + quoted(token) + " is skipped: it is outside 1 to 65535"; });
  } else {
    error("token", "PortRange", list_,
          [=] { return quoted(token) + " is skipped: it is no port or range"; });
  }
}

void Reporter::checkRange(std::string_view token, const PortListItem& item) {
  const Bounds bounds = item.range.bounds();
  const auto reading = [=] { return quoted(token) + " is read as " + textOf(bounds); };
  const std::size_t hyphen = token.find('-');
  const bool isClear = std::ranges::count(token, '-') == 1 &&
                       isClean(readNumberText(token.substr(0, hyphen))) &&
                       isClean(readNumberText(token.substr(hyphen + 1)));
  if (!isClear) {
    error("range", "PortRange", list_, reading);
  } else if (item.range.first > item.range.second) {
    note("range", "PortRange", list_, reading);
  }
  if (std::max(bounds.start, bounds.end) > kMaxPort) {
    error("range", "PortRange", list_,
          [=] { return "range " + textOf(bounds) + " goes beyond port 65535"; });
  }
}

}  // namespace orvane
