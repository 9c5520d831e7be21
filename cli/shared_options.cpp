#include "cli/shared_options.h"

#include "cli/files/failure.h"
#include "cli/files/output.h"

namespace orvane::cli {

void addSectionText(const Command& command, const std::string& name, std::string& path) {
  command.argument(name, path, "Section text, or -").isRequired();
}

void addOutput(const Command& command, std::string& path) {
  command.text("--output", "FILE", path, "Write to FILE, replaced as a whole");
}

void addColor(const Command& command, std::string& color) {
  command.choice("--color", "WHEN", color, {"auto", "always", "never"},
                 "auto (on a terminal, if not given), always or never");
}

void addAll(const Command& command, bool& all) {
  command.flag("--all", all, "Report all that is not read, not 100 of a kind");
}

void addStrict(const Command& command, bool& strict) {
  command.flag("--strict", strict, "Write nothing, status 2, if anything is reported");
}

void requireNothingReported(bool strict) {
  if (strict && hasReported()) {
    throw Failure("nothing is written: --strict allows nothing to be reported");
  }
}

}  // namespace orvane::cli
