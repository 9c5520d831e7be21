#include "cli/services.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string_view>
#include <unordered_map>

#include "cli/files/output.h"
#include "cli/terminal/text.h"

namespace orvane::cli {
namespace {

constexpr std::string_view kBlanks = " \t\r\v\f";

// Advances `line` past its next word; "" when there is none.
std::string_view nextWord(std::string_view& line) {
  line.remove_prefix(std::min(line.find_first_not_of(kBlanks), line.size()));
  const std::string_view word = line.substr(0, line.find_first_of(kBlanks));
  line.remove_prefix(word.size());
  return word;
}

// The port of "port/protocol".
std::optional<unsigned short> parsePort(std::string_view text) {
  const std::size_t slash = text.find('/');
  if (slash == std::string_view::npos || slash + 1 == text.size()) return std::nullopt;
  const auto port = parseDecimal<unsigned short>(text.substr(0, slash));
  return port == 0 ? std::nullopt : port;
}

}  // namespace

std::vector<Service> parseServices(const Input& input) {
  std::vector<Service> services;
  std::unordered_map<std::string_view, std::size_t> places;
  std::string_view rest = input.text;
  for (std::size_t number = 1; !rest.empty(); ++number) {
    const std::size_t end = std::min(rest.find('\n'), rest.size());
    std::string_view line = rest.substr(0, end);
    line = line.substr(0, line.find('#'));
    rest.remove_prefix(std::min(end + 1, rest.size()));
    const std::string_view name = nextWord(line);
    const std::string_view portText = nextWord(line);
    if (name.empty()) continue;
    const auto port = parsePort(portText);
    if (!port) {
      writeError(lineLabel(input, number) + "skipped: " +
                 (portText.empty()
                      ? quote(name) + " has no port"
                      : quote(portText) + " is no port from 1 to 65535 with a protocol") +
                 "\n");
      continue;
    }
    const auto [place, added] = places.try_emplace(name, services.size());
    if (added) services.push_back({std::string(name), number, {}});
    services[place->second].ports.insert(*port);
  }
  return services;
}

}  // namespace orvane::cli
