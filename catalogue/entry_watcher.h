// What readers of catalogue entries tell while they read, beside what every reader does.

#ifndef ORVANE_CATALOGUE_ENTRY_WATCHER_H_
#define ORVANE_CATALOGUE_ENTRY_WATCHER_H_

#include <array>
#include <cstddef>
#include <string_view>

#include "orvane/port_range.h"
#include "ports/first_by_key.h"
#include "ports/record.h"
#include "ports/section_lines.h"
#include "ports/watcher.h"

namespace orvane {

// The order of the texts in a record, and of the keys in a group.
enum AppInfoField : std::size_t {
  kEntryVersion,
  kEntryPortType,
  kEntryUpid,
  kEntryPortRange,
  kEntryReserved1,
  kEntryReserved2,
  kEntryReserved3,
  kEntryFqn,
};

inline constexpr std::size_t kAppInfoFields = kEntryFqn + 1;

using AppInfoRecord = Record<kAppInfoFields>;
using AppInfoGroup = SectionGroup<kAppInfoFields>;
using AppInfoKeys = std::array<std::string_view, kAppInfoFields>;

// The keys as they are named until a caller renames them.
inline constexpr AppInfoKeys kEntryKeys = {"Version",   "PortType",  "UPID",      "PortRange",
                                           "Reserved1", "Reserved2", "Reserved3", "FQN"};

struct UnwatchedEntries : Unwatched {
  // An element that is there already, if only by its last port.
  static void elementDropped(const OrvanePort& /*element*/, const OrvanePort& /*held*/) {}

  // A section of a catalogue that becomes an entry.
  static void entry(const AppInfoGroup& /*group*/) {}
};

class EntryReporter : public Reporter {
 public:
  using Reporter::Reporter;

  // Every item becomes an element, whatever it says.
  void item(std::string_view token, const PortListItem& item) {
    if (!isSound(token, item)) otherItem(token, item);
  }
  void otherItem(std::string_view token, const PortListItem& item);
  void elementDropped(const OrvanePort& element, const OrvanePort& held);
  void entry(const AppInfoGroup& group);

  // The values that a section of an entry gives in the place of those of the sections before it.
  void replaced(const AppInfoGroup& group, const AppInfoGroup& before);

 private:
  FirstByKey<const char*> firstByUpid_;  // where the value of the first entry's UPID is
};

}  // namespace orvane

#endif  // ORVANE_CATALOGUE_ENTRY_WATCHER_H_
