#include <memory>
#include <string>
#include <vector>

#include "cli/command.h"
#include "cli/files/failure.h"
#include "cli/files/input.h"
#include "cli/files/output.h"
#include "cli/files/section_file.h"
#include "cli/shared_options.h"
#include "cli/terminal/text.h"
#include "exchange/services.h"

namespace orvane::cli {
namespace {

struct ImportOptions {
  std::string file = "/etc/services";
  std::string output;
  std::string firstUpid = "1000";
  std::string form = "apps";
  bool all = false;
};

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

ExitStatus importServices(const ImportOptions& options) {
  const Input input = readInput(options.file);
  OrvaneFindings findings = findingsToReport(options.all);
  const std::vector<exchange::Service> services = exchange::readServices(input.text, findings);
  if (services.empty()) {
    reportFindings(input.name, findings);
    throw Failure(input.name + ": there is no service in it");
  }
  const unsigned int firstUpid = firstOf(options.firstUpid, services.size());
  std::string text;
  if (options.form == "catalogue") {
    exchange::catalogueOf(services, firstUpid, findings).appendSection(text, true);
  } else {
    exchange::applicationsOf(services, firstUpid, findings).appendSection(text, true);
  }
  reportFindings(input.name, findings);
  writeOutput(text, options.output, {options.file});
  return kSuccess;
}

}  // namespace

void describeImport(const Command& command) {
  command.close("Example: orvane import services --output known.txt");
  const auto options = std::make_shared<ImportOptions>();
  const Command services =
      command.subcommand("services", "One application per service of a services(5) file");
  services.argument("FILE", options->file, "services(5) file, or -; /etc/services if not given");
  services.text("--first-upid", "UPID", options->firstUpid,
                "UPID of the first, counted up; 1000 if not given");
  services.choice("--as", "FORM", options->form, {"apps", "catalogue"},
                  "apps (if not given) or catalogue");
  addAll(services, options->all);
  addOutput(services, options->output);
  services.close(
      "Each application has action 1 and one item without address, with the ports of all "
      "protocols; each catalogue entry has those ports and the full name. Lines that are no "
      "service, and names that are cut, are reported on standard error.\n"
      "Example: orvane import services --first-upid 5000 /etc/services > known.txt");
  services.runs([options] { return importServices(*options); });
}

}  // namespace orvane::cli
