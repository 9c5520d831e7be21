// What a subcommand is: the options that it takes, and what it runs. A thin layer over CLI11, which
// takes far longer to compile than the rest, so that few files see that.

#ifndef ORVANE_CLI_COMMAND_H_
#define ORVANE_CLI_COMMAND_H_

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace CLI {
class App;
class Option;
}  // namespace CLI

namespace orvane::cli {

enum ExitStatus : int {
  kSuccess = 0,
  kFound = 1,     // a difference or a finding
  kUnusable = 2,  // input, output or usage that the command can do nothing with
};

// An option or argument of a command.
class Option {
 public:
  explicit Option(CLI::Option* option) : option_(option) {}

  Option isRequired() const;

  // Cannot be given beside the other, or only beside it.
  Option excludes(const Option& other) const;
  Option needs(const Option& other) const;

 private:
  CLI::Option* option_;
};

// A command that is being described. Values are set when the command line is read; until then they
// hold what is used when the option is not given.
class Command {
 public:
  using Runs = std::map<const CLI::App*, std::function<ExitStatus()>>;

  Command(CLI::App* parser, Runs* runs) : parser_(parser), runs_(runs) {}

  Option flag(const std::string& name, bool& value, const std::string& meaning) const;

  // A text that is not empty; several, where the option may be given again.
  Option text(const std::string& name, const std::string& type, std::string& value,
              const std::string& meaning) const;
  Option texts(const std::string& name, const std::string& type, std::vector<std::string>& values,
               const std::string& meaning) const;

  // One of these words, or a number in these bounds.
  Option choice(const std::string& name, const std::string& type, std::string& value,
                const std::vector<std::string>& words, const std::string& meaning) const;
  Option number(const std::string& name, const std::string& type, int& value, int least, int most,
                const std::string& meaning) const;

  // What is given without a name: a text that is not empty, or any number of texts.
  Option argument(const std::string& name, std::string& value, const std::string& meaning) const;
  Option arguments(const std::string& name, std::vector<std::string>& values,
                   const std::string& meaning) const;

  // Options of which one may be given.
  Command oneOf() const;

  Command subcommand(const std::string& name, const std::string& meaning) const;

  // For a subcommand: no option of the command that it belongs to may be given beside it.
  void standAlone() const;

  // What ends the help of the command.
  void close(const std::string& text) const;

  void runs(std::function<ExitStatus()> run) const;

 private:
  CLI::App* parser_;
  Runs* runs_;
};

// A row of the table in main.cpp.
struct Subcommand {
  const char* name;
  const char* meaning;
  void (*describe)(const Command& command);
};

void describeApps(const Command& command);
void describeDiff(const Command& command);
void describePorts(const Command& command);
void describeCheck(const Command& command);
void describeUsed(const Command& command);
void describeCatalogue(const Command& command);
void describeTree(const Command& command);
void describeImport(const Command& command);
void describeLint(const Command& command);

}  // namespace orvane::cli

#endif  // ORVANE_CLI_COMMAND_H_
