// The sockets of this host, from its proc file system.

#ifndef ORVANE_HOST_LIVE_SOCKETS_H_
#define ORVANE_HOST_LIVE_SOCKETS_H_

#include <cstdint>
#include <set>
#include <string>
#include <vector>

#include "orvane/findings.h"

namespace orvane::host {

enum Protocol : int { kUdp, kTcp };

// What is bound, or, of TCP, listens, on one address.
struct LiveSockets {
  Protocol protocol;
  std::uint32_t address;  // 0 is every address
  std::set<unsigned short> ports;
};

// A file that has been read, and the lines of it that are no sockets and are skipped, of the kind
// "socket".
struct SocketFile {
  std::string path;
  OrvaneFindings findings;
};

struct HostSockets {
  std::vector<LiveSockets> sockets;  // one for each protocol and address, in this order
  std::vector<SocketFile> files;
};

// The listening TCP and the bound UDP sockets of PROC/net/tcp, udp, tcp6 and udp6. A wildcard
// address counts for every address, an IPv4-mapped one as its IPv4 address; other IPv6 addresses
// are left out. A host without IPv6 has no files for it. Throws std::system_error, which names the
// file, when another file cannot be read.
HostSockets readLiveSockets(const std::string& proc);

// The paths of those four files, whether or not they exist.
std::vector<std::string> liveSocketFiles(const std::string& proc);

}  // namespace orvane::host

#endif  // ORVANE_HOST_LIVE_SOCKETS_H_
