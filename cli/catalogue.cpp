#include <cstdint>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "cli/command.h"
#include "cli/files/failure.h"
#include "cli/files/input.h"
#include "cli/files/output.h"
#include "cli/files/section_file.h"
#include "cli/shared_options.h"
#include "cli/terminal/json_writer.h"
#include "cli/terminal/table.h"
#include "cli/terminal/terminal.h"
#include "cli/terminal/text.h"
#include "orvane/app_info_array.h"

namespace orvane::cli {
namespace {

struct CatalogueOptions {
  std::string file;
  std::string with;
  std::string add;
  std::string known;
  std::string unknown;
  std::string output;
  std::string color = "auto";
  std::vector<std::string> upids;
  bool json = false;
  bool section = false;
  bool expand = false;
  bool all = false;
};

using Upids = std::vector<unsigned int>;

// Appends the numbers of a list such as "7,9".
void readUpids(const std::string& what, const std::string& list, Upids& upids) {
  for (std::string_view rest = list;;) {
    const std::size_t comma = rest.find(',');
    const auto upid = parseDecimal<unsigned int>(rest.substr(0, comma));
    if (!upid) throw Failure(what + " " + quote(list) + " is no list of UPIDs such as 7,9");
    upids.push_back(*upid);
    if (comma == std::string_view::npos) return;
    rest.remove_prefix(comma + 1);
  }
}

void requireEntries(const OrvaneAppInfoArray& catalogue, const Upids& upids) {
  Upids missing;
  catalogue.getUnknownPortList(upids, missing);
  if (!missing.empty()) {
    throw Failure("the catalogue has no entry with UPID " + std::to_string(missing.front()));
  }
}

// The entries chosen by UPID, each with its first entry; all when none is chosen.
OrvaneAppInfoArray select(OrvaneAppInfoArray catalogue, const Upids& upids) {
  if (upids.empty()) return catalogue;
  requireEntries(catalogue, upids);
  std::string text;
  catalogue.appendSection(text, upids, true);
  OrvaneAppInfoArray selected;
  selected.setSection(text);
  return selected;
}

// How many numbers the elements of the port list hold: the library cuts that to 16 bits.
std::uint64_t portCount(const OrvaneAppInfo& entry) {
  std::uint64_t count = 0;
  for (const OrvanePort& port : entry.getPortSet()) {
    if (port.getPort() != 0) {
      ++count;
    } else if (port.getStart() <= port.getEnd()) {
      count += std::uint64_t{port.getEnd()} - port.getStart() + 1;
    }
  }
  return count;
}

std::string portsOf(const OrvaneAppInfo& entry, bool expand) {
  std::string ports;
  expand ? entry.appendEnumPorts(ports) : entry.appendPorts(ports);
  return ports;
}

Table::Cells cellsOf(const OrvaneAppInfo& entry, std::uint64_t count) {
  return {std::to_string(entry.getUPID()), std::to_string(entry.getVersion()),
          std::to_string(entry.getPortType()), std::to_string(count), escape(entry.getFQN())};
}

void writeTable(const OrvaneAppInfoArray& catalogue, bool expand, const Screen& screen,
                Output& output) {
  Table table({"UPID", "VERSION", "PORT TYPE", "COUNT", "NAME"}, "PORTS", screen);
  std::map<int, std::uint64_t> totals;
  std::vector<std::uint64_t> counts;
  counts.reserve(catalogue.size());
  for (const OrvaneAppInfo& entry : catalogue) {
    counts.push_back(portCount(entry));
    totals[entry.getPortType()] += counts.back();
    table.measure(cellsOf(entry, counts.back()));
  }
  table.appendHeading(output.next());
  auto count = counts.begin();
  for (const OrvaneAppInfo& entry : catalogue) {
    const std::string ports = portsOf(entry, expand);
    table.appendRow(output.next(), cellsOf(entry, *count++), ports.empty() ? "(no ports)" : ports);
  }
  for (const auto& [type, total] : totals) {
    output.next() += "Ports of type " + std::to_string(type) + ": " + std::to_string(total) + "\n";
  }
}

void writeJson(const OrvaneAppInfoArray& catalogue, bool expand, Output& output) {
  JsonWriter json(output);
  json.array([&] {
    for (const OrvaneAppInfo& entry : catalogue) {
      json.object([&] {
        json.member("upid", entry.getUPID());
        json.member("version", entry.getVersion());
        json.member("portType", static_cast<int>(entry.getPortType()));
        json.member("ports", portsOf(entry, expand));
        json.member("count", portCount(entry));
        json.arrayMember("reserved", [&] {
          json.value(entry.getReserved1());
          json.value(entry.getReserved2());
          json.value(entry.getReserved3());
        });
        json.member("name", entry.getFQN());
      });
    }
  });
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

// What is left out, whose name may hold any bytes.
void leaveOut(const char* kind, const std::string& what, const char* name,
              const std::string& reason, OrvaneFindings& findings) {
  findings.add(
      {0, kOrvaneFindingError, kind, "UPID", what + " '" + name + "' is left out: " + reason});
}

// The UPIDs of a catalogue, without entries that look-ups do not take.
Upids upidsOf(const OrvaneAppInfoArray& catalogue, OrvaneFindings& findings) {
  Upids upids;
  std::set<unsigned int> seen;
  for (const OrvaneAppInfo& entry : catalogue) {
    if (seen.insert(entry.getUPID()).second) {
      upids.push_back(entry.getUPID());
    } else {
      leaveOut("repeated-upid", "entry", entry.getFQN(),
               "UPID " + std::to_string(entry.getUPID()) + " has an earlier entry", findings);
    }
  }
  return upids;
}

// The UPIDs of applications, each once as in every mapping text, without those that have none.
Upids upidsOf(const OrvaneAppMapping& applications, OrvaneFindings& findings) {
  Upids upids;
  for (const OrvaneApplication& application : applications) {
    if (application.getUpid() != kOrvaneNoUpid) {
      upids.push_back(application.getUpid());
    } else {
      leaveOut("no-upid", "application", application.getName(), "it has no UPID", findings);
    }
  }
  return upids;
}

// The UPIDs chosen; when none is, those of what was read from a file, where what is left out is
// told on standard error.
template <typename Read>
Upids chosenOr(const Upids& chosen, const Read& read, const std::string& file, bool all) {
  if (!chosen.empty()) return chosen;
  OrvaneFindings findings = findingsToReport(all);
  Upids upids = upidsOf(read, findings);
  reportFindings(inputName(file), findings);
  return upids;
}

std::string mergedSection(const CatalogueOptions& options, const OrvaneAppInfoArray& catalogue,
                          const Upids& chosen) {
  requireEntries(catalogue, chosen);
  OrvaneAppMapping applications = readApplications(options.with, options.all);
  // New ones, which share a number, are no entry's application.
  std::erase_if(applications, [](const OrvaneApplication& application) {
    return application.getUpid() == kOrvaneNoUpid;
  });
  std::string text;
  catalogue.appendMergedAppMappingSection(
      text, applications, chosenOr(chosen, catalogue, options.file, options.all), true);
  return text;
}

std::string addedSection(const CatalogueOptions& options, OrvaneAppInfoArray& catalogue,
                         const Upids& chosen) {
  const OrvaneAppMapping applications = readApplications(options.add, options.all);
  std::set<unsigned int> known;
  for (const OrvaneApplication& application : applications) known.insert(application.getUpid());
  for (const unsigned int upid : chosen) {
    if (upid == kOrvaneNoUpid || !known.contains(upid)) {
      throw Failure(inputName(options.add) + " has no application with UPID " +
                    std::to_string(upid));
    }
  }
  std::string text;
  catalogue.appendAppMappingSection(text, applications,
                                    chosenOr(chosen, applications, options.add, options.all), true);
  return text;
}

// The forms that are not written entry by entry.
std::string textOf(const CatalogueOptions& options, OrvaneAppInfoArray& catalogue,
                   const Upids& upids) {
  if (!options.known.empty()) {
    return upidList("--known", options.known, catalogue, &OrvaneAppInfoArray::getCommonPortList);
  }
  if (!options.unknown.empty()) {
    return upidList("--unknown", options.unknown, catalogue,
                    &OrvaneAppInfoArray::getUnknownPortList);
  }
  return options.with.empty() ? addedSection(options, catalogue, upids)
                              : mergedSection(options, catalogue, upids);
}

void writeEntries(const CatalogueOptions& options, const OrvaneAppInfoArray& entries) {
  Output output(options.output, {options.file});
  if (options.json) {
    writeJson(entries, options.expand, output);
  } else if (options.section) {
    for (const OrvaneAppInfo& entry : entries) entry.appendSection(output.next(), true);
  } else {
    writeTable(entries, options.expand, screenFor(options.color, options.output), output);
  }
  output.finish();
}

ExitStatus showCatalogue(const CatalogueOptions& options) {
  if (options.file == "-" && (options.with == "-" || options.add == "-")) {
    throw Failure("only one file can be standard input");
  }
  Upids upids;
  for (const std::string& list : options.upids) readUpids("--upid", list, upids);
  OrvaneAppInfoArray catalogue = readCatalogue(options.file, options.all);
  const bool isDerived = !options.known.empty() || !options.unknown.empty() ||
                         !options.with.empty() || !options.add.empty();
  if (isDerived) {
    writeOutput(textOf(options, catalogue, upids), options.output,
                {options.file, options.with, options.add});
  } else {
    writeEntries(options, select(std::move(catalogue), upids));
  }
  return kSuccess;
}

}  // namespace

void describeCatalogue(const Command& command) {
  const auto options = std::make_shared<CatalogueOptions>();
  addSectionText(command, "FILE", options->file);
  const Option upid =
      command.texts("--upid", "UPIDS", options->upids, "Only these UPIDs; may be given again");
  const Option expand = command.flag("--expand", options->expand, "List every port of a range");
  const Command form = command.oneOf();
  form.flag("--json", options->json, "All facts as JSON");
  form.flag("--section", options->section, "The text in canonical form").excludes(expand);
  form.text("--with", "APPS", options->with, "Entries merged with those of a mapping text")
      .excludes(expand);
  form.text("--add", "APPS", options->add, "The catalogue with applications added")
      .excludes(expand);
  form.text("--known", "UPIDS", options->known, "Those of the UPIDs that have an entry")
      .excludes(expand)
      .excludes(upid);
  form.text("--unknown", "UPIDS", options->unknown, "Those of the UPIDs that have none")
      .excludes(expand)
      .excludes(upid);
  addAll(command, options->all);
  addColor(command, options->color);
  addOutput(command, options->output);
  command.close(
      "Of --json, --section, --with, --add, --known and --unknown one may be given. COUNT is the "
      "number of ports in an entry's list; one in two of its elements counts twice.\n"
      "Example: orvane catalogue --with wanted.txt --upid 7000,7001 known.txt");
  command.runs([options] { return showCatalogue(*options); });
}

}  // namespace orvane::cli
