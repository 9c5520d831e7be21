#include <array>
#include <cstddef>
#include <map>
#include <set>

#include "cli/findings.h"
#include "cli/group_check.h"
#include "cli/terminal/text.h"
#include "cli/written_values.h"
#include "orvane/app_info.h"

namespace orvane::cli {
namespace {

constexpr std::size_t kEntryNameRoom = 127;

// The elements of an entry's port list, to see which ones the entry has already.
class EntryPorts {
 public:
  EntryPorts(std::size_t line, Findings& findings) : line_(line), findings_(findings) {}

  void add(std::string_view token) {
    const OrvanePort port(std::string(token).c_str());
    if (OrvanePortRange::isRange(std::string(token).c_str())) {
      checkRange(token, port, line_, findings_);
    } else {
      checkPort(token, port);
    }
    const auto [held, isNew] = ports_.insert(port);
    if (isNew || port == *held) return;
    const std::string dropped = port.getText();
    addError(findings_, line_, "range",
             "range " + dropped + " is dropped: " + held->getText() + " ends at its last port");
  }

 private:
  void checkPort(std::string_view token, const OrvanePort& port) {
    const WrittenNumber number = readWritten(token);
    if (port.getPort() != 0) {
      if (number.isClean()) return;
      addError(findings_, line_, "port", quote(token) + " is read as port " + port.getText());
    } else if (number.digits > 0 && number.rest.empty()) {
      addError(
          findings_, line_, "port",
          "port " + quote(token) + " is outside 1 to 65535: it is read as range " + port.getText());
    } else {
      addError(findings_, line_, "token",
               quote(token) + " is no port or range: it is read as range " + port.getText());
    }
  }

  std::size_t line_;
  Findings& findings_;
  std::set<OrvanePort> ports_;
};

void checkEntryPorts(std::string_view /*key*/, std::string_view text, std::size_t line,
                     Findings& findings) {
  EntryPorts ports(line, findings);
  for (const std::string_view token : split(text, ',')) {
    if (!token.empty()) ports.add(token);
  }
}

void checkEntryName(std::string_view key, std::string_view text, std::size_t line,
                    Findings& findings) {
  checkNameRoom(key, text, kEntryNameRoom, line, findings);
}

constexpr std::array<KnownKey, 8> kEntryKeys = {{
    {"Version", checkUnsigned},
    {"PortType", checkSigned},
    {"UPID", checkUnsigned},
    {"PortRange", checkEntryPorts},
    {"Reserved1", checkUnsigned},
    {"Reserved2", checkUnsigned},
    {"Reserved3", checkUnsigned},
    {"FQN", checkEntryName},
}};

}  // namespace

bool isCatalogue(std::string_view sectionText) {
  SectionReader reader(sectionText);
  GroupLines group;
  std::ptrdiff_t balance = 0;  // keys of both kinds cancel out
  bool closed = true;
  while (closed) {
    closed = reader.next(group);
    for (const SectionPair& pair : group.pairs) {
      if (findKey(kEntryKeys, pair.key) != nullptr) ++balance;
      if (isMappingKey(pair.key)) --balance;
    }
  }
  return balance > 0;
}

Findings catalogueFindingsOf(std::string_view sectionText) {
  std::map<unsigned int, std::size_t> firstLine;  // of each UPID
  return checkGroups(sectionText, kEntryKeys, "an entry without UPID and ports",
                     [&](const GroupLines& /*group*/, const TakenPairs& pairs, Findings& findings) {
                       const SectionPair* const upid = pairs.find("UPID");
                       if (upid == nullptr) return;
                       const unsigned int number = readWritten(upid->value).value;
                       const auto [first, isNew] = firstLine.try_emplace(number, upid->line);
                       if (isNew) return;
                       addNote(findings, upid->line, "repeated-upid",
                               "UPID " + std::to_string(number) + " has an entry at line " +
                                   std::to_string(first->second) + ", which look-ups take");
                     });
}

}  // namespace orvane::cli
