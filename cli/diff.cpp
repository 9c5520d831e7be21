#include <algorithm>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <variant>

#include "cli/command.h"
#include "cli/files/failure.h"
#include "cli/files/output.h"
#include "cli/files/section_file.h"
#include "cli/shared_options.h"
#include "cli/terminal/json_writer.h"
#include "cli/terminal/terminal.h"
#include "cli/terminal/text.h"
#include "orvane/comparison.h"

namespace orvane::cli {
namespace {

struct DiffOptions {
  std::string older;
  std::string newer;
  std::string output;
  std::string color = "auto";
  int assumedAction = kOrvaneActionNone;
  bool summary = false;
  bool json = false;
  bool all = false;
  bool strict = false;
};

OrvaneAppMapping readSide(const std::string& path, const DiffOptions& options) {
  OrvaneAppMapping applications = readApplications(path, options.all);
  for (OrvaneApplication& application : applications) {
    if (application.getAction() == kOrvaneActionNone) application.setAction(options.assumedAction);
  }
  return applications;
}

const char* changeOf(const OrvaneDifference& difference) {
  if (difference.older == nullptr) return "added";
  return difference.newer == nullptr ? "removed" : "changed";
}

bool isMissing(const OrvaneFactValue& value) {
  return std::holds_alternative<std::monostate>(value);
}

std::string textOf(tagFact fact, const OrvaneFactValue& value) {
  if (const auto* const number = std::get_if<std::int64_t>(&value)) return std::to_string(*number);
  const auto& text = std::get<std::string>(value);
  if (fact == kOrvaneFactName) return quote(text);
  return text.empty() ? "no ports" : text;
}

void appendLine(const OrvaneFact& fact, std::string& to) {
  to += "  ";
  if (fact.item != nullptr) to += addressOf(*fact.item).value_or("no address") + ": ";
  to += fact.getName();
  if (isMissing(fact.before)) {
    to += " added: " + textOf(fact.fact, fact.after);
  } else if (isMissing(fact.after)) {
    to += " removed: " + textOf(fact.fact, fact.before);
  } else {
    to += " " + textOf(fact.fact, fact.before) + " -> " + textOf(fact.fact, fact.after);
  }
  to.push_back('\n');
}

const char* colourOf(const OrvaneDifference& difference) {
  if (difference.older == nullptr) return kGreen;
  return difference.newer == nullptr ? kRed : kBold;
}

void writeSummary(const OrvaneComparison& differences, const Screen& screen, Output& output) {
  for (const OrvaneDifference& difference : differences) {
    const OrvaneApplication& application = difference.getEither();
    output.next() += paint(std::string(changeOf(difference)) + " " + upidText(application) + " " +
                               quote(application.getName()),
                           colourOf(difference), screen) +
                     "\n";
    difference.forEachFact([&](const OrvaneFact& fact) { appendLine(fact, output.next()); });
  }
}

void writeValue(const char* key, const OrvaneFactValue& value, JsonWriter& json) {
  json.key(key);
  if (const auto* const number = std::get_if<std::int64_t>(&value)) {
    json.value(*number);
  } else if (const auto* const text = std::get_if<std::string>(&value)) {
    json.value(*text);
  } else {
    json.value(std::nullopt);
  }
}

void writeFact(const OrvaneFact& fact, JsonWriter& json) {
  json.object([&] {
    if (fact.item != nullptr) json.member("address", addressOf(*fact.item));
    json.member("fact", fact.getName());
    writeValue("before", fact.before, json);
    writeValue("after", fact.after, json);
  });
}

void writeJson(const OrvaneComparison& differences, Output& output) {
  JsonWriter json(output);
  json.array([&] {
    for (const OrvaneDifference& difference : differences) {
      json.object([&] {
        json.member("change", changeOf(difference));
        json.member("upid", upidOf(difference.getEither()));
        json.member("name", difference.getEither().getName());
        json.arrayMember("facts", [&] {
          difference.forEachFact([&](const OrvaneFact& fact) { writeFact(fact, json); });
        });
      });
    }
  });
}

// Tells how much of the difference the change sections do not tell.
void noteOmissions(const OrvaneComparison& differences) {
  const auto note = [&](const char* omission, auto isOmitted) {
    const auto count = std::ranges::count_if(differences, isOmitted);
    if (count == 0) return;
    writeError("orvane diff: note: " + std::to_string(count) +
               (count == 1 ? " application " : " applications ") + omission + "\n");
  };
  note(
      "left out because of the action code; --assume-action 1 gives action 1 to those that carry 0",
      [](const OrvaneDifference& difference) {
        return difference.inSections && !difference.writesOlder() && !difference.writesNewer();
      });
  note("written without the old state, which carries action 0; --assume-action 1 gives it action 1",
       [](const OrvaneDifference& difference) {
         return difference.inSections && difference.older != nullptr && !difference.writesOlder() &&
                difference.writesNewer();
       });
  note("changed in nothing that change sections tell; --summary lists them",
       [](const OrvaneDifference& difference) { return !difference.inSections; });
}

ExitStatus compareTexts(const DiffOptions& options) {
  if (options.older == "-" && options.newer == "-") {
    throw Failure("only one of OLD and NEW can be standard input");
  }
  const OrvaneAppMapping older = readSide(options.older, options);
  const OrvaneAppMapping newer = readSide(options.newer, options);
  const OrvaneComparison differences(older, newer);
  if (!options.summary) noteOmissions(differences);
  requireNothingReported(options.strict);
  Output output(options.output, {options.older, options.newer});
  if (options.json) {
    writeJson(differences, output);
  } else if (options.summary) {
    writeSummary(differences, screenFor(options.color, options.output), output);
  } else {
    std::string sections;
    differences.appendChangeSections(sections, true);
    output.write(sections);
  }
  output.finish();
  return differences.empty() ? kSuccess : kFound;
}

}  // namespace

void describeDiff(const Command& command) {
  const auto options = std::make_shared<DiffOptions>();
  addSectionText(command, "OLD", options->older);
  addSectionText(command, "NEW", options->newer);
  const Option summary =
      command.flag("--summary", options->summary, "List every difference for a reader instead");
  command.flag("--json", options->json, "With --summary: write it as JSON").needs(summary);
  command.number("--assume-action", "CODE", options->assumedAction, kOrvaneActionAdd,
                 kOrvaneActionInitial, "Action (1 to 5) for applications with action 0");
  addAll(command, options->all);
  addStrict(command, options->strict);
  addColor(command, options->color);
  addOutput(command, options->output);
  command.close(
      "Applications are matched by UPID, new ones by name; GroupID is no difference. "
      "Change sections leave out what OLD holds with action 0, and write what NEW holds with "
      "another action than 1 only beside its old state. Notes on standard error count what is "
      "left out.\n"
      "Exit status: 0 no difference, 1 any difference, 2 unusable.\n"
      "Example: orvane diff --assume-action 1 running.txt wanted.txt > change.txt");
  command.runs([options] { return compareTexts(*options); });
}

}  // namespace orvane::cli
