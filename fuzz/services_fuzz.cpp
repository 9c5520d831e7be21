// The services(5) file: what is read of it, written as such a file, is read the same again.

#include "cli/files/input.h"
#include "cli/files/output.h"
#include "cli/services.h"
#include "fuzz.h"

// Messages about lines that are skipped go nowhere.
void orvane::cli::writeError(const std::string& /*message*/) {}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto services = orvane::cli::parseServices({"services", fuzz::textOf(data, size)});
  std::string written;
  for (const auto& service : services) {
    fuzz::require(!service.name.empty() && !service.ports.empty() && !service.ports.contains(0));
    for (const unsigned short port : service.ports) {
      written += service.name + "\t" + std::to_string(port) + "/tcp\n";
    }
  }
  const auto again = orvane::cli::parseServices({"services", written});
  fuzz::require(again.size() == services.size());
  for (std::size_t i = 0; i < services.size(); ++i) {
    fuzz::require(again[i].name == services[i].name && again[i].ports == services[i].ports);
  }
  return 0;
}
