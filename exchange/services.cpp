#include "exchange/services.h"

#include <algorithm>
#include <map>
#include <optional>

#include "exchange/text.h"

namespace orvane::exchange {
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

void reportCut(const Service& service, const char* name, OrvaneFindings& findings) {
  if (name == service.name) return;
  findings.add({service.line, kOrvaneFindingError, "service-name", "",
                inQuotes(service.name) + " is cut to " + inQuotes(name)});
}

}  // namespace

std::vector<Service> readServices(std::string_view text, OrvaneFindings& findings) {
  std::vector<Service> services;
  std::map<std::string_view, std::size_t> places;
  for (std::size_t number = 1; !text.empty(); ++number) {
    std::string_view line = takeLine(text);
    line = line.substr(0, line.find('#'));
    const std::string_view name = nextWord(line);
    const std::string_view portText = nextWord(line);
    if (name.empty()) continue;
    const auto port = parsePort(portText);
    if (!port) {
      findings.add(
          {number, kOrvaneFindingError, "service", "",
           "skipped: " + (portText.empty() ? inQuotes(name) + " has no port"
                                           : inQuotes(portText) +
                                                 " is no port from 1 to 65535 with a protocol")});
      continue;
    }
    const auto [place, added] = places.try_emplace(name, services.size());
    if (added) services.push_back({std::string(name), number, {}});
    services[place->second].ports.insert(*port);
  }
  return services;
}

OrvaneAppMapping applicationsOf(const std::vector<Service>& services, unsigned int firstUpid,
                                OrvaneFindings& findings) {
  OrvaneAppMapping applications;
  applications.reserve(services.size());
  unsigned int upid = firstUpid;
  for (const Service& service : services) {
    OrvaneApplication& application = applications.emplace_back();
    application.setUpid(upid);
    application.setID(static_cast<int>(upid));  // not a fresh one
    application.setName(service.name.c_str());
    application.setAction(kOrvaneActionAdd);
    OrvanePortMapping item;
    item.setPorts(service.ports);
    application.addItem(item);
    ++upid;
    reportCut(service, application.getName(), findings);
  }
  return applications;
}

OrvaneAppInfoArray catalogueOf(const std::vector<Service>& services, unsigned int firstUpid,
                               OrvaneFindings& findings) {
  OrvaneAppInfoArray catalogue;
  unsigned int upid = firstUpid;
  for (const Service& service : services) {
    std::string ports;
    OrvanePortMapping::appendPortArray(ports, service.ports);
    OrvaneAppInfo entry;
    entry.setUPID(upid);
    entry.setFQN(service.name.c_str());
    entry.setPorts(ports.c_str());
    catalogue.add(entry);
    ++upid;
    reportCut(service, entry.getFQN(), findings);
  }
  return catalogue;
}

}  // namespace orvane::exchange
