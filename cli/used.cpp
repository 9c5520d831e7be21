#include <algorithm>
#include <cstdint>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "cli/command.h"
#include "cli/files/failure.h"
#include "cli/files/output.h"
#include "cli/in_use.h"
#include "cli/shared_options.h"
#include "orvane/port_counter.h"

namespace orvane::cli {
namespace {

struct UsedOptions {
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

// The ranges as a port list, joined where they overlap or touch.
std::string joined(std::vector<OrvanePortRange> ranges) {
  std::ranges::sort(ranges, {}, &OrvanePortRange::getStart);
  std::vector<OrvanePortRange> joined;
  for (const OrvanePortRange& next : ranges) {
    if (!joined.empty() && next.getStart() <= std::uint64_t{joined.back().getEnd()} + 1) {
      joined.back().setEnd(std::max(joined.back().getEnd(), next.getEnd()));
    } else {
      joined.push_back(next);
    }
  }
  std::string text;
  for (const OrvanePortRange& range : joined) {
    text += std::to_string(range.getStart());
    if (range.getEnd() != range.getStart()) text += "-" + std::to_string(range.getEnd());
    text.push_back(',');
  }
  return text;
}

ExitStatus showUsed(const UsedOptions& options) {
  if (!options.inUse.any()) {
    throw Failure("give --ports, --socket or --live to tell what is in use");
  }
  OrvanePortCounter counter;
  std::vector<OrvanePortRange>
      ranges;  // joined first: the counter drops a second one with the same end
  for (const Use& use : readInUse("orvane used", options.inUse)) {
    if (use.ports.getIpAddress() != 0) {
      counter.addSocket(use.ports.getIpAddress(), singlePorts(use.ports).c_str());
      continue;
    }
    counter.add(OrvanePortMapping::PortArrayToString(use.ports.getPorts()).c_str());
    for (const OrvanePortRange& range : use.ports.getRanges()) {
      if (range.getStart() <= range.getEnd()) ranges.push_back(range);
    }
  }
  counter.add(joined(std::move(ranges)));
  writeOutput(counter.toString() + "\n", options.output, filesOf(options.inUse));
  return kSuccess;
}

}  // namespace

void describeUsed(const Command& command) {
  const auto options = std::make_shared<UsedOptions>();
  addInUse(command, options->inUse);
  addOutput(command, options->output);
  command.close(
      "The line holds the sockets, each followed by a blank, then the ports and the ranges in use "
      "on every address; ranges that overlap or touch are joined.\n"
      "Example: orvane used --live --ports 8000-8100");
  command.runs([options] { return showUsed(*options); });
}

}  // namespace orvane::cli
