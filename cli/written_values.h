// Values as they are written, against what the library reads them as.

#ifndef ORVANE_CLI_WRITTEN_VALUES_H_
#define ORVANE_CLI_WRITTEN_VALUES_H_

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "cli/findings.h"
#include "orvane/port_range.h"

namespace orvane::cli {

// A number as it is written, and what the library makes of it.
struct WrittenNumber {
  std::uint32_t value = 0;
  bool negative = false;
  bool fits = true;  // in 32 bits
  std::size_t digits = 0;
  std::string_view rest;  // what follows the digits

  bool isClean() const { return digits > 0 && rest.empty() && fits; }
};

WrittenNumber readWritten(std::string_view text);

// The parts of a text between the separators, empty ones included.
std::vector<std::string_view> split(std::string_view text, char separator);

// A range token, and the range that it is read as.
void checkRange(std::string_view token, const OrvanePortRange& range, std::size_t line,
                Findings& findings);

}  // namespace orvane::cli

#endif  // ORVANE_CLI_WRITTEN_VALUES_H_
