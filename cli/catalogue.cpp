#include <algorithm>
#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "cli/failure.h"
#include "cli/findings.h"
#include "cli/json.h"
#include "cli/output.h"
#include "cli/section_file.h"
#include "cli/subcommands.h"
#include "cli/text.h"
#include "orvane/app_info_array.h"

namespace orvane::cli {
namespace {

using Upids = std::vector<unsigned int>;

// Appends the numbers of a list such as "7,9".
void readUpids(const std::string& what, const std::string& list, Upids& upids) {
  std::size_t begin = 0;
  while (begin <= list.size()) {
    const std::size_t end = std::min(list.find(',', begin), list.size());
    const auto upid = parseDecimal<unsigned int>(std::string_view(list).substr(begin, end - begin));
    if (!upid) throw Failure(what + " " + quote(list) + " is no list of UPIDs such as 7,9");
    upids.push_back(*upid);
    begin = end + 1;
  }
}

OrvaneAppInfoArray readCatalogue(const std::string& path) {
  OrvaneAppInfoArray catalogue;
  catalogue.setSection(readClosedGroups(path, catalogueFindingsOf).text.c_str());
  return catalogue;
}

// The entries chosen by UPID, each with its first entry; all when none is chosen.
OrvaneAppInfoArray select(const OrvaneAppInfoArray& catalogue, const Upids& upids) {
  if (upids.empty()) return catalogue;
  OrvaneAppInfoArray selected;
  for (const unsigned int upid : upids) {
    const OrvaneAppInfo* const entry = catalogue.find(upid);
    if (entry == catalogue.end()) {
      throw Failure("the catalogue has no entry with UPID " + std::to_string(upid));
    }
    selected.add(*entry);
  }
  return selected;
}

std::string tableOf(const OrvaneAppInfoArray& catalogue, bool expand) {
  Table table;
  table.add({"UPID", "VERSION", "PORT TYPE", "COUNT", "NAME", "PORTS"});
  std::map<int, std::uint64_t> totals;
  for (const OrvaneAppInfo& entry : catalogue) {
    const unsigned int count = entry.getNumPortsUsed();
    const std::string ports = expand ? entry.getEnumPorts() : entry.getPorts();
    table.add({std::to_string(entry.getUPID()), std::to_string(entry.getVersion()),
               std::to_string(entry.getPortType()), std::to_string(count), escape(entry.getFQN()),
               ports.empty() ? "(no ports)" : ports});
    totals[entry.getPortType()] += count;
  }
  std::string text = table.text();
  for (const auto& [type, total] : totals) {
    text += "Ports of type " + std::to_string(type) + ": " + std::to_string(total) + "\n";
  }
  return text;
}

std::string jsonOf(const OrvaneAppInfoArray& catalogue, bool expand) {
  auto array = Json::array();
  for (const OrvaneAppInfo& entry : catalogue) {
    array.push_back(
        {{"upid", entry.getUPID()},
         {"version", entry.getVersion()},
         {"portType", static_cast<int>(entry.getPortType())},
         {"ports", expand ? entry.getEnumPorts() : entry.getPorts()},
         {"count", entry.getNumPortsUsed()},
         {"reserved", {entry.getReserved1(), entry.getReserved2(), entry.getReserved3()}},
         {"name", entry.getFQN()}});
  }
  return toText(array);
}

std::string upidList(const OrvaneAppInfoArray& catalogue, const CatalogueOptions& options) {
  const bool known = !options.known.empty();
  Upids upids;
  readUpids(known ? "--known" : "--unknown", known ? options.known : options.unknown, upids);
  Upids result;
  if (known) {
    catalogue.getCommonPortList(upids, result);
  } else {
    catalogue.getUnknownPortList(upids, result);
  }
  std::string text;
  for (const unsigned int upid : result) {
    if (!text.empty()) text.push_back(',');
    text += std::to_string(upid);
  }
  return text.empty() ? text : text + "\n";
}

// The UPIDs chosen, or those of all elements, each once.
template <typename Elements, typename UpidOf>
Upids chosenUpids(const Upids& chosen, const Elements& elements, UpidOf upidOf) {
  if (!chosen.empty()) return chosen;
  Upids upids;
  std::set<unsigned int> seen;
  for (const auto& element : elements) {
    if (seen.insert((element.*upidOf)()).second) upids.push_back((element.*upidOf)());
  }
  return upids;
}

std::string textOf(const CatalogueOptions& options) {
  Upids upids;
  for (const std::string& list : options.upids) readUpids("--upid", list, upids);
  OrvaneAppInfoArray catalogue = readCatalogue(options.file);
  if (!options.known.empty() || !options.unknown.empty()) return upidList(catalogue, options);
  if (!options.with.empty()) {
    const OrvaneAppMapping applications = readApplications(options.with);
    return catalogue.getMergedAppMappingSection(
        applications, chosenUpids(upids, catalogue, &OrvaneAppInfo::getUPID), true);
  }
  if (!options.add.empty()) {
    const OrvaneAppMapping applications = readApplications(options.add);
    return catalogue.getAppMappingSection(
        applications, chosenUpids(upids, applications, &OrvaneApplication::getUpid), true);
  }
  const OrvaneAppInfoArray selected = select(catalogue, upids);
  if (options.section) return selected.getSection(true);
  return options.json ? jsonOf(selected, options.expand) : tableOf(selected, options.expand);
}

}  // namespace

ExitStatus showCatalogue(const CatalogueOptions& options) {
  if (options.file == "-" && (options.with == "-" || options.add == "-")) {
    throw Failure("only one file can be standard input");
  }
  writeOutput(textOf(options), options.output, {options.file, options.with, options.add});
  return kSuccess;
}

}  // namespace orvane::cli
