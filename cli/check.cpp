#include <string>
#include <vector>

#include "cli/collisions.h"
#include "cli/failure.h"
#include "cli/in_use.h"
#include "cli/json.h"
#include "cli/output.h"
#include "cli/section_file.h"
#include "cli/subcommands.h"
#include "cli/text.h"

namespace orvane::cli {
namespace {

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

}  // namespace

ExitStatus checkCollisions(const CheckOptions& options) {
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

}  // namespace orvane::cli
