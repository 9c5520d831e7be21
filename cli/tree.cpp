#include <algorithm>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "cli/command.h"
#include "cli/files/failure.h"
#include "cli/files/output.h"
#include "cli/shared_options.h"
#include "cli/terminal/json.h"
#include "cli/terminal/text.h"
#include "cli/tree_check.h"
#include "cli/tree_file.h"
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
};

std::string lineOf(const OrvaneUpidNode& node) {
  return std::to_string(node.upid) + " '" + writtenName(node) + "' flags " +
         std::to_string(node.flags) + ", children " + std::to_string(node.numOfChildren) + "\n";
}

std::string textOf(const TreeCheck& check) {
  std::string text;
  for (const DrawnNode& drawn : check.drawn) {
    // A chain may be as deep as the file is long; its text may not grow with the square of that.
    const std::size_t indent = std::min<std::size_t>(drawn.depth, 40);
    text += std::string(2 * indent, ' ') + lineOf(*drawn.node);
  }
  if (!check.findings.empty()) text += "Findings:\n";
  for (const std::string& finding : check.findings) text += "  " + finding + "\n";
  return text;
}

std::string jsonOf(const TreeFile& file, const TreeCheck& check) {
  Json json;
  if (file.header) {
    json["header"] = std::vector<unsigned int>(file.header->begin() + 1, file.header->end());
  }
  json["nodes"] = Json::array();
  for (const OrvaneUpidNode& node : file.nodes) {
    Json object;
    for (const NodeField& field : kNodeFields) object[field.name] = node.*field.value;
    object["name"] = writtenName(node);
    json["nodes"].push_back(object);
  }
  json["findings"] = check.findings;
  return toText(json);
}

std::string dotOf(const TreeCheck& check) {
  std::string text = "digraph protocols {\n  rankdir=LR;\n  node [shape=box];\n";
  for (const DrawnNode& drawn : check.drawn) {
    std::string label;
    for (const char c : writtenName(*drawn.node)) {
      if (c == '"' || c == '\\') label.push_back('\\');
      label.push_back(c);
    }
    const std::string upid = std::to_string(drawn.node->upid);
    text += "  " + upid + " [label=\"" + label + "\\n" + upid + "\"];\n";
    if (drawn.parent != nullptr) {
      text += "  " + std::to_string(drawn.parent->upid) + " -> " + upid + ";\n";
    }
  }
  return text + "}\n";
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
void select(TreeFile& file, const TreeOptions& options) {
  OrvaneUpidTree tree;
  for (const OrvaneUpidNode& node : file.nodes) tree.add(node);
  file.header.reset();
  if (!options.upid.empty()) {
    file.nodes.assign(1, findNode(tree, "--upid", options.upid));
    return;
  }
  const unsigned int parent = findNode(tree, "--children", options.children).upid;
  std::string bytes(tree.size() * kNodeSize, '\0');
  const auto length = tree.getChildrenBufferChecked(parent, bytes);
  file.nodes.resize(length.value_or(0) / kNodeSize);
  for (std::size_t i = 0; i < file.nodes.size(); ++i) {
    file.nodes[i].copyChecked(std::span(bytes).subspan(i * kNodeSize));
  }
}

ExitStatus showTree(const TreeOptions& options) {
  if (options.file.empty()) throw Failure("FILE is required");
  TreeFile file = readTreeBuffer(options.file, options.nodesOnly);
  const bool selected = !options.upid.empty() || !options.children.empty();
  if (selected) select(file, options);
  TreeCheck check;
  if (selected) {  // a part has no structure of its own
    for (const OrvaneUpidNode& node : file.nodes) check.drawn.push_back({&node, nullptr, 0});
  } else {
    check = checkTree(file);
  }
  writeOutput(options.format == "json"  ? jsonOf(file, check)
              : options.format == "csv" ? csvOf(file)
              : options.format == "dot" ? dotOf(check)
                                        : textOf(check),
              options.output, {options.file});
  if (options.format == "csv" || options.format == "dot") {
    for (const std::string& finding : check.findings) writeError(file.name + ": " + finding + "\n");
  }
  return check.findings.empty() ? kSuccess : kFound;
}

ExitStatus packTree(const TreeOptions& options) {
  writeOutput(bufferOf(parseTreeText(readInput(options.file), options.nodesOnly)), options.output,
              {options.file});
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
