#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "cli/files/failure.h"
#include "cli/files/output.h"
#include "cli/findings.h"
#include "cli/section_file.h"
#include "cli/subcommands.h"
#include "cli/terminal/json.h"
#include "cli/terminal/table.h"
#include "cli/terminal/terminal.h"
#include "cli/terminal/text.h"
#include "cli/written_values.h"
#include "orvane/app_info_array.h"

namespace orvane::cli {
namespace {

using Upids = std::vector<unsigned int>;

// Appends the numbers of a list such as "7,9".
void readUpids(const std::string& what, const std::string& list, Upids& upids) {
  for (const std::string_view number : split(list, ',')) {
    const auto upid = parseDecimal<unsigned int>(number);
    if (!upid) throw Failure(what + " " + quote(list) + " is no list of UPIDs such as 7,9");
    upids.push_back(*upid);
  }
}

OrvaneAppInfoArray readCatalogue(const std::string& path) {
  OrvaneAppInfoArray catalogue;
  catalogue.setSection(readClosedGroups(path, catalogueFindingsOf).text.c_str());
  return catalogue;
}

void requireEntries(const OrvaneAppInfoArray& catalogue, const Upids& upids) {
  Upids missing;
  catalogue.getUnknownPortList(upids, missing);
  if (!missing.empty()) {
    throw Failure("the catalogue has no entry with UPID " + std::to_string(missing.front()));
  }
}

// The entries chosen by UPID, each with its first entry; all when none is chosen.
OrvaneAppInfoArray select(const OrvaneAppInfoArray& catalogue, const Upids& upids) {
  if (upids.empty()) return catalogue;
  requireEntries(catalogue, upids);
  OrvaneAppInfoArray selected;
  for (const unsigned int upid : upids) selected.add(*catalogue.find(upid));
  return selected;
}

// How many numbers the elements of the port list hold: the library cuts that to 16 bits.
std::uint64_t portCount(const OrvaneAppInfo& entry) {
  std::uint64_t count = 0;
  for (const std::string_view element : split(entry.getPorts(), ',')) {
    if (element.empty()) continue;  // of an empty list
    const OrvanePort port(std::string(element).c_str());
    if (port.getPort() != 0) {
      ++count;
    } else if (port.getStart() <= port.getEnd()) {
      count += std::uint64_t{port.getEnd()} - port.getStart() + 1;
    }
  }
  return count;
}

std::string tableOf(const OrvaneAppInfoArray& catalogue, bool expand, const Screen& screen) {
  Table table;
  table.add({"UPID", "VERSION", "PORT TYPE", "COUNT", "NAME", "PORTS"});
  std::map<int, std::uint64_t> totals;
  for (const OrvaneAppInfo& entry : catalogue) {
    const std::uint64_t count = portCount(entry);
    const std::string ports = expand ? entry.getEnumPorts() : entry.getPorts();
    table.add({std::to_string(entry.getUPID()), std::to_string(entry.getVersion()),
               std::to_string(entry.getPortType()), std::to_string(count), escape(entry.getFQN()),
               ports.empty() ? "(no ports)" : ports});
    totals[entry.getPortType()] += count;
  }
  std::string text = table.text(screen);
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
         {"count", portCount(entry)},
         {"reserved", {entry.getReserved1(), entry.getReserved2(), entry.getReserved3()}},
         {"name", entry.getFQN()}});
  }
  return toText(array);
}

std::string upidList(const std::string& what, const std::string& list,
                     const OrvaneAppInfoArray& catalogue,
                     void (OrvaneAppInfoArray::*filter)(const Upids&, Upids&) const) {
  Upids upids;
  readUpids(what, list, upids);
  Upids result;
  (catalogue.*filter)(upids, result);
  std::string text;
  for (const unsigned int upid : result) {
    if (!text.empty()) text.push_back(',');
    text += std::to_string(upid);
  }
  return text.empty() ? text : text + "\n";
}

// The UPIDs of a catalogue; entries that look-ups do not take are told on standard error.
Upids upidsOf(const OrvaneAppInfoArray& catalogue, const std::string& name) {
  Upids upids;
  std::set<unsigned int> seen;
  for (const OrvaneAppInfo& entry : catalogue) {
    if (seen.insert(entry.getUPID()).second) {
      upids.push_back(entry.getUPID());
    } else {
      writeError(name + ": entry " + quote(entry.getFQN()) + " is left out: UPID " +
                 std::to_string(entry.getUPID()) + " has an earlier entry\n");
    }
  }
  return upids;
}

std::string mergedSection(const CatalogueOptions& options, const OrvaneAppInfoArray& catalogue,
                          const Upids& chosen) {
  requireEntries(catalogue, chosen);
  OrvaneAppMapping applications;  // new ones, which share a number, are no entry's application
  for (const OrvaneApplication& application : readApplications(options.with)) {
    if (application.getUpid() != kOrvaneNoUpid) applications.emplace_back(application);
  }
  const Upids upids = chosen.empty() ? upidsOf(catalogue, inputName(options.file)) : chosen;
  return catalogue.getMergedAppMappingSection(applications, upids, true);
}

// The UPIDs of applications, each once as in every mapping text; those that have none are told on
// standard error.
Upids upidsOf(const OrvaneAppMapping& applications, const std::string& name) {
  Upids upids;
  for (const OrvaneApplication& application : applications) {
    if (application.getUpid() != kOrvaneNoUpid) {
      upids.push_back(application.getUpid());
    } else {
      writeError(name + ": application " + quote(application.getName()) +
                 " is left out: it has no UPID\n");
    }
  }
  return upids;
}

std::string addedSection(const CatalogueOptions& options, OrvaneAppInfoArray& catalogue,
                         const Upids& chosen) {
  const std::string name = inputName(options.add);
  const OrvaneAppMapping applications = readApplications(options.add);
  for (const unsigned int upid : chosen) {
    if (upid == kOrvaneNoUpid || applications.find(upid) == applications.end()) {
      throw Failure(name + " has no application with UPID " + std::to_string(upid));
    }
  }
  const Upids upids = chosen.empty() ? upidsOf(applications, name) : chosen;
  return catalogue.getAppMappingSection(applications, upids, true);
}

std::string textOf(const CatalogueOptions& options) {
  Upids upids;
  for (const std::string& list : options.upids) readUpids("--upid", list, upids);
  OrvaneAppInfoArray catalogue = readCatalogue(options.file);
  if (!options.known.empty()) {
    return upidList("--known", options.known, catalogue, &OrvaneAppInfoArray::getCommonPortList);
  }
  if (!options.unknown.empty()) {
    return upidList("--unknown", options.unknown, catalogue,
                    &OrvaneAppInfoArray::getUnknownPortList);
  }
  if (!options.with.empty()) return mergedSection(options, catalogue, upids);
  if (!options.add.empty()) return addedSection(options, catalogue, upids);
  const OrvaneAppInfoArray selected = select(catalogue, upids);
  if (options.section) return selected.getSection(true);
  if (options.json) return jsonOf(selected, options.expand);
  return tableOf(selected, options.expand, screenFor(options.color, options.output));
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
