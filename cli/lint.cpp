#include <memory>
#include <string>

#include "cli/command.h"
#include "cli/findings.h"
#include "cli/input.h"
#include "cli/json.h"
#include "cli/output.h"
#include "cli/section_file.h"

namespace orvane::cli {
namespace {

struct Options {
  std::string file;
  std::string output;
  bool json = false;
};

std::string jsonOf(const Input& input, const Findings& findings) {
  auto array = Json::array();
  for (const Finding& finding : findings) {
    array.push_back({{"file", input.name},
                     {"line", finding.line},
                     {"severity", finding.isNote ? "note" : "error"},
                     {"kind", finding.kind},
                     {"message", finding.message}});
  }
  return toText(array);
}

std::string linesOf(const Input& input, const Findings& findings) {
  std::string text;
  for (const Finding& finding : findings) {
    text += lineLabel(input, finding.line) + (finding.isNote ? "note: " : "") + finding.message;
    text.push_back('\n');
  }
  return text;
}

ExitStatus lint(const Options& options) {
  const Input input = readInput(options.file);
  const Findings findings =
      isCatalogue(input.text) ? catalogueFindingsOf(input.text) : findingsOf(input.text);
  writeOutput(options.json ? jsonOf(input, findings) : linesOf(input, findings), options.output,
              {options.file});
  return findings.empty() ? kSuccess : kFound;
}

}  // namespace

Command makeLint(CLI::App& orvane) {
  const auto options = std::make_shared<Options>();
  CLI::App* const parser =
      orvane.add_subcommand("lint", "Report what is skipped, cut or misread when a text is read");
  addSectionText(*parser, "FILE", options->file);
  parser->add_flag("--json", options->json, "Write an array of findings");
  addOutputOption(*parser, options->output);
  parser->footer(
      "A catalogue text is told from a mapping text by its keys.\n"
      "Each finding is FILE:LINE: reason; a note, FILE:LINE: note: reason, tells of text that\n"
      "loses nothing but means something else than it seems to.\n"
      "Exit status: 0 nothing found, 1 anything found, notes included, 2 unusable.\n"
      "Example: orvane lint wanted.txt");
  return {parser, [options] { return lint(*options); }};
}

}  // namespace orvane::cli
