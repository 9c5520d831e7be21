#include <memory>
#include <string>

#include "cli/command.h"
#include "cli/files/input.h"
#include "cli/files/output.h"
#include "cli/files/section_file.h"
#include "cli/shared_options.h"
#include "cli/terminal/json_writer.h"
#include "cli/terminal/text.h"

namespace orvane::cli {
namespace {

struct LintOptions {
  std::string file;
  std::string output;
  bool json = false;
  bool all = false;
};

bool isNote(const OrvaneFinding& finding) { return finding.severity == kOrvaneFindingNote; }

void writeJson(const Input& input, const OrvaneFindings& findings, Output& output) {
  JsonWriter json(output);
  json.array([&] {
    for (const OrvaneFinding& finding : findings) {
      json.object([&] {
        json.member("file", input.name);
        json.member("line", finding.line);
        json.member("severity", isNote(finding) ? "note" : "error");
        json.member("kind", finding.kind);
        json.member("message", escape(finding.message));
      });
    }
  });
}

ExitStatus lintText(const LintOptions& options) {
  const Input input = readInput(options.file);
  OrvaneFindings findings = findingsToReport(options.all || options.json);
  if (OrvaneAppInfoArray::isCatalogue(input.text)) {
    OrvaneAppInfoArray().setSectionReported(input.text, findings);
  } else {
    OrvaneAppMapping().setSectionReported(input.text, findings);
  }
  Output output(options.output, {options.file});
  if (options.json) {
    writeJson(input, findings, output);
  } else {
    for (const OrvaneFinding& finding : findings) {
      output.next() += lineLabel(input, finding.line) + (isNote(finding) ? "note: " : "") +
                       escape(finding.message) + "\n";
    }
    for (const OrvaneFindings::Count& count : findings.getCounts()) {
      if (count.found > count.kept) output.next() += input.name + ": " + restOf(count) + "\n";
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
  addAll(command, options->all);
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
