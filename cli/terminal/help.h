// What --help shows, and the word that a mistyped one was meant to be.

#ifndef ORVANE_CLI_TERMINAL_HELP_H_
#define ORVANE_CLI_TERMINAL_HELP_H_

#include <CLI/CLI.hpp>
#include <string>

namespace orvane::cli {

// Writes help in lines of at most 80 columns. Footers are broken where they hold "\n" and where a
// line is full.
class HelpFormatter : public CLI::FormatterBase {
 public:
  std::string make_help(const CLI::App* command, std::string name,
                        CLI::AppFormatMode mode) const override;
};

// The option or subcommand of `command` that is nearest to a word it does not know; "" when none
// is near.
std::string nearestWord(const CLI::App& command, const std::string& word);

}  // namespace orvane::cli

#endif  // ORVANE_CLI_TERMINAL_HELP_H_
