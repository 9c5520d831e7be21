#include <string>
#include <vector>

#include "cli/files/failure.h"
#include "cli/files/input.h"
#include "cli/files/output.h"
#include "cli/services.h"
#include "cli/subcommands.h"
#include "cli/terminal/text.h"
#include "orvane/app_info_array.h"
#include "orvane/app_mapping.h"

namespace orvane::cli {
namespace {

// The first of `count` UPIDs in a row; none of them may be the one that means "none".
unsigned int firstOf(const std::string& text, std::size_t count) {
  const auto first = parseDecimal<unsigned int>(text);
  if (!first || *first == 0 || *first == kOrvaneNoUpid) {
    throw Failure("--first-upid " + quote(text) + " is no number from 1 to 4294967294");
  }
  if (count > kOrvaneNoUpid - *first) {
    throw Failure("--first-upid " + text + " leaves no room for " + std::to_string(count) +
                  " UPIDs up to 4294967294");
  }
  return *first;
}

// Tells when the library has cut the name of a service.
void reportCut(const Service& service, const std::string& name, const Input& input) {
  if (name == service.name) return;
  writeError(lineLabel(input, service.line) + quote(service.name) + " is cut to " + quote(name) +
             "\n");
}

std::string applicationsOf(const std::vector<Service>& services, unsigned int upid,
                           const Input& input) {
  OrvaneAppMapping applications;
  applications.reserve(services.size());
  for (const Service& service : services) {
    OrvaneApplication& application = applications.emplace_back();
    application.setUpid(upid);
    application.setID(static_cast<int>(upid));  // not a fresh one: the same file, the same text
    application.setName(service.name.c_str());
    application.setAction(kOrvaneActionAdd);
    OrvanePortMapping item;
    item.setPorts(service.ports);
    application.addItem(item);
    ++upid;
    reportCut(service, application.getName(), input);
  }
  return applications.getSection(true);
}

std::string catalogueOf(const std::vector<Service>& services, unsigned int upid,
                        const Input& input) {
  OrvaneAppInfoArray catalogue;
  for (const Service& service : services) {
    OrvaneAppInfo entry;
    entry.setUPID(upid);
    entry.setFQN(service.name.c_str());
    entry.setPorts(OrvanePortMapping::PortArrayToString(service.ports).c_str());
    catalogue.add(entry);
    ++upid;
    reportCut(service, entry.getFQN(), input);
  }
  return catalogue.getSection(true);
}

}  // namespace

ExitStatus importServices(const ImportOptions& options) {
  const Input input = readInput(options.file);
  const std::vector<Service> services = parseServices(input);
  if (services.empty()) throw Failure(input.name + ": there is no service in it");
  const unsigned int firstUpid = firstOf(options.firstUpid, services.size());
  const auto textOf = options.form == "catalogue" ? catalogueOf : applicationsOf;
  writeOutput(textOf(services, firstUpid, input), options.output, {options.file});
  return kSuccess;
}

}  // namespace orvane::cli
