// The catalogue: read at once against section by section, written and read again, and what it tells
// of a list of UPIDs against its wording.

#include <orvane/orvane.h>

#include <algorithm>
#include <cstdint>
#include <sstream>
#include <vector>

#include "fuzz.h"
#include "tests/plain_catalogue.h"

namespace {

// Reads each closed section into an entry of its own and adds that.
void addSectionBySection(const std::string& text, OrvaneAppInfoArray& catalogue) {
  std::istringstream lines(text.c_str());
  std::string section;
  for (std::string line; std::getline(lines, line);) {
    if (line.empty()) continue;
    section += line + "\n";
    if (line.find('=') != std::string::npos) continue;
    OrvaneAppInfo entry;
    entry.setSection(section.c_str());
    catalogue.add(entry);
    section.clear();
  }
}

// The numbers of all ports and ranges, each written by itself.
std::string numbersOf(const OrvaneAppInfoArray& catalogue) {
  std::string numbers;
  for (const OrvaneAppInfo& entry : catalogue) {
    for (const OrvanePort& port : entry.getPortSet()) {
      const bool isRange = port.getPort() == 0;
      const std::uint64_t last = isRange ? std::min(port.getEnd(), 65535U) : port.getPort();
      for (std::uint64_t i = isRange ? port.getStart() : last; i <= last; ++i) {
        numbers += (numbers.empty() ? "" : ",") + std::to_string(i);
      }
    }
  }
  return numbers;
}

void checkViews(OrvaneAppInfoArray& catalogue, const OrvaneAppMapping& mapping,
                const std::vector<unsigned int>& upids) {
  const plain::UpidViews views = plain::viewsOf(catalogue, mapping, upids, true);
  std::vector<unsigned int> listed;
  catalogue.getCommonPortList(upids, listed);
  fuzz::require(listed == views.known);
  catalogue.getUnknownPortList(upids, listed);
  fuzz::require(listed == views.unknown);
  fuzz::require(catalogue.getSection(upids, true) == views.sections);
  fuzz::require(catalogue.getMergedAppMappingSection(mapping, upids, true) == views.merged);
  fuzz::require(catalogue.getAppMappingSection(mapping, upids, true) == views.whole);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::vector<std::string> texts = fuzz::textsOf(data, size, 3);
  OrvaneAppInfoArray catalogue;
  catalogue.setSection(texts[0].c_str());
  OrvaneAppInfoArray sectionBySection;
  addSectionBySection(texts[0], sectionBySection);
  const std::string written = catalogue.getSection(true);
  fuzz::require(written == sectionBySection.getSection(true));
  OrvaneAppInfoArray again;
  again.setSection(written.c_str());
  fuzz::require(again.getSection(true) == written);
  const std::string numbers = catalogue.getPorts();
  fuzz::require(numbers == numbersOf(catalogue));
  std::vector<unsigned short> ports;
  catalogue.getPortList(ports);
  fuzz::require(ports.empty() == numbers.empty());
  catalogue.getNumPortsUsed();

  OrvaneAppMapping mapping;
  mapping.setSection(texts[1].c_str());
  std::vector<unsigned int> upids;
  for (const char byte : texts[2]) upids.push_back(static_cast<unsigned char>(byte) - '0');
  checkViews(catalogue, mapping, upids);
  std::ranges::sort(upids);
  checkViews(catalogue, mapping, upids);
  return 0;
}
