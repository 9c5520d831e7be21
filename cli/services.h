// The services(5) file.

#ifndef ORVANE_CLI_SERVICES_H_
#define ORVANE_CLI_SERVICES_H_

#include <set>
#include <string>
#include <vector>

#include "cli/files/input.h"

namespace orvane::cli {

struct Service {
  std::string name;
  std::size_t line;                // where it appears first
  std::set<unsigned short> ports;  // those of all its protocols
};

// The services of the file, in the order in which their names appear. Malformed lines are reported
// on standard error and skipped.
std::vector<Service> parseServices(const Input& input);

}  // namespace orvane::cli

#endif  // ORVANE_CLI_SERVICES_H_
