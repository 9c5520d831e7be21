// Port lists and addresses: a list read at once against its items added one by one, and written
// text against the sorting of unsorted text.

#include <orvane/orvane.h>

#include <sstream>

#include "fuzz.h"

namespace {

void addOneByOne(const std::string& list, OrvanePortMapping& mapping) {
  std::istringstream items(list.c_str());
  for (std::string item; std::getline(items, item, ',');) {
    if (OrvanePortRange::isRange(item.c_str())) {
      mapping.addRange(OrvanePortRange(item.c_str()));
    } else {
      OrvanePort port(item.c_str());
      if (port.getPort() != 0) {
        mapping.getPorts().insert(static_cast<unsigned short>(port.getPort()));
      }
    }
  }
}

// The ports of a catalogue entry.
std::string elementsOneByOne(const std::string& list) {
  std::set<OrvanePort> elements;
  std::istringstream items(list.c_str());
  for (std::string item; std::getline(items, item, ',');) {
    if (!item.empty()) elements.insert(OrvanePort(item.c_str()));
  }
  std::string text;
  for (const OrvanePort& element : elements) {
    text += (text.empty() ? "" : ",") + std::string(element.getText());
  }
  return text;
}

std::string joined(const OrvanePortMapping& mapping) {
  std::string text = OrvanePortMapping::PortArrayToString(mapping.getPorts());
  for (const OrvanePortRange& range : mapping.getRanges()) {
    text += (text.empty() ? "" : ",") + std::string(range.getRange());
  }
  return text;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text = fuzz::textOf(data, size);
  OrvanePortMapping atOnce;
  atOnce.setPorts(text);
  atOnce.setIp(text.c_str());
  OrvanePortMapping oneByOne;
  addOneByOne(text, oneByOne);
  fuzz::require(atOnce.getPorts() == oneByOne.getPorts());
  fuzz::require(atOnce.getRanges() == oneByOne.getRanges());

  const std::string written = atOnce.getPortsAsString();
  fuzz::require(written == OrvanePortMapping::sortPorts(joined(atOnce).c_str()));
  OrvaneAppInfo entry;
  entry.setPorts(text.c_str());
  fuzz::require(entry.getPorts() == elementsOneByOne(text));
  OrvanePortMapping::parse(kOrvaneParsePorts, text.c_str());
  OrvanePortMapping::parse(kOrvaneParseRanges, text.c_str());
  fuzz::require(oneByOne.getDiffAsString(atOnce).empty());
  return 0;
}
