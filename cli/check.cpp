#include <algorithm>
#include <iterator>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "cli/command.h"
#include "cli/files/failure.h"
#include "cli/files/input.h"
#include "cli/files/output.h"
#include "cli/files/section_file.h"
#include "cli/in_use.h"
#include "cli/shared_options.h"
#include "cli/terminal/json_writer.h"
#include "cli/terminal/text.h"
#include "orvane/collisions.h"

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

std::string nameOf(const OrvaneApplication& application) {
  return upidText(application) + " " + quote(application.getName());
}

std::string addressText(unsigned int address) {
  if (address == 0) return "every address";
  OrvanePortMapping item;
  item.setIp(address);
  std::string text;
  item.appendIp(text);
  return text;
}

// What the applications of FILE are checked against: what is in use, each as an application of its
// own, and then the applications of another text.
struct Others {
  OrvaneAppMapping applications;
  std::vector<std::string> users;  // of those that are in use
  std::string where;               // the other text, in words
};

Others readOthers(const CheckOptions& options) {
  Others others;
  for (Use& use : readInUse("orvane check", options.inUse)) {
    others.applications.emplace_back().getItems().insert(use.ports);
    others.users.push_back(std::move(use.user));
  }
  if (options.against.empty()) return others;
  others.where = " of " + inputName(options.against);
  OrvaneAppMapping against = readApplications(options.against, options.all);
  std::ranges::move(against, std::back_inserter(others.applications));
  return others;
}

// With whom an application collides: one of the others or, without them, one of its own text.
std::string userOf(const OrvaneCollision& collision, const Others* others) {
  const OrvaneApplication& user = *collision.otherApplication;
  if (others == nullptr) return "application " + nameOf(user);
  const auto place = static_cast<std::size_t>(&user - others->applications.data());
  return place < others->users.size() ? others->users[place]
                                      : "application " + nameOf(user) + others->where;
}

void appendLine(const OrvaneCollision& collision, const std::string& user, std::string& to) {
  to += nameOf(*collision.application) + ", " + addressText(collision.item->getIpAddress()) + ": ";
  collision.appendPorts(to);
  to += ": " + user + " on " + addressText(collision.otherAddress) + "\n";
}

void writeElement(const OrvaneCollision& collision, const std::string& user, JsonWriter& json) {
  std::string ports;
  collision.appendPorts(ports);
  json.object([&] {
    json.member("upid", upidOf(*collision.application));
    json.member("name", collision.application->getName());
    json.member("address", addressOf(*collision.item));
    json.member("ports", ports);
    json.member("with", user);
    json.member("withAddress", addressOf(*collision.otherItem));
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
  const Others others = readOthers(options);
  const OrvaneCollisions found = others.applications.empty()
                                     ? OrvaneCollisions()
                                     : OrvaneCollisions(applications, others.applications);
  const OrvaneCollisions own = options.each ? OrvaneCollisions(applications) : OrvaneCollisions();
  const auto forEach = [&](auto show) {
    for (const OrvaneCollision& collision : found) show(collision, userOf(collision, &others));
    for (const OrvaneCollision& collision : own) show(collision, userOf(collision, nullptr));
  };

  std::vector<std::string> inputs = filesOf(options.inUse);
  inputs.insert(inputs.end(), {options.file, options.against});
  requireNothingReported(options.strict);
  Output output(options.output, inputs);
  if (options.json) {
    JsonWriter json(output);
    json.array([&] {
      forEach(
          [&](const auto& collision, const auto& user) { writeElement(collision, user, json); });
    });
  } else {
    forEach([&](const auto& collision, const auto& user) {
      appendLine(collision, user, output.next());
    });
  }
  output.finish();
  return found.empty() && own.empty() ? kSuccess : kFound;
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
