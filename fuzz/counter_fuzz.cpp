// The collision checks and collisions against plain walks over everything.

#include <orvane/orvane.h>

#include <algorithm>
#include <iterator>
#include <set>
#include <vector>

#include "fuzz.h"
#include "plain_collisions.h"
#include "tests/plain_counter.h"

namespace {

using plain::kAddress;

// Ranges, some of them with their bounds exchanged, which a text does for few.
std::set<OrvanePortRange> exchanged(const std::set<OrvanePortRange>& ranges) {
  std::set<OrvanePortRange> result;
  for (const OrvanePortRange& range : ranges) {
    const bool isKept = range.getStart() % 16 != 7;
    result.insert(isKept ? range : OrvanePortRange(range.getEnd(), range.getStart()));
  }
  return result;
}

// A registry with sockets that stand for ranges as well, or have both a port number and a range,
// which only a derived class can have.
plain::Walk registered(const std::vector<std::string>& texts) {
  plain::Walk counter;
  counter.add(texts[0].c_str());
  counter.remove(texts[1].c_str());
  counter.ranges = exchanged(counter.ranges);
  counter.addSocket(kAddress, texts[2].c_str());
  counter.addSocket(kAddress + 1, texts[3].c_str());
  OrvanePortMapping carried;
  carried.setPorts(texts[4]);
  for (const OrvanePortRange& range : exchanged(carried.getRanges())) {
    OrvaneSock socket;
    socket.address = kAddress - range.getStart() % 2;
    socket.port = range;
    if (range.getStart() % 4 == 3) socket.port.setPort(range.getEnd());
    counter.sockets.insert(socket);
  }
  return counter;
}

// An application for each text: all of it on one address, its odd ports on every one.
OrvaneAppMapping applicationsOf(const std::vector<std::string>& texts) {
  OrvaneAppMapping applications;
  for (const std::string& text : texts) {
    OrvanePortMapping all;
    all.setPorts(text);
    OrvanePortMapping everywhere;
    std::ranges::copy_if(all.getPorts(),
                         std::inserter(everywhere.getPorts(), everywhere.getPorts().end()),
                         [](unsigned short port) { return port % 2 != 0; });
    all.setIp(kAddress + applications.size() % 2);
    OrvaneApplication application;
    application.addItem(all);
    application.addItem(everywhere);
    applications.push_back(application);
  }
  return applications;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::vector<std::string> texts = fuzz::textsOf(data, size, 6);
  const plain::Walk counter = registered(texts);
  OrvanePortMapping wanted;
  wanted.setPorts(texts[5]);
  wanted.setRanges(exchanged(wanted.getRanges()));
  fuzz::require(counter.checkPorts(wanted.getPorts()) == counter.firstPort(wanted.getPorts()));
  const auto meets = [&](const OrvanePortRange& range) { return counter.range(range); };
  fuzz::require(counter.checkRanges(wanted.getRanges()) ==
                std::ranges::any_of(wanted.getRanges(), meets));
  fuzz::require(counter.checkRanges(wanted.getRanges()) == counter.collides(wanted.getRanges()));
  fuzz::require(counter.checkSocket(kAddress, wanted, true) == counter.mapping(wanted));
  fuzz::require(counter.collides(kAddress, wanted) == counter.mapping(wanted));
  for (const unsigned short port : wanted.getPorts()) {
    fuzz::require(counter.overlap(port) == counter.port(port));
    fuzz::require(counter.checkSocket(kAddress, port) == counter.socket(port));
    fuzz::require(counter.sockOverlap(kAddress, port) == counter.onAddress(port));
  }
  for (const OrvanePortRange& range : wanted.getRanges()) {
    fuzz::require(counter.checkRange(range) == counter.range(range));
    fuzz::require(counter.collides(range) == counter.range(range));
    fuzz::require(counter.collides(kAddress, range) == counter.onAddress(range));
    fuzz::require(counter.checkSocket(kAddress, range) == counter.socket(range));
    fuzz::require(counter.sockOverlap(kAddress, range) == counter.onAddress(range));
  }
  counter.toString();
  const OrvaneAppMapping applications = applicationsOf(texts);
  fuzz::require(plain::areFound(applications) && plain::areFound(applications, counter) &&
                plain::areFound(applications, applications));
  return 0;
}
