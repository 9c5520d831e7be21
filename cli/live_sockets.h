// The sockets of this host, from its proc file system.

#ifndef ORVANE_CLI_LIVE_SOCKETS_H_
#define ORVANE_CLI_LIVE_SOCKETS_H_

#include <string>
#include <vector>

#include "cli/in_use.h"

namespace orvane::cli {

// The listening TCP and the bound UDP sockets of PROC/net/tcp, udp, tcp6 and udp6, one use for each
// protocol and address. A wildcard address counts for every address, an IPv4-mapped one as its IPv4
// address; other IPv6 addresses are left out. A host without IPv6 has no files for it. Lines that
// cannot be read are told on standard error. Throws Failure when an IPv4 file cannot be read.
std::vector<Use> readLiveSockets(const std::string& proc);

// The paths of those four files.
std::vector<std::string> liveSocketFiles(const std::string& proc);

}  // namespace orvane::cli

#endif  // ORVANE_CLI_LIVE_SOCKETS_H_
