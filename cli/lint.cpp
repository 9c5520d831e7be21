#include <string>

#include "cli/files/input.h"
#include "cli/files/output.h"
#include "cli/findings.h"
#include "cli/section_file.h"
#include "cli/subcommands.h"
#include "cli/terminal/json.h"

namespace orvane::cli {
namespace {

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

}  // namespace

ExitStatus lintText(const LintOptions& options) {
  const Input input = readInput(options.file);
  const Findings findings =
      isCatalogue(input.text) ? catalogueFindingsOf(input.text) : findingsOf(input.text);
  writeOutput(options.json ? jsonOf(input, findings) : linesOf(input, findings), options.output,
              {options.file});
  return findings.empty() ? kSuccess : kFound;
}

}  // namespace orvane::cli
