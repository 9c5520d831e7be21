#include <algorithm>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "cli/command.h"
#include "cli/files/failure.h"
#include "cli/files/input.h"
#include "cli/files/output.h"
#include "cli/files/section_file.h"
#include "cli/shared_options.h"
#include "cli/terminal/text.h"
#include "exchange/form_error.h"
#include "exchange/tree_csv.h"
#include "exchange/tree_dot.h"
#include "exchange/tree_file.h"
#include "exchange/tree_json.h"
#include "exchange/tree_text.h"
#include "orvane/upid_tree.h"

namespace orvane::cli {
namespace {

struct TreeOptions {
  std::string file;
  std::string format = "text";
  std::string children;
  std::string upid;
  std::string output;
  bool nodesOnly = false;
  bool all = false;
};

using exchange::TreeFile;
using exchange::writtenName;

// What a reader gives of an input, or the Failure that names it.
template <typename Read>
TreeFile readForm(const Input& input, bool nodesOnly, Read read) {
  try {
    return read(input.text, nodesOnly);
  } catch (const exchange::FormError& error) {
    const std::string label =
        error.line() == 0 ? input.name + ": " : lineLabel(input, error.line());
    throw Failure(label + escape(error.what()));
  }
}

// What is shown of a tree: places that point into it, and findings as texts.
struct Shown {
  std::vector<OrvaneUpidPlace> places;
  std::vector<std::string> findings;
};

std::string titleOf(const std::string& upid, const OrvaneUpidNode& node) {
  return upid + " '" + writtenName(node) + "'";
}

std::string textOf(const Shown& shown) {
  std::string text;
  for (const OrvaneUpidPlace& place : shown.places) {
    // A chain may be as deep as the file is long; its text may not grow with the square of that.
    const std::size_t indent = std::min<std::size_t>(place.depth, 40);
    const OrvaneUpidNode& node = *place.node;
    text += std::string(2 * indent, ' ') + titleOf(std::to_string(node.upid), node) + " flags " +
            std::to_string(node.flags) + ", children " + std::to_string(node.numOfChildren) + "\n";
  }
  if (!shown.findings.empty()) text += "Findings:\n";
  for (const std::string& finding : shown.findings) text += "  " + finding + "\n";
  return text;
}

// The structure of a whole tree, and what was found about records and links of it.
Shown checked(const TreeFile& file, const OrvaneUpidTree& tree, const OrvaneFindings& findings) {
  Shown shown{tree.outline(), {}};
  for (const OrvaneFinding& finding : findings) {
    const bool isOfRecord = finding.line != 0;
    const OrvaneUpidNode& node = isOfRecord
                                     ? file.nodes[finding.line - 1]
                                     : tree[parseDecimal<unsigned int>(finding.key).value_or(0)];
    shown.findings.push_back(titleOf(finding.key, node) + (isOfRecord ? ", " : ": ") +
                             finding.message);
  }
  for (const OrvaneFindings::Count& count : findings.getCounts()) {
    if (count.found > count.kept) shown.findings.push_back(restOf(count));
  }
  return shown;
}

// The node that an option names. A node that is not there is unusable input.
const OrvaneUpidNode& findNode(const OrvaneUpidTree& tree, const std::string& option,
                               const std::string& text) {
  const auto upid = parseDecimal<unsigned int>(text);
  if (!upid) throw Failure(option + " " + quote(text) + " is no UPID");
  const auto found = tree.find(*upid);
  if (found == tree.end()) throw Failure("there is no node with UPID " + text);
  return found->second;
}

// Keeps of a file what --upid or --children asks for.
void select(TreeFile& file, const OrvaneUpidTree& tree, const TreeOptions& options) {
  file.header.reset();
  if (!options.upid.empty()) {
    file.nodes.assign(1, findNode(tree, "--upid", options.upid));
    return;
  }
  const unsigned int parent = findNode(tree, "--children", options.children).upid;
  std::string bytes(tree.size() * exchange::kNodeSize, '\0');
  bytes.resize(tree.getChildrenBufferChecked(parent, bytes).value_or(0));
  file = exchange::readTreeBuffer(bytes, true);
}

ExitStatus showTree(const TreeOptions& options) {
  if (options.file.empty()) throw Failure("FILE is required");
  const Input input = readBytes(options.file);
  TreeFile file = readForm(input, options.nodesOnly, exchange::readTreeBuffer);
  OrvaneFindings findings = findingsToReport(options.all || options.format == "json");
  const OrvaneUpidTree tree = exchange::treeOf(file, findings);
  Shown shown;
  if (options.upid.empty() && options.children.empty()) {
    tree.addFindings(findings);
    shown = checked(file, tree, findings);
  } else {  // a part has no structure of its own
    select(file, tree, options);
    for (const OrvaneUpidNode& node : file.nodes) shown.places.push_back({&node, nullptr, 0});
  }
  writeOutput(options.format == "json"  ? exchange::jsonOf(file, shown.findings)
              : options.format == "csv" ? exchange::csvOf(file)
              : options.format == "dot" ? exchange::dotOf(shown.places)
                                        : textOf(shown),
              options.output, {options.file});
  if (options.format == "csv" || options.format == "dot") {
    for (const std::string& finding : shown.findings) {
      writeError(input.name + ": " + finding + "\n");
    }
  }
  return shown.findings.empty() ? kSuccess : kFound;
}

ExitStatus packTree(const TreeOptions& options) {
  const Input input = readInput(options.file);
  const bool isCsv = input.name.ends_with(".csv");
  if (!isCsv && !input.name.ends_with(".json")) {
    throw Failure(input.name + ": the name ends in neither .json nor .csv");
  }
  const TreeFile file =
      readForm(input, options.nodesOnly, isCsv ? exchange::readTreeCsv : exchange::readTreeJson);
  writeOutput(bufferOf(file), options.output, {options.file});
  return kSuccess;
}

void describePack(const Command& command) {
  const auto options = std::make_shared<TreeOptions>();
  command.argument("FILE", options->file, "A file that ends in .json or .csv").isRequired();
  command.flag("--nodes", options->nodesOnly, "Make a node buffer, without header");
  command.text("--output", "FILE", options->output, "The buffer, replaced as a whole").isRequired();
  command.close(
      "The forms are those that orvane tree --format writes. firstChild, sibling and "
      "numOfChildren may be left out: they follow from parentUpid and the order. So does the "
      "header, from the nodes named TCP and UDP.\n"
      "Example: orvane tree pack protocols.csv --output protocols.tree");
  command.runs([options] { return packTree(*options); });
  command.standAlone();
}

}  // namespace

void describeTree(const Command& command) {
  const auto options = std::make_shared<TreeOptions>();
  command.argument("FILE", options->file, "Tree buffer or node buffer, or -");
  command.flag("--nodes", options->nodesOnly, "FILE is a node buffer, without header");
  command.choice("--format", "FORM", options->format, {"text", "json", "csv", "dot"},
                 "text (if not given), json, csv or dot");
  const Option upid = command.text("--upid", "UPID", options->upid, "Only this node");
  command.text("--children", "UPID", options->children, "Only the children of this node")
      .excludes(upid);
  command.flag("--all", options->all, "Show all findings, not 100 of a kind");
  addOutput(command, options->output);
  describePack(command.subcommand("pack", "Make a tree buffer from JSON or CSV"));
  command.close(
      "Roots are the nodes whose parent is 0 or themselves. Nodes that no root reaches, links "
      "that lead nowhere or back, and wrong counts of children are findings. A node that counts 0 "
      "but has a first child has a chain whose last node only closes it: that one is not drawn.\n"
      "Exit status: 0 no finding, 1 any finding, 2 unusable.\n"
      "Example: orvane tree --format dot protocols.tree | dot -Tsvg > protocols.svg");
  command.runs([options] { return showTree(*options); });
}

}  // namespace orvane::cli
