#include <memory>
#include <string>

#include "cli/command.h"
#include "cli/files/input.h"
#include "cli/files/output.h"
#include "cli/findings.h"
#include "cli/shared_options.h"
#include "cli/terminal/json_writer.h"

namespace orvane::cli {
namespace {

struct LintOptions {
  std::string file;
  std::string output;
  bool json = false;
};

void writeJson(const Input& input, const Findings& findings, Output& output) {
  JsonWriter json(output);
  json.array([&] {
    for (const Finding& finding : findings) {
      json.object([&] {
        json.member("file", input.name);
        json.member("line", finding.line);
        json.member("severity", finding.isNote ? "note" : "error");
        json.member("kind", finding.kind);
        json.member("message", finding.message);
      });
    }
  });
}

ExitStatus lintText(const LintOptions& options) {
  const Input input = readInput(options.file);
  const Findings findings =
      isCatalogue(input.text) ? catalogueFindingsOf(input.text) : findingsOf(input.text);
  Output output(options.output, {options.file});
  if (options.json) {
    writeJson(input, findings, output);
  } else {
    for (const Finding& finding : findings) {
      output.next() += lineLabel(input, finding.line) + (finding.isNote ? "note: " : "") +
                       finding.message + "\n";
    }
  }
  output.finish();
  return findings.empty() ? kSuccess : kFound;
}

}  // namespace

void describeLint(const Command& command) {
  const auto options = std::make_shared<LintOptions>();
  addSectionText(command, "FILE", options->file);
  command.flag("--json", options->json, "Write an array of findings");
  addOutput(command, options->output);
  command.close(
      "A catalogue text is told from a mapping text by its keys.\n"
      "Each finding is FILE:LINE: reason; a note, FILE:LINE: note: reason, tells of text that "
      "loses nothing but means something else than it seems to.\n"
      "Exit status: 0 nothing found, 1 anything found, notes included, 2 unusable.\n"
      "Example: orvane lint wanted.txt");
  command.runs([options] { return lintText(*options); });
}

}  // namespace orvane::cli
