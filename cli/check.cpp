#include <memory>
#include <string>
#include <vector>

#include "cli/collisions.h"
#include "cli/command.h"
#include "cli/files/failure.h"
#include "cli/files/output.h"
#include "cli/files/section_file.h"
#include "cli/in_use.h"
#include "cli/shared_options.h"
#include "cli/terminal/json_writer.h"
#include "cli/terminal/text.h"

namespace orvane::cli {
namespace {

struct CheckOptions {
  std::string file;
  std::string against;
  std::string output;
  InUseOptions inUse;
  bool each = false;
  bool json = false;
  bool all = false;
  bool strict = false;
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

void appendLine(const Row& row, std::string& to) {
  to += nameOf(*row.application) + ", " + addressText(*row.item) + ": " + row.ports + ": " +
        row.use->user + " on " + addressText(row.use->ports) + "\n";
}

void writeJson(const std::vector<Row>& rows, Output& output) {
  JsonWriter json(output);
  json.array([&] {
    for (const Row& row : rows) {
      json.object([&] {
        json.member("upid", upidOf(*row.application));
        json.member("name", row.application->getName());
        json.member("address", addressOf(*row.item));
        json.member("ports", row.ports);
        json.member("with", row.use->user);
        json.member("withAddress", addressOf(row.use->ports));
      });
    }
  });
}

ExitStatus checkCollisions(const CheckOptions& options) {
  if (!options.each && options.against.empty() && !options.inUse.any()) {
    throw Failure("give --ports, --socket, --live, --against or --each to check against");
  }
  if (options.file == "-" && options.against == "-") {
    throw Failure("only one of FILE and --against can be standard input");
  }
  const OrvaneAppMapping applications = readApplications(options.file, options.all);
  std::vector<Use> uses = readInUse("orvane check", options.inUse);
  if (!options.against.empty()) {
    const std::string where = " of " + escape(options.against);
    for (Use& use : usesOf(readApplications(options.against, options.all), where)) {
      uses.push_back(std::move(use));
    }
  }
  const std::vector<Use> own = options.each ? usesOf(applications, "") : std::vector<Use>();
  std::vector<Row> rows;
  addRows(applications, uses, false, rows);
  addRows(applications, own, true, rows);

  std::vector<std::string> inputs = filesOf(options.inUse);
  inputs.insert(inputs.end(), {options.file, options.against});
  requireNothingReported(options.strict);
  Output output(options.output, inputs);
  if (options.json) {
    writeJson(rows, output);
  } else {
    for (const Row& row : rows) appendLine(row, output.next());
  }
  output.finish();
  return rows.empty() ? kSuccess : kFound;
}

}  // namespace

void describeCheck(const Command& command) {
  const auto options = std::make_shared<CheckOptions>();
  addSectionText(command, "FILE", options->file);
  addInUse(command, options->inUse);
  command.text("--against", "FILE", options->against, "Check against another mapping text, or -");
  command.flag("--each", options->each, "Check the applications of FILE against each other");
  command.flag("--json", options->json, "Write an array of collisions");
  addAll(command, options->all);
  addStrict(command, options->strict);
  addOutput(command, options->output);
  command.close(
      "An item without address is on every address. Applications count whatever their action "
      "code, also when it marks them deleted. Each line is an application, the address of its "
      "item, the ports that collide, and with what.\n"
      "Exit status: 0 no collision, 1 any collision, 2 unusable.\n"
      "Example: orvane check --live --socket 10.0.0.1:80,443 wanted.txt");
  command.runs([options] { return checkCollisions(*options); });
}

}  // namespace orvane::cli
