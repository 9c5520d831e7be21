#include <algorithm>
#include <memory>
#include <string>

#include "cli/command.h"
#include "cli/in_use.h"
#include "cli/output.h"
#include "orvane/port_counter.h"

namespace orvane::cli {
namespace {

struct Options {
  InUseOptions inUse;
  std::string output;
};

// Sockets have one port each, so the ranges of a use become their ports.
std::string singlePorts(const OrvanePortMapping& mapping) {
  std::set<unsigned short> ports = mapping.getPorts();
  for (const OrvanePortRange& range : mapping.getRanges()) {
    const unsigned int last = std::min(range.getEnd(), 65535U);
    for (unsigned int port = range.getStart(); port <= last; ++port) {
      ports.insert(static_cast<unsigned short>(port));
    }
  }
  return OrvanePortMapping::PortArrayToString(ports);
}

ExitStatus showUsed(const Options& options) {
  if (!options.inUse.any()) {
    throw Failure("give --ports, --socket or --live to tell what is in use");
  }
  OrvanePortCounter counter;
  for (const Use& use : readInUse("orvane used", options.inUse)) {
    if (use.ports.getIpAddress() == 0) {
      counter.add(use.ports.getPortsAsString().c_str());
    } else {
      counter.addSocket(use.ports.getIpAddress(), singlePorts(use.ports).c_str());
    }
  }
  writeOutput(counter.toString() + "\n", options.output, {});
  return kSuccess;
}

}  // namespace

Command makeUsed(CLI::App& orvane) {
  const auto options = std::make_shared<Options>();
  CLI::App* const parser = orvane.add_subcommand("used", "Write what is in use as one line");
  addInUseOptions(*parser, options->inUse);
  addOutputOption(*parser, options->output);
  parser->footer(
      "The line holds the sockets, each followed by a blank, then the ports and the ranges in use\n"
      "on every address.\n"
      "Example: orvane used --live --ports 8000-8100");
  return {parser, [options] { return showUsed(*options); }};
}

}  // namespace orvane::cli
