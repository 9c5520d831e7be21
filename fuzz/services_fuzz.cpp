// The services(5) file: what is read of it, written as such a file, is read the same again, and
// becomes as many applications and catalogue entries.

#include "exchange/services.h"
#include "fuzz.h"

namespace exchange = orvane::exchange;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text = fuzz::textOf(data, size);
  OrvaneFindings findings;
  const auto services = exchange::readServices(text, findings);
  std::string written;
  for (const auto& service : services) {
    fuzz::require(!service.name.empty() && !service.ports.empty() && !service.ports.contains(0));
    for (const unsigned short port : service.ports) {
      written += service.name + "\t" + std::to_string(port) + "/tcp\n";
    }
  }
  OrvaneFindings none;
  const auto again = exchange::readServices(written, none);
  fuzz::require(again.size() == services.size() && none.empty());
  for (std::size_t i = 0; i < services.size(); ++i) {
    fuzz::require(again[i].name == services[i].name && again[i].ports == services[i].ports);
  }
  const auto applications = exchange::applicationsOf(services, 1, findings);
  const auto catalogue = exchange::catalogueOf(services, 1, findings);
  fuzz::require(applications.size() == services.size() && catalogue.size() == services.size());
  for (std::size_t i = 0; i < services.size(); ++i) {
    fuzz::require(applications[i].getItems()[0].getPorts() == services[i].ports);
  }
  return 0;
}
