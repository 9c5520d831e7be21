#include <algorithm>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "cli/command.h"
#include "cli/comparison.h"
#include "cli/files/failure.h"
#include "cli/files/output.h"
#include "cli/files/section_file.h"
#include "cli/shared_options.h"
#include "cli/terminal/json_writer.h"
#include "cli/terminal/terminal.h"
#include "cli/terminal/text.h"

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
    if (application.getAction() == kOrvaneActionNone) {
      application.setAction(static_cast<tagActionType>(options.assumedAction));
    }
  }
  order(applications);
  return applications;
}

const char* changeOf(const Difference& difference) {
  if (difference.older == nullptr) return "added";
  return difference.newer == nullptr ? "removed" : "changed";
}

std::string textOf(const Fact& fact, const Json& value) {
  if (value.is_number()) return value.dump();
  const auto& text = value.get_ref<const std::string&>();
  if (fact.isQuoted) return quote(text);
  return text.empty() ? "no ports" : text;
}

std::string lineOf(const Fact& fact) {
  std::string line = "  ";
  if (fact.item != nullptr) {
    line += fact.item->getIpAddress() == 0 ? "no address" : fact.item->getIpAsString();
    line += ": ";
  }
  line += fact.name;
  if (fact.before.is_null()) return line + " added: " + textOf(fact, fact.after) + "\n";
  if (fact.after.is_null()) return line + " removed: " + textOf(fact, fact.before) + "\n";
  return line + " " + textOf(fact, fact.before) + " -> " + textOf(fact, fact.after) + "\n";
}

const char* colourOf(const Difference& difference) {
  if (difference.older == nullptr) return kGreen;
  return difference.newer == nullptr ? kRed : kBold;
}

void appendSummary(const Difference& difference, const Screen& screen, std::string& to) {
  const OrvaneApplication& application = difference.either();
  to += paint(std::string(changeOf(difference)) + " " + upidText(application) + " " +
                  quote(application.getName()),
              colourOf(difference), screen) +
        "\n";
  for (const Fact& fact : difference.facts) to += lineOf(fact);
}

void writeFactValue(const Json& value, JsonWriter& json) {
  if (value.is_null()) {
    json.value(std::nullopt);
  } else if (value.is_number()) {
    json.value(value.get<std::int64_t>());
  } else {
    json.value(value.get_ref<const std::string&>());
  }
}

void writeFact(const Fact& fact, JsonWriter& json) {
  json.object([&] {
    if (fact.item != nullptr) json.member("address", addressOf(*fact.item));
    json.member("fact", fact.name);
    json.key("before");
    writeFactValue(fact.before, json);
    json.key("after");
    writeFactValue(fact.after, json);
  });
}

void writeJson(const std::vector<Difference>& differences, Output& output) {
  JsonWriter json(output);
  json.array([&] {
    for (const Difference& difference : differences) {
      json.object([&] {
        json.member("change", changeOf(difference));
        json.member("upid", upidOf(difference.either()));
        json.member("name", difference.either().getName());
        json.arrayMember("facts", [&] {
          for (const Fact& fact : difference.facts) writeFact(fact, json);
        });
      });
    }
  });
}

// Tells how much of the difference the change sections do not tell.
void noteOmissions(const std::vector<Difference>& differences) {
  const auto note = [&](const char* omission, auto isOmitted) {
    const auto count = std::ranges::count_if(differences, isOmitted);
    if (count == 0) return;
    writeError("orvane diff: note: " + std::to_string(count) +
               (count == 1 ? " application " : " applications ") + omission + "\n");
  };
  note(
      "left out because of the action code; --assume-action 1 gives action 1 to those that carry 0",
      [](const Difference& difference) {
        return difference.inSections() && !difference.writesOlder() && !difference.writesNewer();
      });
  note("written without the old state, which carries action 0; --assume-action 1 gives it action 1",
       [](const Difference& difference) {
         return difference.inSections() && difference.older != nullptr &&
                !difference.writesOlder() && difference.writesNewer();
       });
  note("changed in nothing that change sections tell; --summary lists them",
       [](const Difference& difference) { return !difference.inSections(); });
}

ExitStatus compareTexts(const DiffOptions& options) {
  if (options.older == "-" && options.newer == "-") {
    throw Failure("only one of OLD and NEW can be standard input");
  }
  const OrvaneAppMapping older = readSide(options.older, options);
  const OrvaneAppMapping newer = readSide(options.newer, options);
  const std::vector<Difference> differences = compare(older, newer);
  if (!options.summary) noteOmissions(differences);
  requireNothingReported(options.strict);
  Output output(options.output, {options.older, options.newer});
  if (options.json) {
    writeJson(differences, output);
  } else if (options.summary) {
    const Screen screen = screenFor(options.color, options.output);
    for (const Difference& difference : differences) {
      appendSummary(difference, screen, output.next());
    }
  } else {
    output.write(changeSections(differences));
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
