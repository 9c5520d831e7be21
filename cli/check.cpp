#include <memory>
#include <string>
#include <vector>

#include "cli/collisions.h"
#include "cli/command.h"
#include "cli/in_use.h"
#include "cli/json.h"
#include "cli/output.h"
#include "cli/section_file.h"
#include "cli/text.h"

namespace orvane::cli {
namespace {

struct Options {
  std::string file;
  std::string against;
  std::string output;
  InUseOptions inUse;
  bool each = false;
  bool json = false;
};

// One line of the result.
struct Row {
  const OrvaneApplication* application;
  const OrvanePortMapping* item;
  const Use* use;
  std::string ports;
};

std::string nameOf(const OrvaneApplication& application) {
  return upidText(application) + " " + quote(application.getName());
}

std::string addressText(const OrvanePortMapping& item) {
  return item.getIpAddress() == 0 ? "every address" : item.getIpAsString();
}

// The items of applications as uses; `first` of each application is where its own begin.
std::vector<Use> usesOf(const OrvaneAppMapping& applications, const std::string& where,
                        std::vector<std::size_t>& first) {
  std::vector<Use> uses;
  for (const OrvaneApplication& application : applications) {
    first.push_back(uses.size());
    for (const OrvanePortMapping& item : application.getItems()) {
      uses.push_back({item, "application " + nameOf(application) + where});
    }
  }
  first.push_back(uses.size());
  return uses;
}

// Collisions of the applications with the uses; `firstUse` tells, for each application, from which
// use on they count.
template <typename FirstUse>
void addRows(const OrvaneAppMapping& applications, const std::vector<Use>& uses, FirstUse firstUse,
             std::vector<Row>& rows) {
  const UseIndex index(uses);
  for (std::size_t i = 0; i < applications.size(); ++i) {
    for (const OrvanePortMapping& item : applications[i].getItems()) {
      for (Collision& collision : index.collisionsOf(item)) {
        if (collision.use < firstUse(i)) continue;
        rows.push_back({&applications[i], &item, &uses[collision.use],
                        portListOf(std::move(collision.ports))});
      }
    }
  }
}

std::string linesOf(const std::vector<Row>& rows) {
  std::string text;
  for (const Row& row : rows) {
    text += nameOf(*row.application) + ", " + addressText(*row.item) + ": " + row.ports + ": " +
            row.use->user + " on " + addressText(row.use->ports) + "\n";
  }
  return text;
}

std::string jsonOf(const std::vector<Row>& rows) {
  auto array = Json::array();
  for (const Row& row : rows) {
    array.push_back({{"upid", upidOf(*row.application)},
                     {"name", row.application->getName()},
                     {"address", addressOf(*row.item)},
                     {"ports", row.ports},
                     {"with", row.use->user},
                     {"withAddress", addressOf(row.use->ports)}});
  }
  return toText(array);
}

ExitStatus check(const Options& options) {
  if (!options.each && options.against.empty() && !options.inUse.any()) {
    throw Failure("give --ports, --socket, --live, --against or --each to check against");
  }
  if (options.file == "-" && options.against == "-") {
    throw Failure("only one of FILE and --against can be standard input");
  }
  const OrvaneAppMapping applications = readApplications(options.file);
  std::vector<std::size_t> first;
  std::vector<Use> uses = readInUse("orvane check", options.inUse);
  if (!options.against.empty()) {
    const std::string where = " of " + escape(options.against);
    for (Use& use : usesOf(readApplications(options.against), where, first)) {
      uses.push_back(std::move(use));
    }
  }
  std::vector<Row> rows;
  addRows(
      applications, uses, [](std::size_t) { return std::size_t{0}; }, rows);
  first.clear();
  const std::vector<Use> own = options.each ? usesOf(applications, "", first) : std::vector<Use>();
  // Each pair once: with the applications that come after.
  addRows(
      applications, own, [&](std::size_t i) { return first.at(i + 1); }, rows);

  writeOutput(options.json ? jsonOf(rows) : linesOf(rows), options.output,
              {options.file, options.against});
  return rows.empty() ? kSuccess : kFound;
}

}  // namespace

Command makeCheck(CLI::App& orvane) {
  const auto options = std::make_shared<Options>();
  CLI::App* const parser =
      orvane.add_subcommand("check", "Tell which applications collide with what is in use");
  addSectionText(*parser, "FILE", options->file);
  addInUseOptions(*parser, options->inUse);
  parser->add_option("--against", options->against, "The items of another mapping text, or -")
      ->type_name("FILE")
      ->check(kNotEmpty);
  parser->add_flag("--each", options->each,
                   "Applications of FILE that claim the same port on the same address");
  parser->add_flag("--json", options->json, "Write an array of collisions");
  addOutputOption(*parser, options->output);
  parser->footer(
      "An item without address is on every address. Each line is an application, the address of\n"
      "its item, the ports that collide, and with what.\n"
      "Exit status: 0 no collision, 1 any collision, 2 unusable.\n"
      "Example: orvane check --live --socket 10.0.0.1:80,443 wanted.txt");
  return {parser, [options] { return check(*options); }};
}

}  // namespace orvane::cli
