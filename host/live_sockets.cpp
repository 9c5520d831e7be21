#include "host/live_sockets.h"

#include <arpa/inet.h>
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <cstddef>
#include <filesystem>
#include <map>
#include <optional>
#include <string_view>
#include <system_error>
#include <utility>

namespace orvane::host {
namespace {

constexpr std::string_view kListening = "0A";

struct SocketTable {
  const char* file;
  Protocol protocol;
  bool isIpv6;
};

constexpr std::array<SocketTable, 4> kTables = {
    {{"tcp", kTcp, false}, {"udp", kUdp, false}, {"tcp6", kTcp, true}, {"udp6", kUdp, true}}};

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

struct Descriptor {
  explicit Descriptor(int opened) : number(opened) {}
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  ~Descriptor() {
    if (number >= 0) ::close(number);
  }
  int number;
};

std::string pathOf(const SocketTable& table, const std::string& proc) {
  return proc + "/net/" + table.file;
}

[[noreturn]] void failReading(const std::string& path) {
  throw std::system_error(errno, std::generic_category(), "cannot read " + path);
}

std::string contentsOf(const std::string& path) {
  const Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
  if (file.number < 0) failReading(path);
  std::string contents;
  std::string block(std::size_t{1} << 16U, '\0');
  for (;;) {
    const ssize_t count = ::read(file.number, block.data(), block.size());
    if (count == 0) return contents;
    if (count > 0) contents.append(block.data(), static_cast<std::size_t>(count));
    if (count < 0 && errno != EINTR) failReading(path);
  }
}

using PortsByAddress = std::map<std::pair<Protocol, std::uint32_t>, std::set<unsigned short>>;

// Takes what stands before the first of these characters, and that character.
std::string_view take(std::string_view& text, const char* end) {
  const std::string_view taken = text.substr(0, text.find_first_of(end));
  text.remove_prefix(std::min(taken.size() + 1, text.size()));
  return taken;
}

std::string_view takeField(std::string_view& line) {
  constexpr const char* kBlanks = " \t\v\f\r";
  line.remove_prefix(std::min(line.find_first_not_of(kBlanks), line.size()));
  return take(line, kBlanks);
}

void readTable(const SocketTable& table, std::string_view contents, OrvaneFindings& findings,
               PortsByAddress& found) {
  take(contents, "\n");  // the heading
  for (std::size_t number = 2; !contents.empty(); ++number) {
    std::string_view line = take(contents, "\n");
    takeField(line);  // the slot
    const auto address = parseLocalAddress(takeField(line), table.isIpv6);
    takeField(line);  // the other end
    const std::string_view state = takeField(line);
    if (!address || state.empty()) {
      findings.add(
          {number, kOrvaneFindingError, "socket", "", "this line is no socket and is skipped"});
      continue;
    }
    if (address->isOther || address->port == 0) continue;
    if (table.protocol == kTcp && state != kListening) continue;
    found[{table.protocol, address->address}].insert(static_cast<unsigned short>(address->port));
  }
}

}  // namespace

HostSockets readLiveSockets(const std::string& proc) {
  HostSockets host;
  PortsByAddress found;
  for (const SocketTable& table : kTables) {
    const std::string path = pathOf(table, proc);
    if (table.isIpv6 && !std::filesystem::exists(path)) continue;
    SocketFile& file = host.files.emplace_back(SocketFile{path, {}});
    readTable(table, contentsOf(path), file.findings, found);
  }
  for (auto& [key, ports] : found) {
    host.sockets.push_back({key.first, key.second, std::move(ports)});
  }
  return host;
}

std::vector<std::string> liveSocketFiles(const std::string& proc) {
  std::vector<std::string> paths;
  paths.reserve(kTables.size());
  for (const SocketTable& table : kTables) paths.push_back(pathOf(table, proc));
  return paths;
}

}  // namespace orvane::host
