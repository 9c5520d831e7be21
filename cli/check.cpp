#include <string>
#include <vector>

#include "cli/collisions.h"
#include "cli/files/failure.h"
#include "cli/files/output.h"
#include "cli/in_use.h"
#include "cli/section_file.h"
#include "cli/subcommands.h"
#include "cli/terminal/json.h"
#include "cli/terminal/text.h"

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

// The items of the applications as uses, in order.
std::vector<Use> usesOf(const OrvaneAppMapping& applications, const std::string& where) {
  std::vector<Use> uses;
  for (const OrvaneApplication& application : applications) {
    for (const OrvanePortMapping& item : application.getItems()) {
      uses.push_back({item, "application " + nameOf(application) + where});
    }
  }
  return uses;
}

// Appends the collisions of the applications with the uses. When the uses are their own, each pair
// counts once: for an application, the uses of those that come after it.
void addRows(const OrvaneAppMapping& applications, const std::vector<Use>& uses, bool areOwn,
             std::vector<Row>& rows) {
  const UseIndex index(uses);
  std::size_t firstUse = 0;
  for (const OrvaneApplication& application : applications) {
    if (areOwn) firstUse += application.getItems().size();
    for (const OrvanePortMapping& item : application.getItems()) {
      for (Collision& collision : index.collisionsOf(item)) {
        if (collision.use < firstUse) continue;
        rows.push_back(
            {&application, &item, &uses[collision.use], portListOf(std::move(collision.ports))});
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
  std::vector<Use> uses = readInUse("orvane check", options.inUse);
  if (!options.against.empty()) {
    const std::string where = " of " + escape(options.against);
    for (Use& use : usesOf(readApplications(options.against), where)) {
      uses.push_back(std::move(use));
    }
  }
  const std::vector<Use> own = options.each ? usesOf(applications, "") : std::vector<Use>();
  std::vector<Row> rows;
  addRows(applications, uses, false, rows);
  addRows(applications, own, true, rows);

  std::vector<std::string> inputs = filesOf(options.inUse);
  inputs.insert(inputs.end(), {options.file, options.against});
  writeOutput(options.json ? jsonOf(rows) : linesOf(rows), options.output, inputs);
  return rows.empty() ? kSuccess : kFound;
}

}  // namespace orvane::cli
