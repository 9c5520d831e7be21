#include "cli/live_sockets.h"

#include <arpa/inet.h>

#include <array>
#include <charconv>
#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <sstream>

#include "cli/files/input.h"
#include "cli/files/output.h"

namespace orvane::cli {
namespace {

constexpr std::string_view kListening = "0A";

struct SocketTable {
  const char* file;
  const char* user;
  bool isTcp;
  bool isIpv6;
};

constexpr std::array<SocketTable, 4> kTables = {{
    {"tcp", "a listening tcp socket", true, false},
    {"udp", "a bound udp socket", false, false},
    {"tcp6", "a listening tcp socket", true, true},
    {"udp6", "a bound udp socket", false, true},
}};

std::optional<std::uint32_t> parseHex(std::string_view text) {
  std::uint32_t number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number, 16);
  if (text.empty() || error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return number;
}

struct LocalAddress {
  std::uint32_t address = 0;  // 0 is every address
  std::uint32_t port = 0;
  bool isOther = false;  // an IPv6 address that no IPv4 item can collide with
};

// Reads "0100007F:0016": the 32-bit words of the address, as this machine would read its bytes, and
// the port.
std::optional<LocalAddress> parseLocalAddress(std::string_view text, bool isIpv6) {
  const std::size_t digits = isIpv6 ? 32 : 8;
  if (text.size() < digits + 2 || text[digits] != ':') return std::nullopt;
  const auto port = parseHex(text.substr(digits + 1));
  if (!port || *port > 65535) return std::nullopt;
  std::array<std::uint32_t, 4> words = {0, 0, 0xFFFF, 0};
  for (std::size_t i = 0; i < digits; i += 8) {
    const auto word = parseHex(text.substr(i, 8));
    if (!word) return std::nullopt;
    words[isIpv6 ? i / 8 : 3] = ntohl(*word);
  }
  const bool isMapped = words[0] == 0 && words[1] == 0 && words[2] == 0xFFFF;
  const bool isWildcard = words == std::array<std::uint32_t, 4>{};
  return LocalAddress{words[3], *port, !isMapped && !isWildcard};
}

std::string pathOf(const SocketTable& table, const std::string& proc) {
  return proc + "/net/" + table.file;
}

using UsesByAddress = std::map<std::pair<std::string, std::uint32_t>, Use>;

void readTable(const SocketTable& table, const std::string& path, UsesByAddress& uses) {
  const Input input = readInput(path);
  std::istringstream lines(input.text);
  std::string line;
  std::getline(lines, line);  // the heading
  for (std::size_t number = 2; std::getline(lines, line); ++number) {
    std::istringstream fields(line);
    std::string slot;
    std::string local;
    std::string remote;
    std::string state;
    fields >> slot >> local >> remote >> state;
    const auto address = parseLocalAddress(local, table.isIpv6);
    if (!address || state.empty()) {
      writeError(lineLabel(input, number) + "this line is no socket and is skipped\n");
      continue;
    }
    if (address->isOther || address->port == 0 || (table.isTcp && state != kListening)) continue;
    Use& use = uses[{table.user, address->address}];
    use.user = table.user;
    use.ports.setIp(address->address);
    use.ports.getPorts().insert(static_cast<unsigned short>(address->port));
  }
}

}  // namespace

std::vector<Use> readLiveSockets(const std::string& proc) {
  UsesByAddress found;
  for (const SocketTable& table : kTables) {
    const std::string path = pathOf(table, proc);
    if (table.isIpv6 && !std::filesystem::exists(path)) continue;
    readTable(table, path, found);
  }
  std::vector<Use> uses;
  for (auto& [key, use] : found) uses.push_back(std::move(use));
  return uses;
}

std::vector<std::string> liveSocketFiles(const std::string& proc) {
  std::vector<std::string> paths;
  paths.reserve(kTables.size());
  for (const SocketTable& table : kTables) paths.push_back(pathOf(table, proc));
  return paths;
}

}  // namespace orvane::cli
