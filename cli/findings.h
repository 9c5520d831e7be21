// What the library passes over without a word when it reads a text.

#ifndef ORVANE_CLI_FINDINGS_H_
#define ORVANE_CLI_FINDINGS_H_

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace orvane::cli {

// A note tells of text that means something else than it seems to; any other finding of text that
// is skipped, cut or misread.
struct Finding {
  std::size_t line;
  bool isNote;
  const char* kind;  // a stable word for programs
  std::string message;
};

using Findings = std::vector<Finding>;

inline void addError(Findings& findings, std::size_t line, const char* kind, std::string message) {
  findings.push_back({line, false, kind, std::move(message)});
}

inline void addNote(Findings& findings, std::size_t line, const char* kind, std::string message) {
  findings.push_back({line, true, kind, std::move(message)});
}

// The findings of a mapping section text, by line.
Findings findingsOf(std::string_view sectionText);

// The findings of a catalogue text, by line.
Findings catalogueFindingsOf(std::string_view sectionText);

// Whether a mapping section text has that key.
bool isMappingKey(std::string_view key);

// Whether a section text is a catalogue rather than a mapping, by the keys that only one of them
// has.
bool isCatalogue(std::string_view sectionText);

// Those of a port list text; `line` is what they carry.
void checkPortList(std::string_view text, std::size_t line, Findings& findings);

// Those of an address, and of a number; `key` is the name of the value in messages.
void checkAddress(std::string_view key, std::string_view text, std::size_t line,
                  Findings& findings);
void checkUnsigned(std::string_view key, std::string_view text, std::size_t line,
                   Findings& findings);
void checkSigned(std::string_view key, std::string_view text, std::size_t line, Findings& findings);

}  // namespace orvane::cli

#endif  // ORVANE_CLI_FINDINGS_H_
