// What is in use, as the command line tells it: lists of ports, sockets, and this host.

#ifndef ORVANE_CLI_IN_USE_H_
#define ORVANE_CLI_IN_USE_H_

#include <string>
#include <vector>

#include "cli/command.h"
#include "orvane/port_mapping.h"

namespace orvane::cli {

// Ports that one user has on one address, or, without an address, on every one.
struct Use {
  OrvanePortMapping ports;
  std::string user;  // "a listening tcp socket", "application 7000 'Web' of FILE"
};

struct InUseOptions {
  std::vector<std::string> ports;
  std::vector<std::string> sockets;
  std::string proc = "/proc";
  bool live = false;

  bool any() const { return live || !ports.empty() || !sockets.empty(); }
};

// --ports, --socket, --live and --proc.
void addInUse(const Command& command, InUseOptions& options);

// All that the options tell. What cannot be read is told on standard error; Failure is thrown when
// nothing of an argument is usable, or when this host cannot be asked.
std::vector<Use> readInUse(const std::string& command, const InUseOptions& options);

// The files that it reads, whether or not they exist.
std::vector<std::string> filesOf(const InUseOptions& options);

}  // namespace orvane::cli

#endif  // ORVANE_CLI_IN_USE_H_
