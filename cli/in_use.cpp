#include "cli/in_use.h"

#include <arpa/inet.h>

#include <system_error>

#include "cli/files/failure.h"
#include "cli/files/output.h"
#include "cli/port_argument.h"
#include "cli/terminal/text.h"
#include "host/live_sockets.h"

namespace orvane::cli {
namespace {

Use readSocket(const std::string& command, const std::string& text) {
  const std::size_t colon = text.rfind(':');
  in_addr address{};
  if (colon == std::string::npos ||
      ::inet_pton(AF_INET, text.substr(0, colon).c_str(), &address) != 1) {
    throw Failure("--socket " + quote(text) + " is not ADDRESS:PORTS, such as 10.0.0.1:80,443");
  }
  const std::string what = "--socket " + escape(text);
  const OrvanePortMapping ports = readPortArgument(command, what, text.substr(colon + 1));
  if (ports.getPortsAsString().empty()) throw Failure(what + " has no ports");
  Use use{ports, "a socket in use"};
  use.ports.setIp(ntohl(address.s_addr));
  return use;
}

host::HostSockets readHost(const std::string& proc) {
  try {
    return host::readLiveSockets(proc);
  } catch (const std::system_error& error) {
    throw Failure(escape(error.what()));
  }
}

void addLive(const std::string& proc, std::vector<Use>& uses) {
  const host::HostSockets host = readHost(proc);
  for (const host::SocketFile& file : host.files) {
    for (const OrvaneFinding& finding : file.findings) {
      writeError(escape(file.path) + ":" + std::to_string(finding.line) + ": " + finding.message +
                 "\n");
    }
  }
  for (const host::LiveSockets& sockets : host.sockets) {
    Use use{{}, sockets.protocol == host::kTcp ? "a listening tcp socket" : "a bound udp socket"};
    use.ports.setIp(sockets.address);
    use.ports.setPorts(sockets.ports);
    uses.push_back(std::move(use));
  }
}

}  // namespace

void addInUse(const Command& command, InUseOptions& options) {
  command.texts("--ports", "LIST", options.ports,
                "Ports in use on every address; may be given again");
  command.texts("--socket", "ADDRESS:PORTS", options.sockets,
                "Ports in use on one address; may be given again");
  const Option live = command.flag("--live", options.live, "What listens or is bound on this host");
  command.text("--proc", "DIR", options.proc, "With --live: another proc file system").needs(live);
}

std::vector<Use> readInUse(const std::string& command, const InUseOptions& options) {
  std::vector<Use> uses;
  for (const std::string& list : options.ports) {
    uses.push_back({readPortArgument(command, "--ports", list), "ports in use"});
  }
  for (const std::string& socket : options.sockets) uses.push_back(readSocket(command, socket));
  if (options.live) addLive(options.proc, uses);
  return uses;
}

std::vector<std::string> filesOf(const InUseOptions& options) {
  return options.live ? host::liveSocketFiles(options.proc) : std::vector<std::string>();
}

}  // namespace orvane::cli
