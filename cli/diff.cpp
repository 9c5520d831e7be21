#include <algorithm>
#include <string>
#include <vector>

#include "cli/comparison.h"
#include "cli/files/failure.h"
#include "cli/files/output.h"
#include "cli/section_file.h"
#include "cli/subcommands.h"
#include "cli/terminal/json.h"
#include "cli/terminal/terminal.h"
#include "cli/terminal/text.h"

namespace orvane::cli {
namespace {

OrvaneAppMapping readSide(const std::string& path, int assumedAction) {
  OrvaneAppMapping applications = readApplications(path);
  for (OrvaneApplication& application : applications) {
    if (application.getAction() == kOrvaneActionNone) {
      application.setAction(static_cast<tagActionType>(assumedAction));
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

std::string summaryOf(const std::vector<Difference>& differences, const Screen& screen) {
  std::string text;
  for (const Difference& difference : differences) {
    const OrvaneApplication& application = difference.either();
    text += paint(std::string(changeOf(difference)) + " " + upidText(application) + " " +
                      quote(application.getName()),
                  colourOf(difference), screen) +
            "\n";
    for (const Fact& fact : difference.facts) text += lineOf(fact);
  }
  return text;
}

std::string jsonOf(const std::vector<Difference>& differences) {
  auto array = Json::array();
  for (const Difference& difference : differences) {
    auto facts = Json::array();
    for (const Fact& fact : difference.facts) {
      Json object;
      if (fact.item != nullptr) object["address"] = addressOf(*fact.item);
      object["fact"] = fact.name;
      object["before"] = fact.before;
      object["after"] = fact.after;
      facts.push_back(object);
    }
    array.push_back({{"change", changeOf(difference)},
                     {"upid", upidOf(difference.either())},
                     {"name", difference.either().getName()},
                     {"facts", facts}});
  }
  return toText(array);
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

}  // namespace

ExitStatus compareTexts(const DiffOptions& options) {
  if (options.older == "-" && options.newer == "-") {
    throw Failure("only one of OLD and NEW can be standard input");
  }
  const OrvaneAppMapping older = readSide(options.older, options.assumedAction);
  const OrvaneAppMapping newer = readSide(options.newer, options.assumedAction);
  const std::vector<Difference> differences = compare(older, newer);
  if (!options.summary) noteOmissions(differences);
  writeOutput(options.json      ? jsonOf(differences)
              : options.summary ? summaryOf(differences, screenFor(options.color, options.output))
                                : changeSections(differences),
              options.output, {options.older, options.newer});
  return differences.empty() ? kSuccess : kFound;
}

}  // namespace orvane::cli
