// The command line. Only this and help.cpp see CLI11, which takes far longer to compile than the
// rest.

#include <CLI/CLI.hpp>
#include <clocale>
#include <csignal>
#include <exception>
#include <functional>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "cli/files/failure.h"
#include "cli/files/output.h"
#include "cli/subcommands.h"
#include "cli/terminal/help.h"
#include "cli/terminal/text.h"

namespace orvane::cli {
namespace {

struct Command {
  CLI::App* parser;  // parsed() tells whether this is the command to run
  std::function<ExitStatus()> run;
};

// Refuses "", which a script passes for a variable that it forgot to set.
const CLI::Validator kNotEmpty(
    [](const std::string& text) { return text.empty() ? "the argument is empty" : ""; }, "");

// A check that help does not tell in its own way.
CLI::Validator quiet(CLI::Validator check) { return check.description(""); }

void addOutputOption(CLI::App& command, std::string& path) {
  command.add_option("--output", path, "Write to FILE, replaced as a whole")
      ->type_name("FILE")
      ->check(kNotEmpty);
}

void addColorOption(CLI::App& command, std::string& color) {
  command.add_option("--color", color, "auto (on a terminal, if not given), always or never")
      ->type_name("WHEN")
      ->check(quiet(CLI::IsMember({"auto", "always", "never"})));
}

void addSectionText(CLI::App& command, const std::string& name, std::string& path) {
  command.add_option(name, path, "Section text, or -")->type_name("")->required()->check(kNotEmpty);
}

void addInUseOptions(CLI::App& command, InUseOptions& options) {
  command.add_option("--ports", options.ports, "Ports in use on every address; may be given again")
      ->type_name("LIST")
      ->allow_extra_args(false)
      ->check(kNotEmpty);
  command
      .add_option("--socket", options.sockets, "Ports in use on one address; may be given again")
      ->type_name("ADDRESS:PORTS")
      ->allow_extra_args(false)
      ->check(kNotEmpty);
  CLI::Option* const live =
      command.add_flag("--live", options.live, "What listens or is bound on this host");
  command.add_option("--proc", options.proc, "With --live: another proc file system")
      ->type_name("DIR")
      ->needs(live)
      ->check(kNotEmpty);
}

Command makeApps(CLI::App& orvane) {
  const auto options = std::make_shared<AppsOptions>();
  CLI::App* const parser =
      orvane.add_subcommand("apps", "Show the applications of a mapping text as a table");
  addSectionText(*parser, "FILE", options->file);
  CLI::Option* const json = parser->add_flag("--json", options->json, "Write all facts as JSON");
  parser->add_flag("--section", options->section, "Write the mapping text in canonical form")
      ->excludes(json);
  addColorOption(*parser, options->color);
  addOutputOption(*parser, options->output);
  parser->footer(
      "What the text holds that is not read is reported on standard error.\n"
      "Example: orvane apps --section --output canonical.txt running.txt");
  return {parser, [options] { return showApplications(*options); }};
}

Command makeDiff(CLI::App& orvane) {
  const auto options = std::make_shared<DiffOptions>();
  CLI::App* const parser = orvane.add_subcommand(
      "diff", "Write the change sections that lead from an older mapping text to a newer one");
  addSectionText(*parser, "OLD", options->older);
  addSectionText(*parser, "NEW", options->newer);
  CLI::Option* const summary =
      parser->add_flag("--summary", options->summary, "List every difference for a reader instead");
  parser->add_flag("--json", options->json, "With --summary: write it as JSON")->needs(summary);
  parser
      ->add_option("--assume-action", options->assumedAction,
                   "Action (1 to 5) for applications with action 0")
      ->type_name("CODE")
      ->check(quiet(CLI::Range(1, 5)));
  addColorOption(*parser, options->color);
  addOutputOption(*parser, options->output);
  parser->footer(
      "Applications are matched by UPID, new ones by name; GroupID is no difference. "
      "Change sections leave out what OLD holds with action 0, and write what NEW holds with "
      "another action than 1 only beside its old state. Notes on standard error count what is "
      "left out.\n"
      "Exit status: 0 no difference, 1 any difference, 2 unusable.\n"
      "Example: orvane diff --assume-action 1 running.txt wanted.txt > change.txt");
  return {parser, [options] { return compareTexts(*options); }};
}

Command makePorts(CLI::App& orvane) {
  const auto options = std::make_shared<PortsOptions>();
  CLI::App* const parser =
      orvane.add_subcommand("ports", "Read port lists and write them sorted and merged");
  parser->add_option("TEXT", options->lists, "Port lists such as 80,443,1000-2000")
      ->type_name("")
      ->required();
  parser->add_flag("--diff", options->diff, "Write what the second list has and the first has not");
  addOutputOption(*parser, options->output);
  parser->footer(
      "With --diff a range counts as present when the first list has one with the same end.\n"
      "Exit status: 0 done, 1 --diff wrote something, 2 unusable.\n"
      "Example: orvane ports --diff 80,443 80,8080,1000-2000");
  return {parser, [options] { return normalisePorts(*options); }};
}

Command makeCheck(CLI::App& orvane) {
  const auto options = std::make_shared<CheckOptions>();
  CLI::App* const parser =
      orvane.add_subcommand("check", "Tell which applications collide with what is in use");
  addSectionText(*parser, "FILE", options->file);
  addInUseOptions(*parser, options->inUse);
  parser->add_option("--against", options->against, "Check against another mapping text, or -")
      ->type_name("FILE")
      ->check(kNotEmpty);
  parser->add_flag("--each", options->each, "Check the applications of FILE against each other");
  parser->add_flag("--json", options->json, "Write an array of collisions");
  addOutputOption(*parser, options->output);
  parser->footer(
      "An item without address is on every address. Applications count whatever their action "
      "code, also when it marks them deleted. Each line is an application, the address of its "
      "item, the ports that collide, and with what.\n"
      "Exit status: 0 no collision, 1 any collision, 2 unusable.\n"
      "Example: orvane check --live --socket 10.0.0.1:80,443 wanted.txt");
  return {parser, [options] { return checkCollisions(*options); }};
}

Command makeUsed(CLI::App& orvane) {
  const auto options = std::make_shared<UsedOptions>();
  CLI::App* const parser = orvane.add_subcommand("used", "Write what is in use as one line");
  addInUseOptions(*parser, options->inUse);
  addOutputOption(*parser, options->output);
  parser->footer(
      "The line holds the sockets, each followed by a blank, then the ports and the ranges in use "
      "on every address; ranges that overlap or touch are joined.\n"
      "Example: orvane used --live --ports 8000-8100");
  return {parser, [options] { return showUsed(*options); }};
}

Command makeCatalogue(CLI::App& orvane) {
  const auto options = std::make_shared<CatalogueOptions>();
  CLI::App* const parser =
      orvane.add_subcommand("catalogue", "Show an application catalogue, or combine it");
  addSectionText(*parser, "FILE", options->file);
  CLI::Option* const upid =
      parser->add_option("--upid", options->upids, "Only these UPIDs; may be given again")
          ->type_name("UPIDS")
          ->allow_extra_args(false);
  CLI::Option* const expand =
      parser->add_flag("--expand", options->expand, "List every port of a range");
  CLI::Option_group* const form = parser->add_option_group("Form");
  form->require_option(0, 1);
  form->add_flag("--json", options->json, "All facts as JSON");
  form->add_flag("--section", options->section, "The text in canonical form")->excludes(expand);
  const auto addText = [&](const char* name, std::string& value, const char* type,
                           const char* description) {
    return form->add_option(name, value, description)
        ->type_name(type)
        ->check(kNotEmpty)
        ->excludes(expand);
  };
  addText("--with", options->with, "APPS", "Entries merged with those of a mapping text");
  addText("--add", options->add, "APPS", "The catalogue with applications added");
  addText("--known", options->known, "UPIDS", "Those of the UPIDs that have an entry")
      ->excludes(upid);
  addText("--unknown", options->unknown, "UPIDS", "Those of the UPIDs that have none")
      ->excludes(upid);
  addColorOption(*parser, options->color);
  addOutputOption(*parser, options->output);
  parser->footer(
      "Of --json, --section, --with, --add, --known and --unknown one may be given. COUNT is the "
      "number of ports in an entry's list; one in two of its elements counts twice.\n"
      "Example: orvane catalogue --with wanted.txt --upid 7000,7001 known.txt");
  return {parser, [options] { return showCatalogue(*options); }};
}

CLI::App* addPack(CLI::App& tree, TreeOptions& options) {
  CLI::App* const parser = tree.add_subcommand("pack", "Make a tree buffer from JSON or CSV");
  parser->add_option("FILE", options.file, "A file that ends in .json or .csv")
      ->type_name("")
      ->required()
      ->check(kNotEmpty);
  parser->add_flag("--nodes", options.nodesOnly, "Make a node buffer, without header");
  parser->add_option("--output", options.output, "The buffer, replaced as a whole")
      ->type_name("FILE")
      ->required()
      ->check(kNotEmpty);
  parser->footer(
      "The forms are those that orvane tree --format writes. firstChild, sibling and "
      "numOfChildren may be left out: they follow from parentUpid and the order. So does the "
      "header, from the nodes named TCP and UDP.\n"
      "Example: orvane tree pack protocols.csv --output protocols.tree");
  return parser;
}

Command makeTree(CLI::App& orvane) {
  const auto options = std::make_shared<TreeOptions>();
  CLI::App* const parser = orvane.add_subcommand("tree", "Draw and check a protocol tree");
  CLI::App* const packer = addPack(*parser, *options);
  parser->add_option("FILE", options->file, "Tree buffer or node buffer, or -")
      ->type_name("")
      ->check(kNotEmpty);
  parser->add_flag("--nodes", options->nodesOnly, "FILE is a node buffer, without header");
  parser->add_option("--format", options->format, "text (if not given), json, csv or dot")
      ->type_name("FORM")
      ->check(quiet(CLI::IsMember({"text", "json", "csv", "dot"})));
  CLI::Option* const upid = parser->add_option("--upid", options->upid, "Only this node")
                                ->type_name("UPID")
                                ->check(kNotEmpty);
  parser->add_option("--children", options->children, "Only the children of this node")
      ->type_name("UPID")
      ->check(kNotEmpty)
      ->excludes(upid);
  addOutputOption(*parser, options->output);
  for (CLI::Option* const option : parser->get_options()) packer->excludes(option);
  parser->footer(
      "Roots are the nodes whose parent is 0 or themselves. Nodes that no root reaches, links "
      "that lead nowhere or back, and wrong counts of children are findings. A node that counts 0 "
      "but has a first child has a chain whose last node only closes it: that one is not drawn.\n"
      "Exit status: 0 no finding, 1 any finding, 2 unusable.\n"
      "Example: orvane tree --format dot protocols.tree | dot -Tsvg > protocols.svg");
  return {parser,
          [options, packer] { return packer->parsed() ? packTree(*options) : showTree(*options); }};
}

Command makeImport(CLI::App& orvane) {
  const auto options = std::make_shared<ImportOptions>();
  CLI::App* const import =
      orvane.add_subcommand("import", "Make a section text of what another program describes");
  import->footer("Example: orvane import services --output known.txt");
  CLI::App* const parser =
      import->add_subcommand("services", "One application per service of a services(5) file");
  parser->add_option("FILE", options->file, "services(5) file, or -; /etc/services if not given")
      ->type_name("")
      ->check(kNotEmpty);
  parser
      ->add_option("--first-upid", options->firstUpid,
                   "UPID of the first, counted up; 1000 if not given")
      ->type_name("UPID");
  parser->add_option("--as", options->form, "apps (if not given) or catalogue")
      ->type_name("FORM")
      ->check(quiet(CLI::IsMember({"apps", "catalogue"})));
  addOutputOption(*parser, options->output);
  parser->footer(
      "Each application has action 1 and one item without address, with the ports of all "
      "protocols; each catalogue entry has those ports and the full name. Lines that are no "
      "service, and names that are cut, are reported on standard error.\n"
      "Example: orvane import services --first-upid 5000 /etc/services > known.txt");
  return {parser, [options] { return importServices(*options); }};
}

Command makeLint(CLI::App& orvane) {
  const auto options = std::make_shared<LintOptions>();
  CLI::App* const parser =
      orvane.add_subcommand("lint", "Report what is skipped, cut or misread when a text is read");
  addSectionText(*parser, "FILE", options->file);
  parser->add_flag("--json", options->json, "Write an array of findings");
  addOutputOption(*parser, options->output);
  parser->footer(
      "A catalogue text is told from a mapping text by its keys.\n"
      "Each finding is FILE:LINE: reason; a note, FILE:LINE: note: reason, tells of text that "
      "loses nothing but means something else than it seems to.\n"
      "Exit status: 0 nothing found, 1 anything found, notes included, 2 unusable.\n"
      "Example: orvane lint wanted.txt");
  return {parser, [options] { return lintText(*options); }};
}

// The command as the user called it so far: "orvane", "orvane diff", "orvane import services".
std::string calledName(const CLI::App& parser) {
  const auto called = parser.get_subcommands();
  return called.empty() ? parser.get_name() : parser.get_name() + " " + calledName(*called.front());
}

const CLI::App& calledCommand(const CLI::App& parser) {
  const auto called = parser.get_subcommands();
  return called.empty() ? parser : calledCommand(*called.front());
}

[[noreturn]] void rejectUsage(const CLI::App& parser, const std::string& reason) {
  throw Failure(escape(reason) + " (see " + calledName(parser) + " --help)");
}

// What was meant by the first word that resembles one which the called command knows: one that is
// left over, or one that was taken for an argument beside a subcommand.
std::string suggestion(const CLI::App& parser) {
  const CLI::App& command = calledCommand(parser);
  std::vector<std::string> words = parser.remaining(true);
  if (!command.get_subcommands({}).empty()) {
    for (const CLI::Option* const option : command.get_options()) {
      if (!option->get_positional()) continue;
      words.insert(words.end(), option->results().begin(), option->results().end());
    }
  }
  for (const std::string& word : words) {
    const std::string nearest = nearestWord(command, word.substr(0, word.find('=')));
    if (!nearest.empty()) return "; did you mean " + nearest + "?";
  }
  return {};
}

// Help and version are successes; everything else that stops the parser is wrong usage.
void finishParsing(const CLI::App& parser, const CLI::ParseError& stop) {
  const bool isUnknown = dynamic_cast<const CLI::ExtrasError*>(&stop) != nullptr;
  if (stop.get_exit_code() != 0) {
    rejectUsage(parser, stop.what() + (isUnknown ? suggestion(parser) : ""));
  }
  std::ostringstream text;
  parser.exit(stop, text, text);
  writeOutput(text.str(), {}, {});
}

ExitStatus run(CLI::App& parser, int argc, char** argv) {
  parser.formatter(std::make_shared<HelpFormatter>());
  parser.set_version_flag("--version", "orvane " ORVANE_VERSION);
  const std::vector<Command> commands = {
      makeApps(parser),  makeDiff(parser),   makePorts(parser),
      makeCheck(parser), makeUsed(parser),   makeCatalogue(parser),
      makeTree(parser),  makeImport(parser), makeLint(parser),
  };
  parser.footer(
      "Files are section texts; - reads standard input.\n"
      "Exit status: 0 done, 1 something was found, 2 unusable input or usage.\n"
      "Example: orvane diff running.txt wanted.txt > change.txt");
  try {
    parser.parse(argc, argv);
  } catch (const CLI::ParseError& stop) {
    finishParsing(parser, stop);
    return kSuccess;
  }
  for (const Command& command : commands) {
    if (command.parser->parsed()) return command.run();
  }
  rejectUsage(parser, "a subcommand is required");
}

}  // namespace
}  // namespace orvane::cli

int main(int argc, char** argv) {
  std::setlocale(LC_CTYPE, "C.UTF-8");  // names are UTF-8, wherever the command runs
  std::signal(SIGPIPE, SIG_IGN);        // a reader that went away is reported, like a full disk
  CLI::App parser("Describe network applications by their ports and addresses, and compare them.",
                  "orvane");
  try {
    return orvane::cli::run(parser, argc, argv);
  } catch (const std::exception& failure) {
    const std::string message = orvane::cli::calledName(parser) + ": " + failure.what() + "\n";
    orvane::cli::writeError(message);
    return orvane::cli::kUnusable;
  }
}
