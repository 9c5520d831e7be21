#include "catalogue/entry_watcher.h"

#include <string>

#include "ports/text_in.h"

namespace orvane {
namespace {

std::string textOf(const OrvanePort& element) {
  std::string text;
  element.appendText(text);
  return text;
}

}  // namespace

void EntryReporter::otherItem(std::string_view token, const PortListItem& item) {
  if (item.range.isRange()) {
    checkRange(token, item);
    return;
  }
  const NumberText number = readNumberText(token);
  const char* const key = kEntryKeys[kEntryPortRange].data();
  if (item.isPort()) {
    if (isClean(number)) return;
    error("port", key, list(),
          [=] { return quoted(token) + " is read as port " + std::to_string(number.value); });
    return;
  }
  const Bounds bounds = item.range.bounds();
  if (!number.digits.empty() && endsThere(number)) {
    error("port", key, list(), [=] {
      return "port " + quoted(token) + " is outside 1 to 65535: it is read as range " +
             orvane::textOf(bounds);
    });
  } else {
    error("token", key, list(), [=] {
      return quoted(token) + " is no port or range: it is read as range " + orvane::textOf(bounds);
    });
  }
}

void EntryReporter::elementDropped(const OrvanePort& element, const OrvanePort& held) {
  if (element == held) return;
  error("range", kEntryKeys[kEntryPortRange], list(), [&] {
    const std::string dropped = textOf(element);
    return "range " + dropped + " is dropped: " + textOf(held) + " ends at its last port";
  });
}

void EntryReporter::entry(const AppInfoGroup& group) {
  if (!group.holds(kEntryUpid)) return;
  const std::string_view text = group[kEntryUpid];
  const unsigned int upid = readNumber(text);
  const char* const first = firstByUpid_.tryEmplace(upid, text.data());
  if (first == text.data()) return;
  constexpr std::string_view kRest = ", which look-ups take";
  const bool isAdded = note("repeated-upid", kEntryKeys[kEntryUpid], text.data(), [=] {
    return "UPID " + std::to_string(upid) + " has an entry at line " + std::string(kRest);
  });
  if (isAdded) mentionLine(first, kRest.size());
}

void EntryReporter::replaced(const AppInfoGroup& group, const AppInfoGroup& before) {
  for (std::size_t field = 0; field < kAppInfoFields; ++field) {
    if (!group.holds(field) || !before.holds(field)) continue;
    Reporter::replaced(kEntryKeys[field], group[field], before[field]);
  }
}

}  // namespace orvane
